// Lambert azimuthal equal-area, orthographic and gnomonic projections.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// The point of the sphere that the plane touches.
struct Aspect
{
    double sin_lat;
    double cos_lat;
    double ref_lon; ///< degrees
};

[[nodiscard]] inline Aspect makeAspect(double plat, double plon) noexcept
{
    auto const [s, c] = math::sinCos(plat);
    return {s, c, plon};
}

/// A position on the unit sphere seen from there: parts outward (the cosine of the distance from the centre),
/// eastward and northward.
struct Seen
{
    double out, east, north;
};

[[nodiscard]] inline Seen see(Aspect const & a, double lat, double lon) noexcept
{
    auto const [s, c] = math::sinCos(lat);
    auto const [turn_s, turn_c] = math::sinCos(lon - a.ref_lon);
    return {a.sin_lat * s + a.cos_lat * c * turn_c, c * turn_s, a.cos_lat * s - a.sin_lat * c * turn_c};
}

/// Its rate of change towards true north.
[[nodiscard]] inline Seen seeNorthward(Aspect const & a, double lat, double lon) noexcept
{
    auto const [s, c] = math::sinCos(lat);
    auto const [turn_s, turn_c] = math::sinCos(lon - a.ref_lon);
    return {a.sin_lat * c - a.cos_lat * s * turn_c, -s * turn_s, a.cos_lat * c + a.sin_lat * s * turn_c};
}

/// The position in a direction given by its three parts, whatever their length.
[[nodiscard]] inline Position locate(Aspect const & a, Seen const & p) noexcept
{
    double const axis = p.north * a.cos_lat + p.out * a.sin_lat;
    double const meridian = p.out * a.cos_lat - p.north * a.sin_lat;
    double const width = std::sqrt(meridian * meridian + p.east * p.east);
    return {math::atanHalf(axis, width), a.ref_lon + math::atan2(p.east, meridian)};
}

/// The direction of north where east and north are multiplied by a factor that changes with the distance.
[[nodiscard]] inline double northOf(Seen const & p, Seen const & rate, double factor, double slope) noexcept
{
    double const x = slope * rate.out * p.east + factor * rate.east;
    double const y = slope * rate.out * p.north + factor * rate.north;
    return math::atan2(x, y);
}

/// The cosine of the distance below which a point counts as 90 degrees away.
inline constexpr double HORIZON = 1e-7;

/// Source: USGS Professional Paper 1395, pages 185 to 186 (equations 24-2 to 24-16).
struct LambertAzimuthal
{
    Aspect aspect;
    double radius;
    double inverse_radius; ///< 1 / radius
};

/// The antipode has no image.
[[nodiscard]] inline Plane forward(LambertAzimuthal const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    double const factor = k.radius * std::sqrt(2 / (1 + p.out));
    return keepIf(1 + p.out > 1e-12, Plane{factor * p.east, factor * p.north});
}

[[nodiscard]] inline Position inverse(LambertAzimuthal const & k, double x, double y) noexcept
{
    double const e = x * k.inverse_radius;
    double const n = y * k.inverse_radius;
    double const q = (e * e + n * n) / 4; // square of the sine of half the distance
    double const c = std::sqrt(1 - math::clamp(q, 0, 1));
    return keepIf(q <= 1 + 2 * EDGE_SLACK, locate(k.aspect, {1 - 2 * q, c * e, c * n}));
}

[[nodiscard]] inline Distortion distortion(LambertAzimuthal const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    double const factor = std::sqrt(2 / (1 + p.out));
    return {1, northOf(p, seeNorthward(k.aspect, lat, lon), factor, -factor / (2 * (1 + p.out)))};
}

/// Source: USGS Professional Paper 1395, pages 148 to 150 (equations 20-3 to 20-19).
struct Orthographic
{
    Aspect aspect;
    double radius;
    double inverse_radius; ///< 1 / radius
};

/// The hidden hemisphere has no image.
[[nodiscard]] inline Plane forward(Orthographic const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    return keepIf(p.out >= -HORIZON, Plane{k.radius * p.east, k.radius * p.north});
}

[[nodiscard]] inline Position inverse(Orthographic const & k, double x, double y) noexcept
{
    double const e = x * k.inverse_radius;
    double const n = y * k.inverse_radius;
    double const q = e * e + n * n;
    return keepIf(q <= 1 + 2 * EDGE_SLACK, locate(k.aspect, {std::sqrt(1 - math::clamp(q, 0, 1)), e, n}));
}

[[nodiscard]] inline Distortion distortion(Orthographic const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    return {std::sqrt(p.out), northOf(p, seeNorthward(k.aspect, lat, lon), 1, 0)};
}

/// Source: USGS Professional Paper 1395, pages 165 to 167 (equations 22-3 to 22-16).
struct Gnomonic
{
    Aspect aspect;
    double radius;
};

/// Positions 90 degrees or more from the centre have no image.
[[nodiscard]] inline Plane forward(Gnomonic const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    double const factor = k.radius / p.out;
    return keepIf(p.out > HORIZON, Plane{factor * p.east, factor * p.north});
}

[[nodiscard]] inline Position inverse(Gnomonic const & k, double x, double y) noexcept
{
    return locate(k.aspect, {k.radius, x, y});
}

[[nodiscard]] inline Distortion distortion(Gnomonic const & k, double lat, double lon) noexcept
{
    Seen const p = see(k.aspect, lat, lon);
    double const factor = 1 / p.out;
    return {factor * std::sqrt(factor),
            northOf(p, seeNorthward(k.aspect, lat, lon), factor, -factor * factor)};
}

} // namespace Yul::detail
