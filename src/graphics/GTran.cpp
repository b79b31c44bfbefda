#include "graphics/GTran.h"

#include "core/Format.h"
#include "core/Output.h"

#include <cmath>
#include <limits>

namespace Yul {
namespace {

/// True when coordinates can be divided by the rectangle's extents.
bool isUsable(Coords const & c)
{
    return std::isfinite(c.x1) && std::isfinite(c.y1) && std::isfinite(c.dx) && std::isfinite(c.dy) &&
           c.dx != 0 && c.dy != 0;
}

} // namespace

Coords::Coords(Rect const & rect) : Rect(rect), dx(rect.x2 - rect.x1), dy(rect.y2 - rect.y1) {}

GTran::GTran()
{
    Rect unit;
    unit.setu(0, 1, 1, 0);
    set(unit);
}

GTran::GTran(Rect const & device) : GTran()
{
    set(device);
}

int GTran::set(Rect const & device)
{
    Coords const next(device);
    if (!isUsable(next))
        return 0;
    float const height = std::abs(next.dy);
    float const width = std::abs(next.dx);
    bool const is_wide = width > height;
    float const sx = is_wide ? 1 : width / height;
    float const sy = is_wide ? height / width : 1;
    plot = next;
    ndc = Coords(Rect(0, 0, sx, sy));
    window = ndc;
    viewport = ndc;
    plot_scale_x = static_cast<double>(plot.dx) / sx;
    plot_scale_y = static_cast<double>(plot.dy) / sy;
    update();
    return 1;
}

int GTran::resize(Rect const & device)
{
    return set(device);
}

int GTran::setWindow(Rect const & rect)
{
    Coords const next(rect);
    if (!isUsable(next))
        return 0;
    window = next;
    update();
    return 1;
}

int GTran::setViewport(Rect const & rect)
{
    Coords const next(rect);
    if (!isUsable(next))
        return 0;
    viewport = next;
    update();
    return 1;
}

int GTran::setWindow(float x1, float y1, float x2, float y2)
{
    Rect rect;
    rect.setu(x1, y1, x2, y2);
    return setWindow(rect);
}

int GTran::setViewport(float x1, float y1, float x2, float y2)
{
    Rect rect;
    rect.setu(x1, y1, x2, y2);
    return setViewport(rect);
}

void GTran::update()
{
    view_scale_x = static_cast<double>(viewport.dx) / window.dx;
    view_scale_y = static_cast<double>(viewport.dy) / window.dy;
    clip.set(tranNdcPlotX(viewport.x1), tranNdcPlotY(viewport.y1), tranNdcPlotX(viewport.x2),
             tranNdcPlotY(viewport.y2));
}

float GTran::getPlotPerWindowX() const noexcept
{
    return toFloat(std::abs(view_scale_x * plot_scale_x));
}

float GTran::getPlotPerWindowY() const noexcept
{
    return toFloat(std::abs(view_scale_y * plot_scale_y));
}

float GTran::tranPlotNdcX(float x) const noexcept
{
    return toFloat((static_cast<double>(x) - plot.x1) / plot_scale_x);
}

float GTran::tranPlotNdcY(float y) const noexcept
{
    return toFloat(ndc.y2 - (static_cast<double>(y) - plot.y1) / plot_scale_y);
}

float GTran::tranPlotWindowX(float x) const noexcept
{
    double const view = (static_cast<double>(x) - plot.x1) / plot_scale_x;
    return toFloat((view - viewport.x1) / view_scale_x + window.x1);
}

float GTran::tranPlotWindowY(float y) const noexcept
{
    double const view = ndc.y2 - (static_cast<double>(y) - plot.y1) / plot_scale_y;
    return toFloat((view - viewport.y1) / view_scale_y + window.y1);
}

float GTran::tranWindowX(GTran const & from, GTran const & to, float x) noexcept
{
    double const view = (static_cast<double>(x) - from.window.x1) * from.viewport.dx / from.window.dx +
                        from.viewport.x1 - to.viewport.x1;
    return toFloat(view / to.viewport.dx * to.window.dx + to.window.x1);
}

float GTran::tranWindowY(GTran const & from, GTran const & to, float y) noexcept
{
    double const view = (static_cast<double>(y) - from.window.y1) * from.viewport.dy / from.window.dy +
                        from.viewport.y1 - to.viewport.y1;
    return toFloat(view / to.viewport.dy * to.window.dy + to.window.y1);
}

float GTran::toFloat(double value) noexcept
{
    constexpr double LIMIT = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -LIMIT, LIMIT));
}

bool GTran::isPointsInWindow(int n, Point const * points) const
{
    if (points == nullptr)
        return false;
    constexpr float FAR = std::numeric_limits<float>::infinity();
    Rect box;
    box.setu(FAR, FAR, -FAR, -FAR);
    for (int i = 0; i < n; ++i) {
        box.x1 = std::min(box.x1, points[i].x);
        box.y1 = std::min(box.y1, points[i].y);
        box.x2 = std::max(box.x2, points[i].x);
        box.y2 = std::max(box.y2, points[i].y);
    }
    Rect const ordered(window.x1, window.y1, window.x2, window.y2);
    return box.x1 <= ordered.x2 && box.x2 >= ordered.x1 && box.y1 <= ordered.y2 && box.y2 >= ordered.y1;
}

bool GTran::isPointsInWindow(Points const & points) const
{
    return isPointsInWindow(points.getNum(), points.all().data());
}

int GTran::print() const
{
    auto const line = [](char const * name, Rect const & r) {
        return detail::format("%s: %.3f %.3f %.3f %.3f\n", name, r.x1, r.y1, r.x2, r.y2);
    };
    detail::writeOut(
        line("Plot", plot) + line("NDC", ndc) + line("Window", window) + line("Viewport", viewport) +
        detail::format("Scale: %g %g %g %g\n", view_scale_x, view_scale_y, plot_scale_x, plot_scale_y));
    return 1;
}

} // namespace Yul
