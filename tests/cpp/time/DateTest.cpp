#include "time/Date.h"

#include "core/String.h"
#include "time/Civil.h"
#include "time/DateRange.h"

#include <climits>
#include <cmath>
#include <ctime>
#include <limits>
#include <ostream>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace Yul {

// Shows the whole value in failure messages.
void PrintTo(Date const & date, std::ostream * out)
{
    *out << date.year << '/' << date.month << '/' << date.day << ' ' << date.hour << ':' << date.minute << ':'
         << date.second << " (" << date.getSeconds() << ' ' << date.getZoneName() << ')';
}

namespace {

constexpr int M = Const::MISS;
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

std::string fields(DateVal const & d)
{
    auto const one = [](double value) {
        return value == M ? std::string("-") : std::to_string(static_cast<long>(value));
    };
    return one(d.year) + "/" + one(d.month) + "/" + one(d.day) + " " + one(d.hour) + ":" + one(d.minute) +
           ":" + one(static_cast<double>(d.second));
}

TEST(Civil, BreakdownAgreesWithTheSystemForAnyCount)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 200'000; ++i) {
        long const seconds = static_cast<long>(random()) >> (random() % 40 + 8);
        time_t const count = seconds;
        tm expected{};
        ASSERT_NE(gmtime_r(&count, &expected), nullptr);
        detail::CivilTime const time = detail::breakDown(seconds);
        ASSERT_EQ(time.year, expected.tm_year + 1900L) << seconds;
        ASSERT_EQ(time.month, expected.tm_mon + 1) << seconds;
        ASSERT_EQ(time.day, expected.tm_mday) << seconds;
        ASSERT_EQ(time.hour * 3600 + time.minute * 60 + time.second,
                  expected.tm_hour * 3600 + expected.tm_min * 60 + expected.tm_sec)
            << seconds;
        ASSERT_EQ(time.day_of_week, expected.tm_wday) << seconds;
        ASSERT_EQ(time.day_of_year, expected.tm_yday + 1) << seconds;
    }
}

TEST(Civil, EveryLeapCycleBoundaryFallsOnTheRightDay)
{
    long day = -719468; // 0000-03-01
    for (int year = 1; year <= 1600; ++year) {
        day += 306;
        detail::CivilTime const january = detail::breakDown(day * detail::SECONDS_PER_DAY);
        ASSERT_EQ(january.year, year);
        ASSERT_EQ(january.day_of_year, 1);
        day += 59 + (detail::isGregorianLeap(year) ? 1 : 0);
        detail::CivilTime const march = detail::breakDown(day * detail::SECONDS_PER_DAY);
        ASSERT_EQ(march.month * 100 + march.day, 301) << year;
        ASSERT_EQ(march.day_of_year, detail::isGregorianLeap(year) ? 61 : 60) << year;
    }
}

struct NormaliseCase
{
    DateVal given;
    char const * expected;
};

DateVal dateVal(int year, int month, int day, int hour, int minute, float second)
{
    DateVal value;
    value.set(year, month, day, hour, minute, second);
    return value;
}

TEST(DateVal, ValidateBringsFieldsIntoRangeAndKeepsMissingOnes)
{
    NormaliseCase const cases[] = {
        {dateVal(26, 11, 14, 12, 45, 30.5F), "2026/11/14 12:45:30"},
        {dateVal(99, 12, 31, 23, 59, 60.F), "1999/12/31 23:59:60"},
        {dateVal(126, 13, 32, 24, 61, 60.1F), "2026/1/1 0:0:0"},
        {dateVal(-5, 0, 0, -1, -1, -0.1F), "1980/1/1 0:0:0"},
        {dateVal(49, M, M, M, 60, M), "2049/-/- -:60:-"},
        {dateVal(50, M, M, M, M, NOT_A_NUMBER), "1950/-/- -:-:0"},
        {dateVal(199, M, M, M, M, M), "2099/-/- -:-:-"},
        {dateVal(200, M, M, M, M, M), "200/-/- -:-:-"},
        {dateVal(INT_MAX, INT_MIN, INT_MAX, INT_MAX, INT_MIN, INFINITY), "2147483647/1/1 0:0:0"},
    };
    for (auto row : cases) {
        EXPECT_EQ(row.given.validate(), 1);
        EXPECT_EQ(fields(row.given), row.expected);
    }
    DateVal unset;
    EXPECT_EQ(unset.validate(), 0);
    EXPECT_EQ(fields(unset), "-/-/- -:-:-");
}

