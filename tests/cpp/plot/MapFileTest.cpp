// Map files: what is written is read back, and nothing else is.
#include "plot/MapFile.h"

#include "core/Yul.h"
#include "cpp/Folder.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace Yul {
namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

MapFileHeader makeHeader(char const * name, int scale, int kind, int units)
{
    MapFileHeader header;
    EXPECT_TRUE(header.setName(name) && header.setScale(scale) && header.setKind(kind) &&
                header.setUnits(units));
    return header;
}

EarthPoints makePoints(std::vector<EarthPoint> const & points)
{
    EarthPoints list;
    list.all() = points;
    return list;
}

/// Round the earth and up and down, with the ends of all ranges in it.
EarthPoints longLine(int count)
{
    EarthPoints line;
    for (int i = 0; i < count; ++i) {
        double const t = 2.0 * i / (count - 1) - 1;
        line.add(
            EarthPoint(static_cast<float>(90 * std::sin(9 * t) * std::abs(t)), static_cast<float>(360 * t)));
    }
    line.add(EarthPoint(-90, -360));
    line.add(EarthPoint(90, 360));
    return line;
}

class MapFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Yul::setDatabasePath(YUL_DATABASE);
        Yul::setMessageLevel("none");
    }

    void TearDown() override { Yul::setMessageLevel(Yul::OUT2); }

    /// Two layers: long and short lines, areas.
    [[nodiscard]] MapFile makeFile() const
    {
        MapFile file;
        EXPECT_TRUE(file.setSource("Drawn by hand.\nFree for all."));
        EXPECT_TRUE(file.addLayer(makeHeader("coast", 110, MapFileHeader::LINE, 1000)));
        EXPECT_TRUE(file.addLine(longLine(200), 0));
        EXPECT_TRUE(file.addLine(makePoints({{10, 20}, {11, 21}}), 255));
        EXPECT_TRUE(file.addLine(longLine(63), 3)); // exactly one piece
        EXPECT_TRUE(file.addLayer(makeHeader("lake", 50, MapFileHeader::AREA, 10)));
        EXPECT_TRUE(file.addLine(makePoints({{-1, -1}, {-1, 1}, {2, 0.26F}}), 7));
        EXPECT_TRUE(file.addLayer(makeHeader("empty", 50, MapFileHeader::LINE, 1)));
        return file;
    }

    test::Folder folder;
    std::string const name = folder.of("coast.map");
};

TEST_F(MapFileTest, WhatIsWrittenIsReadBackToHalfAStep)
{
    MapFile made = makeFile();
    ASSERT_EQ(made.write(name.c_str()), 1);
    MapFile file;
    ASSERT_EQ(file.open(name.c_str()), 1);
    EXPECT_STREQ(file.getSource(), "Drawn by hand.\nFree for all.");
    ASSERT_EQ(file.getNumLayers(), 3);
    EXPECT_STREQ(file.getHeader(0).getName(), "coast");
    EXPECT_EQ(file.getHeader(0).getNumLines(), 3);
    EXPECT_EQ(file.getHeader(0).getNumPoints(), 202 + 2 + 65);
    EXPECT_EQ(file.getHeader(1).getKind(), MapFileHeader::AREA);
    EXPECT_EQ(file.getHeader(2).getNumLines(), 0);
    EXPECT_FALSE(file.getHeader(2).getRange().isSet());

    std::vector<std::tuple<int, int, EarthPoints, int>> const lines = {
        {0, 0, longLine(200), 0},
        {0, 2, longLine(63), 3},
        {0, 1, makePoints({{10, 20}, {11, 21}}), 255},
        {1, 0, makePoints({{-1, -1}, {-1, 1}, {2, 0.26F}}), 7},
    };
    for (auto const & [layer, line, wanted, rank] : lines) {
        EarthPoints points;
        EarthRange range;
        ASSERT_EQ(file.getLine(layer, line, points), 1) << layer << line;
        ASSERT_EQ(file.getRange(layer, line, range), 1);
        ASSERT_EQ(points.getNum(), wanted.getNum());
        EXPECT_EQ(file.getRank(layer, line), rank);
        double const half = 0.5 / file.getHeader(layer).getUnits() + 2e-5; // and a float's own rounding
        for (std::size_t i = 0; i < points.all().size(); ++i) {
            EarthPoint const & p = points.all()[i];
            EXPECT_NEAR(p.lat, wanted.all()[i].lat, half) << line << " " << i;
            EXPECT_NEAR(p.lon, wanted.all()[i].lon, half) << line << " " << i;
            EXPECT_TRUE(p.lat >= range.lat1 && p.lat <= range.lat2 && p.lon >= range.lon1 &&
                        p.lon <= range.lon2);
        }
    }
}

