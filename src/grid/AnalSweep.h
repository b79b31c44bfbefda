// Spreads values of stations over a grid, row by row: the numeric part of an objective analysis.
#pragma once

#include "geo/GridPoint.h"
#include "grid/AnalKernels.h"

#include <cstddef>
#include <span>
#include <vector>

namespace Yul::detail {

/// One field of an analysis: what the stations say and what the grid holds. Arrays over stations are in the order
/// of AnalSweep::stations; not-a-number is missing there.
struct AnalField
{
    std::vector<double> values;    ///< of the stations
    std::vector<double> residuals; ///< what the next sweep spreads: at first the values
    float * grid = nullptr;        ///< nx * ny values in storage order
    double rms = 0;                ///< root mean square of the residuals
    int count = 0;                 ///< number of residuals
};

/// A station with the box of columns and rows that holds all points it influences.
struct AnalStation
{
    double column;
    double row;
    int left, top;
    int columns, rows; ///< 0 where it influences none
    int index;         ///< in the data set
};

/// The sweeps of an analysis. Every station is taken up at the first row that it influences, and adds to the sums of
/// the rows from there on; only as many rows of sums are kept as a radius spans. So the cost is that of the pairs of
/// stations and points within the radius and of one look at every point. Distances are in grid lengths.
class AnalSweep
{
public:
    /// Stations without a place (Const::MISS), and those that neither influence nor lie in the grid, are left
    /// out. min_sta: how many stations must influence a point.
    AnalSweep(
        std::span<GridPoint const> places, int nx_value, int ny_value, double radius, int min_sta_value);

    [[nodiscard]] std::span<AnalStation const> stations() const noexcept { return order; }

    /// The first pass: every grid value becomes the weighted mean of the values that influence it.
    void analyse(std::span<AnalField> fields, double filter);
    /// A later pass: adds the weighted means of the residuals. False when no value changed.
    bool correct(std::span<AnalField> fields, double filter);
    /// The residuals of the stations, value less interpolated grid value, with their number and root mean square.
    void findResiduals(AnalField & field) const noexcept;

private:
    /// Takes a row of sums, and says whether it changed the row of the grid.
    using Finish = bool (*)(SumRow const & sums, std::size_t columns, int min_sta, float * values);

    bool sweep(std::span<AnalField> fields, double filter, Finish finish);
    bool sweepGroup(std::span<AnalField> fields, double filter, Finish finish);
    void spread(std::span<AnalField const> fields, std::size_t station, double filter);
    bool finishRow(std::span<AnalField> fields, int row, Finish finish);
    [[nodiscard]] SumRows sumsOf(std::size_t field) noexcept;

    int nx;
    int ny;
    int min_sta;
    double square_radius;
    std::vector<AnalStation> order; // by first row
    std::size_t slots = 1;          // rows of sums that are kept: row r is number r modulo this
    std::size_t stride;             // numbers in a row of sums, a block more than there are columns
    std::vector<double> sums;       // field by field: weights of all slots, then values, then counts
    std::vector<double> factors;    // of a station: squares and halves across, squares and halves down
};

} // namespace Yul::detail