TEST(DateVal, SecondsSumWhatIsThere)
{
    struct
    {
        DateVal given;
        long expected;
    } const cases[] = {
        {dateVal(1970, 1, 1, 0, 0, 0.F), 0},
        {dateVal(2026, 11, 14, 12, 45, 30.9F), 1794660330},
        {dateVal(2038, 1, 19, 3, 14, 8.F), 2147483648},
        {dateVal(M, M, M, 12, 45, M), 45900},
        {dateVal(M, M, 14, M, M, M), 13 * 86400},
        {dateVal(M, 12, M, M, M, M), 334 * 86400},
        {dateVal(2000, M, M, M, M, M), 946684800},      // with the month missing the leap day is to come
        {dateVal(2100, 3, 1, 0, 0, 0.F), 4107628800},   // counts a leap day that the calendar does not have
        {dateVal(1900, 2, 28, 0, 0, 0.F), -2204064000}, // and one in 1900, a day early before it
        {dateVal(M, M, M, M, M, M), M},
    };

    for (auto row : cases)
        EXPECT_EQ(row.given.computeSecs(), row.expected) << fields(row.given);
    EXPECT_GT(dateVal(INT_MAX, 12, 31, 23, 59, 59.F).computeSecs(), 6e16); // and nothing overflows
}

TEST(Date, FullSetsStartAnew)
{
    Date date(2026, 11, 14, 12, 45, 30.F);
    date.changeTimezone(-18000, "EST");
    date.setTime(6, 30, 0.F);
    EXPECT_EQ(fields(date), "-/-/- 6:30:0");
    EXPECT_STREQ(date.getZoneName(), "Z");
    EXPECT_EQ(date.getSeconds(), 23400);

    date.set(dateVal(2026, 11, 14, 12, M, M), 3600, "CENTRAL");
    EXPECT_EQ(fields(date), "2026/11/14 12:-:-"); // taken as local, nothing shifted
    EXPECT_STREQ(date.getZoneName(), "CENT");
    EXPECT_EQ(date.getZoneOffset(), 3600);

    date.set(1794660330L); // keeps the zone
    EXPECT_EQ(fields(date), "2026/11/14 12:45:30");
    EXPECT_EQ(date.getDayOfWeek(), 6);
    EXPECT_EQ(date.getJulian(), 318);
    EXPECT_STREQ(date.getZoneName(), "CENT");

    Date const copy(date); // whole, not through the six fields
    EXPECT_STREQ(copy.getZoneName(), "CENT");
    EXPECT_EQ(fields(Date(static_cast<DateVal const &>(date))), "2026/11/14 12:45:30");
    EXPECT_STREQ(Date(static_cast<DateVal const &>(date)).getZoneName(), "Z");

    date.set(static_cast<DateVal const &>(date)); // its own fields
    EXPECT_EQ(fields(date), "2026/11/14 12:45:30");

    date.changeTimezone(-18000, "EST");
    EXPECT_EQ(date.init(), 1); // what Date adds too
    EXPECT_EQ(fields(date), "-/-/- -:-:-");
    EXPECT_FALSE(date.isSet());
    EXPECT_EQ(date.getDayOfWeek(), M);
    EXPECT_EQ(date.getZoneOffset(), 0);
    EXPECT_STREQ(date.getZoneName(), "Z");
}

TEST(Date, DayOfYearIsTakenWhereTheMonthIsMissing)
{
    EXPECT_EQ(fields(Date(2026, M, 45, M, M, M)), "2026/2/14 -:-:-");
    EXPECT_EQ(fields(Date(2024, M, 366, 0, 0, 0.F)), "2024/12/31 0:0:0");
    EXPECT_EQ(fields(Date(2025, M, 366, 0, 0, 0.F)), "2025/-/1 0:0:0");
    EXPECT_EQ(fields(Date(M, M, 20, M, M, M)), "-/-/20 -:-:-");
}

