#include "core/Const.h"
#include "core/String.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/ForeTime.h"
#include "time/Timezone.h"

#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr int M = Const::MISS;

std::string formatted(Date const & date, char const * format)
{
    String out("left over");
    EXPECT_EQ(date.toText(format, out), 1);
    return out.get();
}

std::string plain(Date const & date)
{
    String out;
    date.toText(out);
    return out.get();
}

Date decoded(char const * text)
{
    Date date;
    EXPECT_EQ(DateTool::decode(text, date), 1);
    return date;
}

TEST(DateText, EveryFormatCodeWithAndWithoutItsField)
{
    Date const morning(2026, 1, 4, 0, 5, 9.96F);
    Date const evening(2026, 11, 14, 23, 45, 30.5F);
    Date const unset;

    struct
    {
        char const * format;
        char const * morning;
        char const * evening;
        char const * unset;
    } const cases[] = {
        {"%a", "SUN", "SAT", "XXX"},
        {"%b", "JAN", "NOV", "XXX"},
        {"%Y", "2026", "2026", "XXXX"},
        {"%y", "26", "26", "XX"},
        {"%m", "01", "11", "XX"},
        {"%d", "04", "14", "XX"},
        {"%e", " 4", "14", "XX"},
        {"%j", "  4", "318", "XXX"},
        {"%H", "00", "23", "XX"},
        {"%l %p", "12 AM", "11 PM", "XX AM"},
        {"%M", "05", "45", "XX"},
        {"%S", "10", "31", "XX"},
        {"%s", "09.9600", "   0030", "XX.XXXX"},
        {"%u", "0", "6", "X"},
        {"%Z", "Z", "Z", "Z"},
        {"a%%b", "a%b", "a%b", "a%b"},
        {"%q%", "q", "q", "q"},
        {"%\xC3\xA9|", "\xC3\xA9|", "\xC3\xA9|", "\xC3\xA9|"},
        {"RFC1123", "04 JAN 2026 00:05:10 Z", "14 NOV 2026 23:45:31 Z", "XX XXX XXXX XX:XX:XX Z"},
        {"ISO8601", "2026-01-04T00:05:10Z", "2026-11-14T23:45:31Z", "XXXX-XX-XXTXX:XX:XXZ"},
        {"", "", "", ""},
        {nullptr, "", "", ""},
    };

    for (auto const & row : cases) {
        EXPECT_EQ(formatted(morning, row.format), row.morning) << row.format;
        EXPECT_EQ(formatted(evening, row.format), row.evening) << row.format;
        EXPECT_EQ(formatted(unset, row.format), row.unset) << row.format;
    }
    EXPECT_EQ(formatted(Date(99L * 366 * -86400 * 365), "%Y %y"),
              "-34240 -40"); // years keep their sign
    String out("%Y");
    evening.toText(out.get(), out); // the format may be the output
    EXPECT_STREQ(out.get(), "2026");
}

TEST(DateText, DefaultTextIsAsPreciseAsTheDate)
{
    EXPECT_EQ(plain(Date(2026, 11, 4, M, M, M)), " 4 NOV 2026");
    EXPECT_EQ(plain(Date(2026, 11, 14, 12, M, M)), "12Z 14 NOV 2026");
    EXPECT_EQ(plain(Date(2026, 11, 14, 12, 45, M)), "12:45Z 14 NOV 2026");
    EXPECT_EQ(plain(Date(2026, 11, 14, 12, 45, 30.F)), "12:45:30Z 14 NOV 2026");
    EXPECT_EQ(plain(Date(2026, 11, 14, M, 45, M)), "XX:45Z 14 NOV 2026");
}

TEST(DateText, StringFormReadsBack)
{
    std::mt19937_64 random(11);
    for (int i = 0; i < 2000; ++i) {
        Date const date(static_cast<long>(random() % 4000000000)); // the rule for leap years holds until 2100
        String text;
        date.toString(text);
        ASSERT_EQ(Date(text.get()).getSeconds(), date.getSeconds()) << text.get();
    }
}

