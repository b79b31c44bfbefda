// Bitmaps: which points of a grid have a value.
#pragma once

#include "grid/grib/Octets.h"

#include <cstdint>
#include <span>

namespace Yul::detail::grib {

/// Set bits among the first `points` bits, most significant bit first. The bitmap holds at least that many.
[[nodiscard]] std::uint64_t countPresent(Octets bitmap, std::uint64_t points) noexcept;

/// Spreads values over their points, in place.
/// values  as many as the grid has points; on entry the values of the points that the bitmap shows, in order,
/// at its end;
///         on return one a point, -9999 where the bitmap has a 0.
/// Where the processor has wide registers they are used.
void expand(Octets bitmap, std::span<float> values) noexcept;

/// The forms of `expand`; the tests run them side by side. `expandWide` is null where the processor (or the build) has no
/// 256-bit registers.
void expandPlain(Octets bitmap, std::span<float> values) noexcept;
using Expand = void (*)(Octets, std::span<float>) noexcept;
[[nodiscard]] Expand expandWide() noexcept;

} // namespace Yul::detail::grib
