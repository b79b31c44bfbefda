// Packed 24-bit RGB colours, red in bits 16 to 23.
#pragma once

namespace Yul::detail {

[[nodiscard]] constexpr int redOf(int color) noexcept
{
    return color >> 16 & 0xff;
}

[[nodiscard]] constexpr int greenOf(int color) noexcept
{
    return color >> 8 & 0xff;
}

[[nodiscard]] constexpr int blueOf(int color) noexcept
{
    return color & 0xff;
}

/// The gray level 0..1 of a colour. These weights suit printed lines; they are no luminance formula.
[[nodiscard]] constexpr double grayOf(int color) noexcept
{
    return (0.9 * redOf(color) + greenOf(color) + 0.8 * blueOf(color)) / 255 / 2.7;
}

} // namespace Yul::detail