TEST(Date, ReadsTextsAsFarAsTheyGo)
{
    struct
    {
        char const * text;
        char const * expected;
    } const cases[] = {
        {"2026111412", "2026/11/14 12:-:-"},
        {"#202611141245", "2026/11/14 12:45:-"},
        {"20261114124530.75", "2026/11/14 12:45:30"},
        {"##2026", "-/-/- -:-:-"},
        {"26", "2026/-/- -:-:-"},
        {"2026 1 2 3", "2026/1/2 3:-:-"},
        {"2026-1", "2026/1/- -:-:-"},
        {"2026139945", "2026/1/1 0:-:-"},
        {"", "-/-/- -:-:-"},
        {nullptr, "-/-/- -:-:-"},
        {"Cu", "-/-/- -:-:-"},
        {"202611141245nan", "2026/11/14 12:45:-"},
    };

    for (auto const & row : cases)
        EXPECT_EQ(fields(Date(row.text)), row.expected) << (row.text != nullptr ? row.text : "null");
    for (char const * const text : {"cu", "current", "cube"})
        EXPECT_NEAR(static_cast<double>(Date(text).getSeconds()), static_cast<double>(std::time(nullptr)),
                    2.0);
}

TEST(Date, RefusedFieldsLeaveNoTrace)
{
    Date const before(2026, 11, 14, 12, 45, 30.F);
    Date date = before;
    EXPECT_EQ(date.setYear(-1) + date.setMonth(0) + date.setMonth(13) + date.setDay(0) + date.setDay(32) +
                  date.setHour(24) + date.setHour(-1) + date.setMinute(60) + date.setSecond(60.F) +
                  date.setSecond(NOT_A_NUMBER) + date.setSecond(-0.5F) + date.setFractionalSecond(1.F) +
                  date.setFractionalSecond(NOT_A_NUMBER) + date.setDays(0) + date.setDays(INT_MIN) +
                  date.setJulian(366) + date.setJulian(0),
              0);
    EXPECT_EQ(fields(date), fields(before));
    EXPECT_EQ(date.getSeconds(), before.getSeconds());

    EXPECT_EQ(date.setHour(M), 1); // the missing marker always passes
    EXPECT_EQ(date.getSeconds(), before.getSeconds() - 12 * 3600);
    EXPECT_EQ(date.setSecond(59.99999F), 1);
    EXPECT_EQ(date.setFractionalSecond(0.5F), 1);
    EXPECT_NEAR(date.getSecond(), 60.5F, 1e-4F);
}

TEST(Date, SetYearAddsTwice)
{
    for (auto const & [given, stored] : {std::pair(26, 3926),
                                         {0, 3900},
                                         {49, 3949},
                                         {50, 1950},
                                         {199, 2099},
                                         {200, 200},
                                         {2026, 2026},
                                         {M, -6099}}) {
        Date date(2000, 1, 1, 0, 0, 0.F);
        EXPECT_EQ(date.setYear(given), 1);
        EXPECT_EQ(date.getYear(), stored);
    }
}

