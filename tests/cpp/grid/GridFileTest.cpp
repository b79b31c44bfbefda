// Grid files of every form behind one front.
#include "grid/GridFile.h"

#include "core/Const.h"
#include "cpp/grid/NativeFiles.h"
#include "grid/Grids.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace Yul::test;
using Yul::Grid;
using Yul::GridFile;
using Yul::Grids;
using Yul::GridSpec;
using Yul::GridYulFile;

constexpr float MISS = Yul::Const::MISS;

class GridFileTest : public NativeFiles
{
};

TEST_F(GridFileTest, TheFormOfAFileIsKnownByItsFirstOctets)
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

TEST_F(GridFileTest, TheFrontReadsFilesOfEveryFormAsOne)
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

} // namespace