TEST(DateTool, DecodesEveryHeaderForm)
{
    struct
    {
        char const * text;
        char const * expected; ///< in the default text
    } const cases[] = {
        {"12Z 14 NOV 2026", "12Z 14 NOV 2026"},
        {"12Z 14 nov 26 and more", "12Z 14 NOV 2026"},
        {"x 1245Z 14 NOV 2026", "12:45Z 14 NOV 2026"},
        {"x 1245Z 14 NOV 26", "12:45Z 14 NOV 2026"},
        {"x  945Z 14 NOV 2026", "09:45Z 14 NOV 2026"},
        {"x  945Z 14 NOV 26", "09:45Z 14 NOV 2026"},
        {"x 12:45:30Z 14 NOV 2026", "12:45:30Z 14 NOV 2026"},
        {"x 12:45:30Z 14 NOV 26", "12:45:30Z 14 NOV 2026"},
        {"x 12Z SAT 14 NOV 2026", "12Z 14 NOV 2026"},
        {"x 12Z SAT 14 NOV 26", "12Z 14 NOV 2026"},
        {"x 12Z 14 NOV 2026", "12Z 14 NOV 2026"},
        {"x 12Z 14 NOV 26", "12Z 14 NOV 2026"},
        {"12 14 11 26", "12Z 14 NOV 2026"},
        {"14 NOV 26", "14 NOV 2026"},
        {"x 14 NOV 2026", "14 NOV 2026"},
        {"12 14 11 2026", "12Z 14 NOV 2020"}, // two digits complete the form
        {"14 NOV 2026", "14 NOV 2020"},
        {"945Z 14 NOV 2026", "00Z 14 NOV 2026"}, // too short for hour and minute: hour 45, which becomes 0
        {"12Z 14 NOV 99", "12Z 14 NOV 1999"},
        {"12Z 14 NOV 126", "12Z 14 NOV 2026"},
        {"12Z 14 Nov 2026", "12Z 14 NOV 2026"}, // the first letter is enough for some months
        {"12Z 14 Mar 2026", "12Z 14 JAN 2026"}, // others need a second, in the case of the first
        {"12Z 31 XYZ 2026", "12Z 31 JAN 2026"}, // an unknown month becomes the first
        {"12:45:30Z 14 NOV", "XX XXX XXXX"},
        {"1245Z 14 NOV", "12 JAN 2014"}, // day 12 of month "45Z"
        {"Z 14 NOV 2026", "14 NOV 2026"},
        {"", "XX XXX XXXX"},
        {nullptr, "XX XXX XXXX"},
    };

    for (auto const & row : cases)
        EXPECT_EQ(plain(decoded(row.text)), row.expected) << (row.text != nullptr ? row.text : "null");
    EXPECT_FALSE(decoded("nothing").isSet());
}

TEST(DateTool, DecodedTextsReadBack)
{
    std::mt19937_64 random(5);
    for (int i = 0; i < 5000; ++i) {
        Date const date(static_cast<long>(random() % 2500000000)); // 1970 to 2049, where two digits suffice
        for (char const * const format :
             {"%HZ %d %b %Y", "%HZ %e %b %y", "x %H%MZ %d %b %Y", "x %H%MZ %e %b %y", "x %H:%M:%SZ %d %b %Y",
              "x %H:%M:%SZ %d %b %y", "x %HZ %a %d %b %Y", "x %HZ %a %e %b %y", "%H %d %m %y", "%d %b %y",
              "x %e %b %Y"}) {
            std::string const text = formatted(date, format);
            ASSERT_EQ(formatted(decoded(text.c_str()), format), text);
        }
    }
}

TEST(DateTool, MonthsAreKnownByTheLettersThatTellThemApart)
{
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(DateTool::decodeMonth(DateTool::getMonth(month)), month);
        EXPECT_EQ(DateTool::decodeMonth(DateTool::getMonthLower(month)), month);
        EXPECT_EQ(DateTool::decodeMonth(std::string(DateTool::getMonthLong(month)).c_str()),
                  month == 2 || month >= 9 ? month : 0); // small letters behind a capital are not seen
    }
    for (char const * const none : {"Jan", "jAN", "JU", "J", "M", "XYZ", "", "maR"})
        EXPECT_EQ(DateTool::decodeMonth(none), 0) << none;
    EXPECT_EQ(DateTool::decodeMonth(nullptr), 0);
    for (int const outside : {0, 13, INT_MIN, INT_MAX, M})
        EXPECT_STREQ(DateTool::getMonth(outside), "");
    EXPECT_STREQ(DateTool::getDayWeek(7), "");
    EXPECT_STREQ(DateTool::getDayWeek(-1), "");
}

TEST(DateTool, SecondsAndMinutesOfTexts)
{
    EXPECT_EQ(DateTool::getSeconds("#202611141245"), Date(2026, 11, 14, 12, 45, M).getSeconds());
    EXPECT_EQ(DateTool::getSeconds("#2026"), Date(2026, M, M, M, M, M).getSeconds());
    EXPECT_EQ(DateTool::getSeconds(" 5000000000 s"), 5000000000);
    EXPECT_EQ(DateTool::getSeconds("99999999999999999999"), LONG_MAX);
    for (char const * const zero : {"#x", "#", "", "x"})
        EXPECT_EQ(DateTool::getSeconds(zero), 0);
    EXPECT_EQ(DateTool::getSeconds(nullptr), 0);

    struct
    {
        char const * text;
        int minutes;
    } const cases[] = {
        {"2", 120}, {"2:30", 150}, {"-5:30", -330},          {"-0:30", 30},           {"x", 0},    {":30", 0},
        {"", 0},    {"1:-10", 50}, {"999999999:1", INT_MAX}, {"-999999999", INT_MIN}, {nullptr, 0}};

    for (auto const & row : cases)
        EXPECT_EQ(DateTool::getMinutes(row.text), row.minutes) << row.text;
}

