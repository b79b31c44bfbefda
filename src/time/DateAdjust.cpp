#include "core/Clamp.h"
#include "time/Date.h"

namespace Yul {
namespace {

// Up to these distances a time stays in the same day, month or year. (long: unchecked fields may hold any int.)
constexpr long HALF_DAY = 12; // hours
constexpr long NEAR_DAYS = 5;
constexpr long NEAR_MONTHS = 5;

} // namespace

int Date::adjustHour(int h)
{
    int accepted = 1;
    if (h != hour) {
        int const step = h > hour + HALF_DAY ? -1 : h < hour - HALF_DAY ? 1 : 0;
        accepted = setHour(h);
        if (step != 0)
            addDays(step);
    }
    validate();
    return accepted;
}

int Date::adjustHour(int d, int h)
{
    int accepted = h != hour ? setHour(h) : 1;
    long const distance = static_cast<long>(d) - day;
    if (distance > NEAR_DAYS) {
        accepted &= setDay(d);
        addMonths(-1);
    } else if (distance < -NEAR_DAYS) {
        accepted &= setDay(d);
        addMonths(1);
    } else if (distance != 0) {
        addDays(detail::clampToInt(distance));
    }
    validate();
    return accepted;
}

int Date::adjustHour(int m, int d, int h)
{
    int accepted = setHour(h);
    accepted &= setDay(d);
    accepted &= setMonth(m);
    if (m != month)
        year = detail::clampToInt(year + (m <= month + NEAR_MONTHS ? 1L : -1L));
    computeSecs();
    validate();
    return accepted;
}

int Date::adjustMinute(int h, int minute_value)
{
    int const accepted = adjustHour(h);
    return setMinute(minute_value) & accepted;
}

int Date::adjustMinute(int d, int h, int minute_value)
{
    int const accepted = adjustHour(d, h);
    return setMinute(minute_value) & accepted;
}

int Date::adjustMinute(int m, int d, int h, int minute_value)
{
    int const accepted = adjustHour(m, d, h);
    return setMinute(minute_value) & accepted;
}

int Date::adjustSecond(int h, int minute_value, float second_value)
{
    int accepted = adjustHour(h);
    accepted &= setMinute(minute_value);
    return setSecond(second_value) & accepted;
}

} // namespace Yul
