#include "grid/ObjectAnal.h"

#include "core/Yul.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr float MISS = Const::MISS;
constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

// The analysis as it is defined, point by point and station by station, all in double precision ----------------

struct Reference
{
    std::vector<double> grid;
    double rms;
    int count;
};

double bilinear(std::vector<double> const & grid, int nx, int ny, double x, double y)
{
    if (!(x >= 0 && x <= nx - 1 && y >= 0 && y <= ny - 1))
        return MISS;
    int const i = static_cast<int>(x);
    int const j = static_cast<int>(y);
    double sum = 0;
    for (int row = j; row <= std::min(j + 1, ny - 1); ++row)
        for (int column = i; column <= std::min(i + 1, nx - 1); ++column) {
            double const value = grid[static_cast<std::size_t>(row * nx + column)];
            if (value == MISS)
                return MISS;
            sum += value * (1 - std::fabs(x - column)) * (1 - std::fabs(y - row));
        }
    return sum;
}

Reference analyseByDefinition(StationData const & data, int field, ObjectAnal const & anal)
{
    auto const & domain = anal.getDomain();
    int const nx = domain.getNx();
    int const ny = domain.getNy();
    GridPoints places;
    domain.tran(data.getLocations(), places);
    std::vector<double> values;
    for (int i = 0; i < data.getNum(); ++i) {
        double const value = data.getValue(i, field);
        values.push_back(value == MISS ? anal.getMissVal() : value);
    }
    Reference result{std::vector<double>(static_cast<std::size_t>(nx * ny)), 0, 0};
    auto residuals = values;
    double filter = anal.getFilter();
    double const radius = anal.getRadInf();
    for (int pass = 1; pass <= std::max(anal.getNumPass(), 1); ++pass) {
        for (int row = 0; row < ny; ++row)
            for (int column = 0; column < nx; ++column) {
                double weights = 0;
                double sum = 0;
                int count = 0;
                for (std::size_t i = 0; i < residuals.size(); ++i) {
                    auto const & place = places.all()[i];
                    double const dx = static_cast<double>(place.x) - column;
                    double const dy = static_cast<double>(place.y) - row;
                    double const square = dx * dx + dy * dy;
                    if (!place.isSet() || residuals[i] == MISS || square > radius * radius)
                        continue;
                    double const weight = std::exp(-square / filter);
                    weights += weight;
                    sum += weight * residuals[i];
                    ++count;
                }
                auto & value = result.grid[static_cast<std::size_t>(row * nx + column)];
                bool const is_enough = weights != 0 && count >= anal.getMinSta() && value != MISS;
                value = is_enough ? value + sum / weights : MISS;
            }
        double total = 0;
        result.count = 0;
        for (std::size_t i = 0; i < residuals.size(); ++i) {
            auto const & place = places.all()[i];
            double const analysed = bilinear(result.grid, nx, ny, place.x, place.y);
            bool const is_valid = place.isSet() && analysed != MISS && values[i] != MISS;
            residuals[i] = is_valid ? values[i] - analysed : MISS;
            if (is_valid) {
                total += residuals[i] * residuals[i];
                ++result.count;
            }
        }
        result.rms = result.count > 0 ? std::sqrt(total / result.count) : MISS;
        filter *= anal.getConverg();
    }
    return result;
}

/// Stations in and round a grid: some on grid points, edges and corners, some outside, some nowhere; one value in
/// six is missing.
StationData makeReports(Domain const & domain, int count, int fields, unsigned seed)
{
    std::mt19937 random(seed);
    auto const nx = static_cast<float>(domain.getNx());
    auto const ny = static_cast<float>(domain.getNy());
    std::uniform_real_distribution<float> columns(-4, nx + 3);
    std::uniform_real_distribution<float> rows(-4, ny + 3);
    std::uniform_real_distribution<float> values(-20, 30);
    StationData data(fields);
    for (int i = 0; i < count; ++i) {
        GridPoint place(columns(random), rows(random));
        if (i % 5 == 0)
            place.set(std::round(place.x), std::round(place.y));
        if (i % 17 == 0)
            place.set(nx - 1, ny - 1);
        EarthPoint earth;
        domain.tran(place, earth);
        if (i % 23 == 7)
            earth.set(MISS, MISS);
        EXPECT_EQ(data.add(earth), i);
        for (int field = 0; field < fields; ++field)
            if (random() % 6 != 0)
                data.setValue(i, field, values(random));
    }
    return data;
}

