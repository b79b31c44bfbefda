// Mercator projection, on the sphere and on the ellipsoid.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// Latitudes beyond it are drawn at it.
inline constexpr double MERCATOR_HIGHEST = 89.9;

/// True at the equator; x is 0 on the reference longitude.
/// Source: USGS Professional Paper 1395, pages 41 to 44 (equations 7-1 to 7-5).
struct Mercator
{
    double radius;
    double degree; ///< length of a degree of longitude in the plane
    double ref_lon;
};

[[nodiscard]] inline Mercator makeMercator(double plon, double radius) noexcept
{
    return {radius, radius * math::DEGREE, plon};
}

[[nodiscard]] inline Plane forward(Mercator const & k, double lat, double lon) noexcept
{
    double const held = math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST);
    return {k.degree * math::oneTurn(lon - k.ref_lon), -k.radius * math::log(math::tan(45 - held / 2))};
}

[[nodiscard]] inline Position inverse(Mercator const & k, double x, double y) noexcept
{
    double const turn = x / k.degree;
    double const lat = 90 - 2 * math::atan2(math::exp(-y / k.radius), 1);
    return keepIf(std::fabs(turn) <= MOST_TURNS, Position{lat, k.ref_lon + turn});
}

[[nodiscard]] inline Distortion distortion(Mercator const &, double lat, double) noexcept
{
    return {1 / math::sinCos(math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST)).cos, 0};
}

/// The same on an ellipsoid, true at a standard latitude.
/// Source: USGS Professional Paper 1395, pages 44 to 45 (equations 7-6 to 7-9).
struct MercatorEllipsoid
{
    double scale;   ///< semi-major axis times the scale at the equator
    double degree;  ///< length of a degree of longitude in the plane
    double ref_lon; ///< degrees
    double e;       ///< eccentricity
    double equator; ///< scale at the equator
    int steps;      ///< of the iteration from isometric to geodetic latitude
};

[[nodiscard]] inline MercatorEllipsoid
makeMercatorEllipsoid(double plon, double std_lat, double major, double minor) noexcept
{
    double const e2 = 1 - (minor / major) * (minor / major);
    auto const [s, c] = math::sinCos(std_lat);
    double const equator = c / std::sqrt(1 - e2 * s * s);
    // Each step multiplies the error by about e2; 1e-16 is enough. An earth as flat as 60 steps need is none.
    double const steps = e2 > 0 ? std::fmin(36.8 / -std::log(e2) + 2, 60.0) : 1;
    double const scale = major * equator;
    return {scale, scale * math::DEGREE, plon, std::sqrt(e2), equator, static_cast<int>(steps)};
}

[[nodiscard]] inline double isometricCorrection(double e, double sine) noexcept
{
    return e / 2 * math::log((1 - e * sine) / (1 + e * sine));
}

[[nodiscard]] inline Plane forward(MercatorEllipsoid const & k, double lat, double lon) noexcept
{
    double const held = math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST);
    double const sphere = math::log(math::tan(45 - held / 2));
    double const y = k.scale * (isometricCorrection(k.e, math::sinCos(held).sin) - sphere);
    return {k.degree * math::oneTurn(lon - k.ref_lon), y};
}

[[nodiscard]] inline Position inverse(MercatorEllipsoid const & k, double x, double y) noexcept
{
    double const turn = x / k.degree;
    double lat = 90 - 2 * math::atan2(math::exp(-y / k.scale), 1);
    for (int i = 0; i < k.steps; ++i)
        lat =
            90 - 2 * math::atan2(math::exp(isometricCorrection(k.e, math::sinCos(lat).sin) - y / k.scale), 1);
    return keepIf(std::fabs(turn) <= MOST_TURNS, Position{lat, k.ref_lon + turn});
}

[[nodiscard]] inline Distortion distortion(MercatorEllipsoid const & k, double lat, double) noexcept
{
    auto const [s, c] = math::sinCos(math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST));
    return {k.equator * std::sqrt(1 - k.e * k.e * s * s) / c, 0};
}

} // namespace Yul::detail
