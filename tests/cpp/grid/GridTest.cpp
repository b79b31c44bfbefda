#include "grid/Grid.h"

#include "grid/Grids.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr float MISS = Const::MISS;
constexpr float INF = std::numeric_limits<float>::infinity();

Grid gridOf(int nx, int ny, std::vector<float> const & values)
{
    Grid grid(nx, ny);
    std::copy(values.begin(), values.end(), grid.data());
    return grid;
}

/// Every field set to something of its own.
Grid fullGrid()
{
    auto grid = gridOf(3, 2, {1, 2, 3, 4, MISS, 6});
    grid.setType(4);
    grid.setSource(7);
    grid.setVersion(2);
    grid.setModel(96);
    grid.setGenName("a model");
    grid.setDatim("2026112100");
    grid.setInfo("Height [gpm]");
    grid.setDate(Date(2026, 11, 21, 0, 0, 0));
    grid.setNz(5);
    grid.setDomain(Domain("ll,45,-95,3,2,1,1"));
    grid.setLevel("500mb");
    grid.setForeTime("24h");
    grid.setVar("HGT");
    return grid;
}

void expectSameFields(Grid const & a, Grid const & b)
{
    EXPECT_EQ(a.getType(), b.getType());
    EXPECT_EQ(a.getSource(), b.getSource());
    EXPECT_EQ(a.getVersion(), b.getVersion());
    EXPECT_EQ(a.getModel(), b.getModel());
    EXPECT_STREQ(a.getGenName(), b.getGenName());
    EXPECT_STREQ(a.getDatim(), b.getDatim());
    EXPECT_STREQ(a.getInfo(), b.getInfo());
    EXPECT_EQ(a.getDate().getSeconds(), b.getDate().getSeconds());
    EXPECT_EQ(a.getNx(), b.getNx());
    EXPECT_EQ(a.getNy(), b.getNy());
    EXPECT_EQ(a.getNz(), b.getNz());
    EXPECT_TRUE(a.getDomain().compare(b.getDomain()) || a.getDomain().isMiss());
    EXPECT_TRUE(a.getLevel().compare(b.getLevel()));
    EXPECT_EQ(a.getForeTime(), b.getForeTime());
    EXPECT_STREQ(a.getVar().getName(), b.getVar().getName());
    EXPECT_STREQ(a.getUnits(), b.getUnits());
    EXPECT_EQ(a.isData(), b.isData());
}

std::vector<float> valuesOf(Grid const & grid)
{
    return {grid.getValues().begin(), grid.getValues().end()};
}

TEST(Grid, StartsEmptyAndInitReturnsThere)
{
    Grid const empty;
    EXPECT_EQ(empty.getType(), 0);
    EXPECT_EQ(empty.getSource(), 0);
    EXPECT_EQ(empty.getVersion(), Const::MISS);
    EXPECT_EQ(empty.getModel(), 0);
    EXPECT_EQ(empty.getNx(), Const::MISS);
    EXPECT_EQ(empty.getNy(), Const::MISS);
    EXPECT_EQ(empty.getNz(), Const::MISS);
    EXPECT_EQ(empty.getSize(), Const::MISS);
    EXPECT_EQ(empty.getForeHours(), Const::MISS);
    EXPECT_FALSE(empty.isData());
    EXPECT_FALSE(empty.isLocate());
    auto grid = fullGrid();
    grid.setLocate();
    grid.init();
    expectSameFields(grid, empty);
    EXPECT_FALSE(grid.isLocate());
    auto again = fullGrid();
    again.reset();
    expectSameFields(again, empty);
}

TEST(Grid, CopiesDeeply)
{
    auto const original = fullGrid();
    Grid assigned(7, 7);
    assigned = original;
    Grid const constructed(original);
    Grid copied;
    EXPECT_EQ(copied.copy(original), 1);
    for (Grid const * const copy : {&std::as_const(assigned), &constructed, &std::as_const(copied)}) {
        expectSameFields(*copy, original);
        EXPECT_EQ(valuesOf(*copy), valuesOf(original));
        EXPECT_NE(copy->data(), original.data());
    }
    assigned.setValue(0, 0, 99);
    EXPECT_EQ(original.getValue(0, 0), 1);

    EXPECT_EQ(assigned.copy(assigned), 1);
    EXPECT_EQ(assigned.copyData(assigned), 1);
    EXPECT_EQ(assigned.copyInfo(assigned), 1);
    EXPECT_EQ(assigned.getValue(0, 0), 99);
    EXPECT_EQ(assigned.getValue(2, 1), 6);

    Grid info(7, 7);
    EXPECT_EQ(info.copyInfo(original), 1);
    EXPECT_EQ(info.getNx(), 3);
    EXPECT_FALSE(info.isData()); // values of another number do not survive
    EXPECT_EQ(info.copyData(original), 1);
    EXPECT_EQ(valuesOf(info), valuesOf(original));
    EXPECT_EQ(info.copy(Grid()), 1);
    expectSameFields(info, Grid());
}

