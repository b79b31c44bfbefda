// The figures of the mark types.
#pragma once

#include <span>

namespace Yul::detail {

/// A vertex of a mark, in units of half the mark's size from its position.
struct MarkVertex
{
    float x;
    float y;
    bool is_move = false; ///< starts another line
};

inline constexpr int NUM_MARKS = 10;

/// The lines of mark type 1 to 10, one or two; empty for any other number.
[[nodiscard]] std::span<MarkVertex const> markFigure(int type);

} // namespace Yul::detail
