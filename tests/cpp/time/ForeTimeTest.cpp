#include "time/ForeTime.h"

#include "core/String.h"

#include <climits>
#include <random>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr int M = Const::MISS;

struct Case
{
    char const * given;
    char const * text; ///< as toText writes it
    int type;
    long from, to; ///< seconds
    int fore;
    char const * label;
};

constexpr Case CASES[] = {
    {"24", "24", ForeTime::FORE, 86400, 86400, 24, "24 hour"},
    {"72 fcst", "72", ForeTime::FORE, 259200, 259200, 72, "3 day"},
    {"1.25h", "75m", ForeTime::FORE, 4500, 4500, 1, "75 minute"},
    {"90s", "90s", ForeTime::FORE, 90, 90, 0, "90 second"},
    {"-6", "-6", ForeTime::FORE, -21600, -21600, -6, "-6 hour"},
    {"0", "0", ForeTime::FORE, 0, 0, 0, "analysis"},
    {"ANALYSIS", "anal", ForeTime::ANAL, 0, 0, 0, "analysis"},
    {"3 anal", "3anal", ForeTime::ANAL, 10800, 10800, 3, "3 hour analysis"},
    {"0-24acc", "0-24acc", ForeTime::ACC, 0, 86400, 24, "0-24 hour accumulation"},
    {" 66 - 72 Average ", "66-72avg", ForeTime::AVG, 237600, 259200, 72, "66-72 hour average"},
    {"15m-30m max", "15m-30mmax", ForeTime::MAX, 900, 1800, 0, "15-30 minute maximum"},
    {"15m-30mmax", "15m-30mmax", ForeTime::MAX, 900, 1800, 0, "15-30 minute maximum"},
    {"0-24min", "0-24min", ForeTime::MIN, 0, 86400, 24, "0-24 hour minimum"},
    {"3-27diff", "3-27diff", ForeTime::DIFF, 10800, 97200, 27, "3-27 hour difference"},
    {"108-120", "108-120range", ForeTime::RANGE, 388800, 432000, 120, "108-120 hour period"},
    {"-6acc", "-6-0acc", ForeTime::ACC, -21600, 0, 0, "-6 to 0 hour accumulation"},
    {"-28587-6477avg", "-28587-6477avg", ForeTime::AVG, -102913200, 23317200, 6477,
     "-28587 to 6477 hour average"},
    {"0s-90sacc", "0s-90sacc", ForeTime::ACC, 0, 90, 0, "0-90 second accumulation"},
    {"1d-2d min", "24-48min", ForeTime::MIN, 86400, 172800, 48, "24-48 hour minimum"},
    {"24 h", "24", ForeTime::FORE, 86400, 86400, 24, "24 hour"},
    {"F006", "6", ForeTime::FORE, 21600, 21600, 6, "6 hour"},
    {"T+12h", "12", ForeTime::FORE, 43200, 43200, 12, "12 hour"},
    {"+1.5 hrs", "90m", ForeTime::FORE, 5400, 5400, 1, "90 minute"},
    {"36-hour forecast", "36", ForeTime::FORE, 129600, 129600, 36, "36 hour"},
    {"15 min fcst", "15m", ForeTime::FORE, 900, 900, 0, "15 minute"},
    {"90 Minutes", "90m", ForeTime::FORE, 5400, 5400, 1, "90 minute"},
    {"2 days", "48", ForeTime::FORE, 172800, 172800, 48, "48 hour"},
    {"anl", "anal", ForeTime::ANAL, 0, 0, 0, "analysis"},
    {"15-30 min acc fcst", "15m-30macc", ForeTime::ACC, 900, 1800, 0, "15-30 minute accumulation"},
    {"1-2 d max", "24-48max", ForeTime::MAX, 86400, 172800, 48, "24-48 hour maximum"},
    {"f00-f06", "0-6range", ForeTime::RANGE, 0, 21600, 6, "0-6 hour period"},
    {"any", "any", ForeTime::ANY, M, M, M, "any time"},
    {"none", "", ForeTime::NONE, M, M, M, "data"},
    {"", "", ForeTime::NONE, M, M, M, "data"},
    {nullptr, "", ForeTime::NONE, M, M, M, "data"},
};

