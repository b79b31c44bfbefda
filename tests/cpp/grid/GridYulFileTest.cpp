// The library's own grid files: every line and octet of them, and what becomes of damaged ones.
#include "grid/GridYulFile.h"

#include "core/Const.h"
#include "core/Format.h"
#include "core/Yul.h"
#include "geo/DomainTool.h"
#include "grid/GridFile.h"
#include "grid/Grids.h"
#include "grid/native/ByteOrder.h"
#include "grid/native/Values.h"

#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using Yul::Grid;
using Yul::GridFile;
using Yul::Grids;
using Yul::GridSpec;
using Yul::GridYulFile;

constexpr float MISS = Yul::Const::MISS;

/// Files in a folder of the test's own, and silence while it runs.
class GridYulFileTest : public testing::Test
{
protected:
    GridYulFileTest() { Yul::Yul::setMessageLevel(Yul::Yul::ERROR); }

    ~GridYulFileTest() override
    {
        Yul::Yul::setMessageLevel(Yul::Yul::OUT2);
        std::filesystem::remove_all(folder);
    }

    std::string write(std::string const & octets, char const * name = "file") const
    {
        std::ofstream(folder / name, std::ios::binary) << octets;
        return folder / name;
    }

    std::string path(char const * name = "file") const { return folder / name; }

    static std::string octetsOf(std::string const & name)
    {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string written(Grid const & grid, int version, int format) const
    {
        GridYulFile file;
        file.setVer(version);
        EXPECT_EQ(file.write(path().c_str(), format, grid), 1);
        EXPECT_EQ(file.close(), 1);
        return octetsOf(path());
    }

private:
    std::filesystem::path folder = [] {
        std::string name = std::filesystem::temp_directory_path() / "yul-grid-XXXXXX";
        return std::filesystem::path(mkdtemp(name.data()));
    }();
};

Grid gridOn(char const * domain, int nx = 3, int ny = 2)
{
    Grid grid(nx, ny);
    for (int i = 0; i < nx * ny; ++i)
        grid.setValue(i % nx, i / nx, static_cast<float>(i) + 0.5F);
    grid.setDomain(Yul::Domain(domain));
    grid.setDatim("12Z 14 NOV 2026");
    grid.setDate(Yul::Date(2026, 11, 14, 12, 0, 0));
    grid.setInfo("Wind [m s-1]");
    grid.setVar("UGRD");
    grid.setLevel("500mb");
    grid.setForeTime("24h");
    grid.setType(5);
    grid.setSource(7);
    grid.setModel(96);
    grid.setVersion(2);
    return grid;
}

std::string bigEndian(std::vector<float> const & values)
{
    std::string octets;
    for (float const value : values) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        for (int shift = 24; shift >= 0; shift -= 8)
            octets += static_cast<char>(bits >> shift & 0xFFU);
    }
    return octets;
}

constexpr char const * LATLON = "ll:10:20,45,10,3,2,5,2.5";
std::string const TEXT_VALUES =
    "5.00000000e-01\n1.50000000e+00\n2.50000000e+00\n3.50000000e+00\n4.50000000e+00\n5.50000000e+00\n";
std::string const BINARY_VALUES = bigEndian({0.5F, 1.5F, 2.5F, 3.5F, 4.5F, 5.5F}) + '\n';
std::string const DATE_LINE = "12Z 14 NOV 2026\n";
std::string const IDENTIFICATION = "7 2 96 5 100 500 24 1002002:m_s-1\n";

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

TEST_F(GridYulFileTest, AFileThatIsCutAnywhereGivesNothing)
{
    struct
    {
        int version;
        int format;
    } const cases[] = {{4, 1}, {4, 2}, {3, 1}, {3, 2}};

    for (auto const & [version, format] : cases) {
        auto const octets = written(gridOn("lamb:40:-95:30:60,40,-100,3,2,1,1"), version, format);
        for (std::size_t size = 0; size < octets.size(); ++size) {
            Grid grid;
            GridYulFile file(write(octets.substr(0, size)).c_str());
            ASSERT_EQ(file.read(grid), 0) << size << " octets of\n" << octets;
            ASSERT_FALSE(grid.isData());
            ASSERT_EQ(file.read(grid), 0);
        }
        Grid grid;
        EXPECT_EQ(GridYulFile(write(octets).c_str()).read(grid), 1);
    }
}

