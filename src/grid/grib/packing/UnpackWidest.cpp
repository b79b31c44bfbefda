// The form for processors with 512-bit registers that shuffle octets freely (AVX-512 with VBMI).
#include "grid/grib/packing/Unpack.h"

#if defined(__x86_64__) && defined(__GNUC__)

#define YUL_TARGET __attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi")))

#include "grid/grib/packing/UnpackWideForm.h"

#include <immintrin.h>

// Version 12 of GCC takes the "any value" operands inside its own 512-bit operations for forgotten ones.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif

namespace Yul::detail::grib {
namespace {

/// Sixteen numbers.
struct Registers
{
    static constexpr char const * NAME = "avx512";
    static constexpr std::size_t LANES = 16;
    static constexpr std::size_t LOAD = 64; // octets that a step loads
    static constexpr UnpackPatterns<16, 1> PATTERNS = makeUnpackPatterns<16, 1>();

    /// A pattern in registers.
    struct Step
    {
        __m512i octets;
        __m512i shift;
        __m512i mask;
        // NOLINTNEXTLINE(readability-identifier-naming): other registers have a variable of this name
        static constexpr std::size_t upper = 0;

        YUL_TARGET Step(std::uint64_t bit, unsigned width) noexcept
        {
            auto const & p = PATTERNS[bit & 7][width];
            octets = _mm512_loadu_si512(p.octets.data());
            shift = _mm512_loadu_si512(p.shift.data());
            mask = _mm512_set1_epi32(static_cast<int>(p.mask));
        }

        YUL_TARGET __m512i take(Octet const * p) const noexcept
        {
            __m512i const words = _mm512_permutexvar_epi8(octets, _mm512_loadu_si512(p));
            return _mm512_and_si512(_mm512_srlv_epi32(words, shift), mask);
        }
    };

    /// Scales sixteen numbers. The product with a power of two is exact, so that joining it with the sum changes no bit.
    template <Arithmetic KIND> struct Scaler
    {
        __m512d reference;
        __m512d binary;
        __m512d decimal;

        YUL_TARGET explicit Scaler(Scale const & s) noexcept
            : reference(_mm512_set1_pd(s.reference)), binary(_mm512_set1_pd(s.binary)),
              decimal(_mm512_set1_pd(s.decimal))
        {
        }

        YUL_TARGET __m256 half(__m256i x) const noexcept
        {
            __m512d const sum = _mm512_fmadd_pd(_mm512_cvtepi32_pd(x), binary, reference);
            if constexpr (KIND == Arithmetic::DECIMAL)
                return _mm512_cvtpd_ps(_mm512_mul_pd(sum, decimal));
            return _mm512_cvtpd_ps(sum);
        }

        YUL_TARGET void operator()(__m512i x, float * out) const noexcept
        {
            _mm256_storeu_ps(out, half(_mm512_castsi512_si256(x)));
            _mm256_storeu_ps(out + LANES / 2, half(_mm512_extracti64x4_epi64(x, 1)));
        }
    };

    YUL_TARGET static __m512i load(std::uint32_t const * p) noexcept { return _mm512_loadu_si512(p); }

    YUL_TARGET static void store(std::uint32_t * p, __m512i x) noexcept { _mm512_storeu_si512(p, x); }

    YUL_TARGET static __m512i all(std::uint32_t x) noexcept { return _mm512_set1_epi32(static_cast<int>(x)); }

    YUL_TARGET static __m512i sum(__m512i a, __m512i b) noexcept { return _mm512_add_epi32(a, b); }

    YUL_TARGET static std::uint32_t first(__m512i x) noexcept
    {
        return static_cast<std::uint32_t>(_mm512_cvtsi512_si32(x));
    }

    YUL_TARGET static __m512i allLast(__m512i x) noexcept
    {
        return _mm512_permutexvar_epi32(_mm512_set1_epi32(15), x);
    }

    /// x with its lanes moved up, zeros below.
    template <int LANES_UP> YUL_TARGET static __m512i moved(__m512i x) noexcept
    {
        return _mm512_alignr_epi32(x, _mm512_setzero_si512(), 16 - LANES_UP);
    }

    YUL_TARGET static __m512i runningSums(__m512i x) noexcept
    {
        x = sum(x, moved<1>(x));
        x = sum(x, moved<2>(x));
        x = sum(x, moved<4>(x));
        return sum(x, moved<8>(x));
    }
};

template <> struct Registers::Scaler<Arithmetic::FLOAT>
{
    __m512 reference;
    __m512 binary;

    YUL_TARGET explicit Scaler(Scale const & s) noexcept
        : reference(_mm512_set1_ps(static_cast<float>(s.reference))),
          binary(_mm512_set1_ps(static_cast<float>(s.binary)))
    {
    }

    YUL_TARGET void operator()(__m512i x, float * out) const noexcept
    {
        _mm512_storeu_ps(out, _mm512_fmadd_ps(_mm512_cvtepi32_ps(x), binary, reference));
    }
};

} // namespace

UnpackForm const * widestForm() noexcept
{
    static bool const HAS_ALL =
        __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
        __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
        __builtin_cpu_supports("avx512vbmi") != 0;
    return HAS_ALL ? &WideForm<Registers>::FORM : nullptr;
}

} // namespace Yul::detail::grib

#else

namespace Yul::detail::grib {

UnpackForm const * widestForm() noexcept
{
    return nullptr;
}

} // namespace Yul::detail::grib

#endif
