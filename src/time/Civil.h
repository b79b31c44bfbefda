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
/// Years are counted from 1 March, so that the leap day is the last of its year and months have the lengths
/// 31 30 31 30 31 repeating: month m of such a year begins on day (153 m + 2) / 5. The calendar repeats after
/// 400 years; a leap day that ends a century or a group of four years belongs to the year before.
[[nodiscard]] constexpr CivilTime breakDown(long seconds) noexcept
{
    constexpr long DAYS_TO_1970 = 719468; // from 0000-03-01
    constexpr int DAYS_PER_ERA = 146097;  // 400 years
    constexpr int DAYS_PER_CENTURY = 36524;
    constexpr int DAYS_PER_FOUR_YEARS = 1461;
    constexpr int DAYS_PER_YEAR = 365;
    constexpr int DAYS_TO_JANUARY = 306; // from 1 March
    constexpr int THURSDAY = 4;          // 1970-01-01

    long const days = floorDivide(seconds, SECONDS_PER_DAY);
    long const rest_of_day = seconds % SECONDS_PER_DAY;
    auto const second_of_day =
        static_cast<int>(rest_of_day < 0 ? rest_of_day + SECONDS_PER_DAY : rest_of_day);
    long const era = floorDivide(days + DAYS_TO_1970, DAYS_PER_ERA);

    auto rest = static_cast<int>(days + DAYS_TO_1970 - era * DAYS_PER_ERA);
    int const century = rest / DAYS_PER_CENTURY - (rest == DAYS_PER_ERA - 1 ? 1 : 0);
    rest -= century * DAYS_PER_CENTURY;
    int const group = rest / DAYS_PER_FOUR_YEARS;
    rest -= group * DAYS_PER_FOUR_YEARS;
    int const year_of_group = rest / DAYS_PER_YEAR - (rest == DAYS_PER_FOUR_YEARS - 1 ? 1 : 0);
    rest -= year_of_group * DAYS_PER_YEAR; // days since 1 March

    bool const is_next_year = rest >= DAYS_TO_JANUARY;
    int const month_from_march = (5 * rest + 2) / 153;

    CivilTime time{};
    time.year = era * 400 + century * 100 + group * 4 + year_of_group + (is_next_year ? 1 : 0);
    time.month = month_from_march + (is_next_year ? -9 : 3);
    time.day = rest - (153 * month_from_march + 2) / 5 + 1;
    time.day_of_year =
        is_next_year ? rest - DAYS_TO_JANUARY + 1 : rest + 60 + (isGregorianLeap(time.year) ? 1 : 0);
    time.day_of_week = static_cast<int>(days - floorDivide(days + THURSDAY, 7) * 7 + THURSDAY);
    time.hour = second_of_day / 3600;
    time.minute = second_of_day / 60 % 60;
    time.second = second_of_day % 60;
    return time;
}

static_assert(breakDown(-1).year == 1969 && breakDown(-1).second == 59 && breakDown(-1).day_of_week == 3);
static_assert(breakDown(951782400).month == 2 && breakDown(951782400).day == 29); // 2000-02-29

} // namespace Yul::detail