TEST(Timezone, ReadsNameClockAndHours)
{
    struct
    {
        char const * text;
        int result;
        char const * name;
        int pm;
        int offset;
    } const cases[] = {
        {"-CST:-6", 1, "CST", -1, -21600},
        {"+EST:-5", 1, "EST", 1, -18000},
        {"IST:5.5", 1, "IST", 0, 19800},
        {"NPT:5.75x", 1, "NPT", 0, 20700},
        {"A:4.1", 1, "A", 0, 14760}, // below it as a double
        {"CESTX:2", 1, "CEST", 0, 0},
        {"CET", 1, "CET", 0, 0},
        {"CET:", 1, "CET", 0, 0},
        {":5", 1, "", 0, 0},
        {"-", 1, "", -1, 0},
        {"--A:1", 1, "-A", -1, 3600},
        {"A:1e30", 1, "A", 0, INT_MAX},
        {"A:nan", 1, "A", 0, 0},
        {"", 0, "", 0, M},
        {nullptr, 0, "", 0, M},
    };

    for (auto const & row : cases) {
        Timezone zone("+OLD:1");
        EXPECT_EQ(zone.set(row.text), row.result);
        EXPECT_STREQ(zone.getName(), row.name);
        EXPECT_EQ(zone.getPM(), row.pm) << row.text;
        EXPECT_EQ(zone.getOffset(), row.offset) << row.text;
        EXPECT_EQ(zone.isSet(), row.result == 1);
    }
}

TEST(DateTool, LabelsFollowPrecisionZoneAndClock)
{
    struct
    {
        Date date;
        char const * zone;
        int flags;
        char const * expected;
    } const cases[] = {
        {Date("2026"), "", 1, "26"},
        {Date("202611"), "", 1, "NOV 26"},
        {Date("20261104"), "", 0, " 4 NOV 26"},
        {Date("20261114"), "", 1, "SAT 14 NOV 26"},
        {Date("20261114"), "EST:-5", 1, "FRI 13 NOV 26"}, // days shift too
        {Date("2026111417"), "", 0, "17Z 14 NOV 26"},
        {Date("2026111417"), "", 3, "17Z SAT 14 NOV 26"},
        {Date("2026111417"), "", 2, "17Z 14 NOV 26"},
        {Date("202611141200"), "", 0, "1200Z 14 NOV 26"},
        {Date("20261114120059.6"), "", 0, "12:00:60Z 14 NOV 26"},
        {Date("2026111417"), "EST:-5", 0, "12EST 14 NOV 26"},
        {Date("202611141705"), "EST:-5", 0, "1205 EST 14 NOV 26"},
        {Date("20261114170509"), "EST:-5", 0, "12:05:09 EST 14 NOV 26"},
        {Date("2026111417"), "-EST:-5", 0, "12 PM EST [17Z] 14 NOV 26"},
        {Date("202611141705"), "-EST:-5", 1, "12:05 PM EST [1705Z] SAT 14 NOV 26"},
        {Date("20261114170509"), "-EST:-5", 0, "12:05:09 PM EST [170509Z] 14 NOV 26"},
        {Date("2026111405"), "+EST:-5", 0, "12 AM EST 14 NOV 26"},
        {Date("202611140503"), "+EST:-5", 0, "12:03 AM EST 14 NOV 26"},
        {Date("2026111406"), "+EST:-5", 0, "1 AM EST 14 NOV 26"},
        {Date("20261114233000"), "+EST:-5", 0, "6:30:00 PM EST 14 NOV 26"},
        {Date("2026111402"), "-EST:-5", 0, "9 PM EST [02Z] 13 NOV 26"},
        {Date(M, 11, 14, 6, M, M), "", 0, "06Z 14 NOV XX"},
    };

    for (auto const & row : cases) {
        Timezone const zone(row.zone);
        String out;
        EXPECT_EQ(DateTool::createLabel(nullptr, row.date, zone, row.flags, out), 1);
        EXPECT_STREQ(out.get(), row.expected);
        String with_prefix("At");
        EXPECT_EQ(DateTool::createLabel(with_prefix.get(), row.date, zone, row.flags, with_prefix), 1);
        EXPECT_EQ(with_prefix.get(), "At " + std::string(row.expected)); // the prefix may be the output
    }
    String out("left over");
    EXPECT_EQ(DateTool::createLabel("At", Date(), Timezone(), 0, out), 0);
    EXPECT_STREQ(out.get(), "");
}

