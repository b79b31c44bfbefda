#include "grid/AnalSweep.h"

#include "core/Const.h"
#include "geo/projection/Math.h"
#include "grid/GridKernels.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {
namespace {

/// Fields are swept together, so that they share their weights, as many as keep their sums within this number.
constexpr std::size_t MOST_SUMS = 1 << 20;

/// The whole numbers among 0 to count - 1 that are at most `radius` away from a place.
struct Reach
{
    int first = 0;
    int count = 0;
};

Reach reachOf(double place, double radius, int count)
{
    auto const first = std::max(std::ceil(place - radius), 0.0);
    auto const last = std::min(std::floor(place + radius), count - 1.0);
    if (!(first <= last))
        return {};
    return {static_cast<int>(first), static_cast<int>(last - first) + 1};
}

bool setMeansOf(SumRow const & sums, std::size_t columns, int min_sta, float * values)
{
    setMeans(sums, columns, min_sta, values);
    return true;
}

} // namespace

AnalSweep::AnalSweep(
    std::span<GridPoint const> places, int nx_value, int ny_value, double radius, int min_sta_value)
    : nx(nx_value), ny(ny_value), min_sta(min_sta_value), square_radius(radius * radius),
      stride(wholeBlocks(static_cast<std::size_t>(nx)) + ANAL_BLOCK)
{
    std::vector<AnalStation> found;
    found.reserve(places.size());
    std::vector<std::size_t> starts(static_cast<std::size_t>(ny) +
                                    1); // by row, of the stations that begin there
    int columns = 0;
    int rows = 1;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i].isSet())
            continue;
        double const column = places[i].x;
        double const row = places[i].y;
        auto const across = reachOf(column, std::fabs(radius), nx);
        auto const down = across.count > 0 ? reachOf(row, std::fabs(radius), ny) : Reach{};
        bool const is_inside = column >= 0 && column <= nx - 1 && row >= 0 && row <= ny - 1;
        if (down.count == 0 && !is_inside)
            continue;
        found.push_back(
            {column, row, across.first, down.first, across.count, down.count, static_cast<int>(i)});
        ++starts[static_cast<std::size_t>(down.first) + 1];
        columns = std::max(columns, across.count);
        rows = std::max(rows, down.count);
    }
    for (std::size_t row = 1; row < starts.size(); ++row)
        starts[row] += starts[row - 1];
    order.resize(found.size());
    for (auto const & station : found)
        order[starts[static_cast<std::size_t>(station.top)]++] = station;
    slots = static_cast<std::size_t>(rows);
    factors.resize(2 * (wholeBlocks(static_cast<std::size_t>(columns)) + wholeBlocks(slots)));
}

void AnalSweep::analyse(std::span<AnalField> fields, double filter)
{
    sweep(fields, filter, setMeansOf);
}

bool AnalSweep::correct(std::span<AnalField> fields, double filter)
{
    return sweep(fields, filter, addMeans);
}

bool AnalSweep::sweep(std::span<AnalField> fields, double filter, Finish finish)
{
    auto const group = std::max<std::size_t>(MOST_SUMS / (slots * stride), 1);
    bool has_changed = false;
    for (std::size_t first = 0; first < fields.size(); first += group) {
        auto const some = fields.subspan(first, std::min(group, fields.size() - first));
        has_changed = sweepGroup(some, filter, finish) || has_changed;
    }
    return has_changed;
}

bool AnalSweep::sweepGroup(std::span<AnalField> fields, double filter, Finish finish)
{
    std::size_t const kinds = min_sta > 1 ? 3 : 2;
    sums.assign(fields.size() * kinds * slots * stride, 0);
    bool has_changed = false;
    std::size_t next = 0;
    for (int row = 0; row < ny; ++row) {
        for (; next < order.size() && order[next].top == row; ++next)
            spread(fields, next, filter);
        has_changed = finishRow(fields, row, finish) || has_changed;
    }
    return has_changed;
}

SumRows AnalSweep::sumsOf(std::size_t field) noexcept
{
    auto const size = slots * stride;
    if (min_sta <= 1) { // where there is a weight there is a station
        auto * const weights = sums.data() + field * 2 * size;
        return {{weights, weights + size, nullptr}, stride, slots};
    }
    auto * const weights = sums.data() + field * 3 * size;
    return {{weights, weights + size, weights + 2 * size}, stride, slots};
}

void AnalSweep::spread(std::span<AnalField const> fields, std::size_t station, double filter)
{
    auto const & s = order[station];
    auto const columns = wholeBlocks(static_cast<std::size_t>(s.columns));
    auto const rows = wholeBlocks(static_cast<std::size_t>(s.rows));
    auto * const p = factors.data();
    Factors const across{p, p + columns, columns};
    Factors down{p + 2 * columns, p + 2 * columns + rows, rows};
    fillFactors(s.left - s.column, filter, across);
    fillFactors(s.top - s.row, filter, down);
    down.count = static_cast<std::size_t>(s.rows);
    for (std::size_t field = 0; field < fields.size(); ++field) {
        double const residual = fields[field].residuals[station];
        if (!std::isnan(residual))
            addBox(across, down, square_radius, residual, sumsOf(field),
                   static_cast<std::size_t>(s.top) % slots, static_cast<std::size_t>(s.left));
    }
}

bool AnalSweep::finishRow(std::span<AnalField> fields, int row, Finish finish)
{
    auto const columns = static_cast<std::size_t>(nx);
    auto const start = static_cast<std::size_t>(row) % slots * stride;
    bool has_changed = false;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        auto const [weights, values, counts] = sumsOf(field).first;
        SumRow const sum{weights + start, values + start, counts == nullptr ? nullptr : counts + start};
        auto * const grid = fields[field].grid + static_cast<std::size_t>(row) * columns;
        has_changed = finish(sum, columns, min_sta, grid) || has_changed;
        std::fill_n(sum.weights, stride, 0.0);
        std::fill_n(sum.values, stride, 0.0);
        if (counts != nullptr)
            std::fill_n(sum.counts, stride, 0.0);
    }
    return has_changed;
}

void AnalSweep::findResiduals(AnalField & field) const noexcept
{
    double total = 0;
    field.count = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        float const analysed = interpolate(field.grid, nx, ny, order[i].column, order[i].row);
        double const residual =
            isMissing(analysed) ? math::NONE : field.values[i] - static_cast<double>(analysed);
        field.residuals[i] = residual;
        if (!std::isnan(residual)) {
            total += residual * residual;
            ++field.count;
        }
    }
    field.rms = field.count > 0 ? std::sqrt(total / field.count) : 0;
}

} // namespace Yul::detail
