// Spatial differencing undone.
#pragma once

#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace Yul::detail::grib {

/// Undoes the differences of the values that pass through it, in order. Sums are modulo 2^32, which changes
/// no result that fits into 32 bits.
class Differences
{
public:
    static constexpr unsigned HIGHEST_ORDER = 3;

    Differences() = default;

    /// first    the first values in full, as many as the order of differencing
    /// minimum  what was taken off all differences
    Differences(std::span<std::uint32_t const> first, std::uint32_t minimum)
        : order(static_cast<unsigned>(first.size())), min(minimum)
    {
        std::copy(first.begin(), first.end(), given.begin());
    }

    /// The first values of all, as many as the order, are replaced by those given in full.
    void undo(std::span<std::uint32_t> values) noexcept
    {
        if (order == 0)
            return;
        std::size_t i = 0;
        for (; i < values.size() && seen < order; ++i, ++seen)
            start(values[i] = given[seen]);
        auto const rest = values.subspan(i);
        for (unsigned k = order; k-- > 0;)
            accumulate(rest, k + 1 == order ? min : 0, sums[k]);
    }

private:
    /// Takes a value into the sums: the value itself, its difference to the one before, and so on.
    void start(std::uint32_t value) noexcept
    {
        for (unsigned k = 0; k < order; ++k) {
            std::uint32_t const difference = value - sums[k];
            sums[k] = value;
            value = difference;
        }
    }

    unsigned order = 0;
    unsigned seen = 0;
    std::array<std::uint32_t, HIGHEST_ORDER> given{};
    std::uint32_t min = 0;
    std::array<std::uint32_t, HIGHEST_ORDER> sums{}; ///< running value, first and second difference
};

} // namespace Yul::detail::grib
