#include "core/StrLib.h"

#include "core/Number.h"

#include <algorithm>
#include <cstring>

namespace Yul {

bool StrLib::equal(char const * a, char const * b) noexcept
{
    if (a == nullptr || b == nullptr)
        return a == b;
    return std::strcmp(a, b) == 0;
}

bool StrLib::iequal(char const * a, char const * b) noexcept
{
    if (a == nullptr || b == nullptr)
        return a == b;
    return detail::sameIgnoringCase(a, b);
}

bool StrLib::iequal(char const * a, char const * b, int n) noexcept
{
    if (a == nullptr || b == nullptr)
        return a == b;
    auto const count = static_cast<std::size_t>(std::max(n, 0));
    return detail::sameIgnoringCase(std::string_view(a).substr(0, count),
                                    std::string_view(b).substr(0, count));
}

std::unique_ptr<char[]> StrLib::acopy(char const * text)
{
    if (text == nullptr)
        return nullptr;
    std::size_t const size = std::strlen(text) + 1;
    auto copy = std::make_unique<char[]>(size);
    std::memcpy(copy.get(), text, size);
    return copy;
}

int StrLib::clear(char * text) noexcept
{
    if (text == nullptr)
        return 0;
    *text = '\0';
    return 1;
}

bool StrLib::match(char const * text, char const * pattern) noexcept
{
    if (text == nullptr || pattern == nullptr)
        return false;
    for (; *pattern != '\0'; ++pattern, ++text) {
        if (*text == '\0')
            return false;
        bool fits = false;
        if (*pattern == 'u') {
            fits = *text >= 'A' && *text <= 'Z';
        } else if (*pattern == 'd') {
            fits = detail::isDigit(*text);
        } else if (*pattern == '[' && std::strchr(pattern, ']') != nullptr) {
            char const * const end = std::strchr(pattern, ']');
            fits = std::find(pattern + 1, end, *text) != end;
            pattern = end;
        } else {
            fits = *pattern == '.' || *pattern == *text;
        }
        if (!fits)
            return false;
    }
    return *text == '\0';
}

namespace detail {

bool sameIgnoringCase(std::string_view a, std::string_view b) noexcept
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return toLower(x) == toLower(y); });
}

bool startsIgnoringCase(std::string_view text, std::string_view prefix) noexcept
{
    return text.size() >= prefix.size() && sameIgnoringCase(text.substr(0, prefix.size()), prefix);
}

std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    for (;;) {
        std::size_t const end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

} // namespace detail
} // namespace Yul
