#include "geo/CityFile.h"

#include "core/StrLib.h"
#include "geo/DomainText.h"
#include "geo/LookupFile.h"

#include <array>

namespace Yul {

namespace {

/// Reads "latitude,longitude,elevation,country,name"; false when it has not that form.
bool decodeCity(detail::LookupFile::Entry const & entry, CityData & city)
{
    std::array<std::string_view, 5> fields;
    std::string_view rest = entry.value;
    for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
        std::size_t const comma = rest.find(',');
        if (comma == std::string_view::npos)
            return false;
        fields[i] = detail::trimmed(rest.substr(0, comma));
        rest.remove_prefix(comma + 1);
    }
    fields.back() = detail::trimmed(rest);
    auto const lat = detail::readFloat(fields[0]);
    auto const lon = detail::readFloat(fields[1]);
    if (!lat || !lon || !(*lat >= -90 && *lat <= 90) || !(*lon >= -360 && *lon <= 360))
        return false;
    city.id.assign(entry.key);
    city.location.set(*lat, *lon);
    city.elevation = detail::readFloat(fields[2]).value_or(static_cast<float>(Const::MISS));
    city.country.assign(fields[3]);
    city.name.assign(fields[4]);
    return true;
}

} // namespace

CityFile::CityFile(char const * file_name)
{
    open(file_name);
}

int CityFile::open(char const * file_name)
{
    table = detail::LookupFile::open(file_name, ',');
    return table != nullptr ? 1 : 0;
}

int CityFile::getNum() const
{
    return table != nullptr ? static_cast<int>(table->entries().size()) : 0;
}

int CityFile::get(int i, CityData & city) const
{
    CityData next;
    if (i < 0 || i >= getNum() || !decodeCity(table->entries()[static_cast<std::size_t>(i)], next))
        return 0;
    city = next;
    return 1;
}

int CityFile::find(char const * id, CityData & city) const
{
    auto const * const entry = table != nullptr ? table->find(detail::viewOf(id)) : nullptr;
    CityData next;
    if (entry == nullptr || !decodeCity(*entry, next))
        return 0;
    city = next;
    return 1;
}

} // namespace Yul
