#include "grid/grib/Earth.h"

namespace Yul::detail::grib {
namespace {

struct Shape
{
    unsigned code;
    double major_m;
    double minor_m;
};

/// Code table 3.2, the shapes with fixed axes.
constexpr Shape SHAPES[] = {
    {0, 6367470.0, 6367470.0},      {2, 6378160.0, 6356775.0},       {4, 6378137.0, 6356752.314},
    {5, 6378137.0, 6356752.314245}, {6, 6371229.0, 6371229.0},       {8, 6371200.0, 6371200.0},
    {9, 6377563.396, 6356256.909},  {10, 6378137.0, 6356752.314245},
};

constexpr unsigned RADIUS_GIVEN = 1;
constexpr unsigned AXES_IN_KM = 3;
constexpr unsigned AXES_IN_M = 7;
constexpr double DEFAULT_RADIUS = 6371229.0;
constexpr double LEAST_RADIUS = 5e6; // what is below or above is no earth
constexpr double GREATEST_RADIUS = 8e6;

/// A scale factor octet and four octets of scaled value; the default where that is missing or absurd.
double scaledLength(Section & section, std::size_t octet, double unit_m) noexcept
{
    double const metres = section.u32(octet + 1) * decimalScale(section.s8(octet)) * unit_m;
    return metres >= LEAST_RADIUS && metres <= GREATEST_RADIUS ? metres : DEFAULT_RADIUS;
}

} // namespace

void setEarth1(bool is_oblate, Geometry & geometry) noexcept
{
    geometry.major_m = is_oblate ? 6378160.0 : 6367470.0;
    geometry.minor_m = is_oblate ? 6356775.0 : 6367470.0;
}

void setEarth2(Section & section, Geometry & geometry) noexcept
{
    unsigned const shape = section.u8(15);
    geometry.major_m = geometry.minor_m = DEFAULT_RADIUS;
    if (shape == RADIUS_GIVEN)
        geometry.major_m = geometry.minor_m = scaledLength(section, 16, 1);
    else if (shape == AXES_IN_KM || shape == AXES_IN_M) {
        geometry.major_m = scaledLength(section, 21, shape == AXES_IN_KM ? 1000 : 1);
        geometry.minor_m = scaledLength(section, 26, shape == AXES_IN_KM ? 1000 : 1);
    }
    for (auto const & row : SHAPES)
        if (row.code == shape) {
            geometry.major_m = row.major_m;
            geometry.minor_m = row.minor_m;
        }
}

} // namespace Yul::detail::grib
