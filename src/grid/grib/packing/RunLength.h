// Run length packing with level values.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks data template 5.200: runs of levels, each level standing for a value of a table; level 0 is
/// missing. A number above the largest level is a digit of the run length of the level before, least
/// significant first, in the base that the numbers left over make. Empty, or what is wrong. Source: WMO
/// Manual on Codes 306, volume I.2, data template 7.200.
[[nodiscard]] std::string unpackRunLength(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
