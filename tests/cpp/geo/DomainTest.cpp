#include "geo/Domain.h"

#include "geo/DomainTool.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr float MISS = Const::MISS;
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

/// Puts the earth back as it was.
class SameEarth
{
public:
    ~SameEarth() { std::tie(Domain::earth_rad, Domain::earth_maj, Domain::earth_min) = before; }

private:
    std::tuple<double, double, double> before{Domain::earth_rad, Domain::earth_maj, Domain::earth_min};
};

constexpr char const * MAPS[] = {
    "ll:0:-95,40,-95,101,81,1",
    "ll:0:175,-20,175,101,81,1",
    "ps:90:-95,60,-95,101,81,1",
    "ps:-90:20:-70,-60,20,101,81,1",
    "merc,10,-150,101,81,1",
    "merc:e:0:-150:20,10,-150,101,81,1",
    "lamb:40:-95:30:60,40,-95,101,81,1",
    "lamb:-30:170:-25:-25,-30,170,101,81,1",
    "lamb:-30:20:30:60,50,20,101,81,1", // the cone stands on the other pole
    "lambaz:52:10,52,10,101,81,1",
    "albers:23:-96:29.5:45.5,40,-96,101,81,1",
    "albers:-30:170:-18:-36,-30,170,101,81,1",
    "ortho:45:-95,45,-95,101,81,1",
    "gnom:-60:175,-60,175,101,81,1",
    "moll:0:175,10,175,101,81,1",
    "sat:0:-75,0,-75,101,81,.001",
    "sat:e:0:140.7,10,140,101,81,.001",
    "sat:e:30:10:100,30,10,101,81,.001",
    "radial,35,-97,101,81,.02",
};

constexpr char const * DIAGRAMS[] = {
    "xy,50,20,101,81,1",   "xp,500,20,101,81,1", "cat,50,20,101,81,1",     "pixel,50,20,101,81,1",
    "skewt,500,-20",       "ema,500,-20,5,5,1",  "xlogp,500,20,101,81,.1", "hodo,20,30,101,81,1",
    "rteph,500,-20,5,5,1", "teph,500,-20,5,5,1",
};

/// Positions about the domain's centre, over some thousand kilometres.
std::vector<EarthPoint> latticeAbout(Domain const & domain, float reach)
{
    std::vector<EarthPoint> lattice;
    for (float lat = -reach; lat <= reach; lat += reach / 7)
        for (float lon = -reach; lon <= reach; lon += reach / 9)
            if (std::fabs(domain.get().clat + lat) < 89)
                lattice.emplace_back(domain.get().clat + lat, domain.get().clon + lon);
    return lattice;
}

double degreesApart(EarthPoint const & a, EarthPoint const & b)
{
    return static_cast<double>(Domain::calcEarthDist(a, b)) / Domain::earth_rad * Const::RDC;
}

TEST(Domain, PlaneAndGridLeadBackToThePosition)
{
    for (char const * text : MAPS) {
        Domain const domain(text);
        for (EarthPoint const & earth : latticeAbout(domain, 25)) {
            Point point;
            GridPoint grid;
            EarthPoint back;
            ASSERT_EQ(domain.tran(earth, point), 1) << text;
            ASSERT_EQ(domain.tran(point, back), 1) << text;
            EXPECT_LT(degreesApart(earth, back), 2e-5) << text;
            EXPECT_TRUE(back.lon >= -180 && back.lon <= 180) << text;
            ASSERT_EQ(domain.tran(earth, grid), 1) << text;
            ASSERT_EQ(domain.tran(grid, back), 1) << text;
            EXPECT_LT(degreesApart(earth, back), 1e-4) << text;
        }
    }
    for (char const * text : DIAGRAMS) {
        Domain const domain(text);
        for (float p : {1000.F, 850.F, 500.F, 100.F, 10.F})
            for (float t : {-80.F, -20.F, 0.F, 30.F}) {
                Point point;
                EarthPoint back;
                ASSERT_EQ(domain.tran(EarthPoint(p, t), point), 1) << text;
                ASSERT_EQ(domain.tran(point, back), 1) << text;
                EXPECT_NEAR(back.lat, p, p * 3e-6) << text;
                EXPECT_NEAR(back.lon, t, 1e-4) << text;
            }
    }
}

