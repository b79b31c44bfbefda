// What projection formulas take and return.
#pragma once

#include "geo/projection/Math.h"

namespace Yul::detail {

/// A position in a plane; not-a-number where there is no image.
struct Plane
{
    double x, y;
};

/// A position on the earth, degrees (on diagrams: the two values); not-a-number where there is no image.
struct Position
{
    double lat, lon;
};

/// How a plane distorts the earth at a position.
struct Distortion
{
    double scale; ///< length in the plane over length on the earth; the root of the areal scale
    double north; ///< direction of true north in the plane, degrees clockwise from upward
};

/// Keeps the latitude where the condition holds, else makes it not-a-number.
[[nodiscard]] inline Position keepIf(bool condition, Position position) noexcept
{
    return {condition ? position.lat : math::NONE, position.lon};
}

[[nodiscard]] inline Plane keepIf(bool condition, Plane plane) noexcept
{
    return {condition ? plane.x : math::NONE, plane.y};
}

/// Rounding of float coordinates that an inverse forgives at the edge of its plane, as a part of the distance.
inline constexpr double EDGE_SLACK = 1e-6;

/// Longitudes and the cylindrical planes reach this far, degrees.
inline constexpr double MOST_TURNS = 3600;

} // namespace Yul::detail
