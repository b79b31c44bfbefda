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
    if (validate() == 0)
        return Const::MISS;
    long sum = 0;
    if (!isMissing(second))
        sum += static_cast<long>(second);
    if (!isMissing(minute))
        sum += minute * detail::SECONDS_PER_MINUTE;
    if (!isMissing(hour))
        sum += hour * detail::SECONDS_PER_HOUR;
    if (!isMissing(day))
        sum += (day - 1) * detail::SECONDS_PER_DAY;
    if (month > 1)
        sum += num_day[month - 1] * detail::SECONDS_PER_DAY;
    if (!isMissing(year))
        sum += (detail::leapDays(year, month) + (year - 1970L) * 365) * detail::SECONDS_PER_DAY;
    return sum;
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
