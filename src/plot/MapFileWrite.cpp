// Making a map file: layers and lines in memory, then the file in one piece.
#include "core/Const.h"
#include "core/File.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "plot/MapFile.h"
#include "plot/map/MapFormat.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

using detail::BOX_UNITS;
using detail::MapChunk;
using namespace detail::map_format;

constexpr std::size_t POINTS_A_CHUNK = 64; // of a line

void append16(std::string & octets, int value)
{
    auto const number = static_cast<unsigned>(value);
    octets += static_cast<char>(number & 255U);
    octets += static_cast<char>(number >> 8U & 255U);
}

void append32(std::string & octets, std::size_t value)
{
    append16(octets, static_cast<int>(value & 0xffffU));
    append16(octets, static_cast<int>(value >> 16U & 0xffffU));
}

bool isPosition(EarthPoint const & point)
{
    return std::fabs(point.lat) <= 90 && std::fabs(point.lon) <= 360;
}

/// Steps from the equator or the first meridian.
std::int32_t steps(float degrees, int units)
{
    return static_cast<std::int32_t>(std::lround(static_cast<double>(degrees) * units));
}

int boxFloor(std::int32_t value, int units)
{
    return static_cast<int>(std::floor(static_cast<double>(value) / units * BOX_UNITS));
}

int boxCeil(std::int32_t value, int units)
{
    return static_cast<int>(std::ceil(static_cast<double>(value) / units * BOX_UNITS));
}

/// Its points in octets; the box goes with them.
MapChunk encode(EarthPoint const * points, std::size_t count, int units, std::string & data)
{
    MapChunk chunk;
    chunk.offset = static_cast<std::uint32_t>(data.size());
    chunk.count = static_cast<int>(count);
    std::int32_t before_lat = 0;
    std::int32_t before_lon = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::int32_t const lat = steps(points[i].lat, units);
        std::int32_t const lon = steps(points[i].lon, units);
        detail::appendPoint(data, lat - before_lat, lon - before_lon);
        before_lat = lat;
        before_lon = lon;
        int const south = boxFloor(lat, units);
        int const north = boxCeil(lat, units);
        int const west = boxFloor(lon, units);
        int const east = boxCeil(lon, units);
        chunk.south = i == 0 ? south : std::min(chunk.south, south);
        chunk.north = i == 0 ? north : std::max(chunk.north, north);
        chunk.west = i == 0 ? west : std::min(chunk.west, west);
        chunk.east = i == 0 ? east : std::max(chunk.east, east);
    }
    chunk.length = static_cast<std::uint32_t>(data.size()) - chunk.offset;
    return chunk;
}

void appendIndex(std::string & octets, MapChunk const & chunk)
{
    for (int const side : {chunk.south, chunk.north, chunk.west, chunk.east})
        append16(octets, side);
    append16(octets, chunk.count);
    append16(octets, static_cast<int>(chunk.length));
    octets += static_cast<char>(chunk.rank);
    octets += static_cast<char>(chunk.is_continued ? 1 : 0);
    append16(octets, 0);
}

} // namespace

int MapFile::setSource(char const * text)
{
    std::string_view const view = detail::trimmed(detail::viewOf(text));
    if (isOpen() || view.size() > MAX_SOURCE || view.find("\n\n") != std::string_view::npos)
        return 0;
    source = view;
    return 1;
}

int MapFile::addLayer(MapFileHeader const & header)
{
    if (isOpen() || getNumLayers() >= MAX_LAYERS || header.name.empty() || detail::isMissing(header.scale))
        return 0;
    Layer layer;
    layer.header.name = header.name;
    layer.header.scale = header.scale;
    layer.header.kind = header.kind;
    layer.header.units = header.units;
    layers.push_back(std::move(layer));
    return 1;
}

int MapFile::addLine(EarthPoints const & points, int rank)
{
    constexpr std::size_t MAX_DATA = MAX_OCTETS / 4;
    if (isOpen() || layers.empty() || rank < 0 || rank > 255)
        return 0;
    Layer & layer = layers.back();
    auto const & all = points.all();
    bool const is_area = layer.header.kind == MapFileHeader::AREA;
    if (all.size() < (is_area ? 3 : 2) || (is_area && all.size() > MAX_AREA_POINTS) ||
        layer.data.size() + 8 * all.size() > MAX_DATA || !std::all_of(all.begin(), all.end(), isPosition))
        return 0;
    std::size_t const step = is_area ? all.size() : POINTS_A_CHUNK;
    for (std::size_t first = 0; first == 0 || first + 1 < all.size(); first += step) {
        std::size_t const count = std::min(all.size() - first, is_area ? step : step + 1);
        MapChunk chunk = encode(all.data() + first, count, layer.header.units, layer.data);
        chunk.rank = rank;
        chunk.is_continued = first > 0;
        addChunk(layer, chunk);
    }
    return 1;
}

int MapFile::write(char const * file_name) const
{
    if (isOpen() || layers.empty() || !StrLib::valid(file_name))
        return 0;
    std::string octets(MAGIC);
    octets += source;
    octets += source.empty() ? "\n" : "\n\n";
    append32(octets, layers.size());
    std::size_t index_offset = octets.size() + layers.size() * HEADER_OCTETS;
    std::size_t data_offset = index_offset;
    for (Layer const & layer : layers)
        data_offset += layer.chunks.size() * CHUNK_OCTETS;
    for (Layer const & layer : layers) {
        std::string name = layer.header.name;
        name.resize(NAME_OCTETS, '\0');
        octets += name;
        for (int const number : {layer.header.kind, layer.header.scale, layer.header.units})
            append32(octets, static_cast<std::size_t>(number));
        for (std::size_t const number : {layer.chunks.size(), index_offset, data_offset, layer.data.size()})
            append32(octets, number);
        index_offset += layer.chunks.size() * CHUNK_OCTETS;
        data_offset += layer.data.size();
    }
    for (Layer const & layer : layers)
        for (MapChunk const & chunk : layer.chunks)
            appendIndex(octets, chunk);
    for (Layer const & layer : layers)
        octets += layer.data;
    if (octets.size() > MAX_OCTETS)
        return 0;
    File out;
    bool const is_written = out.open(file_name, "w") != 0 && out.write(octets) != 0 && out.close() != 0;
    if (!is_written)
        Yul::outWarning("MapFile::write: %s: Unable to write\n", file_name);
    return is_written ? 1 : 0;
}

} // namespace Yul
