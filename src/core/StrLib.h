// Static functions on plain texts.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Yul {

/// Null-safe comparisons and small helpers on plain character strings.
class StrLib
{
public:
    /// True when both texts are the same; two null pointers are equal, a null pointer equals nothing else.
    [[nodiscard]] static bool equal(char const * a, char const * b) noexcept;
    /// The same without regard to the case of ASCII letters.
    [[nodiscard]] static bool iequal(char const * a, char const * b) noexcept;
    /// The same over the first n characters; a text that ends earlier equals only one that ends there too.
    [[nodiscard]] static bool iequal(char const * a, char const * b, int n) noexcept;

    /// A heap copy; none for a null pointer.
    [[nodiscard]] static std::unique_ptr<char[]> acopy(char const * text);

    /// True for a text that is neither null nor empty.
    [[nodiscard]] static bool valid(char const * text) noexcept { return text != nullptr && *text != '\0'; }

    /// Empties a buffer in place.
    static int clear(char * text) noexcept;

    /// True when the text has exactly the form of the pattern, one class a character: u upper-case letter, d
    /// digit, "." any character, [..] one of a set; any other character stands for itself.
    [[nodiscard]] static bool match(char const * text, char const * pattern) noexcept;
};

namespace detail {

/// True when the texts are the same but for the case of ASCII letters.
[[nodiscard]] bool sameIgnoringCase(std::string_view a, std::string_view b) noexcept;
/// True when the text begins with the prefix, whatever the case of ASCII letters.
[[nodiscard]] bool startsIgnoringCase(std::string_view text, std::string_view prefix) noexcept;
/// The pieces between the separators; an empty text has one empty piece.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

/// The text without blanks at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text) noexcept;

/// The text of a pointer that may be null.
[[nodiscard]] constexpr std::string_view viewOf(char const * text) noexcept
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

/// Stores the text in a field of fixed size and ends it with NUL; what does not fit is cut off.
template <std::size_t N> constexpr void copyText(char (&field)[N], std::string_view text) noexcept
{
    std::size_t const n = text.size() < N ? text.size() : N - 1;
    for (std::size_t i = 0; i < n; ++i)
        field[i] = text[i];
    for (std::size_t i = n; i < N; ++i)
        field[i] = '\0';
}

} // namespace detail
} // namespace Yul
