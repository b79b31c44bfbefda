#include "plot/MapFileHeader.h"

#include "core/Format.h"
#include "core/Output.h"
#include "core/StrLib.h"

#include <algorithm>

namespace Yul {
namespace {

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

} // namespace

int MapFileHeader::init()
{
    *this = MapFileHeader();
    return 1;
}

int MapFileHeader::setName(char const * text)
{
    std::string_view const view = detail::viewOf(text);
    if (view.empty() || view.size() > MAX_NAME || !std::all_of(view.begin(), view.end(), isNameCharacter))
        return 0;
    name = view;
    return 1;
}

int MapFileHeader::setScale(int millions)
{
    constexpr int MOST = 1000;
    if (millions < 1 || millions > MOST)
        return 0;
    scale = millions;
    return 1;
}

int MapFileHeader::setKind(int value)
{
    if (value != LINE && value != AREA)
        return 0;
    kind = value;
    return 1;
}

int MapFileHeader::setUnits(int steps)
{
    if (steps < 1 || steps > MAX_UNITS)
        return 0;
    units = steps;
    return 1;
}

int MapFileHeader::print() const
{
    detail::writeOut(detail::format("%-15s 1:%d million, %s, %d lines, %d points, 1/%d degree\n",
                                    name.c_str(), scale, kind == AREA ? "areas" : "lines", num_lines,
                                    num_points, units));
    return 1;
}

} // namespace Yul
