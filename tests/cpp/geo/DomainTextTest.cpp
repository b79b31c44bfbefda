#include "core/Yul.h"
#include "cpp/Folder.h"
#include "geo/CityFile.h"
#include "geo/Domain.h"
#include "geo/DomainTool.h"
#include "geo/LookupFile.h"

#include <cmath>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr float MISS = Const::MISS;

/// The database directory of the tests for as long as it lives.
class Database
{
public:
    Database() { Yul::setDatabasePath(YUL_DATABASE); }

    ~Database() { Yul::setDatabasePath(""); }
};

std::string textOf(DomainVal const & val)
{
    String text;
    val.toString(text);
    return text.get();
}

/// What a decoding writes to standard error.
template <class Work> std::string warningsOf(Work const & work)
{
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

constexpr std::pair<char const *, int> KEYWORDS[] = {
    {"ll", 2},        {"LATITUDE", 2}, {"rectangular", 2}, {"polar", 1},    {"ps", 1},
    {"stereo", 1},    {"stuve", 1},    {"sat", 10},        {"sa", -1},      {"lambaz", 8},
    {"LAMBERT", 4},   {"lamb", 4},     {"lam", 8},         {"lc", 4},       {"la", 8},
    {"az", 8},        {"alb", 9},      {"gn", 6},          {"or", 5},       {"mo", 7},
    {"me", 3},        {"rad", 11},     {"pixel", 20},      {"xy", 21},      {"xlogy", 24},
    {"xlogp", 24},    {"cat", 26},     {"skewt", 40},      {"ema", 42},     {"teph", 43},
    {"rteph", 44},    {"re", 2},       {"rt", -1},         {"therm", 40},   {"hodograph", 25},
    {"vertical", 24}, {"xp", 23},      {"xpress", -1},     {"pola", -1},    {"zoom", 50},
    {"size", 51},     {"miss", -9999}, {"missing", -1},    {"MISS", -9999}, {"", -1},
    {"nowhere", -1},  {"l", -1},
};

TEST(Domain, FirstMatchingKeywordWins)
{
    for (auto const & [text, code] : KEYWORDS)
        EXPECT_EQ(Domain::getProj(text), code) << text;
    EXPECT_EQ(Domain::getProj(nullptr), -1);
}

struct TextCase
{
    char const * text;
    char const * result;
};

/// Texts and the records that they give, beginning with nothing.
constexpr TextCase TEXTS[] = {
    // the templates in their order
    {"lambert:40:-95,38,-94,100,80,1,2",
     "lamb:40.000000:-95.000000,38.000000,-94.000000,100,80,1.000000,2.000000"},
    {"ps,60,-100,50,40,1.5", "pstereo,60.000000,-100.000000,50,40,1.500000,1.500000"},
    {"me,10,20,3,4", "merc,10.000000,20.000000,-9999,-9999,3.000000,4.000000"},
    {"me,10,20,3", "merc,10.000000,20.000000,-9999,-9999,3.000000,3.000000"},
    {"me,10,20", "merc,10.000000,20.000000,-9999,-9999,-9999.000000,-9999.000000"},
    // the projection field
    {"lambert:e:40:-95:30:60,1,2,3,4,5,6",
     "lamb:e:40.000000:-95.000000:30.000000:60.000000,1.000000,2.000000,3,4,5.000000,6.000000"},
    {"ll:180,1,2,3,4,5,6", "latlon:180.000000,1.000000,2.000000,3,4,5.000000,6.000000"},
    {"ll:E:180,1,2,3,4,5,6", "latlon:e:180.000000,1.000000,2.000000,3,4,5.000000,6.000000"},
    {"ll:e,1,2,3,4,5,6", "latlon:e,1.000000,2.000000,3,4,5.000000,6.000000"},
    {"sat:0:-75:::60,0,-75,3,4,5,6",
     "sat:0.000000:-75.000000:::60.000000,0.000000,-75.000000,3,4,5.000000,6.000000"},
    {"albers : 40 : -95 , 1 , +2 , 3 , 4 , 5 , 6",
     "albers:40.000000:-95.000000,1.000000,2.000000,3,4,5.000000,6.000000"},
    {"radial,35,-97,230,230,.01", "radial,35.000000,-97.000000,230,230,0.010000,0.010000"},
    {"skewt,300,-20", "skewt,300.000000,-20.000000,101,101,0.800000,0.023514"},
    {"skewt,300,-20,1", "skewt,300.000000,-20.000000,101,101,1.000000,0.029392"},
    {"", "miss"},
    {"  Miss ", "miss"},
};

TEST(DomainTool, DecodesTheFormsOfADomainText)
{
    for (auto const & [text, result] : TEXTS) {
        DomainVal val;
        EXPECT_EQ(DomainTool::decode(text, val), 1) << text;
        EXPECT_EQ(textOf(val), result) << text;
    }
}

TEST(DomainTool, KeepsFieldsThatATextDoesNotGive)
{
    constexpr char const * BEFORE = "lamb:e:40:-95:30:60,40,-95,101,81,2,2";
    constexpr TextCase AFTER[] = {
        {"10,20,3,4,5,6",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,3,4,5.000000,6.000000"},
        {"10,20,3,4,5",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,3,4,5.000000,5.000000"},
        {"10,20,3,4",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,3,4,2.000000,2.000000"},
        {"10,20,3",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,101,81,3.000000,3.000000"},
        {"10,20",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,101,81,2.000000,2.000000"},
        // another projection leaves nothing of the one before; it shows a fifth more
        {"ps,10,20", "pstereo,10.000000,20.000000,101,81,2.400000,2.400000"},
        {"zoom,10,20",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,101,81,2.000000,2.000000"},
        {"zoom,10,20,.5",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,10.000000,20.000000,101,81,1.000000,1.000000"},
        {"size,201,41",
         "lamb:e:40.000000:-95.000000:30.000000:60.000000,40.000000,-95.000000,201,41,1.000000,4.000000"},
        {"", "miss"},
    };
    for (auto const & [text, result] : AFTER) {
        DomainVal val;
        ASSERT_EQ(DomainTool::decode(BEFORE, val), 1);
        EXPECT_EQ(DomainTool::decode(text, val), 1) << text;
        EXPECT_EQ(textOf(val), result) << text;
    }
    DomainVal degrees;
    DomainTool::decode("ll,0,0,11,11,10", degrees);
    EXPECT_EQ(warningsOf([&] { DomainTool::decode("zoom,0,0,3e38", degrees); }),
              "DomainTool::decode: Invalid plot domain: zoom,0,0,3e38\n"); // beyond all floats
    DomainTool::decode("ll,0,0,11,11,1", degrees);
    ASSERT_EQ(DomainTool::decode("lamb,40,-95", degrees), 1);
    EXPECT_NEAR(degrees.dx, 1.2 * 63.7122 * 0.017453293, 1e-5); // a degree is 1.112 units long
}

constexpr char const * REFUSED[] = {
    "nowhere",
    "gnu,1,2,3,4,5,6,7",
    "ps,-9999,2,3,4,5,6",
    "ps,1,2,3.5,4,5,6",
    "ps,1,2,x,4,5,6",
    "ps,1,2,3,4,5,nan",
    "ps,1,2,3,4,5,inf",
    "ps,1,2,3,4,5,1e99",
    "ps,1,2,99999999999,4,5,6",
    "ps:1:2:3:4:5:6:7,1,2,3,4,5,6",
    "ps:-9999,1,2,3,4,5,6",
    "ps:x,1,2,3,4,5,6",
    "zoom,10,20",
    "zoom,10,20,1,2,3",
    "size,10,20",
    "ps,,2,3,4,5,6",
    ",,,,,,",
    "abcd",
    "id",
    "%s%s%n",
    "fi:",
    "fi:/nowhere/none.reg,x",
    "fi:|touch x,x",
};

TEST(DomainTool, RefusesOtherTextsWithOneWarningAndLeavesTheDomainMissing)
{
    for (char const * text : REFUSED) {
        DomainVal val;
        val.nx = 5;
        Domain domain("ll,0,0,11,11,1");
        int result = -1;
        std::string const expected = std::string("DomainTool::decode: Invalid plot domain: ") + text + "\n";
        EXPECT_EQ(warningsOf([&] { result = DomainTool::decode(text, val); }), expected) << text;
        EXPECT_EQ(result, 0) << text;
        EXPECT_TRUE(val.compare(DomainVal())) << text;
        if (std::string(text).starts_with("zoom,10,20") || std::string(text).starts_with("size"))
            continue; // these need a domain before them
        EXPECT_EQ(warningsOf([&] { result = domain.set(text); }), expected) << text;
        EXPECT_EQ(result, 0) << text;
        EXPECT_TRUE(domain.isMiss()) << text;
    }
}

TEST(DomainTool, SetsSingleFieldsAndListsOfThem)
{
    DomainVal val;
    EXPECT_EQ(DomainTool::setParam(val, "45", "clat"), 1);
    EXPECT_EQ(DomainTool::setParam(val, "-9999", "clat"), 0);
    EXPECT_EQ(DomainTool::setParam(val, "word", "clat"), 0);
    EXPECT_EQ(val.clat, 45);
    EXPECT_EQ(DomainTool::setParam(val, "45", "plat"), 0); // the projection field gives it
    EXPECT_EQ(DomainTool::setParam(val, "-75", "plon"), 1);
    EXPECT_EQ(DomainTool::setParam(val, "45", nullptr), 0);
    EXPECT_EQ(DomainTool::setParam(val, nullptr, "nx"), 0);
    EXPECT_EQ(DomainTool::setParams(val, Strings("1,2,x", ','), "clat,clon,dx"), 0);
    EXPECT_EQ(DomainTool::setParams(val, Strings("1,2", ','), "clat,clon,dx"), 0);
    EXPECT_EQ(val.clat, 45);
    EXPECT_EQ(DomainTool::setParams(val, Strings("1,2,3", ','), "clat,clon,dx"), 1);
    EXPECT_EQ(std::tuple(val.clat, val.clon, val.dx, val.dy), std::tuple(1.F, 2.F, 3.F, MISS));
}

TEST(DomainTool, ReadsBackWhatItWritesForEveryMap)
{
    for (int proj = Domain::PSTEREO; proj <= Domain::RADIAL; ++proj)
        for (int given = 0; given < 64; ++given) { // which of the six numbers are there
            DomainVal val;
            val.proj = proj;
            val.ellipse = given % 2 != 0;
            val.plat = given & 1 ? 40.25F : MISS;
            val.plon = given & 2 ? -95.5F : MISS;
            for (int i = 0; i < DomainVal::NUM_PARAM; ++i)
                val.setParam(i, (given >> (i + 2)) & 1 ? 10.F + static_cast<float>(i) : MISS);
            std::tie(val.clat, val.clon, val.nx, val.ny, val.dx, val.dy) =
                std::tuple(45.F, -90.F, 3, 4, .5F, .25F);
            DomainVal back;
            ASSERT_EQ(DomainTool::decode(textOf(val).c_str(), back), 1) << textOf(val);
            EXPECT_TRUE(back.compare(val)) << textOf(val) << " became " << textOf(back);
        }
    EXPECT_DOUBLE_EQ(Domain::earth_rad, 63.7122); // a bare decode leaves the earth alone
}

TEST(DomainTool, FindsStationsAndRegions)
{
    Database const database;
    DomainVal val;
    ASSERT_EQ(DomainTool::decode("ps,KMSP,50,40,1,2", val), 1);
    EXPECT_NEAR(val.clat, 44.9, 0.1);
    EXPECT_NEAR(val.clon, -93.2, 0.1);
    EXPECT_EQ(DomainTool::decode("ID:CYUL", val), 1);
    EXPECT_NEAR(val.clat, 45.47, 0.1);
    EXPECT_EQ(val.nx, 50);
    EXPECT_EQ(DomainTool::decode("id:sao.cty:eddf,3", val), 1);
    EXPECT_EQ(std::tuple(val.dx, val.dy), std::tuple(3.F, 3.F));

    int result = -1;
    EXPECT_EQ(warningsOf([&] { result = DomainTool::setParam(val, "QQQQ", "id"); }),
              "DomainTool::setParam: Unable to find: QQQQ\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(warningsOf([&] { result = DomainTool::setParam(val, "id:none.cty:KMSP", "id"); }),
              "DomainTool::setParam: Unable to find: id:none.cty:KMSP\n");
    EXPECT_EQ(warningsOf([&] { result = DomainTool::setParam(val, "kmsp", "id"); }), "");

    EXPECT_EQ(DomainTool::decode("Europe", val), 1);
    EXPECT_EQ(val.proj, Domain::LAMB);
    test::Folder const folder;
    std::string const own =
        folder.write("own.reg", "# own regions\nhere: ll,1,2,3,4,5,6\nthere:here\nround: round\n");
    EXPECT_EQ(DomainTool::decode("here", val, own.c_str()), 1);
    EXPECT_EQ(val.clat, 1);
    EXPECT_EQ(DomainTool::decode(("fi:" + own + ",THERE").c_str(), val, own.c_str()), 1);
    EXPECT_EQ(warningsOf([&] { result = DomainTool::decode("round", val, own.c_str()); }),
              "DomainTool::decode: Invalid plot domain: round\n");
}

TEST(Database, EveryRegionIsAMapWithItsCentreInside)
{
    Database const database;
    auto const regions = detail::LookupFile::open("yul.reg", ':');
    ASSERT_NE(regions, nullptr);
    EXPECT_GE(regions->entries().size(), 60U);
    for (auto const & region : regions->entries()) {
        Domain const domain(std::string(region.key).c_str());
        EXPECT_TRUE(domain.isMap()) << region.key;
        EXPECT_EQ(domain.within(EarthPoint(domain.get().clat, domain.get().clon)), 1) << region.key;
        EarthPoint corner;
        EXPECT_TRUE(domain.get().proj == Domain::SAT || domain.get().proj == Domain::MOLL ||
                    domain.tran(0, corner))
            << region.key;
    }
}

TEST(Database, HoldsTheStations)
{
    Database const database;
    CityFile const cities(CityFile::DEFAULT_NAME);
    EXPECT_GE(cities.getNum(), 6000);
    CityData city;
    for (int i = 0; i < cities.getNum(); ++i)
        EXPECT_EQ(cities.get(i, city), 1) << i;
    EXPECT_EQ(cities.get(-1, city) + cities.get(cities.getNum(), city) + cities.find(nullptr, city), 0);
    ASSERT_EQ(cities.find("egll", city), 1);
    EXPECT_STREQ(city.getId(), "EGLL");
    EXPECT_EQ(CityFile("none.cty").getNum(), 0);
    EXPECT_EQ(CityFile(nullptr).find("EGLL", city), 0);
}

} // namespace
} // namespace Yul
