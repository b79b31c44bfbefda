#include "grid/VarName.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "grid/grib/Centres.h"
#include "grid/variables/Tables.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Yul {
namespace {

using detail::grib::NCEP;
using Row = VarNameItem const *;

std::array<std::span<VarNameItem const>, 8> const & tables()
{
    static std::array const ALL{detail::temperatureVariables(), detail::dynamicsVariables(),
                                detail::radiationVariables(),   detail::compositionVariables(),
                                detail::physicalVariables(),    detail::landVariables(),
                                detail::satelliteVariables(),   detail::oceanVariables()};
    return ALL;
}

std::string lower(std::string_view text)
{
    std::string out(text);
    std::ranges::transform(out, out.begin(), detail::toLower);
    return out;
}

/// Small letters, with one blank for what separates words: blanks, "_" and "-".
std::string words(std::string_view text)
{
    std::string out;
    for (char const c : text) {
        bool const separates = detail::isBlank(c) || c == '_' || c == '-';
        if (!separates)
            out += detail::toLower(c);
        else if (!out.empty() && out.back() != ' ')
            out += ' ';
    }
    if (out.ends_with(' '))
        out.pop_back();
    return out;
}

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}

/// The ways into the table, made on the first look-up.
struct Catalogue
{
    std::vector<Row> rows; // in the order of the index
    std::unordered_map<std::string, Row> by_name;
    std::unordered_map<std::string, Row> by_words;
    std::unordered_map<int, Row> by_index;
    std::unordered_map<int, Row> by_grib1;

    Catalogue()
    {
        for (auto const & table : tables())
            for (auto const & row : table)
                rows.push_back(&row);
        for (auto const * const row : rows) {
            by_name.emplace(lower(row->name), row);
            by_index.emplace(row->index, row);
            if (row->grib1 > 0)
                by_grib1.emplace(row->grib1, row);
        }
        for (auto const * const row : rows)
            if (row->alternate > 0)
                by_index.emplace(row->alternate, row);
        for (auto const & [name, others] : detail::otherNames())
            for (auto const other : detail::split(others, ',')) {
                by_words.emplace(words(other), by_name.at(lower(name)));
                by_words.emplace(withoutBlanks(words(other)), by_name.at(lower(name)));
            }
        for (auto const * const row : rows)
            by_words.emplace(words(row->long_name), row);
    }
};

Catalogue const & catalogue()
{
    static Catalogue const MADE;
    return MADE;
}

template <class Map, class Key> Row lookUp(Map const & map, Key const & key)
{
    auto const found = map.find(key);
    return found != map.end() ? found->second : nullptr;
}

constexpr int WMO_NUMBERS = 128; // numbers and tables below are WMO's, the others a centre's own
constexpr int FIRST_LOCAL = 192;
constexpr int LAST_CODE = 254;

/// Centres that use NCEP's table 2: NCEP and others of the same service.
bool usesNcepTable(int centre)
{
    return centre == NCEP || centre == 8 || centre == 9 || centre == 59;
}

int partOf(int index, int divisor, int modulus)
{
    return index >= 1000000 ? index / divisor % modulus : Const::MISS;
}

} // namespace

namespace detail {

VarGrib1 const * findLocalGrib1(int centre, int table, int number) noexcept
{
    auto const key = std::tuple(centre, table, number);
    auto const of = [](VarGrib1 const & row) { return std::tuple(row.centre, row.table, row.number); };
    auto const rows = localGrib1();
    auto const row = std::ranges::lower_bound(rows, key, {}, of);
    return row != rows.end() && of(*row) == key ? &*row : nullptr;
}

} // namespace detail

int VarNameItem::getDiscipline() const noexcept
{
    return index >= 1000000 ? index / 1000000 - 1 : Const::MISS;
}

int VarNameItem::getCategory() const noexcept
{
    return partOf(index, 1000, 1000);
}

int VarNameItem::getNumber() const noexcept
{
    return partOf(index, 1, 1000);
}

int VarName::getNum()
{
    return static_cast<int>(catalogue().rows.size());
}

VarNameItem const * VarName::get(int i)
{
    return i >= 0 && i < getNum() ? catalogue().rows[static_cast<std::size_t>(i)] : nullptr;
}

VarNameItem const * VarName::find(char const * name)
{
    constexpr std::size_t LONGEST = 200;
    auto const text = detail::viewOf(name);
    if (text.empty() || text.size() > LONGEST)
        return nullptr;
    auto const * const row = lookUp(catalogue().by_name, lower(text));
    return row != nullptr ? row : lookUp(catalogue().by_words, words(text));
}

VarNameItem const * VarName::find(int index)
{
    return lookUp(catalogue().by_index, index);
}

VarNameItem const * VarName::findGrib1(int centre, int table, int number)
{
    if (number <= 0 || number > LAST_CODE)
        return nullptr;
    if (auto const * const local = detail::findLocalGrib1(centre, table, number))
        return find(local->index);
    bool const is_wmo = number < WMO_NUMBERS && table < WMO_NUMBERS;
    bool const is_ncep =
        usesNcepTable(centre) && (table < WMO_NUMBERS || number < WMO_NUMBERS || table == 131);
    return is_wmo || is_ncep ? lookUp(catalogue().by_grib1, number) : nullptr;
}

VarNameItem const * VarName::findGrib2(int centre, int discipline, int category, int number)
{
    bool const is_local = category >= FIRST_LOCAL || number >= FIRST_LOCAL || discipline >= FIRST_LOCAL;
    auto const index = makeIndex(discipline, category, number);
    return index == Const::MISS || (is_local && !usesNcepTable(centre)) ? nullptr : find(index);
}

int VarName::makeIndex(int discipline, int category, int number)
{
    auto const is_code = [](int code) { return code >= 0 && code <= LAST_CODE; };
    return is_code(discipline) && is_code(category) && is_code(number)
               ? (discipline + 1) * 1000000 + category * 1000 + number
               : Const::MISS;
}

int VarName::print()
{
    std::string out;
    for (auto const * const row : catalogue().rows)
        out += detail::format("%-10s %8d %-20s %s\n", row->name, row->index, row->units, row->long_name);
    detail::writeOut(out);
    return 1;
}

} // namespace Yul
