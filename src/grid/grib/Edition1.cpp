#include "grid/grib/Edition1.h"

#include "core/Format.h"
#include "grid/grib/Calendar.h"
#include "grid/grib/Centres.h"
#include "grid/grib/Earth.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul::detail::grib {
namespace {

constexpr unsigned YEAR_MISSING = 255;
constexpr double MILLI = 1e-3;
constexpr double UNKNOWN = std::numeric_limits<double>::quiet_NaN();

/// How a time range indicator gives the period: forecast time of its start and end as
/// sum of p1 x P1 + p2 x P2 + steps x (N - 1) x P2, N being the number of fields included.
struct RangeIndicator
{
    unsigned code;
    int start_p1;
    int end_p1;
    int end_p2;
    int end_steps;
    Statistic statistic;
    int centre = 0; ///< whose own meaning it is; 0 for all others
};

/// Code table 5. 6 and 7 count P1 (and 6 also P2) backward. From 128 on the centres have their own, most the same as NCEP:
/// statistics of the periods from P1 to P2 of several forecasts or, 132 and 136, analyses, which begin a day (128, 130), the
/// period's own length (129, 131), a year (132 to 136), 6 (137, 138) or 12 hours (139, 140) apart. ECMWF's 128, 130 and 133
/// have the same period.
/// Source: WMO Manual on Codes 306, volume I.2, code table 5; NCEP Office Note 388, table 5; ecCodes, tables of
/// centres 34 and 98.
constexpr RangeIndicator RANGE_INDICATORS[] = {
    {0, 1, 1, 0, 0, Statistic::NONE},
    {1, 1, 1, 0, 0, Statistic::NONE},
    {2, 1, 0, 1, 0, Statistic::NONE},
    {3, 1, 0, 1, 0, Statistic::AVERAGE},
    {4, 1, 0, 1, 0, Statistic::ACCUMULATION},
    {5, 1, 0, 1, 0, Statistic::DIFFERENCE},
    {6, -1, 0, -1, 0, Statistic::AVERAGE},
    {7, -1, 0, 1, 0, Statistic::AVERAGE},
    {10, 1, 1, 0, 0, Statistic::NONE},
    {51, 1, 1, 0, 0, Statistic::AVERAGE},
    {113, 1, 1, 0, 0, Statistic::AVERAGE},
    {114, 1, 1, 0, 0, Statistic::ACCUMULATION},
    {115, 1, 1, 0, 1, Statistic::AVERAGE},
    {116, 1, 1, 0, 1, Statistic::ACCUMULATION},
    {117, 1, 1, 0, 0, Statistic::AVERAGE},
    {118, 0, 0, 0, 1, Statistic::COVARIANCE},
    {119, 1, 1, 0, 1, Statistic::DEVIATION},
    {123, 0, 0, 0, 1, Statistic::AVERAGE},
    {124, 0, 0, 0, 1, Statistic::ACCUMULATION},
    {125, 1, 1, 0, 1, Statistic::DEVIATION},
    {129, 1, 0, 1, 0, Statistic::COVARIANCE, JMA},
    {131, 1, 0, 1, 0, Statistic::COVARIANCE, JMA},
    {132, 1, 1, 0, 0, Statistic::COVARIANCE, JMA},
    {128, 1, 0, 1, 0, Statistic::AVERAGE},
    {129, 1, 0, 1, 0, Statistic::AVERAGE},
    {130, 1, 0, 1, 0, Statistic::AVERAGE},
    {131, 1, 0, 1, 0, Statistic::AVERAGE},
    {132, 1, 0, 1, 0, Statistic::AVERAGE},
    {133, 1, 0, 1, 0, Statistic::AVERAGE},
    {134, 1, 0, 1, 0, Statistic::RMS},
    {135, 1, 0, 1, 0, Statistic::DEVIATION},
    {136, 1, 0, 1, 0, Statistic::DEVIATION},
    {137, 1, 0, 1, 0, Statistic::AVERAGE},
    {138, 1, 0, 1, 0, Statistic::AVERAGE},
    {139, 1, 0, 1, 0, Statistic::AVERAGE},
    {140, 1, 0, 1, 0, Statistic::AVERAGE},
};

constexpr unsigned ANALYSIS = 1;
constexpr unsigned LONG_P1 = 10; // P1 takes the octets of P2 as well

RangeIndicator rangeIndicator(unsigned code, int centre) noexcept
{
    for (auto const & row : RANGE_INDICATORS)
        if (row.code == code && (row.centre == 0 || row.centre == centre))
            return row;
    return {code, 1, 1, 0, 0, Statistic::NONE};
}

void readPeriod(Section & s, Product & product)
{
    RangeIndicator const range = rangeIndicator(s.u8(21), product.centre);
    product.template_number = static_cast<int>(range.code);
    product.statistic = range.statistic;
    product.is_analysis = range.code == ANALYSIS;
    std::int64_t const p1 = range.code == LONG_P1 ? s.u16(19) : s.u8(19);
    std::int64_t const p2 = range.code == LONG_P1 ? 0 : s.u8(20);
    std::int64_t const steps = std::max<std::int64_t>(0, std::int64_t{s.u16(22)} - 1);
    std::int64_t factor = 1;
    int const unit = unitOfEdition1(static_cast<int>(s.u8(18)), factor);
    product.start = secondsAfter(product.reference, factor * range.start_p1 * p1, unit);
    product.end =
        secondsAfter(product.reference,
                     factor * (range.end_p1 * p1 + range.end_p2 * p2 + range.end_steps * steps * p2), unit);
}

/// Octet 13 is the year of the century, 1 to 100, and octet 25 the century.
Moment readMoment(Section & s)
{
    Moment m;
    unsigned const year = s.u8(13);
    unsigned const century = s.size() >= 25 ? s.u8(25) : 20;
    if (year != YEAR_MISSING)
        m.year = static_cast<int>(year) + 100 * (century > 0 ? static_cast<int>(century) - 1 : 0);
    m.month = static_cast<int>(s.u8(14));
    m.day = static_cast<int>(s.u8(15));
    m.hour = static_cast<int>(s.u8(16));
    m.minute = static_cast<int>(s.u8(17));
    m.second = 0;
    return m;
}

constexpr int NCEP_ENSEMBLE = 2; // sub-centre

/// Where a centre's own octets tell the number of an ensemble member; -1 where they do not.
/// Source: ECMWF local GRIB definitions 1, 12, 15, 16, 30 and 36; NCEP Office Note 388, ensemble extension of the product
/// definition.
int memberOf(Section & s, Product const & product)
{
    unsigned const definition = s.size() >= 41 ? s.u8(41) : 0;
    if (usesEcmwfTables(product) && s.size() >= 51) {
        unsigned const type = s.u8(43);
        bool const is_member =
            type == 10 || type == 11 || s.u8(51) > 0; // control or perturbed forecast, or one of several
        if (definition == 1 || definition == 30 || definition == 36)
            return is_member ? static_cast<int>(s.u8(50)) : -1;
        if (definition == 12 || definition == 15 || definition == 16) // seasonal forecasts
            return static_cast<int>(s.u16(50));
    }
    if (product.centre == NCEP && product.sub_centre == NCEP_ENSEMBLE && s.size() >= 43 && definition == 1) {
        unsigned const type = s.u8(42);
        bool const is_member = type >= 1 && type <= 4; // control or perturbed forecast
        return is_member ? static_cast<int>(s.u8(43)) : -1;
    }
    return -1;
}

void setFirstPoint(Section & s, Geometry & g)
{
    g.nx = static_cast<int>(s.u16(7));
    g.ny = static_cast<int>(s.u16(9));
    g.lat1 = s.s24(11) * MILLI;
    g.lon1 = s.s24(14) * MILLI;
    setEarth1((s.u8(17) & 0x40U) != 0, g);
    g.scan_flags = s.u8(28) & 0xe0U;
}

/// Types 0 and 4.
void readLatLon(Section & s, Geometry & g)
{
    setFirstPoint(s, g);
    bool const has_steps = (s.u8(17) & 0x80U) != 0;
    g.lat2 = s.s24(18) * MILLI;
    g.lon2 = s.s24(21) * MILLI;
    g.dx = has_steps && s.u16(24) != 0xffffU ? s.u16(24) * MILLI : UNKNOWN;
    g.dy = has_steps && s.u16(26) != 0xffffU ? s.u16(26) * MILLI : UNKNOWN;
    g.rounding = MILLI;
    g.gauss_n = static_cast<int>(s.u16(26));
}

void readMercator(Section & s, Geometry & g)
{
    setFirstPoint(s, g);
    g.lat2 = s.s24(18) * MILLI;
    g.lon2 = s.s24(21) * MILLI;
    g.true_lat1 = s.s24(24) * MILLI;
    g.dx = s.u24(29);
    g.dy = s.u24(32);
}

/// What polar stereographic and conic grids have in common.
void readPlane(Section & s, Geometry & g)
{
    setFirstPoint(s, g);
    g.ref_lon = s.s24(18) * MILLI;
    g.dx = s.u24(21);
    g.dy = s.u24(24);
    g.is_south = (s.u8(27) & 0x80U) != 0;
}

/// True scale is at 60 degrees in edition 1.
void readPolar(Section & s, Geometry & g)
{
    readPlane(s, g);
    g.true_lat1 = g.is_south ? -60 : 60;
}

void readConic(Section & s, Geometry & g)
{
    readPlane(s, g);
    g.true_lat1 = s.s24(29) * MILLI;
    g.true_lat2 = s.s24(32) * MILLI;
    g.ref_lat = g.true_lat1;
}

void readSpaceView(Section & s, Geometry & g)
{
    setFirstPoint(s, g);
    g.ref_lat = g.lat1;
    g.ref_lon = g.lon1;
    g.x_angle = s.u24(18);
    g.y_angle = s.u24(21);
    g.x_sub = s.u16(24);
    g.y_sub = s.u16(26);
    g.orientation = s.s24(29) * MILLI;
    g.height = s.u24(32) * 1e-6;
    g.x_origin = s.u16(35);
    g.y_origin = s.u16(37);
}

struct GridType
{
    unsigned number;
    GridKind kind;
    char const * name;
    void (*read)(Section &, Geometry &);
};

/// Code table 6. Types without a reader are named in the message that refuses them.
constexpr GridType GRID_TYPES[] = {
    {0, GridKind::LATLON, "latitude/longitude", readLatLon},
    {1, GridKind::MERCATOR, "Mercator", readMercator},
    {2, GridKind::NONE, "gnomonic", nullptr},
    {3, GridKind::LAMBERT, "Lambert conformal", readConic},
    {4, GridKind::GAUSSIAN, "Gaussian", readLatLon},
    {5, GridKind::POLAR, "polar stereographic", readPolar},
    {8, GridKind::ALBERS, "Albers equal-area", readConic},
    {10, GridKind::NONE, "rotated latitude/longitude", nullptr},
    {13, GridKind::NONE, "oblique Lambert conformal", nullptr},
    {14, GridKind::NONE, "rotated Gaussian", nullptr},
    {20, GridKind::NONE, "stretched latitude/longitude", nullptr},
    {24, GridKind::NONE, "stretched Gaussian", nullptr},
    {30, GridKind::NONE, "stretched and rotated lat/lon", nullptr},
    {34, GridKind::NONE, "stretched and rotated Gaussian", nullptr},
    {50, GridKind::NONE, "spherical harmonics", nullptr},
    {60, GridKind::NONE, "rotated spherical harmonics", nullptr},
    {70, GridKind::NONE, "stretched spherical harmonics", nullptr},
    {80, GridKind::NONE, "stretched and rotated harmonics", nullptr},
    {90, GridKind::SPACE_VIEW, "space view", readSpaceView},
};

constexpr unsigned VARIES = 0xffff;
constexpr unsigned MAX_BITS = 32;
constexpr unsigned GENERAL_EXTENDED = 0x08; // of the second-order flags
constexpr unsigned BOUSTROPHEDONIC = 0x04;

/// A lat/lon grid whose list of row lengths says one value at a pole and equal rows else. False when it says anything else.
bool takePoleRow(Section & s, Geometry & g)
{
    std::size_t const rows = s.u16(9);
    std::size_t const list = s.u8(5) + 4 * std::size_t{s.u8(4)};
    auto const lengthOf = [&](std::size_t row) { return s.u16(list + 2 * row); };
    if (s.u16(7) != VARIES || rows < 3 || rows == VARIES || s.u8(5) == 255 || lengthOf(1) < 2)
        return false;
    unsigned const length = lengthOf(1);
    for (std::size_t row = 2; row + 1 < rows; ++row)
        if (lengthOf(row) != length)
            return false;
    bool const is_first = lengthOf(0) == 1 && lengthOf(rows - 1) == length;
    bool const is_last = lengthOf(0) == length && lengthOf(rows - 1) == 1;
    if ((!is_first && !is_last) || (s.u8(28) & 0x20U) != 0)
        return false;
    g.nx = static_cast<int>(length);
    g.pole_row = is_first ? PoleRow::FIRST : PoleRow::LAST;
    return std::abs(std::abs(is_first ? g.lat1 : g.lat2) - 90) < MILLI;
}

} // namespace

