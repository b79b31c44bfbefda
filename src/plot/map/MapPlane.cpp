#include "plot/map/MapPlane.h"

#include "core/Const.h"
#include "plot/map/HalfTurn.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Yul::detail {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;
constexpr double HAIR = 1e-9; // of a cosine, to stay on this side of a horizon

/// Radii of the shown circles, degrees.
constexpr double STEREO_RADIUS = 165; // points farther away are drawn on that circle
constexpr double GNOMONIC_RADIUS = 89;
constexpr double WHOLE_RADIUS = 179.9;

/// Latitudes beyond which projections draw points on a limit.
constexpr double MERCATOR_LIMIT = 89.9;
constexpr double CONE_LIMIT = 89.99;

} // namespace

MapPlane::MapPlane(Domain const & map, Rect const & shown)
    : domain(map), frame(shown), turn_width(std::fabs(domain.seamWidth())),
      mid_x((static_cast<double>(frame.x1) + static_cast<double>(frame.x2)) / 2)
{
    DomainVal const & val = domain.get();
    mid_lon = static_cast<double>(val.plon);
    if (turn_width > 0)
        mid_lon += mid_x / turn_width * 360;
    mid_lon = halfTurn(mid_lon);
    switch (val.proj) {
    case Domain::MERC:
        min_lat = -MERCATOR_LIMIT;
        max_lat = MERCATOR_LIMIT;
        break;
    case Domain::LAMB:
    case Domain::ALBERS:
        (val.plat >= 0 ? min_lat : max_lat) = val.plat >= 0 ? -CONE_LIMIT : CONE_LIMIT;
        break;
    case Domain::PSTEREO:
    case Domain::RADIAL:
        (val.plat >= 0 ? min_lat : max_lat) = val.plat >= 0 ? 90 - STEREO_RADIUS : STEREO_RADIUS - 90;
        setCircle();
        break;
    case Domain::ORTHO:
    case Domain::GNOM:
    case Domain::LAMBAZ:
    case Domain::SAT:
        setCircle();
        break;
    default:
        break;
    }
}

void MapPlane::setCircle()
{
    DomainVal const & val = domain.get();
    auto lat = static_cast<double>(val.plat);
    has_circle = true;
    switch (val.proj) {
    case Domain::PSTEREO:
    case Domain::RADIAL:
        lat = lat >= 0 ? 90 : -90;
        limit = std::cos(STEREO_RADIUS * DEGREE);
        break;
    case Domain::GNOM:
        limit = std::cos(GNOMONIC_RADIUS * DEGREE);
        break;
    case Domain::LAMBAZ:
        limit = std::cos(WHOLE_RADIUS * DEGREE);
        is_whole = true;
        break;
    case Domain::SAT: {
        // The satellite stands above the geocentric latitude of (plat, plon); with the earth's axis stretched so that
        // the ellipsoid becomes a sphere, its horizon is a circle.
        double const ratio = val.ellipse ? Domain::earth_min / Domain::earth_maj : 1;
        double const major = val.ellipse ? Domain::earth_maj : Domain::earth_rad;
        auto const distance = static_cast<double>(Domain::satelliteDistance(val));
        double const below = std::atan2(ratio * ratio * std::sin(lat * DEGREE), std::cos(lat * DEGREE));
        double const z = distance * std::sin(below) / ratio;
        double const w = distance * std::cos(below);
        stretch = ratio;
        limit = major / std::hypot(z, w) + HAIR;
        lat = std::atan2(z, w * ratio) / DEGREE; // of the middle of the circle
        break;
    }
    default:
        limit = HAIR;
        break;
    }
    double const lon = static_cast<double>(val.plon) * DEGREE;
    axis = vectorOf(lat, static_cast<double>(val.plon));
    east = {-std::sin(lon), std::cos(lon), 0};
    up = {axis.y * east.z - axis.z * east.y, axis.z * east.x - axis.x * east.z,
          axis.x * east.y - axis.y * east.x};
}

double MapPlane::across(double lon) const noexcept
{
    return halfTurn(lon - mid_lon);
}

MapPlane::Vector MapPlane::vectorOf(double lat, double lon) const noexcept
{
    double const reduced = stretch == 1 ? lat * DEGREE : std::atan(stretch * std::tan(lat * DEGREE));
    double const w = std::cos(reduced);
    return {w * std::cos(lon * DEGREE), w * std::sin(lon * DEGREE), std::sin(reduced)};
}

