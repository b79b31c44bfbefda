// Maps as they come out on the page, judged against the positions they are made of.
#include "plot/MapPlot.h"

#include "core/Resrc.h"
#include "core/Yul.h"
#include "cpp/graphics/Page.h"
#include "geo/DomainTool.h"
#include "plot/Clip.h"
#include "plot/Plot.h"
#include "plot/map/MapCanvas.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

using Path = std::vector<Point>;

struct MapCase
{
    char const * name;
    char const * domain;
};

/// Every projection; poles, horizons and seams inside the frame.
constexpr MapCase MAP_CASES[] = {
    {"latlon", "ll,0,0,181,91,2,2"},
    {"latlon, seam in land", "ll,0,100,181,91,2,2"},
    {"latlon beyond its turn", "ll:0:0,0,180,181,91,2,2"},
    {"latlon, more than a turn", "ll,10,0,301,71,2,2"},
    {"latlon, a part", "ll,50,10,61,41,0.5,0.5"},
    {"Mercator", "merc:0:20,0,20,201,161,2,2"},
    {"polar stereographic, north", "pstereo:90:0,90,0,101,101,2.4,2.4"},
    {"polar stereographic, south", "pstereo:-90:40,-90,0,101,101,2.4,2.4"},
    {"polar stereographic, all of it", "pstereo:90:0,90,0,101,101,20,20"},
    {"Lambert conformal, with its gap", "lambert:40:0:30:60,20,0,161,161,3,3"},
    {"Lambert conformal, south", "lambert:-40:140:-30:-60,-40,140,81,61,1.5,1.5"},
    {"Albers", "albers:40:-96:29.5:45.5,20,-96,161,121,1.7,1.7"},
    {"orthographic", "ortho:50:10,50,10,131,131,1,1"},
    {"orthographic, Pacific", "ortho:-20:-160,-20,-160,131,131,1,1"},
    {"orthographic, south pole", "ortho:-90:0,-90,0,131,131,1,1"},
    {"gnomonic", "gnom:90:0,90,0,201,201,2,2"},
    {"Mollweide", "moll:0:0,0,0,181,91,2.02,2.02"},
    {"Mollweide, seam in land", "moll:0:-80,0,-80,181,91,2.02,2.02"},
    {"Lambert azimuthal, far point at sea", "lambaz:52:10,52,10,131,131,2,2"},
    {"Lambert azimuthal, far point in land", "lambaz:-25:-60,-25,-60,131,131,2,2"},
    {"Lambert azimuthal, far point at a pole", "lambaz:90:0,90,0,131,131,2,2"},
    {"satellite", "sat:0:0,0,0,121,121,0.0026,0.0026"},
    {"satellite, ellipsoid from aside", "sat:e:40:-75,40,-75,121,121,0.0026,0.0026"},
    {"radar", "radial:51:7,51,7,101,101,0.1,0.1"},
};

class MapPlotTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Yul::setDatabasePath(YUL_DATABASE);
        Yul::resrc().clear();
        Yul::setMessageLevel("none");
    }

    void TearDown() override
    {
        Yul::resrc().clear();
        Yul::setMessageLevel(Yul::OUT2);
    }

    void open(char const * domain, char const * params = "")
    {
        Domain parsed;
        ASSERT_EQ(DomainTool::decode(domain, parsed), 1) << domain;
        ASSERT_EQ(plot.open((file.path + ",de=p" + params).c_str()), 1);
        ASSERT_EQ(plot.setDomain(parsed), 1) << domain;
    }

    /// The page so far; the plot is closed.
    [[nodiscard]] std::string page()
    {
        plot.close();
        return file.text();
    }

    /// Lines and areas in the plane of the domain.
    [[nodiscard]] std::vector<Path> drawn()
    {
        GTran const tran = plot.getGraph().getTransform(Plot::MAP_TRAN);
        std::vector<Path> found = test::paths(page());
        for (Path & path : found)
            for (Point & p : path)
                p = Point(tran.tranPlotWindowX(p.x), tran.tranPlotWindowY(p.y));
        return found;
    }

    test::PageFile file;
    Plot plot;
};

