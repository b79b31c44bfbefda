#include "geo/Domain.h"

#include "core/Format.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "geo/DomainTool.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul {

namespace {

using detail::isMissing;

/// Distance of a geostationary satellite from the earth's centre.
constexpr float GEOSTATIONARY = 421.64F;

struct Keyword
{
    std::string_view text;
    int proj;
};

/// Projection keywords, compared on a prefix without regard to case, first hit wins: the order is behaviour.
constexpr Keyword KEYWORDS[] =
    {
        {"ll", Domain::LATLON},   {"lat", Domain::LATLON},
        {"re", Domain::LATLON},   {"polar", Domain::PSTEREO},
        {"ps", Domain::PSTEREO},  {"st", Domain::PSTEREO},
        {"sat", Domain::SAT},     {"lambaz", Domain::LAMBAZ},
        {"lamb", Domain::LAMB},   {"lc", Domain::LAMB},
        {"la", Domain::LAMBAZ},   {"az", Domain::LAMBAZ},
        {"alb", Domain::ALBERS},  {"gn", Domain::GNOM},
        {"or", Domain::ORTHO},    {"mo", Domain::MOLL},
        {"me", Domain::MERC},     {"rad", Domain::RADIAL},
        {"pix", Domain::PIXEL},   {"xy", Domain::XY},
        {"xlogy", Domain::XLOGP}, {"xlogp", Domain::XLOGP},
        {"cat", Domain::CAT},     {"skewt", Domain::SKEWT},
        {"ema", Domain::EMA},     {"teph", Domain::TEPH},
        {"rteph", Domain::RTEPH}, {"therm", Domain::SKEWT},
        {"stuve", Domain::STUVE}, // kept: "st" is met first
        {"hodo", Domain::POLAR},  {"vert", Domain::XLOGP},
        {"polar", Domain::POLAR}, // kept: the first "polar" is met first
        {"zoom", Domain::ZOOM},   {"size", Domain::SIZE},
};

/// Keywords that must be the whole text.
constexpr Keyword WHOLE_KEYWORDS[] = {
    {"xp", Domain::XP},
    {"miss", Const::MISS},
};

} // namespace

double Domain::earth_rad = Const::EARTH;
double Domain::earth_maj = 63.78137;
double Domain::earth_min = 63.56752;
float Domain::OFFSET_LL = 360;
float Domain::OFFSET_MERC = static_cast<float>(2 * 180 * Const::EARTH * Const::DRC);

Domain::Domain(char const * text) : Domain()
{
    set(text);
}

Domain::Domain(DomainVal const & record) : Domain()
{
    set(record);
}

int Domain::init()
{
    val.init();
    return setParam();
}

int Domain::set(char const * text)
{
    return DomainTool::decode(text, *this);
}

int Domain::set(DomainVal const & record)
{
    val = record;
    return setParam();
}

int Domain::set(EarthPoint const & lower_left, EarthPoint const & upper_right, int nx, int ny)
{
    if (nx < 2 || ny < 2)
        return 0;
    Domain next = *this;
    if (isMissing(val.plat))
        next.val.plat = (lower_left.lat + upper_right.lat) / 2;
    float const turn = upper_right.lon < lower_left.lon ? 360 : 0; // the grid lies east of the lower left
    if (isMissing(val.plon))
        next.val.plon = (lower_left.lon + upper_right.lon + turn) / 2;
    next.setParam();
    Point a;
    Point b;
    EarthPoint centre;
    if (!next.tran(lower_left, a) || !next.tran(upper_right, b) ||
        !next.tran(Point((a.x + b.x) / 2, (a.y + b.y) / 2), centre))
        return 0;
    next.val.clat = centre.lat;
    next.val.clon = centre.lon;
    next.val.nx = nx;
    next.val.ny = ny;
    next.val.dx =
        static_cast<float>(std::fabs(static_cast<double>(b.x) - static_cast<double>(a.x)) / (nx - 1));
    next.val.dy =
        static_cast<float>(std::fabs(static_cast<double>(b.y) - static_cast<double>(a.y)) / (ny - 1));
    next.setParam();
    *this = next;
    return 1;
}

int Domain::set(int nx, int ny)
{
    if (nx < 1 || ny < 1)
        return 0;
    DomainVal record;
    record.proj = XY;
    record.clat = 0;
    record.clon = 0;
    record.dx = 1;
    record.dy = 1;
    record.nx = nx;
    record.ny = ny;
    return set(record);
}

