// The plain record of a calendar time.
#pragma once

#include "core/Const.h"

namespace Yul {

/// Six calendar fields, each of which may be missing (Const::MISS). A plain value: fields are stored and
/// returned as they are; only validate() and computeSecs() look at them together. Operations return 1 unless
/// they say otherwise and print nothing unless they are called print.
class DateVal
{
public:
    DateVal() = default;

    /// Makes all six fields missing.
    int init();
    /// Stores the six fields as given, unchecked.
    int
    set(int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value);

    /// Brings the fields into range; missing fields stay missing. A negative year becomes 1980; a year below
    /// 50 gains 2000, and what is then below 200 gains 1900 (26 is 2026, 99 is 1999, 126 is 2026). A month
    /// outside 1..12 or a day outside 1..31 becomes 1, an hour outside 0..23, a minute outside 0..60 or a
    /// second outside 0..60 (NaN too) becomes 0.
    /// return  1; 0 when all six fields are missing.
    int validate();

    /// Validates, then counts the seconds from 1970-01-01 00:00:00 to this time by the every-fourth-year leap
    /// rule (exact for 1901..2099; kept beyond: 2100 counts as a leap year). Missing fields add nothing, so
    /// an hour and a minute alone give seconds of the day. The fraction of the second is cut off.
    /// return  seconds; Const::MISS when all six fields are missing.
    long computeSecs();

    /// Prints "2026/11/14 12:45:30.000" and a newline, "M" for a missing field.
    int print() const;

    /// Each field as given, unchecked; returns 1.
    int setYear(int value);
    int setMonth(int value);
    int setDay(int value);
    int setHour(int value);
    int setMinute(int value);
    int setSecond(float value);

    /// Full year; Const::MISS where it is missing, as the others.
    [[nodiscard]] int getYear() const noexcept { return year; }

    /// 1 to 12.
    [[nodiscard]] int getMonth() const noexcept { return month; }

    /// 1 to 31.
    [[nodiscard]] int getDay() const noexcept { return day; }

    /// 0 to 23.
    [[nodiscard]] int getHour() const noexcept { return hour; }

    /// 0 to 59.
    [[nodiscard]] int getMinute() const noexcept { return minute; }

    /// 0 to 60, with fraction.
    [[nodiscard]] float getSecond() const noexcept { return second; }

    /// Days before each month of a common year and of a leap year, the whole year last. Live: every
    /// calculation reads them, and a host program may change them.
    static int num_day[13];
    static int num_day_leap[13];

    int year = Const::MISS;     ///< full year
    int month = Const::MISS;    ///< 1 = January
    int day = Const::MISS;      ///< of the month, 1..31
    int hour = Const::MISS;     ///< 0..23
    int minute = Const::MISS;   ///< 0..59
    float second = Const::MISS; ///< with fraction, 0..60
};

} // namespace Yul
