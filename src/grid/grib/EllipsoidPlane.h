// Projection planes of the ellipsoid.
#pragma once

#include "grid/grib/Field.h"

namespace Yul::detail::grib {

/// The plane of a polar stereographic, conic or azimuthal equal-area grid on the ellipsoid of its message, in metres, x to the
/// east along the reference meridian's normal and y to the north along it. Latitudes and longitudes are in degrees; what lies
/// outside comes as NaN.
/// Source: J. P. Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395, 1987, sections 14, 15, 21, 24.
class EllipsoidPlane
{
public:
    struct Point
    {
        double x = 0;
        double y = 0;
    };

    struct Earth
    {
        double lat = 0;
        double lon = 0;
    };

    explicit EllipsoidPlane(Geometry const & geometry) noexcept;

    [[nodiscard]] Point forward(Earth earth) const noexcept;
    [[nodiscard]] Earth inverse(Point point) const noexcept;

private:
    void setConformal(Geometry const & g) noexcept;
    void setAlbers(Geometry const & g) noexcept;
    void setAzimuthal(Geometry const & g) noexcept;
    [[nodiscard]] double radiusOf(double lat) const noexcept;
    [[nodiscard]] double latitudeAt(double radius) const noexcept;
    [[nodiscard]] double parallel(double lat) const noexcept;
    [[nodiscard]] double conformal(double lat) const noexcept;
    [[nodiscard]] double area(double lat) const noexcept;
    [[nodiscard]] double latitudeOfArea(double q) const noexcept;

    GridKind kind;
    double major;
    double e;            ///< eccentricity
    double sign = 1;     ///< -1 for a cone round the south pole
    double lon0;         ///< radians
    double cone = 1;     ///< cone constant
    double factor = 1;   ///< of the radius on the cone, metres
    double constant = 0; ///< Albers' C
    double pole_area;    ///< q of the pole
    double sine = 0;     ///< azimuthal: of the authalic latitude of the centre
    double cosine = 0;
    double ratio = 1; ///< azimuthal: Snyder's D
};

} // namespace Yul::detail::grib