TEST(DateTool, ForecastLabels)
{
    Date const date("202611131200");
    float const nan = std::numeric_limits<float>::quiet_NaN();

    struct
    {
        char const * prefix;
        float fhour;
        char const * expected;
    } const cases[] = {
        {"Forecast", 24.F, "Forecast 24 hour valid 1200Z SAT 14 NOV 26"},
        {"", 24.F, "24 hour valid 1200Z SAT 14 NOV 26"},
        {"Eta", 0.F, "Eta analysis for 1200Z 13 NOV 26"},
        {nullptr, 0.F, "Analysis for 1200Z 13 NOV 26"},
        {"Eta", static_cast<float>(M), "Eta data for 1200Z 13 NOV 26"},
        {"", static_cast<float>(M), "Data for 1200Z 13 NOV 26"},
        {"", nan, "Data for 1200Z 13 NOV 26"},
        {"", -6.F, "-6 hour for 0600Z FRI 13 NOV 26"},
        {"", 0.5F, "0 hour valid 1230Z FRI 13 NOV 26"},
        {"", 1.05F, "1 hour valid 1303Z FRI 13 NOV 26"}, // 63 minutes, though a float falls short of them
    };

    for (auto const & row : cases) {
        String out;
        EXPECT_EQ(DateTool::createLabel(date, Timezone(), row.prefix, row.fhour, out), 1);
        EXPECT_STREQ(out.get(), row.expected);
        DateTool::createLabel(date, row.prefix, row.fhour, out);
        EXPECT_STREQ(out.get(), row.expected);
    }
    String out;
    DateTool::createLabel(date, Timezone("EST:-5"), 18.F, out);
    EXPECT_STREQ(out.get(), "0100 EST 14 NOV 26");
    DateTool::createLabel(date, Timezone(), 1.05F, out);
    EXPECT_STREQ(out.get(), "1303Z 13 NOV 26");
    DateTool::createLabel(date, Timezone(), static_cast<float>(M), out);
    EXPECT_STREQ(out.get(), "1200Z 13 NOV 26");
    DateTool::createLabel(date, Timezone(), "GFS", ForeTime("0-6acc"), out);
    EXPECT_STREQ(out.get(), "GFS 0-6 hour accumulation valid 1800Z 13 NOV 26");
    DateTool::createLabel(date, Timezone(), "GFS", ForeTime(), out);
    EXPECT_STREQ(out.get(), "GFS data for 1200Z 13 NOV 26");
    EXPECT_EQ(DateTool::createLabel(Date(), "GFS", 24.F, out), 0);
    EXPECT_STREQ(out.get(), "");
}

TEST(DateTool, HourLabels)
{
    struct
    {
        float hours;
        char const * plain;
        char const * days;
    } const cases[] = {
        {0.F, "", ""},
        {static_cast<float>(M), "", ""},
        {6.F, "6 hour", "6 hour"},
        {12.F, "12 hour", "0.5 day"},
        {24.F, "24 hour", "1 day"},
        {36.F, "36 hour", "1.5 day"},
        {48.F, "48 hour", "2 day"},
        {60.F, "60 hour", "2.5 day"},
        {66.F, "66 hour", "66 hour"},
        {72.F, "3 day", "3 day"},
        {84.F, "3.5 day", "3.5 day"},
        {84.5F, "84 hour", "84 hour"},
        {-72.F, "-72 hour", "-72 hour"},
        {INFINITY, "", ""},
    };

    for (auto const & row : cases) {
        String out;
        DateTool::createHourLabel(row.hours, 0, out);
        EXPECT_STREQ(out.get(), row.plain);
        DateTool::createHourLabel(row.hours, 1, out);
        EXPECT_STREQ(out.get(), row.days);
    }
}

TEST(DateTool, CurrentTimeStyles)
{
    String out;
    DateTool::getCurrent("ISO8601", out);
    Date now;
    std::string digits;
    for (char const c : std::string(out.get()))
        if (c >= '0' && c <= '9')
            digits += c;
    now.set(digits.c_str());
    EXPECT_NEAR(static_cast<double>(now.getSeconds()), static_cast<double>(Date::getCurrentSeconds()), 2.0);
    DateTool::getCurrent("RFC1123", out);
    EXPECT_EQ(out.view().substr(out.view().size() - 4), " GMT");
    DateTool::getCurrent(out);
    EXPECT_EQ(out.view().substr(9, 2), "  ");
}

} // namespace
} // namespace Yul
