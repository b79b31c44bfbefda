// The types of forecast times, what they are called, and how far they reach.
#pragma once

#include "time/Civil.h"
#include "time/ForeTime.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Yul::detail {

constexpr long LONGEST_FORE_TIME = 10'000L * 366 * SECONDS_PER_DAY;

struct ForeTimeType
{
    int type;
    std::string_view text;  ///< as toText writes it
    std::string_view label; ///< as toTimeLabel writes it
};

inline constexpr ForeTimeType FORE_TIME_TYPES[] = {
    {ForeTime::NONE, "", "data"},         {ForeTime::FORE, "", ""},
    {ForeTime::ANAL, "anal", "analysis"}, {ForeTime::ACC, "acc", "accumulation"},
    {ForeTime::AVG, "avg", "average"},    {ForeTime::DIFF, "diff", "difference"},
    {ForeTime::RANGE, "range", "period"}, {ForeTime::MAX, "max", "maximum"},
    {ForeTime::MIN, "min", "minimum"},    {ForeTime::ANY, "any", "any time"},
};

/// The row of a type; the last one for a number that is none.
constexpr ForeTimeType const & foreTimeType(int type)
{
    return *std::find_if(std::begin(FORE_TIME_TYPES), std::end(FORE_TIME_TYPES) - 1,
                         [&](ForeTimeType const & row) { return row.type == type; });
}

/// Whether fields of the type hold at one moment.
constexpr bool isInstant(int type)
{
    return type == ForeTime::FORE || type == ForeTime::ANAL;
}

} // namespace Yul::detail
