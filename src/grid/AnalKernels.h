// The loops of an objective analysis as functions of plain numbers: over the points that a station influences, and
// over the rows of a grid.
#pragma once

#include <cstddef>

namespace Yul::detail {

/// Columns are taken in blocks of this many, so that the loop over a block becomes vector instructions without a
/// remainder. Arrays over columns have room for whole blocks, from wherever the first one begins.
inline constexpr std::size_t ANAL_BLOCK = 4;

/// The columns of the whole blocks that hold so many.
[[nodiscard]] constexpr std::size_t wholeBlocks(std::size_t columns) noexcept
{
    return (columns + ANAL_BLOCK - 1) / ANAL_BLOCK * ANAL_BLOCK;
}

/// Sums over the stations that influence a grid point, for one row of the grid.
struct SumRow
{
    double * weights;
    double * values; ///< weights times values
    double * counts; ///< of stations; null where they are not asked for
};

/// The sums of several rows, each so many numbers behind the one before. The row behind the last is the first again.
struct SumRows
{
    SumRow first;
    std::size_t stride;
    std::size_t count;
};

/// The distances of a station from some columns (or rows) squared, and the square roots of the factors exp(-d^2 / filter)
/// that belong to them.
struct Factors
{
    double * squares;
    double * halves;
    std::size_t count;
};

/// Fills the factors for the distances offset, offset + 1 ... up to whole blocks.
///
/// The weight of a point is the product of the factors of its column and its row. Both are taken at half their power,
/// and the product is squared: so it is right to 1e-12 of itself wherever double precision has a number for it, however
/// sharp the filter, and 0 below.
void fillFactors(double offset, double filter, Factors const & factors) noexcept;

/// Adds the weights of the points in a box, and their products with a value, to the sums of its rows, from `row` and from
/// `column` on. Points beyond the radius add nothing.
void addBox(Factors const & across,
            Factors const & down,
            double square_radius,
            double value,
            SumRows const & sums,
            std::size_t row,
            std::size_t column) noexcept;

/// Makes grid values the weighted means, missing where weights are 0 or stations fewer than min_sta.
void setMeans(SumRow const & sums, std::size_t columns, int min_sta, float * values) noexcept;
/// Adds the weighted means to grid values, which become missing in the same way and stay missing. False when no value
/// changed.
bool addMeans(SumRow const & sums, std::size_t columns, int min_sta, float * values) noexcept;

} // namespace Yul::detail
