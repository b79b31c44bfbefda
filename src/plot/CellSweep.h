// Contour segments of a whole field, cell by cell.
#pragma once

#include "plot/CellKernel.h"
#include "plot/LevelIndex.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace Yul::detail {

/// A field of values in storage order and the cells of it that are visited: columns first_column to
/// end_column - 1, likewise rows; a cell is named by its upper left point.
struct FieldView
{
    float const * values = nullptr;
    int nx = 0;
    int ny = 0;
    int first_column = 0;
    int end_column = 0;
    int first_row = 0;
    int end_row = 0;
};

/// Where the corners of a cell lie in the plane.
struct CellPlaces
{
    std::array<float, 4> x;
    std::array<float, 4> y;
};

/// Places that depend on the column and the row alone: the field's own plane.
class ColumnRowPlaces
{
public:
    ColumnRowPlaces(std::span<float const> column_x, std::span<float const> row_y) : x(column_x), y(row_y) {}

    bool operator()(int column, int row, CellPlaces & places) const
    {
        auto const i = static_cast<std::size_t>(column);
        auto const j = static_cast<std::size_t>(row);
        places = {{x[i], x[i + 1], x[i], x[i + 1]}, {y[j], y[j], y[j + 1], y[j + 1]}};
        return true;
    }

private:
    std::span<float const> x;
    std::span<float const> y;
};

/// The two ends of a contour in a cell, with the sides that they lie on (-1 when the whole line is a side).
struct CellLine
{
    float x1;
    float y1;
    float x2;
    float y2;
    int side1;
    int side2;
};

/// Draws the contours of a cell: sink(CellLine).
template <class Sink> void drawCell(CellCrossings const & crossings, CellPlaces const & places, Sink && sink)
{
    std::array<std::size_t, 4> crossed{};
    std::size_t n = 0;
    for (std::size_t i = 0; i < CELL_SIDES.size(); ++i) {
        if (crossings.isCrossed(i))
            crossed[n++] = i;
        if (crossings.side[i] == FLAT_ON_LEVEL) {
            auto const [start, end, tested] = CELL_SIDES[i];
            sink(CellLine{places.x[start], places.y[start], places.x[end], places.y[end], -1, -1});
        }
    }
    auto const join = [&](std::size_t a, std::size_t b) {
        auto const [start_a, end_a, tested_a] = CELL_SIDES[a];
        auto const [start_b, end_b, tested_b] = CELL_SIDES[b];
        sink(CellLine{alongSide(places.x[start_a], places.x[end_a], crossings.side[a]),
                      alongSide(places.y[start_a], places.y[end_a], crossings.side[a]),
                      alongSide(places.x[start_b], places.x[end_b], crossings.side[b]),
                      alongSide(places.y[start_b], places.y[end_b], crossings.side[b]), static_cast<int>(a),
                      static_cast<int>(b)});
    };
    if (crossings.count == 2) {
        join(crossed[0], crossed[1]);
    } else if (crossings.count == 4) {
        bool const neighbours = crossings.joinsNeighbours();
        join(crossed[0], crossed[neighbours ? 1 : 3]);
        join(crossed[neighbours ? 2 : 1], crossed[neighbours ? 3 : 2]);
    }
}

/// The two sides that a level crosses, by which corners lie below it (bit i for corner i).
struct CrossedPair
{
    int first = 0; ///< sides in their order; both the same where there are not two
    int second = 0;

    [[nodiscard]] constexpr bool isPair() const { return first != second; }
};

constexpr std::array<CrossedPair, 16> crossedPairs()
{
    std::array<CrossedPair, 16> pairs;
    for (unsigned below = 0; below < pairs.size(); ++below) {
        std::array<int, 4> crossed{};
        std::size_t n = 0;
        for (std::size_t i = 0; i < CELL_SIDES.size(); ++i)
            if ((below >> CELL_SIDES[i].start & 1U) != (below >> CELL_SIDES[i].end & 1U))
                crossed[n++] = static_cast<int>(i);
        if (n == 2)
            pairs[below] = {crossed[0], crossed[1]};
    }
    return pairs;
}

constexpr std::array<CrossedPair, 16> CROSSED_PAIRS = crossedPairs();

/// Draws a level that crosses two sides and keeps clear of every corner, which is nearly always so, in a
/// fraction of the steps. False when it does not, or when a corner comes so close that only `crossCell`
/// decides.
template <class Sink>
bool drawClearCell(CellCorners const & cell, CellPlaces const & places, float level, Sink && sink)
{
    // At this distance the fraction of a side that is not crossed cannot be rounded to 0 or 1.
    constexpr float CLEAR = 0x1p-21F;
    auto const & c = cell.value;
    float const range = cell.max - cell.min;
    float const nearest = std::min(std::min(std::abs(c[0] - level), std::abs(c[1] - level)),
                                   std::min(std::abs(c[2] - level), std::abs(c[3] - level)));
    if (!(nearest > range * CLEAR && range > 1e-30F && range < 1e30F))
        return false;
    unsigned const below = (c[0] < level ? 1U : 0U) | (c[1] < level ? 2U : 0U) | (c[2] < level ? 4U : 0U) |
                           (c[3] < level ? 8U : 0U);
    CrossedPair const pair = CROSSED_PAIRS[below];
    if (!pair.isPair())
        return false;
    CellSide const a = CELL_SIDES[static_cast<std::size_t>(pair.first)];
    CellSide const b = CELL_SIDES[static_cast<std::size_t>(pair.second)];
    float const ta = (level - c[a.start]) / (c[a.end] - c[a.start]);
    float const tb = (level - c[b.start]) / (c[b.end] - c[b.start]);
    sink(CellLine{alongSide(places.x[a.start], places.x[a.end], ta),
                  alongSide(places.y[a.start], places.y[a.end], ta),
                  alongSide(places.x[b.start], places.x[b.end], tb),
                  alongSide(places.y[b.start], places.y[b.end], tb), pair.first, pair.second});
    return true;
}

