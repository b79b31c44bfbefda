#include "time/ForeTime.h"

#include "core/Clamp.h"
#include "time/Civil.h"
#include "time/ForeTimeType.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <optional>

namespace Yul {
namespace {

using detail::isInstant;
using detail::LONGEST_FORE_TIME;

constexpr int ANY_CODE = INT_MIN;

bool isKnown(int type)
{
    return detail::foreTimeType(type).type == type;
}

// The code. From the lowest bit: for an instant 26 bits of time, for a span 13 bits of its end and 13 bits of
// its length; 2 bits of unit (hours, minutes, seconds, days); 3 bits of type. The sign is that of the time or
// the end. So an instant fits up to 776 days in seconds and far longer in hours, a span up to 8191 hours or
// days, 8191 minutes or 8191 seconds.
constexpr long CODE_UNITS[] = {detail::SECONDS_PER_HOUR, detail::SECONDS_PER_MINUTE, 1,
                               detail::SECONDS_PER_DAY};
constexpr int TIME_BITS = 26;
constexpr int HALF_BITS = 13;
constexpr int UNIT_BITS = 2;

constexpr std::int64_t lowest(int bits)
{
    return (std::int64_t{1} << bits) - 1;
}

/// The code in one unit; none where a time is no whole number of it or too large.
std::optional<int> encode(int type, long from, long to, int unit)
{
    long const size = CODE_UNITS[unit];
    if (from % size != 0 || to % size != 0)
        return std::nullopt;
    long const end = std::abs(to / size);
    long const length = (to - from) / size;
    if (end > lowest(isInstant(type) ? TIME_BITS : HALF_BITS) || length > lowest(HALF_BITS))
        return std::nullopt;
    std::int64_t const magnitude = (std::int64_t{type} << (TIME_BITS + UNIT_BITS)) |
                                   (std::int64_t{unit} << TIME_BITS) | (std::int64_t{length} << HALF_BITS) |
                                   end;
    auto const code = static_cast<int>(to < 0 ? -magnitude : magnitude);
    return detail::isMissing(code) ? std::nullopt : std::optional<int>(code);
}

} // namespace

ForeTime::ForeTime(char const * text)
{
    set(text);
}

ForeTime::ForeTime(int hours)
{
    set(hours);
}

ForeTime::ForeTime(int type_value, int hours)
{
    set(type_value, hours);
}

ForeTime::ForeTime(int type_value, int from_hours, int to_hours)
{
    set(type_value, from_hours, to_hours);
}

int ForeTime::init()
{
    *this = ForeTime();
    return 1;
}

int ForeTime::set(int hours)
{
    return set(FORE, hours);
}

int ForeTime::set(int type_value, int hours)
{
    if (detail::isMissing(hours))
        return init();
    return isInstant(type_value) ? set(type_value, hours, hours)
                                 : set(type_value, std::min(0, hours), std::max(0, hours));
}

int ForeTime::set(int type_value, int from_hours, int to_hours)
{
    return setSeconds(type_value, from_hours * detail::SECONDS_PER_HOUR, to_hours * detail::SECONDS_PER_HOUR);
}

int ForeTime::setSeconds(int type_value, long from, long to)
{
    if (!isKnown(type_value))
        return 0;
    bool const has_time = type_value != NONE && type_value != ANY;
    bool const is_in_range = -LONGEST_FORE_TIME <= from && from <= to && to <= LONGEST_FORE_TIME;
    if (has_time && (!is_in_range || (isInstant(type_value) && from != to)))
        return 0;
    type = type_value;
    from_seconds = has_time ? from : 0;
    to_seconds = has_time ? to : 0;
    return 1;
}

bool ForeTime::hasTime() const noexcept
{
    return type != NONE && type != ANY;
}

int ForeTime::getFore() const noexcept
{
    return hasTime() ? detail::clampToInt(to_seconds / detail::SECONDS_PER_HOUR) : Const::MISS;
}

int ForeTime::getFrom() const noexcept
{
    return hasTime() ? detail::clampToInt(from_seconds / detail::SECONDS_PER_HOUR) : Const::MISS;
}

float ForeTime::getHours() const noexcept
{
    return hasTime() ? static_cast<float>(static_cast<double>(to_seconds) / detail::SECONDS_PER_HOUR)
                     : Const::MISS;
}

float ForeTime::getFromHours() const noexcept
{
    return hasTime() ? static_cast<float>(static_cast<double>(from_seconds) / detail::SECONDS_PER_HOUR)
                     : Const::MISS;
}

long ForeTime::getSeconds() const noexcept
{
    return hasTime() ? to_seconds : Const::MISS;
}

long ForeTime::getFromSeconds() const noexcept
{
    return hasTime() ? from_seconds : Const::MISS;
}

bool ForeTime::match(ForeTime const & other) const noexcept
{
    if (type == ANY || other.type == ANY)
        return isSet() && other.isSet();
    return *this == other;
}

int ForeTime::getCode() const noexcept
{
    if (type == ANY)
        return ANY_CODE;
    if (type != NONE)
        for (int unit = 0; unit < static_cast<int>(std::size(CODE_UNITS)); ++unit)
            if (auto const code = encode(type, from_seconds, to_seconds, unit))
                return *code;
    return Const::MISS;
}

int ForeTime::setCode(int code)
{
    if (code == ANY_CODE)
        return setSeconds(ANY, 0, 0);
    if (detail::isMissing(code))
        return init();
    std::int64_t const magnitude = std::abs(std::int64_t{code});
    auto const coded_type = static_cast<int>(magnitude >> (TIME_BITS + UNIT_BITS));
    long const unit = CODE_UNITS[magnitude >> TIME_BITS & lowest(UNIT_BITS)];
    bool const is_instant = isInstant(coded_type);
    long const end = (magnitude & lowest(is_instant ? TIME_BITS : HALF_BITS)) * (code < 0 ? -1 : 1);
    long const length = is_instant ? 0 : magnitude >> HALF_BITS & lowest(HALF_BITS);
    ForeTime next;
    if (next.setSeconds(coded_type, (end - length) * unit, end * unit) == 0 || next.getCode() != code)
        return 0;
    *this = next;
    return 1;
}

} // namespace Yul