TEST_F(GridYulFileTest, AbsurdFilesAreRefused)
{
    std::string const head = "YulGRID4B\n" + DATE_LINE + "Height\n" + IDENTIFICATION;
    std::string const old_head = "YulGRID3\n" + DATE_LINE + "Height\n" + IDENTIFICATION;
    std::string const cases[] = {
        "",
        "\n",
        "yulgrid4\n",
        std::string(300, '\0'),
        "YulGRIDB\n" + DATE_LINE + "Height\n" + IDENTIFICATION + "ll,0,0,3,2,1,1\n" + TEXT_VALUES,
        "YulGRID5\n" + DATE_LINE + "Height\n" + IDENTIFICATION + "ll,0,0,3,2,1,1\n" + TEXT_VALUES,
        "YulGRID0\n" + DATE_LINE + "Height\nLL 0 0 1 1 3 2\n" + TEXT_VALUES,
        head + "ll,0,0,46341,46341,1,1\n" + BINARY_VALUES,
        head + "ll,0,0,65536,65536,1,1\n" + BINARY_VALUES,
        head + "ll,0,0,30000,30000,1,1\n" + BINARY_VALUES,
        head + "ll,0,0,-3,-2,1,1\n" + BINARY_VALUES,
        head + "ll,0,0,0,2,1,1\n" + BINARY_VALUES,
        head + "ll,0,0,4294967299,2,1,1\n" + BINARY_VALUES,
        head + "ll,0,0\n" + BINARY_VALUES,
        head + "no such region\n" + BINARY_VALUES,
        head + "ll,0,0,3,2,1,1\n" + BINARY_VALUES.substr(0, 24) + 'x',
        old_head + "LL 0 0 1 1 30000 30000\n" + TEXT_VALUES,
        old_head + "LL 0 0 1 1 3\n" + TEXT_VALUES,
        old_head + "LL 0 0 1 x 3 2\n" + TEXT_VALUES,
        old_head + "LL 0 0 1 1 3 2\n1 2 3 four 5 6\n",
        old_head + "LL 0 0 1 1 3 2\n1 2 3 4 5 6x\n",
        old_head + "LL 0 0 1 1 3 2\n1 2 3 4 5\n",
    };
    for (auto const & octets : cases) {
        Grid grid;
        EXPECT_EQ(GridYulFile(write(octets).c_str()).read(grid), 0) << octets.substr(0, 200);
        EXPECT_FALSE(grid.isData());
    }
    Grid grid;
    EXPECT_EQ(GridYulFile("/dev/zero").read(grid), 0);
    EXPECT_EQ(GridYulFile("/").isOpen(), false);
}

