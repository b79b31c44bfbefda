// A range of latitudes and longitudes.
#pragma once

#include "geo/EarthPoint.h"

#include <algorithm>

namespace Yul {

/// A range of latitudes and longitudes, degrees. The range of longitudes runs eastward from `lon1` to `lon2`, over
/// the 180 degree meridian where lon1 > lon2. All four start as Const::MISS.
class EarthRange
{
public:
    EarthRange() = default;

    /// Degrees.
    EarthRange(float south, float west, float north, float east) { set(south, west, north, east); }

    /// Latitudes in any order, longitudes from west to east.
    int set(float south, float west, float north, float east)
    {
        lat1 = std::min(south, north);
        lat2 = std::max(south, north);
        lon1 = west;
        lon2 = east;
        return 1;
    }

    /// From its corners. Returns 1.
    int set(EarthPoint const & south_west, EarthPoint const & north_east)
    {
        return set(south_west.lat, south_west.lon, north_east.lat, north_east.lon);
    }

    /// True when no end is missing.
    [[nodiscard]] bool isSet() const noexcept
    {
        return !detail::isMissing(lat1) && !detail::isMissing(lon1) && !detail::isMissing(lat2) &&
               !detail::isMissing(lon2);
    }

    /// 1 when the position lies in the range, ends included.
    [[nodiscard]] int within(EarthPoint const & point) const noexcept
    {
        if (!isSet() || !point.isSet() || !(point.lat >= lat1 && point.lat <= lat2))
            return 0;
        bool const after = point.lon >= lon1;
        bool const before = point.lon <= lon2;
        return (lon1 <= lon2 ? after && before : after || before) ? 1 : 0;
    }

    float lat1 = Const::MISS; ///< southern end
    float lon1 = Const::MISS; ///< western end
    float lat2 = Const::MISS; ///< northern end
    float lon2 = Const::MISS; ///< eastern end
};

} // namespace Yul
