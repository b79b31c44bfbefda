#include "naming/Filename.h"

#include "core/StrLib.h"

#include <utility>

namespace Yul {

int Filename::init()
{
    *this = Filename();
    return 1;
}

int Filename::set(char const * name)
{
    return set(name, nullptr);
}

int Filename::set(char const * name, char const * index)
{
    Filename next; // filled first: the texts may be this object's own
    next.add(name, index);
    *this = std::move(next);
    return 1;
}

int Filename::add(char const * name)
{
    return add(name, nullptr);
}

int Filename::add(char const * name, char const * index)
{
    if (!StrLib::valid(name))
        return 0;
    names.add(name);
    return indexes.add(index);
}

} // namespace Yul
