// Elementary functions for the projection formulas: angles in degrees, no branches.
//
// Written out here for two reasons. Loops over them vectorise, because they are plain arithmetic with selects
// and no calls. And they give the same bits on every machine, for one point as for a million, because they do
// not depend on the system's mathematical library. Angles are reduced in degrees, where quarter turns are exact:
// the sine of 180 and the cosine of 90 degrees are zero, so poles and antipodes need no slack.
//
// The polynomials are near-minimax (Chebyshev interpolation in 60-digit arithmetic); errors stated are largest
// errors against exact values, rounding included. Not-a-number comes out wherever it goes in.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace Yul::detail::math {

inline constexpr double NONE = std::numeric_limits<double>::quiet_NaN(); ///< no value, no image
inline constexpr double DEGREE = 0.017453292519943295;                   ///< radians
inline constexpr double RADIAN = 57.295779513082323;                     ///< degrees

/// Adding and subtracting it rounds to an integer, half to even, for magnitudes below 2^51; the sum's lowest
/// bits are that integer.
inline constexpr double ROUNDER = 6755399441055744.0; // 1.5 * 2^52

/// A polynomial in x, coefficients from the constant term up.
template <std::size_t N> [[nodiscard]] constexpr double polynomial(double const (&c)[N], double x) noexcept
{
    double sum = c[N - 1];
    for (std::size_t i = N - 1; i-- > 0;)
        sum = sum * x + c[i];
    return sum;
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

/// Sine and cosine of an angle in degrees up to 1e9; errors below 2e-16. Multiples of 90 give 0, 1 or -1.
[[nodiscard]] inline SinCos sinCos(double degrees) noexcept
{
    constexpr double SIN[] = {0.017453292519943295,   -8.860961557012953e-07, 1.3496016231611539e-11,
                              -9.788384855390966e-17, 4.1412665383751066e-22, -1.1467564767121785e-27,
                              2.2164549925382185e-33};
    constexpr double COS[] = {1.0,
                              -0.00015230870989335428,
                              3.866323851562974e-09,
                              -3.9258319857352366e-14,
                              2.1354943020701605e-19,
                              -7.227873556646377e-25,
                              1.667888480066471e-30,
                              -2.7631731990636367e-36};
    double const shifted = degrees * (1.0 / 90) + ROUNDER;
    double const rest = degrees - (shifted - ROUNDER) * 90; // -45 to 45, exact
    double const square = rest * rest;
    auto const s = std::bit_cast<std::uint64_t>(rest * polynomial(SIN, square));
    auto const c = std::bit_cast<std::uint64_t>(polynomial(COS, square));
    auto const quarter = std::bit_cast<std::uint64_t>(shifted); // its lowest two bits count the quarter turns
    std::uint64_t const swap = std::uint64_t{0} - (quarter & 1);
    std::uint64_t const sine = ((s & ~swap) | (c & swap)) ^ ((quarter & 2) << 62);
    std::uint64_t const cosine = ((c & ~swap) | (s & swap)) ^ (((quarter + 1) & 2) << 62);
    return {std::bit_cast<double>(sine), std::bit_cast<double>(cosine)};
}

/// Tangent of an angle in degrees; relative error below 5e-16, infinite at 90.
[[nodiscard]] inline double tan(double degrees) noexcept
{
    SinCos const t = sinCos(degrees);
    return t.sin / t.cos;
}

/// The angle of the direction (x, y) from the x axis in degrees, -180 to 180; 0 for (0, 0), whatever the signs
/// of the zeros. Error below 3e-14 degrees.
[[nodiscard]] inline double atan2(double y, double x) noexcept
{
    constexpr double TAN_22_5 = 0.41421356237309503;
    constexpr double ATAN[] = {57.29577951308232,   -19.098593171027318, 11.459155902582536,
                               -8.185111355302089,  6.3661975135625894,  -5.208700182781635,
                               4.407217176565576,   -3.8175883835069833, 3.350001265957381,
                               -2.8848408502088745, 2.175093821568255,   -1.0200021317810641};
    double const width = std::fabs(x);
    double const height = std::fabs(y);
    bool const steep = height > width;
    double const large = steep ? height : width;
    double const small = steep ? width : height;
    bool const middle = small > TAN_22_5 * large; // between 22.5 and 45 degrees: measured from 45
    double const top = middle ? small - large : small;
    double const bottom = middle ? small + large : large;
    double const ratio = top / (bottom == 0 ? 1 : bottom);
    double const angle = ratio * polynomial(ATAN, ratio * ratio) + (middle ? 45 : 0);
    double const upright = steep ? 90 - angle : angle;
    return std::copysign(x < 0 ? 180 - upright : upright, y);
}

/// The angle in degrees whose sine is given; none beyond 1 and -1, but for rounding (1e-12).
[[nodiscard]] inline double asin(double sine) noexcept
{
    double const square = 1 - sine * sine;
    double const angle = atan2(sine, std::sqrt(square < 0 ? 0 : square));
    return square < -2e-12 ? NONE : angle;
}

/// Natural logarithm of a positive normal number; error below 3e-16 of the result or 1e-16. None for anything
/// else.
[[nodiscard]] inline double log(double x) noexcept
{
    constexpr double LOG[] = {2.0,
                              0.6666666666666666,
                              0.4000000000000751,
                              0.2857142856881593,
                              0.2222222267739513,
                              0.18181773701441448,
                              0.15387162508238544,
                              0.13248727632507434,
                              0.1326242493034941};
    constexpr double LN2_HIGH = 0.693147180369123816490; // 32 bits, so that its multiples are exact
    constexpr double LN2_LOW = 1.90821492927058770002e-10;
    constexpr std::uint64_t ONE = 0x3ff0000000000000;
    constexpr std::uint64_t ROOT_HALF = 0x3fe6a09e667f3bcd;
    constexpr std::uint64_t MANTISSA = 0x000fffffffffffff;
    constexpr std::uint64_t TWO_52 = 0x4330000000000000;
    // x = m * 2^e with m from sqrt(1/2) to sqrt(2)
    std::uint64_t const bits = std::bit_cast<std::uint64_t>(x) + (ONE - ROOT_HALF);
    double const m = std::bit_cast<double>((bits & MANTISSA) + ROOT_HALF);
    double const e = std::bit_cast<double>((bits >> 52) | TWO_52) - (4503599627370496.0 + 1023);
    double const f = (m - 1) / (m + 1);
    double const result = e * LN2_HIGH + (f * polynomial(LOG, f * f) + e * LN2_LOW);
    return x >= std::numeric_limits<double>::min() && x <= std::numeric_limits<double>::max() ? result : NONE;
}

/// e to the power x; relative error below 4e-16. Powers beyond 700 count as 700.
[[nodiscard]] inline double exp(double x) noexcept
{
    constexpr double EXP[] = {1.0,
                              1.0,
                              0.5,
                              0.16666666666666702,
                              0.04166666666666669,
                              0.008333333333309509,
                              0.0013888888888871874,
                              0.00019841269909257902,
                              2.480158735013993e-05,
                              2.755722492065214e-06,
                              2.7557251877225084e-07,
                              2.511488209588034e-08,
                              2.092158893897149e-09};
    constexpr double LOG2_E = 1.4426950408889634;
    constexpr double LN2_HIGH = 0.693147180369123816490;
    constexpr double LN2_LOW = 1.90821492927058770002e-10;
    double const held = clamp(x, -700, 700);
    double const shifted = held * LOG2_E + ROUNDER;
    double const power = shifted - ROUNDER;
    double const rest = (held - power * LN2_HIGH) - power * LN2_LOW;
    auto const scale = std::bit_cast<double>((std::bit_cast<std::uint64_t>(shifted) + 1023) << 52);
    return polynomial(EXP, rest) * scale;
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
