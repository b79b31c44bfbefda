#include "plot/BandTracer.h"

#include "plot/BandRings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Yul::detail {
namespace {

using Key = std::uint64_t;

/// A side of a cell as it is met going round the cell counterclockwise: the corner that comes first and the
/// one that comes next, and the grid side that it is, relative to the cell.
struct RoundSide
{
    unsigned first;
    unsigned next;
    int column;
    int row;
    BandNode::Kind kind;
};

/// By the number of the side, see CELL_SIDES.
constexpr std::array<RoundSide, 4> ROUND_SIDES = {{
    {1, 0, 0, 0, BandNode::HORIZONTAL},
    {3, 1, 1, 0, BandNode::VERTICAL},
    {2, 3, 0, 1, BandNode::HORIZONTAL},
    {0, 2, 0, 0, BandNode::VERTICAL},
}};

/// Where a corner of a cell lies, relative to the cell.
constexpr std::array<std::array<int, 2>, 4> CORNERS = {{{0, 0}, {1, 0}, {0, 1}, {1, 1}}};

enum Limit : Key { LOW = 0, HIGH = 1 };

constexpr Key KIND_BITS = 3; // kind and limit

Key keyOf(FieldView const & field, int column, int row, BandNode::Kind kind, Limit limit)
{
    Key const point = static_cast<Key>(row) * static_cast<Key>(field.nx) + static_cast<Key>(column);
    return point << KIND_BITS | static_cast<Key>(kind) << 1U | limit;
}

Key sideKey(FieldView const & field, int column, int row, int side, Limit limit)
{
    RoundSide const & s = ROUND_SIDES[static_cast<std::size_t>(side)];
    return keyOf(field, column + s.column, row + s.row, s.kind, limit);
}

} // namespace

BandTracer::BandTracer(FieldView const & view,
                       std::span<float const> level_values,
                       SaddleRule rule,
                       std::vector<std::uint8_t> const & cells)
    : field(view), levels(level_values.begin(), level_values.end()), saddle_rule(rule), pieces(levels.size())
{
    markUsable(cells);
    collectPieces();
    collectEdges();
}

void BandTracer::markUsable(std::vector<std::uint8_t> const & cells)
{
    auto const columns = static_cast<std::size_t>(field.end_column - field.first_column);
    auto const rows = static_cast<std::size_t>(field.end_row - field.first_row);
    usable.assign(stride() * (rows + 2), 0);
    auto const look = [&](std::size_t row, std::vector<std::uint8_t> & is_there) {
        for (std::size_t i = 0; i <= columns; ++i) {
            float const v =
                value(field.first_column + static_cast<int>(i), field.first_row + static_cast<int>(row));
            is_there[i] = std::isfinite(v) && !isMissing(v) ? 1 : 0;
        }
    };
    std::vector<std::uint8_t> upper(columns + 1);
    std::vector<std::uint8_t> lower(columns + 1);
    if (rows > 0)
        look(0, lower);
    for (std::size_t row = 0; row < rows; ++row) {
        std::swap(upper, lower);
        look(row + 1, lower);
        std::uint8_t const * const given = cells.data() + row * columns;
        std::uint8_t * const out = usable.data() + (row + 1) * stride() + 1;
        for (std::size_t i = 0; i < columns; ++i)
            out[i] = given[i] & upper[i] & upper[i + 1] & lower[i] & lower[i + 1];
    }
}

void BandTracer::collectPieces()
{
    LevelIndex const index(levels);
    ActiveCells active(field, index);
    for (int row = field.first_row; row < field.end_row; ++row) {
        active.visitRow(row, [&](int column) {
            if (usable[cellIndex(column, row)] == 0)
                return;
            auto const [low, high] = std::minmax({value(column, row), value(column + 1, row),
                                                  value(column, row + 1), value(column + 1, row + 1)});
            auto const span = index.span(low, high);
            for (int level = span.first; level < span.end; ++level)
                addPieces(column, row, level);
        });
    }
}

/// The contour of a level in a cell, from where the way round the cell leaves the values above it to where it
/// comes back to them.
void BandTracer::addPieces(int column, int row, int level)
{
    float const limit = levels[static_cast<std::size_t>(level)];
    std::array<float, 4> corner{};
    for (std::size_t i = 0; i < corner.size(); ++i)
        corner[i] = value(column + CORNERS[i][0], row + CORNERS[i][1]);
    std::array<std::size_t, 4> crossed{};
    std::size_t n = 0;
    CellCrossings crossings;
    for (std::size_t i = 0; i < CELL_SIDES.size(); ++i) {
        float const start = corner[CELL_SIDES[i].start];
        float const end = corner[CELL_SIDES[i].end];
        crossings.side[i] = (limit - start) / (end - start);
        if ((start >= limit) != (end >= limit))
            crossed[n++] = i;
    }
    auto const join = [&](std::size_t a, std::size_t b) {
        auto const leaves = [&](std::size_t side) { return corner[ROUND_SIDES[side].first] >= limit; };
        if (!leaves(a))
            std::swap(a, b);
        pieces[static_cast<std::size_t>(level)].push_back(
            {sideKey(field, column, row, static_cast<int>(a), LOW),
             sideKey(field, column, row, static_cast<int>(b), LOW)});
    };
    if (n == 2) {
        join(crossed[0], crossed[1]);
    } else if (n == 4) {
        crossings.saddle =
            crossings.side[2] + crossings.side[3] + (2.F - crossings.side[0] - crossings.side[1]);
        bool const is_mean_above = (corner[0] / 4 + corner[1] / 4) + (corner[2] / 4 + corner[3] / 4) >= limit;
        bool const neighbours = saddle_rule == SaddleRule::AS_LINES ? crossings.joinsNeighbours()
                                                                    : (corner[0] >= limit) == is_mean_above;
        join(0, neighbours ? 1 : 3);
        join(neighbours ? 2 : 1, neighbours ? 3 : 2);
    }
}

