// Finds the levels that a cell spans without walking through all of them.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace Yul::detail {

/// Sorts values into classes by level: class 2k lies between levels k - 1 and k, an odd class is or may be on
/// a level. A cell whose corners share one even class is crossed by no level.
class LevelIndex
{
public:
    using Class = std::int16_t;

    /// The most levels that classes can tell apart.
    static constexpr std::size_t MOST = 16000;

    explicit LevelIndex(std::span<float const> level_values)
        : levels(level_values.begin(), level_values.end()),
          is_ascending(std::is_sorted(levels.begin(), levels.end()))
    {
        if (!is_ascending)
            std::sort(levels.begin(), levels.end());
        findSteps();
    }

    /// The range [first, end) of levels from min to max; all levels where they do not ascend.
    struct Span
    {
        int first;
        int end;
    };

    [[nodiscard]] Span span(float min, float max) const
    {
        if (!is_ascending)
            return {0, static_cast<int>(levels.size())};
        return is_even ? Span{firstFrom(min), endAt(max)} : searchSpan(min, max);
    }

    /// The classes of a row of values.
    void classify(std::span<float const> values, Class * classes) const
    {
        constexpr std::size_t BLOCK = 32;
        std::size_t i = 0;
        if (is_even)
            for (; i + BLOCK <= values.size(); i += BLOCK)
                classifyBlock<BLOCK>(values.data() + i, classes + i);
        for (; i < values.size(); ++i)
            classes[i] = is_even ? evenClass(values[i]) : searchClass(values[i]);
    }

private:
    /// A value nearer to a level than this share of the interval counts as on it.
    static constexpr float MARGIN = 1.F / 512;

    void findSteps()
    {
        if (levels.empty() || levels.size() > MOST)
            return;
        top = static_cast<float>(levels.size()) - 0.5F;
        float const interval = levels.size() > 1
                                   ? (levels.back() - levels.front()) / static_cast<float>(levels.size() - 1)
                                   : 1.F;
        steps_per_unit = 1.F / interval;
        is_even = std::isfinite(steps_per_unit) && std::isfinite(interval);
        for (std::size_t i = 0; i < levels.size() && is_even; ++i)
            is_even = std::abs(position(levels[i]) - static_cast<float>(i)) < MARGIN / 4;
    }

    /// Where a value lies on the scale: k on level k.
    [[nodiscard]] float position(float value) const { return (value - levels.front()) * steps_per_unit; }

    /// Held half a step outside the scale, NaN below it, and moved up so that cutting off the fraction rounds
    /// down.
    [[nodiscard]] float held(float value) const
    {
        float const p = position(value);
        float const above = p > -0.5F ? p : -0.5F;
        return (above < top ? above : top) + 2.F;
    }

    [[nodiscard]] Class evenClass(float value) const
    {
        float const p = held(value);
        return static_cast<Class>(static_cast<int>(p - MARGIN) + static_cast<int>(p + MARGIN));
    }

    template <std::size_t N> void classifyBlock(float const * values, Class * classes) const
    {
        std::array<int, N> sums;
        for (std::size_t i = 0; i < N; ++i) {
            float const p = held(values[i]);
            sums[i] = static_cast<int>(p - MARGIN) + static_cast<int>(p + MARGIN);
        }
        for (std::size_t i = 0; i < N; ++i)
            classes[i] = static_cast<Class>(sums[i]);
    }

    [[nodiscard]] Class searchClass(float value) const
    {
        auto const below = std::lower_bound(levels.begin(), levels.end(), value) - levels.begin();
        auto const upto = std::upper_bound(levels.begin(), levels.end(), value) - levels.begin();
        return static_cast<Class>(2 * below + (below != upto ? 1 : 0));
    }

    [[nodiscard]] Span searchSpan(float min, float max) const
    {
        auto const first = std::lower_bound(levels.begin(), levels.end(), min) - levels.begin();
        auto const end = std::upper_bound(levels.begin(), levels.end(), max) - levels.begin();
        return {static_cast<int>(first), static_cast<int>(end)};
    }

    /// The guess is right within one level; the levels themselves decide.
    [[nodiscard]] int firstFrom(float min) const
    {
        int k = guess(min);
        while (k > 0 && levels[static_cast<std::size_t>(k) - 1] >= min)
            --k;
        while (k < static_cast<int>(levels.size()) && levels[static_cast<std::size_t>(k)] < min)
            ++k;
        return k;
    }

    [[nodiscard]] int endAt(float max) const
    {
        int k = guess(max);
        while (k > 0 && levels[static_cast<std::size_t>(k) - 1] > max)
            --k;
        while (k < static_cast<int>(levels.size()) && levels[static_cast<std::size_t>(k)] <= max)
            ++k;
        return k;
    }

    [[nodiscard]] int guess(float value) const
    {
        return std::clamp(static_cast<int>(held(value)) - 1, 0, static_cast<int>(levels.size()));
    }

    std::vector<float> levels; // ascending
    bool is_ascending;
    bool is_even = false; // all steps are the same
    float top = 0;        // half a step above the highest level
    float steps_per_unit = 0;
};

} // namespace Yul::detail