TEST(Domain, ListsGiveTheBitsOfSinglePoints)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> lats(-100, 100);
    std::uniform_real_distribution<float> lons(-400, 400);
    std::vector<std::string> texts(std::begin(MAPS), std::end(MAPS));
    texts.insert(texts.end(), std::begin(DIAGRAMS), std::end(DIAGRAMS));
    for (std::string const & text : texts) {
        Domain const domain(text.c_str());
        EarthPoints earth;
        for (EarthPoint const & special : {EarthPoint(), EarthPoint(NOT_A_NUMBER, 0), EarthPoint(0, INFINITE),
                                           EarthPoint(90, 7), EarthPoint(-90, -7), EarthPoint(0, 3601)})
            earth.add(special);
        for (int i = 0; i < 1000; ++i)
            earth.add(EarthPoint(lats(random), lons(random)));
        Points points;
        EarthPoints back;
        GridPoints grid;
        domain.tran(earth, points);
        domain.tran(points, back);
        domain.tran(earth, grid);
        ASSERT_EQ(points.getNum(), earth.getNum());
        for (int i = 0; i < earth.getNum(); ++i) {
            Point point(1, 1);
            EarthPoint position(1, 1);
            GridPoint cell(1, 1);
            EXPECT_EQ(domain.tran(earth.get(i), point), points.get(i).isSet()) << text;
            EXPECT_EQ(domain.tran(point, position), back.get(i).isSet()) << text;
            EXPECT_EQ(domain.tran(earth.get(i), cell), grid.get(i).isSet()) << text;
            EXPECT_EQ(std::tuple(point.x, point.y), std::tuple(points.get(i).x, points.get(i).y)) << text;
            EXPECT_EQ(std::tuple(position.lat, position.lon), std::tuple(back.get(i).lat, back.get(i).lon))
                << text;
            EXPECT_EQ(std::tuple(cell.x, cell.y), std::tuple(grid.get(i).x, grid.get(i).y)) << text;
        }
    }
}

struct ForwardCase
{
    char const * text;
    float lat, lon;
    float x, y; ///< -9999 twice: no image
};

constexpr float R = 63.7122F;