void BandTracer::collectEdges()
{
    for (int row = field.first_row; row < field.end_row; ++row) {
        for (int column = field.first_column; column < field.end_column; ++column) {
            std::uint8_t const * const cell = usable.data() + cellIndex(column, row);
            std::array<std::uint8_t, 4> const beyond = {cell[-static_cast<std::ptrdiff_t>(stride())], cell[1],
                                                        cell[stride()], cell[-1]};
            if (*cell == 0 || (beyond[0] & beyond[1] & beyond[2] & beyond[3]) != 0)
                continue;
            for (int side = 0; side < 4; ++side)
                if (beyond[static_cast<std::size_t>(side)] == 0)
                    edges.push_back({column, row, side});
        }
    }
}

/// The parts of a side that lie in the band.
void BandTracer::addEdge(Edge const & edge, int low, int high, std::vector<Piece> & found) const
{
    RoundSide const & side = ROUND_SIDES[static_cast<std::size_t>(edge.side)];
    auto const & first = CORNERS[side.first];
    auto const & next = CORNERS[side.next];
    float const a = value(edge.column + first[0], edge.row + first[1]);
    float const b = value(edge.column + next[0], edge.row + next[1]);
    float const bottom = levels[static_cast<std::size_t>(low)];
    bool const has_top = high >= 0;
    float const top = has_top ? levels[static_cast<std::size_t>(high)] : 0;
    auto const isIn = [&](float v) { return v >= bottom && !(has_top && v >= top); };

    Key from = keyOf(field, edge.column + first[0], edge.row + first[1], BandNode::POINT, LOW);
    bool is_in = isIn(a);
    auto const cross = [&](Limit limit, bool is_crossed) {
        if (!is_crossed)
            return;
        Key const key = sideKey(field, edge.column, edge.row, edge.side, limit);
        if (is_in)
            found.push_back({from, key});
        from = key;
        is_in = !is_in;
    };
    bool const crosses_low = (a >= bottom) != (b >= bottom);
    bool const crosses_high = has_top && (a >= top) != (b >= top);
    if (a < b) {
        cross(LOW, crosses_low);
        cross(HIGH, crosses_high);
    } else {
        cross(HIGH, crosses_high);
        cross(LOW, crosses_low);
    }
    if (is_in)
        found.push_back(
            {from, keyOf(field, edge.column + next[0], edge.row + next[1], BandNode::POINT, LOW)});
}

BandNode BandTracer::nodeOf(Key key, int low, int high) const
{
    auto const point = static_cast<std::size_t>(key >> KIND_BITS);
    auto const kind = static_cast<BandNode::Kind>(key >> 1U & 3U);
    BandNode node{static_cast<int>(point % static_cast<std::size_t>(field.nx)),
                  static_cast<int>(point / static_cast<std::size_t>(field.nx)), kind, 0};
    if (kind == BandNode::POINT)
        return node;
    int const level = (key & 1U) == HIGH ? high : low;
    bool const is_across = kind == BandNode::HORIZONTAL;
    float const start = value(node.column, node.row + (is_across ? 0 : 1));
    float const end = value(node.column + (is_across ? 1 : 0), node.row);
    float const t = (levels[static_cast<std::size_t>(level)] - start) / (end - start);
    node.t = t > 0 ? std::min(t, 1.F) : 0;
    return node;
}

std::vector<BandOutline> BandTracer::trace(int low, int high) const
{
    auto const count = static_cast<int>(levels.size());
    if (low < 0 || low >= count || high >= count)
        return {};
    std::vector<Piece> band = pieces[static_cast<std::size_t>(low)];
    if (high >= 0)
        for (auto const & [from, to] : pieces[static_cast<std::size_t>(high)])
            band.push_back({to | HIGH, from | HIGH});
    for (Edge const & edge : edges)
        addEdge(edge, low, high, band);
    std::sort(band.begin(), band.end(), [](Piece const & a, Piece const & b) { return a.from < b.from; });

    // At every node as many pieces end as begin: a walk comes back to where it started.
    BandRings rings;
    std::vector<bool> is_used(band.size());
    for (std::size_t start = 0; start < band.size(); ++start) {
        if (is_used[start])
            continue;
        BandOutline ring;
        std::size_t at = start;
        while (at < band.size() && !is_used[at]) {
            is_used[at] = true;
            ring.push_back(nodeOf(band[at].from, low, high));
            Key const to = band[at].to;
            if (to == band[start].from)
                break;
            auto const next = std::lower_bound(band.begin(), band.end(), to,
                                               [](Piece const & p, Key key) { return p.from < key; });
            at = static_cast<std::size_t>(next - band.begin());
            while (at < band.size() && band[at].from == to && is_used[at])
                ++at;
        }
        rings.add(std::move(ring));
    }
    return rings.tie();
}

} // namespace Yul::detail