TEST(Grid, TakesItsOwnTexts)
{
    auto grid = fullGrid();
    std::string const info = grid.getInfo();
    grid.setInfo(grid.getInfo());
    grid.setDatim(grid.getDatim() + 4);
    grid.setUnits(grid.getUnits());
    grid.setVar(grid.getVar());
    grid.setLevel(grid.getLevel());
    grid.setDomain(grid.getDomainVal());
    EXPECT_EQ(grid.getInfo(), info);
    EXPECT_STREQ(grid.getDatim(), "112100");
    for (auto set : {&Grid::setInfo, &Grid::setDatim, &Grid::setGenName})
        EXPECT_EQ((grid.*set)(nullptr), 1);
    EXPECT_STREQ(grid.getInfo(), "");
}

TEST(Grid, RefusesAbsurdSizes)
{
    Grid grid(3, 2);
    for (auto const & [nx, ny] :
         {std::pair(46341, 46341), std::pair(65536, 65536), std::pair(INT_MAX, INT_MAX),
          std::pair(INT_MAX, 1), std::pair(0, 5), std::pair(5, 0), std::pair(-1, -1),
          std::pair(INT_MIN, INT_MIN), std::pair(-9999, 5), std::pair(5, -9999)}) {
        EXPECT_EQ(grid.setSize(nx, ny), 0) << nx << " x " << ny;
        EXPECT_EQ(grid.prepareData(nx, ny), nullptr);
        EXPECT_EQ(grid.getNx(), 3);
        EXPECT_TRUE(grid.isData());
        Grid const made(nx, ny);
        EXPECT_FALSE(made.isData());
        EXPECT_EQ(made.getSize(), Const::MISS);
    }
    EXPECT_EQ(Grid().allocData(), 0);
    EXPECT_EQ(Grid().allocLocate(), 0);
    EXPECT_EQ(grid.setSize(Const::MISS, Const::MISS), 1);
    EXPECT_FALSE(grid.isData());
}

TEST(Grid, NewValuesAreMissing)
{
    Grid grid(4, 3);
    EXPECT_EQ(grid.getValid(), 0);
    grid.setValue(5);
    EXPECT_EQ(grid.getValid(), 12);
    grid.allocData();
    EXPECT_EQ(grid.getValid(), 0);
}

TEST(Grid, KeepsItsMemoryForTheNextField)
{
    Grid grid;
    auto const * const first = grid.prepareData(100, 50);
    ASSERT_NE(first, nullptr);
    grid.setInfo("first");
    grid.reset();
    EXPECT_FALSE(grid.isData());
    EXPECT_EQ(grid.data(), nullptr);
    EXPECT_EQ(grid.prepareData(100, 50), first);
    EXPECT_EQ(grid.prepareData(20, 10), first);
    EXPECT_EQ(grid.getSize(), 200);
    EXPECT_EQ(grid.prepareData(50, 100), first);
    grid.setSize(100, 50); // the same number of values stays
    EXPECT_TRUE(grid.isData());
    grid.setSize(100, 51);
    EXPECT_FALSE(grid.isData());
    EXPECT_EQ(grid.setValue(0, 0, 1), 0);
}

TEST(Grid, SharedMemoryOutlivesTheGridAndIsNeverCutShort)
{
    std::shared_ptr<float[]> held;
    {
        Grid grid(10, 10);
        grid.setValue(7);
        held = grid.shareData();
        grid.setValue(3, 0, 8);
        EXPECT_EQ(held[3], 8); // the live values
        auto const * const before = grid.data();
        EXPECT_EQ(grid.prepareData(10, 10), before); // read into in place
        ASSERT_NE(grid.prepareData(5, 5), before);   // another shape leaves the holder alone
        grid.setValue(0);
        EXPECT_EQ(held[0], 7);
        grid.reset();
    }
    EXPECT_EQ(held[99], 7);
    EXPECT_EQ(Grid().shareData(), nullptr);
}

