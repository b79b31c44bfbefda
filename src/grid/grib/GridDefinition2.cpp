// Section 3 of edition 2.
#include "core/Format.h"
#include "grid/grib/Earth.h"
#include "grid/grib/Edition2.h"

#include <limits>

namespace Yul::detail::grib {
namespace {

constexpr double MICRO = 1e-6;
constexpr double MILLI = 1e-3;
constexpr std::uint32_t MISSING = 0xffffffffU;
constexpr double UNKNOWN = std::numeric_limits<double>::quiet_NaN();

/// Sizes that are missing or beyond an int become 0, which is refused later.
int sizeAt(Section & s, std::size_t octet) noexcept
{
    std::uint32_t const size = s.u32(octet);
    return size <= 0x7fffffffU ? static_cast<int>(size) : 0;
}

double unsignedAt(Section & s, std::size_t octet, double unit) noexcept
{
    std::uint32_t const value = s.u32(octet);
    return value == MISSING ? UNKNOWN : value * unit;
}

double signedAt(Section & s, std::size_t octet, double unit) noexcept
{
    return s.u32(octet) == MISSING ? UNKNOWN : s.s32(octet) * unit;
}

void setSize(Section & s, Geometry & g) noexcept
{
    g.nx = sizeAt(s, 31);
    g.ny = sizeAt(s, 35);
}

void setFirstPoint(Section & s, std::size_t octet, Geometry & g) noexcept
{
    g.lat1 = signedAt(s, octet, MICRO);
    g.lon1 = signedAt(s, octet + 4, MICRO);
}

/// Templates 3.0 and 3.40.
void readLatLon(Section & s, Geometry & g)
{
    setSize(s, g);
    std::uint32_t const basic = s.u32(39);
    std::uint32_t const parts = s.u32(43);
    bool const is_micro = basic == 0 || basic == MISSING || parts == 0 || parts == MISSING;
    double const unit = is_micro ? MICRO : static_cast<double>(basic) / parts;
    g.lat1 = signedAt(s, 47, unit);
    g.lon1 = signedAt(s, 51, unit);
    g.lat2 = signedAt(s, 56, unit);
    g.lon2 = signedAt(s, 60, unit);
    unsigned const flags = s.u8(55);
    g.dx = (flags & 0x20U) != 0 ? unsignedAt(s, 64, unit) : UNKNOWN;
    g.dy = (flags & 0x10U) != 0 ? unsignedAt(s, 68, unit) : UNKNOWN;
    g.rounding = unit;
    g.gauss_n = sizeAt(s, 68);
    g.scan_flags = s.u8(72);
}

void readMercator(Section & s, Geometry & g)
{
    setSize(s, g);
    setFirstPoint(s, 39, g);
    g.true_lat1 = signedAt(s, 48, MICRO);
    g.lat2 = signedAt(s, 52, MICRO);
    g.lon2 = signedAt(s, 56, MICRO);
    g.scan_flags = s.u8(60);
    g.orientation = unsignedAt(s, 61, MICRO);
    g.dx = unsignedAt(s, 65, MILLI);
    g.dy = unsignedAt(s, 69, MILLI);
}

/// What templates 3.20, 3.30 and 3.31 have in common.
void readPlane(Section & s, Geometry & g)
{
    setSize(s, g);
    setFirstPoint(s, 39, g);
    g.ref_lat = signedAt(s, 48, MICRO);
    g.ref_lon = signedAt(s, 52, MICRO);
    g.dx = unsignedAt(s, 56, MILLI);
    g.dy = unsignedAt(s, 60, MILLI);
    g.is_south = (s.u8(64) & 0x80U) != 0;
    g.scan_flags = s.u8(65);
}

void readPolar(Section & s, Geometry & g)
{
    readPlane(s, g);
    g.true_lat1 = g.ref_lat;
}

void readConic(Section & s, Geometry & g)
{
    readPlane(s, g);
    g.true_lat1 = signedAt(s, 66, MICRO);
    g.true_lat2 = signedAt(s, 70, MICRO);
}

void readAzimuthal(Section & s, Geometry & g)
{
    setSize(s, g);
    setFirstPoint(s, 39, g);
    g.ref_lat = signedAt(s, 47, MICRO);
    g.ref_lon = signedAt(s, 51, MICRO);
    g.dx = unsignedAt(s, 56, MILLI);
    g.dy = unsignedAt(s, 60, MILLI);
    g.scan_flags = s.u8(64);
}

void readSpaceView(Section & s, Geometry & g)
{
    setSize(s, g);
    g.ref_lat = signedAt(s, 39, MICRO);
    g.ref_lon = signedAt(s, 43, MICRO);
    g.x_angle = s.u32(48);
    g.y_angle = s.u32(52);
    g.x_sub = signedAt(s, 56, MILLI);
    g.y_sub = signedAt(s, 60, MILLI);
    g.scan_flags = s.u8(64);
    g.orientation = signedAt(s, 65, MICRO);
    g.height = unsignedAt(s, 69, MICRO);
    g.x_origin = s.s32(73);
    g.y_origin = s.s32(77);
}

struct GridTemplate
{
    unsigned number;
    GridKind kind;
    void (*read)(Section &, Geometry &);
};

/// Grid definition templates that are read, code table 3.1.
constexpr GridTemplate TEMPLATES[] = {
    {0, GridKind::LATLON, readLatLon},         {10, GridKind::MERCATOR, readMercator},
    {20, GridKind::POLAR, readPolar},          {30, GridKind::LAMBERT, readConic},
    {31, GridKind::ALBERS, readConic},         {40, GridKind::GAUSSIAN, readLatLon},
    {90, GridKind::SPACE_VIEW, readSpaceView}, {140, GridKind::AZIMUTHAL, readAzimuthal},
};

struct GridName
{
    unsigned number;
    char const * name;
};

/// Names of templates that a grid cannot hold, for the message. Code table 3.1.
constexpr GridName REFUSED_NAMES[] = {
    {1, "rotated latitude/longitude"},
    {2, "stretched latitude/longitude"},
    {3, "stretched and rotated latitude/longitude"},
    {4, "variable resolution latitude/longitude"},
    {5, "variable resolution rotated lat/lon"},
    {12, "transverse Mercator"},
    {41, "rotated Gaussian"},
    {42, "stretched Gaussian"},
    {43, "stretched and rotated Gaussian"},
    {50, "spherical harmonics"},
    {51, "rotated spherical harmonics"},
    {52, "stretched spherical harmonics"},
    {53, "stretched and rotated harmonics"},
    {100, "triangular, on an icosahedron"},
    {101, "unstructured"},
    {110, "equatorial azimuthal equidistant"},
    {120, "azimuth-range"},
    {150, "HEALPix"},
};

char const * nameOf(unsigned number) noexcept
{
    for (auto const & row : REFUSED_NAMES)
        if (row.number == number)
            return row.name;
    return "unknown";
}

} // namespace

std::string readGDS(Section section, Geometry & geometry)
{
    geometry = {};
    unsigned const number = section.u16(13);
    std::uint32_t const points = section.u32(7);
    if (section.u8(6) != 0)
        return format("grid defined by the centre (source of grid definition %u)", section.u8(6));
    for (auto const & row : TEMPLATES) {
        if (row.number != number)
            continue;
        setEarth2(section, geometry);
        row.read(section, geometry);
        if (section.isShort())
            return "grid definition section too short";
        if (section.u8(11) != 0)
            return "reduced grid (rows of different lengths)";
        geometry.kind = row.kind;
        if (geometry.nx > 0 && geometry.ny > 0 && geometry.points() != points)
            return format("grid of %d by %d points in a section for %u", geometry.nx, geometry.ny, points);
        return {};
    }
    return format("grid template 3.%u (%s)", number, nameOf(number));
}

} // namespace Yul::detail::grib
