// Text of a Graph.
#include "core/Format.h"
#include "core/StrLib.h"
#include "core/VarArgs.h"
#include "graphics/Graph.h"
#include "graphics/TextLine.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <span>
#include <vector>

namespace Yul {
namespace {

constexpr std::size_t LINE_SIZE = 100; // characters
constexpr float LINE_STEP = 1.3F;      // text heights
constexpr int MAX_SHADOW = 100;
constexpr float BOX_MARGIN = 0.25F; // text heights

bool isPositive(float value)
{
    return std::isfinite(value) && value > 0;
}

/// The first characters of a UTF-8 text.
std::string_view firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    while (end < text.size()) {
        bool const is_start = (static_cast<unsigned char>(text[end]) & 0xc0) != 0x80;
        if (is_start && count-- == 0)
            break;
        ++end;
    }
    return text.substr(0, end);
}

std::vector<std::string_view> splitLines(char const * text)
{
    auto lines = detail::split(detail::viewOf(text), '\n');
    for (std::string_view & line : lines)
        line = firstCharacters(line, LINE_SIZE);
    return lines;
}

/// How far the ink of a line reaches to the left of its position.
float startOf(detail::TextLine const & line, int align)
{
    return align == 2 ? (line.ink_left + line.ink_right) / 2 : align == 3 ? line.ink_right : line.ink_left;
}

} // namespace

// ---- attributes ----

int Graph::setTextColor(int color)
{
    return change(text_color, color, [&] { device->setColor(TEXT_PEN, color); });
}

int Graph::setTextWeight(float weight)
{
    return std::isfinite(weight) && weight >= 0
               ? change(text_weight, weight, [&] { device->setLineWidth(TEXT_PEN, weight); })
               : 0;
}

int Graph::setTextHeight(float height)
{
    if (!isPositive(height) || change(text_height, height, [] {}) == 0)
        return 0;
    return font_kind == SCALABLE_FONT ? applyDeviceFont() : 1;
}

/// Stores a value that only shapes text.
template <class Value> int Graph::store(Value & stored, Value value, bool is_sensible)
{
    if (!device || !is_sensible)
        return 0;
    stored = value;
    return 1;
}

int Graph::setTextExpansion(float factor)
{
    return store(text_expansion, factor, isPositive(factor));
}

int Graph::setTextSpacing(float factor)
{
    return store(text_spacing, factor, std::isfinite(factor));
}

int Graph::setTextCharWidth(float width)
{
    return store(text_char_width, width, std::isfinite(width) && width >= 0);
}

int Graph::setTextDirection(float dx, float dy)
{
    double const length = std::hypot(static_cast<double>(dx), static_cast<double>(dy));
    if (!device || !std::isfinite(length) || length == 0)
        return 0;
    text_up_x = static_cast<float>(dx / length);
    text_up_y = static_cast<float>(dy / length);
    return 1;
}

int Graph::setTextAlign(int horizontal, int vertical)
{
    return store(text_halign, horizontal, true) & store(text_valign, vertical, true);
}

int Graph::setTextBoxColor(int color)
{
    return store(text_box_color, color, true);
}

int Graph::setDropColor(int color)
{
    return store(drop_color, color, true);
}

int Graph::setDropShadow(int count)
{
    return store(drop_count, count, count >= 0 && count <= MAX_SHADOW);
}

int Graph::setDropWidth(int width)
{
    return store(drop_width, width, width >= 0);
}

// ---- drawing ----

/// Where one line of text stands on the device. A place in the line is given in text heights along the
/// baseline and above it.
struct Graph::Frame
{
    Point anchor;
    Point along;
    Point up;

    [[nodiscard]] Point at(float x, float y) const
    {
        auto const hold = [](float value) {
            return std::clamp(value, -GTran::PLOT_LIMIT, GTran::PLOT_LIMIT);
        };
        return {hold(anchor.x + x * along.x + y * up.x), hold(anchor.y + x * along.y + y * up.y)};
    }

    [[nodiscard]] Frame moved(float x, float y) const
    {
        return {Point(anchor.x + x, anchor.y + y), along, up};
    }
};