constexpr ForwardCase FORWARD_CASES[] = {
    // polar stereographic: the pole is the origin, y grows towards it on northern maps
    {"ps:90:-95,60,-95,9,9,1", 90, 17, 0, 0},
    {"ps:90:-95,60,-95,9,9,1", 60, -95, 0, -R * 0.5F},
    {"ps:-90:20,-60,20,9,9,1", -60, 20, 0, R * 0.5F},
    {"ps:0:20,60,20,9,9,1", 60, 20, 0, -R * 0.5F}, // plat 0 counts as north
    {"ps:90:0,60,0,9,9,1", -80, 90, 903.0485F, 0}, // drawn at -75
    {"ps:90:0,60,0,9,9,1", -75, 90, 903.0485F, 0},
    // latlon and its turns
    {"ll:0:0,0,0,9,9,1", 12, 190, -170, 12},
    {"ll:0:170,0,170,9,9,1", 12, -170, 20, 12},
    {"ll:0:0,0,0,9,9,1", 12, 180, 180, 12},
    {"ll:0:0,0,0,9,9,1", 90.1F, 0, MISS, MISS},
    {"ll:0:0,0,0,9,9,1", 0, 3600.5F, MISS, MISS},
    {"ll:0:0,0,0,9,9,1", 0, 3600, 0, 0},
    {"ll:0:0,0,0,9,9,1", MISS, 0, MISS, MISS},
    {"ll:0:0,0,0,9,9,1", 0, MISS, MISS, MISS},
    // Mercator
    {"merc:0:0,0,0,9,9,1", 0, 90, R * 1.5707963F, 0},
    {"merc:0:100,0,100,9,9,1", 0, -170, R * 1.5707963F, 0},
    {"merc:0:0,0,0,9,9,1", 90, 0, 0, 448.786F}, // drawn at 89.9
    {"merc:0:0,0,0,9,9,1", -90, 0, 0, -448.786F},
    // cones: the apex is the origin of Lambert's
    {"lamb:40:-95:30:60,40,-95,9,9,1", 90, 0, 0, 0},
    {"lamb:-40:20:-30:-60,-40,20,9,9,1", -90, 0, 0, 0},
    {"lamb:40:-95:25,40,-95,9,9,1", 25, -95, 0, -R * 2.1445069F}, // cot 25
    {"lamb:40:-95:90:90,40,-95,9,9,1", 0, -95, 0, -R * 2},        // a plane: stereographic, true at the pole
    {"lamb:40:-95:30:-30,40,-95,9,9,1", 40, -95, MISS, MISS},     // a cylinder
    {"albers:23:-96:29.5:45.5,40,-96,9,9,1", 23, -96, 0, 0},
    // azimuthal: antipode, hidden hemisphere, 90 degrees
    {"lambaz:40:-95,40,-95,9,9,1", 40, -95, 0, 0},
    {"lambaz:40:-95,40,-95,9,9,1", -40, 85, MISS, MISS},
    {"lambaz:0:0,0,0,9,9,1", 0, 90, R * 1.4142136F, 0},
    {"ortho:0:0,0,0,9,9,1", 0, 90, R, 0},
    {"ortho:0:0,0,0,9,9,1", 0, 90.01F, MISS, MISS},
    {"gnom:0:0,0,0,9,9,1", 0, 45, R, 0},
    {"gnom:0:0,0,0,9,9,1", 0, 90, MISS, MISS},
    {"gnom:45:0,45,0,9,9,1", -45, 0, MISS, MISS},
    {"moll:0:0,0,0,9,9,1", 90, 50, 0, R * 1.4142136F},
    {"moll:0:0,0,0,9,9,1", 0, 180, R * 2.8284271F, 0},
    {"moll:0:0,0,0,9,9,1", -90, 50, 0, -R * 1.4142136F},
    // satellite: scan angles in radians; the far side
    {"sat:0:-75,0,-75,9,9,1", 0, -75, 0, 0},
    {"sat:0:-75,0,-75,9,9,1", 0, 105, MISS, MISS},
    {"sat:0:-75,0,-75,9,9,1", 0, 6, 0.1516845F, 0},
    {"sat:0:-75,0,-75,9,9,1", 0, 7, MISS, MISS},
    {"sat:e:30:10:100,0,10,9,9,1", 30, 10, 0, 0},
    {"radial,35,-97,9,9,1", 35, -97, 0, 0},
    // diagrams: the abscissa is the longitude, the ordinate the latitude
    {"xy,0,0,9,9,1", 7, 5, 5, 7},
    {"cat,0,0,9,9,1", 7, 5, 5, 7},
    {"hodo,0,0,9,9,1", 10, 90, 10, 0},
    {"ema,500,0,9,9,1", 1000, -5, -5, -6.9077554F},
    {"xlogp,500,0,9,9,1", 1, 3, 3, 0},
    {"skewt,500,0,9,9,1", 1000, 12, 12, -6.9077554F},
    {"skewt,500,0,9,9,1", 100, -50, 24.0F, -4.6051702F},
    {"teph,500,0,9,9,1", 1000, 0, 0, 5.6100211F},
    {"teph,500,0,9,9,1", -1, 0, MISS, MISS},
    {"ema,500,0,9,9,1", 0, 0, MISS, MISS},
    {"zoom:0:0,0,0,9,9,1", 0, 0, MISS, MISS},
};

TEST(Domain, ProjectsKnownPositions)
{
    for (auto const & c : FORWARD_CASES) {
        DomainVal val;
        testing::internal::CaptureStderr();
        DomainTool::decode(c.text, val);
        testing::internal::GetCapturedStderr();
        Domain const domain(val);
        Point point(1, 1);
        EXPECT_EQ(domain.tran(EarthPoint(c.lat, c.lon), point), c.x != MISS)
            << c.text << " " << c.lat << "," << c.lon;
        float const slack = 1e-4F + 2e-6F * std::fabs(c.x) + 4e-5F * std::fabs(c.y);
        EXPECT_NEAR(point.x, c.x, std::string(c.text).starts_with("skewt") ? 0.01F : slack)
            << c.text << c.lat;
        EXPECT_NEAR(point.y, c.y, slack) << c.text << " " << c.lat << "," << c.lon;
    }
    Domain stuve;
    DomainVal val;
    val.proj = Domain::STUVE;
    stuve.set(val);
    Point point;
    stuve.tran(EarthPoint(500, -20), point);
    EXPECT_NEAR(point.y, -std::pow(500.0, 0.285714), 1e-5);
}

