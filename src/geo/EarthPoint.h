// Positions on the earth.
#pragma once

#include "core/Const.h"
#include "geo/List.h"

namespace Yul {

/// A position on the earth: latitude (north positive) and longitude (east positive) in degrees. Both
/// coordinates start as Const::MISS.
class EarthPoint
{
public:
    EarthPoint() = default;

    /// Degrees, north and east positive; Const::MISS for missing.
    EarthPoint(float lat_value, float lon_value) : lat(lat_value), lon(lon_value) {}

    /// Takes both as they stand, in degrees. Returns 1.
    int set(float lat_value, float lon_value)
    {
        lat = lat_value;
        lon = lon_value;
        return 1;
    }

    /// Latitude, degrees north.
    [[nodiscard]] float getLat() const noexcept { return lat; }

    /// Longitude, degrees east.
    [[nodiscard]] float getLon() const noexcept { return lon; }

    /// True when neither coordinate is missing.
    [[nodiscard]] bool isSet() const noexcept { return !detail::isMissing(lat) && !detail::isMissing(lon); }

    float lat = Const::MISS; ///< degrees north
    float lon = Const::MISS; ///< degrees east
};

class EarthPoints : public detail::List<EarthPoint>
{
};

} // namespace Yul
