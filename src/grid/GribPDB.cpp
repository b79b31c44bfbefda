#include "grid/GribPDB.h"

#include "core/Format.h"
#include "core/Output.h"
#include "grid/grib/Field.h"
#include "grid/grib/Gaussian.h"
#include "grid/grib/ModelNames.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Yul {
namespace {

using detail::grib::Product;
using detail::grib::Statistic;
using detail::grib::usesEcmwfTables;

/// Statistics of code table 4.10 and what they are to a forecast time.
constexpr std::pair<Statistic, ForeTime::Type> STATISTICS[] = {
    {Statistic::AVERAGE, ForeTime::AVG},     {Statistic::ACCUMULATION, ForeTime::ACC},
    {Statistic::MAXIMUM, ForeTime::MAX},     {Statistic::MINIMUM, ForeTime::MIN},
    {Statistic::DIFFERENCE, ForeTime::DIFF},
};

ForeTime::Type typeOf(Product const & product)
{
    for (auto const & [statistic, type] : STATISTICS)
        if (statistic == product.statistic)
            return type;
    if (product.statistic == Statistic::NONE && product.start == product.end)
        return product.is_analysis && product.end == 0 ? ForeTime::ANAL : ForeTime::FORE;
    return ForeTime::RANGE;
}

ForeTime foreTimeOf(Product const & product)
{
    ForeTime fore;
    if (!product.start || !product.end)
        return fore;
    long const from = static_cast<long>(*product.start);
    long const to = static_cast<long>(*product.end);
    if (fore.setSeconds(typeOf(product), from, to) ==
        0) // a period that ends before it begins: its end is what counts
        fore.setSeconds(ForeTime::FORE, to, to);
    return fore;
}

Date dateOf(detail::grib::Moment const & m)
{
    DateVal value;
    value.set(m.year, m.month, m.day, m.hour, m.minute, static_cast<float>(m.second));
    return Date(value);
}

constexpr int ECMWF_PASCALS = 210; // level type of edition 1, an addition to code table 3

Level levelOf(int edition, Product const & product)
{
    Level level;
    if (edition == 1 && usesEcmwfTables(product) && product.level_type == ECMWF_PASCALS)
        level.set(Level::PRES, static_cast<float>(product.level_octet1 * 256 + product.level_octet2) / 100);
    else if (edition == 2) {
        auto const valueOf = [](detail::grib::Surface const & surface) {
            return surface.value.value_or(static_cast<double>(Const::MISS));
        };
        level.setGrib2(product.first.type, valueOf(product.first), product.second.type,
                       valueOf(product.second));
    } else
        level.setGrib1(product.level_type, product.level_octet1, product.level_octet2);
    return level;
}

/// The variable; one that no table knows gets a name made from its numbers.
Variable variableOf(int edition, Product const & p, detail::GribParamCache & cache)
{
    Variable variable;
    constexpr int FIRST_LOCAL_TABLE = 128;
    int const key = edition == 2 ? GribParam::makeKey(p.discipline, p.category) : 0;
    bool const is_ecmwf = edition == 1 && p.table >= FIRST_LOCAL_TABLE && usesEcmwfTables(p);
    GribParam const & row =
        cache.get(edition, p.number, is_ecmwf ? detail::grib::ECMWF : p.centre, p.table, key);
    if (row.getVar(variable) != 0)
        return variable;
    if (edition == 2)
        variable.set(detail::format("VAR_%d_%d_%d", p.discipline, p.category, p.number).c_str(), "", "",
                     VarName::makeIndex(p.discipline, p.category, p.number));
    else
        variable.set(detail::format("VAR_%d_%d_%d", p.centre, p.table, p.number).c_str(), "", "",
                     Const::MISS);
    return variable;
}

} // namespace

int GribPDB::init()
{
    *this = {};
    return 1;
}

int GribPDB::set(detail::grib::Field const & field, detail::GribParamCache & cache)
{
    Product const & product = field.product;
    auto const orMiss = [](int value) { return value >= 0 ? value : Const::MISS; };
    edition = field.edition;
    centre = product.centre;
    sub_centre = product.sub_centre;
    model = product.process;
    gen_name = detail::grib::modelName(centre, model);
    grid_type = product.grid_id;
    discipline = orMiss(product.discipline);
    category = orMiss(product.category);
    param = product.number;
    table = product.table;
    template_number = product.template_number;
    member = orMiss(product.member);
    derived = orMiss(product.derived);
    percentile = orMiss(product.percentile);
    probability = orMiss(product.probability);
    lower_limit = product.lower_limit.value_or(Const::MISS);
    upper_limit = product.upper_limit.value_or(Const::MISS);
    level = levelOf(edition, product);
    var = variableOf(edition, product, cache);
    date = dateOf(product.reference);
    fore = foreTimeOf(product);
    rows = rowsOf(field);
    return 1;
}

GribPDB::Rows GribPDB::rowsOf(detail::grib::Field const & field) noexcept
{
    using detail::grib::GridKind;
    constexpr int MOST_PARALLELS = 10000;
    detail::grib::Geometry const & g = field.geometry;
    bool const is_gaussian = g.kind == GridKind::GAUSSIAN;
    if ((g.kind != GridKind::LATLON && !is_gaussian) || !(std::abs(g.lat1) <= 90) ||
        !(std::abs(g.lat2) <= 90) || g.ny < 1)
        return {};
    double const step = g.ny > 1 ? std::abs(g.lat1 - g.lat2) / (g.ny - 1) : 0;
    bool const has_parallels = is_gaussian && g.gauss_n > 0 && g.gauss_n <= MOST_PARALLELS;
    return {g.ny, std::max(g.lat1, g.lat2), step, has_parallels ? g.gauss_n : 0};
}

double GribPDB::getRowLat(int row) const noexcept
{
    constexpr double TOLERANCE = 0.01; // degrees between the first row and its parallel
    if (row < 0 || row >= rows.count)
        return Const::MISS;
    if (rows.parallels > 0) {
        int const first = detail::grib::nearestGaussian(rows.parallels, rows.north);
        bool const is_gaussian =
            first >= 1 && first + rows.count <= 2 * rows.parallels + 1 &&
            std::abs(detail::grib::gaussianLatitude(rows.parallels, first) - rows.north) < TOLERANCE;
        if (is_gaussian)
            return detail::grib::gaussianLatitude(rows.parallels, first + row);
    }
    return rows.north - row * rows.step;
}

int GribPDB::print() const
{
    String level_text;
    String fore_text;
    String date_text;
    level.toString(level_text);
    fore.toText(fore_text);
    date.toText(date_text);
    detail::writeOut(detail::format("%d %d %d %s %s %s %s\n", edition, centre, model, date_text.get(),
                                    fore_text.get(), level_text.get(), var.getName()));
    return 1;
}

} // namespace Yul
