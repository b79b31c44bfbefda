// The parallels of Gaussian grids.
#pragma once

#include <cmath>
#include <numbers>

namespace Yul::detail::grib {

/// Latitude, in degrees, of the k-th of the 2 N parallels of a Gaussian grid, counted from the north from 1 on: its sine is a
/// zero of the Legendre polynomial of degree 2 N. Newton's steps from the asymptotic zero; good to 1e-12 degrees.
/// Source: Abramowitz and Stegun, Handbook of Mathematical Functions, 22.16.6 and 22.8.5.
[[nodiscard]] inline double gaussianLatitude(int parallels, int k) noexcept
{
    constexpr int STEPS = 4;
    int const degree = 2 * parallels;
    double x = std::cos(std::numbers::pi * (k - 0.25) / (degree + 0.5));
    for (int step = 0; step < STEPS; ++step) {
        double before = 1;
        double value = x;
        for (int n = 2; n <= degree; ++n) {
            double const next = ((2 * n - 1) * x * value - (n - 1) * before) / n;
            before = value;
            value = next;
        }
        x -= value * (x * x - 1) / (degree * (x * value - before));
    }
    return std::asin(x) * 180 / std::numbers::pi;
}

/// The parallel that lies next to a latitude.
[[nodiscard]] inline int nearestGaussian(int parallels, double lat) noexcept
{
    double const k = (90 - lat) / 180 * (2 * parallels + 0.5) + 0.25;
    return static_cast<int>(std::lround(k));
}

} // namespace Yul::detail::grib