double MapPlane::depth(double lat, double lon) const noexcept
{
    Vector const p = vectorOf(lat, lon);
    return p.x * axis.x + p.y * axis.y + p.z * axis.z - limit;
}

double MapPlane::bearing(double lat, double lon) const noexcept
{
    Vector const p = vectorOf(lat, lon);
    double const across_part = p.x * east.x + p.y * east.y + p.z * east.z;
    double const up_part = p.x * up.x + p.y * up.y + p.z * up.z;
    return std::atan2(across_part, up_part) / DEGREE;
}

Place MapPlane::onCircle(double bearing) const noexcept
{
    double const width = std::sqrt(std::max(0., 1 - limit * limit));
    double const s = width * std::sin(bearing * DEGREE);
    double const c = width * std::cos(bearing * DEGREE);
    Vector const p = {limit * axis.x + s * east.x + c * up.x, limit * axis.y + s * east.y + c * up.y,
                      limit * axis.z + s * east.z + c * up.z};
    return {std::atan2(p.z, std::hypot(p.x, p.y) * stretch) / DEGREE, std::atan2(p.y, p.x) / DEGREE};
}

bool MapPlane::hasFarPoint(Place & place) const noexcept
{
    if (!is_whole)
        return false;
    place = {std::atan2(-axis.z, std::hypot(axis.x, axis.y)) / DEGREE, std::atan2(-axis.y, -axis.x) / DEGREE};
    return true;
}

void MapPlane::project(std::vector<double> const & lat,
                       std::vector<double> const & lon,
                       std::vector<double> & x,
                       std::vector<double> & y) const
{
    x.resize(lat.size());
    y.resize(lat.size());
    domain.forward(lat, lon, x, y);
    bool const is_centred =
        std::fabs(mid_x) <= 1e-6 * turn_width; // then x comes out within half a turn of it
    if (turn_width > 0 && !is_centred)
        for (double & value : x)
            if (!isMissing(value))
                value -= turn_width * std::nearbyint((value - mid_x) / turn_width);
}

void MapPlane::outline(std::vector<double> & x, std::vector<double> & y) const
{
    std::vector<double> lat;
    std::vector<double> lon;
    auto const add = [&](double at_lat, double at_lon) {
        lat.push_back(at_lat);
        lon.push_back(at_lon);
    };
    if (has_circle) {
        constexpr int STEPS = 1440;
        for (int i = 0; i < STEPS; ++i) {
            Place const place = onCircle(i * 360. / STEPS);
            add(std::clamp(place.lat, min_lat, max_lat), place.lon);
        }
    } else {
        constexpr int STEPS = 360;
        auto const between = [](double from, double to, int i) { return from + (to - from) * i / STEPS; };
        double const west = mid_lon - HALF_ROUND;
        double const far_east = mid_lon + HALF_ROUND;
        for (int i = 0; i < STEPS; ++i)
            add(min_lat, between(west, far_east, i));
        for (int i = 0; i < STEPS; ++i)
            add(between(min_lat, max_lat, i), far_east);
        for (int i = 0; i < STEPS; ++i)
            add(max_lat, between(far_east, west, i));
        for (int i = 0; i < STEPS; ++i)
            add(between(max_lat, min_lat, i), west);
    }
    project(lat, lon, x, y);
}

double MapPlane::degreesPerUnit() const
{
    auto const width = static_cast<double>(frame.getWidth());
    double const mid_y = (static_cast<double>(frame.y1) + static_cast<double>(frame.y2)) / 2;
    DomainVal const & val = domain.get();
    std::vector<double> centre_x;
    std::vector<double> centre_y;
    project({static_cast<double>(val.clat)}, {static_cast<double>(val.clon)}, centre_x, centre_y);
    double const step = width / 1000;
    for (auto const & [x, y] : {std::array{mid_x, mid_y}, std::array{centre_x[0], centre_y[0]}}) {
        std::vector<double> const at_x = {x, x + step, x};
        std::vector<double> const at_y = {y, y, y + step};
        std::vector<double> lat(3);
        std::vector<double> lon(3);
        if (isMissing(x) || domain.inverse(at_x, at_y, lat, lon) != 3)
            continue;
        auto const distance = [&](std::size_t i) {
            double const d_lon = std::cos((lat[0] + lat[i]) / 2 * DEGREE) * halfTurn(lon[i] - lon[0]);
            return std::hypot(lat[i] - lat[0], d_lon) / step;
        };
        return std::sqrt(distance(1) * distance(2));
    }
    return 0;
}

