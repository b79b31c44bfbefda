// Calendar arithmetic on plain numbers: the UTC breakdown of a count of seconds.
#pragma once

namespace Yul::detail {

constexpr long SECONDS_PER_MINUTE = 60;
constexpr long SECONDS_PER_HOUR = 3600;
constexpr long SECONDS_PER_DAY = 86400;

/// A time of the Gregorian calendar, which is taken to hold for all years, before it was introduced too.
struct CivilTime
{
    long year;
    int month; ///< 1..12
    int day;   ///< 1..31
    int hour;
    int minute;
    int second;
    int day_of_week; ///< 0 = Sunday
    int day_of_year; ///< 1 = 1 January
};

[[nodiscard]] constexpr bool isGregorianLeap(long year) noexcept
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// The quotient rounded down; divisor above 0.
[[nodiscard]] constexpr long floorDivide(long value, long divisor) noexcept
{
    long const quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

/// Leap days from 1970 to a date by the every-fourth-year rule, exact for 1901..2099 and kept beyond. A
/// missing month counts as one before March.
[[nodiscard]] constexpr long leapDays(long year, int month) noexcept
{
    long const since_1900 = year - 1900;
    bool const is_before_leap_day = month < 3 && since_1900 % 4 == 0;
    return since_1900 / 4 - 17 - (is_before_leap_day ? 1 : 0);
}

/// The UTC breakdown of any count of seconds since 1970-01-01 00:00:00.
///
/// Years are counted from 1 March, so that the leap day is the last of its year. Each division by the mean
/// length of a century, year or month is one multiplication; the constants hold for every day of their range.
/// Source: Neri and Schneider, Euclidean affine functions and their application to calendar algorithms,
/// Software: Practice and Experience 53 (2023).
[[nodiscard]] constexpr CivilTime breakDown(long seconds) noexcept
{
    constexpr long DAYS_PER_ERA = 146097; // 400 years
    constexpr long ERAS = 800'000'000; // more than 64 bits of seconds reach back, so that days are positive
    constexpr long DAYS_TO_1970 = 719468;     // from 0000-03-01, a Wednesday
    constexpr unsigned DAYS_TO_JANUARY = 306; // from 1 March

    long const days = floorDivide(seconds, SECONDS_PER_DAY);
    long const rest = seconds % SECONDS_PER_DAY;
    auto const second_of_day = static_cast<unsigned>(rest < 0 ? rest + SECONDS_PER_DAY : rest);
    auto const day_count = static_cast<unsigned long>(days + DAYS_TO_1970 + ERAS * DAYS_PER_ERA);

    unsigned long const quarters = day_count * 4 + 3;
    unsigned long const century = quarters / DAYS_PER_ERA;
    unsigned long const year_product = (quarters % DAYS_PER_ERA | 3) * 2939745;
    auto const year_of_century = static_cast<unsigned>(year_product >> 32);
    unsigned const days_from_march = static_cast<unsigned>(year_product) / 2939745 / 4;
    unsigned const month_product = days_from_march * 2141 + 197913;
    unsigned const month_from_march = month_product >> 16; // 3 = March .. 14 = February
    bool const is_next_year = days_from_march >= DAYS_TO_JANUARY;
    bool const is_leap = year_of_century % 4 == 0 && (year_of_century != 0 || century % 4 == 0);

    CivilTime time{};
    time.year = static_cast<long>(century * 100 + year_of_century) - ERAS * 400 + (is_next_year ? 1 : 0);
    time.month = static_cast<int>(month_from_march - (is_next_year ? 12 : 0));
    time.day = static_cast<int>((month_product & 0xffff) / 2141) + 1;
    time.day_of_year = static_cast<int>(is_next_year ? days_from_march - DAYS_TO_JANUARY + 1
                                                     : days_from_march + 60 + (is_leap ? 1 : 0));
    time.day_of_week = static_cast<int>((day_count + 3) % 7);
    time.hour = static_cast<int>(second_of_day / 3600);
    time.minute = static_cast<int>(second_of_day / 60 % 60);
    time.second = static_cast<int>(second_of_day % 60);
    return time;
}

/// Where a count of seconds lies in its week and year.
struct CalendarDay
{
    int day_of_week; ///< 0 = Sunday
    int day_of_year; ///< 1 = 1 January
};

/// The same day_of_week and day_of_year as breakDown gives; quicker where `year` is the year of the time.
[[nodiscard]] constexpr CalendarDay calendarDay(long seconds, int year) noexcept
{
    constexpr int FIRST = 1970; // to 2099 every fourth year has a leap day
    constexpr int LAST = 2099;
    constexpr unsigned THURSDAY = 4; // 1970-01-01
    if (year >= FIRST && year <= LAST && seconds >= 0) {
        auto const days = static_cast<unsigned>(seconds / SECONDS_PER_DAY);
        auto const years = static_cast<unsigned>(year - FIRST);
        unsigned const day = days - (years * 365 + (years + 1) / 4);
        if (day < 365 || (day == 365 && year % 4 == 0))
            return {static_cast<int>((days + THURSDAY) % 7), static_cast<int>(day) + 1};
    }
    CivilTime const time = breakDown(seconds);
    return {time.day_of_week, time.day_of_year};
}

static_assert(breakDown(-1).year == 1969 && breakDown(-1).second == 59 && breakDown(-1).day_of_week == 3);
static_assert(breakDown(951782400).month == 2 && breakDown(951782400).day == 29); // 2000-02-29

} // namespace Yul::detail
