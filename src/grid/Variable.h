// The variable of a grid.
#pragma once

#include "core/Const.h"
#include "core/String.h"
#include "grid/VarName.h"

#include <string>

namespace Yul {

/// What a grid holds: short name ("HGT"), long name, index in the table of variables, and the units of the
/// values. A variable that the table does not know has a name of its own and the index Const::MISS, or an
/// index made from its GRIB identifier. Texts that are returned stay valid until the variable changes.
class Variable
{
public:
    Variable() = default;

    /// As by `set`, which warns.
    explicit Variable(char const * text) { set(text); }

    /// As by `set`.
    explicit Variable(int index_value) { set(index_value); }

    /// Forgets the variable: empty texts, index Const::MISS.
    int init();

    /// From a short name or index of the table, with units in square brackets or after a colon where they
    /// differ from the table's: "TMP", "tmp[C]", "HGT:dam", "1000000". Another name of up to 31 letters,
    /// digits, "_", "-", "+", "." and "/" becomes a variable of its own. "miss" forgets the variable. Returns
    /// 0, prints a warning and changes nothing when the text is not of that form.
    int set(char const * text);
    /// The same without a message.
    int decode(char const * text);
    /// The row of the table with this index; 0 and nothing changed where there is none.
    int set(int index_value);
    int set(VarNameItem const & item);
    int set(Variable const & variable);
    /// A variable by its parts, in the table or not. 0 and nothing changed when the name is not of the form
    /// above. Null long name or units are empty.
    int set(char const * name, char const * long_name, char const * units, int index_value);

    /// By the identifiers of GRIB, see VarName; 0 and nothing changed where the table has no such variable.
    int setGrib1(int centre, int table, int number);
    int setGrib2(int centre, int discipline, int category, int number);

    /// Only the units; the values of a grid are not converted.
    int setUnits(char const * text);

    /// Whether there is a variable.
    [[nodiscard]] bool isSet() const noexcept { return !name.empty(); }

    /// Short name, "HGT"; empty while not set. Texts are valid until the variable changes.
    [[nodiscard]] char const * getName() const noexcept { return name.c_str(); }

    /// Long name, "Geopotential height".
    [[nodiscard]] char const * getLongName() const noexcept { return long_name.c_str(); }

    /// Units of the values, "gpm".
    [[nodiscard]] char const * getUnits() const noexcept { return units.c_str(); }

    /// The index in the table; Const::MISS for a variable of its own.
    [[nodiscard]] int getIndex() const noexcept { return index; }

    /// The text that `set` reads back: the name, with the units in square brackets where they differ from the
    /// table's. "miss" while not set.
    int toString(String & text) const;

    /// True for the same variable: by index where both have one, else by name in any case. Units do not
    /// count.
    [[nodiscard]] bool compare(Variable const & variable) const;

    /// Lists name, index, long name and units on standard output.
    int print() const;

private:
    std::string name;
    std::string long_name;
    std::string units;
    int index = Const::MISS;
};

} // namespace Yul
