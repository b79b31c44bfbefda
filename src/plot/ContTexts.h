// The texts of one drawing of contours: labels in the lines, and the field's highs and lows.
#pragma once

#include "plot/CellSweep.h"
#include "plot/ContStyle.h"
#include "plot/Extrema.h"
#include "plot/LineLabels.h"
#include "plot/PageScale.h"

#include <functional>
#include <vector>

namespace Yul {

/// Finds places for texts, which the layer keeps until they are drawn.
class ContPlot::Texts
{
public:
    /// Gives a point of the grid, by column and row, its place in the plot's plane; false where it has none.
    using Find = std::function<bool(int column, int row, float & x, float & y)>;

    Texts(ContPlot & contours, Plot & on_plot, Style const & of_lines);

    /// Places the letters and values of extrema inside the frame. `visible_points`: points of the grid in it.
    void placeExtrema(detail::FieldView const & view,
                      Find const & find,
                      Rect const & frame,
                      double visible_points);

    /// Places labels along lines in page measure.
    void placeLabels(std::vector<detail::DrawnLine> const & lines);

    /// The room that the texts take.
    [[nodiscard]] detail::LabelBoxes const & getBoxes() const noexcept { return boxes; }

private:
    void setTextSize(float height, float weight);
    void placeExtremum(detail::Extremum const & extremum, float step, float x, float y);
    [[nodiscard]] float plainStep() const;

    ContPlot & cont;
    Plot & plot;
    Graph & graph;
    Style const & style;
    Rect viewport; // of the map
    detail::LabelBoxes boxes;
};

} // namespace Yul
