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
/// values  as many as the grid has points.
/// return  empty, else what is wrong; the values are undefined then.
[[nodiscard]] std::string
unpackValues(Field const & field, Octets bitmap, Octets data, std::span<float> values);

} // namespace Yul::detail::grib
