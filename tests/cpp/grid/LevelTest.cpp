#include "grid/Level.h"

#include "grid/LevelTable.h"

#include <climits>
#include <cmath>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

std::string textOf(Level const & level)
{
    String text;
    level.toString(text);
    return text.get();
}

std::string labelOf(Level const & level)
{
    String text;
    level.toLabel(text);
    return text.get();
}

struct TextCase
{
    char const * text;
    int type;
    float value;
    float value2;
    char const * written;
    char const * label;
};

constexpr float MISS = Const::MISS;

constexpr TextCase TEXT_CASES[] = {
    {"500mb", Level::PRES, 500, MISS, "500mb", "500 hPa"},
    {" 500 hPa ", Level::PRES, 500, MISS, "500mb", "500 hPa"},
    {"500", Level::PRES, 500, MISS, "500mb", "500 hPa"},
    {"50000Pa", Level::PRES, 500, MISS, "500mb", "500 hPa"},
    {"0.1mb", Level::PRES, 0.1F, MISS, "0.1mb", "0.1 hPa"},
    {"1000-500mb", Level::PRES, 1000, 500, "1000-500mb", "1000-500 hPa"},
    {"500 - 1000 MB", Level::PRES, 500, 1000, "500-1000mb", "500-1000 hPa"},
    {"1000 mb - 500 mb", Level::PRES, 1000, 500, "1000-500mb", "1000-500 hPa"},
    {"FL340", Level::PRES, 250, MISS, "250mb", "250 hPa"},
    {"fl 350", Level::PRES, 238.4F, MISS, "238.4mb", "238.4 hPa"},
    {"FL370", Level::PRES, 216.6F, MISS, "216.6mb", "216.6 hPa"},
    {"FL180-FL240", Level::PRES, 500, 400, "500-400mb", "500-400 hPa"},
    {"2m", Level::HGT, 2, MISS, "2m", "2 m above ground"},
    {"2 m above ground", Level::HGT, 2, MISS, "2m", "2 m above ground"},
    {"3km", Level::HGT, 3000, MISS, "3000m", "3000 m above ground"},
    {"6000-0m", Level::HGT, 6000, 0, "6000-0m", "6000-0 m above ground"},
    {"1829mmsl", Level::HGT_MSL, 1829, MISS, "1829mmsl", "1829 m above mean sea level"},
    {"SFC", Level::SFC, MISS, MISS, "sfc", "Surface"},
    {"surface", Level::SFC, MISS, MISS, "sfc", "Surface"},
    {"msl", Level::MSL, MISS, MISS, "msl", "Mean sea level"},
    {"0deg", Level::ZERO_DEG, MISS, MISS, "0deg", "0 C isotherm"},
    {"-10C", Level::ISOTHERM, 263.15F, MISS, "263.15kiso", "263.15 K isotherm"},
    {"0.995sigma", Level::SIGMA, 0.995F, MISS, "0.995sigma", "0.995 sigma"},
    {"0.33-1 sig", Level::SIGMA, 0.33F, 1, "0.33-1sigma", "0.33-1 sigma"},
    {"sigma 0.995", Level::SIGMA, 0.995F, MISS, "0.995sigma", "0.995 sigma"},
    {"theta 320", Level::THETA, 320, MISS, "320k", "320 K potential temperature"},
    {"hybrid 60-61", Level::HYBRID, 60, 61, "60-61hybrid", "Hybrid level 60-61"},
    {"10 metres", Level::HGT, 10, MISS, "10m", "10 m above ground"},
    {"137hybrid", Level::HYBRID, 137, MISS, "137hybrid", "Hybrid level 137"},
    {"0-10cm", Level::DEPTH, 0, 10, "0-10cm", "0-10 cm below ground"},
    {"0-0.1 m below ground", Level::DEPTH, 0, 10, "0-10cm", "0-10 cm below ground"},
    {"320K", Level::THETA, 320, MISS, "320k", "320 K potential temperature"},
    {"30-0mbagl", Level::PRES_GND, 30, 0, "30-0mbagl", "30-0 hPa above ground"},
    {"-2PVU", Level::PV, -2, MISS, "-2pvu", "-2 PVU"},
    {"-2--1.5pvu", Level::PV, -2, -1.5F, "-2--1.5pvu", "-2--1.5 PVU"},
    {"5eta", Level::ETA, 5, MISS, "5eta", "5 eta"},
    {"low cloud layer", Level::LOW_CLOUD, MISS, MISS, "lowcloud", "Low cloud layer"},
    {"entire atmosphere", Level::ATMOS, MISS, MISS, "atmos", "Entire atmosphere"},
    {"L123", 123, MISS, MISS, "L123", "Level type 123"},
    {"l123:4.5", 123, 4.5F, MISS, "L123:4.5", "Level type 123: 4.5"},
    {"L123:-4-5", 123, -4, 5, "L123:-4-5", "Level type 123: -4-5"},
    {"L100:850", Level::PRES, 850, MISS, "850mb", "850 hPa"},
    {"miss", Level::NONE, MISS, MISS, "miss", ""},
};

