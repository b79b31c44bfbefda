// Scattered reports: stations with a location and the values of several fields.
#pragma once

#include "geo/EarthPoint.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace Yul {

/// Reports of scattered stations: each has a location and one value of each field (temperature, pressure ...).
///
/// Stations and fields count from 0. A value that was not set is missing (Const::MISS), and so is NaN; infinite
/// values are not taken. Setters return 1, or 0 and change nothing for bad input.
class StationData
{
public:
    /// The most fields that a data set can have: as many as there can be grids in a list.
    static constexpr int MAX_FIELDS = 1000000;

    /// No stations yet. A number of fields below 0 or above MAX_FIELDS gives a data set without fields, and a
    /// warning.
    explicit StationData(int fields);

    /// Drops all stations; the fields and their names stay.
    int clear();

    /// Adds a station without values: a latitude and longitude in degrees. Returns its index, or -1 with a
    /// warning when memory is short. A station that has no place in a domain takes no part in the analysis
    /// there.
    int add(EarthPoint const & location);
    /// Adds a station for every pair of latitude and longitude. Returns the index of the first, or -1 with a
    /// warning when the arrays differ in length or memory is short.
    int add(std::span<float const> lats, std::span<float const> lons);

    /// NaN becomes missing. 0, and the value stays, for an infinite one and for a station or a field that there is not.
    int setValue(int station, int field, float value);
    /// One field of all stations in their order; infinite values become missing. 0 with a warning when there
    /// is no such field or another number of stations.
    int setValues(int field, std::span<float const> column);

    /// Missing for a station or a field that there is not.
    [[nodiscard]] float getValue(int station, int field) const noexcept;

    /// Number of stations.
    [[nodiscard]] int getNum() const noexcept { return locations.getNum(); }

    /// Number of fields.
    [[nodiscard]] int getFields() const noexcept { return num_fields; }

    /// The station's own location, valid until stations are added; a missing one for a station that there is not.
    [[nodiscard]] EarthPoint & getLocation(int station) { return locations.get(station); }

    /// All locations in the order of the stations.
    [[nodiscard]] EarthPoints const & getLocations() const noexcept { return locations; }

    /// The name of a field, by habit a variable as "TMP" or "TMP[C]". It stands in the messages of an analysis
    /// and becomes the variable of the grid. Empty while not set.
    int setName(int field, char const * text);
    [[nodiscard]] char const * getName(int field) const noexcept;

private:
    [[nodiscard]] bool hasField(int field) const noexcept { return field >= 0 && field < num_fields; }

    [[nodiscard]] bool hasStation(int station) const noexcept { return station >= 0 && station < getNum(); }

    [[nodiscard]] std::size_t indexOf(int station, int field) const noexcept
    {
        return static_cast<std::size_t>(station) * static_cast<std::size_t>(num_fields) +
               static_cast<std::size_t>(field);
    }

    int grow(std::size_t count);

    int num_fields = 0;
    EarthPoints locations;
    std::vector<float> values; // station by station, see indexOf
    std::vector<std::string> names;
};

} // namespace Yul
