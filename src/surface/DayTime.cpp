#include "surface/DayTime.h"

#include "core/Number.h"
#include "time/Date.h"

#include <algorithm>
#include <chrono>

namespace Yul::detail {
namespace {

constexpr long DAY = 86400;
constexpr long LAST_SECOND = 253402300799; // of the year 9999
constexpr int MOST_MONTHS = 12 * 8 + 1;    // to the 29 February before, at most

long secondsOf(std::chrono::year_month_day const & day, DayTime const & stated)
{
    long const days = std::chrono::sys_days(day).time_since_epoch().count();
    return days * DAY + stated.hour * 3600L + (isMissing(stated.minute) ? 0 : stated.minute * 60L);
}

} // namespace

DayTime readDayTime(std::string_view text)
{
    auto const digits = static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), [](char c) { return isDigit(c); }) - text.begin());
    DayTime time;
    if (digits < 4)
        return time;
    int const day = toInt(text.substr(0, 2));
    int const hour = toInt(text.substr(2, 2));
    int const minute = digits >= 6 ? toInt(text.substr(4, 2)) : Const::MISS;
    if (day >= 1 && day <= 31 && hour <= 24 && minute < 60)
        time = {Const::MISS, day, hour, minute};
    return time;
}

int completeDate(DayTime const & stated, Date & date)
{
    using namespace std::chrono;
    if (!stated.isSet() || !date.isSet())
        return 0;
    if (date.getSeconds() < 0 || date.getSeconds() > LAST_SECOND)
        return 0;
    long const limit = date.getSeconds() - date.getZoneOffset() + DAY;
    year_month_day const reference{sys_days(days(limit / DAY))};
    year_month month = reference.year() / reference.month();
    for (int i = 0; i < MOST_MONTHS; ++i, month -= months(1)) {
        year_month_day const day = month / std::chrono::day(static_cast<unsigned>(stated.day));
        bool const is_other_month = !isMissing(stated.month) &&
                                    static_cast<unsigned>(stated.month) != static_cast<unsigned>(day.month());
        if (is_other_month || !day.ok() || secondsOf(day, stated) > limit)
            continue;
        return date.set(secondsOf(day, stated));
    }
    return 0;
}

} // namespace Yul::detail
