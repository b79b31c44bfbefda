// Which contour levels a field gets.
#pragma once

#include "core/Const.h"
#include "geo/Rect.h"

#include <span>
#include <vector>

namespace Yul::detail {

/// What decides the levels of a field; Const::MISS where it is not given.
struct LevelRequest
{
    float interval = Const::MISS;  ///< 0 asks for a plain interval, as if not given
    float base = Const::MISS;      ///< a level that the others are counted from
    float low = Const::MISS;       ///< no level below
    float high = Const::MISS;      ///< no level above
    int parts = 1;                 ///< how many parts a plain interval makes of the range
    std::span<float const> values; ///< explicit levels; they take the place of all the rest
};

/// The levels themselves.
struct LevelScale
{
    float interval = Const::MISS; ///< not set for explicit levels
    float lowest = 0;
    float highest = Const::MISS;
    std::vector<float> levels;
    bool is_recomputed = false; ///< the interval asked for gave too many levels and was replaced
};

/// More levels than this replace the interval asked for.
constexpr int MOST_LEVELS = 150;

/// Levels at whole steps from the base, from just below the range's minimum to just above its maximum.
[[nodiscard]] LevelScale chooseLevels(LevelRequest const & request, Range const & range);

} // namespace Yul::detail
