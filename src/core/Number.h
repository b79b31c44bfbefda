// Text to number, independent of the locale.
#pragma once

#include <string_view>

namespace Yul::detail {

/// The integer at the start of the text as atoi reads it: leading blanks and one sign are accepted, reading
/// stops at the first other character. 0 where there is no number; values beyond the type's range stop at its
/// ends.
[[nodiscard]] int toInt(std::string_view text) noexcept;
[[nodiscard]] long long toLong(std::string_view text) noexcept;

/// The number at the start of the text as atof reads it in the C locale; 0 where there is none.
[[nodiscard]] double toDouble(std::string_view text) noexcept;
[[nodiscard]] float toFloat(std::string_view text) noexcept;

/// True when the character is a blank of the C locale (space, tab, newline, vertical tab, form feed, return).
[[nodiscard]] constexpr bool isBlank(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

[[nodiscard]] constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

[[nodiscard]] constexpr char toLower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace Yul::detail
