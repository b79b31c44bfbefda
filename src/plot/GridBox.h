// One grid cell and the contour level in it.
#pragma once

#include "geo/Point.h"
#include "plot/CellKernel.h"

#include <array>

namespace Yul {

/// Finds where a contour level crosses the sides of one grid cell. Corners 0 and 1 are the upper left and
/// right one, 2 and 3 the lower left and right one. Sides: 0 from corner 0 to 1, 1 from corner 3 to 1, 2 from
/// corner 2 to 3, 3 from corner 2 to 0.
class GridBox
{
public:
    GridBox() = default;

    /// Forgets corners, level and tweak.
    int init();

    /// How far a corner is moved that equals the level; 0 counts as set. Const::MISS until set: the first
    /// such corner then sets it to 5e-5 of its value. NaN is refused.
    int setTweak(float value);

    /// The tweak; Const::MISS until set.
    [[nodiscard]] float getTweak() const noexcept { return tweak; }

    /// Corner values; one that is Const::MISS or no finite number leaves the cell without contours.
    int setValues(float c0, float c1, float c2, float c3);
    /// Corner positions.
    int setPoints(Point const & p0, Point const & p1, Point const & p2, Point const & p3);

    /// Finds the crossings of a level. Corners that equal it are moved by the tweak, and stay moved.
    /// return  the number of crossings: 0, 2 or 4; with 2, the first two are the ends of the line.
    int setLevel(float value);

    /// Corner value i as it is now; Const::MISS for another index.
    [[nodiscard]] float getValue(int i) const noexcept;

    /// The level set last.
    [[nodiscard]] float getLevel() const noexcept { return level; }

    /// Fraction along side i at which it is crossed, or a code: -1 the level equals the side's corner, -2 it
    /// lies before the side's start, -3 behind its end, -4 the side lies on the level, -5 neither.
    [[nodiscard]] float getSide(int i) const noexcept;

    /// The number of crossings: 0, 2 or 4.
    [[nodiscard]] int getNumCross() const noexcept { return crossings.count; }

    /// The side of crossing i, in side order; -1 for another index.
    [[nodiscard]] int getCrossSide(int i) const noexcept;
    /// The place of crossing i; an unset point for another index. Valid until the next level is set.
    [[nodiscard]] Point & getCross(int i);

    /// The smallest of the corner values.
    [[nodiscard]] float getMin() const noexcept { return corners.min; }

    /// The largest of the corner values.
    [[nodiscard]] float getMax() const noexcept { return corners.max; }

    /// -1 when the level lies below the cell's minimum, 1 above its maximum, else 0.
    [[nodiscard]] int getPosition() const noexcept { return crossings.position; }

    /// The total that decides how four crossings are joined: 2 and more joins 0-1 and 2-3, less 0-3 and 1-2.
    [[nodiscard]] float getSaddle() const noexcept { return crossings.saddle; }

private:
    detail::CellCorners corners;
    detail::CellCrossings crossings;
    std::array<Point, 4> points;
    float level = Const::MISS;
    float tweak = Const::MISS;

    struct Cross
    {
        int side = -1;
        Point point;
    };

    std::array<Cross, 4> cross; // in side order, sides that are not crossed left out
    Point outside;
};

} // namespace Yul
