// The view from a satellite.
#pragma once

#include "geo/projection/Azimuthal.h"

namespace Yul::detail {

/// Scan angles, in radians, of a point on the earth seen from a satellite at a distance from the earth's centre:
/// x = atan(e / r) positive eastward, y = atan(n / sqrt(r^2 + e^2)) positive northward, where r, e and n are the
/// parts of the line of sight towards the earth's centre, eastward and northward. The point (plat, plon) below
/// the satellite is the origin. A sphere is an ellipsoid with equal axes.
/// Source: CGMS 03, LRIT/HRIT Global Specification, section 4.4.3.2 (normalised geostationary projection), turned
/// to the satellite's latitude as in USGS Professional Paper 1395, pages 169 to 176.
struct Satellite
{
    Aspect aspect;         ///< geocentric
    double distance;       ///< of the satellite from the earth's centre
    double major;          ///< semi-major axis
    double ratio;          ///< semi-minor over semi-major axis
    double ratio2;         ///< its square
    double eccentricity2;  ///< 1 less that
    double tangent_square; ///< square of the distance of the satellite from its horizon, on the sphere
    double plumb_axis;     ///< distance over the square of the axes, along the earth's axis
    double plumb_meridian; ///< and across it
};

[[nodiscard]] inline Satellite
makeSatellite(double plat, double plon, double distance, double major, double minor) noexcept
{
    double const ratio = minor / major;
    auto const [s, c] = math::sinCos(plat);
    double const axis = ratio * ratio * s;
    double const length = std::sqrt(axis * axis + c * c);
    double const stretched_s = distance * axis / length / ratio;
    double const stretched_c = distance * c / length;
    Aspect const aspect{axis / length, c / length, plon};
    return {aspect,
            distance,
            major,
            ratio,
            ratio * ratio,
            1 - ratio * ratio,
            stretched_s * stretched_s + stretched_c * stretched_c - major * major,
            distance * aspect.sin_lat / (minor * minor),
            distance * aspect.cos_lat / (major * major)};
}

inline constexpr double QUARTER_TURN = 1.5707963267948966; ///< radians

/// A position on the ellipsoid: its parts along the earth's axis and across it towards the satellite's meridian
/// and eastward.
struct EllipsoidPoint
{
    double axis, meridian, east;
};

[[nodiscard]] inline EllipsoidPoint onEllipsoid(Satellite const & k, double lat, double lon) noexcept
{
    auto const [s, c] = math::sinCos(lat);
    auto const [turn_s, turn_c] = math::sinCos(lon - k.aspect.ref_lon);
    double const normal = k.eccentricity2 == 0 ? k.major : k.major / std::sqrt(1 - k.eccentricity2 * (s * s));
    return {normal * k.ratio2 * s, normal * c * turn_c, normal * c * turn_s};
}

[[nodiscard]] inline Seen turned(Aspect const & a, EllipsoidPoint const & p) noexcept
{
    return {p.meridian * a.cos_lat + p.axis * a.sin_lat, p.east, p.axis * a.cos_lat - p.meridian * a.sin_lat};
}

/// The far side of the earth has no image.
[[nodiscard]] inline Plane forward(Satellite const & k, double lat, double lon) noexcept
{
    EllipsoidPoint const p = onEllipsoid(k, lat, lon);
    Seen const seen = turned(k.aspect, p);
    double const toward = k.distance - seen.out;
    double const across = std::sqrt(toward * toward + seen.east * seen.east);
    // the satellite above the plane that touches the earth there
    double const above = k.plumb_meridian * p.meridian + k.plumb_axis * p.axis;
    return keepIf(above >= 1 - HORIZON, Plane{math::DEGREE * math::atanHalf(seen.east, toward),
                                              math::DEGREE * math::atanHalf(seen.north, across)});
}

[[nodiscard]] inline Position inverse(Satellite const & k, double x, double y) noexcept
{
    auto const [sin_x, cos_x] = math::sinCos(x * math::RADIAN);
    auto const [sin_y, cos_y] = math::sinCos(y * math::RADIAN);
    double const out = -cos_y * cos_x; // the line of sight
    // along the axis lengths are stretched so that the ellipsoid becomes a sphere
    double const view_axis = (out * k.aspect.sin_lat + sin_y * k.aspect.cos_lat) / k.ratio;
    double const view_meridian = out * k.aspect.cos_lat - sin_y * k.aspect.sin_lat;
    double const view_east = cos_y * sin_x;
    double const from_axis = k.distance * k.aspect.sin_lat / k.ratio;
    double const from_meridian = k.distance * k.aspect.cos_lat;
    double const a = view_axis * view_axis + view_meridian * view_meridian + view_east * view_east;
    double const b = -(view_axis * from_axis + view_meridian * from_meridian);
    double const root = b * b - a * k.tangent_square;
    double const length = (b - std::sqrt(root < 0 ? 0 : root)) / a;
    double const axis = from_axis + length * view_axis;
    double const meridian = from_meridian + length * view_meridian;
    double const east = length * view_east;
    double const width = std::sqrt(meridian * meridian + east * east);
    Position const p{math::atanHalf(axis, width * k.ratio), k.aspect.ref_lon + math::atan2(east, meridian)};
    double const checked =
        b > 0 ? root + EDGE_SLACK * b * b : math::NONE; // the line of sight meets the earth
    return keepIf(std::fabs(x) < QUARTER_TURN, keepIf(std::fabs(y) < QUARTER_TURN, keepIf(checked >= 0, p)));
}

/// The scale is in radians per unit of length.
[[nodiscard]] inline Distortion distortion(Satellite const & k, double lat, double lon) noexcept
{
    auto const [s, c] = math::sinCos(lat);
    auto const [turn_s, turn_c] = math::sinCos(lon - k.aspect.ref_lon);
    EllipsoidPoint const p = onEllipsoid(k, lat, lon);
    Seen const seen = turned(k.aspect, p);
    double const flat = c * c + k.ratio2 * s * s;
    double const bend = k.major * k.ratio2 / (flat * std::sqrt(flat)); // radius of curvature of the meridian
    Seen const north = turned(k.aspect, {bend * c, -bend * s * turn_c, -bend * s * turn_s});
    Seen const east = turned(k.aspect, {0, -turn_s, turn_c}); // per unit of length
    double const toward = k.distance - seen.out;
    double const across2 = toward * toward + seen.east * seen.east;
    double const across = std::sqrt(across2);
    double const length2 = across2 + seen.north * seen.north;
    auto const rate = [&](Seen const & d) {
        double const d_across = (seen.east * d.east - toward * d.out) / across;
        return Plane{(d.east * toward + seen.east * d.out) / across2,
                     (d.north * across - seen.north * d_across) / length2};
    };
    Plane const n = rate(north);
    Plane const e = rate(east);
    double const area = (e.x * n.y - n.x * e.y) / bend;
    return {std::sqrt(area), math::atan2(n.x, n.y)};
}

} // namespace Yul::detail
