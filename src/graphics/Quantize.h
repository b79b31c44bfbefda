// The palette of a picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Yul::detail {

/// Packed RGB colours (negative: transparent), and the number of its colour for each sample.
struct Quantized
{
    std::vector<int> colors;
    std::vector<std::uint8_t> indices;
};

/// Finds a palette of at most max_colors (2 to 256) for samples: their own colours where they are so few, else
/// one for each of the boxes made by cutting the box of the most varied colours at its median: the colour of more
/// than half of its samples, else their mean. A transparent sample gets a colour of its own.
[[nodiscard]] Quantized quantize(std::span<int const> pixels, std::size_t max_colors);

} // namespace Yul::detail
