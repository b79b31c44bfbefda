#include "grid/GridSpec.h"

#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

std::string textOf(GridSpec const & spec)
{
    String text;
    spec.toString(text);
    return text.get();
}

TEST(GridSpec, ReadsAndWritesTexts)
{
    constexpr std::pair<char const *, char const *> CASES[] = {
        {"HGT,500mb,24h", "HGT,500mb,24h"},
        {" hgt , 500 hPa , 24 ", "HGT,500mb,24h"},
        {"HGT,500,24", "HGT,500mb,24h"},
        {"TMP[C],2m", "TMP[C],2m"},
        {"APCP,sfc,0-6acc", "APCP,sfc,0-6acc"},
        {"APCP,,0-6 acc", "APCP,,0-6acc"},
        {",500mb", ",500mb"},
        {"*,*,12h", ",,12h"},
        {"UGRD,10m,12h,7:96", "UGRD,10m,12h,7:96"},
        {",,,98", ",,,98"},
        {",,,*:96", ",,,*:96"},
        {"TMP,850mb,90m", "TMP,850mb,90m"},
        {"TMP,850mb,anal", "TMP,850mb,anal"},
        {"1000-500mb", "1000-500mb"}, // no variable of the table, but a name
        {"*", "*"},
        {"", "*"},
        {",,,", "*"},
    };
    for (auto const & [text, written] : CASES) {
        GridSpec spec;
        ASSERT_EQ(spec.decode(text), 1) << text;
        EXPECT_EQ(textOf(spec), written) << text;
        GridSpec back;
        ASSERT_EQ(back.decode(written), 1) << text;
        EXPECT_TRUE(back.match(spec) && spec.match(back)) << text;
        EXPECT_EQ(spec.isSet(), std::string(written) != "*") << text;
    }
}

TEST(GridSpec, RefusesOtherTextsAndKeepsWhatItWas)
{
    GridSpec spec("HGT,500mb,24h");
    for (char const * text :
         {"HGT,500mb,24h,7:96,x", "HGT,nowhere", "HGT,500mb,soon", "HGT,500mb,24h,x", "HGT,500mb,24h,7:96:1",
          "HGT,500mb,24h,-1", "HGT,500mb,24h,65536", "two words", "HGT,500mb,24h,99999999999"}) {
        EXPECT_EQ(spec.decode(text), 0) << text;
        EXPECT_EQ(textOf(spec), "HGT,500mb,24h") << text;
    }
    ModelSpec named;
    EXPECT_EQ(named.set("NCEP:96"), 1);
    EXPECT_TRUE(named.match(ModelSpec(7, 96)));
    EXPECT_EQ(named.set(" ecmwf"), 1);
    EXPECT_TRUE(named.match(ModelSpec(98, 145)));
    EXPECT_EQ(named.set("96:ncep"), 0);
    EXPECT_EQ(ModelSpec().set(-1, 0), 0);
    EXPECT_EQ(ModelSpec().set(0, INT_MAX), 0);
    EXPECT_EQ(ModelSpec().set(INT_MIN, Const::MISS), 0);
}

TEST(GridSpec, MatchesWhereItIsSet)
{
    GridSpec const grid("HGT[gpm],500mb,24h,7:96");

    struct MatchCase
    {
        char const * text;
        bool matches;
    };

    constexpr MatchCase CASES[] = {
        {"*", true},
        {"HGT", true},
        {"hgt[dam]", true}, // units do not count
        {"TMP", false},
        {"HGT,500mb,24h", true},
        {"HGT,50000Pa,1d", true},
        {"HGT,500mb,any", true},
        {"HGT,500mb,12h", false},
        {"HGT,850mb", false},
        {"HGT,500-400mb", false},
        {",,,7", true},
        {",,,7:96", true},
        {",,,*:96", true},
        {",,,98", false},
        {",,,7:81", false},
    };
    for (auto const & row : CASES)
        EXPECT_EQ(GridSpec(row.text).match(grid), row.matches) << row.text;
    EXPECT_FALSE(GridSpec("HGT").match(GridSpec())) << "a part that is asked for must be there";
    EXPECT_TRUE(GridSpec("other").match(GridSpec("OTHER,2m")));
}

} // namespace
} // namespace Yul
