// Highs and lows of a field.
#pragma once

#include "plot/CellSweep.h"

#include <vector>

namespace Yul::detail {

struct Extremum
{
    int column;
    int row;
    float value;
    bool is_high;
    float prominence; ///< how far it stands out of the mean around it
};

/// The highs and lows of a field: values beyond all others within at least `reach` points, that stand out of
/// the mean of their surroundings by at least `prominence` and do not lie on the field's edge. The most
/// prominent come first. Missing values and infinite ones do not count.
[[nodiscard]] std::vector<Extremum> findExtrema(FieldView const & field, int reach, float prominence);

} // namespace Yul::detail
