// The corner labels of a plot.
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "plot/Plot.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace Yul {
namespace {

/// In text heights; from line to line the graph leaves 1.3 of the label's own height.
constexpr float INNER_DISTANCE = 0.8F;
constexpr float UPPER_HEIGHT = 1.15F;
constexpr float LABEL_GAP = 2.F;
constexpr float SMALLEST = 0.45F; // labels are shrunk to this share of their height, at most

constexpr int LABELS_A_ROW = 3;

constexpr float WEIGHT = 1.5F; // dots
constexpr float TITLE_WEIGHT = 2.5F;
constexpr float PAGE_TITLE_HEIGHT = 1.5F;
constexpr float PAGE_TITLE_WEIGHT = 3.5F;

} // namespace

int Plot::getLabelPosIndex(char const * name) const
{
    return detail::findPosition(detail::viewOf(name));
}

int Plot::setLabel(char const * position, char const * text)
{
    return setLabel(getLabelPosIndex(position), text);
}

int Plot::setLabel(int position, char const * text)
{
    if (position < 0 || position >= detail::NUM_LABELS)
        return 0;
    labels[static_cast<std::size_t>(position)] = {std::string(detail::viewOf(text)), true};
    return 1;
}

int Plot::proposeLabel(int position, char const * text)
{
    if (position < 0 || position >= detail::NUM_LABELS)
        return 0;
    Label & label = labels[static_cast<std::size_t>(position)];
    if (!label.is_set)
        label.text = detail::viewOf(text);
    return 1;
}

int Plot::formatLabel(char const * in, char * out, int size) const
{
    if (out == nullptr || size < 1)
        return 0;
    std::string const text = detail::expandLabel(detail::viewOf(in), facts);
    std::size_t const n = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(out, text.data(), n);
    out[n] = '\0';
    return 1;
}

int Plot::formatLabel(char const * in, String & out) const
{
    out.assign(detail::expandLabel(detail::viewOf(in), facts));
    return 1;
}

int Plot::clearLabels()
{
    labels = {};
    detail::writeOut("Plot labels cleared\n");
    return 1;
}

char const * Plot::labelColor() const
{
    char const * const name = Yul::getResrc("color_label");
    return StrLib::valid(name) ? name : plainColor();
}

int Plot::drawLabels()
{
    if (!graph.isOpen())
        return 0;
    Rect const view = graph.getTransform(MAP_TRAN).getViewport();
    graph.setTran(PAGE_TRAN);
    startText(layout.text_height, WEIGHT);
    for (int const first : {detail::UPPER_LEFT, detail::LOWER_LEFT})
        drawLabelRow(first, view);
    if (style.has_title && style.panels.count() > 1 && panel == 0)
        drawTitle();
    drawBar();
    drawLogo();
    graph.setTran(MAP_TRAN);
    return 1;
}

/// Upright text in the colour of the labels.
void Plot::startText(float height, float weight)
{
    graph.setTextColor(findColor(labelColor(), plainColor()));
    graph.setTextHeight(height);
    graph.setTextWeight(weight);
    graph.setTextDirection(0, 1);
}

/// One title over all panels, at the upper edge of the page.
void Plot::drawTitle()
{
    Rect const & page = graph.getMaxViewport();
    float const height = PAGE_TITLE_HEIGHT * layout.text_height;
    float const room = page.getWidth() - 2 * height;
    startText(height, PAGE_TITLE_WEIGHT);
    float const width = graph.getTextWidth(facts.title.c_str());
    if (width > room)
        graph.setTextHeight(height * room / width);
    graph.setTextAlign(2, 1);
    graph.drawText((page.x1 + page.x2) / 2, page.y2 - 1.5F * height, facts.title.c_str());
}

/// Three labels in a row, smaller when they would run into each other.
void Plot::drawLabelRow(int first, Rect const & view)
{
    bool const is_upper = first == detail::UPPER_LEFT;
    float const h = layout.text_height;
    float height = is_upper ? UPPER_HEIGHT * h : h;

    std::array<std::string, LABELS_A_ROW> texts;
    float needed = 0;
    graph.setTextHeight(height);
    for (int i = 0; i < LABELS_A_ROW; ++i) {
        std::string & text = texts[static_cast<std::size_t>(i)];
        if (isDrawn(detail::DRAW_TEXT_UL + first + i))
            text = detail::expandLabel(
                labels[static_cast<std::size_t>(first) + static_cast<std::size_t>(i)].text, facts);
        float const width = detail::isImageLabel(text) ? 0 : graph.getTextWidth(text.c_str());
        needed += width > 0 ? width + LABEL_GAP * height : 0;
    }
    // A narrow map lends its labels the width of the panel.
    constexpr float NARROW = 0.6F;
    Rect const & room = view.getWidth() < NARROW * layout.map.getWidth() ? layout.map : view;
    if (needed > room.getWidth())
        height *= std::max(room.getWidth() / needed, SMALLEST);

    bool const is_inside = style.is_full;
    float const edge = is_inside  ? -INNER_DISTANCE * h
                       : is_upper ? layout.upperDistance()
                                  : layout.lowerDistance();
    float const y = is_upper ? view.y2 + edge : view.y1 - edge;
    bool const is_above_line = is_upper != is_inside; // the block of lines stands on y, or hangs from it
    float const inset = is_inside ? INNER_DISTANCE * h : 0;
    float const x[] = {room.x1 + inset, (room.x1 + room.x2) / 2, room.x2 - inset};
    graph.setTextHeight(height);
    for (int i = 0; i < LABELS_A_ROW; ++i) {
        std::string const & text = texts[static_cast<std::size_t>(i)];
        if (text.empty() || drawImageLabel(first + i, text, Point(x[i], y)))
            continue;
        graph.setTextWeight(first + i == detail::UPPER_LEFT ? TITLE_WEIGHT : WEIGHT);
        graph.setTextAlign(i + 1, is_above_line ? 0 : 1);
        graph.drawText(x[i], is_above_line ? y : y - height, text.c_str());
    }
}

} // namespace Yul