TEST_F(MapFileTest, RefusalsLeaveNoTrace)
{
    MapFileHeader header;
    for (char const * const bad : {"", "sixteen_letters_", "with blank", "a,b", "a=b", "\xC3\xA9"})
        EXPECT_EQ(header.setName(bad), 0) << bad;
    EXPECT_EQ(header.setName(nullptr), 0);
    EXPECT_EQ(header.setScale(0) + header.setScale(1001) + header.setKind(2) + header.setUnits(0) +
                  header.setUnits(10001),
              0);
    MapFile file;
    EXPECT_EQ(file.addLine(longLine(5), 0), 0); // no layer
    EXPECT_EQ(file.write(name.c_str()), 0);
    EXPECT_EQ(file.addLayer(header), 0); // no name
    ASSERT_EQ(file.addLayer(makeHeader("road", 1, MapFileHeader::AREA, 100)), 1);
    std::vector<std::pair<EarthPoints, int>> const bad = {
        {makePoints({{0, 0}, {1, 1}}), 0},
        {makePoints({{0, 0}, {1, 1}, {91, 0}}), 0},
        {makePoints({{0, 0}, {1, 1}, {0, 361}}), 0},
        {makePoints({{0, 0}, {1, 1}, {NOT_A_NUMBER, 0}}), 0},
        {makePoints({{0, 0}, {1, 1}, {0, -INFINITY}}), 0},
        {makePoints({{0, 0}, {1, 1}, {}}), 0},
        {makePoints({{0, 0}, {1, 1}, {2, 0}}), 256},
        {makePoints({{0, 0}, {1, 1}, {2, 0}}), -1},
        {longLine(MapFile::MAX_AREA_POINTS), 0},
        {EarthPoints(), 0},
    };
    for (auto const & [points, rank] : bad)
        EXPECT_EQ(file.addLine(points, rank), 0) << points.getNum() << " " << rank;
    EXPECT_EQ(file.getHeader(0).getNumLines(), 0);
    EXPECT_EQ(file.setSource("one\n\ntwo"), 0);
    EXPECT_EQ(file.setSource(std::string(4001, 'x').c_str()), 0);
    EXPECT_EQ(file.write(nullptr), 0);
    EXPECT_EQ(file.write("/nowhere/there/is.map"), 0);
    EarthPoints points;
    EarthRange range;
    for (auto const & [layer, line] : {std::pair{-1, 0}, {0, -1}, {0, 0}, {1, 0}, {INT_MAX, INT_MIN}}) {
        EXPECT_EQ(file.getLine(layer, line, points), 0);
        EXPECT_EQ(file.getRange(layer, line, range), 0);
        EXPECT_EQ(file.getRank(layer, line), Const::MISS);
    }
    // a file that is read takes nothing more
    ASSERT_EQ(makeFile().write(name.c_str()), 1);
    ASSERT_EQ(file.open(name.c_str()), 1);
    EXPECT_EQ(
        file.addLayer(makeHeader("more", 1, 0, 1)) + file.addLine(longLine(5), 0) + file.setSource("new"), 0);
    EXPECT_EQ(file.open("no such.map"), 0);
    EXPECT_EQ(file.open(nullptr) + file.open("") + file.open("-") + file.open("/"), 0);
    EXPECT_EQ(file.isOpen() ? 1 : file.getNumLayers(), 0);
    std::remove(name.c_str());
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    EXPECT_EQ(file.open(name.c_str()), 0); // and does not wait for a writer
}

