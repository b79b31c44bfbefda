// Stations and cities by identifier.
#pragma once

#include "core/Const.h"
#include "core/String.h"
#include "geo/EarthPoint.h"

#include <memory>

namespace Yul {

namespace detail {
class LookupFile;
}

/// One station or city.
class CityData
{
public:
    /// The identifier as the file has it; valid until the station changes, as all texts of it.
    [[nodiscard]] char const * getId() const noexcept { return id.get(); }

    /// The name, empty where the file has none.
    [[nodiscard]] char const * getName() const noexcept { return name.get(); }

    /// The country or state as the file has it.
    [[nodiscard]] char const * getCountry() const noexcept { return country.get(); }

    /// Degrees, north and east positive.
    [[nodiscard]] EarthPoint const & getLocation() const noexcept { return location; }

    /// Latitude, degrees north.
    [[nodiscard]] float getLat() const noexcept { return location.lat; }

    /// Longitude, degrees east.
    [[nodiscard]] float getLon() const noexcept { return location.lon; }

    /// Metres above the sea; Const::MISS where it is not known.
    [[nodiscard]] float getElev() const noexcept { return elevation; }

    /// The same, open to change.
    String id;
    String name;
    String country;
    EarthPoint location;
    float elevation = Const::MISS;
};

/// A file of stations or cities, read once in a run and looked up by identifier.
///
/// The file holds one station a line, "identifier,latitude,longitude,elevation,country,name"; lines that begin
/// with "#" are comments, the elevation may be empty and the name may hold commas. Lines that are not of this form
/// hold no station. A name that the database directory has is read from there, any other as it stands.
class CityFile
{
public:
    /// The file of stations that domain texts use when they name no other.
    static constexpr char const * DEFAULT_NAME = "sao.cty";

    CityFile() = default;
    /// Opens the file; the list is empty when it cannot be read.
    explicit CityFile(char const * file_name);

    /// Reads the file, or takes it over when it was read before and has not changed since. Returns 0 when it
    /// cannot be read; the list is empty then.
    int open(char const * file_name);

    /// Number of lines, those without a station included.
    [[nodiscard]] int getNum() const;

    /// Line i in the order of the file, 0 is the first; returns 0 and leaves `city` alone for another index and for a
    /// line that is not of the form.
    int get(int i, CityData & city) const;

    /// The station with that identifier, whatever the case of its letters; returns 0 and leaves `city` alone when
    /// there is none. The first of several counts.
    int find(char const * id, CityData & city) const;

private:
    std::shared_ptr<detail::LookupFile const> table;
};

} // namespace Yul
