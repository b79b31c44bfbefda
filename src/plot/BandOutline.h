// Outlines of the parts of a field whose values lie between two levels.
#pragma once

#include <cstdint>
#include <vector>

namespace Yul::detail {

/// A corner of an outline: a point of the grid, or a place on the side of a cell.
struct BandNode
{
    enum Kind : std::uint8_t {
        POINT,      ///< the point itself
        HORIZONTAL, ///< between the point and its right neighbour, from left to right
        VERTICAL    ///< between the point and its lower neighbour, from below to above
    };

    int column;
    int row;
    Kind kind;
    float t; ///< fraction of the side
};

/// One closed outline, the last node joined to the first.
using BandOutline = std::vector<BandNode>;

} // namespace Yul::detail
