// Settings from an argument list.
#pragma once

#include "core/Strings.h"

namespace Yul {

class String;

/// Walks a program's arguments; the first one is the program's own name and is skipped. An option is "-" and
/// a letter, or "--" and a letter; its value follows a "=" or is the next argument when that is no option.
/// Anything else (a file name, "-" alone, a negative number) is positional.
class ResrcCL
{
public:
    /// What getKeyed read last.
    enum Kind { NONE = 0, EQUAL = 2, SEPARATE = 5, BARE = 6, END = 9 };

    /// Keeps a copy of the arguments.
    explicit ResrcCL(Strings const & args) : arguments(args) {}

    /// Back to the first argument.
    int rewind();
    /// The argument at the index as an option: 1 with its key (without dashes) and value, empty for a bare
    /// option, both empty for "--"; 0 without moving when it is not an option; -1 past the end.
    int getKeyed(String & key, String & value);
    /// The argument at the index as it stands: its count among the positional ones, from 0; -1 past the end.
    int getPosition(String & value);

    [[nodiscard]] int getKind() const noexcept { return kind; }

    /// How a given key fits an option: 2 the short name exactly, 1 a prefix of the full name, 0 not at all.
    [[nodiscard]] static int compare(char const * given, char const * full, char const * brief);

private:
    Strings arguments;
    int index = 1;
    int num_positional = 0;
    int kind = NONE;
};

} // namespace Yul
