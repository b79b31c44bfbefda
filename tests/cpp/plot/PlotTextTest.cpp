// Attribute, geometry and drawing texts.
#include "plot/DrawList.h"
#include "plot/Geometry.h"
#include "plot/ImageName.h"
#include "plot/PlotAttr.h"
#include "plot/Tools.h"

#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr int MISS = Const::MISS;

struct AttrCase
{
    char const * text;
    char const * color_name;
    char const * font;
    float width;
    float size;
    float expansion;
    int style;
    int fill;
};

constexpr AttrCase ATTR_CASES[] = {
    {"red:wi=2:st=dsh", "red", "", 2, MISS, MISS, 2, MISS},
    {"red,wi=2,st=dsh", "red", "", 2, MISS, MISS, 2, MISS},
    {"wi=2,red", "", "", 2, MISS, MISS, MISS, MISS},
    {"a,wi=2:st=3", "", "", MISS, MISS, MISS, 3, MISS},
    {"CO=blue:ST=7:FP=XX", "blue", "", MISS, MISS, MISS, 7, 9},
    {"st=lsdsh:fi=3%", "", "", MISS, MISS, MISS, 3, 13},
    {"st=Solid:fi=0%", "", "", MISS, MISS, MISS, 1, 10},
    {"sc=3:hi=4", "", "", MISS, 4, MISS, MISS, MISS},
    {"off:w1.5:s4:h2:e.5:f12", "off", "", 1.5F, 2, .5F, 4, 12},
    {"off:f12:fM", "off", "", MISS, MISS, MISS, MISS, MISS},
    {"x:width=3:ex=2:solid:", "x", "", MISS, MISS, MISS, MISS, MISS},
    {"x:te=2:tf=roman.fnt", "x", "roman.fnt", MISS, MISS, 2, MISS, MISS},
    {"x:t", "x", "", MISS, MISS, MISS, MISS, MISS},
    {"a name of more than nineteen", "a name of more than", "", MISS, MISS, MISS, MISS, MISS},
    {"", "", "", MISS, MISS, MISS, MISS, MISS},
    {nullptr, "", "", MISS, MISS, MISS, MISS, MISS},
};

TEST(PlotAttr, ReadsAttributeTexts)
{
    for (auto const & row : ATTR_CASES) {
        PlotAttr attr("green:wi=9:st=9:fi=9:sc=9:te=9:fo=old:sh=9"); // nothing of it may be left
        attr.color = 5;
        attr.set(row.text);
        SCOPED_TRACE(row.text != nullptr ? row.text : "null");
        EXPECT_STREQ(attr.color_name, row.color_name);
        EXPECT_STREQ(attr.font, row.font);
        EXPECT_EQ(attr.width, row.width);
        EXPECT_EQ(attr.size, row.size);
        EXPECT_EQ(attr.expansion, row.expansion);
        EXPECT_EQ(attr.style, row.style);
        EXPECT_EQ(attr.fill, row.fill);
        EXPECT_EQ(attr.color, Const::MISS);
        EXPECT_EQ(attr.shadow, Const::MISS);
    }
}

TEST(PlotAttr, FillsOnlyWhatIsNotGiven)
{
    PlotAttr attr("red:wi=0", "blue:wi=3:st=2");
    EXPECT_STREQ(attr.color_name, "red");
    EXPECT_EQ(attr.width, 0);
    EXPECT_EQ(attr.style, 2);
    attr.update(PlotAttr("la=gray"), PlotAttr("la=white:sh=4"));
    EXPECT_STREQ(attr.label_color, "gray");
    EXPECT_EQ(attr.shadow, 4);
    EXPECT_TRUE(attr.validColor());
    attr.setColor("OFF");
    EXPECT_FALSE(attr.validColor());
    EXPECT_FALSE(PlotAttr().validColor());
}

