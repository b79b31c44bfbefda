#include "time/DateVal.h"

#include "core/Format.h"
#include "core/Output.h"
#include "time/Civil.h"

#include <string>

namespace Yul {
namespace {

using detail::isMissing;

/// Puts a field that is neither missing nor in range to a fixed value; a NaN is never in range.
template <class Number> void normalise(Number & field, Number low, Number high, Number otherwise) noexcept
{
    if (!isMissing(field) && !(field >= low && field <= high))
        field = otherwise;
}

bool isWithin(int value, int low, int high) noexcept
{
    return static_cast<unsigned>(value) - static_cast<unsigned>(low) <= static_cast<unsigned>(high - low);
}

/// Whether every field is there and as DateVal::validate would leave it. One jump for all, because most times are.
bool isWhole(DateVal const & time) noexcept
{
    constexpr int FIRST_FULL_YEAR = 200; // years below are taken for short forms
    return static_cast<bool>(
        static_cast<int>(time.year >= FIRST_FULL_YEAR) & static_cast<int>(isWithin(time.month, 1, 12)) &
        static_cast<int>(isWithin(time.day, 1, 31)) & static_cast<int>(isWithin(time.hour, 0, 23)) &
        static_cast<int>(isWithin(time.minute, 0, 60)) & static_cast<int>(time.second >= 0) &
        static_cast<int>(time.second <= 60));
}

/// Seconds from the start of a year without leap day.
long secondsOfYear(DateVal const & whole) noexcept
{
    return static_cast<long>(whole.second) + whole.minute * detail::SECONDS_PER_MINUTE +
           whole.hour * detail::SECONDS_PER_HOUR +
           (whole.day - 1 + DateVal::num_day[whole.month - 1]) * detail::SECONDS_PER_DAY;
}

/// Seconds from 1970 to a year, with the leap days to the month.
long secondsToYear(int year, int month) noexcept
{
    return (detail::leapDays(year, month) + (year - 1970L) * 365) * detail::SECONDS_PER_DAY;
}

std::string orM(int field, char const * separator)
{
    return (isMissing(field) ? "M" : detail::format("%d", field)) + separator;
}

} // namespace

int DateVal::num_day[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
int DateVal::num_day_leap[13] = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366};

int DateVal::init()
{
    *this = DateVal();
    return 1;
}

int DateVal::set(
    int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value)
{
    year = year_value;
    month = month_value;
    day = day_value;
    hour = hour_value;
    minute = minute_value;
    second = second_value;
    return 1;
}

int DateVal::validate()
{
    bool const has_none = isMissing(year) && isMissing(month) && isMissing(day) && isMissing(hour) &&
                          isMissing(minute) && isMissing(second);
    if (has_none)
        return 0;
    if (!isMissing(year)) {
        if (year < 0)
            year = 1980;
        if (year < 50)
            year += 2000;
        if (year < 200)
            year += 1900;
    }
    normalise(month, 1, 12, 1);
    normalise(day, 1, 31, 1);
    normalise(hour, 0, 23, 0);
    normalise(minute, 0, 60, 0);
    normalise(second, 0.0F, 60.0F, 0.0F);
    return 1;
}

long DateVal::computeSecs()
{
    if (isWhole(*this))
        return secondsOfYear(*this) + secondsToYear(year, month);
    if (validate() == 0)
        return Const::MISS;
    auto const orNeutral = [](auto field, auto neutral) { return isMissing(field) ? neutral : field; };
    DateVal whole;
    whole.set(year, orNeutral(month, 1), orNeutral(day, 1), orNeutral(hour, 0), orNeutral(minute, 0),
              orNeutral(second, 0.0F));
    return secondsOfYear(whole) + (isMissing(year) ? 0 : secondsToYear(year, month));
}

int DateVal::print() const
{
    detail::writeOut(orM(year, "/") + orM(month, "/") + orM(day, " ") + orM(hour, ":") + orM(minute, ":") +
                     (isMissing(second) ? "M" : detail::format("%.3f", static_cast<double>(second))) + "\n");
    return 1;
}

int DateVal::setYear(int value)
{
    year = value;
    return 1;
}

int DateVal::setMonth(int value)
{
    month = value;
    return 1;
}

int DateVal::setDay(int value)
{
    day = value;
    return 1;
}

int DateVal::setHour(int value)
{
    hour = value;
    return 1;
}

int DateVal::setMinute(int value)
{
    minute = value;
    return 1;
}

int DateVal::setSecond(float value)
{
    second = value;
    return 1;
}

} // namespace Yul
