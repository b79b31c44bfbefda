// The form of the bitmap for processors with 256-bit registers (AVX2), chosen when the program runs.
#include "grid/grib/packing/Bitmap.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include "core/Const.h"

#include <array>
#include <bit>

#include <immintrin.h>

#define YUL_WIDE __attribute__((target("avx2,popcnt")))

namespace Yul::detail::grib {
namespace {

constexpr std::size_t LANES = 8;

/// For each octet of a bitmap: which of the next eight values each point takes, and a mask of the points that take one.
struct Spread
{
    std::array<std::array<std::uint8_t, LANES>, 256> source{};
    std::array<std::array<std::uint8_t, LANES>, 256> present{};
};

constexpr Spread makeSpread()
{
    Spread spread;
    for (unsigned octet = 0; octet < 256; ++octet) {
        std::uint8_t next = 0;
        for (unsigned lane = 0; lane < LANES; ++lane)
            if ((octet & (0x80U >> lane)) != 0) {
                spread.source[octet][lane] = next++;
                spread.present[octet][lane] = 0xff;
            }
    }
    return spread;
}

constexpr Spread SPREAD = makeSpread();

YUL_WIDE void expandByOctets(Octets bitmap, std::span<float> values) noexcept
{
    std::size_t const points = values.size();
    std::size_t from = points - static_cast<std::size_t>(countPresent(bitmap, points));
    __m256 const missing = _mm256_set1_ps(static_cast<float>(Const::MISS));
    float * const data = values.data();
    std::size_t point = 0;
    // Eight values are loaded before eight points are stored, and no value that is still wanted lies among those points.
    for (; point + LANES <= points && from + LANES <= points; point += LANES) {
        unsigned const octet = bitmap[point / LANES];
        auto const * const source = reinterpret_cast<__m128i const *>(SPREAD.source[octet].data());
        auto const * const present = reinterpret_cast<__m128i const *>(SPREAD.present[octet].data());
        __m256i const lanes = _mm256_cvtepu8_epi32(_mm_loadl_epi64(source));
        __m256 const mask = _mm256_castsi256_ps(_mm256_cvtepi8_epi32(_mm_loadl_epi64(present)));
        __m256 const taken = _mm256_permutevar8x32_ps(_mm256_loadu_ps(data + from), lanes);
        _mm256_storeu_ps(data + point, _mm256_blendv_ps(missing, taken, mask));
        from += static_cast<std::size_t>(std::popcount(octet));
    }
    expandPlain(bitmap.subspan(point / LANES), values.subspan(point));
}

} // namespace

Expand expandWide() noexcept
{
    return __builtin_cpu_supports("avx2") != 0 ? expandByOctets : nullptr;
}

} // namespace Yul::detail::grib

#else

namespace Yul::detail::grib {

Expand expandWide() noexcept
{
    return nullptr;
}

} // namespace Yul::detail::grib

#endif
