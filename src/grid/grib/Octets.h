// Octets of a GRIB message and the numbers in them.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace Yul::detail::grib {

using Octet = std::uint8_t;
using Octets = std::span<Octet const>;

/// Eight octets as a number, the first one the most significant.
[[nodiscard]] inline std::uint64_t loadBigEndian64(Octet const * p) noexcept
{
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap64(word);
    return word;
}

/// Magnitude with the sign in the most significant of `bits` bits, the way the GRIB code writes negative
/// numbers.
[[nodiscard]] constexpr std::int64_t signMagnitude(std::uint64_t raw, unsigned bits) noexcept
{
    std::uint64_t const sign = std::uint64_t{1} << (bits - 1);
    auto const magnitude = static_cast<std::int64_t>(raw & (sign - 1));
    return (raw & sign) != 0 ? -magnitude : magnitude;
}

/// Reference value of edition 1: a sign bit, an exponent of 16 biased by 64, a 24-bit fraction. A zero first
/// octet is 0, whatever follows it.
[[nodiscard]] inline double convIBMFloat(std::uint32_t raw) noexcept
{
    if (raw >> 24 == 0)
        return 0;
    auto const mantissa = static_cast<double>(raw & 0xffffffU);
    int const exponent = static_cast<int>(raw >> 24 & 127U) - 64;
    double const value = std::ldexp(mantissa, 4 * exponent - 24);
    return (raw >> 31) != 0 ? -value : value;
}

/// The inverse for writing: the largest edition 1 number that is not above the value, so that packed
/// differences to it are never negative. Values beyond the format's range stop at its ends.
[[nodiscard]] std::uint32_t convIBMFloat(double value) noexcept;

[[nodiscard]] inline double convIEEEFloat(std::uint32_t raw) noexcept
{
    return static_cast<double>(std::bit_cast<float>(raw));
}

/// Binary scale factor 2^E.
[[nodiscard]] inline double convScale(int exponent) noexcept
{
    return std::ldexp(1.0, exponent);
}

/// Decimal scale factor 10^-D. Exact powers where a double holds them, so that no library's pow decides
/// digits.
[[nodiscard]] double decimalScale(int d) noexcept;

/// A section, read by octet number: the first octet is 1, as in the WMO manual. An octet beyond the end reads
/// as 0 and is remembered: callers read a whole template and ask `isShort` once.
class Section
{
public:
    Section() = default;

    explicit Section(Octets section) : octets(section) {}

    [[nodiscard]] std::size_t size() const noexcept { return octets.size(); }

    [[nodiscard]] bool isShort() const noexcept { return is_short; }

    [[nodiscard]] unsigned u8(std::size_t octet) noexcept { return static_cast<unsigned>(number(octet, 1)); }

    [[nodiscard]] unsigned u16(std::size_t octet) noexcept { return static_cast<unsigned>(number(octet, 2)); }

    [[nodiscard]] unsigned u24(std::size_t octet) noexcept { return static_cast<unsigned>(number(octet, 3)); }

    [[nodiscard]] std::uint32_t u32(std::size_t octet) noexcept
    {
        return static_cast<std::uint32_t>(number(octet, 4));
    }

    [[nodiscard]] int s8(std::size_t octet) noexcept
    {
        return static_cast<int>(signMagnitude(number(octet, 1), 8));
    }

    [[nodiscard]] int s16(std::size_t octet) noexcept
    {
        return static_cast<int>(signMagnitude(number(octet, 2), 16));
    }

    [[nodiscard]] int s24(std::size_t octet) noexcept
    {
        return static_cast<int>(signMagnitude(number(octet, 3), 24));
    }

    [[nodiscard]] int s32(std::size_t octet) noexcept
    {
        return static_cast<int>(signMagnitude(number(octet, 4), 32));
    }

    /// A number of 0 to 8 octets, and the same with its sign.
    [[nodiscard]] std::uint64_t number(std::size_t octet, std::size_t count) noexcept
    {
        if (octet == 0 || octet > octets.size() || octets.size() - octet + 1 < count) {
            is_short = is_short || count > 0;
            return 0;
        }
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i)
            value = value << 8 | octets[octet - 1 + i];
        return value;
    }

    /// The octets from one on to the end; empty beyond the end.
    [[nodiscard]] Octets from(std::size_t octet) const noexcept
    {
        return octet > 0 && octet <= octets.size() ? octets.subspan(octet - 1) : Octets{};
    }

private:
    Octets octets;
    bool is_short = false;
};

} // namespace Yul::detail::grib
