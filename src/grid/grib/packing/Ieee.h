// Values as IEEE floating-point numbers.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks data template 5.4: single or double precision, most significant octet first. NaN becomes missing.
/// Empty, or what is wrong. Source: WMO Manual on Codes 306, volume I.2, data template 7.4, code table 5.7.
[[nodiscard]] std::string unpackIeee(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