void expectAsDefined(StationData const & data, ObjectAnal & anal, std::string const & what)
{
    Grids grids;
    ASSERT_EQ(anal.compute(data, grids), 1) << what;
    ASSERT_EQ(grids.getNum(), data.getFields());
    for (int field = 0; field < data.getFields(); ++field) {
        auto const expected = analyseByDefinition(data, field, anal);
        auto const values = grids.get(field).getValues();
        ASSERT_EQ(values.size(), expected.grid.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            ASSERT_EQ(values[i] == MISS, expected.grid[i] == MISS) << what << ", point " << i;
            ASSERT_NEAR(values[i], expected.grid[i], 3e-5) << what << ", point " << i;
        }
        EXPECT_NEAR(anal.getRms(field), expected.rms, 1e-5) << what;
    }
}

struct AnalysisCase
{
    char const * domain;
    int stations;
    float filter, rad_inf, conv;
    int min_sta;
    float miss;
};

std::ostream & operator<<(std::ostream & out, AnalysisCase const & c)
{
    return out << c.domain << ", " << c.stations << " stations, " << c.filter << ", " << c.rad_inf << ", "
               << c.conv << ", " << c.min_sta << ", " << c.miss;
}

constexpr AnalysisCase ANALYSIS_CASES[] = {
    {"ll,45,-95,31,23,1,1", 150, 1, 3, 0.2F, 1, MISS},
    {"ll,45,-95,31,23,1,1", 150, 1, 3, 0.2F, 3, MISS},
    {"ll,45,-95,31,23,1,1", 150, 1, -3, 0.2F, 1, 5},
    {"stereo:90:-25,53,-25,29,21,1.5", 120, 4, 5, 0.3F, 2, MISS},
    {"stereo:90:-25,53,-25,29,21,1.5", 120, 0.25F, 1.75F, 0.9F, 1, MISS},
    {"merc,0,0,40,9,2,2", 60, 9, 4.3F, 0.01F, 1, MISS},
    {"merc,0,0,40,9,2,2", 60, 50, 100, 0.2F, 5, MISS},
    {"lambert:50:10,50,10,17,17,1", 40, INF, 2.5F, 0.5F, 1, MISS},
    {"lambert:50:10,50,10,17,17,1", 300, 1e-30F, 0.5F, 0.2F, 1, MISS},
    {"ll,45,-95,31,23,1,1", 150, 1, 0, 0.2F, 1, MISS},
    {"ll,45,-95,31,23,1,1", 30, 3, INF, 0.2F, 1, MISS},
    {"ll,45,-95,1,12,1,1", 40, 1, 3, 0.2F, 1, MISS},
    {"ll,45,-95,12,1,1,1", 40, 1, 3, 0.2F, 1, MISS},
    {"ll,45,-95,31,23,1,1", 0, 1, 3, 0.2F, 1, MISS},
};

TEST(ObjectAnal, GivesWhatItsDefinitionGivesInOneToFivePasses)
{
    for (auto const & c : ANALYSIS_CASES)
        for (int pass = 1; pass <= 5; ++pass) {
            Domain const domain(c.domain);
            ASSERT_FALSE(domain.isMiss()) << c;
            auto const data = makeReports(domain, c.stations, 2, static_cast<unsigned>(pass));
            ObjectAnal anal;
            anal.setDomain(domain);
            anal.set(c.filter, c.rad_inf, pass, c.conv);
            anal.setMinSta(c.min_sta);
            anal.setMissVal(c.miss);
            expectAsDefined(data, anal, ::testing::PrintToString(c) + ", passes " + std::to_string(pass));
        }
}

TEST(ObjectAnal, ManyFieldsShareTheirWeightsAndGoInGroups)
{
    Domain const domain("ll,45,-95,4001,5,1,1");
    ObjectAnal anal;
    anal.setDomain(domain);
    anal.set("1,3,2");
    for (int const min_sta : {1, 2}) {
        anal.setMinSta(min_sta);
        expectAsDefined(makeReports(domain, 500, 60, 9), anal, "60 fields");
    }
}

TEST(ObjectAnal, TheCutOffIsInclusive)
{
    Domain domain;
    domain.set(11, 11);
    StationData data(1);
    EarthPoint earth;
    domain.tran(GridPoint(1, 1), earth);
    data.setValue(data.add(earth), 0, 7);
    ObjectAnal anal;
    anal.setDomain(domain);
    anal.set("1,5");
    Grids grids;
    ASSERT_EQ(anal.compute(data, grids), 1);
    EXPECT_EQ(grids.get(0).getValue(4, 5), 7); // 3, 4, 5
    EXPECT_EQ(grids.get(0).getValue(6, 1), 7);
    EXPECT_EQ(grids.get(0).getValue(5, 5), MISS);
    anal.setRadInf(std::nextafter(5.0F, 0.0F));
    ASSERT_EQ(anal.compute(data, grids), 1);
    EXPECT_EQ(grids.get(0).getValue(4, 5), MISS);
}

