// Mollweide projection.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

/// The whole sphere in an ellipse about the reference longitude, equal-area.
/// Source: USGS Professional Paper 1395, page 251 (equations 31-1 to 31-8).
struct Mollweide
{
    double radius;
    double ref_lon; ///< degrees
};

inline constexpr double ROOT_2 = 1.4142135623730951;
inline constexpr double PI = 3.141592653589793;

/// Sine and cosine of the auxiliary angle t with 2t + sin 2t = pi * sin(lat).
///
/// With u = pi - 2t the equation reads u - sin u = pi * (1 - sin lat) = 2 pi * sin^2(colatitude / 2), which keeps
/// its accuracy at the pole, where iteration on t fails. u is a smooth function of the cube root of the right-hand
/// side, so one polynomial gives it on the whole hemisphere; error below 1e-15 of u.
[[nodiscard]] inline math::SinCos mollweideAngle(double lat) noexcept
{
    constexpr double ANGLE[] = {
        0.9999999999999999,      0.016666666666687795,   0.0007142857138069759,   3.968254398336827e-05,
        2.4930222432491505e-06,  1.6836323681367297e-07, 1.1796834293705936e-08,  1.0285350326705593e-09,
        -9.177430465677867e-11,  1.2377238795556612e-10, -6.863052894124675e-11,  3.1288880471947e-11,
        -1.1123540724044198e-11, 3.1245535108518903e-12, -6.917617591307708e-13,  1.2009850539382254e-13,
        -1.6157331103294837e-14, 1.650794602256661e-15,  -1.2384535345804988e-16, 6.439263892702189e-18,
        -2.075990375026662e-19,  3.1353426124441306e-21};
    double const half = math::sinCos((90 - std::fabs(lat)) / 2).sin;
    double const cube = 12 * PI * half * half;
    double const root = cube > 1e-300 ? math::exp(math::log(cube) / 3) : cube;
    double const u = root * math::polynomial(ANGLE, root * root);
    auto const [s, c] = math::sinCos(u * (math::RADIAN / 2));
    return {std::copysign(c, lat), s};
}

[[nodiscard]] inline Plane forward(Mollweide const & k, double lat, double lon) noexcept
{
    auto const [s, c] = mollweideAngle(lat);
    double const turn = math::oneTurn(lon - k.ref_lon);
    return {k.radius * ROOT_2 / 90 * turn * c, k.radius * ROOT_2 * s};
}

[[nodiscard]] inline Position inverse(Mollweide const & k, double x, double y) noexcept
{
    double const across = x / (2 * ROOT_2 * k.radius);
    double const s = y / (ROOT_2 * k.radius);
    double const height = math::clamp(std::fabs(s), 0, 1);
    double const c = std::sqrt(1 - height * height);
    double const u = 2 * math::DEGREE * math::atanQuadrant(c, height);
    double const square = (u - 2 * c * height) / (2 * PI); // of the sine of half the colatitude
    double const colat = 2 * math::asin(std::sqrt(math::clamp(square, 0, 0.5)));
    double const turn = c > 0 ? across / c : 0;
    bool const inside = across * across + s * s <= 1 + 4 * EDGE_SLACK;
    return keepIf(inside, Position{std::copysign(90 - colat, y), k.ref_lon + 180 * math::clamp(turn, -1, 1)});
}

[[nodiscard]] inline Distortion distortion(Mollweide const & k, double lat, double lon) noexcept
{
    auto const [s, c] = mollweideAngle(lat);
    double const turn = math::DEGREE * math::oneTurn(lon - k.ref_lon);
    return {1, math::atan2(-2 / PI * turn * s, c)};
}

} // namespace Yul::detail
