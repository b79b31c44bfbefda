// Longitudes within half a turn of a meridian.
#pragma once

#include <cmath>

namespace Yul::detail {

/// Degrees from the middle meridian to either side of a cut: a hair less than half a turn, so that both stay on their side.
inline constexpr double HALF_ROUND = 180 - 1e-9;

/// The same longitude from -180 on to below 180 degrees.
[[nodiscard]] inline double halfTurn(double lon) noexcept
{
    return lon - 360 * std::floor((lon + 180) / 360);
}

} // namespace Yul::detail
