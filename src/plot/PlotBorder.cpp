// The frame of a plot and what is drawn from its domain: graticule, ticks and their labels.
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace Yul {
namespace {

using detail::Graticule;
using detail::GraticuleTick;
using detail::LineKind;

constexpr char const * GRATICULE_ATTR = "gray:wi=1:st=5";
constexpr float FRAME_WIDTH = 3; // dots
constexpr float TICK_WIDTH = 2;
constexpr float TICK_WEIGHT = 1.5F;

/// In text heights.
constexpr float TICK_LENGTH = 0.55F;
constexpr float TICK_GAP = 0.45F;
constexpr float TICK_LABEL_HEIGHT = 0.82F;

bool isAcross(GraticuleTick::Edge edge)
{
    return edge == GraticuleTick::BOTTOM || edge == GraticuleTick::TOP;
}

/// The lines that one expects along an edge: meridians below and above, parallels at the sides.
bool isExpected(LineKind kind, GraticuleTick::Edge edge)
{
    return (kind == LineKind::MERIDIAN || kind == LineKind::X_AXIS) == isAcross(edge);
}

/// The ticks of an edge that get labels: of the kind that meets it more often, in their order along it.
std::vector<GraticuleTick> labelledTicks(Graticule const & graticule, GraticuleTick::Edge edge)
{
    std::vector<GraticuleTick> expected;
    std::vector<GraticuleTick> others;
    for (GraticuleTick const & tick : graticule.ticks)
        if (tick.edge == edge)
            (isExpected(tick.kind, edge) ? expected : others).push_back(tick);
    std::vector<GraticuleTick> & chosen = others.size() > expected.size() + 1 ? others : expected;
    std::sort(chosen.begin(), chosen.end(), [&](GraticuleTick const & a, GraticuleTick const & b) {
        return isAcross(edge) ? a.x < b.x : a.y < b.y;
    });
    return chosen;
}

/// The side of the frame has room for labels.
bool hasLabels(detail::PanelLayout const & layout, GraticuleTick::Edge edge)
{
    switch (edge) {
    case GraticuleTick::LEFT:
        return layout.has_left;
    case GraticuleTick::RIGHT:
        return layout.has_right;
    case GraticuleTick::BOTTOM:
        return layout.has_bottom;
    default:
        return layout.has_top;
    }
}

/// A unit step away from the frame.
Point outward(GraticuleTick::Edge edge)
{
    switch (edge) {
    case GraticuleTick::LEFT:
        return {-1, 0};
    case GraticuleTick::RIGHT:
        return {1, 0};
    case GraticuleTick::BOTTOM:
        return {0, -1};
    default:
        return {0, 1};
    }
}

} // namespace

int Plot::drawGraticule(PlotAttr const & attr, float lat_step, float lon_step)
{
    if (!graph.isOpen())
        return 0;
    if (!isDrawn(detail::DRAW_MAP))
        return 1;
    steps = {lat_step, lon_step};
    PlotAttr line = attr;
    line.update(PlotAttr(GRATICULE_ATTR));
    if (!line.validColor())
        return 1;
    Graticule const graticule = detail::makeGraticule(domain, getFrame(), steps);
    graph.setTran(MAP_TRAN);
    graph.setLineColor(findColor(attr, line.color_name));
    graph.setLineStyle(line.style);
    graph.setLineWidth(line.width);
    for (auto const & piece : graticule.lines)
        graph.drawLine(piece.points);
    return 1;
}

int Plot::drawGraticule(char const * attr, float lat_step, float lon_step)
{
    return drawGraticule(PlotAttr(attr), lat_step, lon_step);
}

int Plot::drawGraticule(char const * attr)
{
    return drawGraticule(attr, Const::MISS, Const::MISS);
}

int Plot::drawBorder()
{
    if (!graph.isOpen())
        return 0;
    if (!isDrawn(detail::DRAW_BORDER))
        return 1;
    Rect const view = graph.getTransform(MAP_TRAN).getViewport();
    graph.setTran(PAGE_TRAN);
    graph.setLineColor(findColor(border_color.c_str(), labelColor()));
    graph.setLineStyle(1);
    if (!style.is_full)
        drawTicks();
    graph.setLineWidth(FRAME_WIDTH);
    graph.drawRect(view);
    graph.setTran(MAP_TRAN);
    return 1;
}

void Plot::drawTicks()
{
    Graticule const graticule = detail::makeGraticule(domain, getFrame(), steps);
    float const length = TICK_LENGTH * layout.text_height;
    graph.setLineWidth(TICK_WIDTH);
    startText(TICK_LABEL_HEIGHT * layout.text_height, TICK_WEIGHT);

    for (auto const edge :
         {GraticuleTick::LEFT, GraticuleTick::RIGHT, GraticuleTick::BOTTOM, GraticuleTick::TOP}) {
        Point const away = outward(edge);
        float free_from = -1; // along the edge, where the last label ends
        for (GraticuleTick const & tick : labelledTicks(graticule, edge)) {
            float x = 0;
            float y = 0;
            graph.tranWindow(MAP_TRAN, tick.x, tick.y, PAGE_TRAN, x, y);
            graph.drawLine(x, y, x + away.x * length, y + away.y * length);
            if (hasLabels(layout, edge))
                drawTickLabel(tick, Point(x + away.x * length, y + away.y * length), free_from);
        }
    }
}

/// place      where the tick ends
/// free_from  along the edge, where the last label ends; moves on
void Plot::drawTickLabel(GraticuleTick const & tick, Point const & place, float & free_from)
{
    float const text_height = TICK_LABEL_HEIGHT * layout.text_height;
    std::string const text = detail::graticuleLabel(tick.kind, tick.value);
    bool const is_across = isAcross(tick.edge);
    float const size = is_across ? graph.getTextWidth(text.c_str()) : text_height;
    float const along = is_across ? place.x : place.y;
    if (along - size / 2 < free_from)
        return;
    free_from = along + size / 2 + text_height;
    Point const away = outward(tick.edge);
    float const gap = TICK_GAP * layout.text_height;
    float const drop = tick.edge == GraticuleTick::TOP      ? 0
                       : tick.edge == GraticuleTick::BOTTOM ? text_height
                                                            : text_height / 2;
    graph.setTextAlign(tick.edge == GraticuleTick::LEFT ? 3 : tick.edge == GraticuleTick::RIGHT ? 1 : 2, 1);
    graph.drawText(place.x + away.x * gap, place.y + away.y * gap - drop, text.c_str());
}

} // namespace Yul