/// Letters keep their shape when the axes of the window have different scales or run backwards: they are as
/// high as the text height is along y, and upright text is upright on the page.
Graph::Frame Graph::textFrame(float x, float y) const
{
    GTran const & t = tran();
    float const right = t.getPlot().x2 < t.getPlot().x1 ? -1.0F : 1.0F;
    float const top = t.getPlot().y2 > t.getPlot().y1 ? -1.0F : 1.0F;
    float const height = text_height * t.getPlotPerWindowY();
    float const up_x = text_up_x * t.getPlotPerWindowX();
    float const up_y = text_up_y * t.getPlotPerWindowY();
    float const length = std::hypot(up_x, up_y);
    float const unit = length > 0 ? height / length : 0;
    return {Point(t.tranWindowPlotX(x), t.tranWindowPlotY(y)), Point(right * up_y * unit, -top * up_x * unit),
            Point(right * up_x * unit, top * up_y * unit)};
}

/// One line step in device units.
Point Graph::lineStep() const
{
    GTran const & t = tran();
    float const right = t.getPlot().x2 < t.getPlot().x1 ? -1.0F : 1.0F;
    float const top = t.getPlot().y2 > t.getPlot().y1 ? -1.0F : 1.0F;
    return {LINE_STEP * text_height * text_up_x * t.getPlotPerWindowX() * right,
            LINE_STEP * text_height * text_up_y * t.getPlotPerWindowY() * top};
}

detail::TextLine Graph::layOut(std::string_view line) const
{
    return {font, line, {text_expansion, text_spacing, text_char_width}};
}

bool Graph::isDeviceText() const noexcept
{
    return hfont != 0 || font_kind == DEVICE_FONT || font_kind == SCALABLE_FONT;
}

int Graph::drawText(float x, float y, char const * text)
{
    if (!device || text == nullptr)
        return 0;
    auto const lines = splitLines(text);
    int const below = static_cast<int>(lines.size()) - 1;
    int const shift = text_valign == 1 || text_valign == 2 ? 0 : text_valign == 3 ? below / 2 : below;
    Point const step = lineStep();
    Frame const first =
        textFrame(x, y).moved(static_cast<float>(shift) * step.x, static_cast<float>(shift) * step.y);
    auto const frameOf = [&](std::size_t i) {
        return first.moved(-static_cast<float>(i) * step.x, -static_cast<float>(i) * step.y);
    };
    int is_drawn = 1;
    if (!isDeviceText()) // all boxes first, so that none covers the line above
        for (std::size_t i = 0; i < lines.size(); ++i)
            is_drawn &= drawBox(frameOf(i), lines[i]);
    for (std::size_t i = 0; i < lines.size(); ++i)
        is_drawn &= drawShadowedLine(frameOf(i), lines[i]);
    return is_drawn;
}

int Graph::drawText(Point const & point, char const * text)
{
    return drawText(point.x, point.y, text);
}