TEST(Grid, ValuesStayInsideTheGrid)
{
    auto grid = gridOf(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(grid.setValue(2, 0, 30), 1);
    EXPECT_EQ(valuesOf(grid), (std::vector<float>{1, 2, 30, 4, 5, 6}));
    for (auto const & [column, row] : {std::pair(3, 0), std::pair(-1, 1), std::pair(0, 2), std::pair(0, -1),
                                       std::pair(INT_MAX, INT_MAX), std::pair(INT_MIN, 0)}) {
        EXPECT_EQ(grid.setValue(column, row, 99), 0);
        EXPECT_EQ(grid.getValue(column, row), MISS);
        EXPECT_FALSE(grid.isValue(column, row));
    }
    EXPECT_EQ(valuesOf(grid), (std::vector<float>{1, 2, 30, 4, 5, 6}));
    EXPECT_EQ(grid.setValue(0, 0, NAN), 1);
    EXPECT_EQ(grid.data()[0], MISS);
    EXPECT_FALSE(grid.isValue(0, 0));
    EXPECT_TRUE(grid.isValue(1, 0));
}

struct PointCase
{
    float x;
    float y;
    float value;
};

TEST(Grid, InterpolatesBetweenFourPoints)
{
    // 10 20 40
    // 30  M 80
    // 50 60 90
    auto const grid = gridOf(3, 3, {10, 20, 40, 30, MISS, 80, 50, 60, 90});
    constexpr PointCase CASES[] = {
        {0, 0, MISS},                                        // a missing neighbour of weight 0
        {1, 2, 60},                                          // bottom row: only the row counts
        {0.25F, 2, 52.5F},  {1.5F, 2, 75},       {2, 2, 90}, // last corner: as it stands
        {2, 0, 40},                                          // right column: only the column counts
        {2, 0.5F, 60},      {2, 1.5F, 85},       {1, 0, MISS},       {0, 1, MISS},        {0, 2, 50},
        {2.0001F, 1, MISS}, {-0.0001F, 1, MISS}, {1, 2.0001F, MISS}, {1, -0.0001F, MISS}, {MISS, MISS, MISS},
        {NAN, 0, MISS},     {0, NAN, MISS},      {INF, 0, MISS},     {0, -INF, MISS},     {3e9F, 3e9F, MISS},
    };
    for (auto const & row : CASES)
        EXPECT_EQ(grid.getValue(GridPoint(row.x, row.y)), row.value) << row.x << " " << row.y;

    auto const plane = gridOf(2, 2, {0, 1, 10, 11});
    EXPECT_EQ(plane.getValue(GridPoint(0.25F, 0.75F)), 7.75F);
    EXPECT_EQ(plane.getValue(GridPoint(0, 0)), 0);
    EXPECT_EQ(Grid(2, 2).getValue(GridPoint(0, 0)), MISS);
    EXPECT_EQ(Grid().getValue(GridPoint(0, 0)), MISS);
}

TEST(Grid, InterpolatesOnOneRowColumnAndPoint)
{
    auto const row = gridOf(3, 1, {1, 2, MISS});
    EXPECT_EQ(row.getValue(GridPoint(0.5F, 0)), 1.5F);
    EXPECT_EQ(row.getValue(GridPoint(1, 0)), MISS); // its right neighbour is missing
    EXPECT_EQ(row.getValue(GridPoint(2, 0)), MISS);
    EXPECT_EQ(row.getValue(GridPoint(0, 0.5F)), MISS);
    auto const column = gridOf(1, 3, {1, 2, MISS});
    EXPECT_EQ(column.getValue(GridPoint(0, 0.5F)), 1.5F);
    EXPECT_EQ(column.getValue(GridPoint(0, 1)), MISS);
    auto const point = gridOf(1, 1, {5});
    EXPECT_EQ(point.getValue(GridPoint(0, 0)), 5);
    EXPECT_EQ(point.getValue(GridPoint(0.01F, 0)), MISS);
}

TEST(Grid, InterpolationStaysBetweenNeighboursAndIsExactOnAPlane)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> any(0, 1);
    Grid grid(17, 11);
    for (int row = 0; row < 11; ++row)
        for (int column = 0; column < 17; ++column)
            grid.setValue(column, row,
                          3.0F * static_cast<float>(column) - 2.0F * static_cast<float>(row) + 100);
    std::vector<float> x(1000);
    std::vector<float> y(1000);
    std::vector<float> many(1000);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = 16 * any(random);
        y[i] = 10 * any(random);
    }
    ASSERT_EQ(grid.getValues(x, y, many), 1);
    for (std::size_t i = 0; i < x.size(); ++i) {
        auto const exact = 3.0 * static_cast<double>(x[i]) - 2.0 * static_cast<double>(y[i]) + 100;
        EXPECT_NEAR(many[i], exact, 8e-6) << x[i] << " " << y[i]; // half a unit in the last place
        EXPECT_EQ(many[i], grid.getValue(GridPoint(x[i], y[i])));
    }
    EXPECT_EQ(grid.getValues(x, y, std::span(many).first(5)), 0);
}

