// The resource store: the library's settings table.
#pragma once

#include "core/String.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Yul {

/// An ordered list of named text values, each tagged with the source it came from. Names are compared
/// exactly. The last `add` wins whatever the sources are. A name may be set without a value. A null name is
/// never set.
class Resrc
{
public:
    /// Where a value came from.
    enum Type {
        NONE = 0,    ///< no such entry, or created by append or prepend
        BASE = 1,    ///< built-in default
        FILE = 2,    ///< resource file
        ENV = 3,     ///< environment
        COMMAND = 4, ///< argument list
        USER = 5     ///< set by the program itself
    };

    Resrc() = default;
    Resrc(Resrc const &) = delete;
    Resrc & operator=(Resrc const &) = delete;

    /// Empties the store.
    int init() { return clear(); }

    /// Empties the store.
    int clear();

    /// Creates the entry, or replaces its value and type without moving it. A null value is an entry without
    /// value. Returns 0 when the name is null or memory runs out.
    int add(char const * name, char const * value, int type);
    int set(char const * name, char const * value, int type);
    int set(char const * name, char const * value);
    int set(char const * name, String & value);
    int put(char const * name, char const * value);

    /// Joins the value behind (append) or before (prepend) the present one, with the separator between (0 is
    /// a newline). An entry that is missing or has no value takes the value alone; a null value changes
    /// nothing.
    int append(char const * name, char const * value, char sep);
    int prepend(char const * name, char const * value, char sep);

    /// The value; empty for an entry without value, null for a name that is not set.
    /// Valid until the entry changes or the store is cleared.
    [[nodiscard]] char const * get(char const * name) const;
    [[nodiscard]] char const * get(char const * name, char const * def) const;
    /// The number that the value begins with; `def` when the name is not set or the value does not begin with
    /// a digit.
    [[nodiscard]] int get(char const * name, int def) const;
    [[nodiscard]] float get(char const * name, float def) const;
    /// False when the name is not set or its value is "no", "off" or "false" in any case; a bare switch is
    /// true.
    [[nodiscard]] bool getBool(char const * name) const;
    [[nodiscard]] int getType(char const * name) const; ///< the source it came from, else NONE
    /// Reads the value by a scanf format; returns the number of items assigned.
    int scanf(char const * name, char const * format, ...) const;

    /// Iteration in the order of first adding; the store has one cursor.
    int rewind();
    [[nodiscard]] char const * getNext();
    /// Copies the cursor's entry (next non-zero) or the first one (next 0) and moves behind it; 0 at the end.
    int getValues(String & name, String & value, int next);

    /// Lists one entry or all of them on standard output.
    int print(char const * name) const;
    int printAll() const;

private:
    struct Entry
    {
        std::string name;
        std::optional<std::string> value;
        int type;
    };

    static constexpr std::size_t END = static_cast<std::size_t>(-1);

    [[nodiscard]] Entry const * find(char const * name) const;
    [[nodiscard]] Entry * find(char const * name);
    Entry & create(char const * name, int type);
    int join(char const * name, char const * value, char sep, bool at_end);

    std::deque<Entry> entries; // a deque, so that texts handed out stay where they are
    std::unordered_map<std::string_view, std::size_t> index;
    std::size_t cursor = END;
};

} // namespace Yul
