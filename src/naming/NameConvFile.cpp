#include "naming/NameConvFile.h"

#include "core/StrLib.h"

namespace Yul {

int NameConvFile::init()
{
    *this = NameConvFile();
    return 1;
}

int NameConvFile::setFilename(char const * name)
{
    filename = std::string(detail::viewOf(name));
    return 1;
}

int NameConvFile::set(char const * name, Date const & when)
{
    setFilename(name);
    date = when;
    seconds = static_cast<long>(when.getSeconds());
    return 1;
}

} // namespace Yul
