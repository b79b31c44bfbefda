// Lists of grids.
#pragma once

#include "geo/List.h"
#include "grid/Grid.h"

namespace Yul {

/// A list of grids, each a copy of its own. A reference to a grid of the list is valid until the next `add`,
/// `setNum` or `clear`.
class Grids : public detail::List<Grid>
{
public:
    /// The longest list that `setNum` makes.
    static constexpr int MAX_GRIDS = 1000000;

    /// Makes the list `num` grids long: new ones are empty, those behind are dropped. 0 for a number below 0
    /// or above MAX_GRIDS, and when memory is short.
    int setNum(int num);

    /// The first grid that the grid spec matches, or -1.
    [[nodiscard]] int find(GridSpec const & spec) const;

    /// Lists every grid's fields.
    int print() const;
};

} // namespace Yul