TEST(Level, ReadsAndWritesTexts)
{
    for (auto const & row : TEXT_CASES) {
        Level level(7, 1);
        ASSERT_EQ(level.decode(row.text), 1) << row.text;
        EXPECT_EQ(level.getType(), row.type) << row.text;
        EXPECT_EQ(level.getValue(), row.value) << row.text;
        EXPECT_EQ(level.getValue2(), row.value2) << row.text;
        EXPECT_EQ(level.isLayer(), row.value2 != MISS) << row.text;
        EXPECT_EQ(textOf(level), row.written) << row.text;
        EXPECT_EQ(labelOf(level), row.label) << row.text;
    }
}

TEST(Level, ReadsItsLabelsBack)
{
    for (auto const & kind : detail::levelKinds()) {
        Level level;
        ASSERT_EQ(kind.has_value ? level.set(kind.code, 3, 2.5F) : level.set(kind.code), 1);
        Level back;
        EXPECT_EQ(back.decode(labelOf(level).c_str()), 1) << labelOf(level);
        EXPECT_TRUE(back.compare(level)) << labelOf(level) << ": " << textOf(back);
    }
}

TEST(Level, RefusesOtherTextsAndKeepsWhatItWas)
{
    std::string const endless(100000, '9');
    for (char const * text : {static_cast<char const *>(nullptr),
                              "",
                              " ",
                              "mb",
                              "-",
                              "--5mb",
                              "5mbx",
                              "500mb2",
                              "nan",
                              "inf",
                              "infmb",
                              "-9999mb",
                              "5-mb",
                              "5--mb",
                              "1e5mb",
                              "mb500",
                              "sigma",
                              "sigma0.5x",
                              "hybrid level",
                              "0x10mb",
                              "L",
                              "L255",
                              "L999",
                              "L-1",
                              "L1:",
                              "L1:x",
                              "L99999999999",
                              "l123:",
                              "sfc2",
                              "\xff\xfe",
                              ".",
                              "-.mb",
                              "1000-500-300mb",
                              "1000mb-500m",
                              "1000mb-500",
                              "FL",
                              "FL-1",
                              "FL651",
                              "FL180-",
                              "FL180-FL900",
                              "FL180ft",
                              endless.c_str()}) {
        Level level(Level::HGT, 2);
        EXPECT_EQ(level.decode(text), 0) << (text != nullptr ? text : "null");
        EXPECT_EQ(textOf(level), "2m");
    }
}

TEST(Level, EveryWordOfTheVocabularyReadsBack)
{
    std::set<std::string> seen;
    for (auto const & kind : detail::levelKinds()) {
        Level level;
        ASSERT_EQ(kind.has_value ? level.set(kind.code, 2.5F) : level.set(kind.code), 1) << kind.text;
        EXPECT_TRUE(seen.insert(textOf(level)).second) << kind.text;
        Level back;
        ASSERT_EQ(back.decode(textOf(level).c_str()), 1) << kind.text;
        EXPECT_TRUE(back.compare(level)) << kind.text;
        EXPECT_EQ(labelOf(level).find("%s"), std::string::npos) << kind.text;
    }
    for (auto const & alias : detail::levelAliases()) {
        auto const has_value = detail::findLevelKind(alias.code)->has_value;
        Level level;
        ASSERT_EQ(level.decode(((has_value ? "2" : "") + std::string(alias.text)).c_str()), 1) << alias.text;
        EXPECT_EQ(level.getType(), alias.code) << alias.text;
    }
}

/// Levels and layers of every kind with values that a decimal text can hold, and some that none can.
std::vector<Level> someLevels()
{
    std::mt19937 random(20261121);
    std::uniform_real_distribution<float> any(-30000, 30000);
    std::vector<Level> levels;
    for (int kind = 0; kind <= 254; ++kind) {
        levels.emplace_back();
        levels.back().set(kind);
        for (float const value : {0.0F, 1.0F, 2.5F, 0.995F, 850.0F, -1.5F, 1e-4F, any(random)}) {
            levels.emplace_back(kind, value);
            levels.emplace_back(kind, value, std::round(any(random)) / 100);
        }
    }
    return levels;
}

