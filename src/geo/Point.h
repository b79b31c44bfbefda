// Positions in a projection plane.
#pragma once

#include "core/Const.h"
#include "geo/List.h"

namespace Yul {

/// A position in a projection plane: x to the right, y upward, units of 100 km (degrees for latlon domains).
/// Both coordinates start as Const::MISS.
class Point
{
public:
    Point() = default;

    /// x to the right and y up; in the plane of a domain units of 100 km (degrees for latlon).
    Point(float x_value, float y_value) : x(x_value), y(y_value) {}

    /// Takes both as they stand. Returns 1.
    int set(float x_value, float y_value)
    {
        x = x_value;
        y = y_value;
        return 1;
    }

    /// To the right.
    [[nodiscard]] float getX() const noexcept { return x; }

    /// Up.
    [[nodiscard]] float getY() const noexcept { return y; }

    /// True when neither coordinate is missing.
    [[nodiscard]] bool isSet() const noexcept { return !detail::isMissing(x) && !detail::isMissing(y); }

    float x = Const::MISS; ///< to the right
    float y = Const::MISS; ///< up
};

class Points : public detail::List<Point>
{
};

} // namespace Yul
