// Cuts a field into bands of values.
#pragma once

#include "plot/BandOutline.h"
#include "plot/CellSweep.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Yul::detail {

/// How four crossings of a level are joined. As the contour lines are: then the areas above two levels may
/// overlap crosswise in a saddle. By the mean of the corners: then the area above a level holds that above
/// every higher one, as bands need that end at a level above them.
enum class SaddleRule { AS_LINES, NESTED };

/// Cuts a field into bands of values. Outlines meet the sides of cells where the contours do.
class BandTracer
{
public:
    /// field   the values; only the cells of the view count
    /// levels  ascending
    /// usable  for each cell of the view, row by row, 1 when it has a place, else 0; cells with a missing
    ///         corner are left out anyway
    BandTracer(FieldView const & field,
               std::span<float const> levels,
               SaddleRule rule,
               std::vector<std::uint8_t> const & usable);

    /// Outlines of where values are at least level `low` and, with a `high` that is a level too, below that
    /// one (-1: no upper limit; others take SaddleRule::NESTED). Each is one line, also round an area with
    /// holes: these are tied to the outer line by cuts inside the band.
    [[nodiscard]] std::vector<BandOutline> trace(int low, int high) const;

private:
    using Key = std::uint64_t;

    /// A piece of an outline, the band to its left when y points up.
    struct Piece
    {
        Key from;
        Key to;
    };

    /// A side that only one cell has, from its first to its second point in the sense of that cell.
    struct Edge
    {
        int column;
        int row;
        int side;
    };

    /// Place of a cell in the list of those that are usable; also for cells just outside the view.
    [[nodiscard]] std::size_t cellIndex(int column, int row) const
    {
        return static_cast<std::size_t>(row - field.first_row + 1) * stride() +
               static_cast<std::size_t>(column - field.first_column + 1);
    }

    [[nodiscard]] std::size_t stride() const
    {
        return static_cast<std::size_t>(field.end_column - field.first_column) + 2;
    }

    [[nodiscard]] float value(int column, int row) const
    {
        return field.values[static_cast<std::size_t>(row) * static_cast<std::size_t>(field.nx) +
                            static_cast<std::size_t>(column)];
    }

    void markUsable(std::vector<std::uint8_t> const & cells);
    void collectPieces();
    void collectEdges();
    void addPieces(int column, int row, int level);
    void addEdge(Edge const & edge, int low, int high, std::vector<Piece> & found) const;
    [[nodiscard]] BandNode nodeOf(Key key, int low, int high) const;

    FieldView field;
    std::vector<float> levels;
    SaddleRule saddle_rule;
    std::vector<std::uint8_t> usable;       // with a border of cells that are not
    std::vector<std::vector<Piece>> pieces; // by level
    std::vector<Edge> edges;
};

} // namespace Yul::detail
