// The build compiles this file with the optimiser's loop vectoriser on and with switches that let it drop the error
// state of the processor, which change no result. The loops are compiled once for every instruction set named here,
// and the one that fits the processor is chosen at the start of the program; all give the same bits, because no
// multiplication and addition is contracted.
#include "grid/AnalKernels.h"

#include "core/Const.h"
#include "geo/projection/Math.h"
#include "grid/GridKernels.h"

#include <limits>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define YUL_EVERY_PROCESSOR [[gnu::flatten, gnu::target_clones("avx512f", "avx2", "default")]]
#else
#define YUL_EVERY_PROCESSOR
#endif

// For a short loop with a long body: unrolled, it would not become vector instructions.
#if defined(__GNUC__) && !defined(__clang__)
#define YUL_KEEP_LOOP _Pragma("GCC unroll 1")
#else
#define YUL_KEEP_LOOP
#endif

namespace Yul::detail {
namespace {

constexpr auto BLOCK = ANAL_BLOCK;

/// One row of a box: its distance from the station squared, the square root of its factor, and what all rows share.
struct BoxRow
{
    double square;
    double half;
    double square_radius;
    double value;
};

template <bool HAS_COUNTS>
inline void addRow(BoxRow const & row, Factors const & across, SumRow const & sums) noexcept
{
    for (std::size_t start = 0; start < across.count; start += BLOCK) {
        double weights[BLOCK];
        double counts[BLOCK];
        for (std::size_t lane = 0; lane < BLOCK; ++lane) {
            bool const is_near = across.squares[start + lane] + row.square <= row.square_radius;
            double const root = across.halves[start + lane] * row.half;
            double const weight = root * root;
            weights[lane] = is_near ? weight : 0;
            counts[lane] = is_near ? 1 : 0;
        }
        for (std::size_t lane = 0; lane < BLOCK; ++lane)
            sums.weights[start + lane] += weights[lane];
        for (std::size_t lane = 0; lane < BLOCK; ++lane)
            sums.values[start + lane] += weights[lane] * row.value;
        if constexpr (HAS_COUNTS)
            for (std::size_t lane = 0; lane < BLOCK; ++lane)
                sums.counts[start + lane] += counts[lane];
    }
}

inline float toFloat(double value) noexcept
{
    constexpr double MOST = std::numeric_limits<float>::max();
    return static_cast<float>(math::clamp(value, -MOST, MOST));
}

/// The weighted mean; not-a-number where there are too few stations.
template <bool HAS_COUNTS> inline double meanOf(SumRow const & sums, std::size_t i, double min_sta) noexcept
{
    double const weight = sums.weights[i];
    double const mean = sums.values[i] / weight;
    double const any = weight != 0 ? mean : math::NONE;
    if constexpr (HAS_COUNTS)
        return sums.counts[i] >= min_sta ? any : math::NONE;
    else
        return any;
}

inline float orMissing(double value) noexcept
{
    return value == value ? toFloat(value) : static_cast<float>(Const::MISS);
}

template <bool HAS_COUNTS>
inline void setRow(SumRow const & sums, std::size_t columns, double min_sta, float * values) noexcept
{
    for (std::size_t i = 0; i < columns; ++i)
        values[i] = orMissing(meanOf<HAS_COUNTS>(sums, i, min_sta));
}

template <bool HAS_COUNTS>
inline bool correctRow(SumRow const & sums, std::size_t columns, double min_sta, float * values) noexcept
{
    unsigned changes = 0;
    for (std::size_t i = 0; i < columns; ++i) {
        float const old = values[i];
        double const base = isMissing(old) ? math::NONE : static_cast<double>(old);
        float const corrected = orMissing(base + meanOf<HAS_COUNTS>(sums, i, min_sta));
        changes |= corrected != old ? 1U : 0U;
        values[i] = corrected;
    }
    return changes != 0;
}

} // namespace

YUL_EVERY_PROCESSOR void fillFactors(double offset, double filter, Factors const & factors) noexcept
{
    double const half_power = -0.5 / filter;
    for (std::size_t start = 0; start < factors.count; start += BLOCK) {
        double const first = offset + static_cast<double>(static_cast<int>(start));
        double squares[BLOCK];
        double halves[BLOCK];
        YUL_KEEP_LOOP
        for (int lane = 0; lane < static_cast<int>(BLOCK); ++lane) {
            double const distance = first + lane;
            squares[lane] = distance * distance;
            halves[lane] = math::exp(half_power * squares[lane]);
        }
        for (std::size_t lane = 0; lane < BLOCK; ++lane) {
            factors.squares[start + lane] = squares[lane];
            factors.halves[start + lane] = halves[lane];
        }
    }
}

YUL_EVERY_PROCESSOR void addBox(Factors const & across,
                                Factors const & down,
                                double square_radius,
                                double value,
                                SumRows const & sums,
                                std::size_t row,
                                std::size_t column) noexcept
{
    for (std::size_t i = 0; i < down.count; ++i) {
        BoxRow const box_row{down.squares[i], down.halves[i], square_radius, value};
        auto const start = row * sums.stride + column;
        SumRow const sum{sums.first.weights + start, sums.first.values + start,
                         sums.first.counts == nullptr ? nullptr : sums.first.counts + start};
        if (sum.counts == nullptr)
            addRow<false>(box_row, across, sum);
        else
            addRow<true>(box_row, across, sum);
        if (++row == sums.count)
            row = 0;
    }
}

YUL_EVERY_PROCESSOR void
setMeans(SumRow const & sums, std::size_t columns, int min_sta, float * values) noexcept
{
    if (sums.counts == nullptr)
        setRow<false>(sums, columns, min_sta, values);
    else
        setRow<true>(sums, columns, min_sta, values);
}

YUL_EVERY_PROCESSOR bool
addMeans(SumRow const & sums, std::size_t columns, int min_sta, float * values) noexcept
{
    return sums.counts == nullptr ? correctRow<false>(sums, columns, min_sta, values)
                                  : correctRow<true>(sums, columns, min_sta, values);
}

} // namespace Yul::detail
