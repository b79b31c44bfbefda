// Arithmetic that stops at the ends of a type's range instead of overflowing.
#pragma once

#include <limits>

namespace Yul::detail {

/// The value cut towards zero and held to the range of the integer type; 0 for NaN.
template <class Integer> [[nodiscard]] constexpr Integer clampTo(double value) noexcept
{
    using Limits = std::numeric_limits<Integer>;
    if (!(value == value))
        return 0;
    if (value <= static_cast<double>(Limits::min()))
        return Limits::min();
    if (value >= static_cast<double>(Limits::max()))
        return Limits::max();
    return static_cast<Integer>(value);
}

/// The value held to the range of an int.
[[nodiscard]] constexpr int clampToInt(long value) noexcept
{
    using Limits = std::numeric_limits<int>;
    return value < Limits::min()   ? Limits::min()
           : value > Limits::max() ? Limits::max()
                                   : static_cast<int>(value);
}

[[nodiscard]] constexpr long addClamped(long a, long b) noexcept
{
    long sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b < 0 ? std::numeric_limits<long>::min() : std::numeric_limits<long>::max();
}

} // namespace Yul::detail
