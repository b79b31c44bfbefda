#include "geo/projection/Kernel.h"

#include "geo/Domain.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace Yul::detail {

namespace {

bool areFinite(std::initializer_list<double> numbers)
{
    return std::all_of(numbers.begin(), numbers.end(), [](double x) { return std::isfinite(x); });
}

bool isCone(double cone, double scale)
{
    return areFinite({cone, scale}) && cone != 0 && scale != 0;
}

/// A kernel of a cone; none where the cone is flat or has no size.
template <class Cone> Kernel coneOrNone(Cone const & k)
{
    return isCone(k.cone, k.scale) ? Kernel(k) : NoPlane{};
}

Kernel makeSatelliteKernel(DomainVal const & val, double distance, EarthFigure const & earth)
{
    double const major = val.ellipse ? earth.major : earth.radius;
    double const minor = val.ellipse ? earth.minor : earth.radius;
    if (!(distance > major) || !areFinite({distance}))
        return NoPlane{};
    return makeSatellite(val.plat, val.plon, distance, major, minor);
}

Kernel makeMapKernel(
    DomainVal const & val, double std_lat1, double std_lat2, double distance, EarthFigure const & earth)
{
    double const plat = val.plat;
    double const plon = val.plon;
    bool const has_ellipsoid = earth.minor > 0 && earth.minor <= earth.major && areFinite({earth.major});
    if (std::fabs(std_lat1) > 90 || std::fabs(std_lat2) > 90 || (val.ellipse && !has_ellipsoid))
        return NoPlane{};
    switch (val.proj) {
    case Domain::LATLON:
        return LatLon{plon};
    case Domain::PSTEREO:
    case Domain::RADIAL: {
        auto const k = val.proj == Domain::RADIAL ? makeRadial(plat, plon, std_lat1, earth.radius)
                                                  : makeStereographic(plat, plon, std_lat1, earth.radius);
        return k.unit > 0 ? Kernel(k) : NoPlane{};
    }
    case Domain::MERC: {
        if (!val.ellipse)
            return makeMercator(plon, earth.radius);
        auto const k = makeMercatorEllipsoid(plon, std_lat1, earth.major, earth.minor);
        return k.equator > 0 ? Kernel(k) : NoPlane{};
    }
    case Domain::LAMB:
        return coneOrNone(makeLambertConformal(plat, plon, std_lat1, std_lat2, earth.radius));
    case Domain::ALBERS:
        return coneOrNone(makeAlbers(plat, plon, std_lat1, std_lat2, earth.radius));
    case Domain::ORTHO:
        return Orthographic{makeAspect(plat, plon), earth.radius, 1 / earth.radius};
    case Domain::GNOM:
        return Gnomonic{makeAspect(plat, plon), earth.radius};
    case Domain::MOLL:
        return Mollweide{earth.radius, plon};
    case Domain::LAMBAZ:
        return LambertAzimuthal{makeAspect(plat, plon), earth.radius, 1 / earth.radius};
    case Domain::SAT:
        return makeSatelliteKernel(val, distance, earth);
    default:
        return NoPlane{};
    }
}

Kernel makeDiagramKernel(int proj)
{
    switch (proj) {
    case Domain::PIXEL:
    case Domain::XY:
    case Domain::XZ:
    case Domain::CAT:
        return Cartesian{};
    case Domain::XP:
        return PressureAxis{};
    case Domain::XLOGP:
    case Domain::EMA:
        return LogPressure{0};
    case Domain::SKEWT:
        return LogPressure{SKEW_T};
    case Domain::POLAR:
        return Polar{};
    case Domain::STUVE:
        return Stuve{};
    case Domain::TEPH:
        return Tephigram{};
    case Domain::RTEPH:
        return RotatedTephigram{};
    default:
        return NoPlane{};
    }
}

} // namespace

Kernel makeKernel(
    DomainVal const & val, double std_lat1, double std_lat2, double distance, EarthFigure const & earth)
{
    if (!val.isMap())
        return makeDiagramKernel(val.proj);
    bool const is_usable = val.plat >= -90 && val.plat <= 90 && std::fabs(val.plon) <= MOST_TURNS &&
                           earth.radius > 0 && areFinite({earth.radius, std_lat1, std_lat2});
    return is_usable ? makeMapKernel(val, std_lat1, std_lat2, distance, earth) : NoPlane{};
}

} // namespace Yul::detail