TEST(Date, DayNumbersKeepTheirShortJanuary)
{
    EXPECT_EQ(Date(1970, 1, 1, M, M, M).getDays(), 1);
    EXPECT_EQ(Date(1970, 3, 1, M, M, M).getDays(), 57);
    EXPECT_EQ(Date(M, 3, 1, M, M, M).getDays(), M);
    for (int n : {1, 31, 32, 59, 60, 365, 366, 789, 20000, 47541, 47542, 200'000, INT_MAX}) {
        Date date;
        ASSERT_EQ(date.setDays(n), 1);
        detail::CivilTime const time = detail::breakDown((n - 1) * detail::SECONDS_PER_DAY);
        EXPECT_EQ(date.getYear(), time.year) << n;
        EXPECT_EQ(date.getMonth() * 100 + date.getDay(), time.month * 100 + time.day) << n;
    }
}

TEST(Date, MovesHideAgainWhatWasMissing)
{
    Date date("2026111423");
    date.addHours(2);
    EXPECT_EQ(fields(date), "2026/11/15 1:-:-");
    date.addMinutes(90);
    EXPECT_EQ(fields(date), "2026/11/15 2:-:-");
    EXPECT_EQ(date.getSeconds(),
              Date(2026, 11, 15, 2, 30, 0.F).getSeconds()); // the half hour is not forgotten
    date.addDays(-15);
    EXPECT_EQ(fields(date), "2026/10/31 2:-:-");
    date += 0;
    EXPECT_EQ(fields(date), "2026/10/31 2:30:0");

    Date month_only(2026, 12, M, M, M, M);
    month_only.addDays(31);
    EXPECT_EQ(fields(month_only), "2027/1/- -:-:-");
}

TEST(Date, YearsAndMonthsMoveTheFieldsAlone)
{
    Date date(2026, 1, 31, 0, 0, 0.F);
    date.addMonths(1);
    EXPECT_EQ(fields(date), "2026/2/31 0:0:0");
    EXPECT_EQ(date.getSeconds(), Date(2026, 3, 3, 0, 0, 0.F).getSeconds());
    EXPECT_EQ(date.getJulian(), 62);
    date.addMonths(-26);
    EXPECT_EQ(fields(date), "2023/12/31 0:0:0");
    date.addYears(-1);
    EXPECT_EQ(fields(date), "2022/12/31 0:0:0");
}

TEST(Date, ZoneShiftsReplaceEachOtherAndInvert)
{
    std::mt19937 random(3);
    for (int i = 0; i < 1000; ++i) {
        Date const utc(static_cast<long>(random()));
        Date date = utc;
        int const offset = static_cast<int>(random() % 86400) - 43200;
        date.changeTimezone(static_cast<int>(random() % 7200), "ONE");
        date.changeTimezone(offset, "TWO");
        ASSERT_EQ(date.getSeconds(), utc.getSeconds() + offset);
        date.changeTimezone(0, "Z");
        ASSERT_EQ(date.getSeconds(), utc.getSeconds());
        ASSERT_EQ(fields(date), fields(utc));
    }
    Date hour_only("2026111403");
    hour_only.changeTimezone(-18000, "EST");
    EXPECT_EQ(fields(hour_only), "2026/11/13 22:-:-");
    hour_only.changeTimezone(0, hour_only.getZoneName()); // its own name
    EXPECT_STREQ(hour_only.getZoneName(), "EST");
}

TEST(Date, ReportedTimesAreCompletedFromTheReference)
{
    struct
    {
        char const * reference;
        int month, day, hour;
        char const * expected;
        int result;
    } const cases[] = {
        {"2026111412", M, M, 12, "2026/11/14 12:-:-", 1}, // hour alone
        {"2026111401", M, M, 23, "2026/11/13 23:-:-", 1},
        {"2026111423", M, M, 1, "2026/11/15 1:-:-", 1},
        {"2026111400", M, M, 12, "2026/11/14 12:-:-", 1},
        {"2026111400", M, M, 13, "2026/11/13 13:-:-", 1},
        {"2026111412", M, M, 30, "2026/11/13 12:-:-", 0},  // refused, but it lies beyond half a day
        {"2026110112", M, 30, 23, "2026/10/30 23:-:-", 1}, // day and hour
        {"2026103012", M, 1, 0, "2026/11/1 0:-:-", 1},
        {"2026111412", M, 17, 12, "2026/11/17 12:-:-", 1},
        {"2026113012", M, 31, 12, "2026/12/1 12:-:-", 1},
        {"2026010100", 12, 31, 23, "2026/12/31 23:-:-", 1}, // month, day and hour: the year stays
        {"2026010100", 13, 31, 23, "2025/1/31 23:-:-", 0},  // unless the month is refused
        {"2026120100", 0, 31, 23, "2027/12/31 23:-:-", 0},
    };

    for (auto const & row : cases) {
        Date date(row.reference);
        int const result = row.month != M ? date.adjustHour(row.month, row.day, row.hour)
                           : row.day != M ? date.adjustHour(row.day, row.hour)
                                          : date.adjustHour(row.hour);
        EXPECT_EQ(fields(date), row.expected) << row.reference << ' ' << row.day << ' ' << row.hour;
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(date.getSeconds(), Date(static_cast<DateVal const &>(date)).getSeconds()) << row.reference;
    }
    Date date("2026111401");
    EXPECT_EQ(date.adjustSecond(23, 59, 58.5F), 1);
    EXPECT_EQ(fields(date), "2026/11/13 23:59:58");
    EXPECT_EQ(date.adjustMinute(14, 1, 5), 1);
    EXPECT_EQ(fields(date), "2026/11/14 1:5:58");
    EXPECT_EQ(date.adjustMinute(12, 24, 18, 60), 0);
    EXPECT_EQ(fields(date), "2026/12/24 18:5:58");
}

TEST(Date, JulianConversions)
{
    EXPECT_EQ(Date::getJulian(2026, 1, 1), 2);
    EXPECT_EQ(Date::getJulian(2024, 13, 31), 367);
    EXPECT_EQ(Date::getJulian(2024, INT_MAX, INT_MAX), INT_MAX);
    for (int const year : {1900, 2000, 2023, 2024}) {
        int previous = 0;
        for (int jday = 1; jday <= (Date::isYearLeap(year) ? 366 : 365); ++jday) {
            int month = 0;
            int day = 0;
            ASSERT_EQ(Date::setJulian(year, jday, month, day), 1);
            ASSERT_EQ(Date::getJulian(year, month, day), jday + 1);
            ASSERT_GT(month * 100 + day, previous);
            previous = month * 100 + day;
        }
        EXPECT_EQ(previous, 1231);
    }
    EXPECT_TRUE(Date::isYearLeap(2000) && !Date::isYearLeap(2100) && Date(2024, M, M, M, M, M).isLeap());
}

TEST(Date, FixFillsAllButTheHour)
{
    Date date;
    date.fix();
    EXPECT_EQ(fields(date), "1970/1/1 -:0:0");
    EXPECT_FALSE(date.isSet());
}

TEST(Date, TablesAreLive)
{
    int const before = DateVal::num_day[1];
    DateVal::num_day[1] = 30;
    EXPECT_EQ(Date(1970, 2, 1, 0, 0, 0.F).getSeconds(), 30 * 86400);
    EXPECT_EQ(Date::getJulian(2026, 2, 1), 32);
    DateVal::num_day[1] = before;
}

TEST(Date, ExtremesAreDefined)
{
    for (long const seconds : {LONG_MAX, LONG_MIN, 67767976233532799L, 67767976233532800L,
                               -67768100567971200L, -67768100567971201L}) {
        Date date(seconds);
        EXPECT_EQ(date.getSeconds(), seconds);
        date.addDays(INT_MAX);
        date.addDays(INT_MIN);
        date.addHours(INT_MIN);
        date.addSeconds(INFINITY);
        date.addSeconds(-3e38F);
        date.changeTimezone(INT_MIN, "A");
        date.changeTimezone(INT_MAX, "B");
        date += INT_MIN;
        date.addYears(INT_MAX);
        date.addMonths(INT_MIN);
        String out;
        date.toText("%Y%m%d%H%M%S%s%j%a%y", out);
    }
    EXPECT_EQ(fields(Date(LONG_MAX)), "-/-/- -:-:-"); // its year does not fit
    EXPECT_EQ(fields(Date(67767976233532799L)), "2147483647/12/31 23:59:59");
    EXPECT_EQ(fields(Date(67767976233532800L)), "-/-/- -:-:-");
    EXPECT_EQ(fields(Date(-67768100567971200L)), "-2147483648/1/1 0:0:0");

    for (float const value : {NOT_A_NUMBER, INFINITY, -INFINITY, -1.F}) {
        Date date("20261114");
        date.setTime(value);
        EXPECT_EQ(fields(date), "2026/11/14 0:0:0");
        date.addSeconds(NOT_A_NUMBER);
        EXPECT_EQ(fields(date), "2026/11/14 0:0:0");
    }
    Date date("20261114");
    date.setTime(45930.5F);
    EXPECT_EQ(date.getSecond(), 30.5F);
    EXPECT_EQ(fields(date), "2026/11/14 12:45:30");

    DateVal raw;
    raw.set(INT_MIN, INT_MAX, INT_MIN, INT_MAX, INT_MIN, NOT_A_NUMBER);
    for (int const value : {INT_MIN, INT_MAX, M}) {
        Date adjusted(raw);
        static_cast<DateVal &>(adjusted) = raw;
        adjusted.adjustHour(value);
        static_cast<DateVal &>(adjusted) = raw;
        adjusted.adjustHour(value, value);
        static_cast<DateVal &>(adjusted) = raw;
        adjusted.adjustHour(value, value, value);
        static_cast<DateVal &>(adjusted) = raw;
        EXPECT_LE(adjusted.getDays(), INT_MAX);
    }
}

TEST(DateRange, IncludesBothEnds)
{
    Date const center(2050, 1, 1, 12, 0, 0.F);
    DateRange range(center, 0, 0);
    EXPECT_TRUE(range.valid(center));
    Date next = center;
    next += 1;
    EXPECT_FALSE(range.valid(next));
    range.set(0, 1);
    EXPECT_TRUE(range.valid(next));
    next += 59;
    EXPECT_TRUE(range.valid(next));
    next += 1;
    EXPECT_FALSE(range.valid(next));
    EXPECT_TRUE(DateRange(Date(600L), 10, 10).valid(0) && DateRange(Date(600L), 10, 10).valid(1200));
    EXPECT_TRUE(DateRange(Date(LONG_MAX), INT_MAX, INT_MAX).valid(Date(LONG_MAX)));
    EXPECT_FALSE(DateRange(Date(LONG_MIN), INT_MIN, INT_MIN).valid(INT_MAX));
}

} // namespace
} // namespace Yul
