#include "grid/grib/packing/Bitmap.h"

#include "core/Const.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t WORD = 64;
constexpr std::uint64_t ALL = ~std::uint64_t{0};
constexpr auto MISSING = static_cast<float>(Const::MISS);

/// 64 bits of the bitmap, the first as the most significant; 0 behind its end.
std::uint64_t wordAt(Octets bitmap, std::size_t word) noexcept
{
    std::size_t const first = word * 8;
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 8; ++i)
        bits = bits << 8 | (first + i < bitmap.size() ? bitmap[first + i] : 0U);
    return bits;
}

/// The word with what lies behind the last point cleared.
std::uint64_t pointsAt(Octets bitmap, std::size_t word, std::uint64_t points) noexcept
{
    std::uint64_t const bits = wordAt(bitmap, word);
    std::uint64_t const left = points - std::uint64_t{word} * WORD;
    return left >= WORD ? bits : bits & ~(ALL >> left);
}

} // namespace

std::uint64_t countPresent(Octets bitmap, std::uint64_t points) noexcept
{
    std::uint64_t count = 0;
    for (std::size_t word = 0; word * WORD < points; ++word)
        count += static_cast<std::uint64_t>(std::popcount(pointsAt(bitmap, word, points)));
    return count;
}

void expandPlain(Octets bitmap, std::span<float> values) noexcept
{
    // A value never lies before its point, so that going forward overwrites only values that have moved already.
    std::size_t const points = values.size();
    std::size_t from = points - static_cast<std::size_t>(countPresent(bitmap, points));
    for (std::size_t word = 0; word * WORD < points; ++word) {
        std::uint64_t bits = pointsAt(bitmap, word, points);
        float * const to = values.data() + word * WORD;
        std::size_t const count = std::min(WORD, points - word * WORD);
        if (bits == ALL) {
            std::memmove(to, values.data() + from, WORD * sizeof(float));
            from += WORD;
        } else if (bits == 0)
            std::fill_n(to, count, MISSING);
        else
            for (std::size_t i = 0; i < count; ++i, bits <<= 1)
                to[i] = (bits >> 63) != 0 ? values[from++] : MISSING;
    }
}

void expand(Octets bitmap, std::span<float> values) noexcept
{
    static Expand const BEST = expandWide() != nullptr ? expandWide() : expandPlain;
    BEST(bitmap, values);
}

} // namespace Yul::detail::grib
