// The transforms of a Graph.
#include "core/Yul.h"
#include "graphics/Graph.h"

#include <cmath>

namespace Yul {
namespace {

bool isTran(int tran)
{
    return tran >= 0 && tran < Graph::NUM_TRANS;
}

/// A side of the viewport: a negative value is an inset from its edge.
float inset(float value, float edge, float direction)
{
    return value < 0 ? edge - direction * value : value;
}

/// Places `size` in low..high by an alignment code: 1 low, 3 high, else centred; returns the low end.
float place(float low, float high, float size, int align)
{
    return align == 1 ? low : align == 3 ? high - size : (low + high - size) / 2;
}

} // namespace

GTran const & Graph::getTransform(int tran) const
{
    return trans[static_cast<std::size_t>(isTran(tran) ? tran : current)];
}

int Graph::setTran(int tran)
{
    if (!device || !isTran(tran))
        return 0;
    current = tran;
    return 1;
}

int Graph::setWindow(Rect const & rect)
{
    return setWindow(current, rect);
}

int Graph::setWindow(int tran, Rect const & rect)
{
    return device && isTran(tran) ? trans[static_cast<std::size_t>(tran)].setWindow(rect) : 0;
}

int Graph::setViewport(Rect const & rect)
{
    return setViewport(current, rect);
}

int Graph::setViewport(int tran, Rect const & rect)
{
    return device && isTran(tran) ? trans[static_cast<std::size_t>(tran)].setViewport(rect) : 0;
}

Rect const & Graph::getWindow() const
{
    return tran().getWindow();
}

int Graph::getWindow(Rect & rect) const
{
    rect = getWindow();
    return device ? 1 : 0;
}

Rect const & Graph::getViewport() const
{
    return tran().getViewport();
}

int Graph::getViewport(Rect & rect) const
{
    rect = getViewport();
    return device ? 1 : 0;
}

Rect const & Graph::getMaxViewport() const
{
    return tran().getNdc();
}

int Graph::getMaxViewport(Rect & rect) const
{
    rect = getMaxViewport();
    return device ? 1 : 0;
}

Rect const & Graph::getDeviceViewport() const
{
    return tran().getClipRect();
}

int Graph::getDeviceViewport(Rect & rect) const
{
    rect = getDeviceViewport();
    return device ? 1 : 0;
}

int Graph::setViewportAspect(Rect const & rect, float aspect, int halign, int valign)
{
    if (!device)
        return 0;
    Rect const & ndc = tran().getNdc();
    float const x1 = inset(rect.x1, ndc.x1, 1);
    float const y1 = inset(rect.y1, ndc.y1, 1);
    float const x2 = inset(rect.x2, ndc.x2, -1);
    float const y2 = inset(rect.y2, ndc.y2, -1);
    float const w = x2 - x1;
    float const h = y2 - y1;
    float const ratio = aspect == 0 ? w / h : aspect;
    bool const is_narrower = ratio * h < w;
    float const width = is_narrower ? ratio * h : w;
    float const height = is_narrower ? h : w / ratio;
    Rect box;
    box.x1 = place(x1, x2, width, halign);
    box.y1 = place(y1, y2, height, valign);
    box.x2 = halign == 3 ? x2 : box.x1 + width;
    box.y2 = valign == 3 ? y2 : box.y1 + height;
    Yul::outDebug(4, "setViewportAspect: %.3f %.3f %.3f %.3f\n", box.x1, box.y1, box.x2, box.y2);
    return setViewport(box);
}

int Graph::tranPlotWindow(float plot_x, float plot_y, float & x, float & y) const
{
    if (!device)
        return 0;
    x = tran().tranPlotWindowX(plot_x);
    y = tran().tranPlotWindowY(plot_y);
    return 1;
}

int Graph::tranPlotView(float plot_x, float plot_y, float & x, float & y) const
{
    if (!device)
        return 0;
    x = tran().tranPlotNdcX(plot_x);
    y = tran().tranPlotNdcY(plot_y);
    return 1;
}

int Graph::tranWindow(int from, float from_x, float from_y, int to, float & x, float & y) const
{
    if (!device || !isTran(from) || !isTran(to))
        return 0;
    GTran const & a = getTransform(from);
    GTran const & b = getTransform(to);
    x = GTran::tranWindowX(a, b, from_x);
    y = GTran::tranWindowY(a, b, from_y);
    return 1;
}

int Graph::tranPlotWindow(float plot_x, float plot_y, Point & point) const
{
    return tranPlotWindow(plot_x, plot_y, point.x, point.y);
}

int Graph::tranPlotView(float plot_x, float plot_y, Point & point) const
{
    return tranPlotView(plot_x, plot_y, point.x, point.y);
}

int Graph::tranWindow(int from, float from_x, float from_y, int to, Point & point) const
{
    return tranWindow(from, from_x, from_y, to, point.x, point.y);
}

int Graph::printTran() const
{
    return tran().print();
}

Rect Graph::toPlot(Rect const & rect) const
{
    Rect plot;
    plot.setu(tran().tranWindowPlotX(rect.x1), tran().tranWindowPlotY(rect.y1),
              tran().tranWindowPlotX(rect.x2), tran().tranWindowPlotY(rect.y2));
    return plot;
}

int Graph::setClip(Rect const & rect)
{
    return device ? device->setClip(toPlot(rect)) : 0;
}

int Graph::setClip()
{
    return device ? device->setClip(device->getCoords()) : 0;
}

} // namespace Yul
