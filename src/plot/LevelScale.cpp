#include "plot/LevelScale.h"

#include "plot/Tools.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul::detail {
namespace {

/// However the range and the interval are, no more levels than this are made.
constexpr float COUNT_LIMIT = 10000;

/// Infinite where the interval is too small to be counted.
float countLevels(LevelScale const & scale)
{
    float const count = (scale.highest - scale.lowest) / scale.interval + 1.01F;
    return std::isfinite(count) ? std::trunc(count) : std::numeric_limits<float>::infinity();
}

/// Kept in single precision: 0.3 / 0.1 is 3 there, as a user expects.
float spanRange(LevelScale & scale, float base, Range const & range)
{
    float const b = isMissing(base) ? 0.F : base;
    float const interval = scale.interval;
    scale.lowest = std::floor((range.min - b) / interval) * interval + b;
    scale.highest = std::ceil((range.max - b) / interval) * interval + b;
    if (scale.highest == range.max - b)
        scale.highest += interval;
    return countLevels(scale);
}

/// Takes off the levels outside the limits.
void limit(LevelScale & scale, LevelRequest const & request)
{
    auto const is_outside = [&](float level) {
        return (!isMissing(request.low) && level < request.low) ||
               (!isMissing(request.high) && level > request.high);
    };
    std::erase_if(scale.levels, is_outside);
    if (scale.levels.empty())
        return;
    scale.lowest = scale.levels.front();
    scale.highest = scale.levels.back();
}

} // namespace

LevelScale chooseLevels(LevelRequest const & request, Range const & range)
{
    LevelScale scale;
    if (!request.values.empty()) {
        scale.levels.assign(request.values.begin(), request.values.end());
        scale.lowest = scale.levels.front();
        scale.highest = scale.levels.back();
        return scale;
    }
    if (isMissing(range.max) || !std::isfinite(range.max - range.min)) {
        scale.interval = 1.F;
        return scale;
    }
    bool const is_given = !isMissing(request.interval) && request.interval != 0.F;
    scale.interval = is_given ? request.interval : Tools::calcInterval(range.max, range.min, request.parts);
    float count = spanRange(scale, request.base, range);
    if (count > MOST_LEVELS) {
        scale.is_recomputed = true;
        scale.interval = Tools::calcInterval(range.max, range.min, request.parts);
        count = spanRange(scale, request.base, range);
    }
    int const num = std::isfinite(count) ? static_cast<int>(std::clamp(count, 0.F, COUNT_LIMIT)) : 0;
    scale.levels.reserve(static_cast<std::size_t>(num));
    for (int i = 0; i < num; ++i)
        scale.levels.push_back(scale.lowest + static_cast<float>(i) * scale.interval);
    if (!isMissing(request.low) || !isMissing(request.high))
        limit(scale, request);
    return scale;
}

} // namespace Yul::detail
