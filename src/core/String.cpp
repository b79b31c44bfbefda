#include "core/String.h"

#include "core/Format.h"
#include "core/Scan.h"

#include <algorithm>
#include <cstdarg>

namespace Yul {
namespace {

constexpr int MAX_HINT = 1 << 20;

} // namespace

int String::init(int capacity)
{
    text.clear();
    text.reserve(static_cast<std::size_t>(std::clamp(capacity, 0, MAX_HINT)));
    return 1;
}

void String::assign(std::string_view value)
{
    text = value.substr(0, value.find('\0'));
}

void String::append(std::string_view value)
{
    text += std::string(value.substr(0, value.find('\0'))); // a copy, since value may lie in text
}

int String::set(char const * value)
{
    assign(std::string(value != nullptr ? value : ""));
    return 1;
}

int String::set(String const & value)
{
    text = value.text;
    return 1;
}

int String::append(char const * value)
{
    append(std::string_view(value != nullptr ? value : ""));
    return 1;
}

int String::append(String const & value)
{
    append(value.view());
    return 1;
}

int String::clear()
{
    text.clear();
    return 1;
}

int String::printf(char const * format, ...)
{
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    text = detail::vformat(format, args);
    return length();
}

int String::aprintf(char const * format, ...)
{
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    text += detail::vformat(format, args);
    return length();
}

int String::scanf(char const * format, ...) const
{
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return detail::vscan(text, format, args);
}

int String::scanp(int pos, char const * format, ...) const
{
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    if (pos < 0 || pos > length())
        return 0;
    return detail::vscan(std::string_view(text).substr(static_cast<std::size_t>(pos)), format, args);
}

} // namespace Yul