TEST_F(GridYulFileTest, AFaultKeepsWhatWasSetBeforeIt)
{
    auto grid = gridOn(LATLON);
    EXPECT_EQ(GridYulFile(write("no grid\n").c_str()).read(grid), 0);
    EXPECT_STREQ(grid.getInfo(), "Wind [m s-1]");
    EXPECT_TRUE(grid.isData());
    EXPECT_EQ(GridYulFile(write("YulGRID4\n13Z 14 NOV 2026\nother\nx x x\nll,0,0,9,9,1,1\n1 2\n").c_str())
                  .read(grid),
              0);
    EXPECT_STREQ(grid.getInfo(), "other");
    EXPECT_EQ(grid.getDate().getHour(), 13);
    EXPECT_EQ(grid.getLevel().getValue(), 500) << "a malformed line 4 leaves the level";
    EXPECT_EQ(grid.getNx(), 9);
    EXPECT_FALSE(grid.isData());

    GridYulFile file(write("YulGRID1\n\n\nLL 0 0 1 1 3 2\n" + TEXT_VALUES).c_str());
    EXPECT_EQ(file.read(GridSpec("UGRD,500mb"), grid), 0)
        << "what a grid had before is not what the header says";
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

TEST_F(GridYulFileTest, NothingIsWrittenThatCannotBeReadBack)
{
    auto no_values = gridOn(LATLON);
    no_values.freeData();
    auto no_domain = gridOn(LATLON);
    no_domain.setDomain(Yul::Domain());
    auto const other_size = gridOn(LATLON, 4, 4);
    auto const too_long = gridOn("ll,1e37,1e37,3,2,1e37,1e37");
    auto no_spacing = gridOn(LATLON);
    Yul::DomainVal domain = no_spacing.getDomainVal();
    domain.dx = MISS;
    no_spacing.setDomain(domain);
    auto not_finite = gridOn(LATLON);
    domain = not_finite.getDomainVal();
    domain.dy = INFINITY;
    not_finite.setDomain(domain);
    for (auto const & grid : {no_values, no_domain, other_size, too_long, no_spacing, not_finite}) {
        GridYulFile file;
        EXPECT_EQ(file.write(path().c_str(), 2, grid), 0);
        EXPECT_EQ(file.close(), 1);
        EXPECT_EQ(octetsOf(path()), "");
    }
}

TEST_F(GridYulFileTest, LostOctetsAreReported)
{
    Grid large(300, 300);
    large.setDomain(Yul::Domain("ll,0,0,300,300,1,0.5"));
    for (auto const * name : {"/dev/full", "|exec 0<&-; exit 0"})
        for (int const format : {1, 2})
            for (auto const & grid : {gridOn(LATLON), large}) {
                GridYulFile file(name, 1, format);
                ASSERT_TRUE(file.isOpen());
                int result = 1;
                for (int i = 0; i < 2000 && result == 1; ++i) // a pipe takes some before it is found closed
                    result = file.write(grid);
                EXPECT_EQ(result, 0) << name << format;
                EXPECT_EQ(file.close(), 0) << name << format;
            }
    GridYulFile file(path().c_str(), 1, 2);
    EXPECT_EQ(file.write(gridOn(LATLON)), 1);
    EXPECT_TRUE(octetsOf(path()).ends_with(BINARY_VALUES)) << "a grid is there when write returns";
}

TEST_F(GridYulFileTest, AFailureLeavesNoRoomTaken)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit const small{100000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    Grid large(400, 400);
    large.setDomain(Yul::Domain("ll,0,0,400,400,0.5,0.5"));
    GridYulFile file;
    EXPECT_EQ(file.write(path().c_str(), 2, large), 0);
    EXPECT_EQ(file.close(), 0);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    struct stat info
    {
    };

    ASSERT_EQ(stat(path().c_str(), &info), 0);
    EXPECT_LE(info.st_blocks * 512, 200000); // what was asked for is four times as much
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

TEST_F(GridYulFileTest, OpensOnlyWhatItKnows)
{
    struct
    {
        int mode;
        int format;
        int result;
    } const cases[] = {{0, 0, 1}, {0, 2, 1},  {0, 3, 1},  {0, 4, 0},
                       {1, 0, 1}, {1, 1, 1},  {1, 2, 1},  {1, 3, 0},
                       {2, 1, 0}, {-1, 0, 0}, {1, -1, 0}, {0, std::numeric_limits<int>::min(), 0}};

    auto const name = write("YulGRID");
    GridYulFile file;
    for (auto const & [mode, format, result] : cases)
        EXPECT_EQ(file.open(name.c_str(), mode, format), result) << mode << ' ' << format;
    Grid grid = gridOn(LATLON);
    EXPECT_EQ(file.open(nullptr), 0);
    EXPECT_EQ(file.read(grid), 0);
    EXPECT_EQ(file.open(name.c_str(), 1), 1);
    EXPECT_EQ(file.read(grid), 0) << "it was opened for writing";
    EXPECT_EQ(file.open(name.c_str(), 0), 1);
    EXPECT_EQ(file.write(grid), 0) << "it was opened for reading";
    for (int const version : {0, 5, -9999})
        EXPECT_EQ(file.setVer(version), 0);
    EXPECT_EQ(file.setVer(3), 1);
    EXPECT_EQ(file.open(name.c_str(), 1, 1), 1);
    EXPECT_EQ(file.getVer(), 3);
}

TEST_F(GridYulFileTest, TheFormOfAFileIsKnownByItsFirstOctets)
{
    std::string const nuls(100, '\0');

    struct
    {
        std::string octets;
        int type;
    } const cases[] = {
        {"YulGRID4\n", 1},
        {" YulGRID4\n", 0},
        {"CDF\1", 3},
        {" CDF\1", 0},
        {"GRIB", 4},
        {"GGRIB", 4},
        {nuls + "GRIB", 4},
        {nuls + std::string(96, 'x') + "GRIB", 4},
        {nuls + std::string(97, 'x') + "GRIB", 0},
        {"YulGRI", 0},
        {"", 0},
    };

    for (auto const & [octets, type] : cases)
        EXPECT_EQ(GridFile::checkType(write(octets).c_str()), type) << octets;
    EXPECT_EQ(GridFile::checkType("-"), 1);
    EXPECT_EQ(GridFile::checkType(nullptr), 0);
    EXPECT_EQ(GridFile::checkType(path("missing").c_str()), 0);
    EXPECT_FALSE(GridFile(write("CDF\1").c_str()).isOpen());
}

TEST_F(GridYulFileTest, TheFrontReadsFilesOfEveryFormAsOne)
{
    auto const grid = gridOn("ll,45,10,3,2,5,2.5");
    EXPECT_EQ(GridFile().write(path("a").c_str(), GridYulFile::BINARY, grid), 1);
    EXPECT_EQ(GridFile().write(path("b").c_str(), GridFile::GRIB, grid), 1);
    EXPECT_EQ(GridFile().write(path("c").c_str(), GridYulFile::TEXT, grid), 1);
    Yul::Filename names;
    for (auto const * name : {"a", "missing", "b", "c"})
        names.add(path(name).c_str());

    GridFile file(names);
    Grid back;
    file.setMissValue(1.5F);
    for (int const type : {GridFile::YUL, GridFile::GRIB, GridFile::YUL}) {
        EXPECT_EQ(file.peek(back), 1);
        EXPECT_EQ(file.readHdr(back), 1);
        EXPECT_EQ(file.getType(), type);
        EXPECT_FALSE(back.isData());
        EXPECT_EQ(file.readData(back), 1);
        EXPECT_NEAR(back.getValue(2, 1), 5.5F, 1e-3);
        EXPECT_EQ(back.getValue(1, 0), MISS);
        EXPECT_STREQ(back.getVar().getName(), "UGRD");
    }
    EXPECT_EQ(file.read(back), 0);
    EXPECT_EQ(file.rewind(), 1);
    EXPECT_EQ(file.next(), 1);
    EXPECT_EQ(file.readHdr(back), 1);
    EXPECT_EQ(file.readHdr(back), 1) << "the values of the one before are passed over";
    EXPECT_EQ(back.getVersion(), 4);
    EXPECT_EQ(file.rewind(), 1);
    Grids grids;
    EXPECT_EQ(file.read(grids), 1);
    EXPECT_EQ(grids.getNum(), 3);
    EXPECT_EQ(file.rewind(), 1);
    EXPECT_EQ(file.read(GridSpec("UGRD,,,1:1"), back), 1);
    EXPECT_EQ(file.setMissValue(NAN), 0);
}

TEST(NativeByteOrder, EveryFormTurnsOctetsAlike)
{
    using namespace Yul::detail::native;
    if (swapWide() == nullptr)
        GTEST_SKIP() << "this processor has no AVX2";
    std::vector<float> from(100);
    std::mt19937 random(7);
    for (auto & value : from) {
        auto const bits = static_cast<std::uint32_t>(random());
        std::memcpy(&value, &bits, sizeof value);
    }
    for (std::size_t start = 0; start < 9; ++start)
        for (std::size_t count = 0; count < 60; ++count) {
            std::vector<float> plain(101, 1.0F);
            std::vector<float> wide(101, 1.0F);
            swapPlain(from.data() + start, plain.data() + start, count);
            swapWide()(from.data() + start, wide.data() + start, count);
            ASSERT_EQ(std::memcmp(plain.data(), wide.data(), plain.size() * sizeof(float)), 0)
                << start << ' ' << count;
        }
}

} // namespace
