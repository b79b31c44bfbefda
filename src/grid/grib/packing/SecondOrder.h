// Second-order packing of edition 1.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks groups of small numbers on top of first-order values: row by row (a group is a row), with one width for all
/// groups, or with a width each; without rows a secondary bitmap shows where groups begin. ECMWF's general extended form too,
/// in which groups have a length each and hold differences. Matrices of values at a point are refused.
/// data    the binary data section from octet 12 on.
/// return  empty, else what is wrong.
/// Source: WMO Manual on Codes 306, volume I.2, FM 92-XIII GRIB, section 4, notes on second-order packing; ECMWF's use of octet 14 and of
/// those behind it.
[[nodiscard]] std::string unpackSecondOrder(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
