#include "geo/DomainTool.h"

#include "core/StrLib.h"
#include "core/Yul.h"
#include "geo/CityFile.h"
#include "geo/Domain.h"
#include "geo/DomainText.h"
#include "geo/LookupFile.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace Yul {

namespace {

using Fields = std::vector<std::string_view>;

constexpr char const * REGION_FILE = "yul.reg";
constexpr int MOST_REGIONS = 8; ///< regions may name regions this deep

/// Key templates in the order in which they are tried; the first that takes every field wins.
constexpr std::string_view TEMPLATES[] = {
    "proj,clat,clon,nx,ny,dx,dy",
    "proj,id,nx,ny,dx,dy",
    "proj,clat,clon,dx,dy",
    "proj,clat,clon,nx,ny,dx",
    "clat,clon,nx,ny,dx,dy",
    "proj,clat,clon,dx,dy", // kept: the third template is met first
    "clat,clon,nx,ny,dx",
    "proj,id,dx,dy",
    "proj,clat,clon,dx",
    "clat,clon,nx,ny",
    "clat,clon,dx",
    "proj,clat,clon",
    "clat,clon",
    "id,dx",
    "id",
};

/// The standard skew-T diagram: 1050 to 100 hPa by 80 kelvin.
constexpr int SKEWT_POINTS = 101;
constexpr float SKEWT_DX = 0.8F;
constexpr float SKEWT_SHAPE = 0.0293922F; ///< dy / dx: ln(1050 / 100) over 80

/// A new projection shows this much more than the extent of the one before.
constexpr float NEW_EXTENT = 1.2F;

bool decodeProj(DomainVal & val, std::string_view text)
{
    Fields fields = detail::split(text, ':');
    int const proj = Domain::getProj(std::string(detail::trimmed(fields.front())).c_str());
    if (proj == Domain::UNKNOWN || detail::isMissing(proj))
        return false;
    DomainVal next = val;
    next.proj = proj;
    next.ellipse = false;
    next.plat = next.plon = Const::MISS;
    std::fill(std::begin(next.param), std::end(next.param), Const::MISS);
    fields.erase(fields.begin());
    if (!fields.empty() && detail::sameIgnoringCase(detail::trimmed(fields.front()), "e")) {
        next.ellipse = true;
        fields.erase(fields.begin());
    }
    std::vector<float *> targets{&next.plat, &next.plon};
    for (float & parameter : next.param)
        targets.push_back(&parameter);
    if (fields.size() == 1)
        targets.erase(targets.begin()); // a lone number is the longitude
    if (fields.size() > targets.size())
        return false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (detail::trimmed(fields[i]).empty())
            continue; // not given
        auto const number = detail::readFloat(fields[i]);
        if (!number)
            return false;
        *targets[i] = *number;
    }
    val = next;
    return true;
}

bool decodeStation(DomainVal & val, std::string_view text)
{
    std::string file = CityFile::DEFAULT_NAME;
    std::string id(text);
    if (detail::startsIgnoringCase(text, "id:")) {
        id = text.substr(3);
        if (std::size_t const colon = id.rfind(':'); colon != std::string::npos) {
            file = id.substr(0, colon);
            id.erase(0, colon + 1);
        }
    } else if (!StrLib::match(id.c_str(), "uuuu")) {
        return false;
    }
    CityFile const cities(file.c_str());
    CityData city;
    if (!cities.find(id.c_str(), city)) {
        Yul::outWarning("DomainTool::setParam: Unable to find: %s\n", std::string(text).c_str());
        return false;
    }
    val.clat = city.getLat();
    val.clon = city.getLon();
    return true;
}

template <float DomainVal::*MEMBER> bool decodeFloat(DomainVal & val, std::string_view text)
{
    auto const number = detail::readFloat(text);
    if (number)
        val.*MEMBER = *number;
    return number.has_value();
}

template <int DomainVal::*MEMBER> bool decodeInt(DomainVal & val, std::string_view text)
{
    auto const number = detail::readInt(text);
    if (number)
        val.*MEMBER = *number;
    return number.has_value();
}

struct Key
{
    std::string_view name;
    bool (*decode)(DomainVal & val, std::string_view text);
};

constexpr Key KEYS[] = {
    {"proj", decodeProj},
    {"plon", decodeFloat<&DomainVal::plon>},
    {"clat", decodeFloat<&DomainVal::clat>},
    {"clon", decodeFloat<&DomainVal::clon>},
    {"nx", decodeInt<&DomainVal::nx>},
    {"ny", decodeInt<&DomainVal::ny>},
    {"dx", decodeFloat<&DomainVal::dx>},
    {"dy", decodeFloat<&DomainVal::dy>},
    {"id", decodeStation},
};

bool decodeKey(DomainVal & val, std::string_view text, std::string_view name)
{
    for (Key const & key : KEYS)
        if (key.name == name)
            return key.decode(val, detail::trimmed(text));
    return false;
}

/// The record with all fields set; none when one is refused.
std::optional<DomainVal> decodeFields(DomainVal const & val, Fields const & fields, std::string_view keys)
{
    Fields const names = detail::split(keys, ',');
    if (names.size() != fields.size())
        return std::nullopt;
    DomainVal next = val;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (!decodeKey(next, fields[i], detail::trimmed(names[i])))
            return std::nullopt;
    return next;
}

/// Plane units in a length of 100 km, about the centre of the plane.
double unitsOfLength(DomainVal const & val)
{
    if (val.proj == Domain::LATLON)
        return 1 / (Domain::earth_rad * Const::DRC);
    if (val.proj == Domain::SAT)
        return 1 / (static_cast<double>(Domain::satelliteDistance(val)) - Domain::earth_rad);
    return 1;
}

