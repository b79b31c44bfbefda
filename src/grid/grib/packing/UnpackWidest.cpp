// The forms for processors with 512-bit registers that shuffle octets freely (AVX-512 with VBMI).
#include "grid/grib/packing/Unpack.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include "grid/grib/packing/UnpackPattern.h"

#include <algorithm>

#include <immintrin.h>

// Version 12 of GCC takes the "any value" operands inside its own 512-bit operations for forgotten ones.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif

#define YUL_WIDEST __attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi")))

namespace Yul::detail::grib {
namespace {

constexpr std::size_t LOAD = 64; // octets that a step loads
constexpr std::size_t LANES = 16;
constexpr UnpackPatterns<LANES, 1> PATTERNS = makeUnpackPatterns<LANES, 1>();

/// A pattern in registers.
struct Step
{
    __m512i octets;
    __m512i shift;
    __m512i mask;
};

YUL_WIDEST inline Step stepFor(std::uint64_t bit, unsigned width) noexcept
{
    auto const & p = PATTERNS[bit & 7][width];
    return {_mm512_loadu_si512(p.octets.data()), _mm512_loadu_si512(p.shift.data()),
            _mm512_set1_epi32(static_cast<int>(p.mask))};
}

YUL_WIDEST inline __m512i take(Octet const * p, Step const & step) noexcept
{
    __m512i const words = _mm512_permutexvar_epi8(step.octets, _mm512_loadu_si512(p));
    return _mm512_and_si512(_mm512_srlv_epi32(words, step.shift), step.mask);
}

/// Steps whose loads stay within the octets.
std::size_t safeSteps(Octets packed, std::uint64_t bit, unsigned width, std::size_t count) noexcept
{
    std::uint64_t const begin = bit >> 3;
    if (begin + LOAD > packed.size())
        return 0;
    std::size_t const fitting = static_cast<std::size_t>((packed.size() - begin - LOAD) / (2 * width) + 1);
    return std::min(fitting, count / LANES);
}

/// Scales sixteen numbers. The product with a power of two is exact, so that joining it with the sum changes no bit.
template <Arithmetic KIND> struct Scaler
{
    __m512d reference;
    __m512d binary;
    __m512d decimal;

    YUL_WIDEST explicit Scaler(Scale const & s) noexcept
        : reference(_mm512_set1_pd(s.reference)), binary(_mm512_set1_pd(s.binary)),
          decimal(_mm512_set1_pd(s.decimal))
    {
    }

    YUL_WIDEST __m256 half(__m256i x) const noexcept
    {
        __m512d const sum = _mm512_fmadd_pd(_mm512_cvtepi32_pd(x), binary, reference);
        if constexpr (KIND == Arithmetic::DECIMAL)
            return _mm512_cvtpd_ps(_mm512_mul_pd(sum, decimal));
        return _mm512_cvtpd_ps(sum);
    }

    YUL_WIDEST void operator()(__m512i x, float * out) const noexcept
    {
        _mm256_storeu_ps(out, half(_mm512_castsi512_si256(x)));
        _mm256_storeu_ps(out + LANES / 2, half(_mm512_extracti64x4_epi64(x, 1)));
    }
};

template <> struct Scaler<Arithmetic::FLOAT>
{
    __m512 reference;
    __m512 binary;

    YUL_WIDEST explicit Scaler(Scale const & s) noexcept
        : reference(_mm512_set1_ps(static_cast<float>(s.reference))),
          binary(_mm512_set1_ps(static_cast<float>(s.binary)))
    {
    }

    YUL_WIDEST void operator()(__m512i x, float * out) const noexcept
    {
        _mm512_storeu_ps(out, _mm512_fmadd_ps(_mm512_cvtepi32_ps(x), binary, reference));
    }
};

YUL_WIDEST void integersWidest(Octets packed,
                               std::uint64_t bit,
                               unsigned width,
                               std::uint32_t base,
                               std::span<std::uint32_t> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST_PATTERN && out.size() >= LANES) {
        Step const step = stepFor(bit, width);
        std::size_t const steps = safeSteps(packed, bit, width, out.size());
        __m512i const bases = _mm512_set1_epi32(static_cast<int>(base));
        Octet const * p = packed.data() + (bit >> 3);
        for (std::size_t i = 0; i < steps; ++i, p += 2 * width)
            _mm512_storeu_si512(out.data() + LANES * i, _mm512_add_epi32(take(p, step), bases));
        done = LANES * steps;
    }
    plainForm().integers(packed, bit + done * width, width, base, out.subspan(done));
}

template <Arithmetic KIND>
YUL_WIDEST void scaleSteps(
    Octet const * p, Step step, unsigned width, std::size_t steps, Scale const & scale, float * out) noexcept
{
    Scaler<KIND> const scaler(scale);
    for (std::size_t i = 0; i < steps; ++i, p += 2 * width)
        scaler(take(p, step), out + LANES * i);
}

/// By Arithmetic.
constexpr decltype(&scaleSteps<Arithmetic::FLOAT>) SCALE_STEPS[] = {
    scaleSteps<Arithmetic::FLOAT>, scaleSteps<Arithmetic::DOUBLE>, scaleSteps<Arithmetic::DECIMAL>};

YUL_WIDEST void scaledWidest(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST_PATTERN) {
        Step const step = stepFor(bit, width);
        std::size_t const steps = safeSteps(packed, bit, width, out.size());
        auto const run = SCALE_STEPS[static_cast<int>(arithmeticFor(scale, width))];
        run(packed.data() + (bit >> 3), step, width, steps, scale, out.data());
        done = LANES * steps;
    }
    plainForm().scaled(packed, bit + done * width, width, scale, out.subspan(done));
}

