// The times that headings and reports state: a day of the month, an hour and a minute.
#pragma once

#include "core/Const.h"

#include <string_view>

namespace Yul {

class Date;

namespace detail {

/// A stated time, UTC; Const::MISS where it is not stated.
struct DayTime
{
    int month = Const::MISS;
    int day = Const::MISS;
    int hour = Const::MISS;
    int minute = Const::MISS;

    [[nodiscard]] bool isSet() const noexcept { return day != Const::MISS && hour != Const::MISS; }
};

/// "YYGGgg" at the start of the text (day, hour, minute), or "YYGG" when that is all; unset when it is none.
[[nodiscard]] DayTime readDayTime(std::string_view text);

/// Turns a reference time into the latest moment that fits the stated time and lies at most one day behind
/// the reference. 0, with nothing changed, when day or hour is not stated or there is no such day.
int completeDate(DayTime const & stated, Date & date);

} // namespace detail
} // namespace Yul
