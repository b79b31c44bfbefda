// Integers of any width, packed one behind the other, and their scaling to floats.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <cstdint>
#include <span>

namespace Yul::detail::grib {

// Numbers of `width` bits (0 to 32) follow each other, most significant bit first, from a bit of the octets
// on. The caller has made sure that out.size() of them are there (`holds`); nothing beyond the octets is
// read. A width of 0 stands for zeros. Where the processor has wide registers they are used; results are the
// same bit for bit.

/// True when `count` numbers of `width` bits are there from a bit position on.
[[nodiscard]] constexpr bool
holds(Octets packed, std::uint64_t bit, unsigned width, std::uint64_t count) noexcept
{
    std::uint64_t const bits = std::uint64_t{8} * packed.size();
    return bit <= bits && (width == 0 || count <= (bits - bit) / width);
}

/// out = number + base, modulo 2^32.
void unpackIntegers(Octets packed,
                    std::uint64_t bit,
                    unsigned width,
                    std::uint32_t base,
                    std::span<std::uint32_t> out) noexcept;

/// out = (R + number * 2^E) * 10^-D, computed in double and rounded once.
void unpackScaled(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept;

/// out = (R + value * 2^E) * 10^-D for signed values.
void scaleIntegers(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept;

/// Forms of these operations; the tests run them side by side.
struct UnpackForm
{
    char const * name;
    void (*integers)(Octets, std::uint64_t, unsigned, std::uint32_t, std::span<std::uint32_t>) noexcept;
    void (*scaled)(Octets, std::uint64_t, unsigned, Scale const &, std::span<float>) noexcept;
    void (*scale)(std::span<std::uint32_t const>, Scale const &, float *) noexcept;
};

[[nodiscard]] UnpackForm const & plainForm() noexcept;
/// Null where the processor (or the build) has no 256-bit integer registers.
[[nodiscard]] UnpackForm const * wideForm() noexcept;

} // namespace Yul::detail::grib
