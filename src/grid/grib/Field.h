// One field of a GRIB message, as its header sections describe it.
#pragma once

#include "grid/grib/Centres.h"
#include "grid/grib/Octets.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Yul::detail::grib {

/// Where something lies in the file.
struct Extent
{
    std::uint64_t position = 0;
    std::uint64_t length = 0;
};

/// A calendar time as coded; -9999 where the message does not say.
struct Moment
{
    int year = -9999;
    int month = -9999;
    int day = -9999;
    int hour = -9999;
    int minute = -9999;
    int second = -9999;
};

/// What was done over a period, in the numbers of code table 4.10 (edition 2).
enum class Statistic {
    NONE = -1,
    AVERAGE = 0,
    ACCUMULATION = 1,
    MAXIMUM = 2,
    MINIMUM = 3,
    DIFFERENCE = 4,
    RMS = 5,
    DEVIATION = 6,
    COVARIANCE = 7,
    DIFFERENCE_BACKWARD = 8,
    RATIO = 9,
    LAST = 9,
    OTHER = 255
};

/// A fixed surface of edition 2: type and value in the units of code table 4.5.
struct Surface
{
    static constexpr int NONE = 255;

    int type = NONE;
    std::optional<double> value;
};

/// What the field is of. Parameters are identified by discipline, category and number in edition 2; by the
/// table version and number in edition 1, where discipline and category are -1.
struct Product
{
    int discipline = -1;
    int category = -1;
    int number = 0;
    int table = 0; ///< edition 1: parameter table version; edition 2: local tables version
    int centre = 0;
    int sub_centre = 0;
    int process = 0;          ///< generating process identifier of the centre
    int grid_id = 0;          ///< edition 1: number of a predefined grid, 255 for none
    bool is_analysis = false; ///< the message says so, rather than a forecast of length 0
    int template_number = 0;  ///< edition 2: product definition template; edition 1: time range indicator
    int level_type = 0;       ///< edition 1: code table 3, and the two octets behind it
    int level_octet1 = 0;
    int level_octet2 = 0;
    Surface first; ///< edition 2
    Surface second;
    Moment reference;
    std::optional<std::int64_t>
        start; ///< seconds from the reference time to the period or to the one time of the field
    std::optional<std::int64_t> end;            ///< to the end of the period; equals start for an instant
    Statistic statistic = Statistic::NONE;      ///< over the period
    Statistic area_statistic = Statistic::NONE; ///< over an area round each point
    int member = -1;                            ///< perturbation number of an ensemble member
    int derived = -1;                           ///< kind of derived forecast, code table 4.7
    int percentile = -1;                        ///< percent
    int probability = -1;                       ///< probability type, code table 4.9
    std::optional<double> lower_limit;          ///< of the event that a probability is of
    std::optional<double> upper_limit;
};

/// Edition 1: whether local tables and the octets behind the product definition are ECMWF's.
[[nodiscard]] inline bool usesEcmwfTables(Product const & product) noexcept
{
    return product.centre == ECMWF || product.sub_centre == ECMWF;
}

/// Kinds of grids that can be delivered.
enum class GridKind { NONE, LATLON, GAUSSIAN, MERCATOR, POLAR, LAMBERT, ALBERS, AZIMUTHAL, SPACE_VIEW };

/// A row at a pole that the message holds as one value.
enum class PoleRow { NONE, FIRST, LAST };

