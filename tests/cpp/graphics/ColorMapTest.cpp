#include "graphics/ColorMap.h"

#include "core/Yul.h"
#include "cpp/graphics/Page.h"

#include <climits>
#include <cmath>

namespace Yul {
namespace {

/// A map with entries 0 "Red", 1 "end", 2 "Sky".
ColorMap smallMap(int capacity = 10)
{
    ColorMap map(capacity);
    map.add("Red", 1, 0, 0);
    map.add("end", 0, 1, 0);
    map.add("Sky", 0.25F, 0.5F, 1);
    return map;
}

struct IndexCase
{
    char const * text;
    int index;
};

constexpr IndexCase INDEX_CASES[] = {
    {nullptr, -1},
    {"", -1},
    {"end", -2}, // beats the entry of that name
    {"END", -2},
    {"none", -1},
    {"off", -1},
    {"back", -1},
    {"pblk", 500},
    {"pbgry", 507},
    {"ptgry", 508},
    {"red", 0},
    {"SKY", 2},
    {"sk", -1},
    {"12", 12},
    {"3x", 3},
    {"99999999999", INT_MAX},
    {"-1", -1},
    {"#", -1},
    {"#FF800", -1},
    {"#GF8000", -1},
    {"#255128256", -1},
    {"#25512800x", -1},
};

TEST(ColorMap, FindsTheIndexOfAText)
{
    ColorMap map = smallMap();
    for (auto const & c : INDEX_CASES)
        EXPECT_EQ(map.getInd(c.text), c.index) << (c.text != nullptr ? c.text : "null");
    EXPECT_EQ(map.getNum(), 3);
}

TEST(ColorMap, AddsColorsGivenByDigits)
{
    ColorMap map = smallMap();
    int const hex = map.getInd("#FF8000");
    int const decimal = map.getInd("#255128000");
    EXPECT_EQ(hex, 3);
    EXPECT_EQ(decimal, 4);
    EXPECT_EQ(map.getInd("#ff8000"), 3);
    RGB rgb;
    EXPECT_EQ(map.get(hex, rgb), 1);
    EXPECT_TRUE(map.isColorNear(decimal, rgb));
    EXPECT_FLOAT_EQ(rgb.g, 128.0F / 255);
    EXPECT_STREQ(map.getName(3), "#FF8000");
}

TEST(ColorMap, ReplacesAnExactNameAndRefusesWhenFull)
{
    ColorMap map = smallMap(4);
    EXPECT_EQ(map.add("Sky", 1, 1, 1), 2);
    EXPECT_EQ(map.add("sky", 0, 0, 0), 3); // another name
    testing::internal::CaptureStderr();
    EXPECT_EQ(map.add("Sky", 0, 0, 0), -1); // full, though the name is there
    EXPECT_EQ(map.getInd("#102030"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Color map size exceeded 4 > 4\nColor map size exceeded 4 > 4\n");
    EXPECT_TRUE(map.isColorNear(2, RGB(1, 1, 0.995F)));
    EXPECT_FALSE(map.isColorNear(2, RGB(1, 1, 0.98F)));
    EXPECT_FALSE(map.isColorNear(-1, RGB(-1, -1, -1)));
}

TEST(ColorMap, HoldsIndicesAndComponents)
{
    ColorMap map = smallMap();
    map.add("much", 7, -3, NAN);
    map.setValue(3, 77);
    float r = 0;
    float g = 0;
    float b = 0;
    EXPECT_EQ(map.getRGB(INT_MAX, r, g, b), 1);
    EXPECT_EQ(r, 1);
    EXPECT_EQ(g, 0);
    EXPECT_EQ(b, 0);
    EXPECT_EQ(map.getRGB(-1, r, g, b), 0);
    EXPECT_EQ(r, -1);
    int level[3] = {};
    EXPECT_EQ(map.getIRGB(2, level[0], level[1], level[2]), 1);
    EXPECT_EQ(level[0], 64);
    EXPECT_EQ(level[1], 128);
    EXPECT_EQ(level[2], 255);
    EXPECT_EQ(map.getValue(100), 77);
    EXPECT_EQ(map.getValue("off"), -1);
    EXPECT_EQ(map.getValue("ptwht"), 0xffffff);
    EXPECT_EQ(map.setValue(4, 1), 0);
    EXPECT_EQ(map.getName(4), nullptr);
    EXPECT_TRUE(map.setNumFill(4));
    EXPECT_FALSE(map.setNumFill(5));
    EXPECT_FALSE(map.setNumFill(-1));
    EXPECT_EQ(map.getNumFill(), 4);
    EXPECT_EQ(ColorMap(-5).add("x", 0, 0, 0), -1);
    EXPECT_EQ(ColorMap(INT_MAX).getSize(), INT_MAX); // nothing is allocated ahead
    std::string const name = "a name that is longer than fits";
    EXPECT_EQ(map.add(name.c_str(), 0, 0, 0), 4);
    EXPECT_EQ(map.add(name.c_str(), 1, 1, 1), 4);
    EXPECT_STREQ(map.getName(4), "a name that is long");
}

TEST(ColorMap, ListsItsEntries)
{
    ColorMap map(2);
    map.add("Sky", 0.25F, 0.5F, 1);
    map.setValue(0, 4227327);
    testing::internal::CaptureStdout();
    map.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "  0 -  4227327 (0.25,0.50,1.00) Sky\nFill: 0\n");
}

TEST(ColorMap, ReadsTheTableOfTheDatabase)
{
    Yul::setDatabasePath(YUL_DATABASE);
    ColorMap map(512);
    ASSERT_EQ(map.read("yul.clr"), 1);
    EXPECT_EQ(map.getNumFill(), 16);
    EXPECT_TRUE(map.isColorNear(map.getInd("Orange"), RGB(1, 165.0F / 255, 0)));
    EXPECT_EQ(map.getInd("fill16"), 15); // the fill colours are the first ones
    for (char const * name : {"white", "black", "lightgray", "darkgrey", "gray50", "heat9", "rain1", "anom6"})
        EXPECT_GE(map.getInd(name), 0) << name;
}

TEST(ColorMap, LeavesTheTableAloneWhenTheFileIsBad)
{
    test::PageFile file;
    for (char const * text : {"", "GRIB", "YulColors 1\ncolor a 1 2\n", "YulColors 1\ncolor a 1 2 300\n",
                              "YulColors 1\ncolor a 1 2 nan\n", "YulColors 1\nfill 9\n",
                              "YulColors 1\nfill -1\n", "YulColors 1\ncolor b 1 2 3\nblue\n"}) {
        file.write(text);
        ColorMap map = smallMap();
        testing::internal::CaptureStderr();
        EXPECT_EQ(map.read(file.path.c_str()), 0) << text;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ColorMap::read: Not a color table: " + file.path + "\n");
        EXPECT_EQ(map.getNum(), 3) << text;
    }
}

} // namespace
} // namespace Yul
