// The name of a data file, or of several, with an index file beside them.
#pragma once

#include "core/Strings.h"

namespace Yul {

/// One file name or an ordered list of them, and the name of an index file that may go with them. Null names
/// are passed over.
class Filename
{
public:
    Filename() = default;

    /// A list of that one name; empty for a null or empty one.
    // NOLINTNEXTLINE(google-explicit-constructor): names are given as they stand
    Filename(char const * name) { set(name); }

    /// The same with an index file.
    Filename(char const * name, char const * index) { set(name, index); }

    /// No names, no index file.
    int init();
    /// Replaces the whole list.
    int set(char const * name);
    int set(char const * name, char const * index);
    /// Appends a name; 0 for a null or empty one.
    int add(char const * name);
    int add(char const * name, char const * index);

    /// Number of names.
    [[nodiscard]] int getNum() const noexcept { return names.getNum(); }

    /// Name i, 0 is the first; null for an index outside the list. Valid until the list is set again.
    [[nodiscard]] char const * get(int i) const noexcept { return names.getString(i); }

    /// The first name; null for an empty list.
    [[nodiscard]] char const * get() const noexcept { return get(0); }

    /// The index file of name i; empty when it has none, null for an index outside the list.
    [[nodiscard]] char const * getIndex(int i) const noexcept { return indexes.getString(i); }

    /// The index file of the first name.
    [[nodiscard]] char const * getIndex() const noexcept { return getIndex(0); }

private:
    Strings names;
    Strings indexes; // as many as names
};

} // namespace Yul
