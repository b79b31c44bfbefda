#include "grid/GridKernels.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Yul::detail {
namespace {

// Inner loops of a fixed length, so that they become vector instructions without a remainder to handle.
constexpr std::size_t LANES = 8;

template <class T> using Lanes = std::array<T, LANES>;

/// Calls step(lane, value) for every value, lane = index modulo LANES.
template <class Step> void forEachLane(std::span<float const> values, Step && step) noexcept
{
    auto const * p = values.data();
    auto const blocks = values.size() / LANES;
    for (std::size_t block = 0; block < blocks; ++block, p += LANES)
        for (std::size_t lane = 0; lane < LANES; ++lane)
            step(lane, p[lane]);
    for (std::size_t lane = 0; lane < values.size() % LANES; ++lane)
        step(lane, p[lane]);
}

template <class Change> void changeValid(std::span<float> values, Change && change) noexcept
{
    auto const changed = [&change](float value) {
        auto const next = change(value); // always, so that the choice is not a branch
        return isValid(value) ? next : value;
    };
    auto * p = values.data();
    auto const blocks = values.size() / LANES;
    for (std::size_t block = 0; block < blocks; ++block, p += LANES)
        for (std::size_t lane = 0; lane < LANES; ++lane)
            p[lane] = changed(p[lane]);
    for (std::size_t lane = 0; lane < values.size() % LANES; ++lane)
        p[lane] = changed(p[lane]);
}

} // namespace

std::size_t countValid(std::span<float const> values) noexcept
{
    Lanes<unsigned> counts{};
    forEachLane(values, [&](std::size_t lane, float value) { counts[lane] += isValid(value) ? 1U : 0U; });
    std::size_t count = 0;
    for (auto const lane : counts)
        count += lane;
    return count;
}

Extremes findExtremes(std::span<float const> values) noexcept
{
    constexpr auto INF = std::numeric_limits<float>::infinity();
    Lanes<float> least;
    Lanes<float> most;
    least.fill(INF);
    most.fill(-INF);
    forEachLane(values, [&](std::size_t lane, float value) {
        // NOLINTNEXTLINE(bugprone-narrowing-conversions): an infinite float, as it is
        auto const low = isValid(value) ? value : INF;
        auto const high = isValid(value) ? value : -INF;
        least[lane] = low < least[lane] ? low : least[lane];
        most[lane] = high > most[lane] ? high : most[lane];
    });
    Extremes all{INF, -INF};
    for (std::size_t lane = 0; lane < LANES; ++lane) {
        all.min = least[lane] < all.min ? least[lane] : all.min;
        all.max = most[lane] > all.max ? most[lane] : all.max;
    }
    return all.min <= all.max ? all : Extremes{};
}

double sumValid(std::span<float const> values) noexcept
{
    Lanes<double> sums{};
    forEachLane(values, [&](std::size_t lane, float value) {
        sums[lane] += static_cast<double>(isValid(value) ? value : 0.0F);
    });
    double sum = 0;
    for (auto const lane : sums)
        sum += lane;
    return sum;
}

void scaleValid(std::span<float> values, float factor) noexcept
{
    changeValid(values, [factor](float value) { return value * factor; });
}

void offsetValid(std::span<float> values, float amount) noexcept
{
    changeValid(values, [amount](float value) { return value + amount; });
}

void interpolateEach(float const * data,
                     int nx,
                     int ny,
                     std::span<float const> x,
                     std::span<float const> y,
                     std::span<float> out) noexcept
{
    constexpr std::size_t BLOCK = 256; // so many places are under way at once
    auto const width = static_cast<std::size_t>(nx);
    auto const last_row = static_cast<std::size_t>(ny - 1);
    auto const columns = static_cast<float>(nx);
    auto const rows = static_cast<float>(ny);
    for (std::size_t at = 0; at < out.size(); at += BLOCK) {
        auto const end = std::min(at + BLOCK, out.size());
        for (std::size_t i = at; i < end; ++i) {
            bool const is_inside = x[i] >= 0 && x[i] < columns && y[i] >= 0 && y[i] < rows;
            auto const row = is_inside ? static_cast<std::size_t>(y[i]) : 0;
            auto const column = is_inside ? static_cast<std::size_t>(x[i]) : 0;
            auto const * const place = data + row * width + column;
            __builtin_prefetch(place);
            __builtin_prefetch(row < last_row ? place + width : place);
        }
        for (std::size_t i = at; i < end; ++i)
            out[i] = interpolate(data, nx, ny, static_cast<double>(x[i]), static_cast<double>(y[i]));
    }
}

} // namespace Yul::detail
