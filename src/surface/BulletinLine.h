// Kinds of lines in a bulletin feed.
#pragma once

#include <string_view>

namespace Yul::detail {

/// What a line of a feed is. The data codes, 16 and up, are those that a reader hands out.
enum LineCode {
    LINE_NONE = 0,
    LINE_START = 1,      ///< SOH CR CR or ETX SOH CR CR
    LINE_SEQUENCE = 2,   ///< the line behind it
    LINE_HEADING = 3,    ///< TTAAii CCCC YYGGgg, or "** " and a heading
    LINE_IDENTIFIER = 4, ///< product identifier
    LINE_UNSELECTED = 5,
    LINE_DATA = 16,
    LINE_NOT_ALNUM = 17, ///< does not begin with a letter or digit
    LINE_END = 18,       ///< "$$"
    LINE_ZONE = 19,      ///< two letters, C or Z, three digits
    LINE_EVENT = 20,     ///< "/X.XXX"
    LINE_HEADLINE = 22   ///< "...XX"
};

[[nodiscard]] constexpr bool isStartLine(std::string_view line) noexcept
{
    return line.starts_with("\x01\r\r") || line.starts_with("\x03\x01\r\r");
}

[[nodiscard]] constexpr bool isStarredHeading(std::string_view line) noexcept
{
    return line.starts_with("** ");
}

/// The data code of a line, without looking at where it stands.
[[nodiscard]] LineCode dataLineCode(std::string_view line) noexcept;

/// Zone or county line against a zone: two letters, C or Z and a number ("WIZ064"), or "ALL" in place of the
/// number. The line's groups of three digits and its ranges "063>065" are compared; fewer than 8 characters
/// to the line's end stop the search, so that its last group is never taken for a zone.
[[nodiscard]] bool matchZone(std::string_view line, std::string_view zone);

/// Whether the text begins with this pattern: u an upper-case letter, d a digit, z one of "CZ", any other
/// character itself.
[[nodiscard]] bool beginsLike(std::string_view text, std::string_view pattern) noexcept;
/// Whether the text begins with a letter.
[[nodiscard]] bool beginsWithLetter(std::string_view text) noexcept;

/// The line without the characters that end it.
[[nodiscard]] constexpr std::string_view withoutLineEnd(std::string_view line) noexcept
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace Yul::detail
