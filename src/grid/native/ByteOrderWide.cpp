// The form of the swap for processors with 256-bit registers (AVX2), chosen when the program runs.
#include "grid/native/ByteOrder.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <immintrin.h>

#define YUL_WIDE __attribute__((target("avx2")))

namespace Yul::detail::native {
namespace {

constexpr std::size_t LANES = 8;

YUL_WIDE void swapByShuffle(float const * from, float * to, std::size_t count) noexcept
{
    __m256i const reversed =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
    std::size_t i = 0;
    for (; i + LANES <= count; i += LANES) {
        __m256i const values = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(from + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(to + i), _mm256_shuffle_epi8(values, reversed));
    }
    swapPlain(from + i, to + i, count - i);
}

} // namespace

Swap swapWide() noexcept
{
    return __builtin_cpu_supports("avx2") != 0 ? swapByShuffle : nullptr;
}

} // namespace Yul::detail::native

#else

namespace Yul::detail::native {

Swap swapWide() noexcept
{
    return nullptr;
}

} // namespace Yul::detail::native

#endif