/// Reads all that the file holds; every position that comes out is one.
void readAll(char const * name)
{
    MapFile file;
    if (file.open(name) == 0) {
        EXPECT_EQ(file.getNumLayers(), 0);
        return;
    }
    EarthPoints points;
    for (int layer = 0; layer < file.getNumLayers(); ++layer) {
        for (int line = 0; line < file.getHeader(layer).getNumLines(); ++line) {
            file.getLine(layer, line, points);
            for (EarthPoint const & p : points.all()) {
                ASSERT_TRUE(std::abs(p.lat) <= 90 && std::abs(p.lon) <= 360);
            }
        }
    }
}

TEST_F(MapFileTest, CutAndDamagedFilesDoNoHarm)
{
    ASSERT_EQ(makeFile().write(name.c_str()), 1);
    std::string const whole = test::octetsOf(name);
    for (std::size_t size = 0; size < whole.size(); size += size < 300 ? 1 : 7) {
        folder.write("coast.map", whole.substr(0, size));
        MapFile file;
        EXPECT_EQ(file.open(name.c_str()), 0) << size; // the data of the last layer are not all there
    }
    for (std::size_t i = 0; i < whole.size(); i += i < 400 ? 1 : 5) {
        for (int const bits : {1, 0x80, 0xff}) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ bits);
            folder.write("coast.map", damaged);
            readAll(name.c_str());
        }
    }
}

/// True when an area of the layer holds the place.
bool isInArea(MapFile & file, int layer, double lat, double lon)
{
    EarthPoints points;
    bool is_in = false;
    for (int line = 0; line < file.getHeader(layer).getNumLines() && !is_in; ++line) {
        EarthRange range;
        file.getRange(layer, line, range);
        for (double const x : {lon - 360, lon, lon + 360}) {
            if (lat < range.lat1 || lat > range.lat2 || x < range.lon1 || x > range.lon2)
                continue;
            file.getLine(layer, line, points);
            auto const & ring = points.all();
            bool odd = false;
            for (std::size_t i = 0; i < ring.size(); ++i) {
                EarthPoint const & p = ring[i];
                EarthPoint const & q = ring[(i + 1) % ring.size()];
                if ((p.lat > lat) != (q.lat > lat) &&
                    x < p.lon + (lat - p.lat) / (q.lat - p.lat) * (q.lon - p.lon))
                    odd = !odd;
            }
            is_in = is_in || odd;
        }
    }
    return is_in;
}

TEST_F(MapFileTest, StandardMapHasLandWhereLandIs)
{
    struct
    {
        char const * place;
        double lat;
        double lon;
        bool is_land;
    } const places[] = {
        {"Paris", 48.85, 2.35, true},
        {"Atlantic", 0, -30, false},
        {"Caspian Sea, a hole in the land", 42, 51, false},
        {"Chukotka on the 180th meridian", 68.5, 180, true},
        {"east of it", 67, -179.5, true},
        {"south pole", -89.95, 100, true},
        {"Antarctica on the 180th meridian", -86, 180, true},
        {"north pole", 89, 0, false},
        {"Australia", -25, 135, true},
        {"Weddell Sea", -70, -30, false},
        {"Greenland", 75, -40, true},
    };

    MapFile file;
    ASSERT_EQ(file.open("yul.map"), 1); // from the database directory
    EXPECT_NE(std::string(file.getSource()).find("Natural Earth"), std::string::npos);
    for (int const scale : {110, 50}) {
        for (char const * const name : {"coast", "country", "state", "river", "lake", "land"}) {
            int const layer = file.findLayer(name, scale);
            ASSERT_GE(layer, 0) << name;
            EXPECT_EQ(file.getHeader(layer).getScale(), scale);
            EXPECT_GT(file.getHeader(layer).getNumLines(), 10);
        }
        for (auto const & [place, lat, lon, is_land] : places)
            EXPECT_EQ(isInArea(file, file.findLayer("land", scale), lat, lon), is_land)
                << place << " " << scale;
    }
    EXPECT_EQ(file.findLayer("coast", 75), file.findLayer("coast", 110));
    EXPECT_EQ(file.findLayer("coast", -5), file.findLayer("coast", 50));
    EXPECT_EQ(file.findLayer("Coast", 50), -1);
    EXPECT_EQ(file.findLayer(nullptr, 50), -1);
}

} // namespace
} // namespace Yul