TEST(Domain, InversesFailOutsideThePlane)
{
    constexpr std::tuple<char const *, float, float> OUTSIDE[] = {
        {"ll:0:0,0,0,9,9,1", 0.F, 91.F},
        {"lambaz:40:0,40,0,9,9,1", 128.F, 0.F},
        {"ortho:40:0,40,0,9,9,1", 63.8F, 0.F},
        {"moll:0:0,0,0,9,9,1", 0.F, 90.2F},
        {"moll:0:0,0,0,9,9,1", 180.3F, 0.F},
        {"sat:0:0,0,0,9,9,1", 0.152F, 0.F},
        {"sat:0:0,0,0,9,9,1", 3.14F, 0.F},
        {"lamb:40:0:30:60,40,0,9,9,1", 0.F, 50.F},
        {"albers:40:0:30:60,40,0,9,9,1", 0.F, -300.F},
        {"ps:90:0,90,0,9,9,1", NOT_A_NUMBER, 0.F},
        {"ps:90:0,90,0,9,9,1", 0.F, INFINITE},
        {"ps:90:0,90,0,9,9,1", MISS, 0.F},
        {"merc:0:0,0,0,9,9,1", 1e9F, 0.F},
    };
    for (auto const & [text, x, y] : OUTSIDE) {
        Domain const domain(text);
        EarthPoint earth(1, 1);
        EXPECT_EQ(domain.tran(Point(x, y), earth), 0) << text << " " << x << "," << y;
        EXPECT_EQ(std::tuple(earth.lat, earth.lon), std::tuple(MISS, MISS)) << text;
    }
    for (char const * text :
         {"ps:90:-95,90,0,9,9,1", "lamb:40:-95,40,-95,9,9,1", "lamb:-40:-95,-40,-95,9,9,1"}) {
        Domain const domain(text);
        EarthPoint earth;
        EXPECT_EQ(domain.tran(Point(0, 0), earth), 1) << text;
        EXPECT_EQ(std::fabs(earth.lat), 90) << text;
        EXPECT_EQ(earth.lon, -95) << text;
    }
}

TEST(Domain, CountsColumnsFromTheWestAndRowsFromTheNorth)
{
    Domain const domain("ll:0:0,10,20,41,21,.5");
    EXPECT_EQ(std::tuple(domain.getLimits().x1, domain.getLimits().y1, domain.getLimits().x2,
                         domain.getLimits().y2),
              std::tuple(10.F, 5.F, 30.F, 15.F));
    GridPoint grid;
    EXPECT_EQ(domain.tran(EarthPoint(15, 10), grid), 1);
    EXPECT_EQ(std::tuple(grid.x, grid.y), std::tuple(0.F, 0.F));
    EXPECT_EQ(domain.tran(Point(12, 5), grid), 1);
    EXPECT_EQ(std::tuple(grid.x, grid.y), std::tuple(4.F, 20.F));
    domain.tran(Point(-355, 5), grid); // 365 to the west: one turn nearer
    EXPECT_EQ(grid.x, -10);
    domain.tran(Point(-345, 5), grid); // within a turn: as it is
    EXPECT_EQ(grid.x, -710);
    EarthPoint earth;
    EXPECT_EQ(domain.tran(41 * 20 + 4, earth), 1);
    EXPECT_EQ(std::tuple(earth.lat, earth.lon), std::tuple(5.F, 12.F));
    EXPECT_EQ(domain.tran(41 * 21, earth), 0);
    EXPECT_EQ(domain.tran(-1, earth), 0);
    EXPECT_EQ(earth.lat, MISS);

    Domain const radar("radial,35,-97,101,81,.5,.25");
    Point point;
    EXPECT_EQ(radar.tran(Point(3, 4), grid), 1);
    EXPECT_EQ(std::tuple(grid.x, grid.y), std::tuple(6.F, 16.F));
    EXPECT_EQ(radar.tran(grid, point), 1);
    EXPECT_EQ(std::tuple(point.x, point.y), std::tuple(3.F, 4.F));

    std::vector<float> lat(41 * 21);
    std::vector<float> lon(41 * 21);
    EXPECT_EQ(domain.calcEarth(lat, lon), 1);
    EXPECT_EQ(std::tuple(lat[41 * 20 + 4], lon[41 * 20 + 4]), std::tuple(5.F, 12.F));
    EXPECT_EQ(domain.calcPlane(Domain("merc:0:0,0,0,9,9,1"), lat, lon), 1);
    EXPECT_NEAR(lat[4], 12 * R * Const::DRC, 1e-5);
    lat.pop_back();
    EXPECT_EQ(domain.calcEarth(lat, lon), 0);
}

