// The library's own grid files: what becomes of damaged ones, of absurd ones and of a full disk.
#include "core/Const.h"
#include "cpp/grid/NativeFiles.h"
#include "grid/GridYulFile.h"

#include <cmath>
#include <csignal>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using namespace Yul::test;
using Yul::Grid;
using Yul::GridSpec;
using Yul::GridYulFile;

constexpr float MISS = Yul::Const::MISS;

class GridYulFaultTest : public NativeFiles
{
};

TEST_F(GridYulFaultTest, AFileThatIsCutAnywhereGivesNothing)
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

TEST_F(GridYulFaultTest, AbsurdFilesAreRefused)
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

TEST_F(GridYulFaultTest, AFaultKeepsWhatWasSetBeforeIt)
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

TEST_F(GridYulFaultTest, NothingIsWrittenThatCannotBeReadBack)
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

TEST_F(GridYulFaultTest, LostOctetsAreReported)
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

TEST_F(GridYulFaultTest, AFailureLeavesNoRoomTaken)
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

TEST_F(GridYulFaultTest, OpensOnlyWhatItKnows)
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

} // namespace