YUL_WIDEST void scaleWidest(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
{
    Scaler<Arithmetic::DECIMAL> const scaler(scale);
    std::size_t const whole = values.size() / LANES * LANES;
    for (std::size_t i = 0; i < whole; i += LANES)
        scaler(_mm512_loadu_si512(values.data() + i), out + i);
    plainForm().scale(values.subspan(whole), scale, out + whole);
}

/// x with its lanes moved up by `LANES_UP`, zeros below.
template <int LANES_UP> YUL_WIDEST inline __m512i moved(__m512i x) noexcept
{
    return _mm512_alignr_epi32(x, _mm512_setzero_si512(), 16 - LANES_UP);
}

/// Sums within sixteen values by doubling strides; the sum so far joins at the end, so that it waits for one addition a step.
YUL_WIDEST void
accumulateWidest(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept
{
    __m512i const steps = _mm512_set1_epi32(static_cast<int>(step));
    __m512i const last = _mm512_set1_epi32(15);
    __m512i before = _mm512_set1_epi32(static_cast<int>(sum));
    std::size_t const whole = values.size() / LANES * LANES;
    for (std::size_t i = 0; i < whole; i += LANES) {
        __m512i x = _mm512_add_epi32(_mm512_loadu_si512(values.data() + i), steps);
        x = _mm512_add_epi32(x, moved<1>(x));
        x = _mm512_add_epi32(x, moved<2>(x));
        x = _mm512_add_epi32(x, moved<4>(x));
        x = _mm512_add_epi32(x, moved<8>(x));
        _mm512_storeu_si512(values.data() + i, _mm512_add_epi32(x, before));
        before = _mm512_add_epi32(before, _mm512_permutexvar_epi32(last, x));
    }
    sum = static_cast<std::uint32_t>(_mm512_cvtsi512_si32(before));
    plainForm().accumulate(values.subspan(whole), step, sum);
}

/// The last step of a group runs on into the next one, which is written afterwards.
YUL_WIDEST void
groupsWidest(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept
{
    for (std::size_t g = 0; g < groups.count; ++g) {
        unsigned const width = groups.width[g];
        std::size_t const length = groups.length[g];
        std::size_t const loaded =
            static_cast<std::size_t>(bit >> 3) + (length / LANES + 1) * 2 * width + LOAD;
        if (width > WIDEST_PATTERN || loaded > packed.size())
            plainForm().integers(packed, bit, width, groups.base[g], {out, length});
        else {
            Step const step = stepFor(bit, width);
            __m512i const bases = _mm512_set1_epi32(static_cast<int>(groups.base[g]));
            Octet const * p = packed.data() + (bit >> 3);
            for (std::size_t i = 0; i < length; i += LANES, p += 2 * width)
                _mm512_storeu_si512(out + i, _mm512_add_epi32(take(p, step), bases));
        }
        bit += std::uint64_t{length} * width;
        out += length;
    }
}

constexpr UnpackForm WIDEST{"avx512",    integersWidest,   scaledWidest,
                            scaleWidest, accumulateWidest, groupsWidest};

} // namespace

UnpackForm const * widestForm() noexcept
{
    static bool const has_all =
        __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
        __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
        __builtin_cpu_supports("avx512vbmi") != 0;
    return has_all ? &WIDEST : nullptr;
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
