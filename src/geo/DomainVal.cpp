#include "geo/DomainVal.h"

#include "core/Format.h"
#include "core/Output.h"
#include "core/Yul.h"
#include "geo/Domain.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Yul {

namespace {

struct ProjName
{
    int proj;
    char const * name;
};

constexpr ProjName PROJ_NAMES[] = {
    {Domain::PSTEREO, "pstereo"}, {Domain::LATLON, "latlon"}, {Domain::MERC, "merc"},
    {Domain::LAMB, "lamb"},       {Domain::ORTHO, "ortho"},   {Domain::GNOM, "gnom"},
    {Domain::MOLL, "moll"},       {Domain::LAMBAZ, "lambaz"}, {Domain::ALBERS, "albers"},
    {Domain::SAT, "sat"},         {Domain::RADIAL, "radial"}, {Domain::PIXEL, "pixel"},
    {Domain::XY, "xy"},           {Domain::XZ, "xz"},         {Domain::XLOGP, "xlogp"},
    {Domain::POLAR, "polar"},     {Domain::CAT, "cat"},       {Domain::SKEWT, "skewt"},
    {Domain::STUVE, "stuve"},     {Domain::EMA, "ema"},       {Domain::TEPH, "teph"},
    {Domain::RTEPH, "rteph"},     {Domain::ZOOM, "zoom"},
};

char const * nameOf(int proj)
{
    auto const * const found = std::find_if(std::begin(PROJ_NAMES), std::end(PROJ_NAMES),
                                            [=](auto const & p) { return p.proj == proj; });
    return found != std::end(PROJ_NAMES) ? found->name : "pstereo";
}

/// The colon fields behind the keyword, without the missing ones at the end. A lone longitude needs no latitude.
std::string parametersOf(DomainVal const & val)
{
    std::array<float, 2 + DomainVal::NUM_PARAM> numbers{val.plat, val.plon};
    std::copy(std::begin(val.param), std::end(val.param), numbers.begin() + 2);
    std::size_t count = numbers.size();
    while (count > 0 && detail::isMissing(numbers[count - 1]))
        --count;
    bool const is_lone_longitude = count == 2 && detail::isMissing(val.plat);
    std::string text;
    for (std::size_t i = is_lone_longitude ? 1 : 0; i < count; ++i)
        text += detail::isMissing(numbers[i]) ? ":" : detail::format(":%f", static_cast<double>(numbers[i]));
    return count == 1 ? text + ":" : text; // a lone number would be the longitude
}

} // namespace

int DomainVal::init()
{
    *this = DomainVal{};
    return 1;
}

bool DomainVal::isMap() const noexcept
{
    return proj >= Domain::PSTEREO && proj <= Domain::RADIAL;
}

float DomainVal::getParam(int i) const noexcept
{
    return i >= 0 && i < NUM_PARAM ? param[i] : static_cast<float>(Const::MISS);
}

int DomainVal::setParam(int i, float value) noexcept
{
    if (i < 0 || i >= NUM_PARAM)
        return 0;
    param[i] = value;
    return 1;
}

int DomainVal::scaleSize(int columns, int rows)
{
    auto const is_spacing = [](float d) { return std::isfinite(d) && !detail::isMissing(d); };
    if (columns < 2 || rows < 2 || nx < 2 || ny < 2 || !is_spacing(dx) || !is_spacing(dy))
        return 0;
    dx = static_cast<float>(static_cast<double>(dx) * (nx - 1.0) / (columns - 1.0));
    dy = static_cast<float>(static_cast<double>(dy) * (ny - 1.0) / (rows - 1.0));
    nx = columns;
    ny = rows;
    return 1;
}

int DomainVal::toString(String & text) const
{
    if (isMiss())
        return text.set("miss");
    text.assign(detail::format("%s%s%s,%f,%f,%d,%d,%f,%f", nameOf(proj), ellipse ? ":e" : "",
                               parametersOf(*this).c_str(), static_cast<double>(clat),
                               static_cast<double>(clon), nx, ny, static_cast<double>(dx),
                               static_cast<double>(dy)));
    return 1;
}

int DomainVal::print() const
{
    String text;
    toString(text);
    text.append("\n");
    return Yul::print(text.get());
}

bool DomainVal::compareProj(DomainVal const & other) const noexcept
{
    return proj == other.proj && plat == other.plat && plon == other.plon &&
           std::equal(std::begin(param), std::end(param), std::begin(other.param)) &&
           ellipse == other.ellipse;
}

bool DomainVal::compare(DomainVal const & other) const noexcept
{
    return compareProj(other) && clat == other.clat && clon == other.clon && dx == other.dx &&
           dy == other.dy && nx == other.nx && ny == other.ny;
}

} // namespace Yul