/// Draws all levels in one cell, in their order: sink(level index, CellLine).
template <class Sink>
void drawLevels(CellCorners & cell,
                CellPlaces const & places,
                std::span<float const> levels,
                LevelIndex::Span visited,
                float tweak,
                Sink && sink)
{
    bool is_moved = false; // a corner that was moved off a level stays moved for the levels above
    for (int k = visited.first; k < visited.end; ++k) {
        float const level = levels[static_cast<std::size_t>(k)];
        auto const draw = [&](CellLine const & line) { sink(k, line); };
        if (level < cell.min || level > cell.max)
            continue;
        if (!is_moved && drawClearCell(cell, places, level, draw))
            continue;
        is_moved = true;
        drawCell(crossCell(cell, tweak, level), places, draw);
    }
}

/// Finds the cells of a row that some level may cross: those whose corners are not all in one class between
/// the levels.
class ActiveCells
{
public:
    ActiveCells(FieldView const & view, LevelIndex const & level_index) : field(view), index(level_index)
    {
        std::size_t const n = padded(static_cast<std::size_t>(field.end_column - field.first_column) + 1);
        upper.assign(n, 0);
        lower.assign(n, 0);
        flags.assign(n, 0);
        if (field.first_row < field.end_row)
            classify(field.first_row, lower);
    }

    /// Calls visit(column) for the active cells of the row; rows must be visited one after the other.
    template <class Visit> void visitRow(int row, Visit && visit)
    {
        std::swap(upper, lower);
        classify(row + 1, lower);
        auto const cells = static_cast<std::size_t>(field.end_column - field.first_column);
        for (std::size_t block = 0; block < cells; block += BLOCK) {
            findActive(upper.data() + block, lower.data() + block, flags.data());
            for (std::size_t word = 0; word < BLOCK; word += sizeof(std::uint64_t)) {
                std::uint64_t bits = 0;
                std::memcpy(&bits, flags.data() + word, sizeof bits);
                visitWord(bits, block + word, cells, visit);
            }
        }
    }

private:
    static constexpr std::size_t BLOCK = 32;

    static std::size_t padded(std::size_t n) { return n + 2 * BLOCK; }

    void classify(int row, std::vector<LevelIndex::Class> & classes) const
    {
        std::size_t const start = static_cast<std::size_t>(row) * static_cast<std::size_t>(field.nx) +
                                  static_cast<std::size_t>(field.first_column);
        auto const points = static_cast<std::size_t>(field.end_column - field.first_column) + 1;
        index.classify({field.values + start, points}, classes.data());
    }

    static void findActive(LevelIndex::Class const * a, LevelIndex::Class const * b, std::uint8_t * active)
    {
        std::array<std::uint8_t, BLOCK> found;
        for (std::size_t i = 0; i < BLOCK; ++i) {
            int const differ = (a[i] ^ a[i + 1]) | (a[i] ^ b[i]) | (a[i] ^ b[i + 1]) | (a[i] & 1);
            found[i] = differ != 0 ? 1 : 0;
        }
        std::memcpy(active, found.data(), BLOCK);
    }

    template <class Visit>
    void visitWord(std::uint64_t bits, std::size_t start, std::size_t cells, Visit && visit) const
    {
        while (bits != 0) {
            int const zeros =
                std::endian::native == std::endian::little ? std::countr_zero(bits) : std::countl_zero(bits);
            std::size_t const at = start + static_cast<std::size_t>(zeros) / 8;
            if (at >= cells)
                return;
            visit(field.first_column + static_cast<int>(at));
            std::uint64_t const octet = std::endian::native == std::endian::little
                                            ? std::uint64_t{0xFF} << (zeros / 8 * 8)
                                            : ~std::uint64_t{0} << 56 >> (zeros / 8 * 8);
            bits &= ~octet;
        }
    }

    FieldView field;
    LevelIndex const & index;
    std::vector<LevelIndex::Class> upper;
    std::vector<LevelIndex::Class> lower;
    std::vector<std::uint8_t> flags;
};

/// Draws the contours of every cell of a field, row by row, in each cell level by level.
/// places(column, row, CellPlaces &) gives a cell's place, false to leave the cell out;
/// sink(column, row, level index, CellLine) receives each line.
template <class Places, class Sink>
void sweepCells(
    FieldView const & field, std::span<float const> levels, float tweak, Places const & places, Sink && sink)
{
    LevelIndex const index(levels);
    ActiveCells active(field, index);
    for (int row = field.first_row; row < field.end_row; ++row) {
        float const * const upper =
            field.values + static_cast<std::size_t>(row) * static_cast<std::size_t>(field.nx);
        float const * const lower = upper + field.nx;
        active.visitRow(row, [&](int column) {
            CellCorners cell;
            CellPlaces place;
            cell.set(upper[column], upper[column + 1], lower[column], lower[column + 1]);
            if (!cell.is_complete || !places(column, row, place))
                return;
            drawLevels(cell, place, levels, index.span(cell.min, cell.max), tweak,
                       [&](int k, CellLine const & l) { sink(column, row, k, l); });
        });
    }
}

} // namespace Yul::detail
