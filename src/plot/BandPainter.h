// Filling the bands between levels.
#pragma once

#include "geo/Point.h"
#include "graphics/Graph.h"
#include "plot/BandTracer.h"
#include "plot/Clip.h"
#include "plot/ClipArea.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace Yul::detail {

/// A level and the device's colour for the values from it up to the next one; -1 leaves them unpainted.
struct Band
{
    float from;
    int color;
};

/// What a page cannot show, in the units of the plane.
struct Fineness
{
    float x;
    float y;
};

/// Paints bands, each over all values above its level, so that no gap is left where two meet; only below an
/// unpainted band a band has an end.
class BandPainter
{
public:
    /// bands  in the order of their levels
    BandPainter(Graph & on_graph, std::span<Band const> all_bands, Rect const & plot_frame, Fineness smallest)
        : graph(on_graph), frame(plot_frame), fineness(smallest)
    {
        for (Band const & band : all_bands) {
            levels.push_back(band.from);
            colors.push_back(band.color);
        }
    }

    /// places(column, row, CellPlaces &) as for `sweepCells`; find(column, row, x, y) gives a point's place.
    template <class Places, class Find>
    void paint(FieldView const & view, Places const & places, Find const & find)
    {
        bool const has_open = std::any_of(colors.begin(), colors.end(), [](int c) { return c < 0; });
        BandTracer const tracer(view, levels, has_open ? SaddleRule::NESTED : SaddleRule::AS_LINES,
                                usableCells(view, places));
        graph.setFillStyle(0);
        for (std::size_t i = 0; i < levels.size(); ++i) {
            bool const is_painted = i > 0 && colors[i] == colors[i - 1];
            if (colors[i] < 0 || is_painted)
                continue;
            auto const open = std::find_if(colors.begin() + static_cast<std::ptrdiff_t>(i), colors.end(),
                                           [](int c) { return c < 0; });
            int const high = open == colors.end() ? -1 : static_cast<int>(open - colors.begin());
            graph.setFillColor(colors[i]);
            for (BandOutline const & outline : tracer.trace(static_cast<int>(i), high))
                fill(outline, find);
        }
    }

private:
    template <class Places>
    static std::vector<std::uint8_t> usableCells(FieldView const & view, Places const & places)
    {
        std::vector<std::uint8_t> usable;
        CellPlaces place;
        usable.reserve(static_cast<std::size_t>(view.end_row - view.first_row) *
                       static_cast<std::size_t>(view.end_column - view.first_column));
        for (int row = view.first_row; row < view.end_row; ++row)
            for (int column = view.first_column; column < view.end_column; ++column)
                usable.push_back(places(column, row, place) ? 1 : 0);
        return usable;
    }

    template <class Find> void fill(BandOutline const & outline, Find const & find)
    {
        auto & points = area.all();
        points.clear();
        bool is_inside = true;
        for (BandNode const & node : outline) {
            Point const p = placeOf(node, find);
            is_inside = is_inside && isInside(frame, p.x, p.y);
            if (points.empty() || std::abs(p.x - points.back().x) > fineness.x ||
                std::abs(p.y - points.back().y) > fineness.y)
                points.push_back(p);
        }
        if (!is_inside)
            clipArea(frame, points, scratch);
        if (points.size() > 2)
            graph.drawFill(area);
    }

    template <class Find> static Point placeOf(BandNode const & node, Find const & find)
    {
        Point start;
        find(node.column, node.row + (node.kind == BandNode::VERTICAL ? 1 : 0), start.x, start.y);
        if (node.kind == BandNode::POINT)
            return start;
        Point end;
        find(node.column + (node.kind == BandNode::HORIZONTAL ? 1 : 0), node.row, end.x, end.y);
        return {alongSide(start.x, end.x, node.t), alongSide(start.y, end.y, node.t)};
    }

    Graph & graph;
    Rect frame;
    Fineness fineness;
    std::vector<float> levels;
    std::vector<int> colors;
    Points area;
    std::vector<Point> scratch;
};

} // namespace Yul::detail