TEST(Grid, NotANumberIsMissingEverywhere)
{
    auto grid = gridOf(2, 2, {1, NAN, 3, 5});
    EXPECT_EQ(grid.getValid(), 3);
    EXPECT_EQ(grid.getAverage(), 3);
    EXPECT_EQ(grid.getValue(1, 0), MISS);
    EXPECT_EQ(grid.getValue(GridPoint(0.5F, 0.5F)), MISS);
    Range range;
    EXPECT_EQ(grid.getRange(range), 1);
    EXPECT_EQ(range.min, 1);
    EXPECT_EQ(range.max, 5);
    EXPECT_EQ(grid.scale(NAN), 0);
    EXPECT_EQ(grid.offset(INF), 0);
    EXPECT_EQ(grid.getValue(1, 1), 5);
}

TEST(Grid, SummarisesWhatIsThere)
{
    Range range(3, 4);
    EXPECT_EQ(Grid().getValid(), Const::MISS);
    EXPECT_EQ(Grid().getAverage(), MISS);
    EXPECT_EQ(Grid().getRange(range), 0);
    EXPECT_EQ(range.min, MISS);
    EXPECT_EQ(range.max, MISS);
    EXPECT_EQ(Grid().scale(2), 0);
    EXPECT_EQ(Grid().offset(2), 0);

    Grid const missing(3, 3);
    EXPECT_EQ(missing.getValid(), 0);
    EXPECT_EQ(missing.getAverage(), MISS);
    EXPECT_EQ(missing.getRange(range), 1);
    EXPECT_EQ(range.min, MISS);
    EXPECT_EQ(range.max, MISS);

    auto extremes = gridOf(3, 1, {INF, -INF, MISS});
    EXPECT_EQ(extremes.getRange(range), 1);
    EXPECT_EQ(range.min, -INF);
    EXPECT_EQ(range.max, INF);

    // Every remainder of the number of values, missing values anywhere.
    std::mt19937 random(3);
    std::normal_distribution<float> values(280, 15);
    for (int count = 1; count <= 40; ++count) {
        Grid grid(count, 1);
        double sum = 0;
        int valid = 0;
        float low = 1e9F;
        float high = -1e9F;
        for (int i = 0; i < count; ++i) {
            if (random() % 3 == 0)
                continue;
            auto const value = values(random);
            grid.setValue(i, 0, value);
            sum += static_cast<double>(value);
            low = std::min(low, value);
            high = std::max(high, value);
            ++valid;
        }
        EXPECT_EQ(grid.getValid(), valid);
        EXPECT_EQ(grid.getRange(range), 1);
        EXPECT_EQ(range.min, valid > 0 ? low : MISS);
        EXPECT_EQ(range.max, valid > 0 ? high : MISS);
        EXPECT_FLOAT_EQ(grid.getAverage(), valid > 0 ? static_cast<float>(sum / valid) : MISS);
        auto const before = valuesOf(grid);
        EXPECT_EQ(grid.scale(2), 1);
        EXPECT_EQ(grid.offset(-3), 1);
        for (int i = 0; i < count; ++i) {
            auto const value = before[static_cast<std::size_t>(i)];
            EXPECT_EQ(grid.getValue(i, 0), value == MISS ? MISS : value * 2 - 3);
        }
    }
}

