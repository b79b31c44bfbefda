// The library's growable text type.
#pragma once

#include <string>
#include <string_view>

namespace Yul {

/// A growable text. It never holds a NUL octet: text behind one is cut off, as everywhere in the library.
/// A null text pointer counts as an empty text. Operations return 1 unless they say otherwise.
class String
{
public:
    String() = default;

    /// A null pointer counts as an empty text, here and in all that follows.
    // NOLINTNEXTLINE(google-explicit-constructor): texts are given as they stand
    String(char const * text) { set(text); }

    /// capacity  characters to make room for, a hint only; held to 1 MiB.
    explicit String(int capacity) { init(capacity); }

    /// Empties the text and makes room for `capacity` characters.
    int init(int capacity);

    /// The text, never null; valid until this String changes.
    [[nodiscard]] char const * get() const noexcept { return text.c_str(); }

    /// The same as a view, valid as long.
    [[nodiscard]] std::string_view view() const noexcept { return text; }

    /// Octets of the text.
    [[nodiscard]] int length() const noexcept { return static_cast<int>(text.size()); }

    /// Replaces the text. Returns 1.
    int set(char const * value);
    int set(String const & value);

    /// The same as `set`.
    int copy(char const * value) { return set(value); }

    /// The same as `set`.
    int copy(String const & value) { return set(value); }

    /// Adds to the end of the text. Returns 1.
    int append(char const * value);
    int append(String const & value);
    /// Empties the text. Returns 1.
    int clear();

    /// Replaces the text by the formatted arguments; returns the new length.
    [[gnu::format(printf, 2, 3)]] int printf(char const * format, ...);
    /// Appends the formatted arguments; returns the new length.
    [[gnu::format(printf, 2, 3)]] int aprintf(char const * format, ...);
    /// Reads the text by a scanf format; returns the number of items assigned.
    int scanf(char const * format, ...) const;
    /// The same from character `pos` (0 is the first) on; 0 where the position lies outside the text.
    int scanp(int pos, char const * format, ...) const;

    /// Replaces the text, and adds to it.
    void assign(std::string_view value);
    void append(std::string_view value);

private:
    std::string text;
};

} // namespace Yul