TEST(Level, TextReadsBackToTheSameBits)
{
    for (auto const & level : someLevels()) {
        Level back;
        ASSERT_EQ(back.decode(textOf(level).c_str()), 1) << textOf(level);
        EXPECT_EQ(back.getType(), level.getType()) << textOf(level);
        EXPECT_EQ(back.getValue(), level.getValue()) << textOf(level);
        EXPECT_EQ(back.getValue2(), level.getValue2()) << textOf(level);
    }
}

TEST(Level, CodesRebuildTheLevel)
{
    struct CodeCase
    {
        char const * text;
        int type_code;
        int value_code;
    };

    constexpr CodeCase CODE_CASES[] = {
        {"500mb", 100, 500},
        {"2m", 103, 2},
        {"sfc", 1, -9999},
        {"0.995sigma", 3104, 995},
        {"1000-500mb", 10100, 1000 * 65536 + 500},
        {"0-10cm", 10106, 10},
        {"-2--1.5pvu", 11109, -20 * 65536 - 15},
        {"L123:-999.9", 2123, -99990},
        {"miss", -9999, -9999},
    };
    for (auto const & row : CODE_CASES) {
        Level const level(row.text);
        EXPECT_EQ(level.getTypeCode(), row.type_code) << row.text;
        EXPECT_EQ(level.getValueCode(), row.value_code) << row.text;
    }
    for (auto const & level : someLevels()) {
        Level back;
        ASSERT_EQ(back.setCodes(level.getTypeCode(), level.getValueCode()), 1) << textOf(level);
        EXPECT_EQ(back.getType(), level.getType()) << textOf(level);
        EXPECT_EQ(back.isLayer(), level.isLayer()) << textOf(level);
        // A single value keeps nine digits, a layer's values four and a half.
        auto const slack = (level.isLayer() ? 1.6e-4F : 1e-7F) *
                           std::max(std::abs(level.getValue()), std::abs(level.getValue2()));
        EXPECT_NEAR(back.getValue(), level.getValue(), slack) << textOf(level);
        EXPECT_NEAR(back.getValue2(), level.getValue2(), slack) << textOf(level);
    }
    for (auto const & [type_code, value_code] : {std::pair(-1, 0), std::pair(255, 0), std::pair(20000, 0),
                                                 std::pair(INT_MAX, 0), std::pair(INT_MIN, 0)}) {
        Level level(Level::HGT, 2);
        EXPECT_EQ(level.setCodes(type_code, value_code), 0);
        EXPECT_EQ(textOf(level), "2m");
    }
    for (int const value_code : {INT_MAX, INT_MIN, 0, -1})
        for (int const type_code : {0, 100, 9254, 10100, 19254}) {
            Level level;
            EXPECT_EQ(level.setCodes(type_code, value_code), 1);
        }
}

struct Grib1Case
{
    int type;
    int first;
    int second;
    char const * text;
};

/// Edition 1, code table 3, with the products that use them.
constexpr Grib1Case GRIB1_CASES[] = {
    {1, 0, 0, "sfc"},
    {100, 1, 0xF4, "500mb"},
    {101, 100, 50, "1000-500mb"},
    {102, 0, 0, "msl"},
    {103, 0x07, 0x25, "1829mmsl"},
    {104, 15, 5, "1500-500mmsl"},
    {105, 0, 10, "10m"},
    {106, 60, 0, "6000-0m"},
    {107, 0x26, 0xDE, "0.995sigma"},
    {108, 33, 100, "0.33-1sigma"},
    {109, 0, 60, "60hybrid"},
    {111, 0, 7, "7cm"},
    {112, 0, 10, "0-10cm"},
    {112, 100, 200, "100-200cm"},
    {113, 1, 0x40, "320k"},
    {114, 155, 175, "320-300k"},
    {116, 30, 0, "30-0mbagl"},
    {117, 0x07, 0xD0, "2pvu"},
    {117, 0x87, 0xD0, "-2pvu"},
    {119, 0x27, 0x10, "1eta"},
    {121, 100, 95, "1000-1005mb"},
    {125, 0, 150, "1.5m"},
    {126, 0x01, 0x2C, "3mb"},
    {128, 105, 100, "0.995-1sigma"},
    {141, 85, 100, "850-1000mb"},
    {160, 0, 5, "5mbsl"},
    {200, 0, 0, "atmos"},
    {214, 0, 0, "lowcloud"},
    {236, 1, 5, "10-50mbsl"},
    {20, 0x66, 0xCB, "263.15kiso"},
};

