// Lambert conformal conic projection.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// The far side of a cone is cut off this close to the pole, degrees.
inline constexpr double CONE_DEEPEST = 89.99;

/// How far an inverse lets longitudes pass half a turn before it takes a point for one in the gap of the cone.
inline constexpr double CONE_SLACK = 1e-3;

/// On the sphere, true at two standard latitudes. The origin is the apex of the cone; on northern maps y grows
/// towards it.
/// Source: USGS Professional Paper 1395, pages 106 to 107 (equations 15-1 to 15-5).
struct LambertConformal
{
    double sign;    ///< +1 on northern, -1 on southern maps
    double cone;    ///< cone constant; negative when the cone is set on the other pole
    double scale;   ///< distance of the equator from the apex, with the sign of the cone constant
    double ref_lon; ///< degrees
    double radius;
    double at_pole; ///< distance of the map's own pole from the apex: 0, none on a cone set on the other pole
    double inverse_cone; ///< 1 / cone
    double inverse_area; ///< 1 / scale^2
};

/// The cone constant. Source: equation 15-3, or 15-8 where the standard latitudes are the same.
[[nodiscard]] inline double coneConstant(double sign, double std_lat1, double std_lat2) noexcept
{
    constexpr double SAME = 1e-4; // degrees; the sine of the middle is then exact to 1e-12
    if (std::fabs(std_lat1 - std_lat2) < SAME)
        return sign * math::sinCos((std_lat1 + std_lat2) / 2).sin;
    double const tan1 = math::tanHalfPolarDistance(sign * std_lat1);
    double const tan2 = math::tanHalfPolarDistance(sign * std_lat2);
    return std::log(math::sinCos(std_lat1).cos / math::sinCos(std_lat2).cos) / std::log(tan1 / tan2);
}

/// The cone constant is 0 or not a number where the standard latitudes allow no cone.
[[nodiscard]] inline LambertConformal
makeLambertConformal(double plat, double plon, double std_lat1, double std_lat2, double radius) noexcept
{
    double const sign = plat >= 0 ? 1 : -1;
    double const cone = coneConstant(sign, std_lat1, std_lat2);
    // cos / tan^n, written so that a standard latitude at the pole works: cos / tan = 1 + sin
    double const tan1 = math::tanHalfPolarDistance(sign * std_lat1);
    double const factor = (1 + sign * math::sinCos(std_lat1).sin) * std::pow(tan1, 1 - cone) / cone;
    double const scale = radius * factor;
    return {sign, cone, scale, plon, radius, cone > 0 ? 0 : math::NONE, 1 / cone, 1 / (scale * scale)};
}

/// The distance from the apex; the latitude is counted towards it.
[[nodiscard]] inline double apexDistance(LambertConformal const & k, double toward) noexcept
{
    double const held = toward < -CONE_DEEPEST ? -CONE_DEEPEST : toward;
    double const distance = k.scale * math::exp2(k.cone * math::log2TanHalfPolarDistance(held));
    return held == 90 ? k.at_pole : distance;
}

[[nodiscard]] inline Plane forward(LambertConformal const & k, double lat, double lon) noexcept
{
    double const distance = apexDistance(k, k.sign * lat);
    auto const [s, c] = math::sinCos(k.cone * math::oneTurn(lon - k.ref_lon));
    return {distance * s, -k.sign * distance * c};
}

[[nodiscard]] inline Position inverse(LambertConformal const & k, double x, double y) noexcept
{
    double const side = k.scale < 0 ? -1 : 1;
    double const turn = math::atan2(side * x, -k.sign * side * y) * k.inverse_cone;
    double const square = (x * x + y * y) * k.inverse_area;
    double const tangent = math::log2Ratio(square, 1) * (k.sign * k.inverse_cone / 2);
    double const apex = k.sign * k.cone > 0 ? -1e300 : 1e300;
    double const lat = math::latOfLog2Tan(square > 1e-300 ? tangent : apex + square);
    bool const inside = std::fabs(turn) <= 180 + CONE_SLACK;
    return keepIf(inside, Position{lat, k.ref_lon + turn});
}

[[nodiscard]] inline Distortion distortion(LambertConformal const & k, double lat, double lon) noexcept
{
    double const width = k.radius * math::sinCos(lat).cos;
    return {k.cone * apexDistance(k, k.sign * lat) / width,
            -k.sign * k.cone * math::oneTurn(lon - k.ref_lon)};
}

} // namespace Yul::detail
