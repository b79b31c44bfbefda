// The sections of edition 2.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <string>

namespace Yul::detail::grib {

// Each takes one whole section, its five octets of length and number included, and fills its part of the
// field. The text that is returned says why the field cannot be delivered; empty: it can. Source: WMO Manual
// on Codes 306, volume I.2, FM 92-XIV GRIB, sections 1, 3, 4, 5 and their templates.

/// Section 1, identification: centre, tables, reference time.
[[nodiscard]] std::string readIDS(Section section, Product & product);
/// Section 3, grid definition.
[[nodiscard]] std::string readGDS(Section section, Geometry & geometry);
/// Section 4, product definition. The reference time must be known already.
[[nodiscard]] std::string readPDS(Section section, Product & product);
/// Section 5, data representation.
[[nodiscard]] std::string readDRS(Section section, Packing & packing);

/// The name of a data representation template for debug messages; empty when it is not read.
[[nodiscard]] char const * packingName(int template_number) noexcept;

} // namespace Yul::detail::grib