int Domain::setParam()
{
    if (isMissing(val.plat))
        val.plat = val.clat;
    if (isMissing(val.plon))
        val.plon = val.clon;
    float const first = val.param[0];
    float const second = isMissing(val.param[1]) ? first : val.param[1];
    bool const is_south = val.plat < 0 && !isMissing(val.plat);
    float const low = is_south ? -30.F : 30.F;
    float const high = is_south ? -60.F : 60.F;
    std_lat1 = 30;
    std_lat2 = 60;
    switch (val.proj) {
    case PSTEREO:
    case RADIAL:
        std_lat1 = isMissing(first) ? high : first;
        break;
    case MERC:
        std_lat1 = isMissing(first) ? 0 : first;
        break;
    case LAMB:
    case ALBERS:
        std_lat1 = isMissing(first) ? low : first;
        std_lat2 = isMissing(first) ? high : second;
        break;
    default:
        break;
    }
    float const radius = val.param[2];
    if (!isMissing(radius) && radius > 0 && std::isfinite(radius))
        earth_rad = static_cast<double>(radius);
    figure = detail::EarthFigure{};
    view.setu(0, 0, 1, 1);
    setLimits();
    return 1;
}

int Domain::setLimits()
{
    constexpr float MISS = Const::MISS;
    limits.setu(MISS, MISS, MISS, MISS);
    frame = detail::GridFrame{};
    if (val.nx < 1 || val.ny < 1 || isMissing(val.dx) || isMissing(val.dy) || isMissing(val.clat) ||
        isMissing(val.clon))
        return 0;
    detail::Pair const c = project({static_cast<double>(val.clat), static_cast<double>(val.clon)});
    double const half_width = (val.nx - 1) / 2.0 * static_cast<double>(val.dx);
    double const half_height = (val.ny - 1) / 2.0 * static_cast<double>(val.dy);
    if (!detail::fitsFloat(std::fabs(c.a) + std::fabs(half_width)) ||
        !detail::fitsFloat(std::fabs(c.b) + std::fabs(half_height)))
        return 0;
    limits.setu(static_cast<float>(c.a - half_width), static_cast<float>(c.b - half_height),
                static_cast<float>(c.a + half_width), static_cast<float>(c.b + half_height));
    if (val.dx == 0 || val.dy == 0)
        return 1; // limits, but no grid
    double const dx = val.dx;
    double const dy = val.dy;
    if (val.proj == RADIAL)
        frame = {0, 0, dx, -dy, 0};
    else
        frame = {c.a - half_width, c.b + half_height, dx, dy, val.proj == LATLON ? 360.0 : 0.0};
    return 1;
}

int Domain::setView(Rect const & rect)
{
    view = rect;
    return 1;
}

float Domain::getStdLat(int number) const noexcept
{
    constexpr float MISS = Const::MISS;
    return number == 1 ? std_lat1 : number == 2 ? std_lat2 : MISS;
}

float Domain::satelliteDistance(DomainVal const & val) noexcept
{
    return isMissing(val.param[0]) ? GEOSTATIONARY : val.param[0];
}

float Domain::getAspect() const noexcept
{
    if (isMissing(val.nx) || isMissing(val.ny) || val.ny == 1)
        return 0;
    return static_cast<float>((val.nx - 1.0) / (val.ny - 1.0));
}

float Domain::getVert() const noexcept
{
    return hasLimits() ? limits.y2 - limits.y1 : 0;
}

int Domain::getProj(char const * name)
{
    std::string_view const text = detail::viewOf(name);
    for (auto const & keyword : KEYWORDS)
        if (detail::startsIgnoringCase(text, keyword.text))
            return keyword.proj;
    for (auto const & keyword : WHOLE_KEYWORDS)
        if (detail::sameIgnoringCase(text, keyword.text))
            return keyword.proj;
    return UNKNOWN;
}

int Domain::printLimits() const
{
    std::string const text =
        detail::format("%f %f %f %f\n", static_cast<double>(limits.x1), static_cast<double>(limits.y1),
                       static_cast<double>(limits.x2), static_cast<double>(limits.y2));
    return Yul::print(text.c_str());
}

} // namespace Yul