TEST(Level, FollowsCodeTable3)
{
    for (auto const & row : GRIB1_CASES) {
        Level level;
        ASSERT_EQ(level.setGrib1(row.type, row.first, row.second), 1) << row.text;
        EXPECT_EQ(textOf(level), row.text);
        Level back;
        int type = 0;
        int first = 0;
        int second = 0;
        ASSERT_EQ(level.getGrib1(type, first, second), 1) << row.text;
        ASSERT_EQ(back.setGrib1(type, first, second), 1) << row.text;
        EXPECT_TRUE(back.compare(level)) << row.text << " coded as " << type << " " << first << " " << second;
    }
    Level level(Level::HGT, 2);
    for (auto const & [type, first, second] :
         {std::tuple(0, 0, 0), std::tuple(99, 0, 0), std::tuple(255, 0, 0), std::tuple(100, -1, 0),
          std::tuple(100, 0, 256), std::tuple(INT_MIN, INT_MIN, INT_MIN)}) {
        EXPECT_EQ(level.setGrib1(type, first, second), 0);
        EXPECT_EQ(textOf(level), "2m");
    }
    EXPECT_EQ(Level().getGrib1(*std::make_unique<int>(), *std::make_unique<int>(), *std::make_unique<int>()),
              0);
}

struct Grib2Case
{
    int first_kind;
    double first;
    int second_kind;
    double second;
    char const * text;
};

constexpr Grib2Case GRIB2_CASES[] = {
    {100, 50000, 255, -9999, "500mb"},
    {100, 100000, 100, 50000, "1000-500mb"},
    {103, 2, 255, 0, "2m"},
    {1, 0, 255, 0, "sfc"},
    {1, 0, 8, 0, "atmos"},
    {200, 0, 255, 0, "atmos"},
    {106, 0, 106, 0.1, "0-10cm"},
    {109, 2e-6, 255, 0, "2pvu"},
    {108, 3000, 108, 0, "30-0mbagl"},
    {255, 0, 100, 85000, "850mb"},
    {101, NAN, 255, NAN, "msl"},
    {100, NAN, 255, NAN, "L100"},
    {103, 80, 1, 0, "80m"},
    {255, 0, 255, 0, "miss"},
};

TEST(Level, FollowsCodeTable4_5)
{
    for (auto const & row : GRIB2_CASES) {
        Level level(Level::HGT, 2);
        ASSERT_EQ(level.setGrib2(row.first_kind, row.first, row.second_kind, row.second), 1) << row.text;
        EXPECT_EQ(textOf(level), row.text);
        int kind = 0;
        int kind2 = 0;
        double value = 0;
        double value2 = 0;
        Level back;
        ASSERT_EQ(level.getGrib2(kind, value, kind2, value2), level.isSet() ? 1 : 0) << row.text;
        ASSERT_EQ(!level.isSet() || back.setGrib2(kind, value, kind2, value2) == 1, true) << row.text;
        EXPECT_EQ(textOf(back), row.text);
    }
    Level level(Level::HGT, 2);
    EXPECT_EQ(level.setGrib2(-1, 0, 255, 0), 0);
    EXPECT_EQ(level.setGrib2(INT_MAX, 0, INT_MIN, 0), 0);
    EXPECT_EQ(textOf(level), "2m");
    EXPECT_EQ(level.setGrib2(100, 1e300, 100, -1e300), 1); // no float holds them
    EXPECT_EQ(textOf(level), "L100");
}

TEST(Level, RefusesBadNumbers)
{
    Level level(Level::HGT, 2);
    EXPECT_EQ(level.set(255), 0);
    EXPECT_EQ(level.set(-1), 0);
    EXPECT_EQ(level.set(INT_MIN), 0);
    EXPECT_EQ(level.set(Level::PRES, NAN), 0);
    EXPECT_EQ(level.set(Level::PRES, INFINITY), 0);
    EXPECT_EQ(level.set(Level::PRES, 500, NAN), 0);
    EXPECT_EQ(level.set(300, 500, 400), 0);
    EXPECT_EQ(textOf(level), "2m");
    EXPECT_EQ(level.set(Level::PRES, Const::MISS, 500), 1); // one value is a level
    EXPECT_EQ(textOf(level), "500mb");
    EXPECT_EQ(level.set(Level::NONE), 1);
    EXPECT_FALSE(level.isSet());
}

TEST(Level, ComparesLayersInEitherOrderAndToSixDigits)
{
    EXPECT_TRUE(Level("1000-500mb").compare(Level("500-1000mb")));
    EXPECT_FALSE(Level("1000-500mb").compare(Level("1000mb")));
    EXPECT_FALSE(Level("500mb").compare(Level("500m")));
    EXPECT_TRUE(Level(Level::SIGMA, 0.995F).compare(Level(Level::SIGMA, 0.99500006F)));
    EXPECT_FALSE(Level(Level::SIGMA, 0.995F).compare(Level(Level::SIGMA, 0.9951F)));
    EXPECT_TRUE(Level().compare(Level()));
}

} // namespace
} // namespace Yul
