#include "core/FileTool.h"

#include "core/StrLib.h"

#include <string>

#include <sys/stat.h>

namespace Yul {

int FileTool::addPath(char const * directory, char const * name, String & path)
{
    std::string joined(detail::viewOf(directory));
    std::string_view const file = detail::viewOf(name);
    if (joined.empty() || (!file.empty() && file.front() == '/'))
        joined.clear();
    else if (joined.back() != '/')
        joined += '/';
    path.assign(joined.append(file));
    return 1;
}

bool FileTool::exist(char const * name)
{
    return getSize(name) >= 0;
}

bool FileTool::isDirectory(char const * name)
{
    struct stat info
    {
    };

    return StrLib::valid(name) && stat(name, &info) == 0 && S_ISDIR(info.st_mode);
}

long FileTool::getSize(char const * name)
{
    struct stat info
    {
    };

    return StrLib::valid(name) && stat(name, &info) == 0 ? static_cast<long>(info.st_size) : -1;
}

} // namespace Yul
