// Albers equal-area conic projection.
#pragma once

#include "geo/projection/LambertConformal.h"

namespace Yul::detail {

/// On the sphere, true at two standard latitudes. The origin lies at (plat, plon).
/// Source: USGS Professional Paper 1395, pages 100 to 101 (equations 14-1 to 14-11).
struct Albers
{
    double sign;         ///< +1 on northern, -1 on southern maps
    double cone;         ///< cone constant
    double c;            ///< the constant that Snyder calls C
    double scale;        ///< radius / cone constant
    double origin_y;     ///< distance of the origin from the apex
    double ref_lon;      ///< degrees
    double inverse_cone; ///< 1 / cone
    double inverse_area; ///< 1 / scale^2
};

[[nodiscard]] inline double apexDistance(Albers const & k, double lat) noexcept
{
    double const held = k.sign * lat < -CONE_DEEPEST ? -k.sign * CONE_DEEPEST : lat;
    double const square = k.c - 2 * k.cone * math::sinCos(held).sin;
    return k.scale * std::sqrt(square < 0 ? 0 : square);
}

[[nodiscard]] inline Albers
makeAlbers(double plat, double plon, double std_lat1, double std_lat2, double radius) noexcept
{
    auto const [sin1, cos1] = math::sinCos(std_lat1);
    double const cone = (sin1 + math::sinCos(std_lat2).sin) / 2;
    double const scale = radius / cone;
    Albers k{plat >= 0 ? 1.0 : -1.0, cone, cos1 * cos1 + 2 * cone * sin1, scale, 0, plon, 1 / cone,
             1 / (scale * scale)};
    k.origin_y = apexDistance(k, plat);
    return k;
}

[[nodiscard]] inline Plane forward(Albers const & k, double lat, double lon) noexcept
{
    double const distance = apexDistance(k, lat);
    auto const [s, c] = math::sinCos(k.cone * math::oneTurn(lon - k.ref_lon));
    return {distance * s, k.origin_y - distance * c};
}

[[nodiscard]] inline Position inverse(Albers const & k, double x, double y) noexcept
{
    double const side = k.scale < 0 ? -1 : 1;
    double const down = k.origin_y - y;
    double const turn = math::atan2(side * x, side * down) * k.inverse_cone;
    double const sine = (k.c - (x * x + down * down) * k.inverse_area) * (k.inverse_cone / 2);
    Position const p{math::asin(math::clamp(sine, -1, 1)), k.ref_lon + turn};
    return keepIf(std::fabs(turn) <= 180 + CONE_SLACK, keepIf(std::fabs(sine) <= 1 + 4 * EDGE_SLACK, p));
}

[[nodiscard]] inline Distortion distortion(Albers const & k, double, double lon) noexcept
{
    return {1, -k.cone * math::oneTurn(lon - k.ref_lon)};
}

} // namespace Yul::detail