TEST(PlotAttr, KnowsFillsAndMarkers)
{
    PlotAttr const attr;
    for (auto const & [name, code] : {std::pair{"SOLID", 0},
                                      {"st", 1},
                                      {"lst", 4},
                                      {"||", 5},
                                      {"\\", 6},
                                      {"\\\\", 6},
                                      {"//", 7},
                                      {"--", 8},
                                      {"xx", 9},
                                      {"clr", 10},
                                      {"9%", 19},
                                      {"42", 42},
                                      {"zigzag", 0}})
        EXPECT_EQ(attr.parseFillStyle(name), code) << name;
    for (auto const & [name, type] : {std::pair{"PNT", 1},
                                      {"+", 2},
                                      {"star", 3},
                                      {"o", 4},
                                      {"circle", 4},
                                      {"X", 5},
                                      {"#", 6},
                                      {"triangle", 7},
                                      {"dot", 8},
                                      {"v", 9},
                                      {"light", 10},
                                      {"zebra", 2},
                                      {"", 2}})
        EXPECT_EQ(attr.parseMarker(name), type) << name;
    EXPECT_EQ(attr.parseMarker(nullptr), 2);
    EXPECT_EQ(attr.parseFillStyle(nullptr), 0);
}

struct GeometryCase
{
    char const * text;
    int result;
    float width, height, x, y;
};

constexpr GeometryCase GEOMETRY_CASES[] = {
    {"800x600+10-20", 2, 800, 600, 10, -20},
    {"800x600", 1, 800, 600, MISS, MISS},
    {"+5+5", 3, MISS, MISS, 5, 5},
    {"-5+.5", 3, MISS, MISS, -5, .5F},
    {"800x600+10", 0, 1, 2, 3, 4},
    {"800x600+10-", 0, 1, 2, 3, 4},
    {"800", 0, 1, 2, 3, 4},
    {"1e99x5", 0, 1, 2, 3, 4},
    {"", 0, 1, 2, 3, 4},
    {nullptr, 0, 1, 2, 3, 4},
};

TEST(ImageName, KeepsFiveCharactersOfASinglePng)
{
    std::string const name = "temperature at 850 hPa over all the continents";
    EXPECT_EQ(detail::imageName(name, "png", -1), "tempe.png");
    EXPECT_EQ(detail::imageName(name, "gif", -1), name.substr(0, 40) + ".gif");
    EXPECT_EQ(detail::imageName(name, "png", 7), name.substr(0, 40) + "-07.png");
    EXPECT_EQ(detail::imageName("", "gif", 123), "output-123.gif");
}

TEST(Geometry, ReadsSizeAndOffset)
{
    for (auto const & row : GEOMETRY_CASES) {
        GeomBox box(1, 2, 3, 4);
        SCOPED_TRACE(row.text != nullptr ? row.text : "null");
        EXPECT_EQ(detail::decodeGeometry(row.text, box), row.result);
        EXPECT_EQ(box.width, row.width);
        EXPECT_EQ(box.height, row.height);
        EXPECT_EQ(box.x, row.x);
        EXPECT_EQ(box.y, row.y);
    }
}

TEST(DrawList, SwitchesParts)
{
    struct
    {
        char const * list;
        char const * switches; // 12 to 0
    } const cases[] = {
        {"map,-text", "0000000000100"},
        {"-map", "1111111111011"},
        {"-all", "0000000000000"},
        {"all", "1111111111111"},
        {"text", "0001111111000"},
        {"text_uc,bord", "0001000010000"},
        {"sum,+data", "0000000000011"},
        {"plot,none,grid", "0000000000100"},
        {"MAP,nothing", "0000000000000"},
        {"text,-text_ll", "0001110111000"},
        {"", "0000000000000"},
    };

    for (auto const & [list, switches] : cases)
        EXPECT_EQ(detail::decodeDrawList(list).to_string(), switches) << list;
    EXPECT_TRUE(detail::decodeDrawList(nullptr).none());
}

TEST(Tools, RoundsIntervalsUp)
{
    struct
    {
        float max, min;
        int n;
        float interval;
    } const cases[] = {
        {1000, 0, 9, 112}, {237.4F, 0, 1, 238}, {300, 0, 1, 300},       {3000, 0, 0, 3000},
        {13, 0, 1, 13},    {9, 0, 4, 3},        {1, 1, 5, 1},           {0.9F, 0, 9, .1F},
        {2.1F, 0, 3, .7F}, {.05F, 0, 9, .006F}, {.0005F, 0, 1, .0005F}, {.00005F, 0, 1, .00005F},
        {0, 5, 1, -5},
    };

    for (auto const & [max, min, n, interval] : cases)
        EXPECT_EQ(Tools::calcInterval(max, min, n), interval) << max << ' ' << min << ' ' << n;
}

} // namespace
} // namespace Yul