TEST(Domain, AbsurdCountsAndSpacingsGiveNoGridAndNoFault)
{
    constexpr int COUNTS[] = {0, 1, -1, Const::MISS, 1 << 30, -(1 << 30), 2147483647, -2147483647 - 1};
    constexpr float SPACINGS[] = {0, 1, -1, MISS, NOT_A_NUMBER, INFINITE, 3e38F, 1e-38F};
    for (int nx : COUNTS)
        for (float dx : SPACINGS) {
            DomainVal val;
            val.proj = Domain::LATLON;
            val.clat = val.clon = 10;
            val.nx = nx;
            val.ny = 5;
            val.dx = dx;
            val.dy = 1;
            Domain domain(val);
            GridPoint grid;
            double const half = (nx - 1.0) / 2 * std::fabs(static_cast<double>(dx));
            bool const has_limits = nx >= 1 && dx != MISS && half < 3.4e38;
            EXPECT_EQ(domain.tran(EarthPoint(10, 10), grid) != 0, has_limits && dx != 0) << nx << " " << dx;
            EXPECT_TRUE(std::isfinite(grid.x) && std::isfinite(grid.y));
            EXPECT_TRUE(std::isfinite(domain.getAspect()) && std::isfinite(domain.getVert()));
            domain.scaleGrid(dx);
            domain.scaleSize(nx, nx);
            domain.zoom(EarthPoint(dx, dx), dx);
            EXPECT_EQ(domain.withinExt(Point(NOT_A_NUMBER, dx), nx), 0);
            domain.tran(nx, grid);
        }
    Domain domain("ll,0,0,5,5,1");
    EXPECT_EQ(domain.set(0, 5) + domain.set(EarthPoint(0, 0), EarthPoint(1, 1), 1, 5), 0);
    EXPECT_EQ(domain.getNx(), 5); // refused: as before
    EXPECT_EQ(domain.set(7, 3), 1);
    EXPECT_EQ(std::tuple(domain.get().proj, domain.getNx(), domain.getNy(), domain.getDx()),
              std::tuple(static_cast<int>(Domain::XY), 7, 3, 1.F));
    EXPECT_EQ(domain.getAspect(), 3);
    EXPECT_EQ(domain.getVert(), 2);
    domain.set(7, 1);
    EXPECT_EQ(domain.getAspect(), 0);
}

TEST(Domain, SettingAgainForgetsWhatWasBefore)
{
    Domain domain("lamb:40:-95:30:60,40,-95,101,81,1");
    Point first;
    Point second;
    domain.tran(EarthPoint(50, -80), first);
    domain.set("lamb:40:-95:30:95,40,-95,101,81,1"); // no standard latitude, no plane
    domain.set("ps,60,-100,50,50,1");
    EXPECT_EQ(domain.getStdLat(2), 60);
    domain.tran(EarthPoint(50, -80), first);
    Domain("ps,60,-100,50,50,1").tran(EarthPoint(50, -80), second);
    EXPECT_EQ(std::tuple(first.x, first.y), std::tuple(second.x, second.y));
    domain.setView(Rect(.1F, .2F, .3F, .4F));
    EXPECT_EQ(domain.set(domain.get()), 1);
    EXPECT_EQ(domain.getView().x2, 1);
    EXPECT_EQ(domain.get().proj, Domain::PSTEREO);
    domain.tran(EarthPoint(50, -80), first);
    EXPECT_EQ(first.x, second.x);
    DomainVal val;
    val.proj = Domain::LAMB;
    val.clat = -40;
    val.clon = 20;
    domain.set(val); // southern standard latitudes, the centre as reference position
    EXPECT_EQ(std::tuple(domain.get().plat, domain.get().plon), std::tuple(-40.F, 20.F));
    domain.tran(EarthPoint(-45, 20), first);
    Domain("lamb:-40:20:-30:-60,-40,20,5,5,1").tran(EarthPoint(-45, 20), second);
    EXPECT_EQ(first.y, second.y);
}

