#include "time/DateRange.h"

#include "core/Clamp.h"
#include "core/Output.h"
#include "time/Civil.h"
#include "time/Date.h"

namespace Yul {

DateRange::DateRange(Date const & center_date, int before_minutes, int after_minutes)
{
    set(center_date, before_minutes, after_minutes);
}

int DateRange::set(Date const & center_date, int before_minutes, int after_minutes)
{
    set(center_date);
    return set(before_minutes, after_minutes);
}

int DateRange::set(Date const & center_date)
{
    center = center_date.getSeconds();
    return 1;
}

int DateRange::set(int before_minutes, int after_minutes)
{
    before = before_minutes;
    after = after_minutes;
    return 1;
}

long DateRange::getStart() const noexcept
{
    return detail::addClamped(center, -(before * detail::SECONDS_PER_MINUTE));
}

long DateRange::getEnd() const noexcept
{
    return detail::addClamped(center, after * detail::SECONDS_PER_MINUTE);
}

bool DateRange::contains(long seconds) const noexcept
{
    return getStart() <= seconds && seconds <= getEnd();
}

bool DateRange::valid(Date const & date) const noexcept
{
    return contains(date.getSeconds());
}

bool DateRange::valid(int seconds) const noexcept
{
    return contains(seconds);
}

int DateRange::print() const
{
    detail::writeOut("Start: ");
    Date(getStart()).print();
    detail::writeOut("End:   ");
    return Date(getEnd()).print();
}

} // namespace Yul
