#include "core/Strings.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <cstdarg>

namespace Yul {

int Strings::set(char const * text, char separator)
{
    std::deque<std::string> next;
    if (StrLib::valid(text))
        for (std::string_view const piece : detail::split(text, separator))
            next.emplace_back(piece);
    items.swap(next);
    return 1;
}

int Strings::add(char const * text)
{
    items.emplace_back(detail::viewOf(text));
    return 1;
}

int Strings::clear()
{
    items.clear();
    return 1;
}

char const * Strings::getString(int i) const noexcept
{
    if (i < 0 || i >= getNum())
        return nullptr;
    return items[static_cast<std::size_t>(i)].c_str();
}

int Strings::scanf(int i, char const * format, ...) const
{
    char const * const text = getString(i);
    if (text == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return detail::vscan(text, format, args);
}

} // namespace Yul