/// Where the points lie: the numbers of the grid definition, degrees and metres. NaN where the message does
/// not say.
struct Geometry
{
    GridKind kind = GridKind::NONE;
    int nx = 0;
    int ny = 0;
    unsigned scan_flags = 0; ///< flag table 3.4; edition 1 has the first three
    double lat1 = 0;         ///< the first point in the message
    double lon1 = 0;
    double lat2 = 0; ///< the last point; lat/lon, Gaussian and Mercator grids
    double lon2 = 0;
    double dx = 0; ///< degrees for lat/lon grids, else metres at the latitude of true scale
    double dy = 0;
    double rounding = 0;  ///< of increments in degrees
    double true_lat1 = 0; ///< latitude of true scale, standard parallels
    double true_lat2 = 0;
    double ref_lat = 0; ///< projection's reference latitude
    double ref_lon =
        0; ///< meridian parallel to the y axis; longitude of the projection's or sub-satellite point
    bool is_south = false;
    double orientation = 0; ///< of the grid against its projection, degrees
    double major_m = 0;     ///< earth: semi-major and semi-minor axes, metres; equal for a sphere
    double minor_m = 0;
    double height =
        0; ///< space view: distance of the camera from the earth's centre in units of the earth's radius
    double x_sub = 0; ///< space view: column and row of the sub-satellite point, and of the first point
    double y_sub = 0;
    double x_origin = 0;
    double y_origin = 0;
    double x_angle = 0; ///< space view: apparent diameter of the earth in grid lengths
    double y_angle = 0;
    int gauss_n = 0; ///< Gaussian: parallels between a pole and the equator
    PoleRow pole_row = PoleRow::NONE;

    [[nodiscard]] std::uint64_t points() const noexcept
    {
        return static_cast<std::uint64_t>(nx) * static_cast<std::uint64_t>(ny);
    }

    /// Points that the message holds, bitmap and values.
    [[nodiscard]] std::uint64_t codedPoints() const noexcept
    {
        return pole_row == PoleRow::NONE ? points() : points() - static_cast<std::uint64_t>(nx) + 1;
    }
};

/// Scaling of packed integers: Y = (R + X * 2^E) * 10^-D.
struct Scale
{
    double reference = 0;
    double binary = 1;
    double decimal = 1;

    [[nodiscard]] double operator()(double x) const noexcept { return (reference + x * binary) * decimal; }
};

enum class PackingKind { NONE, SIMPLE, COMPLEX, IEEE, JPEG2000, PNG, CCSDS, RUN_LENGTH, SECOND_ORDER };

/// How the values are packed: section 5 of edition 2, or the head of the binary data section of edition 1.
struct Packing
{
    PackingKind kind = PackingKind::NONE;
    int template_number = 0;
    std::uint64_t points = 0; ///< values coded, which are those that the bitmap shows as present
    Scale scale;
    unsigned bits = 0;
    int original_type = 0; ///< 0 floating point, 1 integer

    // Complex packing.
    unsigned splitting = 0;
    unsigned missing_management = 0; ///< 0 none, 1 primary, 2 primary and secondary substitutes
    std::uint32_t primary_missing = 0;
    std::uint32_t secondary_missing = 0;
    std::uint32_t groups = 0;
    unsigned width_reference = 0;
    unsigned width_bits = 0;
    std::uint32_t length_reference = 0;
    unsigned length_increment = 0;
    std::uint32_t last_length = 0;
    unsigned length_bits = 0;
    unsigned order = 0;        ///< of spatial differencing, 0 to 2
    unsigned extra_octets = 0; ///< octets of each extra descriptor

    int precision = 0; ///< IEEE: 1 single, 2 double, 3 quadruple

    // CCSDS compression.
    unsigned ccsds_flags = 0;
    unsigned block_size = 0;
    unsigned reference_interval = 0; ///< blocks from one reference sample to the next

    // Run length packing.
    unsigned max_level = 0;    ///< the largest level that occurs in this field
    std::vector<float> levels; ///< value of level 1, 2, ...

    // Second-order packing of edition 1; `groups` holds the number of first-order values.
    unsigned second_flags = 0;          ///< octet 14
    std::size_t first_values_octet = 0; ///< N1, N2: where first- and second-order values begin
    std::size_t second_values_octet = 0;
    std::size_t row_length = 0;  ///< values of a line of the grid, 0 where a bitmap makes them vary
    bool is_alternating = false; ///< every second line runs the other way
};

/// A field as its headers describe it. Its values are unpacked on demand from the extents.
struct Field
{
    int edition = 0;
    std::uint64_t message = 0; ///< file position of the message's first octet
    Product product;
    Geometry geometry;
    Packing packing;
    std::uint64_t points = 0; ///< points of the grid
    bool has_bitmap = false;
    Extent bitmap;       ///< the bitmap's own octets
    Extent data;         ///< the data section, whole
    std::string refusal; ///< why the field cannot be delivered; empty when it can
};

} // namespace Yul::detail::grib
