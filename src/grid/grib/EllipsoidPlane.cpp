#include "grid/grib/EllipsoidPlane.h"

#include <cmath>
#include <numbers>

namespace Yul::detail::grib {
namespace {

constexpr double RADIANS = std::numbers::pi / 180;
constexpr double QUARTER = std::numbers::pi / 2;
constexpr int STEPS = 8; // each gains two digits at least

} // namespace

EllipsoidPlane::EllipsoidPlane(Geometry const & g) noexcept
    : kind(g.kind), major(g.major_m), e(std::sqrt(1 - (g.minor_m / g.major_m) * (g.minor_m / g.major_m))),
      lon0(g.ref_lon * RADIANS), pole_area(area(QUARTER))
{
    if (kind == GridKind::AZIMUTHAL)
        setAzimuthal(g);
    else if (kind == GridKind::ALBERS)
        setAlbers(g);
    else
        setConformal(g);
}

/// Cosine of the latitude, times the radius of curvature across the meridian, in major axes.
double EllipsoidPlane::parallel(double lat) const noexcept
{
    double const s = e * std::sin(lat);
    return std::cos(lat) / std::sqrt(1 - s * s);
}

/// Tangent of half the conformal distance from the pole.
double EllipsoidPlane::conformal(double lat) const noexcept
{
    double const s = e * std::sin(lat);
    return std::tan((QUARTER - lat) / 2) * std::pow((1 + s) / (1 - s), e / 2);
}

/// Area between the equator and the latitude, Snyder's q.
double EllipsoidPlane::area(double lat) const noexcept
{
    double const s = e * std::sin(lat);
    return (1 - e * e) / e * (s / (1 - s * s) + std::atanh(s));
}

double EllipsoidPlane::latitudeOfArea(double q) const noexcept
{
    double lat = std::asin(std::fmin(1, std::fmax(-1, q / pole_area)));
    for (int step = 0; step < STEPS && std::abs(lat) < QUARTER - 1e-9; ++step) {
        double const s = e * std::sin(lat);
        double const w = 1 - s * s;
        lat += (q - area(lat)) * w * w / (2 * (1 - e * e) * std::cos(lat));
    }
    return lat;
}

/// Polar stereographic grids are cones of constant 1 with one parallel.
void EllipsoidPlane::setConformal(Geometry const & g) noexcept
{
    bool const is_polar = kind == GridKind::POLAR;
    sign = is_polar ? (g.is_south ? -1 : 1) : g.true_lat1 + g.true_lat2 < 0 ? -1 : 1;
    double const lat1 = is_polar ? std::abs(g.true_lat1) * RADIANS : sign * g.true_lat1 * RADIANS;
    double const lat2 = is_polar ? lat1 : sign * g.true_lat2 * RADIANS;
    double const t1 = conformal(lat1);
    if (!is_polar)
        cone = std::abs(lat1 - lat2) < 1e-9
                   ? std::sin(lat1)
                   : std::log(parallel(lat1) / parallel(lat2)) / std::log(t1 / conformal(lat2));
    bool const is_at_pole = is_polar && QUARTER - lat1 < 1e-6;
    factor = major * (is_at_pole ? 2 / std::sqrt(std::pow(1 + e, 1 + e) * std::pow(1 - e, 1 - e))
                                 : parallel(lat1) / (cone * std::pow(t1, cone)));
}

void EllipsoidPlane::setAlbers(Geometry const & g) noexcept
{
    sign = g.true_lat1 + g.true_lat2 < 0 ? -1 : 1;
    double const lat1 = sign * g.true_lat1 * RADIANS;
    double const lat2 = sign * g.true_lat2 * RADIANS;
    double const m1 = parallel(lat1);
    double const m2 = parallel(lat2);
    cone = std::abs(lat1 - lat2) < 1e-9 ? std::sin(lat1) : (m1 * m1 - m2 * m2) / (area(lat2) - area(lat1));
    constant = m1 * m1 + cone * area(lat1);
    factor = major / cone;
}

void EllipsoidPlane::setAzimuthal(Geometry const & g) noexcept
{
    double const lat = g.ref_lat * RADIANS;
    sine = area(lat) / pole_area;
    cosine = std::sqrt(std::fmax(0, 1 - sine * sine));
    factor = major * std::sqrt(pole_area / 2);
    ratio = cosine > 1e-9 ? major * parallel(lat) / (factor * cosine) : 1;
}

/// Distance of a parallel from the tip of the cone.
double EllipsoidPlane::radiusOf(double lat) const noexcept
{
    return kind == GridKind::ALBERS ? factor * std::sqrt(constant - cone * area(lat))
                                    : factor * std::pow(conformal(lat), cone);
}

double EllipsoidPlane::latitudeAt(double radius) const noexcept
{
    double const scaled = radius / factor;
    if (kind == GridKind::ALBERS)
        return latitudeOfArea((constant - scaled * scaled) / cone);
    double const t = std::pow(scaled, 1 / cone);
    double lat = QUARTER - 2 * std::atan(t);
    for (int step = 0; step < STEPS; ++step) {
        double const s = e * std::sin(lat);
        lat = QUARTER - 2 * std::atan(t * std::pow((1 - s) / (1 + s), e / 2));
    }
    return lat;
}

EllipsoidPlane::Point EllipsoidPlane::forward(Earth earth) const noexcept
{
    double const lat = earth.lat * RADIANS;
    double const lon = std::remainder(earth.lon * RADIANS - lon0, 4 * QUARTER);
    if (kind == GridKind::AZIMUTHAL) {
        double const beta = area(lat) / pole_area;
        double const across = std::sqrt(std::fmax(0, 1 - beta * beta));
        double const b = factor * std::sqrt(2 / (1 + sine * beta + cosine * across * std::cos(lon)));
        return {b * ratio * across * std::sin(lon),
                b / ratio * (cosine * beta - sine * across * std::cos(lon))};
    }
    double const radius = radiusOf(sign * lat);
    return {radius * std::sin(cone * lon), -sign * radius * std::cos(cone * lon)};
}

EllipsoidPlane::Earth EllipsoidPlane::inverse(Point p) const noexcept
{
    if (kind == GridKind::AZIMUTHAL) {
        double const x = p.x / ratio;
        double const y = p.y * ratio;
        double const distance = std::hypot(x, y);
        double const angle = 2 * std::asin(distance / (2 * factor));
        double const beta =
            std::cos(angle) * sine + (distance > 0 ? y * std::sin(angle) * cosine / distance : 0);
        double const lon =
            std::atan2(x * std::sin(angle), distance * cosine * std::cos(angle) - y * sine * std::sin(angle));
        return {latitudeOfArea(beta * pole_area) / RADIANS, (lon0 + lon) / RADIANS};
    }
    double const angle = std::atan2(p.x, -sign * p.y);
    return {sign * latitudeAt(std::hypot(p.x, p.y)) / RADIANS, (lon0 + angle / cone) / RADIANS};
}

} // namespace Yul::detail::grib
