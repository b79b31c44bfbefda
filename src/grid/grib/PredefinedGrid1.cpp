// Grids that a message of edition 1 names by number.
#include "core/Format.h"
#include "grid/grib/Edition1.h"

namespace Yul::detail::grib {
namespace {

constexpr double RADIUS = 6371200.0; // of the sphere on which NCEP's grids are laid
constexpr unsigned NORTHWARD = 0x40; // scanning modes
constexpr unsigned SOUTHWARD = 0x00;

/// A grid by its first point; degrees, metres at the latitude of true scale.
struct PredefinedGrid
{
    int id;
    GridKind kind;
    int nx;
    int ny;
    unsigned scan_flags;
    double lat1;
    double lon1;
    double step; ///< in both directions
    double ref_lon;
    double true_lat;
};

// clang-format off
constexpr PredefinedGrid GRIDS[] = {
    {1,   GridKind::MERCATOR, 73,  23,  NORTHWARD, -48.090, 0,        513669,    0,    22.5},
    {2,   GridKind::LATLON,   144, 73,  SOUTHWARD, 90,      0,        2.5,       0,    0   },
    {3,   GridKind::LATLON,   360, 181, SOUTHWARD, 90,      0,        1,         0,    0   },
    {4,   GridKind::LATLON,   720, 361, SOUTHWARD, 90,      0,        0.5,       0,    0   },
    {5,   GridKind::POLAR,    53,  57,  NORTHWARD, 7.647,   -133.443, 190500,    -105, 60  },
    {6,   GridKind::POLAR,    53,  45,  NORTHWARD, 7.647,   -133.443, 190500,    -105, 60  },
    {201, GridKind::POLAR,    65,  65,  NORTHWARD, -20.826, -150,     381000,    -105, 60  },
    {202, GridKind::POLAR,    65,  43,  NORTHWARD, 7.838,   -141.028, 190500,    -105, 60  },
    {203, GridKind::POLAR,    45,  39,  NORTHWARD, 19.132,  -185.837, 190500,    -150, 60  },
    {204, GridKind::MERCATOR, 93,  68,  NORTHWARD, -25,     110,      160000,    0,    20  },
    {205, GridKind::POLAR,    45,  39,  NORTHWARD, 0.616,   -84.904,  190500,    -60,  60  },
    {206, GridKind::LAMBERT,  51,  41,  NORTHWARD, 22.289,  -117.991, 81270.5,   -95,  25  },
    {207, GridKind::POLAR,    49,  35,  NORTHWARD, 42.085,  -175.641, 95250,     -150, 60  },
    {208, GridKind::MERCATOR, 29,  27,  NORTHWARD, 9.343,   -167.315, 80000,     0,    20  },
    {209, GridKind::LAMBERT,  101, 81,  NORTHWARD, 22.289,  -117.991, 40635.25,  -95,  25  },
    {210, GridKind::MERCATOR, 25,  25,  NORTHWARD, 9.000,   -77.000,  80000,     0,    20  },
    {211, GridKind::LAMBERT,  93,  65,  NORTHWARD, 12.190,  -133.459, 81270.5,   -95,  25  },
    {212, GridKind::LAMBERT,  185, 129, NORTHWARD, 12.190,  -133.459, 40635.25,  -95,  25  },
    {213, GridKind::POLAR,    129, 85,  NORTHWARD, 7.838,   -141.028, 95250,     -105, 60  },
    {214, GridKind::POLAR,    97,  69,  NORTHWARD, 42.085,  -175.641, 47625,     -150, 60  },
    {215, GridKind::LAMBERT,  369, 257, NORTHWARD, 12.190,  -133.459, 20317.625, -95,  25  },
};

// clang-format on

constexpr bool isThinned(int id) noexcept
{
    return id >= 37 && id <= 44;
}

constexpr bool hasPoleValue(int id) noexcept
{
    return (id >= 21 && id <= 26) || (id >= 61 && id <= 64);
}

} // namespace

std::string predefinedGrid(int grid_id, Geometry & geometry)
{
    geometry = {};
    for (auto const & row : GRIDS) {
        if (row.id != grid_id)
            continue;
        geometry.kind = row.kind;
        geometry.nx = row.nx;
        geometry.ny = row.ny;
        geometry.scan_flags = row.scan_flags;
        geometry.lat1 = row.lat1;
        geometry.lon1 = row.lon1;
        geometry.dx = geometry.dy = row.step;
        geometry.lat2 = row.lat1 - (row.ny - 1) * row.step; // where they count: lat/lon grids
        geometry.lon2 = row.lon1 + (row.nx - 1) * row.step;
        geometry.ref_lon = row.ref_lon;
        geometry.true_lat1 = geometry.true_lat2 = row.true_lat;
        geometry.major_m = geometry.minor_m = RADIUS;
        return {};
    }
    if (isThinned(grid_id))
        return format("predefined grid %d (rows of different lengths)", grid_id);
    if (hasPoleValue(grid_id))
        return format("predefined grid %d (one value for the pole)", grid_id);
    return format("predefined grid %d", grid_id);
}

} // namespace Yul::detail::grib
