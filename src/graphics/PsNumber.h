// Number text for PostScript.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Yul::detail {

/// Octets that one number may take.
inline constexpr std::size_t NUMBER_ROOM = 48;

/// "00" to "99" one after the other.
inline constexpr auto DIGIT_PAIRS = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

inline char * writePair(char * out, std::uint32_t pair) noexcept
{
    std::memcpy(out, DIGIT_PAIRS.data() + 2 * static_cast<std::size_t>(pair), 2);
    return out + 2;
}

/// One or two digits of a number below 100.
inline char * writeLeading(char * out, std::uint32_t number) noexcept
{
    if (number >= 10)
        return writePair(out, number);
    *out = static_cast<char>('0' + number);
    return out + 1;
}

/// A number below 10^8 in decimal, without leading zeros.
inline char * writeDecimal(char * out, std::uint32_t number) noexcept
{
    if (number < 100)
        return writeLeading(out, number);
    if (number < 10000)
        return writePair(writeLeading(out, number / 100), number % 100);
    std::uint32_t const low = number % 10000;
    return writePair(writePair(writeDecimal(out, number / 10000), low / 100), low % 100);
}

/// Writes a finite number with two decimals, octet for octet as printf("%3.2f") does: a float times 100 is
/// exact in double (24 + 7 bits), so that rounding it to an even integer is the only rounding there is.
/// return  the end of the text; it takes at most NUMBER_ROOM octets.
inline char * writeFixed2(char * out, float value) noexcept
{
    constexpr double FAST_LIMIT = 1e9;
    constexpr double INTEGERS = 0x1p52; // above it doubles are integers: adding it rounds
    double const hundredths = std::abs(static_cast<double>(value)) * 100;
    if (!(hundredths < FAST_LIMIT))
        return std::to_chars(out, out + NUMBER_ROOM, value, std::chars_format::fixed, 2).ptr;
    if (std::signbit(value))
        *out++ = '-';
    auto const number = static_cast<std::uint32_t>((hundredths + INTEGERS) - INTEGERS);
    out = writeDecimal(out, number / 100);
    *out++ = '.';
    return writePair(out, number % 100);
}

} // namespace Yul::detail
