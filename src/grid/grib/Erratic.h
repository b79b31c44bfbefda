// The detector of bad data.
#pragma once

#include "core/Const.h"
#include "grid/grib/Field.h"

#include <array>
#include <cmath>
#include <span>

namespace Yul::detail::grib {

/// The jump between neighbours that counts as one too many: the one given, or half the range that the packing
/// can express when none (0) is given.
[[nodiscard]] inline double jumpOf(Packing const & packing, double given) noexcept
{
    if (given > 0)
        return given;
    double const largest = packing.bits > 0 ? std::ldexp(1.0, static_cast<int>(packing.bits)) - 1 : 0;
    return std::abs(packing.scale(largest) - packing.scale(0)) / 2;
}

/// True when among any 20 values in a row more than `max` differ from the one before by more than the jump.
/// Missing values are passed over.
[[nodiscard]] inline bool isErratic(std::span<float const> values, double jump, int max) noexcept
{
    constexpr std::size_t RING = 20;
    std::array<bool, RING> flags{};
    std::size_t at = 0;
    int set = 0;
    bool has_previous = false;
    double previous = 0;
    for (float const value : values) {
        if (isMissing(value))
            continue;
        bool const is_jump = has_previous && std::abs(value - previous) > jump;
        set += static_cast<int>(is_jump) - static_cast<int>(flags[at]);
        flags[at] = is_jump;
        at = (at + 1) % RING;
        if (set > max)
            return true;
        previous = value;
        has_previous = true;
    }
    return false;
}

} // namespace Yul::detail::grib
