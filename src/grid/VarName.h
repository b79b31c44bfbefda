// The table of meteorological variables.
#pragma once

#include "core/Const.h"

namespace Yul {

/// One variable of the table: the short name as forecasters write it, long name, units and the identifiers of
/// GRIB.
///
/// The index is the variable's identifier in edition 2 of GRIB written as one decimal number,
/// (discipline + 1) x 1000000 + category x 1000 + number: temperature (0, 0, 0) is 1000000, CAPE (0, 7, 6) is
/// 1007006. A variable that only edition 1 knows has its number in parameter table 2 as its index.
/// Categories and numbers from 192 to 254 are the ones that NCEP (centre 7) assigned.
struct VarNameItem
{
    int index = Const::MISS;
    int alternate = 0;      ///< a second identifier of the same variable in edition 2; 0 where there is none
    int grib1 = 0;          ///< number in table 2 of edition 1 (128 to 254: as NCEP assigned); 0: none
    char const * name = ""; ///< "TMP"
    char const * long_name = ""; ///< "Temperature"
    char const * units = "";     ///< "K", as GRIB stores the values

    /// The index in the table.
    [[nodiscard]] int getIndex() const noexcept { return index; }

    /// Short name, "HGT"; a static text, as the others.
    [[nodiscard]] char const * getName() const noexcept { return name; }

    /// Long name, "Geopotential height".
    [[nodiscard]] char const * getLongName() const noexcept { return long_name; }

    /// Units of the table, "gpm".
    [[nodiscard]] char const * getUnits() const noexcept { return units; }

    /// The number in table 2 of edition 1; Const::MISS where it has none.
    [[nodiscard]] int getGrib1() const noexcept { return grib1 > 0 ? grib1 : Const::MISS; }

    /// The identifier in edition 2; Const::MISS for a variable that only edition 1 knows.
    [[nodiscard]] int getDiscipline() const noexcept;
    [[nodiscard]] int getCategory() const noexcept;
    [[nodiscard]] int getNumber() const noexcept;
};

/// Look-ups in the table of variables. Every `find` returns a row of the table, which lives as long as the
/// program, or a null pointer where there is no such variable.
class VarName
{
public:
    /// Rows in the table.
    [[nodiscard]] static int getNum();
    /// Row i in the order of the index; null for a row outside the table.
    [[nodiscard]] static VarNameItem const * get(int i);

    /// By short name in any case, or by the long name or a common other name ("GH" for HGT, "wind gust",
    /// "sea_surface_temperature"), in which blanks, "_" and "-" are the same.
    [[nodiscard]] static VarNameItem const * find(char const * name);
    /// By index or by alternate identifier.
    [[nodiscard]] static VarNameItem const * find(int index);

    /// By the identifiers of edition 1: originating centre, parameter table version, number. Tables 1 to 3
    /// below number 128 are WMO's for every centre; otherwise the tables of NCEP (7) and ECMWF (98) are
    /// known.
    /// Source: WMO code table 2; NCEP Office Note 388, table 2; ECMWF local tables 128 and 228.
    [[nodiscard]] static VarNameItem const * findGrib1(int centre, int table, int number);
    /// By the identifiers of edition 2: originating centre, discipline, category, number. Identifiers that
    /// are reserved for local use are known for NCEP (7) only.
    /// Source: WMO code table 4.2; NCEP local entries.
    [[nodiscard]] static VarNameItem const * findGrib2(int centre, int discipline, int category, int number);

    /// The index of an identifier of edition 2, in the table or not; Const::MISS when a part is outside 0 to
    /// 254.
    [[nodiscard]] static int makeIndex(int discipline, int category, int number);

    /// Lists the table on standard output.
    static int print();
};

} // namespace Yul
