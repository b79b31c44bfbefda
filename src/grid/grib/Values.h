// From a field's packed octets to its values.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Whether a field can be unpacked at all, judged by the sizes that its headers state: grid size, number of
/// values, octets of bitmap and data. To be asked before anything is allocated. Empty, or the reason.
[[nodiscard]] std::string checkField(Field const & field);

/// Unpacks the values in the message's order of points, missing ones -9999.
/// values  as many as the message holds points (Geometry::codedPoints).
/// return  empty, else what is wrong; the values are undefined then.
[[nodiscard]] std::string
unpackValues(Field const & field, Octets bitmap, Octets data, std::span<float> values);

/// Gives all points of a row at a pole the one value that the message holds for it.
/// values  on entry the values that the message holds, at the front; on return one a point of the grid.
void spreadPole(Geometry const & geometry, std::span<float> values) noexcept;

} // namespace Yul::detail::grib
