// The library's own grid files: every line and octet of them.
#include "grid/GridYulFile.h"

#include "core/Const.h"
#include "core/Format.h"
#include "cpp/grid/NativeFiles.h"
#include "grid/Grids.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace Yul::test;
using Yul::Grid;
using Yul::Grids;
using Yul::GridSpec;
using Yul::GridYulFile;

constexpr float MISS = Yul::Const::MISS;

class GridYulFileTest : public NativeFiles
{
};

TEST_F(GridYulFileTest, WritesEveryVersionAndForm)
{
    struct
    {
        int version;
        int format;
        char const * domain;
        std::string header;
    } const cases[] = {
        {4, 1, LATLON,
         "YulGRID4\n" + DATE_LINE + "Wind [m s-1]\n" + IDENTIFICATION +
             "latlon:10.000000:20.000000,45.000000,10.000000,3,2,5.000000,2.500000\n"},
        {4, 2, LATLON,
         "YulGRID4B\n" + DATE_LINE + "Wind [m s-1]\n" + IDENTIFICATION +
             "latlon:10.000000:20.000000,45.000000,10.000000,3,2,5.000000,2.500000\n"},
        {3, 1, LATLON,
         "YulGRID\n" + DATE_LINE + "2-Wind [m s-1]\n" + IDENTIFICATION +
             "LL 45.000000 10.000000 5.000000 2.500000 3 2\n"},
        {3, 2, "ps:90:-105,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE + "3-Wind [m s-1]\n" + IDENTIFICATION +
             "PS:-105.000000 40.000000 -100.000000 1.000000 1.000000 3 2\n"},
        {3, 2, "ps:90:-100,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE + "3-Wind [m s-1]\n" + IDENTIFICATION +
             "PS 40.000000 -100.000000 1.000000 1.000000 3 2\n"},
        {2, 1, "me,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE + "Wind [m s-1]\nME 40.000000 -100.000000 1.000000 1.000000 3 2\n"},
        {1, 2, "lamb:40:-95:30:60,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE +
             "Wind [m s-1]\n"
             "LC:40.000000:-95.000000:30.000000:60.000000:-9999.000000 40.000000 -100.000000 1.000000 "
             "1.000000 3 2\n"},
        {1, 1, "lamb:40:-95,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE +
             "Wind [m s-1]\nLC:-95.000000 40.000000 -100.000000 1.000000 1.000000 3 2\n"},
        {3, 1, "ortho:40:-95,40,-100,3,2,1,1",
         "YulGRID\n" + DATE_LINE + "2-Wind [m s-1]\n" + IDENTIFICATION +
             "40.000000 -100.000000 1.000000 1.000000 3 2\n"},
    };

    for (auto const & [version, format, domain, header] : cases)
        EXPECT_EQ(written(gridOn(domain), version, format),
                  header + (format == 2 ? BINARY_VALUES : TEXT_VALUES));
}

TEST_F(GridYulFileTest, HeaderLinesStayLines)
{
    auto grid = gridOn(LATLON);
    grid.setDatim("");
    grid.setDate(Yul::Date());
    grid.setInfo("two\nlines");
    grid.setUnits("a unit of more than thirty characters");
    grid.setInfo("two\nlines");
    auto const octets = written(grid, 4, 1);
    EXPECT_TRUE(octets.starts_with("YulGRID4\n\ntwo lines\n")) << octets;
    EXPECT_NE(octets.find(":a_unit_of_more_than_thirty_cha\n"), std::string::npos) << octets;
    Grid back;
    EXPECT_EQ(GridYulFile().read(path().c_str(), 0, back), 1);
    EXPECT_STREQ(back.getDatim(), "");
    EXPECT_FALSE(back.getDate().isSet());
    EXPECT_STREQ(back.getInfo(), "two lines");
    EXPECT_STREQ(back.getUnits(), "a_unit_of_more_than_thirty_cha");
}

TEST_F(GridYulFileTest, ADateWithoutItsTextIsWrittenAsText)
{
    auto grid = gridOn(LATLON);
    grid.setDatim("");
    grid.setDate(Yul::Date(2026, 11, 14, 12, 45, 30));
    EXPECT_TRUE(written(grid, 4, 1).starts_with("YulGRID4\n12:45:30Z 14 NOV 2026\n"));
}

TEST_F(GridYulFileTest, ReadsEveryHeader)
{
    struct
    {
        std::string lines; ///< before the projection line
        std::string projection;
        int version;
        char const * info;
        int proj;
        float plat, plon, clat, clon, dx, dy;
    } const cases[] = {
        {"YulGRID4", "latlon:10:20,45,10,3,2,5,2.5", 4, "Height", 2, 10, 20, 45, 10, 5, 2.5F},
        {"  YulGRID4 x ", " ll,45,10,3,2,5,2.5 ", 4, "Height", 2, 45, 10, 45, 10, 5, 2.5F},
        {"YulGRID1", "LL 40 100 1 2 3 2", 1, "Height", 2, 40, -100, 40, -100, 1, 2},
        {"YulGRID1", "LL:100 40 100 1 2 3 2", 1, "Height", 2, 40, 100, 40, -100, 1, 2},
        {"YulGRID1", "PS 40 100 1 2 3 2", 1, "Height", 1, 40, -100, 40, -100, 1, 2},
        {"YulGRID1", "40 100 1 2 3 2", 1, "Height", 1, 40, -100, 40, -100, 1, 1},
        {"YulGRID2", "LC:-95 40 -100 1 2 3 2", 2, "Height", 4, 40, -95, 40, -100, 1, 2},
        {"YulGRID2", "LC:41:-95:30:60:-9999 40 -100 1 2 3 2", 2, "Height", 4, 41, -95, 40, -100, 1, 2},
        {"YulGRID3", "lc 40 -100 1 2 3 2", 3, "Height", 4, 40, -100, 40, -100, 1, 2},
        {"YulGRID3", "ME 40 -100 1 2 3 2", 3, "Height", 3, 40, -100, 40, -100, 1, 2},
        {"YulGRID", "PS:-105 40 -100 1 2 3 2", 2, "Height", 1, 40, -105, 40, -100, 1, 2},
    };

    for (auto const & c : cases) {
        auto const identification = c.version >= 2 ? "1 2 3 4 100 500 24 1003005:dam\n" : "";
        auto const name = write(c.lines + '\n' + DATE_LINE + c.info + '\n' + identification + c.projection +
                                '\n' + TEXT_VALUES);
        Grid grid;
        ASSERT_EQ(GridYulFile().read(name.c_str(), 0, grid), 1) << c.projection;
        auto const & domain = grid.getDomainVal();
        EXPECT_EQ(grid.getVersion(), c.version) << c.projection;
        EXPECT_STREQ(grid.getInfo(), c.info);
        EXPECT_EQ(grid.getSource() * 100 + grid.getModel() * 10 + grid.getType(), 110);
        EXPECT_EQ(domain.proj, c.proj) << c.projection;
        EXPECT_EQ(std::vector({domain.plat, domain.plon, domain.clat, domain.clon, domain.dx, domain.dy}),
                  std::vector({c.plat, c.plon, c.clat, c.clon, c.dx, c.dy}))
            << c.lines << c.projection;
        EXPECT_EQ(domain.getParam(2), MISS);
        EXPECT_EQ(grid.getValue(2, 1), 5.5F);
        EXPECT_EQ(grid.getDate().getSeconds(), 1794657600) << c.lines;
        if (c.version >= 2) {
            EXPECT_EQ(grid.getLevel().getValue(), 500);
            EXPECT_EQ(grid.getForeHours(), 24);
            EXPECT_STREQ(grid.getVar().getName(), "HGT");
            EXPECT_STREQ(grid.getUnits(), "dam");
        }
    }
}

TEST_F(GridYulFileTest, TheThirdLineOfOldHeadersTellsVersionAndForm)
{
    struct
    {
        char const * line;
        int version;
        char const * info;
        bool is_binary;
    } const cases[] = {
        {"3-Height", 3, "Height", true},
        {"2-Height", 3, "Height", false},
        {"500-hPa x", 3, "hPa x", false},
        {" -7-Height ", 3, "Height", false},
        {"3-", 2, "3-", false},
        {"3 -Height", 2, "3 -Height", false},
        {"Height 3-5", 2, "Height 3-5", false},
        {"", 2, "", false},
    };

    for (auto const & c : cases) {
        auto const name =
            write("YulGRID \n" + DATE_LINE + c.line + "\n1 2 3 4 100 500 24 1003005\n\nLL 0 0 1 1 3 2\n" +
                  (c.is_binary ? BINARY_VALUES : TEXT_VALUES));
        Grid grid;
        ASSERT_EQ(GridYulFile().read(name.c_str(), 0, grid), 1) << c.line;
        EXPECT_EQ(grid.getVersion(), c.version) << c.line;
        EXPECT_STREQ(grid.getInfo(), c.info);
        EXPECT_EQ(grid.getValue(2, 1), 5.5F);
    }
}

TEST_F(GridYulFileTest, LinesOverTheirLimitAreReadToTheirEndAndCut)
{
    auto const name =
        write("YulGRID4" + std::string(200, 'x') + "\n" + std::string(60, '1') + "\n" + std::string(90, 'i') +
              "\n" + IDENTIFICATION + "ll,0,0,3,2,1,1" + std::string(300, ' ') + "\n" + TEXT_VALUES);
    Grid grid;
    ASSERT_EQ(GridYulFile().read(name.c_str(), 0, grid), 1);
    EXPECT_EQ(std::strlen(grid.getDatim()), 49U);
    EXPECT_EQ(std::strlen(grid.getInfo()), 70U);
}

TEST_F(GridYulFileTest, AFileOfSeveralGridsIsReadInTurn)
{
    auto const big = gridOn("ps:90:-105,40,-100,7,5,1,1", 7, 5);
    auto small = gridOn(LATLON);
    small.setLevel("850mb");
    auto const octets = written(big, 4, 2) + written(small, 4, 1) + "\n \n" + written(small, 3, 2);
    auto const name = write(octets);

    GridYulFile file(name.c_str());
    Grid grid;
    EXPECT_EQ(file.peek(grid), 1);
    EXPECT_FALSE(grid.isData());
    EXPECT_EQ(grid.getNx(), 7);
    EXPECT_EQ(file.read(grid), 1);
    EXPECT_EQ(grid.getValue(6, 4), 34.5F);
    EXPECT_EQ(file.readHdr(grid), 1);
    EXPECT_FALSE(grid.isData());
    EXPECT_EQ(file.readData(grid), 1);
    EXPECT_EQ(grid.getValue(2, 1), 5.5F);
    EXPECT_EQ(file.readData(grid), 0) << "no header was read";
    EXPECT_EQ(file.next(), 1);
    EXPECT_EQ(file.read(grid), 0);
    EXPECT_EQ(grid.getValue(2, 1), 5.5F) << "the end of the file leaves the grid alone";

    EXPECT_EQ(file.rewind(), 1);
    EXPECT_EQ(file.read(GridSpec("UGRD,850mb,24h"), grid), 1);
    EXPECT_EQ(grid.getVersion(), 4);
    EXPECT_EQ(file.read(GridSpec("UGRD,850mb,24h"), grid), 1);
    EXPECT_EQ(grid.getVersion(), 3);
    EXPECT_EQ(file.read(GridSpec(), grid), 0);

    Grids grids;
    EXPECT_EQ(file.rewind(), 1);
    EXPECT_EQ(file.read(grids), 1);
    ASSERT_EQ(grids.getNum(), 3);
    EXPECT_EQ(grids.get(0).getValue(6, 4), 34.5F);

    Grids before_the_cut;
    EXPECT_EQ(GridYulFile(write(octets.substr(0, octets.size() - 1)).c_str()).read(before_the_cut), 0);
    EXPECT_EQ(before_the_cut.getNum(), 2);
}

TEST_F(GridYulFileTest, TextGivesBackEveryFloat)
{
    std::mt19937 random(5);
    Grid grid(64, 64);
    grid.setDomain(Yul::Domain("ll,0,0,64,64,1,1"));
    for (auto & value : grid.getValues()) {
        auto const bits = static_cast<std::uint32_t>(random());
        std::memcpy(&value, &bits, sizeof value);
    }
    float const special[] = {0.0F,      -0.0F, MISS,   INFINITY,
                             -INFINITY, NAN,   1e-45F, std::numeric_limits<float>::max()};
    std::ranges::copy(special, grid.data());

    std::string expected;
    for (float const value : grid.getValues())
        expected += Yul::detail::format("%14.8e\n", static_cast<double>(std::isnan(value) ? MISS : value));
    EXPECT_TRUE(written(grid, 4, 1).ends_with("\n" + expected));
    Grid back;
    ASSERT_EQ(GridYulFile(path().c_str()).read(back), 1);
    for (std::size_t i = 0; i < grid.getValues().size(); ++i) {
        auto const value = grid.getValues()[i];
        ASSERT_EQ(back.getValues()[i], std::isnan(value) ? MISS : value) << i;
    }
}

TEST_F(GridYulFileTest, BinaryGivesBackEveryBit)
{
    std::mt19937 random(6);
    Grid grid(257, 300);
    grid.setDomain(Yul::Domain("ll,0,0,257,300,1,0.5"));
    for (auto & value : grid.getValues()) {
        auto const bits = static_cast<std::uint32_t>(random());
        std::memcpy(&value, &bits, sizeof value);
    }
    // Values whose octets look like the ends of lines.
    std::memcpy(grid.data(), "\n \n\n", 4);
    std::memcpy(grid.data() + grid.getSize() - 1, "\n\n  ", 4);
    written(grid, 4, 2);
    Grid back;
    ASSERT_EQ(GridYulFile(path().c_str()).read(back), 1);
    EXPECT_EQ(std::memcmp(back.data(), grid.data(), grid.getValues().size_bytes()), 0);
}

TEST_F(GridYulFileTest, ValueFormatsAreOneNumberEach)
{
    struct
    {
        char const * text;
        int result;
    } const cases[] = {
        {"%8.2f", 1}, {"%g", 1},   {" %+-9.3E ", 1}, {"%f%%", 1}, {"", 1},      {nullptr, 1},  {"%s", 0},
        {"%d", 0},    {"%lf", 0},  {"%*f", 0},       {"%f%f", 0}, {"%", 0},     {"%%", 0},     {"x", 0},
        {"%5.f", 1},  {"%..f", 0}, {"%n", 0},        {"%5", 0},   {"%f %n", 0}, {"%.3.3f", 0}, {"%a", 0},
    };

    GridYulFile file;
    for (auto const & [text, result] : cases)
        EXPECT_EQ(file.setFormat(text), result) << (text != nullptr ? text : "null");
    EXPECT_EQ(file.setFormat("%8.2f          %s"), 1) << "the rest of a long text is cut off";

    file.setFormat("%8.2f");
    ASSERT_EQ(file.write(path().c_str(), 1, gridOn(LATLON)), 1);
    EXPECT_TRUE(octetsOf(path()).ends_with("\n    0.50\n    1.50\n    2.50\n    3.50\n    4.50\n    5.50\n"));
    Grid back;
    EXPECT_EQ(GridYulFile(path().c_str()).read(back), 1);
}

TEST_F(GridYulFileTest, ReadsValuesFromAFileOfTheirOwn)
{
    float const native[] = {1, 2, 3, 4, 5, 6};
    std::string octets = "skip";
    octets.append(reinterpret_cast<char const *>(native), sizeof native);
    auto const raw = write(octets, "raw");
    auto const text = write("skip1 2 3\n4 5 6", "text");

    struct
    {
        std::string line;
        std::vector<float> values; ///< empty: refused
    } const cases[] = {
        {raw + " B 4 1 1", {1, 2, 3, 4, 5, 6}},
        {raw + " B 4 0 1", {4, 5, 6, 1, 2, 3}},
        {raw + " B 4 1 0", {3, 2, 1, 6, 5, 4}},
        {text + " ASCII 4 -1 2", {6, 5, 4, 3, 2, 1}},
        {text + " A 4 1 1 more", {1, 2, 3, 4, 5, 6}},
        {raw + " B 5 1 1", {}},
        {raw + " B -4 1 1", {}},
        {raw + " B 99999999999999999999 1 1", {}},
        {raw + " B 4 1", {}},
        {text + " A 7 1 1", {}},
        {path("missing") + " B 0 1 1", {}},
        {"- A 0 1 1", {}},
        {"/dev/zero B 0 1 1", {}},
    };

    for (auto const & [line, values] : cases) {
        auto const name =
            write("YulGRID\n\n4-Height\n0 0 0 0 1 -9999 0 1\nLL 0 0 1 1 3 2\n" + line + "\nYulGRID");
        Grid grid;
        GridYulFile file(name.c_str());
        EXPECT_EQ(file.read(grid), values.empty() ? 0 : 1) << line;
        EXPECT_EQ(std::vector(grid.getValues().begin(), grid.getValues().end()), values) << line;
        EXPECT_EQ(grid.getVersion(), 3);
    }
}

TEST_F(GridYulFileTest, AVariableOfItsOwnKeepsItsUnits)
{
    auto grid = gridOn(LATLON);
    grid.setVar("Front[K km-1]");
    GridYulFile file;
    ASSERT_EQ(file.write(path().c_str(), 2, grid), 1);
    Grid back;
    ASSERT_EQ(file.read(path().c_str(), 0, back), 1);
    EXPECT_FALSE(back.getVar().isSet()) << back.getVar().getName();
    EXPECT_STREQ(back.getUnits(), "K_km-1");
}

} // namespace
