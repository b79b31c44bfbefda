// The forms for processors with 256-bit integer registers (AVX2 with FMA), chosen when the program runs.
#include "grid/grib/packing/Unpack.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include "grid/grib/packing/UnpackPattern.h"

#include <algorithm>

#include <immintrin.h>

#define YUL_WIDE __attribute__((target("avx2,fma")))

namespace Yul::detail::grib {
namespace {

constexpr std::size_t LOAD = 16; // octets that each half of a step loads
constexpr std::size_t LANES = 8;
constexpr UnpackPatterns<LANES, 2> PATTERNS = makeUnpackPatterns<LANES, 2>();

/// A pattern in registers.
struct Step
{
    __m256i octets;
    __m256i shift;
    __m256i mask;
    std::size_t upper;
};

YUL_WIDE inline Step stepFor(std::uint64_t bit, unsigned width) noexcept
{
    auto const & p = PATTERNS[bit & 7][width];
    return {_mm256_loadu_si256(reinterpret_cast<__m256i const *>(p.octets.data())),
            _mm256_loadu_si256(reinterpret_cast<__m256i const *>(p.shift.data())),
            _mm256_set1_epi32(static_cast<int>(p.mask)), p.upper};
}

YUL_WIDE inline __m256i take(Octet const * p, Step const & step) noexcept
{
    __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p));
    __m128i const high = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p + step.upper));
    __m256i const octets = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    __m256i const words = _mm256_shuffle_epi8(octets, step.octets);
    return _mm256_and_si256(_mm256_srlv_epi32(words, step.shift), step.mask);
}

/// Steps whose loads stay within the octets.
std::size_t
safeSteps(Octets packed, std::uint64_t bit, unsigned width, std::size_t count, std::size_t upper) noexcept
{
    std::uint64_t const begin = bit >> 3;
    if (begin + upper + LOAD > packed.size())
        return 0;
    std::size_t const fitting = static_cast<std::size_t>((packed.size() - begin - upper - LOAD) / width + 1);
    return std::min(fitting, count / LANES);
}

/// Scales eight numbers. The product with a power of two is exact, so that joining it with the sum changes no bit.
template <Arithmetic KIND> struct Scaler
{
    __m256d reference;
    __m256d binary;
    __m256d decimal;

    YUL_WIDE explicit Scaler(Scale const & s) noexcept
        : reference(_mm256_set1_pd(s.reference)), binary(_mm256_set1_pd(s.binary)),
          decimal(_mm256_set1_pd(s.decimal))
    {
    }

    YUL_WIDE __m128 half(__m128i x) const noexcept
    {
        __m256d const sum = _mm256_fmadd_pd(_mm256_cvtepi32_pd(x), binary, reference);
        if constexpr (KIND == Arithmetic::DECIMAL)
            return _mm256_cvtpd_ps(_mm256_mul_pd(sum, decimal));
        return _mm256_cvtpd_ps(sum);
    }

    YUL_WIDE void operator()(__m256i x, float * out) const noexcept
    {
        _mm_storeu_ps(out, half(_mm256_castsi256_si128(x)));
        _mm_storeu_ps(out + LANES / 2, half(_mm256_extracti128_si256(x, 1)));
    }
};

template <> struct Scaler<Arithmetic::FLOAT>
{
    __m256 reference;
    __m256 binary;

    YUL_WIDE explicit Scaler(Scale const & s) noexcept
        : reference(_mm256_set1_ps(static_cast<float>(s.reference))),
          binary(_mm256_set1_ps(static_cast<float>(s.binary)))
    {
    }

    YUL_WIDE void operator()(__m256i x, float * out) const noexcept
    {
        _mm256_storeu_ps(out, _mm256_fmadd_ps(_mm256_cvtepi32_ps(x), binary, reference));
    }
};

YUL_WIDE inline __m256i loadEight(std::uint32_t const * p) noexcept
{
    return _mm256_loadu_si256(reinterpret_cast<__m256i const *>(p));
}

YUL_WIDE inline void storeEight(std::uint32_t * p, __m256i x) noexcept
{
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(p), x);
}

