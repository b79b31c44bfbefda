// Helpers on file names and the file system.
#pragma once

#include "core/String.h"

namespace Yul {

class FileTool
{
public:
    /// Joins a directory and a name with one "/"; an empty directory or an absolute name gives the name
    /// alone.
    static int addPath(char const * directory, char const * name, String & path);
    /// True when something of that name is there.
    [[nodiscard]] static bool exist(char const * name);
    /// True when a directory of that name is there.
    [[nodiscard]] static bool isDirectory(char const * name);
    /// Size in octets of a file, -1 when it is not there.
    [[nodiscard]] static long getSize(char const * name);
};

} // namespace Yul
