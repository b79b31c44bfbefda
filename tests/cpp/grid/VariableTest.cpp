#include "grid/Variable.h"

#include "core/StrLib.h"
#include "grid/variables/Tables.h"

#include <climits>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

struct NameCase
{
    char const * name;
    char const * long_name;
    char const * units;
    int discipline;
    int category;
    int number;
    int grib1;
};

/// Written down from the code tables themselves.
constexpr NameCase NAME_CASES[] = {
    {"TMP", "Temperature", "K", 0, 0, 0, 11},
    {"DPT", "Dewpoint temperature", "K", 0, 0, 6, 17},
    {"RH", "Relative humidity", "%", 0, 1, 1, 52},
    {"APCP", "Total precipitation", "kg m-2", 0, 1, 8, 61},
    {"UGRD", "u-component of wind", "m s-1", 0, 2, 2, 33},
    {"VGRD", "v-component of wind", "m s-1", 0, 2, 3, 34},
    {"VVEL", "Vertical velocity (pressure)", "Pa s-1", 0, 2, 8, 39},
    {"ABSV", "Absolute vorticity", "s-1", 0, 2, 10, 41},
    {"PRES", "Pressure", "Pa", 0, 3, 0, 1},
    {"PRMSL", "Pressure reduced to MSL", "Pa", 0, 3, 1, 2},
    {"HGT", "Geopotential height", "gpm", 0, 3, 5, 7},
    {"TCDC", "Total cloud cover", "%", 0, 6, 1, 71},
    {"CAPE", "Convective available potential energy", "J kg-1", 0, 7, 6, 157},
    {"CIN", "Convective inhibition", "J kg-1", 0, 7, 7, 156},
    {"VIS", "Visibility", "m", 0, 19, 0, 20},
    {"LAND", "Land cover (0 = sea, 1 = land)", "1", 2, 0, 0, 81},
    {"HTSGW", "Significant height of combined wind waves and swell", "m", 10, 0, 3, 100},
};

TEST(VarName, HasTheCommonVariables)
{
    for (auto const & row : NAME_CASES) {
        auto const * const item = VarName::find(row.name);
        ASSERT_NE(item, nullptr) << row.name;
        EXPECT_STREQ(item->getName(), row.name);
        EXPECT_STREQ(item->getLongName(), row.long_name);
        EXPECT_STREQ(item->getUnits(), row.units);
        EXPECT_EQ(item->getDiscipline(), row.discipline) << row.name;
        EXPECT_EQ(item->getCategory(), row.category) << row.name;
        EXPECT_EQ(item->getNumber(), row.number) << row.name;
        EXPECT_EQ(item->getGrib1(), row.grib1) << row.name;
        EXPECT_EQ(VarName::findGrib2(7, row.discipline, row.category, row.number), item) << row.name;
        EXPECT_EQ(VarName::findGrib2(98, row.discipline, row.category, row.number), item) << row.name;
        EXPECT_EQ(VarName::findGrib1(7, 2, row.grib1), item) << row.name;
        EXPECT_EQ(VarName::findGrib1(54, 3, row.grib1), row.grib1 < 128 ? item : nullptr) << row.name;
    }
}

TEST(VarName, TableIsInOrderAndUnambiguous)
{
    ASSERT_GE(VarName::getNum(), 250);
    std::set<std::string> names;
    std::set<int> numbers;
    std::map<int, std::string> identifiers;
    int before = 0;
    for (int i = 0; i < VarName::getNum(); ++i) {
        auto const & row = *VarName::get(i);
        EXPECT_GT(row.index, before) << row.name;
        before = row.index;
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_TRUE(identifiers.emplace(row.index, row.name).second) << row.name;
        EXPECT_TRUE(row.alternate == 0 || identifiers.emplace(row.alternate, row.name).second)
            << row.name << " and " << identifiers[row.alternate];
        EXPECT_TRUE(row.grib1 == 0 || numbers.insert(row.grib1).second) << row.name;
        EXPECT_EQ(VarName::find(row.name), &row) << row.name;
        EXPECT_EQ(VarName::find(row.index), &row) << row.name;
        EXPECT_GT(std::strlen(row.long_name), 1U) << row.name;
        Variable variable;
        EXPECT_EQ(variable.set(row.name, nullptr, nullptr, 0), 1) << row.name << " is not a name";
    }
    EXPECT_EQ(VarName::get(-1), nullptr);
    EXPECT_EQ(VarName::get(VarName::getNum()), nullptr);
    EXPECT_EQ(VarName::get(INT_MIN), nullptr);
}

