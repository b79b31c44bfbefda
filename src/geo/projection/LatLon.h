// Latitude and longitude as plane coordinates.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// x is the longitude east of the reference longitude, -180 to 180 degrees, y the latitude.
/// Source: USGS Professional Paper 1395, page 91 (equidistant cylindrical, true at the equator).
struct LatLon
{
    double ref_lon;
};

[[nodiscard]] inline Plane forward(LatLon const & k, double lat, double lon) noexcept
{
    return {math::halfTurn(lon - k.ref_lon), lat};
}

[[nodiscard]] inline Position inverse(LatLon const & k, double x, double y) noexcept
{
    Position const p = keepIf(std::fabs(x) <= MOST_TURNS, Position{math::clamp(y, -90, 90), k.ref_lon + x});
    return keepIf(std::fabs(y) <= 90 * (1 + EDGE_SLACK), p);
}

/// A degree in the plane counts as its length on the equator.
[[nodiscard]] inline Distortion distortion(LatLon const &, double lat, double) noexcept
{
    return {1 / std::sqrt(math::sinCos(lat).cos), 0};
}

} // namespace Yul::detail
