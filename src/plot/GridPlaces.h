// Where the points of a grid lie in the plane of a plot.
#pragma once

#include "geo/Domain.h"
#include "geo/Rect.h"
#include "plot/CellSweep.h"

#include <cstdint>
#include <vector>

namespace Yul::detail {

/// Every point has its own place: the grid's plane is not the plot's. All are projected at once.
class PointPlaces
{
public:
    PointPlaces() = default;

    /// False when a domain is not usable or memory is short.
    bool locate(Domain const & grid, Domain const & plane, Rect const & frame);

    /// False for a cell with a corner outside the projection, for one that its seam or a pole tears apart, and
    /// for one outside the frame.
    bool operator()(int column, int row, CellPlaces & places) const;

    /// False when the point has no place.
    bool find(int column, int row, float & px, float & py) const;

    /// Points inside the frame.
    [[nodiscard]] int getNumVisible() const noexcept { return visible; }

    /// True when a cell reaches into the frame.
    [[nodiscard]] bool isOnMap() const;

private:
    /// Longitude from the middle of the plane, 127 is half a turn.
    using Turn = std::int8_t;

    [[nodiscard]] std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(nx) +
               static_cast<std::size_t>(column);
    }

    int nx = 0;
    int ny = 0;
    Rect frame;
    std::vector<float> x;
    std::vector<float> y;
    std::vector<Turn> turns; // empty for a plane without a seam
    int visible = 0;
};

/// Places by column and row: the grid lies in the plot's own plane, perhaps turns away from it.
struct ColumnRowCoordinates
{
    std::vector<float> x; ///< of the columns
    std::vector<float> y; ///< of the rows

    /// The cells that reach into the frame.
    [[nodiscard]] FieldView view(float const * values, Rect const & frame) const;
};

/// The places of a grid whose columns and rows are straight in the plot's plane: one set, or one for each
/// turn of a latlon or Mercator plane that reaches into the frame. Empty when the planes differ or nothing does.
[[nodiscard]] std::vector<ColumnRowCoordinates>
columnRowCoordinates(Domain const & grid, Domain const & plane, Rect const & frame);

/// True when the grid's columns and rows are straight lines of the plot's plane.
[[nodiscard]] bool isSamePlane(Domain const & grid, Domain const & plane);

} // namespace Yul::detail
