// The form for processors with 256-bit integer registers (AVX2 with FMA), chosen when the program runs.
#include "grid/grib/packing/Unpack.h"

#if defined(__x86_64__) && defined(__GNUC__)

#define YUL_TARGET __attribute__((target("avx2,fma")))

#include "grid/grib/packing/UnpackWideForm.h"

#include <immintrin.h>

namespace Yul::detail::grib {
namespace {

/// Eight numbers.
struct Registers
{
    static constexpr char const * NAME = "avx2";
    static constexpr std::size_t LANES = 8;
    static constexpr std::size_t LOAD = 16; // octets that each half of a step loads
    static constexpr UnpackPatterns<8, 2> PATTERNS = makeUnpackPatterns<8, 2>();

    /// A pattern in registers.
    struct Step
    {
        __m256i octets;
        __m256i shift;
        __m256i mask;
        std::size_t upper;

        YUL_TARGET Step(std::uint64_t bit, unsigned width) noexcept
        {
            auto const & p = PATTERNS[bit & 7][width];
            octets = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(p.octets.data()));
            shift = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(p.shift.data()));
            mask = _mm256_set1_epi32(static_cast<int>(p.mask));
            upper = p.upper;
        }

        YUL_TARGET __m256i take(Octet const * p) const noexcept
        {
            __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p));
            __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p + upper));
            __m256i const loaded = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
            __m256i const words = _mm256_shuffle_epi8(loaded, octets);
            return _mm256_and_si256(_mm256_srlv_epi32(words, shift), mask);
        }
    };

    /// Scales eight numbers. The product with a power of two is exact, so that joining it with the sum changes no bit.
    template <Arithmetic KIND> struct Scaler
    {
        __m256d reference;
        __m256d binary;
        __m256d decimal;

        YUL_TARGET explicit Scaler(Scale const & s) noexcept
            : reference(_mm256_set1_pd(s.reference)), binary(_mm256_set1_pd(s.binary)),
              decimal(_mm256_set1_pd(s.decimal))
        {
        }

        YUL_TARGET __m128 half(__m128i x) const noexcept
        {
            __m256d const sum = _mm256_fmadd_pd(_mm256_cvtepi32_pd(x), binary, reference);
            if constexpr (KIND == Arithmetic::DECIMAL)
                return _mm256_cvtpd_ps(_mm256_mul_pd(sum, decimal));
            return _mm256_cvtpd_ps(sum);
        }

        YUL_TARGET void operator()(__m256i x, float * out) const noexcept
        {
            _mm_storeu_ps(out, half(_mm256_castsi256_si128(x)));
            _mm_storeu_ps(out + LANES / 2, half(_mm256_extracti128_si256(x, 1)));
        }
    };

    YUL_TARGET static __m256i load(std::uint32_t const * p) noexcept
    {
        return _mm256_loadu_si256(reinterpret_cast<__m256i const *>(p));
    }

    YUL_TARGET static void store(std::uint32_t * p, __m256i x) noexcept
    {
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(p), x);
    }

    YUL_TARGET static __m256i all(std::uint32_t x) noexcept { return _mm256_set1_epi32(static_cast<int>(x)); }

    YUL_TARGET static __m256i sum(__m256i a, __m256i b) noexcept { return _mm256_add_epi32(a, b); }

    YUL_TARGET static std::uint32_t first(__m256i x) noexcept
    {
        return static_cast<std::uint32_t>(_mm256_cvtsi256_si32(x));
    }

    YUL_TARGET static __m256i allLast(__m256i x) noexcept
    {
        return _mm256_permutevar8x32_epi32(x, _mm256_set1_epi32(7));
    }

    YUL_TARGET static __m256i runningSums(__m256i x) noexcept
    {
        x = sum(x, _mm256_slli_si256(x, 4)); // within each half
        x = sum(x, _mm256_slli_si256(x, 8));
        __m256i const lower = _mm256_permutevar8x32_epi32(x, _mm256_set1_epi32(3));
        return sum(x, _mm256_blend_epi32(_mm256_setzero_si256(), lower, 0xf0));
    }
};

template <> struct Registers::Scaler<Arithmetic::FLOAT>
{
    __m256 reference;
    __m256 binary;

    YUL_TARGET explicit Scaler(Scale const & s) noexcept
        : reference(_mm256_set1_ps(static_cast<float>(s.reference))),
          binary(_mm256_set1_ps(static_cast<float>(s.binary)))
    {
    }

    YUL_TARGET void operator()(__m256i x, float * out) const noexcept
    {
        _mm256_storeu_ps(out, _mm256_fmadd_ps(_mm256_cvtepi32_ps(x), binary, reference));
    }
};

} // namespace

UnpackForm const * wideForm() noexcept
{
    static bool const HAS_BOTH = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
    return HAS_BOTH ? &WideForm<Registers>::FORM : nullptr;
}

} // namespace Yul::detail::grib

#else

namespace Yul::detail::grib {

UnpackForm const * wideForm() noexcept
{
    return nullptr;
}

} // namespace Yul::detail::grib

#endif