TEST(Domain, TheEarthIsSharedByAllDomains)
{
    SameEarth const guard;
    Domain const early("ps,60,-100,50,50,1");
    Point before;
    Point after;
    early.tran(EarthPoint(50, -80), before);
    Rect const limits = early.getLimits();
    DomainVal val;
    DomainTool::decode("ll:0:0:::31.8561,0,0,5,5,1", val);
    EXPECT_DOUBLE_EQ(Domain::earth_rad, 63.7122);
    Domain const half(val); // half the radius
    EXPECT_FLOAT_EQ(static_cast<float>(Domain::earth_rad), 31.8561F);
    early.tran(EarthPoint(50, -80), after);
    EXPECT_FLOAT_EQ(after.x * 2, before.x);
    EXPECT_EQ(early.getLimits().x1, limits.x1);
    for (float bad : {0.F, -5.F, NOT_A_NUMBER, INFINITE, MISS}) {
        val.setParam(2, bad);
        Domain const refused(val);
        EXPECT_FLOAT_EQ(static_cast<float>(Domain::earth_rad), 31.8561F) << bad;
    }
    Domain const ellipse("merc:e:0:0,0,0,5,5,1");
    ellipse.tran(EarthPoint(0, 90), before);
    Domain::earth_maj *= 2;
    ellipse.tran(EarthPoint(0, 90), after);
    EXPECT_FLOAT_EQ(after.x, before.x * 2);
    for (double bad : {0.0, -1.0, static_cast<double>(NOT_A_NUMBER), static_cast<double>(INFINITE)}) {
        Domain::earth_rad = bad;
        Domain::earth_maj = bad;
        EXPECT_EQ(early.tran(EarthPoint(50, -80), after), 0) << bad;
        EXPECT_EQ(ellipse.tran(EarthPoint(50, -80), after), 0) << bad;
        EXPECT_EQ(after.x, MISS);
        EXPECT_EQ(Domain::calcEarthDist(EarthPoint(0, 0), EarthPoint(0, 90)), MISS) << bad;
    }
    Domain again = early;
    Domain::earth_rad = Domain::earth_maj = Domain::earth_min = 0;
    again.set("merc,0,0,5,5,1"); // the constants of the projection before do not come back
    EXPECT_EQ(again.tran(EarthPoint(50, -80), after), 0);
    again.set("xy,0,0,5,5,1");
    EXPECT_EQ(again.tran(EarthPoint(50, -80), after), 1);
}

TEST(Domain, LaysAGridBetweenTwoCorners)
{
    for (char const * text :
         {"lamb:40:-95:30:60,40,-95,5,5,1", "ps:90:-95,60,-95,5,5,1", "ll:0:-95,40,-95,5,5,1"}) {
        Domain domain(text);
        EarthPoint const low(30, -110);
        EarthPoint const high(50, -75);
        ASSERT_EQ(domain.set(low, high, 71, 41), 1) << text;
        EarthPoint corner;
        domain.tran(GridPoint(0, 40), corner);
        EXPECT_LT(degreesApart(low, corner), 1e-4) << text;
        domain.tran(70, corner);
        EarthPoint upper;
        domain.tran(GridPoint(70, 0), upper);
        EXPECT_LT(degreesApart(high, upper), 1e-4) << text;
        EXPECT_EQ(domain.set(EarthPoint(), high, 71, 41), 0);
        EXPECT_EQ(domain.set(low, high, 71, 1), 0);
        EXPECT_EQ(domain.getNx(), 71);
    }
    DomainVal val;
    val.proj = Domain::LATLON;
    Domain domain(val);
    ASSERT_EQ(domain.set(EarthPoint(-10, 170), EarthPoint(10, -170), 21, 11), 1); // over the seam
    EXPECT_EQ(std::tuple(domain.get().plon, domain.getDx(), domain.getDy()), std::tuple(180.F, 1.F, 2.F));
    EXPECT_EQ(domain.within(EarthPoint(0, -175)), 1);
}

TEST(Domain, KnowsWherePointsLie)
{
    Domain const domain("ll:0:0,0,0,21,11,1");
    EXPECT_EQ(domain.where(Point(-10, 5)), Domain::INSIDE);
    EXPECT_EQ(domain.where(Point(-10.5F, 5.5F)), Domain::LEFT | Domain::ABOVE);
    EXPECT_EQ(domain.where(Point(11, -6)), Domain::RIGHT | Domain::BELOW);
    EXPECT_EQ(domain.where(Point()), Const::MISS);
    EXPECT_EQ(Domain().where(Point(0, 0)), Const::MISS);
    EXPECT_EQ(domain.within(Point(10, -5)), 1);
    EXPECT_EQ(domain.within(Point(10.1F, 0)), 0);
    EXPECT_EQ(domain.withinExt(Point(12, 0), 2), 1);
    EXPECT_EQ(domain.withinExt(Point(12.1F, 0), 2), 0);
    EXPECT_EQ(domain.withinExt(Point(9.5F, 0), -1), 0);
    EXPECT_EQ(domain.within(EarthPoint(3, 367)), 1);
    EXPECT_EQ(Domain("ll:0:0,0,180,21,11,1").within(EarthPoint(0, -175)), 1); // over the seam
}

