// Labels along contour lines.
#pragma once

#include "geo/Rect.h"
#include "plot/LabelBox.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Yul::detail {

/// One drawn line with the cell that it lies in, in page measure.
struct DrawnLine
{
    float x1;
    float y1;
    float x2;
    float y2;
    int column;
    int row;
    std::int16_t level;
    std::int8_t side1; ///< the cell's side that each end lies on, -1 for none
    std::int8_t side2;
};

/// How the labels of one level look.
struct LevelLabel
{
    float width = 0; ///< of the text; 0 for a level without labels
};

struct LineLabel
{
    LabelBox box;
    int level;
};

struct LabelRules
{
    Rect frame; ///< labels stay inside
    float text_height = 0;
    float spacing = 0;        ///< from one label of a level to the next
    int most_candidates = 60; ///< places tried for each level
};

/// Finds places for labels: where a line runs straight enough for its text, inside the frame, clear of all
/// boxes there are, and far enough from labels of the same level. Lines are followed from cell to cell only
/// as far as a label reaches.
/// lines  by rows and in each row by columns, as `sweepCells` gives them.
/// boxes  in: what labels must keep clear of; out: with the labels added.
[[nodiscard]] std::vector<LineLabel> placeLabels(std::span<DrawnLine const> lines,
                                                 std::span<LevelLabel const> levels,
                                                 LabelRules const & rules,
                                                 LabelBoxes & boxes);

} // namespace Yul::detail