YUL_WIDE void integersWide(Octets packed,
                           std::uint64_t bit,
                           unsigned width,
                           std::uint32_t base,
                           std::span<std::uint32_t> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST_PATTERN && out.size() >= LANES) {
        Step const step = stepFor(bit, width);
        std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
        __m256i const bases = _mm256_set1_epi32(static_cast<int>(base));
        Octet const * p = packed.data() + (bit >> 3);
        for (std::size_t i = 0; i < steps; ++i, p += width)
            storeEight(out.data() + LANES * i, _mm256_add_epi32(take(p, step), bases));
        done = LANES * steps;
    }
    plainForm().integers(packed, bit + done * width, width, base, out.subspan(done));
}

template <Arithmetic KIND>
YUL_WIDE void scaleSteps(
    Octet const * p, Step step, unsigned width, std::size_t steps, Scale const & scale, float * out) noexcept
{
    Scaler<KIND> const scaler(scale);
    for (std::size_t i = 0; i < steps; ++i, p += width)
        scaler(take(p, step), out + LANES * i);
}

/// By Arithmetic.
constexpr decltype(&scaleSteps<Arithmetic::FLOAT>) SCALE_STEPS[] = {
    scaleSteps<Arithmetic::FLOAT>, scaleSteps<Arithmetic::DOUBLE>, scaleSteps<Arithmetic::DECIMAL>};

YUL_WIDE void scaledWide(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST_PATTERN) {
        Step const step = stepFor(bit, width);
        std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
        auto const run = SCALE_STEPS[static_cast<int>(arithmeticFor(scale, width))];
        run(packed.data() + (bit >> 3), step, width, steps, scale, out.data());
        done = LANES * steps;
    }
    plainForm().scaled(packed, bit + done * width, width, scale, out.subspan(done));
}

YUL_WIDE void scaleWide(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
{
    Scaler<Arithmetic::DECIMAL> const scaler(scale);
    std::size_t const whole = values.size() / LANES * LANES;
    for (std::size_t i = 0; i < whole; i += LANES)
        scaler(loadEight(values.data() + i), out + i);
    plainForm().scale(values.subspan(whole), scale, out + whole);
}

/// Sums within eight values by doubling strides; the sum so far joins at the end, so that it waits for one addition a step.
YUL_WIDE void
accumulateWide(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept
{
    __m256i const steps = _mm256_set1_epi32(static_cast<int>(step));
    __m256i const fourth = _mm256_set1_epi32(3);
    __m256i const last = _mm256_set1_epi32(7);
    __m256i before = _mm256_set1_epi32(static_cast<int>(sum));
    std::size_t const whole = values.size() / LANES * LANES;
    for (std::size_t i = 0; i < whole; i += LANES) {
        __m256i x = _mm256_add_epi32(loadEight(values.data() + i), steps);
        x = _mm256_add_epi32(x, _mm256_slli_si256(x, 4));
        x = _mm256_add_epi32(x, _mm256_slli_si256(x, 8));
        __m256i const lower = _mm256_permutevar8x32_epi32(x, fourth);
        x = _mm256_add_epi32(x, _mm256_blend_epi32(_mm256_setzero_si256(), lower, 0xf0));
        storeEight(values.data() + i, _mm256_add_epi32(x, before));
        before = _mm256_add_epi32(before, _mm256_permutevar8x32_epi32(x, last));
    }
    sum = static_cast<std::uint32_t>(_mm256_cvtsi256_si32(before));
    plainForm().accumulate(values.subspan(whole), step, sum);
}

/// The last step of a group runs on into the next one, which is written afterwards.
YUL_WIDE void
groupsWide(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept
{
    for (std::size_t g = 0; g < groups.count; ++g) {
        unsigned const width = groups.width[g];
        std::size_t const length = groups.length[g];
        std::size_t const loaded = static_cast<std::size_t>(bit >> 3) + (length / LANES + 1) * width + LOAD;
        if (width > WIDEST_PATTERN || loaded > packed.size())
            plainForm().integers(packed, bit, width, groups.base[g], {out, length});
        else {
            Step const step = stepFor(bit, width);
            __m256i const bases = _mm256_set1_epi32(static_cast<int>(groups.base[g]));
            Octet const * p = packed.data() + (bit >> 3);
            for (std::size_t i = 0; i < length; i += LANES, p += width)
                storeEight(out + i, _mm256_add_epi32(take(p, step), bases));
        }
        bit += std::uint64_t{length} * width;
        out += length;
    }
}

constexpr UnpackForm WIDE{"avx2", integersWide, scaledWide, scaleWide, accumulateWide, groupsWide};

} // namespace

UnpackForm const * wideForm() noexcept
{
    static bool const has_both = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
    return has_both ? &WIDE : nullptr;
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