TEST(VarName, OtherNamesFindTheirVariable)
{
    std::set<std::string> seen;
    for (auto const & [name, others] : detail::otherNames())
        for (auto const other : detail::split(others, ',')) {
            auto const * const item = VarName::find(std::string(other).c_str());
            ASSERT_NE(item, nullptr) << other;
            EXPECT_EQ(item->name, name) << other;
            EXPECT_TRUE(seen.emplace(other).second) << other << " stands twice";
        }
    constexpr std::pair<char const *, char const *> CASES[] = {
        {"Wind Gust", "GUST"},
        {"windgust", "GUST"},
        {"dew-point temperature", "DPT"},
        {"sea_surface_temperature", "WTMP"},
        {"10m_u_component_of_wind", "UGRD"},
        {" mean  sea level pressure ", "PRMSL"},
        {"relative_humidity", "RH"},
        {"soil_m", "SOIL_M"},
    };
    for (auto const & [text, name] : CASES) {
        auto const * const item = VarName::find(text);
        ASSERT_NE(item, nullptr) << text;
        EXPECT_STREQ(item->name, name) << text;
    }
    for (char const * text : {"", " ", "_", "-", "wind gust x"})
        EXPECT_EQ(VarName::find(text), nullptr) << text;
}

TEST(VarName, LocalParametersStandForVariables)
{
    auto before = std::tuple(0, 0, 0);
    for (auto const & row : detail::localGrib1()) {
        auto const key = std::tuple(row.centre, row.table, row.number);
        EXPECT_LT(before, key) << row.index;
        before = key;
        ASSERT_NE(VarName::find(row.index), nullptr) << row.index;
        EXPECT_EQ(VarName::findGrib1(row.centre, row.table, row.number), VarName::find(row.index));
    }

    struct LocalCase
    {
        int centre;
        int table;
        int number;
        char const * name;
        char const * units;
    };

    constexpr LocalCase LOCAL_CASES[] = {
        {98, 128, 130, "TMP", "K"},      {98, 128, 156, "HGT", "gpm"},   {98, 128, 228, "APCP", "m"},
        {98, 128, 164, "TCDC", "1"},     {98, 128, 129, "GP", "m2 s-2"}, {98, 140, 229, "HTSGW", "m"},
        {98, 228, 1, "CIN", "J kg-1"},   {7, 129, 212, "REFC", "dB"},    {7, 131, 33, "UGRD", "m s-1"},
        {7, 131, 157, "CAPE", "J kg-1"}, {59, 2, 157, "CAPE", "J kg-1"}, {7, 130, 11, "TMP", "K"},
    };
    for (auto const & row : LOCAL_CASES) {
        Variable variable;
        ASSERT_EQ(variable.setGrib1(row.centre, row.table, row.number), 1) << row.name;
        EXPECT_STREQ(variable.getName(), row.name);
        EXPECT_STREQ(variable.getUnits(), row.units) << row.name;
    }
    Variable variable("TMP");
    for (auto const & [centre, table, number] :
         {std::tuple(98, 128, 255), std::tuple(98, 200, 130), std::tuple(54, 2, 157), std::tuple(7, 2, 0),
          std::tuple(7, 2, -1), std::tuple(INT_MIN, INT_MAX, INT_MAX)})
        EXPECT_EQ(variable.setGrib1(centre, table, number), 0);
    for (auto const & [centre, discipline, category, number] :
         {std::tuple(98, 0, 7, 193), std::tuple(7, 0, 255, 0), std::tuple(7, -1, 0, 0),
          std::tuple(7, 0, 99, 0), std::tuple(INT_MAX, INT_MAX, INT_MIN, INT_MAX)})
        EXPECT_EQ(variable.setGrib2(centre, discipline, category, number), 0);
    EXPECT_STREQ(variable.getName(), "TMP");
    EXPECT_EQ(variable.setGrib2(7, 0, 7, 193),
              1); // the local identifier of a variable that WMO has taken over
    EXPECT_STREQ(variable.getName(), "4LFTX");
    EXPECT_EQ(variable.getIndex(), 1007011);
}

