// From the grid definition of a message to a domain.
#pragma once

#include "geo/DomainVal.h"
#include "grid/grib/Field.h"

#include <string>

namespace Yul::detail::grib {

/// The domain on which the points of a grid definition lie where the message puts them on its own earth:
/// spacings of projected grids are carried over to the library's sphere, so that every corner keeps its
/// latitude and longitude. On an ellipsoid only the Mercator projection and the view from space are exact;
/// others are laid on the sphere of the major axis. Rows of a Gaussian grid are set equally apart between the
/// first and the last. Empty, or why there is no such domain.
[[nodiscard]] std::string makeDomain(Geometry const & geometry, DomainVal & domain);

} // namespace Yul::detail::grib
