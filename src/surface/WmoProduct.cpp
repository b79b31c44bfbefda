#include "surface/WmoProduct.h"

#include "core/Scan.h"
#include "core/StrLib.h"
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
    if (!codes.empty())
        text += '\n';
    text += line;
    if (line.find('\0') != std::string_view::npos)
        std::replace(text.end() - static_cast<std::ptrdiff_t>(line.size()), text.end(), '\0', ' ');
    codes += static_cast<char>(code);
}

} // namespace Yul
