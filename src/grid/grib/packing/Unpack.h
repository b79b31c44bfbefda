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

/// out[i] = sum = sum + out[i] + step, modulo 2^32: undoes differences.
void accumulate(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept;

/// What scaling numbers of a width takes so that the values come out rounded once.
enum class Arithmetic {
    FLOAT, ///< no decimal scale, and the sum in double would be exact: one joined multiplication and addition
    DOUBLE, ///< no decimal scale
    DECIMAL ///< everything
};

[[nodiscard]] Arithmetic arithmeticFor(Scale const & scale, unsigned width) noexcept;

/// Groups of numbers that follow each other, each with its own width, length and base, in three columns.
struct GroupRows
{
    std::uint32_t const * base = nullptr;
    std::uint32_t const * width = nullptr;
    std::uint32_t const * length = nullptr;
    std::size_t count = 0;
};

/// How far `unpackGroups` may write behind the last number.
constexpr std::size_t GROUP_SLACK = 16;

/// out = number + base of its group, modulo 2^32, one group behind the other. The caller has made sure that the numbers are
/// there, and that out has room for them and GROUP_SLACK more.
void unpackGroups(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept;

/// Forms of these operations; the tests run them side by side.
struct UnpackForm
{
    char const * name;
    void (*integers)(Octets, std::uint64_t, unsigned, std::uint32_t, std::span<std::uint32_t>) noexcept;
    void (*scaled)(Octets, std::uint64_t, unsigned, Scale const &, std::span<float>) noexcept;
    void (*scale)(std::span<std::uint32_t const>, Scale const &, float *) noexcept;
    void (*accumulate)(std::span<std::uint32_t>, std::uint32_t, std::uint32_t &) noexcept;
    void (*groups)(Octets, std::uint64_t, GroupRows const &, std::uint32_t *) noexcept;
};

[[nodiscard]] UnpackForm const & plainForm() noexcept;
/// For 256-bit registers (AVX2 with FMA). Null where the processor (or the build) has none.
[[nodiscard]] UnpackForm const * wideForm() noexcept;
/// For 512-bit registers (AVX-512 with VBMI). Null where the processor (or the build) has none.
[[nodiscard]] UnpackForm const * widestForm() noexcept;

} // namespace Yul::detail::grib
