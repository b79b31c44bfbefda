// A program's options and how its settings are put together at start-up.
#pragma once

#include "core/Strings.h"

#include <deque>
#include <string>

namespace Yul {

class String;

/// One declared option. It keeps copies of its texts; a null text counts as an empty one.
class ResrcDBItem
{
public:
    ResrcDBItem() = default;
    /// key    full name of the option and of the setting
    /// env    another environment variable that may hold it, or null
    /// brief  short name, matched exactly in the argument list
    /// help   the line that printHelp shows
    ResrcDBItem(char const * key, char const * env, char const * brief, char const * help);

    /// The same as the constructor; null texts are empty.
    int set(char const * key, char const * env, char const * brief, char const * help);

    /// The four texts; valid until they are set again.
    [[nodiscard]] char const * getKey() const noexcept { return key_text.c_str(); }

    /// The environment variable, empty for none.
    [[nodiscard]] char const * getEnv() const noexcept { return env_text.c_str(); }

    /// The short name, empty for none.
    [[nodiscard]] char const * getBrief() const noexcept { return brief_text.c_str(); }

    /// The line of help, empty for none.
    [[nodiscard]] char const * getHelp() const noexcept { return help_text.c_str(); }

private:
    std::string key_text;
    std::string env_text;
    std::string brief_text;
    std::string help_text;
};

/// An ordered list of options with a cursor. Items handed out stay valid as long as the list.
class ResrcDBList
{
public:
    /// Appends an option. Returns 1.
    int add(char const * key, char const * env, char const * brief, char const * help);
    int add(ResrcDBItem const & item);

    /// Puts the cursor before the first item.
    int rewind();
    /// The first item, and the cursor moves behind it; null for an empty list.
    [[nodiscard]] ResrcDBItem * first();
    /// The item at the cursor, which moves on; null at the end.
    [[nodiscard]] ResrcDBItem * next();
    /// Item i, 0 is the first; null for an index outside the list.
    [[nodiscard]] ResrcDBItem * get(int i);
    [[nodiscard]] ResrcDBItem const * get(int i) const;

    /// Number of items.
    [[nodiscard]] int getNum() const noexcept { return static_cast<int>(items.size()); }

    /// Lists key, environment variable, short name and help of every item on standard output.
    int print() const;

private:
    std::deque<ResrcDBItem> items;
    int cursor = 0;
};

/// The start of a program: one call fills the process-wide settings (Yul::resrc).
class ResrcDB
{
public:
    /// Fills the settings from built-in names, the resource files on the search path, the environment and the
    /// argument list, later ones over earlier ones; then the message level, database path and initial time.
    /// args        the argument list, the program's own path first
    /// keyed       options given as "-key value"
    /// positional  options given by place, the last takes all surplus
    /// return      1; missing files and unknown keys are passed over
    static int create(Strings & args, ResrcDBList & keyed, ResrcDBList & positional);
    /// The text behind the last "/" of the path; 0 for a null path.
    static int decodeProgramName(char const * path, String & name);
    /// Prints the program's syntax at message level 1.
    static int printHelp(char const * prog, ResrcDBList & keyed, ResrcDBList & positional);
};

} // namespace Yul
