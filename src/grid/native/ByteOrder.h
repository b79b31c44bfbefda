// Floats from the octet order of files to that of the machine.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace Yul::detail::native {

/// Turns the octets of every float round, from one array to another or in place.
using Swap = void (*)(float const * from, float * to, std::size_t count) noexcept;

/// The octets of one float in the other order. The value is never computed with, so that all bits stay.
[[nodiscard]] inline float swapped(float value) noexcept
{
    return std::bit_cast<float>(__builtin_bswap32(std::bit_cast<std::uint32_t>(value)));
}

void swapPlain(float const * from, float * to, std::size_t count) noexcept;

/// The form for wide registers; null where the processor has none.
[[nodiscard]] Swap swapWide() noexcept;

/// From the most significant octet first to the machine's order and back, in the quickest form that this processor
/// has. `from` and `to` are the same or do not overlap.
void toMachineOrder(float const * from, float * to, std::size_t count) noexcept;

} // namespace Yul::detail::native
