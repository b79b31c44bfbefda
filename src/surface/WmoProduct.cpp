#include "surface/WmoProduct.h"

#include "core/Scan.h"
#include "core/StrLib.h"
#include "surface/BulletinLine.h"
#include "surface/DayTime.h"

#include <algorithm>

namespace Yul {
namespace {

constexpr std::size_t MAX_TEXT = 80;

} // namespace

int WmoProduct::init()
{
    Filename::init();
    loc = Const::MISS;
    header.clear();
    awip.clear();
    text.clear();
    codes.clear();
    return 1;
}

int WmoProduct::set(char const * heading, char const * identifier, long location)
{
    header = detail::viewOf(heading).substr(0, MAX_TEXT);
    awip = detail::viewOf(identifier).substr(0, MAX_TEXT);
    loc = location;
    text.clear();
    codes.clear();
    return 1;
}

int WmoProduct::setLines(char const * lines, char const * line_codes)
{
    std::string_view const given = detail::viewOf(lines);
    std::string_view const given_codes = detail::viewOf(line_codes);
    auto const breaks = static_cast<std::size_t>(std::count(given.begin(), given.end(), '\n'));
    bool const is_empty = given.empty() && given_codes.empty();
    if (!is_empty && given_codes.size() != breaks + 1)
        return 0;
    text = given;
    codes = given_codes;
    return 1;
}

int WmoProduct::completeDate(Date & date) const
{
    std::string time;
    detail::scan(header, "%*s %*s %20s", &time);
    return detail::completeDate(detail::readDayTime(time), date);
}

int WmoProduct::getCode(int i) const noexcept
{
    return i >= 0 && i < getNumLines() ? codes[static_cast<std::size_t>(i)] : 0;
}

void WmoProduct::addLine(std::string_view line, int code)
{
    text += line;
    text += '\n';
    codes += static_cast<char>(code);
}

void WmoProduct::addLines(std::string_view lines, std::string_view line_codes)
{
    text += lines;
    codes += line_codes;
}

void WmoProduct::finish()
{
    if (!text.empty())
        text.pop_back();
    if (text.find('\0') != std::string::npos)
        std::replace(text.begin(), text.end(), '\0', ' ');
}

} // namespace Yul