bool isInside(Path const & ring, float x, float y)
{
    bool odd = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Point const & p = ring[i];
        Point const & q = ring[(i + 1) % ring.size()];
        if ((p.y > y) != (q.y > y) && x < p.x + (y - p.y) / (q.y - p.y) * (q.x - p.x))
            odd = !odd;
    }
    return odd;
}

/// Land on a lattice of whole degrees; places near a coast are left open.
class LandLattice
{
public:
    LandLattice()
    {
        MapFile file;
        EXPECT_EQ(file.open("yul.map"), 1);
        int const layer = file.findLayer("land", 110);
        EarthPoints points;
        for (int line = 0; line < file.getHeader(layer).getNumLines(); ++line) {
            file.getLine(layer, line, points);
            Path ring;
            for (EarthPoint const & p : points.all()) {
                ring.emplace_back(p.lon, p.lat);
                has_point[indexOf(static_cast<int>(std::lround(p.lat)),
                                  static_cast<int>(std::lround(p.lon)))] = true;
            }
            EarthRange range;
            file.getRange(layer, line, range);
            for (int lat = static_cast<int>(std::floor(range.lat1)); lat <= static_cast<int>(range.lat2);
                 ++lat)
                for (int lon = static_cast<int>(std::floor(range.lon1)); lon <= static_cast<int>(range.lon2);
                     ++lon)
                    if (std::abs(lat) <= 90 &&
                        isInside(ring, static_cast<float>(lon), static_cast<float>(lat)))
                        land[indexOf(lat, lon)] = true;
        }
        for (int lon = -180; lon < 180; ++lon)
            land[indexOf(-90, lon)] = true;
    }

    /// 1 land, 0 sea all round; -1 near a coast.
    [[nodiscard]] int around(double lat, double lon) const
    {
        constexpr int REACH = 2;
        int const wide = std::abs(lat) > 75 ? 180 : static_cast<int>(REACH / std::cos(lat * Const::DRC)) + 1;
        int const row = static_cast<int>(std::lround(lat));
        int const column = static_cast<int>(std::lround(lon));
        bool const first = land[indexOf(row, column)];
        for (int i = std::max(row - REACH, -90); i <= std::min(row + REACH, 90); ++i)
            for (int j = column - wide; j <= column + wide; ++j)
                if (land[indexOf(i, j)] != first || has_point[indexOf(i, j)])
                    return -1;
        return first ? 1 : 0;
    }

private:
    static std::size_t indexOf(int lat, int lon)
    {
        return static_cast<std::size_t>((lat + 90) * 360 + ((lon % 360) + 360) % 360);
    }

    std::vector<bool> land = std::vector<bool>(181 * 360, false);
    std::vector<bool> has_point = land; // of an outline, of islands between the lattice's points too
};

TEST_F(MapPlotTest, LandIsFilledWhereLandIsInEveryProjection)
{
    LandLattice const land;
    for (auto const & [name, domain] : MAP_CASES) {
        open(domain);
        MapPlot map;
        map.setParam("none,land=black,detail=110");
        ASSERT_EQ(map.draw(plot), 1) << name;
        Domain const shown = plot.getDomain();
        std::vector<Path> const areas = drawn();
        std::vector<Rect> boxes;
        for (Path const & area : areas)
            boxes.push_back(test::bounds({area}));
        Rect const frame = shown.getLimits();
        int counts[2] = {0, 0};
        int wrong = 0;
        for (int k = 0; k < 71 * 71; ++k) {
            float const x = frame.x1 + frame.getWidth() * (static_cast<float>(k % 71) + 0.5F) / 71;
            float const y = frame.y1 + frame.getHeight() * (static_cast<float>(k / 71) + 0.5F) / 71;
            EarthPoint earth;
            if (shown.tran(Point(x, y), earth) == 0)
                continue;
            int const wanted = land.around(static_cast<double>(earth.lat), static_cast<double>(earth.lon));
            if (wanted < 0)
                continue;
            bool is_filled = false;
            for (std::size_t i = 0; i < areas.size() && !is_filled; ++i)
                is_filled = detail::isInside(boxes[i], x, y) && isInside(areas[i], x, y);
            counts[wanted] += 1;
            // what lies beyond a stereographic plane's limit has no image
            bool const is_beyond = shown.get().proj == Domain::PSTEREO && std::abs(earth.lat) > 73 &&
                                   (earth.lat > 0) != (shown.get().plat > 0);
            if (is_filled != (wanted == 1) && !is_beyond) {
                if (++wrong < 4)
                    ADD_FAILURE() << name << ": " << earth.lat << " " << earth.lon << " at " << x << " " << y;
            }
        }
        EXPECT_GT(counts[0] + counts[1], 300) << name;
        EXPECT_EQ(wrong, 0) << name;
    }
}

