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

    [[nodiscard]] float getWidth() const noexcept { return x2 - x1; }

    [[nodiscard]] float getHeight() const noexcept { return y2 - y1; }

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

    Range(float low, float high) : min(low), max(high) {}

    int set(float low, float high)
    {
        min = low;
        max = high;
        return 1;
    }

    [[nodiscard]] float getMin() const noexcept { return min; }

    [[nodiscard]] float getMax() const noexcept { return max; }

    float min = Const::MISS;
    float max = Const::MISS;
};

} // namespace Yul