int Graph::drawFormText(float x, float y, char const * format, ...)
{
    if (!device || format == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return drawText(x, y, detail::vformat(format, args).c_str());
}

int Graph::drawTextLine(float x, float y, char const * line)
{
    if (!device || line == nullptr)
        return 0;
    Frame const frame = textFrame(x, y);
    std::string_view const text = firstCharacters(line, LINE_SIZE);
    return drawBox(frame, text) & strokeLine(frame, text, text_weight);
}

int Graph::drawShadowedLine(Frame const & frame, std::string_view line)
{
    auto const draw = [&](Frame const & place, float weight) {
        return isDeviceText() ? drawDeviceLine(place, line) : strokeLine(place, line, weight);
    };
    if (drop_count > 0) {
        float const weight = drop_width > 0 ? static_cast<float>(drop_width) : text_weight;
        device->setColor(TEXT_PEN, drop_color);
        for (int i = 0; i < drop_count; ++i)
            draw(frame.moved(static_cast<float>(i), static_cast<float>(i)), weight);
        device->setColor(TEXT_PEN, text_color);
    }
    return draw(frame, text_weight);
}

int Graph::drawDeviceLine(Frame const & frame, std::string_view line)
{
    device->setTextAlign(text_halign, text_valign);
    return device->drawText(frame.at(0, 0), std::string(line).c_str());
}

/// The strokes of one glyph: a polyline each.
int Graph::strokeGlyph(Frame const & frame, detail::PlacedGlyph const & placed)
{
    using Vertex = GFont::Vertex;
    float const unit = 1 / static_cast<float>(font.getCapHeight());
    auto const placeOf = [&](Vertex const & v) {
        return frame.at(placed.x + static_cast<float>(v.x) * unit * text_expansion,
                        static_cast<float>(v.y - font.getBaseline()) * unit);
    };
    auto const vertices = font.vertices(*placed.glyph);
    int is_drawn = 1;
    for (auto from = vertices.begin(); from != vertices.end();) {
        auto const to = std::find_if(from + 1, vertices.end(), [](Vertex const & v) { return v.is_move; });
        scratch.clear();
        for (auto v = from; v != to; ++v)
            scratch.add(placeOf(*v));
        if (scratch.getNum() > 1)
            is_drawn &= device->drawLine(TEXT_PEN, scratch);
        from = to;
    }
    return is_drawn;
}

/// The width of strokes at a text height, in dots: the weight, or more where the font's strokes must touch.
float Graph::strokeWidth(Frame const & frame, float weight) const
{
    float const height = std::hypot(frame.up.x, frame.up.y);
    float const least = static_cast<float>(font.getPen()) * height /
                        (static_cast<float>(font.getCapHeight()) * device->getDotSize());
    return std::isfinite(least) ? std::max(weight, least) : weight;
}

int Graph::strokeLine(Frame const & frame, std::string_view line, float weight)
{
    if (!font.isOpen())
        return 0;
    float const width = strokeWidth(frame, weight);
    if (width != text_weight)
        device->setLineWidth(TEXT_PEN, width);
    detail::TextLine const layout = layOut(line);
    float const start = startOf(layout, text_halign);
    float const box_width = detail::BOX_WIDTH * text_expansion;
    int is_drawn = 1;
    for (auto placed : layout.glyphs) {
        placed.x -= start;
        if (placed.glyph != nullptr)
            is_drawn &= strokeGlyph(frame, placed);
        else {
            scratch.all() = {frame.at(placed.x, 0), frame.at(placed.x + box_width, 0),
                             frame.at(placed.x + box_width, 1), frame.at(placed.x, 1), frame.at(placed.x, 0)};
            is_drawn &= device->drawLine(TEXT_PEN, scratch);
        }
    }
    if (width != text_weight)
        device->setLineWidth(TEXT_PEN, text_weight);
    return is_drawn;
}

/// The filled box behind one line, a margin wider than its ink; from below the baseline to above the capital
/// letters, or further where the ink reaches further.
int Graph::drawBox(Frame const & frame, std::string_view line)
{
    detail::TextLine const layout = layOut(line);
    if (text_box_color <= 0 || !layout.has_ink || !font.isOpen())
        return 1;
    float const start = startOf(layout, text_halign);
    float const left = layout.ink_left - start - BOX_MARGIN;
    float const right = layout.ink_right - start + BOX_MARGIN;
    float bottom = 0;
    float top = 1;
    for (auto const & placed : layout.glyphs)
        if (placed.glyph != nullptr)
            for (auto const & v : font.vertices(*placed.glyph)) {
                float const y =
                    static_cast<float>(v.y - font.getBaseline()) / static_cast<float>(font.getCapHeight());
                bottom = std::min(bottom, y);
                top = std::max(top, y);
            }
    bottom -= BOX_MARGIN;
    top += BOX_MARGIN;
    scratch.all() = {frame.at(left, bottom), frame.at(right, bottom), frame.at(right, top),
                     frame.at(left, top)};
    device->setColor(FILL_PEN, text_box_color);
    int const is_drawn = device->drawFill(FILL_PEN, scratch);
    device->setColor(FILL_PEN, fill_color);
    return is_drawn;
}

float Graph::getTextWidth(char const * text) const
{
    if (!font.isOpen())
        return 0;
    float width = 0;
    for (std::string_view const line : splitLines(text)) {
        detail::TextLine const layout = layOut(line);
        width = std::max(width, layout.ink_right - layout.ink_left);
    }
    return width * text_height * tran().getPlotPerWindowY() / tran().getPlotPerWindowX();
}

} // namespace Yul