TEST(ForeTime, TextsLabelsAndHours)
{
    for (Case const & row : CASES) {
        ForeTime fore(99);
        String out;
        EXPECT_EQ(fore.set(row.given), 1) << row.given;
        EXPECT_EQ(fore.getType(), row.type) << row.given;
        EXPECT_EQ(fore.getFromSeconds(), row.from) << row.given;
        EXPECT_EQ(fore.getSeconds(), row.to) << row.given;
        EXPECT_EQ(fore.getFore(), row.fore) << row.given;
        fore.toTimeLabel(out);
        EXPECT_STREQ(out.get(), row.label);
        fore.toText(out);
        EXPECT_STREQ(out.get(), row.text);
        EXPECT_EQ(ForeTime(out.get()), fore) << row.text;
    }
}

TEST(ForeTime, RefusalsLeaveTheTimeAsItWas)
{
    for (char const * const bad :
         {"x",   "24x",  "acc",         "24-",    "24-6acc",  "6-12anal", "6-12fore",  "24 24",
          "--6", "1e9d", "99999999999", "24acc!", "0-24acc7", "nan",      "inf",       "-",
          "f",   "t+",   "f-6",         "+-6",    "fx6",      "24-hx",    "6 fcst acc"}) {
        ForeTime fore(6);
        EXPECT_EQ(fore.set(bad), 0) << bad;
        EXPECT_EQ(fore, ForeTime(6)) << bad;
    }
    ForeTime fore(6);
    for (int const type : {8, 10, -1, INT_MAX, INT_MIN})
        EXPECT_EQ(fore.set(type, 0, 6), 0);
    EXPECT_EQ(fore.set(ForeTime::FORE, 0, 6) + fore.set(ForeTime::ACC, 6, 0) +
                  fore.set(ForeTime::ACC, INT_MIN, INT_MAX) +
                  fore.setSeconds(ForeTime::FORE, LONG_MIN, LONG_MIN),
              0);
    EXPECT_EQ(fore, ForeTime(6));
    EXPECT_EQ(ForeTime(ForeTime::ACC, -6), ForeTime(ForeTime::ACC, -6, 0));
    EXPECT_FALSE(ForeTime(M).isSet());
}

TEST(ForeTime, CodesComeBack)
{
    EXPECT_EQ(ForeTime(24).getCode(), 24);
    EXPECT_EQ(ForeTime(-6).getCode(), -6);
    EXPECT_EQ(ForeTime().getCode(), M);
    for (Case const & row : CASES) {
        ForeTime const fore(row.given);
        ForeTime back(99);
        EXPECT_EQ(back.setCode(fore.getCode()), 1);
        bool const has_code = fore.getSeconds() - fore.getFromSeconds() <= 8191 * 3600;
        EXPECT_EQ(back, has_code ? fore : ForeTime()) << row.given;
    }
    std::mt19937 random(1);
    int accepted = 0;
    for (int i = 0; i < 100'000; ++i) {
        int const code = static_cast<int>(random() >> random() % 31) * (i % 2 == 0 ? 1 : -1);
        ForeTime fore(7);
        if (fore.setCode(code) == 1) {
            ASSERT_EQ(fore.getCode(), code);
            ++accepted;
        } else {
            ASSERT_EQ(fore, ForeTime(7)) << code;
        }
    }
    EXPECT_GT(accepted, 10'000);
    ForeTime odd;
    EXPECT_EQ(odd.setSeconds(ForeTime::FORE, M * 3600L, M * 3600L), 1); // its hours look missing
    ForeTime back;
    back.setCode(odd.getCode());
    EXPECT_EQ(back, odd);
}

TEST(ForeTime, AnyMatchesWhateverIsSet)
{
    ForeTime const any("any");
    EXPECT_TRUE(any.match(ForeTime(6)) && ForeTime("0-6acc").match(any) && any.match(any));
    EXPECT_FALSE(any.match(ForeTime()));
    EXPECT_TRUE(ForeTime(6).match(ForeTime("360m")));
    EXPECT_FALSE(ForeTime(6).match(ForeTime("0-6acc")));
}

} // namespace
} // namespace Yul
