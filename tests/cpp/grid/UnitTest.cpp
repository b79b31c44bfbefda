#include "grid/Unit.h"

#include "grid/VarName.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

struct UnitCase
{
    char const * from;
    char const * to;
    float value;
    float converted;
};

constexpr UnitCase UNIT_CASES[] = {
    {"K", "C", 273.15F, 0},
    {"C", "F", -40, -40},
    {"F", "K", 32, 273.15F},
    {"degC", "celsius", 12.5F, 12.5F},
    {"deg C", "K", 0, 273.15F},
    {"Pa", "hPa", 101325, 1013.25F},
    {"mb", "inHg", 1013.25F, 29.92126F},
    {"gpm", "dam", 5520, 552},
    {"m", "ft", 1000, 3280.84F},
    {"m/s", "kt", 10, 19.43844F},
    {"kt", "m s-1", 100, 51.44444F},
    {"m s**-1", "mph", 10, 22.36936F},
    {"m.s-1", "km/h", 10, 36},
    {"m_s-1", "km h-1", 10, 36},
    {"kg m-2", "mm", 25, 25},
    {"kg m-2", "in", 25.4F, 1},
    {"kg m-2 s-1", "mm/h", 0.001F, 3.6F},
    {"m", "kg m**-2", 0.005F, 5},
    {"kg kg-1", "g/kg", 0.012F, 12},
    {"1", "%", 0.75F, 75},
    {"Proportion", "%", 0.75F, 75},
    {"K m2 kg-1 s-1", "PVU", 2e-6F, 2},
    {"s-1", "10^-5 s-1", 0.0001F, 10},
    {"1/s", "1e-5/s", 0.0001F, 10},
    {"rad", "deg", 3.1415927F, 180},
    {"W m-2", "J/m2/s", 400, 400},
    {"J kg-1", "m2/s2", 1500, 1500},
    {"hour", "min", 2, 120},
    {"Pa s-1", "hPa/h", -0.5F, -18},
    {"DU", "DU", 300, 300},
    {"", "", 3, 3},
    {"HPA", "KPA", 1000, 100},
    {"K", "\u00b0C", 273.15F, 0},
    {"degrees_Celsius", "\u2109", 100, 212},
    {"\u00b0", "rad", 180, 3.1415927F},
    {"m s\u207b\u00b9", "kmh", 10, 36},
    {"\u00b5g m\u207b\u00b3", "g per m3", 1e6F, 1},
    {"10\u207b\u2075 s\u207b\u00b9", "s-1", 3, 3e-5F},
    {"miles", "km", 10, 16.09344F},
    {"NM", "km", 1, 1.852F},
    {"km", "nm", 1, 1e12F},
    {"feet per minute", "m/s", 1000, 5.08F},
    {"oktas", "%", 4, 50},
    {"DU", "kg m-2", 300, 0.00642435F},
    {"L/m2", "mm", 3, 3},
    {"degrees_north", "deg", 45, 45},
    {"hPa/3h", "Pa s-1", 108, 1},
    {"mm/6h", "mm/h", 6, 1},
    {"K/100m", "K km-1", 0.65F, 6.5F},
};

TEST(Unit, ConvertsThereAndBack)
{
    for (auto const & row : UNIT_CASES) {
        Unit const unit(row.from, row.to);
        ASSERT_TRUE(unit.isValid()) << row.from << " to " << row.to;
        // Single precision, and factors that sources give to seven digits.
        EXPECT_NEAR(unit.convert(row.value), row.converted, 3e-6 * std::abs(row.converted) + 1e-4)
            << row.from << " to " << row.to;
        Unit const back(row.to, row.from);
        EXPECT_NEAR(back.convert(unit.convert(row.value)), row.value, 1e-6 * std::abs(row.value) + 5e-5)
            << row.to << " to " << row.from;
    }
}

TEST(Unit, RefusesWhatDoesNotBelongTogether)
{
    std::string const endless(100000, 'm');
    std::pair<char const *, char const *> const cases[] = {
        {"K", "m"},
        {"K", ""},
        {"K m-1", "C m-1 s"},
        {"kg m-3", "1"},
        {"m", "m/"},
        {"m", "/m2"},
        {"m", "m^"},
        {"m", "m^99999999999"},
        {"m", "m-"},
        {"m", "0 m"},
        {"m", "1e999 m"},
        {"parsec", "m"},
        {nullptr, "m"},
        {"m", nullptr},
        {"m2", "m2/3"},
        {"m2/3 s-1", "m2 s-1"},
        {"hPa/0h", "hPa/h"},
        {"hPa 3h", "hPa h"},
        {"m^99 m^99 m^99 m^99 m^99 m^99", "m"},
        {"m", endless.c_str()},
    };
    for (auto const & [from, to] : cases) {
        EXPECT_FALSE(Unit(from, to).isValid()) << (from ? from : "null") << " to " << (to ? to : "null");
        EXPECT_EQ(Unit::convert(1, from, to), Const::MISS);
    }
    // Gradients and products have no zero point.
    EXPECT_FLOAT_EQ(Unit::convert(2, "K m-1", "C km-1"), 2000);
    EXPECT_FLOAT_EQ(Unit::convert(2, "C/km", "F/km"), 3.6F);
}

TEST(Unit, KeepsMissingValues)
{
    Unit const unit("K", "C");
    EXPECT_EQ(unit.convert(Const::MISS), Const::MISS);
    EXPECT_EQ(unit.convert(NAN), Const::MISS);
    EXPECT_EQ(Unit("km", "nm").convert(1e38F), std::numeric_limits<float>::infinity());
    EXPECT_EQ(Unit("km", "nm").convert(-1e38F), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(Unit().convert(1), Const::MISS);
}

TEST(Unit, ConvertsByNumbersOfOnesOwn)
{
    Unit unit("K", "C");
    EXPECT_EQ(unit.set(1.8, 32), 1);
    EXPECT_FLOAT_EQ(unit.convert(100), 212);
    for (auto const & [factor, offset] : {std::pair{0.0, 1.0}, {NAN, 0.0}, {1.0, INFINITY}}) {
        EXPECT_EQ(unit.set(factor, offset), 0);
        EXPECT_FALSE(unit.isValid());
    }
}

TEST(Unit, KnowsTheUnitsOfTheCommonVariables)
{
    for (char const * name :
         {"TMP",  "HGT",  "UGRD", "PRMSL", "RH",   "SPFH",  "APCP",  "ABSV",  "VVEL", "CAPE", "PVORT",
          "PWAT", "TCDC", "VIS",  "DSWRF", "UFLX", "SOILW", "WVDIR", "HTSGW", "HLCY", "STRM"}) {
        auto const * const row = VarName::find(name);
        ASSERT_NE(row, nullptr) << name;
        EXPECT_TRUE(Unit::isKnown(row->units)) << name << " " << row->units;
    }
}

} // namespace
} // namespace Yul