TEST(ObjectAnal, TheOrderOfStationsDoesNotCount)
{
    Domain const domain("ll,45,-95,40,30,1,1");
    auto data = makeReports(domain, 400, 1, 3);
    std::vector<int> order(static_cast<std::size_t>(data.getNum()));
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(4));
    StationData shuffled(1);
    for (int const i : order)
        shuffled.setValue(shuffled.add(data.getLocation(i)), 0, data.getValue(i, 0));
    ObjectAnal anal;
    anal.setDomain(domain);
    anal.setNumPass(3);
    Grids a;
    Grids b;
    ASSERT_EQ(anal.compute(data, a), 1);
    ASSERT_EQ(anal.compute(shuffled, b), 1);
    for (std::size_t i = 0; i < a.get(0).getValues().size(); ++i)
        ASSERT_NEAR(a.get(0).getValues()[i], b.get(0).getValues()[i], 2e-5);
}

TEST(ObjectAnal, FillsTheListAndLeavesTheRest)
{
    Domain const domain("ll,45,-95,9,7,1,1");
    auto data = makeReports(domain, 30, 2, 3);
    data.setName(1, "TMP[C]");
    auto const before = data;
    Grids grids;
    grids.setNum(3);
    grids.get(0).setLevel("850mb");
    grids.get(0).setVar("HGT");
    grids.get(2).setInfo("mine");
    ObjectAnal anal;
    anal.setDomain(domain);
    ASSERT_EQ(anal.compute(data, grids), 1);
    ASSERT_EQ(grids.getNum(), 3);
    EXPECT_EQ(grids.get(0).getLevel().getValue(), 850);
    EXPECT_STREQ(grids.get(0).getVar().getName(), "HGT");
    EXPECT_STREQ(grids.get(1).getVar().getName(), "TMP");
    EXPECT_STREQ(grids.get(1).getUnits(), "C");
    EXPECT_TRUE(grids.get(1).getDomain().compare(domain));
    EXPECT_EQ(grids.get(1).getNx(), 9);
    EXPECT_EQ(grids.get(1).getNy(), 7);
    EXPECT_STREQ(grids.get(2).getInfo(), "mine");
    EXPECT_FALSE(grids.get(2).isData());
    for (int i = 0; i < data.getNum(); ++i)
        for (int field = 0; field < 2; ++field)
            EXPECT_EQ(data.getValue(i, field), before.getValue(i, field));
}

TEST(ObjectAnal, RefusesWhatHasNoGridAndWhatNoMemoryHolds)
{
    Grids grids;
    ObjectAnal anal;
    EXPECT_EQ(anal.compute(StationData(1), grids), 0);
    anal.setDomain(Domain("ll,45,-95,9,7,1,1"));
    EXPECT_EQ(anal.compute(StationData(0), grids), 0);
    EXPECT_EQ(anal.compute(StationData(-1), grids), 0);
    DomainVal val = anal.getDomain().get();
    for (auto const & [nx, ny] : {std::pair{MISS, 5.0F},
                                  {0.0F, 5.0F},
                                  {-7.0F, 5.0F},
                                  {5.0F, MISS},
                                  {2e9F, 2e9F},
                                  {65536.0F, 65536.0F}}) {
        val.nx = static_cast<int>(nx);
        val.ny = static_cast<int>(ny);
        anal.setDomain(Domain(val));
        EXPECT_EQ(anal.compute(StationData(1), grids), 0) << nx << " x " << ny;
    }
    anal.setDomain(Domain("ll,45,-95,2000,2000,1,1"));
    EXPECT_EQ(anal.compute(StationData(StationData::MAX_FIELDS), grids), 0);
    EXPECT_EQ(anal.getRms(0), MISS);
}

