// From a grid to the terms of edition 1, for writing.
#pragma once

#include "grid/Grid.h"
#include "grid/grib/Encode1.h"
#include "grid/grib/Field.h"

#include <string>

namespace Yul::detail::grib {

/// Product and geometry of a grid in the numbers of edition 1, the forecast time as a range. Spacings are carried over to
/// the earth of edition 1, so that corners keep their latitude and longitude. Empty, or why edition 1 has no words for it.
[[nodiscard]] std::string describe1(Grid const & grid, Field & field, Range1 & range);

} // namespace Yul::detail::grib
