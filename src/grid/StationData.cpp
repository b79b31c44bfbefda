#include "grid/StationData.h"

#include "core/Const.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/GridData.h"

#include <cmath>
#include <exception>
#include <iterator>
#include <limits>
#include <new>

namespace Yul {
namespace {

constexpr float MISSING = Const::MISS;

} // namespace

StationData::StationData(int fields)
{
    if (fields < 0 || fields > MAX_FIELDS)
        Yul::outWarning("StationData: Invalid number of fields: %d\n", fields);
    else
        num_fields = fields;
}

int StationData::clear()
{
    values.clear();
    return locations.clear();
}

/// Makes room for more stations, their locations and values missing. Returns the index of the first.
int StationData::grow(std::size_t count)
{
    auto & places = locations.all();
    auto const first = places.size();
    if (count > static_cast<std::size_t>(std::numeric_limits<int>::max()) - first) {
        Yul::outWarning("StationData::add: Too many stations\n");
        return -1;
    }
    auto const fields = static_cast<std::size_t>(num_fields);
    auto const most = detail::GridData::most() / 2; // the values may lie in memory twice while they move
    try {
        if (fields > 0 && first + count > most / fields)
            throw std::bad_alloc();
        values.resize((first + count) * fields, MISSING);
        places.resize(first + count);
    } catch (std::exception const &) {
        values.resize(first * fields);
        Yul::outWarning("StationData::add: Not enough memory\n");
        return -1;
    }
    return static_cast<int>(first);
}

int StationData::add(EarthPoint const & location)
{
    auto const copy = location; // it may be one of ours
    auto const station = grow(1);
    if (station >= 0)
        locations.all().back() = copy;
    return station;
}

int StationData::add(std::span<float const> lats, std::span<float const> lons)
{
    if (lats.size() != lons.size()) {
        Yul::outWarning("StationData::add: %ld latitudes and %ld longitudes\n", std::ssize(lats),
                        std::ssize(lons));
        return -1;
    }
    auto const first = grow(lats.size());
    if (first < 0)
        return first;
    auto * const added = locations.all().data() + first;
    for (std::size_t i = 0; i < lats.size(); ++i)
        added[i].set(lats[i], lons[i]);
    return first;
}

int StationData::setValue(int station, int field, float value)
{
    if (!hasStation(station) || !hasField(field) || std::isinf(value))
        return 0;
    values[indexOf(station, field)] = std::isnan(value) ? MISSING : value;
    return 1;
}

int StationData::setValues(int field, std::span<float const> column)
{
    if (!hasField(field)) {
        Yul::outWarning("StationData::setValues: No such field: %d\n", field);
        return 0;
    }
    if (column.size() != locations.all().size()) {
        Yul::outWarning("StationData::setValues: %ld values for %d stations\n", std::ssize(column), getNum());
        return 0;
    }
    for (int station = 0; station < getNum(); ++station) {
        auto const value = column[static_cast<std::size_t>(station)];
        values[indexOf(station, field)] = std::isfinite(value) ? value : MISSING;
    }
    return 1;
}

float StationData::getValue(int station, int field) const noexcept
{
    return hasStation(station) && hasField(field) ? values[indexOf(station, field)] : MISSING;
}

int StationData::setName(int field, char const * text)
{
    if (!hasField(field))
        return 0;
    auto const at = static_cast<std::size_t>(field);
    if (at >= names.size())
        names.resize(at + 1);
    names[at] = detail::viewOf(text);
    return 1;
}

char const * StationData::getName(int field) const noexcept
{
    return hasField(field) && static_cast<std::size_t>(field) < names.size()
               ? names[static_cast<std::size_t>(field)].c_str()
               : "";
}

} // namespace Yul