TEST(ObjectAnal, EndsAndStaysDefinedWhateverItIsGiven)
{
    Domain const domain("ll,45,-95,9,7,1,1");
    constexpr float FLOATS[] = {0, -1, 1e-45F, 1e38F, -3e38F, INF, -INF, NOT_A_NUMBER, MISS};
    constexpr int INTS[] = {INT_MIN, -1, 0, 2, INT_MAX};
    StationData data(1);
    for (float const a : FLOATS)
        for (float const b : FLOATS) {
            int const station = data.add(EarthPoint(a, b));
            data.setValue(station, 0, a);
        }
    data.setValue(data.add(EarthPoint(45, -95)), 0, std::numeric_limits<float>::max());
    data.setValue(data.add(EarthPoint(45.5F, -95)), 0, -std::numeric_limits<float>::max());
    ObjectAnal anal;
    anal.setDomain(domain);
    Grids grids;
    for (float const number : FLOATS)
        for (int const count : INTS) {
            anal.init();
            anal.setFilter(number);
            anal.setNumPass(count);
            EXPECT_EQ(anal.compute(data, grids), 1) << number << " " << count;
            anal.init();
            anal.setNumPass(3);
            anal.setRadInf(number);
            anal.setMinSta(count);
            anal.setMissVal(number);
            EXPECT_EQ(anal.compute(data, grids), 1) << number << " " << count;
            for (float const value : grids.get(0).getValues())
                EXPECT_TRUE(std::isfinite(value));
        }
}

TEST(ObjectAnal, BadValuesBecomeTheDefault)
{
    ObjectAnal anal;
    for (float const bad : {0.0F, -1.0F, -INF, NOT_A_NUMBER}) {
        anal.setFilter(7);
        EXPECT_EQ(anal.setFilter(bad), 1);
        EXPECT_EQ(anal.getFilter(), 1) << bad;
    }
    for (float const bad : {0.009F, 1.0F, 1.5F, -INF, INF, NOT_A_NUMBER}) {
        anal.setConverg(0.5F);
        EXPECT_EQ(anal.setConverg(bad), 1);
        EXPECT_EQ(anal.getConverg(), 0.2F) << bad;
    }
    EXPECT_EQ(anal.setConverg(0.01F), 1);
    EXPECT_EQ(anal.getConverg(), 0.01F);
    anal.setMinSta(4);
    anal.setMinSta(0);
    EXPECT_EQ(anal.getMinSta(), 1);
    EXPECT_EQ(anal.set(2, NOT_A_NUMBER, 3, 0.3F), 0);
    EXPECT_EQ(anal.setMissVal(INF), 0);
    EXPECT_EQ(anal.getFilter(), 1);
    EXPECT_EQ(anal.getMissVal(), MISS);
}

struct TextCase
{
    char const * text;
    int result;
    float filter, rad_inf;
    int pass;
    float conv;
    int min_sta;
    float miss;
};

void expectParameters(ObjectAnal const & anal, TextCase const & c)
{
    EXPECT_EQ(anal.getFilter(), c.filter) << c.text;
    EXPECT_EQ(anal.getRadInf(), c.rad_inf) << c.text;
    EXPECT_EQ(anal.getNumPass(), c.pass) << c.text;
    EXPECT_EQ(anal.getConverg(), c.conv) << c.text;
    EXPECT_EQ(anal.getMinSta(), c.min_sta) << c.text;
    EXPECT_EQ(anal.getMissVal(), c.miss) << c.text;
}

constexpr TextCase SET_CASES[] = {
    {"2,4,3,0.3,2", 1, 2, 4, 3, 0.3F, 2, MISS}, {" 2, 4, 3, 0.3, 2 ", 1, 2, 4, 3, 0.3F, 2, MISS},
    {"2", 1, 2, 3, 1, 0.2F, 1, MISS},           {"2,4", 1, 2, 4, 1, 0.2F, 1, MISS},
    {"2:4", 1, 2, 3, 1, 0.2F, 1, MISS},         {"-2,4,3,1.5,0", 1, 1, 4, 3, 0.2F, 1, MISS},
    {"2,4,x,0.3", 1, 2, 4, 1, 0.2F, 1, MISS},   {"2,-4,-3,0.01,9", 1, 2, -4, -3, 0.01F, 9, MISS},
    {",4", 0, 1, 3, 1, 0.2F, 1, MISS},          {"filter=2", 0, 1, 3, 1, 0.2F, 1, MISS},
    {"nan,inf", 0, 1, 3, 1, 0.2F, 1, MISS},     {"", 0, 1, 3, 1, 0.2F, 1, MISS},
    {nullptr, 0, 1, 3, 1, 0.2F, 1, MISS},
};

