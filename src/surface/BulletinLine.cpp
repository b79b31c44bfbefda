#include "surface/BulletinLine.h"

#include "core/Number.h"

#include <algorithm>
#include <string>

namespace Yul::detail {
namespace {

constexpr std::size_t ZONE_GROUP = 4;       // "063-"
constexpr std::size_t ZONE_RANGE_GROUP = 8; // "063>065-"

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool isLetter(char c)
{
    return isUpper(c) || (c >= 'a' && c <= 'z');
}

} // namespace

bool beginsLike(std::string_view line, std::string_view pattern) noexcept
{
    if (line.size() < pattern.size())
        return false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const c = line[i];
        char const p = pattern[i];
        bool const fits = p == 'u'   ? isUpper(c)
                          : p == 'd' ? isDigit(c)
                          : p == 'z' ? c == 'C' || c == 'Z'
                                     : c == p;
        if (!fits)
            return false;
    }
    return true;
}

bool beginsWithLetter(std::string_view text) noexcept
{
    return !text.empty() && isLetter(text.front());
}

LineCode dataLineCode(std::string_view line) noexcept
{
    char const first = line.empty() ? '\0' : line.front();
    switch (first) {
    case '$':
        return beginsLike(line, "$$") ? LINE_END : LINE_NOT_ALNUM;
    case '.':
        return beginsLike(line, "...uu") ? LINE_HEADLINE : LINE_NOT_ALNUM;
    case '/':
        return beginsLike(line, "/u.uuu") ? LINE_EVENT : LINE_NOT_ALNUM;
    default:
        break;
    }
    if (!isLetter(first) && !isDigit(first))
        return LINE_NOT_ALNUM;
    bool const may_be_zone = line.size() > 5 && (line[2] == 'Z' || line[2] == 'C');
    return may_be_zone && beginsLike(line, "uuzddd") ? LINE_ZONE : LINE_DATA;
}

bool matchZone(std::string_view line, std::string_view zone)
{
    if (line.size() < 3 || zone.size() < 3)
        return false;
    std::string prefix(zone.substr(0, 3));
    std::transform(prefix.begin(), prefix.end(), prefix.begin(),
                   [](char c) { return isLetter(c) ? static_cast<char>(c & ~0x20) : c; });
    line = withoutLineEnd(line);
    std::size_t at = line.find(prefix);
    if (line.size() < 3 || line[2] != prefix[2] || at == std::string_view::npos)
        return false;
    if (zone.substr(3).starts_with("ALL"))
        return true;

    int const wanted = toInt(zone.substr(3));
    for (at += 3; at + ZONE_RANGE_GROUP <= line.size();) {
        if (isLetter(line[at])) {
            at = line.find(prefix, at);
            if (at == std::string_view::npos)
                return false;
            at += 3;
            continue;
        }
        int const from = toInt(line.substr(at, 3));
        bool const is_range = line[at + 3] == '>';
        int const to = is_range ? toInt(line.substr(at + 4, 3)) : from;
        if (from <= wanted && wanted <= to)
            return true;
        at += is_range ? ZONE_RANGE_GROUP : ZONE_GROUP;
    }
    return false;
}

} // namespace Yul::detail
