// Positions on a grid.
#pragma once

#include "core/Const.h"
#include "geo/List.h"

namespace Yul {

/// A position on a grid: fractional column (0 is the west edge) and row (0 is the north edge). Both
/// coordinates start as Const::MISS.
class GridPoint
{
public:
    GridPoint() = default;

    /// Fractional column and row, row 0 in the north; Const::MISS for missing.
    GridPoint(float x_value, float y_value) : x(x_value), y(y_value) {}

    /// Takes both as they stand. Returns 1.
    int set(float x_value, float y_value)
    {
        x = x_value;
        y = y_value;
        return 1;
    }

    /// The column, 0 in the west.
    [[nodiscard]] float getX() const noexcept { return x; }

    /// The row, 0 in the north.
    [[nodiscard]] float getY() const noexcept { return y; }

    /// True when neither coordinate is missing.
    [[nodiscard]] bool isSet() const noexcept { return !detail::isMissing(x) && !detail::isMissing(y); }

    float x = Const::MISS; ///< column, 0 in the west
    float y = Const::MISS; ///< row, 0 in the north
};

class GridPoints : public detail::List<GridPoint>
{
};

} // namespace Yul
