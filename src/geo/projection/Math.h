// Elementary functions for the projection formulas: angles in degrees, no branches.
//
// Written out here for two reasons. Loops over them vectorise, because they are plain arithmetic with selects
// and no calls. And they give the same bits on every machine, for one point as for a million, because they do
// not depend on the system's mathematical library. Angles are reduced in degrees, where quarter turns are exact:
// the sine of 180 and the cosine of 90 degrees are zero, so poles and antipodes need no slack.
//
// The polynomials are near-minimax (Chebyshev interpolation in 60-digit arithmetic). Relative errors stay below
// 2e-13, far under what a float coordinate resolves. Not-a-number comes out wherever it goes in.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace Yul::detail::math {

inline constexpr double NONE = std::numeric_limits<double>::quiet_NaN(); ///< no value, no image
inline constexpr double DEGREE = 0.017453292519943295;                   ///< radians
inline constexpr double RADIAN = 57.295779513082323;                     ///< degrees

/// Adding and subtracting it rounds to an integer, half to even, for magnitudes below 2^51; the sum's lowest
/// bits are that integer.
inline constexpr double ROUNDER = 6755399441055744.0; // 1.5 * 2^52

/// A polynomial in x, coefficients from the constant term up: neighbours are joined to a polynomial in x^2 of half
/// the length, and so on, which is the shortest chain of operations that wait for each other.
template <std::size_t N> [[nodiscard]] constexpr double polynomial(double const (&c)[N], double x) noexcept
{
    if constexpr (N == 1)
        return c[0];
    else
        return [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            double const joined[] = {
                (2 * I + 1 < N ? c[2 * I] + c[2 * I + 1 < N ? 2 * I + 1 : 0] * x : c[2 * I])...};
            return polynomial(joined, x * x);
        }
    (std::make_index_sequence<(N + 1) / 2>{});
}

/// The value held between two limits.
[[nodiscard]] inline double clamp(double x, double low, double high) noexcept
{
    double const raised = x < low ? low : x;
    return raised > high ? high : raised;
}

struct SinCos
{
    double sin, cos;
};

/// Sine and cosine of -45 to 45 degrees.
[[nodiscard]] inline SinCos sinCosNearZero(double degrees) noexcept
{
    constexpr double SIN[] = {0.017453292519943223,   -8.860961556986401e-07, 1.3496016216316956e-11,
                              -9.788381633359753e-17, 4.1409597206215035e-22, -1.1332900891168366e-27};
    constexpr double COS[] = {1.0,
                              -0.000152308709893352,
                              3.8663238515449545e-09,
                              -3.9258319803969827e-14,
                              2.135493548970824e-19,
                              -7.227328161771299e-25,
                              1.648302719601482e-30};
    double const square = degrees * degrees;
    return {degrees * polynomial(SIN, square), polynomial(COS, square)};
}

/// Sine and cosine of an angle in degrees up to 1e9. Multiples of 90 give 0, 1 or -1 exactly.
[[nodiscard]] inline SinCos sinCos(double degrees) noexcept
{
    double const shifted = degrees * (1.0 / 90) + ROUNDER;
    SinCos const near = sinCosNearZero(degrees - (shifted - ROUNDER) * 90);
    auto const s = std::bit_cast<std::uint64_t>(near.sin);
    auto const c = std::bit_cast<std::uint64_t>(near.cos);
    auto const quarter = std::bit_cast<std::uint64_t>(shifted); // its lowest two bits count the quarter turns
    std::uint64_t const swap = std::uint64_t{0} - (quarter & 1);
    std::uint64_t const sine = ((s & ~swap) | (c & swap)) ^ ((quarter & 2) << 62);
    std::uint64_t const cosine = ((c & ~swap) | (s & swap)) ^ (((quarter + 1) & 2) << 62);
    return {std::bit_cast<double>(sine), std::bit_cast<double>(cosine)};
}

/// The angle of the ratio of two numbers, 0 <= small <= large, in degrees: 0 to 45; 0 for two zeros.
[[nodiscard]] inline double atanRatio(double small, double large) noexcept
{
    constexpr double TAN_22_5 = 0.41421356237309503;
    constexpr double TINY = 1e-300; // changes no number above 1e-284 and keeps 0 / 0 away
    constexpr double ATAN[] = {57.29577951308079,  -19.09859316957792,  11.459155676236243,
                               -8.185097687164474, 6.365781719095436,   -5.201535505446808,
                               4.333682910128505,  -3.3658437882681613, 1.7568284227968733};
    bool const middle = small > TAN_22_5 * large; // between 22.5 and 45 degrees: measured from 45
    double const top = middle ? small - large : small;
    double const bottom = middle ? small + large : large;
    double const ratio = top / (bottom + TINY);
    return ratio * polynomial(ATAN, ratio * ratio) + (middle ? 45 : 0);
}

/// The angle of the direction (x, y) from the x axis in degrees, for y >= 0 and x >= 0: 0 to 90; 0 for (0, 0).
[[nodiscard]] inline double atanQuadrant(double y, double x) noexcept
{
    bool const steep = y > x;
    double const angle = atanRatio(steep ? x : y, steep ? y : x);
    return steep ? 90 - angle : angle;
}

/// The same for x >= 0: -90 to 90.
[[nodiscard]] inline double atanHalf(double y, double x) noexcept
{
    return std::copysign(atanQuadrant(std::fabs(y), x), y);
}

