// A window of time.
#pragma once

#include "core/Const.h"

namespace Yul {

class Date;

/// A window from some minutes before a centre to some minutes after it, both ends included. It starts without
/// a centre (Const::MISS) and with no minutes. Operations return 1.
class DateRange
{
public:
    DateRange() = default;
    /// before, after  minutes.
    DateRange(Date const & center_date, int before_minutes, int after_minutes);

    /// Centre and minutes, or one of them; the other stays.
    int set(Date const & center_date, int before_minutes, int after_minutes);
    int set(Date const & center_date);
    int set(int before_minutes, int after_minutes);

    /// Whether the moment lies in the window.
    [[nodiscard]] bool valid(Date const & date) const noexcept;
    /// seconds  since 1970.
    [[nodiscard]] bool valid(int seconds) const noexcept;

    /// Centre, seconds since 1970 (Const::MISS until set), and minutes before and after it.
    [[nodiscard]] long getCenter() const noexcept { return center; }

    /// Minutes before the centre.
    [[nodiscard]] int getBefore() const noexcept { return before; }

    /// Minutes behind it.
    [[nodiscard]] int getAfter() const noexcept { return after; }

    /// Prints "Start: " and "End:   ", each with its time.
    int print() const;

private:
    [[nodiscard]] bool contains(long seconds) const noexcept;
    [[nodiscard]] long getStart() const noexcept;
    [[nodiscard]] long getEnd() const noexcept;

    long center = Const::MISS; // seconds since 1970
    int before = 0;            // minutes
    int after = 0;
};

} // namespace Yul