std::string readPDB(Section section, Product & product, Presence & presence)
{
    product = {};
    product.table = static_cast<int>(section.u8(4));
    product.centre = static_cast<int>(section.u8(5));
    product.process = static_cast<int>(section.u8(6));
    product.grid_id = static_cast<int>(section.u8(7));
    product.number = static_cast<int>(section.u8(9));
    product.level_type = static_cast<int>(section.u8(10));
    product.level_octet1 = static_cast<int>(section.u8(11));
    product.level_octet2 = static_cast<int>(section.u8(12));
    product.reference = readMoment(section);
    readPeriod(section, product);
    unsigned const flags = section.u8(8);
    presence.grid_id = static_cast<int>(section.u8(7));
    presence.has_grid = (flags & 0x80U) != 0;
    presence.has_bitmap = (flags & 0x40U) != 0;
    if (section.size() >= 28) { // earlier forms end sooner
        product.sub_centre = static_cast<int>(section.u8(26));
        presence.decimal = section.s16(27);
    }
    product.member = memberOf(section, product);
    return section.isShort() ? "product definition section too short" : std::string();
}

std::string readGDB(Section section, Geometry & geometry)
{
    geometry = {};
    unsigned const type = section.u8(6);
    for (auto const & row : GRID_TYPES) {
        if (row.number != type)
            continue;
        if (row.read == nullptr)
            return format("grid type %u (%s)", type, row.name);
        bool const is_reduced = section.u16(7) == VARIES || section.u16(9) == VARIES;
        row.read(section, geometry);
        if (is_reduced && (row.kind != GridKind::LATLON || !takePoleRow(section, geometry)))
            return "reduced grid (rows of different lengths)";
        if (section.isShort())
            return "grid description section too short";
        geometry.kind = row.kind;
        return {};
    }
    return format("grid type %u", type);
}

