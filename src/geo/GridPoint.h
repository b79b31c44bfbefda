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

    GridPoint(float x_value, float y_value) : x(x_value), y(y_value) {}

    int set(float x_value, float y_value)
    {
        x = x_value;
        y = y_value;
        return 1;
    }

    [[nodiscard]] float getX() const noexcept { return x; }

    [[nodiscard]] float getY() const noexcept { return y; }

    /// True when neither coordinate is missing.
    [[nodiscard]] bool isSet() const noexcept { return !detail::isMissing(x) && !detail::isMissing(y); }

    float x = Const::MISS;
    float y = Const::MISS;
};

class GridPoints : public detail::List<GridPoint>
{
};

} // namespace Yul