double degreesApart(EarthPoint const & a, EarthPoint const & b)
{
    return static_cast<double>(Domain::calcEarthDist(a, b)) / Domain::earth_rad / Const::DRC;
}

TEST_F(MapPlotTest, NoLineLeavesTheFrameOrJumpsAcrossTheMap)
{
    for (auto const & [name, domain] : MAP_CASES) {
        open(domain);
        MapPlot map;
        map.setParam("none,coast=black,country=black,lake=black,detail=110");
        ASSERT_EQ(map.draw(plot), 1) << name;
        Domain const shown = plot.getDomain();
        Rect const frame = shown.getLimits();
        float const slack = 1e-4F * frame.getWidth();
        int segments = 0;
        int wrong = 0;
        for (Path const & path : drawn()) {
            for (std::size_t i = 0; i + 1 < path.size(); ++i) {
                Point const & p = path[i];
                Point const & q = path[i + 1];
                ASSERT_TRUE(p.x >= frame.x1 - slack && p.x <= frame.x2 + slack && p.y >= frame.y1 - slack &&
                            p.y <= frame.y2 + slack)
                    << name;
                EarthPoint a;
                EarthPoint b;
                EarthPoint middle;
                if (shown.tran(p, a) == 0 || shown.tran(q, b) == 0)
                    continue; // on the very horizon
                bool const has_middle = shown.tran(Point((p.x + q.x) / 2, (p.y + q.y) / 2), middle) != 0;
                ++segments;
                // a segment of the map is no longer, and the plane between its ends is the earth between them
                bool const is_jump =
                    !has_middle || degreesApart(a, middle) > 10 || degreesApart(middle, b) > 10;
                wrong += is_jump ? 1 : 0;
                if (is_jump && wrong < 4)
                    ADD_FAILURE() << name << ": " << a.lat << " " << a.lon << " to " << b.lat << " " << b.lon;
            }
        }
        EXPECT_EQ(wrong, 0) << name;
        EXPECT_GT(segments, 50) << name;
    }
}

TEST_F(MapPlotTest, EveryLineInTheFrameIsRead)
{
    MapFile file_of_lines;
    ASSERT_EQ(file_of_lines.open("yul.map"), 1);
    int const layer = file_of_lines.findLayer("coast", 50);
    auto const chunks = file_of_lines.getChunks(layer);
    std::vector<std::uint32_t> all(chunks.size());
    std::iota(all.begin(), all.end(), 0U);
    detail::MapLines lines;
    ASSERT_EQ(file_of_lines.read(layer, all, lines), 1);
    std::vector<MapCase> cases(std::begin(MAP_CASES), std::end(MAP_CASES));
    cases.push_back({"an island", "ll,64.5,-18,21,21,0.02,0.02"});
    cases.push_back({"at the pole", "pstereo:90:0,83,-35,41,41,0.05,0.05"});
    cases.push_back({"on the seam", "merc:0:0,-17,180,41,41,0.2,0.2"});
    for (auto const & [name, text] : cases) {
        Domain domain;
        ASSERT_EQ(DomainTool::decode(text, domain), 1) << name;
        Rect const frame = domain.getLimits();
        detail::MapPlane const plane(domain, frame);
        detail::SeenCells const seen(plane, frame);
        std::vector<double> x;
        std::vector<double> y;
        plane.project(lines.lat, lines.lon, x, y);
        int num_seen = 0;
        for (std::size_t i = 0; i < lines.pieces.size(); ++i) {
            constexpr double BOX = detail::BOX_UNITS;
            detail::MapChunk const & c = chunks[i];
            bool const is_read = seen.meets(c.south / BOX, c.north / BOX, c.west / BOX, c.east / BOX);
            num_seen += is_read ? 1 : 0;
            for (std::size_t k = lines.pieces[i].begin; k < lines.pieces[i].end && !is_read; ++k)
                ASSERT_FALSE(detail::isInside(frame, static_cast<float>(x[k]), static_cast<float>(y[k])))
                    << name;
        }
        EXPECT_GT(num_seen, 0) << name;
    }
    // and little else
    Domain const small("ll,50,10,41,41,0.25,0.25");
    detail::SeenCells const seen(detail::MapPlane(small, small.getLimits()), small.getLimits());
    int num_cells = 0;
    for (int lat = -90; lat < 90; lat += 5)
        for (int lon = -180; lon < 180; lon += 5)
            num_cells += seen.meets(lat + 1, lat + 4, lon + 1, lon + 4) ? 1 : 0;
    EXPECT_LE(num_cells, 20);
}