TEST(Domain, CutsLinesAtTheSeam)
{
    struct Turn
    {
        char const * text;
        float half;
    };

    for (auto const & [text, half] :
         {Turn{"ll:0:0,0,0,361,181,1", 180}, Turn{"merc:0:0,0,0,361,181,1", 200.1578F},
          Turn{"merc:e:0:0:30,0,0,361,181,1", 173.6753F}}) {
        Domain const domain(text);
        Points line;
        Points pieces;
        for (float x :
             {half - 20, half - 10, 20 - half, 10 - half}) // crosses to the right between the middle ones
            line.add(Point(x, x > 0 ? 0.F : 30.F));
        EXPECT_EQ(domain.wrapLine(line, pieces), 2);
        ASSERT_EQ(pieces.getNum(), 7);
        EXPECT_NEAR(pieces.get(2).x, half, 1e-3);
        EXPECT_NEAR(pieces.get(2).y, 10, 1e-3);
        EXPECT_FALSE(pieces.get(3).isSet());
        EXPECT_NEAR(pieces.get(4).x, -half, 1e-3);
        EXPECT_EQ(pieces.get(6).x, 10 - half);
        EXPECT_EQ(domain.wrapLine(line, line), 2); // into itself
        EXPECT_EQ(line.getNum(), 7);
        EXPECT_EQ(domain.wrapLine(line, pieces), 2); // gaps stay
        EXPECT_EQ(domain.offsetLine(pieces), 1);
        EXPECT_NEAR(pieces.get(4).x, half, 1e-3);
        EXPECT_NEAR(pieces.get(6).x, half + 10, 1e-3);
        EXPECT_EQ(domain.adjust(pieces), 0); // a missing point among them
        EXPECT_NEAR(pieces.get(6).x, 10 - half, 1e-3);
        Point end;
        Point start;
        EXPECT_EQ(domain.wrapLine(Point(0, 0), Point(10, 0), end, start), 0);
        EXPECT_FALSE(end.isSet());
    }
    Points line;
    line.add(Point(0, 0));
    line.add(Point(500, 0));
    Points pieces;
    EXPECT_EQ(Domain("lamb,40,-95,5,5,1").wrapLine(line, pieces), 1); // no seam
    EXPECT_EQ(pieces.getNum(), 2);
    EXPECT_EQ(Domain("lamb,40,-95,5,5,1").offsetLine(line), 0);
}

TEST(Domain, MeasuresDistances)
{
    EXPECT_NEAR(Domain::calcEarthDist(EarthPoint(0, 0), EarthPoint(0, 90)), R * 1.5707963, 1e-4);
    EXPECT_EQ(Domain::calcEarthDist(EarthPoint(40.1F, -95.3F), EarthPoint(40.1F, -95.3F)), 0);
    EXPECT_NEAR(Domain::calcEarthDist(EarthPoint(40, -95), EarthPoint(-40, 85)), R * 3.1415927, 1e-4);
    EXPECT_NEAR(Domain::calcEarthDist(EarthPoint(0, 179.9995F), EarthPoint(0, -179.9995F)), R * 1.745e-5,
                1e-5);
    EXPECT_EQ(Domain::calcEarthDist(EarthPoint(), EarthPoint(0, 0)), MISS);
    EXPECT_EQ(Domain::calcEarthDist(EarthPoint(0, NOT_A_NUMBER), EarthPoint(0, 0)), MISS);
}