/// What of a cell's nine points lies on the plane.
struct SeenCells::Extent
{
    double left = 1e300;
    double right = -1e300;
    double below = 1e300;
    double above = -1e300;
    int hidden = 0;

    void add(double x, double y) noexcept
    {
        if (isMissing(x)) {
            ++hidden;
            return;
        }
        left = std::min(left, x);
        right = std::max(right, x);
        below = std::min(below, y);
        above = std::max(above, y);
    }

    /// Whether the frame may show something of the cell. Where the plane ends, a cell counts as seen.
    [[nodiscard]] bool meets(Rect const & frame, double turn) const noexcept
    {
        constexpr double SLACK = 0.25; // of a cell's size, for the curves between its points
        if (hidden > 0)
            return hidden < POINTS;
        double const wide = SLACK * (right - left);
        double const high = SLACK * (above - below);
        bool const is_level =
            above + high >= static_cast<double>(frame.y1) && below - high <= static_cast<double>(frame.y2);
        bool const is_beside =
            right + wide >= static_cast<double>(frame.x1) && left - wide <= static_cast<double>(frame.x2);
        bool const is_wider = turn > 0 && static_cast<double>(frame.getWidth()) > turn; // copies are drawn
        return is_level && (is_beside || is_wider);
    }
};

SeenCells::SeenCells(MapPlane const & plane, Rect const & frame)
{
    constexpr int ACROSS = 2 * COLUMNS + 1;
    constexpr int UP = 2 * ROWS + 1;
    constexpr double NEAR = 0.05; // of a cosine; a cell reaches less far
    std::vector<double> lat;
    std::vector<double> lon;
    lat.reserve(std::size_t{ACROSS} * UP);
    lon.reserve(std::size_t{ACROSS} * UP);
    for (int j = 0; j < UP; ++j) {
        for (int i = 0; i < ACROSS; ++i) {
            lat.push_back(-90 + j * CELL / 2);
            lon.push_back(-180 + i * CELL / 2);
        }
    }
    std::vector<double> x;
    std::vector<double> y;
    plane.project(lat, lon, x, y);
    Place far{};
    bool const has_far_point = plane.hasFarPoint(far);
    auto const is_near_far_point = [&](std::size_t at) { // where the plane grows beyond bounds
        return has_far_point && std::fabs(lat[at] - far.lat) < 3 * CELL &&
               plane.depth(lat[at], lon[at]) < NEAR;
    };
    for (std::size_t row = 0; row < ROWS; ++row) {
        for (std::size_t column = 0; column < COLUMNS; ++column) {
            Extent extent;
            bool is_seen = false;
            for (std::size_t k = 0; k < POINTS; ++k) {
                std::size_t const at = (2 * row + k / 3) * ACROSS + 2 * column + k % 3;
                extent.add(x[at], y[at]);
                is_seen = is_seen || (!isMissing(x[at]) && is_near_far_point(at));
            }
            cells[row][column] = is_seen || extent.meets(frame, plane.turn());
        }
    }
}

bool SeenCells::meets(double south, double north, double west, double east) const noexcept
{
    auto const cell = [](double degrees) { return static_cast<int>(std::floor(degrees / CELL)); };
    int const first_row = std::clamp(cell(south + 90), 0, ROWS - 1);
    int const last_row = std::clamp(cell(north + 90), 0, ROWS - 1);
    int const first_column = cell(west + 180);
    int const last_column = std::min(cell(east + 180), first_column + COLUMNS - 1);
    for (int row = first_row; row <= last_row; ++row)
        for (int column = first_column; column <= last_column; ++column)
            if (cells[static_cast<std::size_t>(row)]
                     [static_cast<std::size_t>((column % COLUMNS + COLUMNS) % COLUMNS)])
                return true;
    return false;
}

} // namespace Yul::detail
