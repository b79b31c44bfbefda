// Plane axes and thermodynamic diagrams. A position's longitude is the abscissa, its latitude the ordinate.
#pragma once

#include "geo/projection/Plane.h"

namespace Yul::detail {

inline constexpr double KAPPA = 0.285714;             ///< gas constant over specific heat of dry air
inline constexpr double KELVIN = 273.15;              ///< 0 degrees Celsius
inline constexpr double LOG_1000 = 6.907755278982137; ///< logarithm of the pressure where theta equals T, hPa

/// The two values as they are.
struct Cartesian
{
};

[[nodiscard]] inline Plane forward(Cartesian, double ordinate, double abscissa) noexcept
{
    return {abscissa, ordinate};
}

[[nodiscard]] inline Position inverse(Cartesian, double x, double y) noexcept
{
    return {y, x};
}

/// Pressure on a linear axis that points downward.
struct PressureAxis
{
};

[[nodiscard]] inline Plane forward(PressureAxis, double pressure, double abscissa) noexcept
{
    return {abscissa, -pressure};
}

[[nodiscard]] inline Position inverse(PressureAxis, double x, double y) noexcept
{
    return {-y, x};
}

/// Logarithm of the pressure, isotherms leaning to the right by `skew` kelvin for every unit of it: 0 for an
/// emagram or a vertical section.
struct LogPressure
{
    double skew;
};

/// The lean of the isotherms of a skew-T, log p diagram, with the 1000 hPa isobar as the temperature scale.
/// Source: G. S. Stipanuk, Algorithms for generating a skew-T, log p diagram, Atmospheric Sciences Laboratory,
/// White Sands, 1973: y = 132.182 - 44.061 log10 p, x = 0.54 T + 0.90692 y.
inline constexpr double SKEW_T = 0.90692 / 0.54 * 44.061 / 2.302585092994046;

[[nodiscard]] inline Plane forward(LogPressure const & k, double pressure, double temperature) noexcept
{
    double const up = math::log(pressure);
    return {temperature + k.skew * (LOG_1000 - up), -up};
}

[[nodiscard]] inline Position inverse(LogPressure const & k, double x, double y) noexcept
{
    return {math::exp(-y), x - k.skew * (LOG_1000 + y)};
}

/// Hodograph: distance from the origin and direction, degrees clockwise from upward.
struct Polar
{
};

[[nodiscard]] inline Plane forward(Polar, double distance, double direction) noexcept
{
    auto const [s, c] = math::sinCos(direction);
    return keepIf(std::fabs(direction) <= 1e9, Plane{distance * s, distance * c});
}

[[nodiscard]] inline Position inverse(Polar, double x, double y) noexcept
{
    return {std::sqrt(x * x + y * y), math::atan2(x, y)};
}

/// Stuve (pseudo-adiabatic) diagram: the pressure to the power of kappa.
struct Stuve
{
};

[[nodiscard]] inline Plane forward(Stuve, double pressure, double temperature) noexcept
{
    return {temperature, -math::exp(KAPPA * math::log(pressure))};
}

[[nodiscard]] inline Position inverse(Stuve, double x, double y) noexcept
{
    return {math::exp(math::log(-y) / KAPPA), x};
}

/// Tephigram: temperature and the logarithm of the potential temperature.
struct Tephigram
{
};

[[nodiscard]] inline Plane forward(Tephigram, double pressure, double celsius) noexcept
{
    return {celsius, math::log(celsius + KELVIN) + KAPPA * (LOG_1000 - math::log(pressure))};
}

[[nodiscard]] inline Position inverse(Tephigram, double x, double y) noexcept
{
    return {math::exp(LOG_1000 - (y - math::log(x + KELVIN)) / KAPPA), x};
}

/// The tephigram turned by 45 degrees, ln theta multiplied by 273.15 and counted from 0 degrees Celsius, so that
/// isobars run about horizontally and one unit along the isotherms and the dry adiabats is one kelvin there.
struct RotatedTephigram
{
};

inline constexpr double ROOT_HALF = 0.7071067811865476;
inline constexpr double LOG_KELVIN = 5.610021094841726; ///< logarithm of 273.15

[[nodiscard]] inline Plane forward(RotatedTephigram, double pressure, double celsius) noexcept
{
    Plane const p = forward(Tephigram{}, pressure, celsius);
    double const theta = KELVIN * (p.y - LOG_KELVIN);
    return {ROOT_HALF * (theta + p.x), ROOT_HALF * (theta - p.x)};
}

[[nodiscard]] inline Position inverse(RotatedTephigram, double x, double y) noexcept
{
    return inverse(Tephigram{}, ROOT_HALF * (x - y), ROOT_HALF * (x + y) / KELVIN + LOG_KELVIN);
}

} // namespace Yul::detail