TEST(Domain, DerivesDomains)
{
    Domain domain("lamb:40:-95:30:60,40,-95,101,81,1");
    Rect const extent = domain.getLimits();
    EXPECT_EQ(domain.scaleSize(51, 161), 1);
    EXPECT_EQ(std::tuple(domain.getDx(), domain.getDy()), std::tuple(2.F, .5F));
    EXPECT_FLOAT_EQ(domain.getLimits().y2, extent.y2);
    EXPECT_EQ(domain.scaleGrid(2), 1);
    EXPECT_EQ(std::tuple(domain.getNx(), domain.getNy(), domain.getDx()), std::tuple(101, 321, 1.F));
    EXPECT_EQ(domain.zoom(Point(3, -60), .5F), 1);
    EXPECT_FLOAT_EQ(domain.getLimits().x2 - domain.getLimits().x1, 50);
    EXPECT_NEAR(domain.getLimits().x2 + domain.getLimits().x1, 6, 1e-4);
    EXPECT_EQ(domain.pan(EarthPoint(50, -90)), 1);
    EXPECT_EQ(std::tuple(domain.get().clat, domain.get().clon), std::tuple(50.F, -90.F));
    EXPECT_EQ(domain.zoom(Point(), 1) + domain.zoom(EarthPoint(1, 2), 0) + domain.scaleGrid(-1) +
                  domain.scaleSize(1, 5) + domain.scaleGrid(NOT_A_NUMBER) + domain.scaleGrid(1e30F),
              0);
    EXPECT_EQ(domain.zoom(EarthPoint(1, 2), 3e38F), 0);
    EXPECT_EQ(std::tuple(domain.getNx(), domain.getDx()), std::tuple(101, .5F));
    EXPECT_EQ(Domain("ll,0,0,1,5,1").scaleSize(5, 5), 0); // no width
    Point moved(1, 2);
    EXPECT_EQ(domain.offset(moved, 3, -4, moved), 1);
    EXPECT_EQ(std::tuple(moved.x, moved.y), std::tuple(4.F, -2.F));
    EXPECT_EQ(domain.offset(Point(), 3, -4, moved), 0);
    EXPECT_FALSE(moved.isSet());
    EarthPoint there;
    EXPECT_EQ(Domain("merc:0:0,0,0,5,5,1").offsetLatLon(EarthPoint(0, 10), R * 1.5707963F, 0, there), 1);
    EXPECT_NEAR(there.lon, 100, 1e-4);
}

TEST(Domain, TurnsDirectionsAtPointsOfThePlane)
{
    Domain const domain("ps:90:-95,60,-95,101,81,1");
    EXPECT_NEAR(domain.adjustDir(20, EarthPoint(60, -5)), 290, 1e-3);
    EXPECT_NEAR(domain.adjustDir(20, Point(10, 0)), 290, 1e-3);
    EXPECT_NEAR(domain.unadjustDir(20, Point(10, 0)), 110, 1e-3);
    EXPECT_EQ(domain.adjustDir(20, Point()), MISS);
    EXPECT_EQ(domain.unadjustDir(20, Point(NOT_A_NUMBER, 0)), MISS);
}

TEST(Domain, TranslatesBetweenPlanes)
{
    Domain const from("ps:90:-95,60,-95,101,81,1");
    Domain const to("lamb:40:-95:30:60,40,-95,101,81,1");
    Point a;
    Point b;
    Point expected;
    from.tran(EarthPoint(50, -80), a);
    to.tran(EarthPoint(50, -80), expected);
    EXPECT_EQ(from.translate(to, a, b), 1);
    EXPECT_NEAR(b.x, expected.x, 1e-4);
    EXPECT_EQ(from.translate(Domain("skewt,500,0"), a, b), 0);
    EXPECT_FALSE(b.isSet());
    GridPoint grid;
    EXPECT_EQ(from.translate(from, GridPoint(3, 4), grid), 1);
    EXPECT_NEAR(grid.x, 3, 1e-3);
}

TEST(Domain, ComparesRecords)
{
    Domain const a("lamb:40:-95:30:60,40,-95,101,81,1");
    Domain const b("lamb:40:-95:30:60,41,-95,101,81,1");
    EXPECT_TRUE(a.compare(a));
    EXPECT_FALSE(a.compare(b));
    EXPECT_TRUE(a.compareProj(b));
    EXPECT_FALSE(a.compareProj(Domain("lamb:e:40:-95:30:60,40,-95,101,81,1")));
    EXPECT_FALSE(a.compareProj(Domain("lamb:40:-95:30,40,-95,101,81,1")));
    EXPECT_TRUE(Domain().compare(Domain()));
}

} // namespace
} // namespace Yul
