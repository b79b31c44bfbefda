// The sections of edition 1.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <string>

namespace Yul::detail::grib {

// Each takes one whole section, its three octets of length included, and fills its part of the field. The
// text that is returned says why the field cannot be delivered; empty: it can. Source: WMO Manual on Codes
// 306, volume I.2, FM 92-XIII GRIB, sections 1, 2 and 4.

/// What the product definition says about the sections that follow.
struct Presence
{
    bool has_grid = false;
    bool has_bitmap = false;
    int grid_id = 255; ///< predefined grid, 255 where the message defines its own
    int decimal = 0;   ///< D of the decimal scale
};

/// Section 1, product definition: parameter, level, times, decimal scale.
[[nodiscard]] std::string readPDB(Section section, Product & product, Presence & presence);
/// Section 2, grid description.
[[nodiscard]] std::string readGDB(Section section, Geometry & geometry);
/// A grid that the message names by number instead of describing it.
/// Source: NCEP Office Note 388, table B.
[[nodiscard]] std::string predefinedGrid(int grid_id, Geometry & geometry);
/// Section 4, the head of the binary data. `decimal` is D of the product definition.
[[nodiscard]] std::string readBDB(Section section, int decimal, Packing & packing);

} // namespace Yul::detail::grib