TEST(Grid, UnitsStandInBracketsAtTheEndOfTheInfo)
{
    struct UnitsCase
    {
        char const * info;
        char const * units;
        int result;
        char const * after;
        char const * units_after;
    };

    constexpr UnitsCase CASES[] = {
        {"Height", "dam", 1, "Height [dam]", "dam"},
        {"Height [gpm]", "dam", 1, "Height [dam]", "dam"},
        {"Layer [1] height [gpm]", "m s-1", 1, "Layer [1] height [m s-1]", "m s-1"},
        {"Height [gpm", "dam", 1, "Height [dam]", "dam"},
        {"", "dam", 1, " [dam]", "dam"},
        {"Height [gpm]", "", 0, "Height [gpm]", "gpm"},
        {"Height [gpm]", "  ", 0, "Height [gpm]", "gpm"},
        {"Height [gpm]", nullptr, 0, "Height [gpm]", "gpm"},
    };
    for (auto const & row : CASES) {
        Grid grid;
        grid.setVar("HGT");
        grid.setInfo(row.info);
        EXPECT_EQ(grid.setUnits(row.units), row.result) << row.info;
        EXPECT_STREQ(grid.getInfo(), row.after);
        EXPECT_STREQ(grid.getUnits(), row.units_after) << row.info;
    }
    auto grid = gridOf(2, 1, {300, MISS});
    grid.setVar("TMP");
    grid.setInfo("Temperature [K]");
    EXPECT_EQ(grid.convertUnits("m"), 0);
    EXPECT_EQ(grid.convertUnits("C"), 1);
    EXPECT_EQ(valuesOf(grid), (std::vector<float>{26.85F, MISS}));
    EXPECT_STREQ(grid.getInfo(), "Temperature [C]");
}

TEST(Grid, RefusedTextsChangeNothing)
{
    auto grid = fullGrid();
    EXPECT_EQ(grid.setLevel("nowhere"), 0);
    EXPECT_EQ(grid.setVar("two words"), 0);
    EXPECT_EQ(grid.setForeTime("soon"), 0);
    expectSameFields(grid, fullGrid());
}

TEST(Grid, IdentifiesItself)
{
    String text;
    fullGrid().getSpec().toString(text);
    EXPECT_STREQ(text.get(), "HGT,500mb,24h,7:96");
    Grid().getSpec().toString(text);
    EXPECT_STREQ(text.get(), "*");
    Date valid;
    EXPECT_EQ(fullGrid().getValidDate(valid), 1);
    valid.toString(text);
    EXPECT_EQ(std::string(text.get()).substr(0, 10), "2026112200");
    EXPECT_EQ(Grid().getValidDate(valid), 0);
    EXPECT_FALSE(valid.isSet());
    EXPECT_EQ(fullGrid().getForeHours(), 24);
    EXPECT_EQ(fullGrid().getForeSeconds(), 86400);
}

TEST(Grid, ConvertsPositionsThroughItsDomain)
{
    auto grid = fullGrid();
    GridPoint place;
    EarthPoint earth;
    Point point;
    // Row 0 is the northern edge, column 0 the western one.
    ASSERT_EQ(grid.tran(0, earth), 1);
    EXPECT_FLOAT_EQ(earth.lat, 45.5F);
    EXPECT_FLOAT_EQ(earth.lon, -96);
    ASSERT_EQ(grid.tran(earth, place), 1);
    EXPECT_NEAR(place.x, 0, 1e-4);
    EXPECT_NEAR(place.y, 0, 1e-4);
    EXPECT_EQ(grid.tran(6, earth), 0);
    EXPECT_NEAR(grid.getValue(EarthPoint(44.5F, -95.5F)), MISS, 0); // between 4 and a missing value
    ASSERT_EQ(grid.tran(EarthPoint(44.5F, -94), point), 1);
    EXPECT_NEAR(grid.getValue(point), 6, 1e-3);
    EXPECT_EQ(grid.getValue(EarthPoint(0, 0)), MISS);
    EXPECT_EQ(grid.getValue(EarthPoint()), MISS);
    EXPECT_EQ(grid.getValue(Point()), MISS);

    Domain const finer("ll,45,-95,5,3,0.5,0.5");
    GridPoint there;
    GridPoint back;
    ASSERT_EQ(grid.tran(GridPoint(1, 1), finer, there), 1);
    EXPECT_NEAR(there.x, 2, 1e-4);
    EXPECT_NEAR(there.y, 2, 1e-4);
    ASSERT_EQ(grid.tran(finer, there, back), 1);
    EXPECT_NEAR(back.x, 1, 1e-4);
    EXPECT_NEAR(back.y, 1, 1e-4);
    EXPECT_EQ(Grid(2, 2).tran(GridPoint(0, 0), earth), 0);
    EXPECT_FALSE(earth.isSet());
}

