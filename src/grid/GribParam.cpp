#include "grid/GribParam.h"

#include "core/Format.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "grid/VarName.h"
#include "grid/Variable.h"
#include "grid/grib/Centres.h"
#include "grid/variables/Tables.h"

#include <algorithm>
#include <array>

namespace Yul {
namespace {

using detail::grib::ECMWF;

constexpr int KEY_BASE = 256;

/// The row of the table of variables for a parameter; null where there is none.
VarNameItem const * findItem(int edition, int number, int centre, int table, int key)
{
    if (edition == 2)
        return VarName::findGrib2(centre, key / KEY_BASE, key % KEY_BASE, number);
    return VarName::findGrib1(centre, table, number);
}

/// A parameter of a centre's own table of edition 1 that no variable stands for; null where there is none.
detail::LocalParam const * findLocalParam(int centre, int table, int number)
{
    for (auto const rows : {detail::ncepParams(), detail::ecmwfParams()})
        for (auto const & row : rows)
            if (row.centre == centre && row.table == table && row.number == number)
                return &row;
    return nullptr;
}

} // namespace

int GribParam::init()
{
    *this = {};
    return 1;
}

int GribParam::set(int number_value, int centre_value, int table_value, int key_value)
{
    number = number_value;
    centre = centre_value;
    table = table_value;
    key = key_value;
    return 1;
}

int GribParam::setText(char const * name_value, char const * units_value, char const * text_value)
{
    name = detail::viewOf(name_value);
    units = detail::viewOf(units_value);
    text = detail::viewOf(text_value);
    return 1;
}

int GribParam::find(int edition, int number_value, int centre_value, int table_value, int key_value)
{
    init();
    if (key_value < 0)
        return 0;
    if (edition == 2 && centre_value == ECMWF) {
        auto const code = detail::ecmwfParam(key_value / KEY_BASE, key_value % KEY_BASE, number_value);
        if (code.table != 0)
            return find(1, code.number, ECMWF, code.table, 0) != 0
                       ? set(number_value, centre_value, table_value, key_value)
                       : 0;
    }
    if (auto const * const item = findItem(edition, number_value, centre_value, table_value, key_value)) {
        auto const * const local =
            edition == 2 ? nullptr : detail::findLocalGrib1(centre_value, table_value, number_value);
        bool const has_units = local != nullptr && local->units != nullptr;
        setText(item->getName(), has_units ? local->units : item->getUnits(), item->getLongName());
        var_code = item->getIndex();
    } else if (auto const * const param =
                   edition == 2 ? nullptr : findLocalParam(centre_value, table_value, number_value))
        setText(param->name, param->units, param->text);
    else
        return 0;
    return set(number_value, centre_value, table_value, key_value);
}

bool GribParam::match(int number_value, int centre_value, int table_value, int key_value) const noexcept
{
    return number == number_value && (centre == 0 || centre == centre_value) &&
           (table == 0 || table == table_value) && key == key_value;
}

int GribParam::setLevelCode(int value)
{
    level_code = value;
    return 1;
}

int GribParam::setVarCode(int value)
{
    var_code = value;
    return 1;
}

int GribParam::getVar(Variable & variable) const
{
    return isMiss() ? 0 : variable.set(name.c_str(), text.c_str(), units.c_str(), var_code);
}

int GribParam::print() const
{
    detail::writeOut(detail::format("%d %d %d %d %s [%s] %s\n", number, centre, table, key, name.c_str(),
                                    units.c_str(), text.c_str()));
    return 1;
}

namespace detail {

GribParam const & GribParamCache::get(int edition, int number, int centre, int table, int key)
{
    int const kind = edition == 2 ? 2 : 1;
    auto const found = std::find_if(entries.begin(), entries.end(), [=](Entry const & entry) {
        return entry.edition == kind && entry.row.match(number, centre, table, key);
    });
    if (found != entries.end())
        return found->row;
    if (last.find(kind, number, centre, table, key) != 0 && entries.size() < CAPACITY)
        entries.push_back({kind, last});
    return last;
}

int GribParamCache::add(int edition, GribParam const & row)
{
    int const kind = edition == 2 ? 2 : 1;
    auto const of = [](GribParam const & p) {
        return std::array{p.getNumber(), p.getCentre(), p.getTable(), p.getKey()};
    };
    auto const same = std::find_if(entries.begin(), entries.end(), [&](Entry const & entry) {
        return entry.edition == kind && of(entry.row) == of(row);
    });
    if (row.isMiss() || (same == entries.end() && entries.size() >= CAPACITY))
        return 0;
    auto const first_of_tables = entries.begin() + num_given;
    if (same < first_of_tables) {
        same->row = row;
        return 1;
    }
    if (same != entries.end())
        entries.erase(same);
    entries.insert(entries.begin() + num_given++, {kind, row});
    return 1;
}

} // namespace detail
} // namespace Yul
