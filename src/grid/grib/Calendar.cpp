#include "grid/grib/Calendar.h"

#include <algorithm>
#include <limits>

namespace Yul::detail::grib {
namespace {

struct TimeUnit
{
    int code;
    std::int64_t seconds;
    std::int64_t months;
};

/// Code table 4.4.
constexpr TimeUnit TIME_UNITS[] = {
    {0, 60, 0},  {1, 3600, 0}, {2, 86400, 0},  {3, 0, 1},      {4, 0, 12},     {5, 0, 120},
    {6, 0, 360}, {7, 0, 1200}, {10, 10800, 0}, {11, 21600, 0}, {12, 43200, 0}, {13, 1, 0},
};

constexpr int QUARTER_HOUR = 13; // code table 4 of edition 1
constexpr int HALF_HOUR = 14;
constexpr int SECOND_EDITION1 = 254;

TimeUnit const * findUnit(int code) noexcept
{
    for (auto const & unit : TIME_UNITS)
        if (unit.code == code)
            return &unit;
    return nullptr;
}

constexpr bool isLeap(std::int64_t year) noexcept
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

constexpr int daysOf(std::int64_t year, int month) noexcept
{
    constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : DAYS[month - 1];
}

/// Days since 1970-01-01 in the Gregorian calendar, by counting years from March so that the leap day comes
/// last.
constexpr std::int64_t daysSinceEpoch(std::int64_t year, int month, int day) noexcept
{
    std::int64_t const y = month <= 2 ? year - 1 : year;
    std::int64_t const from_march = (month + 9) % 12;
    std::int64_t const day_of_year = (153 * from_march + 2) / 5 + day - 1;
    std::int64_t const leaps = y / 4 - y / 100 + y / 400;
    return 365 * y + leaps + day_of_year - 719468;
}

static_assert(daysSinceEpoch(1970, 1, 1) == 0 && daysSinceEpoch(2000, 3, 1) == 11017);

} // namespace

std::optional<std::int64_t> secondsOf(Moment const & m) noexcept
{
    bool const is_date = m.year >= 0 && m.year <= 9999 && m.month >= 1 && m.month <= 12 && m.day >= 1 &&
                         m.day <= daysOf(m.year, m.month) && m.hour >= 0 && m.hour <= 24;
    if (!is_date)
        return std::nullopt;
    int const minute = m.minute >= 0 && m.minute < 60 ? m.minute : 0;
    int const second = m.second >= 0 && m.second <= 60 ? m.second : 0;
    int const in_day = (m.hour * 60 + minute) * 60 + second;
    return daysSinceEpoch(m.year, m.month, m.day) * 86400 + in_day;
}

std::optional<std::int64_t> secondsAfter(Moment const & reference, std::int64_t count, int code) noexcept
{
    TimeUnit const * const unit = findUnit(code);
    if (unit == nullptr)
        return std::nullopt;
    std::int64_t seconds = count * unit->seconds;
    if (unit->months != 0 && count != 0) {
        auto const begin = secondsOf(reference);
        std::int64_t const months =
            count * unit->months + reference.year * std::int64_t{12} + reference.month - 1;
        if (!begin || months < 0 || months / 12 > 9999)
            return std::nullopt;
        Moment end = reference;
        end.year = static_cast<int>(months / 12);
        end.month = static_cast<int>(months % 12) + 1;
        end.day = std::min(reference.day, daysOf(end.year, end.month));
        auto const finish = secondsOf(end);
        if (!finish)
            return std::nullopt;
        seconds = *finish - *begin;
    }
    constexpr std::int64_t LIMIT = std::numeric_limits<std::int32_t>::max();
    return seconds >= -LIMIT && seconds <= LIMIT ? std::optional(seconds) : std::nullopt;
}

int unitOfEdition1(int unit, std::int64_t & count) noexcept
{
    if (unit == QUARTER_HOUR || unit == HALF_HOUR) {
        count *= unit == QUARTER_HOUR ? 15 : 30;
        return 0;
    }
    return unit == SECOND_EDITION1 ? 13 : unit;
}

} // namespace Yul::detail::grib
