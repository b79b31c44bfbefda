// State, lines, fills, marks, symbols and images of a Graph.
#include "core/Const.h"
#include "core/Format.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Color.h"
#include "graphics/Graph.h"
#include "graphics/Image.h"
#include "graphics/Marks.h"
#include "graphics/TableFile.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

constexpr int CIRCLE_STEPS = 72;
constexpr float MAX_SPEED = 1000; // of a wind, knots

bool isSize(float value)
{
    return std::isfinite(value) && value >= 0;
}

} // namespace

// ---- colours and attributes ----

int Graph::allocColor(float r, float g, float b)
{
    return device ? device->allocColor(r, g, b) : 0;
}

int Graph::allocColor(RGB const & rgb)
{
    return allocColor(rgb.r, rgb.g, rgb.b);
}

int Graph::setLineColor(int color)
{
    return change(line_color, color, [&] { device->setColor(LINE_PEN, color); });
}

int Graph::setLineWidth(float width)
{
    return isSize(width) ? change(line_width, width, [&] { device->setLineWidth(LINE_PEN, width); }) : 0;
}

int Graph::setLineStyle(int style)
{
    return change(line_style, style, [&] { device->setLineStyle(LINE_PEN, style); });
}

int Graph::setFillColor(int color)
{
    return change(fill_color, color, [&] { device->setColor(FILL_PEN, color); });
}

int Graph::setFillStyle(int style)
{
    return change(fill_style, style, [&] { device->setFillStyle(FILL_PEN, style); });
}

int Graph::setMarkColor(int color)
{
    return change(mark_color, color, [&] { device->setColor(MARK_PEN, color); });
}

int Graph::setMarkWeight(float weight)
{
    return isSize(weight) ? change(mark_weight, weight, [&] { device->setLineWidth(MARK_PEN, weight); }) : 0;
}

int Graph::setMarkSize(float size)
{
    return isSize(size) ? change(mark_size, size, [] {}) : 0;
}

int Graph::setMarkType(int type)
{
    return change(mark_type, type, [] {});
}

// ---- lines and fills ----

/// The points in device units; false when one is not a number.
bool Graph::toPlot(Points const & points, Points & plot_points) const
{
    GTran const & t = tran();
    plot_points.clear();
    plot_points.all().reserve(points.all().size());
    for (Point const & point : points.all()) {
        Point const plot(t.tranWindowPlotX(point.x), t.tranWindowPlotY(point.y));
        if (std::isnan(plot.x) || std::isnan(plot.y))
            return false;
        plot_points.add(plot);
    }
    return true;
}

int Graph::drawLine(float x1, float y1, float x2, float y2)
{
    if (!device)
        return 0;
    GTran const & t = tran();
    return device->drawLine(LINE_PEN, t.tranWindowPlotX(x1), t.tranWindowPlotY(y1), t.tranWindowPlotX(x2),
                            t.tranWindowPlotY(y2));
}

int Graph::drawLine(Point const & from, Point const & to)
{
    return drawLine(from.x, from.y, to.x, to.y);
}

int Graph::drawLine(Points const & points)
{
    return device && toPlot(points, scratch) ? device->drawLine(LINE_PEN, scratch) : 0;
}

int Graph::drawRect(Rect const & rect)
{
    Points outline;
    outline.all() = {Point(rect.x1, rect.y1), Point(rect.x2, rect.y1), Point(rect.x2, rect.y2),
                     Point(rect.x1, rect.y2), Point(rect.x1, rect.y1)};
    return drawLine(outline);
}

int Graph::drawCircle(float x, float y, float radius)
{
    Points outline;
    for (int i = 0; i <= CIRCLE_STEPS; ++i) {
        double const angle = 2 * Const::PI * (i % CIRCLE_STEPS) / CIRCLE_STEPS;
        outline.add(Point(static_cast<float>(x + radius * std::cos(angle)),
                          static_cast<float>(y + radius * std::sin(angle))));
    }
    return drawLine(outline);
}

int Graph::drawFill(Points const & points)
{
    return device && toPlot(points, scratch) ? device->drawFill(FILL_PEN, scratch) : 0;
}

int Graph::drawFill(Rect const & rect)
{
    Points corners;
    corners.all() = {Point(rect.x1, rect.y1), Point(rect.x2, rect.y1), Point(rect.x2, rect.y2),
                     Point(rect.x1, rect.y2)};
    return drawFill(corners);
}

