// The forms for processors with 256-bit integer registers (AVX2), chosen when the program runs.
#include "grid/grib/packing/Unpack.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <array>

#include <immintrin.h>

#define YUL_WIDE __attribute__((target("avx2")))

namespace Yul::detail::grib {
namespace {

/// Eight numbers of w bits are w octets: one step always begins at the same bit of an octet, and one pattern
/// of octets and shifts serves all steps. Each number lies in four octets as long as w is at most 25.
constexpr unsigned WIDEST = 25;
constexpr std::size_t LOAD = 16; // octets that each half of a step loads
constexpr std::size_t LANES = 8;

/// How to bring eight numbers that begin at a bit of an octet (0 to 7) into eight lanes.
struct Pattern
{
    std::array<std::uint8_t, 32>
        octets{}; ///< four octets a lane, least significant first, within each half's load
    std::array<std::uint32_t, LANES> shift{};
    std::uint32_t mask = 0;
    std::uint32_t upper = 0; ///< where the load of the upper four numbers begins
};

constexpr Pattern patternFor(unsigned start, unsigned width)
{
    Pattern pattern;
    pattern.mask = (1U << width) - 1;
    pattern.upper = (start + 4 * width) / 8;
    for (unsigned lane = 0; lane < LANES; ++lane) {
        unsigned const bit = start + lane * width;
        unsigned const octet = bit / 8 - (lane < 4 ? 0 : pattern.upper);
        for (unsigned i = 0; i < 4; ++i)
            pattern.octets[4 * lane + i] = static_cast<std::uint8_t>(octet + 3 - i);
        pattern.shift[lane] = 32 - width - bit % 8;
    }
    return pattern;
}

constexpr auto makePatterns()
{
    std::array<std::array<Pattern, WIDEST + 1>, 8> patterns{};
    for (unsigned start = 0; start < 8; ++start)
        for (unsigned width = 1; width <= WIDEST; ++width)
            patterns[start][width] = patternFor(start, width);
    return patterns;
}

constexpr auto PATTERNS = makePatterns();

/// The pattern in registers.
struct Step
{
    __m256i octets;
    __m256i shift;
    __m256i mask;
    std::size_t upper;
};

YUL_WIDE inline Step stepFor(std::uint64_t bit, unsigned width) noexcept
{
    Pattern const & p = PATTERNS[bit & 7][width];
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
    return fitting < count / LANES ? fitting : count / LANES;
}

struct WideScale
{
    __m256d reference;
    __m256d binary;
    __m256d decimal;
};

YUL_WIDE inline __m128 scaleFour(__m128i x, WideScale const & s) noexcept
{
    __m256d const product = _mm256_mul_pd(_mm256_cvtepi32_pd(x), s.binary);
    return _mm256_cvtpd_ps(_mm256_mul_pd(_mm256_add_pd(s.reference, product), s.decimal));
}

YUL_WIDE inline void scaleEight(__m256i x, WideScale const & s, float * out) noexcept
{
    _mm_storeu_ps(out, scaleFour(_mm256_castsi256_si128(x), s));
    _mm_storeu_ps(out + 4, scaleFour(_mm256_extracti128_si256(x, 1), s));
}

YUL_WIDE inline WideScale wideScale(Scale const & s) noexcept
{
    return {_mm256_set1_pd(s.reference), _mm256_set1_pd(s.binary), _mm256_set1_pd(s.decimal)};
}

YUL_WIDE void integersWide(Octets packed,
                           std::uint64_t bit,
                           unsigned width,
                           std::uint32_t base,
                           std::span<std::uint32_t> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST && out.size() >= LANES) {
        Step const step = stepFor(bit, width);
        std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
        __m256i const bases = _mm256_set1_epi32(static_cast<int>(base));
        Octet const * p = packed.data() + (bit >> 3);
        for (std::size_t i = 0; i < steps; ++i, p += width)
            _mm256_storeu_si256(reinterpret_cast<__m256i *>(out.data() + LANES * i),
                                _mm256_add_epi32(take(p, step), bases));
        done = LANES * steps;
    }
    plainForm().integers(packed, bit + done * width, width, base, out.subspan(done));
}

YUL_WIDE void scaledWide(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
{
    std::size_t done = 0;
    if (width > 0 && width <= WIDEST) {
        Step const step = stepFor(bit, width);
        WideScale const s = wideScale(scale);
        std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
        Octet const * p = packed.data() + (bit >> 3);
        for (std::size_t i = 0; i < steps; ++i, p += width)
            scaleEight(take(p, step), s, out.data() + LANES * i);
        done = LANES * steps;
    }
    plainForm().scaled(packed, bit + done * width, width, scale, out.subspan(done));
}

YUL_WIDE void scaleWide(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
{
    WideScale const s = wideScale(scale);
    std::size_t const whole = values.size() / LANES * LANES;
    for (std::size_t i = 0; i < whole; i += LANES)
        scaleEight(_mm256_loadu_si256(reinterpret_cast<__m256i const *>(values.data() + i)), s, out + i);
    plainForm().scale(values.subspan(whole), scale, out + whole);
}

constexpr UnpackForm WIDE{"avx2", integersWide, scaledWide, scaleWide};

} // namespace

UnpackForm const * wideForm() noexcept
{
    return __builtin_cpu_supports("avx2") != 0 ? &WIDE : nullptr;
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