TEST_F(MapPlotTest, LayersAreThoseThatWereNamed)
{
    MapPlot map;

    struct
    {
        char const * params;
        char const * layers; // those that are on, in alphabetical order
    } const cases[] = {
        {"", "coast country edge grid"},
        {"none", ""},
        {"none,land,sea=red", "land sea"},
        {"nocoast,nogrid", "country edge"},
        {"coast=off,river,nothing,notes", "country edge grid river"},
        {"none,state=none,road=red:wi=2", "road"},
        {"=,==,,none,no,detail,rank=,step=,coast=", "coast"},
    };

    for (auto const & [params, layers] : cases) {
        map.init();
        EXPECT_EQ(map.setParam(params), 1);
        std::string found;
        for (char const * const name :
             {"coast", "country", "edge", "grid", "lake", "land", "river", "road", "sea", "state", "water"})
            if (map.isLayer(name) != 0)
                found += (found.empty() ? "" : " ") + std::string(name);
        EXPECT_EQ(found, layers) << params;
    }
}

TEST_F(MapPlotTest, OrderOfDrawingIsNotThatOfNaming)
{
    open("ll,45,10,61,41,0.5,0.5");
    MapPlot map;
    map.setParam("none,coast=black,water=black,land=black,sea=black");
    ASSERT_EQ(map.drawLines(plot), 1);
    ASSERT_EQ(map.drawFill(plot), 1);
    std::string const text = page();
    // the first area is the sea: all of the frame
    EXPECT_GT(text.find("%%FA:"), text.rfind("%%PL:"));
    EXPECT_EQ(text.find("%%FA:4\n"), text.find("%%FA:"));
}

TEST_F(MapPlotTest, NothingIsDrawnWhereThereIsNothingToDraw)
{
    struct
    {
        char const * domain;
        char const * params; // of the plot
    } const cases[] = {
        {"ll,0,-30,11,11,0.1,0.1", ""},        // open sea
        {"ortho:50:10,50,10,131,131,1,1", ""}, // moved off the earth below
        {"ll,45,10,61,41,0.5,0.5", ",draw"},   // switched off below
        {"xy,0,0,11,11,1,1", ""},              // no map
    };

    for (auto const & [domain, params] : cases) {
        open(domain);
        if (std::string(domain).starts_with("ortho")) {
            DomainVal val = plot.getDomain().get();
            val.dx = val.dy = 1e-4F; // a frame so small that no line of the map meets it
            val.clat = 50;
            val.clon = 14;
            ASSERT_EQ(plot.setDomain(Domain(val)), 1);
        }
        if (*params != '\0')
            plot.setDrawing("-map");
        MapPlot map;
        map.setParam("none,coast=black,country=black");
        EXPECT_EQ(map.draw(plot), 1) << domain;
        EXPECT_TRUE(test::paths(page()).empty()) << domain;
    }
}

