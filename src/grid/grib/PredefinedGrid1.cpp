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
    double dx;
    double dy;
    double ref_lon;
    double true_lat;
    PoleRow pole_row;
};

// clang-format off
constexpr PredefinedGrid GRIDS[] = {
    {1,   GridKind::MERCATOR, 73,   23,   NORTHWARD, -48.09,  0,        513669,      513669,      0,    22.5, PoleRow::NONE},
    {2,   GridKind::LATLON,   144,  73,   SOUTHWARD, 90,      0,        2.5,         2.5,         0,    0,    PoleRow::NONE},
    {3,   GridKind::LATLON,   360,  181,  SOUTHWARD, 90,      0,        1,           1,           0,    0,    PoleRow::NONE},
    {4,   GridKind::LATLON,   720,  361,  SOUTHWARD, 90,      0,        0.5,         0.5,         0,    0,    PoleRow::NONE},
    {5,   GridKind::POLAR,    53,   57,   NORTHWARD, 7.647,   -133.443, 190500,      190500,      -105, 60,   PoleRow::NONE},
    {6,   GridKind::POLAR,    53,   45,   NORTHWARD, 7.647,   -133.443, 190500,      190500,      -105, 60,   PoleRow::NONE},
    {21,  GridKind::LATLON,   37,   37,   NORTHWARD, 0,       0,        5,           2.5,         0,    0,    PoleRow::LAST},
    {22,  GridKind::LATLON,   37,   37,   NORTHWARD, 0,       -180,     5,           2.5,         0,    0,    PoleRow::LAST},
    {23,  GridKind::LATLON,   37,   37,   NORTHWARD, -90,     0,        5,           2.5,         0,    0,    PoleRow::FIRST},
    {24,  GridKind::LATLON,   37,   37,   NORTHWARD, -90,     -180,     5,           2.5,         0,    0,    PoleRow::FIRST},
    {25,  GridKind::LATLON,   72,   19,   NORTHWARD, 0,       0,        5,           5,           0,    0,    PoleRow::LAST},
    {26,  GridKind::LATLON,   72,   19,   NORTHWARD, -90,     0,        5,           5,           0,    0,    PoleRow::FIRST},
    {27,  GridKind::POLAR,    65,   65,   NORTHWARD, -20.826, -125,     381000,      381000,      -80,  60,   PoleRow::NONE},
    {28,  GridKind::POLAR,    65,   65,   NORTHWARD, 20.826,  145,      381000,      381000,      -80,  -60,  PoleRow::NONE},
    {29,  GridKind::LATLON,   145,  37,   NORTHWARD, 0,       0,        2.5,         2.5,         0,    0,    PoleRow::NONE},
    {30,  GridKind::LATLON,   145,  37,   NORTHWARD, -90,     0,        2.5,         2.5,         0,    0,    PoleRow::NONE},
    {33,  GridKind::LATLON,   181,  46,   NORTHWARD, 0,       0,        2,           2,           0,    0,    PoleRow::NONE},
    {34,  GridKind::LATLON,   181,  46,   NORTHWARD, -90,     0,        2,           2,           0,    0,    PoleRow::NONE},
    {45,  GridKind::LATLON,   288,  145,  SOUTHWARD, 90,      0,        1.25,        1.25,        0,    0,    PoleRow::NONE},
    {55,  GridKind::POLAR,    87,   71,   NORTHWARD, -10.947, -154.289, 254000,      254000,      -105, 60,   PoleRow::NONE},
    {56,  GridKind::POLAR,    87,   71,   NORTHWARD, 7.647,   -133.443, 127000,      127000,      -105, 60,   PoleRow::NONE},
    {61,  GridKind::LATLON,   91,   46,   NORTHWARD, 0,       0,        2,           2,           0,    0,    PoleRow::LAST},
    {62,  GridKind::LATLON,   91,   46,   NORTHWARD, 0,       -180,     2,           2,           0,    0,    PoleRow::LAST},
    {63,  GridKind::LATLON,   91,   46,   NORTHWARD, -90,     0,        2,           2,           0,    0,    PoleRow::FIRST},
    {64,  GridKind::LATLON,   91,   46,   NORTHWARD, -90,     -180,     2,           2,           0,    0,    PoleRow::FIRST},
    {85,  GridKind::LATLON,   360,  90,   NORTHWARD, 0.5,     0.5,      1,           1,           0,    0,    PoleRow::NONE},
    {86,  GridKind::LATLON,   360,  90,   NORTHWARD, -89.5,   0.5,      1,           1,           0,    0,    PoleRow::NONE},
    {87,  GridKind::POLAR,    81,   62,   NORTHWARD, 22.876,  -120.491, 68153,       68153,       -105, 60,   PoleRow::NONE},
    {100, GridKind::POLAR,    83,   83,   NORTHWARD, 17.108,  -129.296, 91452,       91452,       -105, 60,   PoleRow::NONE},
    {101, GridKind::POLAR,    113,  91,   NORTHWARD, 10.528,  -137.146, 91452,       91452,       -105, 60,   PoleRow::NONE},
    {103, GridKind::POLAR,    65,   56,   NORTHWARD, 22.405,  -121.352, 91452,       91452,       -105, 60,   PoleRow::NONE},
    {104, GridKind::POLAR,    147,  110,  NORTHWARD, -0.268,  -139.475, 90755,       90755,       -105, 60,   PoleRow::NONE},
    {105, GridKind::POLAR,    83,   83,   NORTHWARD, 17.529,  -129.296, 90755,       90755,       -105, 60,   PoleRow::NONE},
    {106, GridKind::POLAR,    165,  117,  NORTHWARD, 17.533,  -129.296, 45373,       45373,       -105, 60,   PoleRow::NONE},
    {107, GridKind::POLAR,    120,  92,   NORTHWARD, 23.438,  -120.168, 45373,       45373,       -105, 60,   PoleRow::NONE},
    {201, GridKind::POLAR,    65,   65,   NORTHWARD, -20.826, -150,     381000,      381000,      -105, 60,   PoleRow::NONE},
    {202, GridKind::POLAR,    65,   43,   NORTHWARD, 7.838,   -141.028, 190500,      190500,      -105, 60,   PoleRow::NONE},
    {203, GridKind::POLAR,    45,   39,   NORTHWARD, 19.132,  -185.837, 190500,      190500,      -150, 60,   PoleRow::NONE},
    {204, GridKind::MERCATOR, 93,   68,   NORTHWARD, -25,     110,      160000,      160000,      0,    20,   PoleRow::NONE},
    {205, GridKind::POLAR,    45,   39,   NORTHWARD, 0.616,   -84.904,  190500,      190500,      -60,  60,   PoleRow::NONE},
    {206, GridKind::LAMBERT,  51,   41,   NORTHWARD, 22.289,  -117.991, 81270.5,     81270.5,     -95,  25,   PoleRow::NONE},
    {207, GridKind::POLAR,    49,   35,   NORTHWARD, 42.085,  -175.641, 95250,       95250,       -150, 60,   PoleRow::NONE},
    {208, GridKind::MERCATOR, 29,   27,   NORTHWARD, 9.343,   -167.315, 80000,       80000,       0,    20,   PoleRow::NONE},
    {209, GridKind::LAMBERT,  275,  223,  NORTHWARD, -4.85,   -151.1,   44000,       44000,       -111, 45,   PoleRow::NONE},
    {210, GridKind::MERCATOR, 25,   25,   NORTHWARD, 9,       -77,      80000,       80000,       0,    20,   PoleRow::NONE},
    {211, GridKind::LAMBERT,  93,   65,   NORTHWARD, 12.19,   -133.459, 81270.5,     81270.5,     -95,  25,   PoleRow::NONE},
    {212, GridKind::LAMBERT,  185,  129,  NORTHWARD, 12.19,   -133.459, 40635.25,    40635.25,    -95,  25,   PoleRow::NONE},
    {213, GridKind::POLAR,    129,  85,   NORTHWARD, 7.838,   -141.028, 95250,       95250,       -105, 60,   PoleRow::NONE},
    {214, GridKind::POLAR,    97,   69,   NORTHWARD, 42.085,  -175.641, 47625,       47625,       -150, 60,   PoleRow::NONE},
    {215, GridKind::LAMBERT,  369,  257,  NORTHWARD, 12.19,   -133.459, 20317.625,   20317.625,   -95,  25,   PoleRow::NONE},
    {216, GridKind::POLAR,    139,  107,  NORTHWARD, 30,      -173,     45000,       45000,       -135, 60,   PoleRow::NONE},
    {217, GridKind::POLAR,    277,  213,  NORTHWARD, 30,      -173,     22500,       22500,       -135, 60,   PoleRow::NONE},
    {218, GridKind::LAMBERT,  614,  428,  NORTHWARD, 12.19,   -133.459, 12190.58,    12190.58,    -95,  25,   PoleRow::NONE},
    {219, GridKind::POLAR,    385,  465,  NORTHWARD, 25.032,  -119.56,  25400,       25400,       -80,  60,   PoleRow::NONE},
    {220, GridKind::POLAR,    345,  355,  NORTHWARD, -36.899, -220.194, 25400,       25400,       -80,  -60,  PoleRow::NONE},
    {221, GridKind::LAMBERT,  349,  277,  NORTHWARD, 1,       -145.5,   32463.41,    32463.41,    -107, 50,   PoleRow::NONE},
    {222, GridKind::LAMBERT,  138,  112,  NORTHWARD, -4.85,   -151.1,   88000,       88000,       -111, 45,   PoleRow::NONE},
    {223, GridKind::POLAR,    129,  129,  NORTHWARD, -20.826, -150,     190500,      190500,      -105, 60,   PoleRow::NONE},
    {224, GridKind::POLAR,    65,   65,   NORTHWARD, 20.826,  120,      381000,      381000,      -105, -60,  PoleRow::NONE},
    {225, GridKind::MERCATOR, 185,  135,  NORTHWARD, -25,     -250,     80000,       80000,       0,    20,   PoleRow::NONE},
    {226, GridKind::LAMBERT,  737,  513,  NORTHWARD, 12.19,   -133.459, 10158.8125,  10158.8125,  -95,  25,   PoleRow::NONE},
    {227, GridKind::LAMBERT,  1473, 1025, NORTHWARD, 12.19,   -133.459, 5079.40625,  5079.40625,  -95,  25,   PoleRow::NONE},
    {228, GridKind::LATLON,   144,  73,   SOUTHWARD, 90,      0,        2.5,         2.5,         0,    0,    PoleRow::NONE},
    {229, GridKind::LATLON,   360,  181,  SOUTHWARD, 90,      0,        1,           1,           0,    0,    PoleRow::NONE},
    {230, GridKind::LATLON,   720,  361,  SOUTHWARD, 90,      0,        0.5,         0.5,         0,    0,    PoleRow::NONE},
    {231, GridKind::LATLON,   720,  181,  NORTHWARD, 0,       0,        0.5,         0.5,         0,    0,    PoleRow::NONE},
    {232, GridKind::LATLON,   360,  91,   NORTHWARD, 0,       0,        1,           1,           0,    0,    PoleRow::NONE},
    {233, GridKind::LATLON,   288,  157,  SOUTHWARD, 78,      0,        1.25,        1,           0,    0,    PoleRow::NONE},
    {234, GridKind::LATLON,   133,  121,  SOUTHWARD, 15,      -98,      0.25,        0.25,        0,    0,    PoleRow::NONE},
    {235, GridKind::LATLON,   720,  360,  SOUTHWARD, 89.75,   0.25,     0.5,         0.5,         0,    0,    PoleRow::NONE},
    {236, GridKind::LAMBERT,  151,  113,  NORTHWARD, 16.281,  -126.138, 40635.25,    40635.25,    -95,  25,   PoleRow::NONE},
    {237, GridKind::LAMBERT,  54,   47,   NORTHWARD, 16.201,  -74.28,   32463.41,    32463.41,    -107, 50,   PoleRow::NONE},
    {238, GridKind::LATLON,   275,  203,  SOUTHWARD, 50.25,   -98.25,   0.25,        0.25,        0,    0,    PoleRow::NONE},
    {241, GridKind::LAMBERT,  549,  445,  NORTHWARD, -4.85,   -151.1,   22000,       22000,       -111, 45,   PoleRow::NONE},
    {242, GridKind::POLAR,    553,  425,  NORTHWARD, 30,      -173,     11250,       11250,       -135, 60,   PoleRow::NONE},
    {243, GridKind::LATLON,   126,  101,  NORTHWARD, 10,      -170,     0.4,         0.4,         0,    0,    PoleRow::NONE},
    {252, GridKind::LAMBERT,  301,  225,  NORTHWARD, 16.281,  -126.138, 20317.625,   20317.625,   -95,  25,   PoleRow::NONE},
    {253, GridKind::LATLON,   373,  224,  SOUTHWARD, 60.5,    -170.25,  0.25,        0.25,        0,    0,    PoleRow::NONE},
    {254, GridKind::MERCATOR, 369,  300,  NORTHWARD, -35,     -250,     40000,       40000,       0,    20,   PoleRow::NONE},
};

// clang-format on

constexpr bool isThinned(int id) noexcept
{
    return id >= 37 && id <= 44;
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
        geometry.dx = row.dx;
        geometry.dy = row.dy;
        bool const is_northward = row.scan_flags == NORTHWARD;
        geometry.lat2 =
            row.lat1 + (is_northward ? 1 : -1) * (row.ny - 1) * row.dy; // where they count: lat/lon grids
        geometry.lon2 = row.lon1 + (row.nx - 1) * row.dx;
        geometry.pole_row = row.pole_row;
        geometry.is_south = row.true_lat < 0;
        geometry.ref_lon = row.ref_lon;
        geometry.true_lat1 = geometry.true_lat2 = row.true_lat;
        geometry.major_m = geometry.minor_m = RADIUS;
        return {};
    }
    if (isThinned(grid_id))
        return format("predefined grid %d (rows of different lengths)", grid_id);
    return format("predefined grid %d", grid_id);
}

} // namespace Yul::detail::grib