/// A new projection with the extent of the previous domain, and some more, in its own units.
void takeExtent(DomainVal & next, DomainVal const & previous)
{
    auto const factor =
        static_cast<float>(static_cast<double>(NEW_EXTENT) * unitsOfLength(next) / unitsOfLength(previous));
    if (!detail::isMissing(next.dx))
        next.dx *= factor;
    if (!detail::isMissing(next.dy))
        next.dy *= factor;
}

/// The previous domain about another centre, its extent multiplied by a factor.
std::optional<DomainVal> zoomed(DomainVal const & previous, DomainVal const & next, float factor)
{
    if (previous.isMiss() || detail::isMissing(previous.dx) || detail::isMissing(previous.dy) ||
        !(factor > 0))
        return std::nullopt;
    DomainVal result = previous;
    result.clat = next.clat;
    result.clon = next.clon;
    result.dx *= factor;
    result.dy *= factor;
    return std::isfinite(result.dx) && std::isfinite(result.dy) ? std::optional(result) : std::nullopt;
}

/// The previous domain with other counts over the same extent.
std::optional<DomainVal> resized(DomainVal const & previous, Fields const & fields)
{
    auto const nx = detail::readInt(fields[1]);
    auto const ny = detail::readInt(fields[2]);
    DomainVal result = previous;
    return nx && ny && result.scaleSize(*nx, *ny) ? std::optional(result) : std::nullopt;
}

/// What a template leaves to be done after its fields are set; none when it does not apply after all.
std::optional<DomainVal>
complete(DomainVal const & previous, DomainVal next, Fields const & fields, std::string_view keys)
{
    bool const has_proj = keys.starts_with("proj");
    bool const is_centre_only = keys == "proj,clat,clon";
    bool const is_one_spacing = keys == "proj,clat,clon,dx";
    bool const is_short = is_centre_only || is_one_spacing;
    if (has_proj && next.proj == Domain::ZOOM)
        return is_short ? zoomed(previous, next, is_one_spacing ? next.dx : 1) : std::nullopt;
    if (has_proj && next.proj == Domain::SIZE)
        return is_centre_only ? resized(previous, fields) : std::nullopt;
    if (is_short && next.proj == Domain::SKEWT) {
        next.nx = next.ny = SKEWT_POINTS;
        next.dx = is_one_spacing ? next.dx : SKEWT_DX;
        next.dy = next.dx * SKEWT_SHAPE;
        return next;
    }
    if (is_centre_only)
        takeExtent(next, previous);
    if (keys.ends_with(",dx"))
        next.dy = next.dx;
    return next;
}

std::optional<DomainVal>
decodeText(std::string_view text, DomainVal const & previous, char const * region_file, int depth);

/// The domain of a region; none when no file has it.
std::optional<DomainVal> decodeRegion(std::string_view text,
                                      Fields const & fields,
                                      DomainVal const & previous,
                                      char const * region_file,
                                      int depth)
{
    auto const look_up = [&](char const * file, std::string_view name) -> std::optional<DomainVal> {
        auto const regions = detail::LookupFile::open(file, ':');
        auto const * const entry = regions != nullptr ? regions->find(name) : nullptr;
        return entry != nullptr ? decodeText(entry->value, previous, region_file, depth + 1) : std::nullopt;
    };
    if (detail::startsIgnoringCase(fields.front(), "fi:")) {
        std::string const file(fields.front().substr(3));
        return fields.size() == 2 ? look_up(file.c_str(), detail::trimmed(fields[1])) : std::nullopt;
    }
    auto const known = look_up(REGION_FILE, detail::trimmed(text));
    return known || region_file == nullptr ? known : look_up(region_file, detail::trimmed(text));
}

std::optional<DomainVal>
decodeText(std::string_view text, DomainVal const & previous, char const * region_file, int depth)
{
    if (depth > MOST_REGIONS)
        return std::nullopt;
    std::string_view const whole = detail::trimmed(text);
    if (whole.empty() || detail::sameIgnoringCase(whole, "miss"))
        return DomainVal{};
    Fields const fields = detail::split(whole, ',');
    for (std::string_view const keys : TEMPLATES)
        if (auto const next = decodeFields(previous, fields, keys))
            if (auto const result = complete(previous, *next, fields, keys))
                return result;
    return decodeRegion(whole, fields, previous, region_file, depth);
}

} // namespace

int DomainTool::proj(char const * name)
{
    return Domain::getProj(name);
}

int DomainTool::setParam(DomainVal & val, char const * value, char const * key)
{
    return decodeKey(val, detail::viewOf(value), detail::viewOf(key)) ? 1 : 0;
}

int DomainTool::setParams(DomainVal & val, Strings const & values, char const * keys)
{
    Fields fields;
    for (int i = 0; i < values.getNum(); ++i)
        fields.emplace_back(values.getString(i));
    auto const next = decodeFields(val, fields, detail::viewOf(keys));
    if (!next)
        return 0;
    val = *next;
    return 1;
}

int DomainTool::decode(char const * text, DomainVal & val, char const * region_file)
{
    auto const next = decodeText(detail::viewOf(text), val, region_file, 0);
    val = next.value_or(DomainVal{});
    if (!next)
        Yul::outWarning("DomainTool::decode: Invalid plot domain: %s\n", text);
    return next ? 1 : 0;
}

int DomainTool::decode(char const * text, Domain & domain, char const * region_file)
{
    DomainVal val = domain.get();
    int const result = decode(text, val, region_file);
    domain.set(val);
    return result;
}

int DomainTool::set(Domain & domain, char const * text)
{
    return decode(text, domain);
}

int DomainTool::set(Domain & domain)
{
    return decode(Yul::getResrc("plot_domain"), domain);
}

} // namespace Yul