TEST(Variable, ReadsAndWritesTexts)
{
    struct TextCase
    {
        char const * text;
        char const * name;
        char const * units;
        int index;
        char const * written;
    };

    constexpr TextCase TEXT_CASES[] = {
        {"TMP", "TMP", "K", 1000000, "TMP"},
        {" tmp ", "TMP", "K", 1000000, "TMP"},
        {"t", "TMP", "K", 1000000, "TMP"},
        {"geopotential height", "HGT", "gpm", 1003005, "HGT"},
        {"gh", "HGT", "gpm", 1003005, "HGT"},
        {"1003005", "HGT", "gpm", 1003005, "HGT"},
        {"TMP[C]", "TMP", "C", 1000000, "TMP[C]"},
        {"HGT : dam", "HGT", "dam", 1003005, "HGT[dam]"},
        {"HGT[gpm]", "HGT", "gpm", 1003005, "HGT"},
        {"TMP[]", "TMP", "", 1000000, "TMP[]"},
        {"U-GWD", "U-GWD", "N m-2", 1003016, "U-GWD"},
        {"myIndex_2", "myIndex_2", "", -9999, "myIndex_2"},
        {"myIndex_2[m s-1]", "myIndex_2", "m s-1", -9999, "myIndex_2[m s-1]"},
        {"MISS", "", "", -9999, "miss"},
    };
    for (auto const & row : TEXT_CASES) {
        Variable variable("RH");
        ASSERT_EQ(variable.decode(row.text), 1) << row.text;
        EXPECT_STREQ(variable.getName(), row.name) << row.text;
        EXPECT_STREQ(variable.getUnits(), row.units) << row.text;
        EXPECT_EQ(variable.getIndex(), row.index) << row.text;
        String text;
        variable.toString(text);
        EXPECT_STREQ(text.get(), row.written) << row.text;
        Variable back;
        ASSERT_EQ(back.decode(text.get()), 1) << row.text;
        EXPECT_TRUE(back.compare(variable)) << row.text;
        EXPECT_STREQ(back.getUnits(), variable.getUnits()) << row.text;
    }
}

TEST(Variable, RefusesOtherTextsAndKeepsWhatItWas)
{
    std::string const endless(100000, 'x');
    std::string const long_units = "RH:" + std::string(201, 'm');
    for (char const * text : {static_cast<char const *>(nullptr), "", "  ", "[K]", ":K", "two words", "a,b",
                              "12345", "99999999999999", "\xff", "caf\xc3\xa9", "a*b", "miss:", "Miss[K]",
                              long_units.c_str(), endless.c_str()}) {
        Variable variable("RH");
        EXPECT_EQ(variable.decode(text), 0) << (text != nullptr ? text : "null");
        EXPECT_STREQ(variable.getName(), "RH");
    }
    Variable variable("RH");
    EXPECT_EQ(variable.set(12345), 0);
    EXPECT_EQ(variable.set(nullptr, "", "", 0), 0);
    EXPECT_EQ(variable.set("a b", "", "", 0), 0);
    EXPECT_STREQ(variable.getName(), "RH");
}

TEST(Variable, SurvivesItsOwnTexts)
{
    Variable variable("TMP[C]");
    EXPECT_EQ(
        variable.set(variable.getName(), variable.getLongName(), variable.getUnits(), variable.getIndex()),
        1);
    EXPECT_EQ(variable.setUnits(variable.getUnits()), 1);
    EXPECT_EQ(variable.set(variable), 1);
    EXPECT_STREQ(variable.getUnits(), "C");
    EXPECT_EQ(variable.decode(variable.getName()), 1);
    EXPECT_STREQ(variable.getUnits(), "K");
}

} // namespace
} // namespace Yul
