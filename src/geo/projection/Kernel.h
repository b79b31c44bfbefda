// The projection of a domain as constants for its formulas.
#pragma once

#include "geo/DomainVal.h"
#include "geo/projection/Albers.h"
#include "geo/projection/Azimuthal.h"
#include "geo/projection/Diagram.h"
#include "geo/projection/LambertConformal.h"
#include "geo/projection/LatLon.h"
#include "geo/projection/Mercator.h"
#include "geo/projection/Mollweide.h"
#include "geo/projection/Satellite.h"
#include "geo/projection/Stereographic.h"

#include <type_traits>
#include <variant>

namespace Yul::detail {

/// The earth's dimensions, units of 100 km. As long as they are not known they equal no earth, not even each other.
struct EarthFigure
{
    double radius = math::NONE;
    double major = math::NONE;
    double minor = math::NONE;

    bool operator==(EarthFigure const &) const = default;
};

/// No projection, or one whose parameters allow no plane: nothing has an image.
struct NoPlane
{
};

[[nodiscard]] inline Plane forward(NoPlane, double, double) noexcept
{
    return {math::NONE, math::NONE};
}

[[nodiscard]] inline Position inverse(NoPlane, double, double) noexcept
{
    return {math::NONE, math::NONE};
}

/// The constants of one projection. Each alternative has the pure functions `forward`, `inverse` and, for map
/// projections, `distortion`.
using Kernel = std::variant<NoPlane,
                            LatLon,
                            Stereographic,
                            Mercator,
                            MercatorEllipsoid,
                            LambertConformal,
                            Albers,
                            LambertAzimuthal,
                            Orthographic,
                            Gnomonic,
                            Mollweide,
                            Satellite,
                            Cartesian,
                            PressureAxis,
                            LogPressure,
                            Polar,
                            Stuve,
                            Tephigram,
                            RotatedTephigram>;

/// Whether a kernel projects the earth, so that its positions are latitudes and longitudes.
template <class K, class = void> inline constexpr bool IS_MAP = false;
template <class K>
inline constexpr bool IS_MAP<K, std::void_t<decltype(distortion(std::declval<K>(), 0.0, 0.0))>> = true;

/// Whether its formulas take nothing but sines and cosines of the longitude, so that it may be any number of turns.
template <class K> inline constexpr bool IS_PERIODIC = false;
template <> inline constexpr bool IS_PERIODIC<Stereographic> = true;
template <> inline constexpr bool IS_PERIODIC<LambertAzimuthal> = true;
template <> inline constexpr bool IS_PERIODIC<Orthographic> = true;
template <> inline constexpr bool IS_PERIODIC<Gnomonic> = true;
template <> inline constexpr bool IS_PERIODIC<Satellite> = true;

/// The constants for a record whose reference position is filled in; NoPlane where its numbers allow no plane.
/// std_lat1, std_lat2  standard latitudes, degrees
/// distance            of a satellite from the earth's centre, units of 100 km
[[nodiscard]] Kernel makeKernel(
    DomainVal const & val, double std_lat1, double std_lat2, double distance, EarthFigure const & earth);

/// One position to the plane; not-a-number where there is no image. On maps it checks the ranges of latitude and
/// longitude and brings the longitude within half a turn by one step of 360.
template <class K> [[nodiscard]] inline Plane project(K const & k, double lat, double lon) noexcept
{
    if constexpr (!IS_MAP<K>)
        return forward(k, lat, lon);
    double const checked_lat = std::fabs(lat) <= 90 ? lat : math::NONE;
    double const checked_lon = std::fabs(lon) <= MOST_TURNS ? lon : math::NONE;
    return forward(k, checked_lat, IS_PERIODIC<K> ? checked_lon : math::oneTurn(checked_lon));
}

/// One point of the plane to the earth; longitudes come out within half a turn.
template <class K> [[nodiscard]] inline Position unproject(K const & k, double x, double y) noexcept
{
    Position const p = inverse(k, x, y);
    return IS_MAP<K> ? Position{p.lat, math::halfTurn(p.lon)} : p;
}

} // namespace Yul::detail