std::string readBDB(Section section, int decimal, Packing & packing)
{
    packing = {};
    unsigned const flags = section.u8(4);
    packing.scale = {convIBMFloat(section.u32(7)), convScale(section.s16(5)), decimalScale(decimal)};
    packing.bits = section.u8(11);
    packing.original_type = (flags & 0x20U) != 0 ? 1 : 0;
    if (section.isShort())
        return "binary data section too short";
    if ((flags & 0x80U) != 0)
        return "spherical harmonic coefficients";
    if (packing.bits > MAX_BITS)
        return format("%u bits per value", packing.bits);
    packing.kind = (flags & 0x40U) != 0 ? PackingKind::SECOND_ORDER : PackingKind::SIMPLE;
    if (packing.kind == PackingKind::SECOND_ORDER) {
        packing.first_values_octet = section.u16(12);
        packing.second_flags = section.u8(14);
        packing.second_values_octet = section.u16(15);
        bool const is_extended = (packing.second_flags & GENERAL_EXTENDED) != 0;
        packing.groups = section.u16(17) + (is_extended ? section.u8(21) << 16 : 0U);
        packing.is_alternating = is_extended && (packing.second_flags & BOUSTROPHEDONIC) != 0;
    }
    return section.isShort() ? "binary data section too short" : std::string();
}

} // namespace Yul::detail::grib
