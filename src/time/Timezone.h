// A display time zone.
#pragma once

#include "core/Const.h"

namespace Yul {

/// A zone in which times are shown: a name of at most 4 characters, an offset from UTC and how hours are
/// shown.
class Timezone
{
public:
    /// Empty name, 24-hour clock, offset missing.
    Timezone() = default;
    explicit Timezone(char const * text);

    /// As a new one.
    int init();
    /// Reads "CST:-6": name and hours ahead of UTC, which may have a fraction; hours that cannot be read
    /// count as 0. A "+" before the name asks for the 12-hour clock, a "-" for the 12-hour clock with the UTC
    /// time in brackets.
    /// return  1; 0 for an empty or null text, which resets the zone.
    int set(char const * text);

    /// Whether there is an offset.
    [[nodiscard]] bool isSet() const noexcept { return !detail::isMissing(offset); }

    /// Lives as long as this zone.
    [[nodiscard]] char const * getName() const noexcept { return name; }

    /// 0 = 24-hour clock, 1 = 12-hour clock, -1 = 12-hour clock and UTC.
    [[nodiscard]] int getPM() const noexcept { return pm; }

    /// Seconds ahead of UTC; Const::MISS while not set.
    [[nodiscard]] int getOffset() const noexcept { return offset; }

    /// Prints name, clock flag and offset.
    int print() const;

private:
    char name[5] = "";
    int pm = 0;
    int offset = Const::MISS;
};

} // namespace Yul