constexpr TextCase PARAM_CASES[] = {
    {"filter=2,rad_inf=4,pass=3,conv=0.3,min_sta=2,miss=5", 1, 2, 4, 3, 0.3F, 2, 5},
    {"FILTER 2,Rad_Inf:4,pass-3", 1, 2, 4, 3, 0.2F, 1, MISS},
    {" filter= 2 ,, pass=3,", 1, 2, 3, 3, 0.2F, 1, MISS},
    {"oa=2:4:3:0.3:2", 1, 2, 4, 3, 0.3F, 2, MISS},
    {"oa=2:4,pass=5", 1, 2, 4, 5, 0.2F, 1, MISS},
    {"oa=2", 1, 2, 3, 1, 0.2F, 1, MISS},
    {"oa=2,4,3", 1, 2, 4, 3, 0.2F, 1, MISS},
    {"oa=2,4,pass=5", 1, 2, 4, 5, 0.2F, 1, MISS},
    {"miss=5,oa=2,4,3,0.3,2,filter=6", 1, 6, 4, 3, 0.3F, 2, 5},
    {"filter=-2,conv=1,min_sta=-9", 1, 1, 3, 1, 0.2F, 1, MISS},
    {"filter,3", 0, 1, 3, 1, 0.2F, 1, MISS},
    {"filter=,pass=3", 0, 1, 3, 3, 0.2F, 1, MISS},
    {"bogus=1,pass=3,oa=x", 0, 1, 3, 3, 0.2F, 1, MISS},
    {"pass=99999999999", 1, 1, 3, INT_MAX, 0.2F, 1, MISS},
    {"", 1, 1, 3, 1, 0.2F, 1, MISS},
    {nullptr, 1, 1, 3, 1, 0.2F, 1, MISS},
};

TEST(ObjectAnal, ReadsItsParametersFromTexts)
{
    for (auto const & c : SET_CASES) {
        ObjectAnal anal;
        EXPECT_EQ(anal.set(c.text), c.result) << (c.text != nullptr ? c.text : "null");
        expectParameters(anal, c);
    }
    for (auto const & c : PARAM_CASES) {
        ObjectAnal anal;
        EXPECT_EQ(anal.setParam(c.text), c.result) << (c.text != nullptr ? c.text : "null");
        expectParameters(anal, c);
    }
}

TEST(StationData, KeepsWhatItIsGivenAndRefusesTheRest)
{
    StationData data(2);
    EXPECT_EQ(data.add(EarthPoint(50, 10)), 0);
    float const lats[] = {51, 52, 53};
    float const lons[] = {11, 12, 13};
    EXPECT_EQ(data.add(lats, lons), 1);
    EXPECT_EQ(data.add(std::span(lats).first(2), lons), -1);
    EXPECT_EQ(data.add(data.getLocation(3)), 4);
    EXPECT_EQ(data.getNum(), 5);
    EXPECT_EQ(data.getLocation(4).getLat(), 53);
    EXPECT_FALSE(data.getLocation(5).isSet());

    EXPECT_EQ(data.setValue(4, 1, 7), 1);
    EXPECT_EQ(data.setValue(4, 1, INF), 0);
    EXPECT_EQ(data.getValue(4, 1), 7);
    EXPECT_EQ(data.setValue(4, 1, NOT_A_NUMBER), 1);
    EXPECT_EQ(data.getValue(4, 1), MISS);
    float const values[] = {1, 2, NOT_A_NUMBER, INF, 5};
    EXPECT_EQ(data.setValues(0, values), 1);
    EXPECT_EQ(data.setValues(1, std::span(values).first(4)), 0);
    EXPECT_EQ(data.getValue(1, 0), 2);
    EXPECT_EQ(data.getValue(2, 0), MISS);
    EXPECT_EQ(data.getValue(3, 0), MISS);
    EXPECT_EQ(data.getValue(4, 1), MISS);
    for (int const bad : {-1, 5, INT_MAX, INT_MIN}) {
        EXPECT_EQ(data.setValue(bad, 0, 1), 0);
        EXPECT_EQ(data.setValue(0, bad, 1), 0);
        EXPECT_EQ(data.setValues(bad, values), 0);
        EXPECT_EQ(data.setName(bad, "TMP"), 0);
        EXPECT_EQ(data.getValue(bad, bad), MISS);
        EXPECT_STREQ(data.getName(bad), "");
    }
    data.setName(1, "TMP");
    data.clear();
    EXPECT_EQ(data.getNum(), 0);
    EXPECT_EQ(data.getFields(), 2);
    EXPECT_STREQ(data.getName(0), "");
    EXPECT_STREQ(data.getName(1), "TMP");
    EXPECT_EQ(data.setName(1, nullptr), 1);
    EXPECT_STREQ(data.getName(1), "");
    StationData wide(StationData::MAX_FIELDS);
    std::vector<float> const many(1000000);
    EXPECT_EQ(wide.add(many, many), -1); // 4 TB
    EXPECT_EQ(wide.getNum(), 0);
    for (int const bad : {-1, INT_MIN, INT_MAX, StationData::MAX_FIELDS + 1})
        EXPECT_EQ(StationData(bad).getFields(), 0);
}

} // namespace
} // namespace Yul
