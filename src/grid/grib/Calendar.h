// Coded times and lengths of time.
#pragma once

#include "grid/grib/Field.h"

#include <optional>

namespace Yul::detail::grib {

/// Seconds since 1970-01-01 00:00:00 of a moment whose year, month, day and hour are set and in range;
/// missing minutes and seconds count as 0.
[[nodiscard]] std::optional<std::int64_t> secondsOf(Moment const & moment) noexcept;

/// The time between a reference time and `count` units after it, in seconds. Units are those of code
/// table 4.4 (edition 2); months and years are counted on the calendar and need a complete reference time.
/// Nothing for an unknown unit or a length beyond what 32-bit seconds can count.
[[nodiscard]] std::optional<std::int64_t>
secondsAfter(Moment const & reference, std::int64_t count, int unit) noexcept;

/// The unit of edition 1 (code table 4) in numbers of edition 2 (code table 4.4); 13 and 14 of edition 1,
/// quarters and halves of an hour, have none and multiply `count` instead.
[[nodiscard]] int unitOfEdition1(int unit, std::int64_t & count) noexcept;

} // namespace Yul::detail::grib
