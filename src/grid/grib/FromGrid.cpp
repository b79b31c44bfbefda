#include "grid/grib/FromGrid.h"

#include "core/Format.h"
#include "geo/Domain.h"
#include "grid/VarName.h"
#include "grid/grib/Centres.h"
#include "grid/grib/Earth.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

namespace Yul::detail::grib {
namespace {

constexpr int MISSING_CENTRE = 255;
constexpr int FIRST_LOCAL = 128; // numbers of parameter table 2 that NCEP assigned
constexpr int STANDARD_TABLE = 2;
constexpr double RADIANS = Const::DRC;

int octetOr(int value, int other) noexcept
{
    return value >= 0 && value <= 255 ? value : other;
}

std::string describeParameter(Grid const & grid, Product & product)
{
    VarNameItem const * const item = VarName::find(grid.getVar().getIndex());
    if (item == nullptr || item->getGrib1() == Const::MISS)
        return format("variable %s has no number in edition 1", grid.getVar().getName());
    product.number = item->getGrib1();
    product.table = STANDARD_TABLE;
    product.centre = product.number < FIRST_LOCAL ? octetOr(grid.getSource(), MISSING_CENTRE) : NCEP;
    product.process = octetOr(grid.getModel(), 255);
    int octet1 = 0;
    int octet2 = 0;
    if (grid.getLevel().getGrib1(product.level_type, octet1, octet2) == 0)
        return "its level has no number in edition 1";
    product.level_octet1 = octet1;
    product.level_octet2 = octet2;
    return {};
}

std::string describeDate(Grid const & grid, Moment & m)
{
    DateVal const & date = grid.getDateVal();
    m = {date.getYear(), date.getMonth(), date.getDay(), date.getHour(), date.getMinute(), 0};
    bool const is_whole = m.year >= 1 && m.year <= 25500 && m.month >= 1 && m.month <= 12 && m.day >= 1 &&
                          m.day <= 31 && m.hour >= 0 && m.hour <= 24;
    if (m.minute < 0 || m.minute > 59)
        m.minute = 0;
    return is_whole ? std::string() : "its date is not set";
}

/// Units of time, the usual one first. Code table 4.
constexpr std::pair<unsigned, long> TIME_UNITS[] = {
    {1, 3600}, {0, 60}, {13, 900}, {14, 1800}, {10, 10800}, {11, 21600}, {12, 43200}, {2, 86400}, {254, 1},
};

/// Time range indicators. Code table 5.
constexpr std::pair<int, unsigned> INDICATORS[] = {
    {ForeTime::FORE, 0}, {ForeTime::ANAL, 1}, {ForeTime::AVG, 3}, {ForeTime::ACC, 4},
    {ForeTime::DIFF, 5}, {ForeTime::MAX, 2},  {ForeTime::MIN, 2}, {ForeTime::RANGE, 2},
};

constexpr unsigned LONG_FORECAST = 10; // the indicator whose P1 takes two octets

std::string describeTime(ForeTime const & fore, Range1 & range)
{
    range = {};
    if (!fore.isSet())
        return {};
    for (auto const & [type, indicator] : INDICATORS)
        if (type == fore.getType())
            range.indicator = indicator;
    long const from = fore.getFromSeconds();
    long const to = fore.getSeconds();
    for (auto const & [unit, seconds] : TIME_UNITS) {
        if (from < 0 || from % seconds != 0 || to % seconds != 0)
            continue;
        bool const is_long = range.indicator == 0 && to / seconds > 255;
        if (to / seconds > (is_long ? 65535 : 255))
            continue;
        range.unit = unit;
        range.p1 = static_cast<unsigned>(from / seconds);
        range.p2 = fore.isSpan() ? static_cast<unsigned>(to / seconds) : 0;
        if (is_long)
            range.indicator = LONG_FORECAST;
        return {};
    }
    return "its forecast time does not fit edition 1";
}

/// Earth position of a grid point given in columns and rows, in double.
std::optional<std::pair<double, double>> positionOf(Domain const & domain, double column, double row)
{
    DomainVal const & val = domain.get();
    double lat = val.clat;
    double lon = val.clon;
    double x = 0;
    double y = 0;
    std::span<double> const xs(&x, 1);
    std::span<double> const ys(&y, 1);
    if (domain.forward(std::span<double const>(&lat, 1), std::span<double const>(&lon, 1), xs, ys) != 1)
        return std::nullopt;
    x += (column - 0.5 * (val.nx - 1)) * val.dx;
    y -= (row - 0.5 * (val.ny - 1)) * val.dy;
    if (domain.inverse(xs, ys, std::span<double>(&lat, 1), std::span<double>(&lon, 1)) != 1)
        return std::nullopt;
    return std::pair(lat, lon);
}

constexpr std::pair<int, GridKind> KINDS[] = {
    {Domain::LATLON, GridKind::LATLON}, {Domain::MERC, GridKind::MERCATOR},
    {Domain::PSTEREO, GridKind::POLAR}, {Domain::LAMB, GridKind::LAMBERT},
    {Domain::ALBERS, GridKind::ALBERS},
};

/// Ratio of a plane that is true at one latitude to one that is true at 60 degrees.
double polarRatio(double true_lat) noexcept
{
    return (1 + std::sin(60 * RADIANS)) / (1 + std::sin(std::abs(true_lat) * RADIANS));
}

GridKind kindOf(DomainVal const & val)
{
    auto const * const found =
        std::ranges::find(KINDS, val.proj, [](std::pair<int, GridKind> const & row) { return row.first; });
    return found != std::end(KINDS) && !val.ellipse ? found->second : GridKind::NONE;
}

/// The corners and the distance of the points; false where the domain has none.
bool describeCorners(Domain const & domain, Geometry & g)
{
    DomainVal const & val = domain.get();
    auto const first = positionOf(domain, 0, 0);
    auto const last = positionOf(domain, val.nx - 1, val.ny - 1);
    if (!first || !last || !(val.dx > 0) || !(val.dy > 0))
        return false;
    std::tie(g.lat1, g.lon1) = *first;
    std::tie(g.lat2, g.lon2) = *last;
    g.nx = val.nx;
    g.ny = val.ny;
    g.dx = val.dx;
    g.dy = val.dy;
    return true;
}

/// The parameters of a projection, and distances on the earth of edition 1.
void describePlane(DomainVal const & val, Geometry & g)
{
    setEarth1(false, g);
    double scale = g.major_m / Domain::earth_rad;
    g.ref_lon = val.plon;
    g.is_south = val.plat < 0;
    bool const has_param = !isMissing(val.getParam(0));
    if (g.kind == GridKind::POLAR && has_param)
        scale *= polarRatio(val.getParam(0));
    if (g.kind == GridKind::LAMBERT || g.kind == GridKind::ALBERS) {
        g.true_lat1 = has_param ? val.getParam(0) : g.is_south ? -30 : 30;
        g.true_lat2 = has_param ? val.getParam(1) : g.is_south ? -60 : 60;
    }
    g.dx *= scale;
    g.dy *= scale;
}

std::string describeGrid(Domain const & domain, Geometry & g)
{
    DomainVal const & val = domain.get();
    g.kind = kindOf(val);
    if (g.kind == GridKind::NONE)
        return "edition 1 has no such grid";
    if (!describeCorners(domain, g))
        return "its domain is not set";
    if (g.kind == GridKind::LATLON)
        g.lon2 = g.lon1 + (g.nx - 1) * g.dx;
    else
        describePlane(val, g);
    double const most = g.kind == GridKind::LATLON ? 65 : 0xffffff; // degrees, metres
    return g.dx < most && g.dy < most ? "" : "spacing beyond edition 1";
}

} // namespace

std::string describe1(Grid const & grid, Field & field, Range1 & range)
{
    field = {};
    field.edition = 1;
    for (std::string fault :
         {describeParameter(grid, field.product), describeDate(grid, field.product.reference),
          describeTime(grid.getForeTime(), range), describeGrid(grid.getDomain(), field.geometry)})
        if (!fault.empty())
            return fault;
    bool const has_values =
        grid.isData() && grid.getNx() == field.geometry.nx && grid.getNy() == field.geometry.ny;
    return has_values ? std::string() : "its values and its domain differ in size";
}

} // namespace Yul::detail::grib
