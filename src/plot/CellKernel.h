// Where a level crosses the sides of a grid cell: plain numbers only.
#pragma once

#include "core/Const.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Yul::detail {

/// What stands for a side in place of a crossing fraction.
constexpr float AT_CORNER = -1.F; ///< the level equals the side's tested corner
constexpr float BEFORE_SIDE = -2.F;
constexpr float BEHIND_SIDE = -3.F;
constexpr float FLAT_ON_LEVEL = -4.F;
constexpr float FLAT_OFF_LEVEL = -5.F; ///< also the value of a side that was not looked at

/// A side of a cell: the corners where its fraction is 0 and 1, and the one that is compared with the level.
/// Corners 0 and 1 are the upper left and right one, 2 and 3 the lower left and right one, so that a side has
/// the same direction in both of its cells and is crossed at the same place in both.
struct CellSide
{
    unsigned start;
    unsigned end;
    unsigned tested;
};

constexpr std::array<CellSide, 4> CELL_SIDES = {{{0, 1, 0}, {3, 1, 1}, {2, 3, 3}, {2, 0, 2}}};

/// The corners of a cell. Values change while levels are set: a corner that equals a level is moved off it.
struct CellCorners
{
    std::array<float, 4> value{};
    float min = 0;
    float max = 0;
    bool is_complete = false; ///< every corner is a number and none is missing

    void set(float c0, float c1, float c2, float c3)
    {
        value = {c0, c1, c2, c3};
        min = std::min(std::min(c0, c1), std::min(c2, c3));
        max = std::max(std::max(c0, c1), std::max(c2, c3));
        is_complete = std::all_of(value.begin(), value.end(),
                                  [](float c) { return std::isfinite(c) && !isMissing(c); });
    }
};

/// What a level does to the sides of a cell.
struct CellCrossings
{
    std::array<float, 4> side{FLAT_OFF_LEVEL, FLAT_OFF_LEVEL, FLAT_OFF_LEVEL, FLAT_OFF_LEVEL};
    int count = 0;
    int position = 0; ///< -1 the level lies below the cell, 1 above, 0 in its range
    float saddle = 0; ///< total of the fractions, which decides how four crossings are joined

    [[nodiscard]] bool isCrossed(std::size_t i) const { return side[i] >= 0.F; }

    /// True when the segments of four crossings join the first two and the last two.
    [[nodiscard]] bool joinsNeighbours() const { return saddle >= 2.F; }
};

/// Fraction of the side at which the level crosses it, or the code that stands in its place.
[[nodiscard]] inline float crossSide(CellCorners const & cell, CellSide const & side, float level)
{
    float const start = cell.value[side.start];
    float const end = cell.value[side.end];
    if (start == end)
        return start == level ? FLAT_ON_LEVEL : FLAT_OFF_LEVEL;
    if (cell.value[side.tested] == level)
        return AT_CORNER;
    float const t = (level - start) / (end - start);
    if (t > 1.F)
        return BEHIND_SIDE;
    return t >= 0.F ? t : BEFORE_SIDE;
}

/// Moves every corner that equals the level down by the tweak. An unset tweak is first derived from the
/// corner: kept as it is, negative corners move up and a corner of 0 stays.
inline void moveOffLevel(CellCorners & cell, float & tweak, float level)
{
    constexpr double SHARE = 5e-5;
    for (float & corner : cell.value) {
        if (corner != level)
            continue;
        if (isMissing(tweak))
            tweak = static_cast<float>(static_cast<double>(corner) * SHARE);
        corner -= tweak;
    }
}

[[nodiscard]] inline bool isEnd(float t)
{
    return t == 0.F || t == 1.F;
}

/// Clears the crossings that lie exactly on a corner and leaves the cell without any to draw.
inline void clearEnds(CellCrossings & result)
{
    for (float & t : result.side)
        if (isEnd(t))
            t = AT_CORNER;
    result.count = 0;
}

/// A line that enters the cell must leave it: a single crossing gets a partner at a corner on the level.
inline void completeSingle(CellCrossings & result)
{
    for (std::size_t i = 0; i < CELL_SIDES.size(); ++i) {
        if (result.side[i] == AT_CORNER) {
            result.side[i] = CELL_SIDES[i].tested == CELL_SIDES[i].end ? 1.F : 0.F;
            result.count = 2;
            return;
        }
    }
    clearEnds(result);
}

/// Sets the cell to a level. Works on any values: degenerate cells end with no, two or four crossings.
[[nodiscard]] inline CellCrossings crossCell(CellCorners & cell, float & tweak, float level)
{
    CellCrossings result;
    if (level < cell.min || level > cell.max) {
        result.position = level < cell.min ? -1 : 1;
        return result;
    }
    if (!cell.is_complete || !std::isfinite(level))
        return result;
    moveOffLevel(cell, tweak, level);

    int flat_sides = 0;
    for (std::size_t i = 0; i < CELL_SIDES.size(); ++i) {
        result.side[i] = crossSide(cell, CELL_SIDES[i], level);
        result.count += result.isCrossed(i) ? 1 : 0;
        flat_sides += result.side[i] == FLAT_ON_LEVEL ? 1 : 0;
    }
    if (flat_sides > 1)
        clearEnds(result);
    if (result.count == 1) {
        completeSingle(result);
    } else if (result.count == 3) {
        if (isEnd(result.side[0]))
            result.side[0] = AT_CORNER;
        else if (isEnd(result.side[1]))
            result.side[1] = AT_CORNER;
        result.count = 2;
    }
    result.saddle = result.side[2] + result.side[3] + (2.F - result.side[0] - result.side[1]);
    return result;
}

/// A position on a side, one coordinate.
[[nodiscard]] inline float alongSide(float start, float end, float t)
{
    return start + t * (end - start);
}

} // namespace Yul::detail
