// Descriptions of parameters of GRIB messages.
#pragma once

#include "core/Const.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Yul {

class Variable;

/// One row of the parameter tables: what the parameter numbers of a message stand for. A row is known by four
/// numbers: parameter number, originating centre, table version and a key, which is discipline x 256 +
/// category in edition 2 and 0 in edition 1. Texts stay valid until the row changes.
class GribParam
{
public:
    GribParam() = default;

    /// Makes the row the missing one: number Const::MISS, empty texts.
    int init();
    /// The four numbers alone; texts stay.
    int set(int number_value, int centre_value, int table_value, int key_value);
    /// Name ("HGT"), units ("gpm") and description ("Geopotential height"). Null texts are empty.
    int setText(char const * name_value, char const * units_value, char const * text_value);

    /// The row of the tables for a parameter. Returns 0 and the missing row where they have none.
    /// edition  1 (0 counts as 1) or 2.
    /// Source: see VarName.
    int find(int edition, int number_value, int centre_value, int table_value, int key_value);

    /// The key of edition 2.
    [[nodiscard]] static constexpr int makeKey(int discipline, int category) noexcept
    {
        return discipline >= 0 && discipline < 256 && category >= 0 && category < 256
                   ? discipline * 256 + category
                   : 0;
    }

    /// True when this row, as one of a cache, is for a parameter: number and key are equal, centre and table
    /// version are 0 here or equal.
    [[nodiscard]] bool
    match(int number_value, int centre_value, int table_value, int key_value) const noexcept;

    /// Whether this is the missing row.
    [[nodiscard]] bool isMiss() const noexcept { return number == Const::MISS; }

    /// Parameter number.
    [[nodiscard]] int getNumber() const noexcept { return number; }

    /// Originating centre; 0 for all.
    [[nodiscard]] int getCentre() const noexcept { return centre; }

    /// Table version; 0 for all.
    [[nodiscard]] int getTable() const noexcept { return table; }

    /// Discipline x 256 + category; 0 in edition 1.
    [[nodiscard]] int getKey() const noexcept { return key; }

    /// Short name, "HGT".
    [[nodiscard]] char const * getName() const noexcept { return name.c_str(); }

    /// Units, "gpm".
    [[nodiscard]] char const * getUnits() const noexcept { return units.c_str(); }

    /// Description, "Geopotential height".
    [[nodiscard]] char const * getText() const noexcept { return text.c_str(); }

    /// The kind of level that the parameter implies, Level::Type; Const::MISS for none, which is the rule.
    [[nodiscard]] int getLevelCode() const noexcept { return level_code; }

    /// See getLevelCode; taken as it stands.
    int setLevelCode(int value);

    /// The variable's index in the table of variables; Const::MISS for one that is not there.
    [[nodiscard]] int getVarCode() const noexcept { return var_code; }

    /// See getVarCode; taken as it stands.
    int setVarCode(int value);

    /// The variable that the row describes; 0 for the missing row.
    int getVar(Variable & variable) const;

    /// Lists the row on standard output.
    int print() const;

private:
    int number = Const::MISS;
    int centre = 0;
    int table = 0;
    int key = 0;
    std::string name;
    std::string units;
    std::string text;
    int level_code = Const::MISS;
    int var_code = Const::MISS;
};

namespace detail {

/// Rows that a reader has looked up, at most 200 of them.
class GribParamCache
{
public:
    static constexpr std::size_t CAPACITY = 200;

    /// The row for a parameter, from the cache or else from the tables; the missing row where there is none.
    /// Valid until the next call.
    [[nodiscard]] GribParam const & get(int edition, int number, int centre, int table, int key);
    /// A row that goes before the tables, in place of one for the same four numbers. 0 when the cache is full or the row is
    /// the missing one.
    int add(int edition, GribParam const & row);

private:
    struct Entry
    {
        int edition = 0;
        GribParam row;
    };

    std::vector<Entry> entries; // given rows, then those of the tables
    std::ptrdiff_t num_given = 0;
    GribParam last;
};

} // namespace detail
} // namespace Yul
