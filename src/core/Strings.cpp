#include "core/Strings.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <cstdarg>
#include <utility>

namespace Yul {

int Strings::set(char const * text, char separator)
{
    Strings next; // filled first: the text may be one of this list's own
    if (StrLib::valid(text))
        for (std::string_view const piece : detail::split(text, separator))
            next.items.push_back(std::make_shared<std::string>(piece));
    items = std::move(next.items);
    return 1;
}

int Strings::add(char const * text)
{
    items.push_back(std::make_shared<std::string>(detail::viewOf(text)));
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
    return items[static_cast<std::size_t>(i)]->c_str();
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