TEST(Grid, KeepsTheLocationsOfItsPoints)
{
    auto grid = fullGrid();
    Point point;
    EXPECT_EQ(grid.getLocate(0, 0, point), 0);
    EXPECT_EQ(grid.setLocate(0, 0, Point(1, 1)), 0);
    ASSERT_EQ(grid.setLocate(), 1);
    ASSERT_TRUE(grid.isLocate());
    EXPECT_EQ(grid.getLocateX().size(), 6U);
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 3; ++column) {
            Point expected;
            grid.tran(row * 3 + column, expected);
            ASSERT_EQ(grid.getLocate(column, row, point), 1);
            EXPECT_NEAR(point.x, expected.x, 1e-4);
            EXPECT_NEAR(point.y, expected.y, 1e-4);
        }
    Domain const polar("ps:45:-95,45,-95,3,2,1,1");
    ASSERT_EQ(grid.setLocate(polar), 1);
    EarthPoint corner;
    Point expected;
    grid.tran(0, corner);
    polar.tran(corner, expected);
    grid.getLocate(0, 0, point);
    EXPECT_NEAR(point.x, expected.x, 1e-4);
    EXPECT_NEAR(point.y, expected.y, 1e-4);

    EXPECT_EQ(grid.setLocate(2, 1, Point(8, 9)), 1);
    EXPECT_EQ(grid.setLocate(3, 1, Point(8, 9)), 0);
    EXPECT_EQ(grid.getLocate(2, 1, point), 1);
    EXPECT_EQ(point.y, 9);
    Grid const copied(grid);
    EXPECT_FALSE(copied.isLocate());
    Grid other(3, 2);
    other.setDomain(polar);
    grid.copyInfo(other);
    EXPECT_FALSE(grid.isLocate());
    ASSERT_EQ(grid.setLocate(), 1);
    grid.setDomain(polar);
    EXPECT_FALSE(grid.isLocate());
    grid.setSize(2, 3);
    EXPECT_EQ(grid.setLocate(), 0); // the domain is of another size
}

TEST(Grid, ListsItself)
{
    testing::internal::CaptureStdout();
    fullGrid().print();
    fullGrid().printData();
    Grid().print();
    EXPECT_EQ(Grid().printData(), 0);
    auto const text = testing::internal::GetCapturedStdout();
    for (char const * part : {"Height [gpm]", "HGT 1003005 [gpm]", "500 hPa", "3 x 2", "Valid: 5",
                              "Maximum: 6", "1 2 3\n4 M 6\n"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
}

TEST(Grids, HoldsCopiesAndFindsByGridSpec)
{
    Grids grids;
    auto grid = fullGrid();
    grids.add(grid);
    grid.setLevel("850mb");
    grids.add(grid);
    EXPECT_EQ(grids.getNum(), 2);
    grids.get(1).setForeTime("anal");
    EXPECT_EQ(grids.find(GridSpec("HGT,850mb")), 1);
    EXPECT_EQ(grids.find(GridSpec("HGT,,0")), 1);
    EXPECT_EQ(grids.find(GridSpec("HGT")), 0);
    EXPECT_EQ(grids.find(GridSpec("TMP")), -1);
    EXPECT_EQ(valuesOf(grids.get(0)), valuesOf(grid));
    EXPECT_FALSE(grids.get(2).isData());
    EXPECT_FALSE(grids.get(-1).isData());
    EXPECT_EQ(grids.setNum(5), 1);
    EXPECT_EQ(grids.getNum(), 5);
    for (int const num : {-1, INT_MIN, INT_MAX})
        EXPECT_EQ(grids.setNum(num), 0);
    EXPECT_EQ(grids.getNum(), 5);
    EXPECT_EQ(grids.setNum(1), 1);
    EXPECT_EQ(grids.find(GridSpec("HGT,850mb")), -1);
}

} // namespace
} // namespace Yul
