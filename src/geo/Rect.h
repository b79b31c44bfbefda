// Rectangles and value ranges.
#pragma once

#include "core/Const.h"

#include <algorithm>

namespace Yul {

/// A rectangle given by two corners. All four start as 0.
class Rect
{
public:
    Rect() = default;

    /// Two corners as they stand, in either order.
    Rect(float left, float bottom, float right, float top) { set(left, bottom, right, top); }

    /// Stores the corners ordered: x1 <= x2, y1 <= y2.
    int set(float xa, float ya, float xb, float yb)
    {
        return setu(std::min(xa, xb), std::min(ya, yb), std::max(xa, xb), std::max(ya, yb));
    }

    /// Stores the corners as given.
    int setu(float xa, float ya, float xb, float yb)
    {
        x1 = xa;
        y1 = ya;
        x2 = xb;
        y2 = yb;
        return 1;
    }

    /// x2 - x1: below 0 for one that runs backwards.
    [[nodiscard]] float getWidth() const noexcept { return x2 - x1; }

    /// y2 - y1, in the same way.
    [[nodiscard]] float getHeight() const noexcept { return y2 - y1; }

    /// The corners: (x1, y1) lower left, (x2, y2) upper right, unless it runs backwards.
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
};

/// A range of values; both ends start as Const::MISS.
class Range
{
public:
    Range() = default;

    /// Smallest and largest value as they stand; Const::MISS for missing.
    Range(float low, float high) : min(low), max(high) {}

    /// Takes both as they stand. Returns 1.
    int set(float low, float high)
    {
        min = low;
        max = high;
        return 1;
    }

    /// The smallest value.
    [[nodiscard]] float getMin() const noexcept { return min; }

    /// The largest value.
    [[nodiscard]] float getMax() const noexcept { return max; }

    /// Const::MISS for missing.
    float min = Const::MISS;
    float max = Const::MISS;
};

} // namespace Yul
