#include "graphics/Quantize.h"

#include "graphics/PackedColor.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace Yul::detail {
namespace {

/// A colour and how many samples have it.
struct Count
{
    int color;
    std::size_t samples;
};

constexpr std::array<int (*)(int), 3> CHANNELS = {redOf, greenOf, blueOf};

/// A run of colours that share a palette entry.
struct Box
{
    std::span<Count> counts;
    std::size_t channel = 0; // the one that varies most
    std::size_t weight = 0;  // square of its range times the number of samples: what is cut first

    explicit Box(std::span<Count> colors) : counts(colors)
    {
        std::size_t samples = 0;
        for (Count const & each : counts)
            samples += each.samples;
        for (std::size_t i = 0; i < CHANNELS.size(); ++i) {
            auto const [low, high] =
                std::minmax_element(counts.begin(), counts.end(), [&](Count const & a, Count const & b) {
                    return CHANNELS[i](a.color) < CHANNELS[i](b.color);
                });
            auto const range = static_cast<std::size_t>(CHANNELS[i](high->color) - CHANNELS[i](low->color));
            if (range * range * samples > weight) {
                weight = range * range * samples;
                channel = i;
            }
        }
    }

    /// Puts the lower half of the samples in front and returns how many colours that is.
    std::size_t cut()
    {
        std::sort(counts.begin(), counts.end(), [&](Count const & a, Count const & b) {
            int const level_a = CHANNELS[channel](a.color);
            int const level_b = CHANNELS[channel](b.color);
            return level_a != level_b ? level_a < level_b : a.color < b.color;
        });
        std::size_t total = 0;
        for (Count const & each : counts)
            total += each.samples;
        std::size_t below = 0;
        std::size_t i = 0;
        while (i + 2 < counts.size() && below + counts[i].samples <= total / 2)
            below += counts[i++].samples;
        return i + 1;
    }

    /// The colour of more than half of the samples, as areas have it; else the mean.
    [[nodiscard]] int color() const
    {
        std::array<std::size_t, 3> sum{};
        std::size_t total = 0;
        for (Count const & each : counts) {
            for (std::size_t i = 0; i < CHANNELS.size(); ++i)
                sum[i] += each.samples * static_cast<std::size_t>(CHANNELS[i](each.color));
            total += each.samples;
        }
        for (Count const & each : counts)
            if (each.samples > total / 2)
                return each.color;
        auto const level = [&](std::size_t i) { return static_cast<int>((sum[i] + total / 2) / total); };
        return level(0) << 16 | level(1) << 8 | level(2);
    }
};

/// Cuts boxes until there are as many as wanted, or none that has two colours.
std::vector<Box> boxesOf(std::span<Count> counts, std::size_t wanted)
{
    std::vector<Box> boxes;
    if (!counts.empty())
        boxes.emplace_back(counts);
    while (boxes.size() < wanted) {
        auto const widest = std::max_element(
            boxes.begin(), boxes.end(), [](Box const & a, Box const & b) { return a.weight < b.weight; });
        if (widest == boxes.end() || widest->weight == 0)
            break;
        std::span<Count> const all = widest->counts;
        std::size_t const half = widest->cut();
        *widest = Box(all.first(half));
        boxes.emplace_back(all.subspan(half));
    }
    return boxes;
}

} // namespace

Quantized quantize(std::span<int const> pixels, std::size_t max_colors)
{
    std::unordered_map<int, std::size_t> samples;
    for (int const pixel : pixels)
        ++samples[std::max(pixel, -1)];
    Quantized found;
    std::unordered_map<int, std::uint8_t> index;
    if (samples.erase(-1) > 0) {
        found.colors.push_back(-1);
        index[-1] = 0;
    }
    std::vector<Count> counts;
    counts.reserve(samples.size());
    for (auto const & [color, count] : samples)
        counts.push_back({color, count});
    std::sort(counts.begin(), counts.end(),
              [](Count const & a, Count const & b) { return a.color < b.color; });
    for (Box const & box : boxesOf(counts, max_colors - found.colors.size())) {
        for (Count const & each : box.counts)
            index[each.color] = static_cast<std::uint8_t>(found.colors.size());
        found.colors.push_back(box.color());
    }
    found.indices.reserve(pixels.size());
    for (int const pixel : pixels)
        found.indices.push_back(index[std::max(pixel, -1)]);
    return found;
}

} // namespace Yul::detail
