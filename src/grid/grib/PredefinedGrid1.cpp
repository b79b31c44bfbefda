// Grids that a message of edition 1 names by number.
#include "core/Format.h"
#include "grid/grib/Edition1.h"

namespace Yul::detail::grib {

std::string predefinedGrid(int grid_id, Geometry & geometry)
{
    geometry = {};
    return format("predefined grid %d", grid_id);
}

} // namespace Yul::detail::grib
