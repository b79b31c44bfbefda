#include "time/Date.h"

#include "core/Clamp.h"
#include "core/FixedScan.h"
#include "core/StrLib.h"
#include "time/Civil.h"
#include "time/ZoneName.h"

#include <chrono>
#include <cmath>
#include <string_view>

namespace Yul {
namespace {

using detail::addClamped;
using detail::clampToInt;
using detail::isMissing;

/// Whether a setter takes the value: one in range or the missing marker, never a NaN.
template <class Number> [[nodiscard]] bool isAccepted(Number value, Number low, Number high) noexcept
{
    return isMissing(value) || (value >= low && value <= high);
}

[[nodiscard]] int const * daysBefore(int year) noexcept
{
    return Date::isYearLeap(year) ? DateVal::num_day_leap : DateVal::num_day;
}

/// Which of the fields that a move hides again are missing.
class HiddenFields
{
public:
    explicit HiddenFields(DateVal const & date) noexcept
        : day(isMissing(date.day)), hour(isMissing(date.hour)), minute(isMissing(date.minute)),
          second(isMissing(date.second))
    {
    }

    void hideIn(DateVal & date) const noexcept
    {
        if (day)
            date.day = Const::MISS;
        if (hour)
            date.hour = Const::MISS;
        if (minute)
            date.minute = Const::MISS;
        if (second)
            date.second = Const::MISS;
    }

private:
    bool day, hour, minute, second;
};

} // namespace

Date::Date(
    int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value)
{
    set(year_value, month_value, day_value, hour_value, minute_value, second_value);
}

Date::Date(DateVal const & value)
{
    set(value);
}

Date::Date(char const * text)
{
    set(text);
}

Date::Date(long seconds_value)
{
    set(seconds_value);
}

int Date::init()
{
    *this = Date();
    return 1;
}

int Date::set()
{
    init();
    return set(getCurrentSeconds());
}

int Date::set(Date const & other)
{
    *this = other;
    return 1;
}

int Date::set(
    int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value)
{
    DateVal value;
    value.set(year_value, month_value, day_value, hour_value, minute_value, second_value);
    return set(value);
}

int Date::set(DateVal const & value)
{
    return set(value, 0, "Z");
}

int Date::set(DateVal const & value, int offset, char const * name)
{
    Date next;
    static_cast<DateVal &>(next) = value;
    if (!isMissing(next.year) && !isMissing(next.day) && isMissing(next.month))
        setJulian(next.year, next.day, next.month, next.day);
    next.zone_offset = offset;
    detail::copyZoneName(next.zone_name, name);
    next.computeSecs();
    *this = next;
    return 1;
}

int Date::set(char const * text)
{
    std::string_view rest = detail::viewOf(text);
    if (rest.starts_with("cu"))
        return set();
    if (rest.starts_with('#'))
        rest.remove_prefix(1);
    Date next;
    detail::fixedScan<"%4d%2d%2d%2d%2d%f">(rest, next.year, next.month, next.day, next.hour, next.minute,
                                           next.second);
    next.computeSecs();
    *this = next;
    return 1;
}

int Date::set(long seconds_value)
{
    detail::CivilTime const time = detail::breakDown(seconds_value);
    seconds = seconds_value;
    if (time.year != clampToInt(time.year)) {
        DateVal::init();
        day_of_week = julian = Const::MISS;
        return 1;
    }
    year = static_cast<int>(time.year);
    month = time.month;
    day = time.day;
    hour = time.hour;
    minute = time.minute;
    second = static_cast<float>(time.second);
    day_of_week = time.day_of_week;
    julian = time.day_of_year;
    return 1;
}

int Date::setTime(int hour_value, int minute_value, float second_value)
{
    return set(Const::MISS, Const::MISS, Const::MISS, hour_value, minute_value, second_value);
}

int Date::setTime(float seconds_of_day)
{
    double const rest = std::isfinite(seconds_of_day) ? static_cast<double>(seconds_of_day) : -1.0;
    double const rest_of_hour = std::fmod(rest, 3600.0);
    hour = detail::clampTo<int>(rest / 3600.0);
    minute = detail::clampTo<int>(rest_of_hour / 60.0);
    second = static_cast<float>(std::fmod(rest_of_hour, 60.0));
    computeSecs();
    return 1;
}

int Date::setDays(int n)
{
    constexpr int DAYS_PER_ERA = 146097; // 400 Gregorian years
    constexpr int YEARS_PER_ERA = 400;
    if (n < 1)
        return 0;
    int y = 1970 + (n - 1) / DAYS_PER_ERA * YEARS_PER_ERA;
    n = (n - 1) % DAYS_PER_ERA + 1;
    for (int length = 0; n > (length = isYearLeap(y) ? 366 : 365); ++y)
        n -= length;

    int const * const table = daysBefore(y);
    for (int m = 1; m <= 12; ++m) {
        if (table[m - 1] < n && n <= table[m]) {
            year = y;
            month = m;
            day = n - table[m - 1];
            computeSecs();
            return 1;
        }
    }
    return 0; // only with a table that the host program has spoilt
}

int Date::getDays() const
{
    constexpr int UNCOUNTED_JANUARY_DAYS = 3;
    if (isMissing(year) || isMissing(month) || isMissing(day))
        return Const::MISS;
    bool const is_after_january = month > 1 && month <= 12;
    long const before_month = is_after_january ? num_day[month - 1] - UNCOUNTED_JANUARY_DAYS : 0;
    return clampToInt(day + before_month + detail::leapDays(year, month) + (year - 1970L) * 365);
}

int Date::setYear(int value)
{
    if (value < 0 && !isMissing(value))
        return 0;
    int const stored = value + (value < 50 ? 2000 : 0) + (value < 200 ? 1900 : 0);
    year = stored;
    computeSecs();
    year = stored; // the marker's -6099 stays, though the seconds count it as the year that validate gives
    return 1;
}

int Date::setMonth(int value)
{
    if (!isAccepted(value, 1, 12))
        return 0;
    month = value;
    computeSecs();
    return 1;
}

int Date::setDay(int value)
{
    if (!isAccepted(value, 1, 31))
        return 0;
    day = value;
    computeSecs();
    return 1;
}

int Date::setHour(int value)
{
    if (!isAccepted(value, 0, 23))
        return 0;
    hour = value;
    computeSecs();
    return 1;
}

int Date::setMinute(int value)
{
    if (!isAccepted(value, 0, 59))
        return 0;
    minute = value;
    computeSecs();
    return 1;
}

int Date::setSecond(float value)
{
    if (!isAccepted(value, 0.0F, 59.99999F))
        return 0;
    second = value;
    computeSecs();
    return 1;
}

int Date::setFractionalSecond(float value)
{
    if (!isMissing(value) && !(value >= 0.0F && value < 1.0F))
        return 0;
    second += value;
    return 1;
}

int Date::getYear00() const noexcept
{
    return isMissing(year) ? Const::MISS : year % 100;
}

long Date::computeSecs()
{
    seconds = DateVal::computeSecs();
    auto const [week_day, year_day] = detail::calendarDay(seconds, year);
    day_of_week = week_day;
    julian = year_day;
    return seconds;
}

Date & Date::operator+=(int value)
{
    set(addClamped(seconds, value));
    return *this;
}

int Date::addYears(int n)
{
    year = clampToInt(static_cast<long>(year) + n);
    computeSecs();
    return 1;
}

int Date::addMonths(int n)
{
    long const months = month - 1L + n;
    long const years = detail::floorDivide(months, 12);
    year = clampToInt(year + years);
    month = static_cast<int>(months - years * 12) + 1;
    computeSecs();
    return 1;
}

/// Moves by seconds; day, hour, minute and second stay missing where they are.
int Date::shift(long amount)
{
    HiddenFields const hidden(*this);
    set(addClamped(seconds, amount));
    hidden.hideIn(*this);
    return 1;
}

int Date::addDays(int n)
{
    return shift(n * detail::SECONDS_PER_DAY);
}

int Date::addHours(int n)
{
    return shift(n * detail::SECONDS_PER_HOUR);
}

int Date::addMinutes(int n)
{
    return shift(n * detail::SECONDS_PER_MINUTE);
}

int Date::addSeconds(float value)
{
    return shift(detail::clampTo<long>(static_cast<double>(value)));
}

int Date::changeTimezone(int offset, char const * name)
{
    shift(static_cast<long>(offset) - zone_offset);
    zone_offset = offset;
    detail::copyZoneName(zone_name, name);
    return 1;
}

int Date::setJulian(int jday)
{
    if (setJulian(year, jday, month, day) == 0)
        return 0;
    computeSecs();
    return 1;
}

int Date::setJulian(int year_value, int jday, int & month_value, int & day_value)
{
    if (jday < 1 || jday > (isYearLeap(year_value) ? 366 : 365))
        return 0;
    int const * const table = daysBefore(year_value);
    for (int m = 1; m <= 12; ++m) {
        if (jday <= table[m]) {
            month_value = m;
            day_value = clampToInt(static_cast<long>(jday) - table[m - 1]);
            return 1;
        }
    }
    return 0;
}

int Date::getJulian(int year_value, int month_value, int day_value)
{
    int const m = month_value < 1 ? 1 : month_value > 12 ? 12 : month_value;
    return clampToInt(static_cast<long>(daysBefore(year_value)[m - 1]) + day_value + 1);
}

bool Date::isYearLeap(int year_value) noexcept
{
    return detail::isGregorianLeap(year_value);
}

bool Date::isLeap() const noexcept
{
    return isYearLeap(year);
}

int Date::fix()
{
    if (isMissing(second))
        second = 0.0F;
    if (isMissing(minute))
        minute = 0;
    if (isMissing(day))
        day = 1;
    if (isMissing(month))
        month = 1;
    if (isMissing(year))
        year = 1970;
    return 1;
}

long Date::getCurrentSeconds()
{
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::floor<std::chrono::seconds>(now).count();
}

} // namespace Yul