TEST_F(MapPlotTest, FailuresAreReportedAndHarmless)
{
    MapPlot map;
    EXPECT_EQ(map.draw(plot), 0); // not open
    open("ll,45,10,61,41,0.5,0.5");
    map.setFile("no such.map");
    EXPECT_EQ(map.draw(plot), 0);
    map.setFile(nullptr);
    map.setLayer("road", "black");
    EXPECT_EQ(map.draw(plot), 0); // the file has no such layer; the others are drawn
    constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(map.setDetail(-1) + map.setDetail(1001) + map.setRank(-1) + map.setRank(256), 0);
    EXPECT_EQ(map.setLayer(nullptr, "black") + map.setLayer("a b", "black"), 0);
    EXPECT_EQ(map.setLayer("land", static_cast<char const *>(nullptr)), 1);
    for (float const step : {NOT_A_NUMBER, INFINITY, 0.F, -5.F, 1e-30F, 1e30F}) {
        map.setSteps(step, step);
        map.drawLines(plot);
    }
    EXPECT_FALSE(test::paths(page()).empty());

    // domains of every kind of absurdity
    for (char const * const text :
         {"ll,0,0,11,11,1e-30,1e-30", "ll,0,0,11,11,1e30,1e30", "merc:0:0,89,0,2,2,1e-7,1e7",
          "sat:0:0:63.8,0,0,11,11,0.1,0.1", "pstereo:90:0:-90,90,0,11,11,1,1",
          "lambert:0:0:0:0,0,0,11,11,1,1", "gnom:0:0,0,0,11,11,1e6,1e6", "lambaz:0:0,0,180,11,11,1,1",
          "moll:0:0,89.99,180,2,2,0.001,0.001", "ortho:90:3600,90,0,11,11,100,100",
          "ll:0:3599,0,3599,11,11,300,10", "radial:-90:0,-90,0,11,11,30,30"}) {
        Domain domain;
        if (DomainTool::decode(text, domain) == 0 || plot.open((file.path + ",de=p").c_str()) == 0 ||
            plot.setDomain(domain) == 0)
            continue;
        MapPlot everything;
        everything.setParam("sea,land,water,river,lake,state");
        everything.draw(plot);
        for (Path const & path : test::paths(page()))
            for (Point const & p : path)
                ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << text;
    }
}

double areaOf(detail::Ring const & ring)
{
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        detail::RingPoint const & p = ring[i];
        detail::RingPoint const & q = ring[(i + 1) % ring.size()];
        twice += p.a * q.b - q.a * p.b;
    }
    return std::abs(twice) / 2;
}

TEST(RingCut, PartsOfACombAreRingsOfTheirOwn)
{
    // teeth upward, cut through them, along their tops and below
    detail::Ring comb = {{0, 0}};
    for (int tooth = 0; tooth < 5; ++tooth)
        for (auto const & [x, y] : {std::pair{0., 3.}, {1., 3.}, {1., 1.}, {2., 1.}})
            comb.push_back({2 * tooth + x, y});
    comb.push_back({10, 0});
    double const whole = areaOf(comb);

    struct
    {
        double at;
        std::size_t above;
        std::size_t below;
    } const cases[] = {{2, 5, 1}, {0.5, 1, 1}, {-1, 1, 0}, {4, 0, 1}};

    for (auto const & [at, above, below] : cases) {
        std::vector<detail::Ring> kept[2];
        for (bool const is_below : {false, true})
            detail::cutRing(
                comb, [&](detail::RingPoint p) { return is_below ? p.b <= at : p.b >= at; },
                [](detail::RingPoint p) { return p.a; },
                [](detail::RingPoint, detail::RingPoint, detail::Ring &) {}, kept[is_below ? 1 : 0]);
        EXPECT_EQ(kept[0].size(), above) << at;
        EXPECT_EQ(kept[1].size(), below) << at;
        double total = 0;
        for (auto const & side : kept)
            for (auto const & ring : side)
                total += areaOf(ring);
        EXPECT_NEAR(total, whole, 1e-9) << at;
    }
}

} // namespace
} // namespace Yul
