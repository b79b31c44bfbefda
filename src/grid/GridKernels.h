// Loops over the values of a grid, as functions of plain arrays.
#pragma once

#include "core/Const.h"

#include <cstddef>
#include <span>

namespace Yul::detail {

/// True for a value that is neither the missing value nor NaN. Without a branch, for the sake of loops.
[[nodiscard]] constexpr bool isValid(float value) noexcept
{
    bool const is_present = value != static_cast<float>(Const::MISS);
    bool const is_number = value == value;
    return static_cast<bool>(is_present & is_number);
}

/// The missing value in place of NaN.
[[nodiscard]] constexpr float orMiss(float value) noexcept
{
    return value == value ? value : static_cast<float>(Const::MISS);
}

struct Extremes
{
    float min = Const::MISS;
    float max = Const::MISS;
};

/// How many values are valid, their extremes, and their sum. The sum is formed in eight partial sums, value i
/// going to sum i modulo 8, which are then added in order.
[[nodiscard]] std::size_t countValid(std::span<float const> values) noexcept;
[[nodiscard]] Extremes findExtremes(std::span<float const> values) noexcept;
[[nodiscard]] double sumValid(std::span<float const> values) noexcept;

/// value * factor + amount in float for every valid value; what becomes NaN is missing.
void scaleValid(std::span<float> values, float factor) noexcept;
void offsetValid(std::span<float> values, float amount) noexcept;

/// The value at column x and row y of nx by ny values, between its four neighbours; see Grid::getValue.
[[nodiscard]] inline float interpolate(float const * data, int nx, int ny, double x, double y) noexcept
{
    constexpr float MISSING = Const::MISS;
    if (!(x >= 0 && x <= nx - 1 && y >= 0 && y <= ny - 1)) // NaN is outside too
        return MISSING;
    auto const i = static_cast<int>(x);
    auto const j = static_cast<int>(y);
    auto const fx = x - i;
    auto const fy = y - j;
    auto const width = static_cast<std::size_t>(nx);
    auto const * const p = data + static_cast<std::size_t>(j) * width + static_cast<std::size_t>(i);
    bool const last_column = i == nx - 1;
    bool const last_row = j == ny - 1;

    if (!last_column && !last_row) {
        if (!(isValid(p[0]) && isValid(p[1]) && isValid(p[width]) && isValid(p[width + 1])))
            return MISSING;
        return orMiss(static_cast<float>((1 - fy) * (1 - fx) * p[0] + (1 - fy) * fx * p[1] +
                                         fy * (1 - fx) * p[width] + fy * fx * p[width + 1]));
    }
    if (last_column && last_row)
        return orMiss(p[0]);
    auto const other = last_row ? p[1] : p[width];
    auto const part = last_row ? fx : fy;
    if (!(isValid(p[0]) && isValid(other)))
        return MISSING;
    return orMiss(static_cast<float>((1 - part) * p[0] + part * other));
}

/// `interpolate` at many places: out[i] at column x[i] and row y[i], both of out's length. Places that lie far apart
/// are fetched from memory side by side.
void interpolateEach(float const * data,
                     int nx,
                     int ny,
                     std::span<float const> x,
                     std::span<float const> y,
                     std::span<float> out) noexcept;

} // namespace Yul::detail
