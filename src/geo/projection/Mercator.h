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
    double degree;  ///< length of a degree of longitude in the plane
    double ref_lon; ///< degrees
};

[[nodiscard]] inline Mercator makeMercator(double plon, double radius) noexcept
{
    return {radius, radius * math::DEGREE, plon};
}

[[nodiscard]] inline Plane forward(Mercator const & k, double lat, double lon) noexcept
{
    double const held = math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST);
    return {k.degree * math::oneTurn(lon - k.ref_lon),
            -k.radius * (math::LN2 * math::log2TanHalfPolarDistance(held))};
}

[[nodiscard]] inline Position inverse(Mercator const & k, double x, double y) noexcept
{
    double const turn = x / k.degree;
    double const lat = math::latOfLog2Tan(-math::LOG2_E * y / k.radius);
    return keepIf(std::fabs(turn) <= MOST_TURNS, Position{lat, k.ref_lon + turn});
}

[[nodiscard]] inline Distortion distortion(Mercator const &, double lat, double) noexcept
{
    return {1 / math::sinCos(math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST)).cos, 0};
}

/// The same on an ellipsoid, true at a standard latitude.
/// Source: USGS Professional Paper 1395, pages 44 to 45 (equations 7-6 to 7-9). The inverse goes by the tangents of
/// conformal and geodetic latitude: C. F. F. Karney, Transverse Mercator with an accuracy of a few nanometers,
/// Journal of Geodesy 85, 2011 (equations 7 to 9 and 19 to 21).
struct MercatorEllipsoid
{
    double scale;   ///< semi-major axis times the scale at the equator
    double degree;  ///< length of a degree of longitude in the plane
    double ref_lon; ///< degrees
    double e;       ///< eccentricity
    double equator; ///< scale at the equator
};

[[nodiscard]] inline MercatorEllipsoid
makeMercatorEllipsoid(double plon, double std_lat, double major, double minor) noexcept
{
    double const e2 = 1 - (minor / major) * (minor / major);
    auto const [s, c] = math::sinCos(std_lat);
    double const equator = c / std::sqrt(1 - e2 * s * s);
    double const scale = major * equator;
    return {scale, scale * math::DEGREE, plon, std::sqrt(e2), equator};
}

[[nodiscard]] inline Plane forward(MercatorEllipsoid const & k, double lat, double lon) noexcept
{
    double const held = math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST);
    double const s = k.e * math::sinCos(held).sin;
    double const isometric = k.e / 2 * math::log2Ratio(1 - s, 1 + s) - math::log2TanHalfPolarDistance(held);
    return {k.degree * math::oneTurn(lon - k.ref_lon), k.scale * (math::LN2 * isometric)};
}

[[nodiscard]] inline Position inverse(MercatorEllipsoid const & k, double x, double y) noexcept
{
    auto const sinh = [](double grown) { return (grown - 1 / grown) / 2; };
    double const turn = x / k.degree;
    double const conformal = sinh(math::exp(y / k.scale));
    double const flat = 1 - k.e * k.e;
    auto const newton = [&](double tangent) {
        double const secant = std::sqrt(1 + tangent * tangent);
        double const s = k.e * tangent / secant;
        double const shift = sinh(math::exp2(k.e / 2 * math::log2Ratio(1 + s, 1 - s)));
        double const now = tangent * std::sqrt(1 + shift * shift) - shift * secant;
        double const slope = (1 + flat * tangent * tangent) / (flat * secant * std::sqrt(1 + now * now));
        return tangent + (conformal - now) * slope;
    };
    double const tangent = newton(newton(newton(conformal / flat))); // two are enough for the earth
    return keepIf(std::fabs(turn) <= MOST_TURNS, Position{math::atanHalf(tangent, 1), k.ref_lon + turn});
}

[[nodiscard]] inline Distortion distortion(MercatorEllipsoid const & k, double lat, double) noexcept
{
    auto const [s, c] = math::sinCos(math::clamp(lat, -MERCATOR_HIGHEST, MERCATOR_HIGHEST));
    return {k.equator * std::sqrt(1 - k.e * k.e * s * s) / c, 0};
}

} // namespace Yul::detail