/// The same for all directions: -180 to 180; 0 for (0, 0), whatever the signs of the zeros.
[[nodiscard]] inline double atan2(double y, double x) noexcept
{
    double const upright = atanQuadrant(std::fabs(y), std::fabs(x));
    return std::copysign(x < 0 ? 180 - upright : upright, y);
}

/// The angle in degrees whose sine is given; none beyond 1 and -1, but for rounding (1e-12).
[[nodiscard]] inline double asin(double sine) noexcept
{
    double const square = 1 - sine * sine;
    double const angle = atanHalf(sine, std::sqrt(square < 0 ? 0 : square));
    return square < -2e-12 ? NONE : angle;
}

inline constexpr double LN2 = 0.6931471805599453;
inline constexpr double LOG2_E = 1.4426950408889634;

/// Logarithm to the base 2 of the ratio of two positive normal numbers. With 0 above it is about -1025, not infinite.
[[nodiscard]] inline double log2Ratio(double above, double below) noexcept
{
    constexpr double LOG2[] = {2.8853900817774334,  0.9617966948134893, 0.5770777581431394,
                               0.41222598377401787, 0.3192907741207473, 0.29077074658525265};
    constexpr double TWO_52 = 4503599627370496.0;
    constexpr std::uint64_t HALF = std::uint64_t{1} << 51;
    constexpr std::uint64_t BIAS = std::uint64_t{1024} << 52;
    constexpr std::uint64_t EXPONENT = 0xfff0000000000000;
    // e is the exponent of the ratio, rounded; below * 2^e lies within a factor of 1.5 of above
    auto const under = std::bit_cast<std::uint64_t>(below);
    std::uint64_t const power = std::bit_cast<std::uint64_t>(above) - under + (HALF + BIAS);
    auto const scaled = std::bit_cast<double>(under + (power & EXPONENT) - BIAS);
    double const e =
        std::bit_cast<double>((power >> 52) | std::bit_cast<std::uint64_t>(TWO_52)) - (TWO_52 + 1024);
    double const f = (above - scaled) / (above + scaled);
    return e + f * polynomial(LOG2, f * f);
}

/// Natural logarithm of a positive normal number; none for anything else.
[[nodiscard]] inline double log(double x) noexcept
{
    double const result = LN2 * log2Ratio(x, 1);
    double const low = x >= std::numeric_limits<double>::min() ? result : NONE;
    return x <= std::numeric_limits<double>::max() ? low : NONE;
}

/// 2 to the power x. Powers beyond 1000 count as 1000.
[[nodiscard]] inline double exp2(double x) noexcept
{
    constexpr double EXP2[] = {1.0,
                               0.6931471805599453,
                               0.24022650695812972,
                               0.05550410866476042,
                               0.009618129159408776,
                               0.0013333558179047028,
                               0.00015403455846485034,
                               1.525268684250813e-05,
                               1.3255226470378598e-06,
                               1.0203122065960858e-07};
    double const held = clamp(x, -1000, 1000);
    double const shifted = held + ROUNDER;
    auto const scale = std::bit_cast<double>((std::bit_cast<std::uint64_t>(shifted) + 1023) << 52);
    return polynomial(EXP2, held - (shifted - ROUNDER)) * scale;
}

/// e to the power x, within 1e-13 for powers up to 600.
[[nodiscard]] inline double exp(double x) noexcept
{
    return exp2(LOG2_E * x);
}

/// Sine and cosine of half the distance to the pole, 45 - lat / 2, for latitudes -90 to 90 counted towards that
/// pole; exact at the poles.
[[nodiscard]] inline SinCos halfPolarDistance(double lat) noexcept
{
    SinCos const near = sinCosNearZero(45 - std::fabs(lat) / 2);
    return {lat < 0 ? near.cos : near.sin, lat < 0 ? near.sin : near.cos};
}

/// Its tangent.
[[nodiscard]] inline double tanHalfPolarDistance(double lat) noexcept
{
    SinCos const half = halfPolarDistance(lat);
    return half.sin / half.cos;
}

/// The logarithm of that tangent to the base 2; about -1025 at the pole.
[[nodiscard]] inline double log2TanHalfPolarDistance(double lat) noexcept
{
    SinCos const near = sinCosNearZero(45 - std::fabs(lat) / 2);
    return std::copysign(log2Ratio(near.sin, near.cos), -lat);
}

/// The latitude for which `log2TanHalfPolarDistance` gives x.
[[nodiscard]] inline double latOfLog2Tan(double x) noexcept
{
    return std::copysign(90 - 2 * atanRatio(exp2(-std::fabs(x)), 1), -x);
}

/// The same angle within half a turn, -180 to 180 degrees, for magnitudes below 1e9.
[[nodiscard]] inline double halfTurn(double degrees) noexcept
{
    return degrees - ((degrees * (1.0 / 360) + ROUNDER) - ROUNDER) * 360;
}

/// One turn up or down when the angle lies beyond half a turn; nothing more for angles beyond that.
[[nodiscard]] inline double oneTurn(double degrees) noexcept
{
    double const down = degrees - 360;
    double const up = degrees + 360;
    double const lowered = degrees > 180 ? down : degrees;
    return degrees < -180 ? up : lowered;
}

} // namespace Yul::detail::math
