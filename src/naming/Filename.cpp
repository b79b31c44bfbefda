#include "naming/Filename.h"

#include "core/StrLib.h"

namespace Yul {

int Filename::init()
{
    names.clear();
    index_name.clear();
    return 1;
}

int Filename::set(char const * name)
{
    return set(name, nullptr);
}

int Filename::set(char const * name, char const * index)
{
    Strings next; // filled first: the texts may be this object's own
    if (StrLib::valid(name))
        next.add(name);
    index_name = std::string(detail::viewOf(index));
    names = next;
    return 1;
}

int Filename::add(char const * name)
{
    return StrLib::valid(name) ? names.add(name) : 0;
}

int Filename::setIndex(char const * index)
{
    index_name = std::string(detail::viewOf(index));
    return 1;
}

} // namespace Yul
