#include "grid/grib/GridDomain.h"

#include "core/Format.h"
#include "geo/Domain.h"
#include "grid/grib/EllipsoidPlane.h"
#include "grid/grib/Scan.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace Yul::detail::grib {
namespace {

constexpr double DEGREES = Const::RDC;

struct Position
{
    double x = 0;
    double y = 0;
};

bool isLatitude(double lat) noexcept
{
    return lat >= -90.000001 && lat <= 90.000001; // false for NaN
}

bool isLongitude(double lon) noexcept
{
    return lon >= -720 && lon <= 720;
}

double wrapLongitude(double lon) noexcept
{
    return std::remainder(lon, 360.0);
}

std::optional<Position> forward(Domain const & domain, double lat, double lon)
{
    Position p;
    std::size_t const found =
        domain.forward(std::span<double const>(&lat, 1), std::span<double const>(&lon, 1),
                       std::span<double>(&p.x, 1), std::span<double>(&p.y, 1));
    return found == 1 ? std::optional(p) : std::nullopt;
}

/// Latitude as y, longitude as x.
std::optional<Position> inverse(Domain const & domain, Position const & plane)
{
    Position earth;
    std::size_t const found =
        domain.inverse(std::span<double const>(&plane.x, 1), std::span<double const>(&plane.y, 1),
                       std::span<double>(&earth.y, 1), std::span<double>(&earth.x, 1));
    return found == 1 ? std::optional(earth) : std::nullopt;
}

/// How far one of the message's metres reaches in the library's plane, along x and y.
struct PlaneScale
{
    double x = 0;
    double y = 0;
};

/// On a sphere the ratio of the radii. On an ellipsoid the radii of curvature across and along the meridian,
/// at a latitude in the middle of the grid.
PlaneScale planeScale(Geometry const & g, double lat) noexcept
{
    double const flattening = g.minor_m / g.major_m;
    double const e2 = 1 - flattening * flattening;
    double const sine = std::sin(lat / DEGREES);
    double const w2 = 1 - e2 * sine * sine;
    double const across = g.major_m / std::sqrt(w2);
    double const along = across * (1 - e2) / w2;
    double const unit = Domain::earth_rad;
    return {unit / across, unit / along};
}

void setGrid(Geometry const & g, double dx, double dy, DomainVal & val) noexcept
{
    val.nx = g.nx;
    val.ny = g.ny;
    val.dx = static_cast<float>(dx);
    val.dy = static_cast<float>(dy);
}

void setCentre(Position const & earth, DomainVal & val) noexcept
{
    val.clat = static_cast<float>(std::clamp(earth.y, -90.0, 90.0));
    val.clon = static_cast<float>(wrapLongitude(earth.x));
}

/// Grid lengths from the first point of the message to the middle of the grid.
Position toMiddle(Geometry const & g) noexcept
{
    Scan const scan = Scan::of(g.scan_flags);
    return {(scan.i_negative ? -0.5 : 0.5) * (g.nx - 1), (scan.j_positive ? 0.5 : -0.5) * (g.ny - 1)};
}

/// The step along one axis of a lat/lon grid: from its ends where they agree with the increment, because
/// increments are rounded more coarsely (to `rounding` degrees); else the increment that is given.
double stepBetween(double extent, double increment, double rounding, int count)
{
    if (count < 2)
        return increment > 0 ? increment : 1;
    double const step = extent / (count - 1);
    double const difference = std::abs(step - increment);
    bool const is_sound =
        step > 0 && (!(increment > 0) || difference * (count - 1) < increment / 2 || difference <= rounding);
    return is_sound ? step : increment;
}

/// The way eastward (or westward, as the grid is scanned) from the first to the last longitude, above 0; of
/// the full turns that it may have besides, the number that agrees with the increment.
double extentOfLongitude(Geometry const & g, bool is_negative)
{
    double const way = is_negative ? g.lon1 - g.lon2 : g.lon2 - g.lon1;
    double extent = std::fmod(std::fmod(way, 360.0) + 360.0, 360.0);
    double const expected = g.dx * (g.nx - 1);
    if ((extent == 0 && g.nx > 1) ||
        (g.dx > 0 && std::abs(extent + 360 - expected) < std::abs(extent - expected)))
        extent += 360;
    return extent;
}

std::string makeLatLon(Geometry const & g, DomainVal & val)
{
    if (!isLatitude(g.lat1) || !isLongitude(g.lon1))
        return "first point is not on the earth";
    Scan const scan = Scan::of(g.scan_flags);
    double const dx = stepBetween(extentOfLongitude(g, scan.i_negative), g.dx, g.rounding, g.nx);
    double const increment = g.kind == GridKind::GAUSSIAN ? std::nan("") : g.dy;
    double const dy =
        stepBetween(scan.j_positive ? g.lat2 - g.lat1 : g.lat1 - g.lat2, increment, g.rounding, g.ny);
    if (!(dx > 0) || !(dy > 0) || dx > 360 || dy > 180)
        return "spacing of the grid is not given";
    Position const middle = toMiddle(g);
    Position const centre{g.lon1 + middle.x * dx, g.lat1 + middle.y * dy};
    if (!isLatitude(centre.y))
        return "rows beyond a pole";
    val.proj = Domain::LATLON;
    setGrid(g, dx, dy, val);
    setCentre(centre, val);
    return {};
}

/// Lays the grid round its middle, given the projection and the plane's spacings.
std::string placeFromFirstPoint(Geometry const & g, double dx, double dy, DomainVal & val)
{
    if (!isLatitude(g.lat1) || !isLongitude(g.lon1))
        return "first point is not on the earth";
    if (!(dx > 0) || !(dy > 0) || !std::isfinite(dx) || !std::isfinite(dy))
        return "spacing of the grid is not given";
    setGrid(g, dx, dy, val);
    setCentre({g.lon1, g.lat1}, val);
    Domain const domain(val);
    auto const first = forward(domain, g.lat1, wrapLongitude(g.lon1));
    if (!first)
        return "first point lies outside the projection";
    Position const middle = toMiddle(g);
    auto const centre = inverse(domain, {first->x + middle.x * dx, first->y + middle.y * dy});
    if (!centre)
        return "middle of the grid lies outside the projection";
    setCentre(*centre, val);
    return {};
}

/// Lays a grid on an ellipsoid anew where its points meet those of the sphere's plane best: by least squares at three by three
/// of them. What the planes differ in beyond that, bent lines, is left. The grid stays where it was if it cannot be done.
void fitToEllipsoid(Geometry const & g, DomainVal & val)
{
    EllipsoidPlane const plane(g);
    Domain const domain(val);
    auto const first = plane.forward({g.lat1, g.lon1});
    Position const middle = toMiddle(g);
    Position const half{0.5 * (g.nx - 1) * g.dx, 0.5 * (g.ny - 1) * g.dy};
    Position sum;
    Position slope;
    for (int const u : {-1, 0, 1})
        for (int const v : {-1, 0, 1}) {
            auto const earth = plane.inverse(
                {first.x + middle.x * g.dx + u * half.x, first.y + middle.y * g.dy + v * half.y});
            auto const p = isLatitude(earth.lat) && std::isfinite(earth.lon)
                               ? forward(domain, earth.lat, wrapLongitude(earth.lon))
                               : std::nullopt;
            if (!p)
                return;
            sum = {sum.x + p->x, sum.y + p->y};
            slope = {slope.x + u * p->x, slope.y + v * p->y};
        }
    constexpr int POINTS = 9;
    constexpr int SQUARES = 6; // sum of u u
    double const dx = g.nx > 1 ? slope.x / SQUARES / (0.5 * (g.nx - 1)) : val.dx;
    double const dy = g.ny > 1 ? slope.y / SQUARES / (0.5 * (g.ny - 1)) : val.dy;
    auto const centre = inverse(domain, {sum.x / POINTS, sum.y / POINTS});
    if (!centre || !(dx > 0) || !(dy > 0))
        return;
    setGrid(g, dx, dy, val);
    setCentre(*centre, val);
}

/// Spacings in metres.
std::string makePlane(Geometry const & g, DomainVal & val)
{
    PlaneScale const scale = planeScale(g, g.lat1);
    std::string fault = placeFromFirstPoint(g, g.dx * scale.x, g.dy * scale.y, val);
    if (fault.empty() && g.minor_m < g.major_m)
        fitToEllipsoid(g, val);
    return fault;
}

std::string makePolar(Geometry const & g, DomainVal & val)
{
    if (!isLatitude(g.true_lat1) || !isLongitude(g.ref_lon))
        return "reference position is not on the earth";
    val.proj = Domain::PSTEREO;
    val.plat = g.is_south ? -90 : 90;
    val.plon = static_cast<float>(wrapLongitude(g.ref_lon));
    double const true_lat = std::abs(g.true_lat1);
    val.param[0] = static_cast<float>(g.is_south ? -true_lat : true_lat);
    return makePlane(g, val);
}

std::string makeConic(Geometry const & g, DomainVal & val)
{
    bool const has_cone = isLatitude(g.true_lat1) && isLatitude(g.true_lat2) &&
                          std::abs(g.true_lat1 + g.true_lat2) > 1e-6 && std::abs(g.true_lat1) < 90 &&
                          std::abs(g.true_lat2) < 90;
    if (!has_cone || !isLongitude(g.ref_lon))
        return format("standard parallels %g and %g", g.true_lat1, g.true_lat2);
    bool const is_south = g.true_lat1 + g.true_lat2 < 0;
    bool const has_reference = isLatitude(g.ref_lat) && g.ref_lat != 0 && (g.ref_lat < 0) == is_south;
    val.proj = g.kind == GridKind::LAMBERT ? Domain::LAMB : Domain::ALBERS;
    val.plat = static_cast<float>(has_reference ? g.ref_lat : (g.true_lat1 + g.true_lat2) / 2);
    val.plon = static_cast<float>(wrapLongitude(g.ref_lon));
    val.param[0] = static_cast<float>(g.true_lat1);
    val.param[1] = static_cast<float>(g.true_lat2);
    return makePlane(g, val);
}

std::string makeAzimuthal(Geometry const & g, DomainVal & val)
{
    if (!isLatitude(g.ref_lat) || !isLongitude(g.ref_lon))
        return "reference position is not on the earth";
    val.proj = Domain::LAMBAZ;
    val.plat = static_cast<float>(g.ref_lat);
    val.plon = static_cast<float>(wrapLongitude(g.ref_lon));
    return makePlane(g, val);
}

/// Spacings hold at the latitude of true scale; the plane's own are those at the equator. The orientation of
/// the grid is not looked at: the manual has none but 0, and centres write other numbers there.
std::string makeMercator(Geometry const & g, DomainVal & val)
{
    if (!isLatitude(g.true_lat1) || std::abs(g.true_lat1) > 89)
        return "latitude of true scale is not given";
    double const scale = planeScale(g, g.true_lat1).x / std::cos(g.true_lat1 / DEGREES);
    double const turn = toMiddle(g).x * g.dx * scale / Domain::earth_rad * DEGREES;
    if (!std::isfinite(turn) || std::abs(turn) > 180.001)
        return "grid of more than one turn";
    val.proj = Domain::MERC;
    val.plat = 0;
    val.plon = static_cast<float>(wrapLongitude(g.lon1 + turn));
    PlaneScale const local = planeScale(g, g.lat1);
    return placeFromFirstPoint(g, g.dx * scale, g.dy * scale * local.y / local.x, val);
}

/// Scan angles are the plane. The apparent diameter of the earth is given in grid lengths, in y that of the
/// polar axis.
std::string makeSpaceView(Geometry const & g, DomainVal & val)
{
    if (!isLatitude(g.ref_lat) || !isLongitude(g.ref_lon) || !(g.height > 1) || !(g.x_angle > 0) ||
        !(g.y_angle > 0))
        return "view from space without its height or the size of the earth";
    if (g.orientation != 0)
        return format("view from space turned by %g degrees", g.orientation);
    double const diameter = 2 * std::asin(1 / g.height);
    double const dx = diameter / g.x_angle;
    double const dy = diameter / g.y_angle * (g.minor_m / g.major_m);
    val.proj = Domain::SAT;
    val.ellipse = g.minor_m < g.major_m;
    val.plat = static_cast<float>(g.ref_lat);
    val.plon = static_cast<float>(wrapLongitude(g.ref_lon));
    val.param[0] = static_cast<float>(g.height * (val.ellipse ? Domain::earth_maj : Domain::earth_rad));
    setGrid(g, dx, dy, val);
    setCentre({g.ref_lon, g.ref_lat}, val);
    Scan const scan = Scan::of(g.scan_flags);
    double const columns = 0.5 * (g.nx - 1) - (g.x_sub - g.x_origin);
    double const rows = 0.5 * (g.ny - 1) - (g.y_sub - g.y_origin);
    auto const centre = inverse(
        Domain(val), {(scan.i_negative ? -columns : columns) * dx, (scan.j_positive ? rows : -rows) * dy});
    if (!centre)
        return "middle of the picture is not on the earth";
    setCentre(*centre, val);
    return {};
}

/// What makes the domain of each kind of grid.
constexpr std::pair<GridKind, std::string (*)(Geometry const &, DomainVal &)> MAKERS[] = {
    {GridKind::LATLON, makeLatLon},       {GridKind::GAUSSIAN, makeLatLon},
    {GridKind::MERCATOR, makeMercator},   {GridKind::POLAR, makePolar},
    {GridKind::LAMBERT, makeConic},       {GridKind::ALBERS, makeConic},
    {GridKind::AZIMUTHAL, makeAzimuthal}, {GridKind::SPACE_VIEW, makeSpaceView},
};

} // namespace

std::string makeDomain(Geometry const & geometry, DomainVal & domain)
{
    for (auto const & [kind, make] : MAKERS) {
        if (kind != geometry.kind)
            continue;
        DomainVal made;
        std::string fault = make(geometry, made);
        if (fault.empty())
            domain = made;
        return fault;
    }
    return "no grid";
}

} // namespace Yul::detail::grib
