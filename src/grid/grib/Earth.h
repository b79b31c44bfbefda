// Shapes of the earth.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

namespace Yul::detail::grib {

/// The earth of edition 1: a sphere, or the spheroid of the IAU where the resolution flags say oblate.
void setEarth1(bool is_oblate, Geometry & geometry) noexcept;

/// The earth of edition 2: octets 15 to 30 of a grid definition. A producer's axis that is not given, or is
/// absurd, falls back to the sphere of 6371229 m. Source: WMO Manual on Codes 306, volume I.2, code
/// table 3.2.
void setEarth2(Section & section, Geometry & geometry) noexcept;

} // namespace Yul::detail::grib