int Graph::drawFillarea(Points const & points)
{
    return drawFill(points);
}

// ---- marks and symbols ----

int Graph::drawMark(float x, float y)
{
    return drawMarkLine(x, y, mark_size);
}

int Graph::drawMarkLine(float x, float y, float size)
{
    if (!device || !isSize(size))
        return 0;
    float const half = size / 2;
    Points line;
    int is_drawn = 1;
    auto const finish = [&] {
        if (line.getNum() > 0)
            is_drawn &= toPlot(line, scratch) ? device->drawLine(MARK_PEN, scratch) : 0;
        line.clear();
    };
    for (auto const & vertex : detail::markFigure(mark_type)) {
        if (vertex.is_move)
            finish();
        line.add(Point(x + vertex.x * half, y + vertex.y * half));
    }
    finish();
    return is_drawn;
}

int Graph::setSymbol(char const * name)
{
    if (!device || !StrLib::valid(name) || symbol_name == name)
        return 0;
    symbol_name = name;
    return loadSymbols();
}

int Graph::loadSymbols()
{
    if (symbols.open(detail::databaseFile(symbol_name).c_str()) != 0)
        return 1;
    Yul::outWarning("setSymbol: unable to load symbols: %s\n", symbol_name.c_str());
    return 0;
}

int Graph::drawSymbol(float x, float y, char const * name, float size)
{
    return drawSymbol(x, y, name, size, 0);
}

int Graph::drawSymbol(float x, float y, char const * name, float size, float angle)
{
    return drawShape(x, y, symbols.find(name), size, angle, false);
}

int Graph::drawWindBarb(float x, float y, float direction, float speed, float size, bool is_south)
{
    if (!(speed >= 0))
        return 0;
    int const step = 5;
    int knots = static_cast<int>(std::lround(std::min(speed, MAX_SPEED) / step)) * step;
    Symbol::Shape const * shape = nullptr;
    for (; knots >= 0 && shape == nullptr; knots -= step)
        shape = symbols.find(detail::format("wind%d", knots).c_str());
    return drawShape(x, y, shape, size, direction, is_south);
}

/// Symbols keep their shape when the axes of the window have different scales: their size is that along y.
int Graph::drawShape(float x, float y, Symbol::Shape const * shape, float size, float angle, bool is_mirrored)
{
    if (!device || shape == nullptr || !isSize(size) || !std::isfinite(angle))
        return 0;
    GTran const & t = tran();
    double const turn = static_cast<double>(angle) * Const::PI / 180;
    double const half_y = size / 2;
    double const half_x = half_y * t.getPlotPerWindowY() / t.getPlotPerWindowX();
    int is_drawn = 1;
    for (Symbol::Part const & part : *shape) {
        Points points;
        for (Symbol::Vertex const & vertex : part.vertices) {
            double const across = is_mirrored ? -vertex.x : vertex.x;
            points.add(Point(
                static_cast<float>(x + (across * std::cos(turn) + vertex.y * std::sin(turn)) * half_x),
                static_cast<float>(y + (vertex.y * std::cos(turn) - across * std::sin(turn)) * half_y)));
        }
        if (!toPlot(points, scratch))
            return 0;
        if (part.is_fill) {
            device->setColor(FILL_PEN, mark_color);
            is_drawn &= device->drawFill(FILL_PEN, scratch);
            device->setColor(FILL_PEN, fill_color);
        } else
            is_drawn &= device->drawLine(MARK_PEN, scratch);
    }
    return is_drawn;
}

// ---- images ----

int Graph::setImageAlign(int horizontal, int vertical)
{
    return device ? device->setImageAlign(horizontal, vertical) : 0;
}

int Graph::drawImage(Image const & image, float x, float y)
{
    return device ? device->drawImage(image, tran().tranWindowPlotX(x), tran().tranWindowPlotY(y)) : 0;
}

int Graph::drawImage(Image const & image, int frame, float x, float y)
{
    return device ? device->drawImage(image, frame, tran().tranWindowPlotX(x), tran().tranWindowPlotY(y)) : 0;
}

int Graph::getImage(Image & image)
{
    return device ? device->getImage(image) : 0;
}

} // namespace Yul
