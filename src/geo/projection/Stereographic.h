// Polar stereographic projection, and the radar plane made from it.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// Polar stereographic on the sphere, true at a standard latitude. The origin is the pole, or for the radar
/// plane the radar site; y grows towards the pole along the reference longitude on northern maps, and away from
/// it on southern ones.
/// Source: USGS Professional Paper 1395, pages 157 to 158 (equations 21-5 to 21-15, polar aspects).
struct Stereographic
{
    double sign;     ///< -1 on northern, +1 on southern maps
    double scale;    ///< radius times (1 - sign * sin(standard latitude))
    double ref_lon;  ///< degrees
    double origin_y; ///< y of the origin, seen from the pole
    double unit;     ///< scale / radius
};

/// The latitude on the opposite hemisphere beyond which all points are drawn at it.
inline constexpr double STEREO_DEEPEST = 75;

[[nodiscard]] inline Stereographic
makeStereographic(double plat, double plon, double std_lat, double radius) noexcept
{
    double const sign = plat >= 0 ? -1 : 1;
    double const unit = 1 - sign * math::sinCos(std_lat).sin;
    return {sign, radius * unit, plon, 0, unit};
}

[[nodiscard]] inline Plane forward(Stereographic const & k, double lat, double lon) noexcept
{
    double const toward = k.sign * lat;
    double const clamped = toward > STEREO_DEEPEST ? STEREO_DEEPEST : toward;
    double const r = k.scale * math::tanHalfPolarDistance(-clamped);
    auto const [s, c] = math::sinCos(lon - k.ref_lon);
    return {r * s, k.sign * r * c - k.origin_y};
}

[[nodiscard]] inline Position inverse(Stereographic const & k, double x, double y) noexcept
{
    double const up = y + k.origin_y;
    double const r = std::sqrt(x * x + up * up);
    return {k.sign * (2 * math::atanQuadrant(r, k.scale) - 90), k.ref_lon + math::atan2(x, k.sign * up)};
}

[[nodiscard]] inline Distortion distortion(Stereographic const & k, double lat, double lon) noexcept
{
    double const toward = k.sign * lat;
    double const clamped = toward > STEREO_DEEPEST ? STEREO_DEEPEST : toward;
    return {k.unit / (1 - math::sinCos(clamped).sin), k.sign * (lon - k.ref_lon)};
}

/// The radar plane: polar stereographic with the origin at the site (plat, plon), north upward there.
[[nodiscard]] inline Stereographic
makeRadial(double plat, double plon, double std_lat, double radius) noexcept
{
    Stereographic k = makeStereographic(plat, plon, std_lat, radius);
    k.origin_y = forward(k, plat, plon).y;
    return k;
}

} // namespace Yul::detail
