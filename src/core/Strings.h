// An ordered list of texts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Yul {

/// An ordered list of texts, usually made by splitting one text at a separator.
class Strings
{
public:
    Strings() = default;

    /// Splits the text at every separator; a null or empty text gives an empty list, two separators in a row
    /// an empty item.
    Strings(char const * text, char separator) { set(text, separator); }

    /// Splits a text in the same way, in place of what the list held. Returns 1.
    int set(char const * text, char separator);
    /// Appends a copy of the text; a null pointer counts as an empty text.
    int add(char const * text);
    int clear(); ///< empties the list

    /// Number of items.
    [[nodiscard]] int getNum() const noexcept { return static_cast<int>(items.size()); }

    /// Item i (0 is the first); null for an index outside the list. Valid until the list is cleared.
    [[nodiscard]] char const * getString(int i) const noexcept;

    /// The same as getString.
    [[nodiscard]] char const * get(int i) const noexcept { return getString(i); }

    /// Reads item i by a scanf format; returns the number of items assigned.
    int scanf(int i, char const * format, ...) const;

private:
    std::vector<std::shared_ptr<std::string const>>
        items; // adding, and copying the list, leave the texts where they are
};

} // namespace Yul
