// The result of a file search.
#pragma once

#include "time/Date.h"

#include <string>

namespace Yul {

/// A data file found for a time: its name, that time, and the time in seconds since 1970 (Const::MISS until
/// set).
class NameConvFile
{
public:
    /// Forgets name and time.
    int init();
    /// Sets the name alone.
    int setFilename(char const * name);
    int set(char const * name, Date const & when);

    /// Empty until set; valid until it is set again.
    [[nodiscard]] char const * getFilename() const noexcept { return filename.c_str(); }

    /// The time of the file, not set where it is not known.
    [[nodiscard]] Date const & getDate() const noexcept { return date; }

    /// The same as seconds since 1970; Const::MISS where it is not known.
    [[nodiscard]] long getSeconds() const noexcept { return seconds; }

private:
    std::string filename;
    Date date;
    long seconds = Const::MISS;
};

} // namespace Yul
