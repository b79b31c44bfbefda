#include "plot/MapFile.h"

#include "core/Const.h"
#include "core/FileTool.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/TableFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>

namespace Yul {
namespace {

using detail::BOX_UNITS;
using detail::MapChunk;
using detail::MapLines;

constexpr std::string_view MAGIC = "YulMAP 1\n";
constexpr std::size_t NAME_OCTETS = 16;
constexpr std::size_t HEADER_OCTETS = NAME_OCTETS + 7 * 4;
constexpr std::size_t CHUNK_OCTETS = 16;
constexpr std::size_t POINTS_A_CHUNK = 64; // of a line
constexpr long long MAX_OCTETS = 1LL << 28;
constexpr std::size_t LARGEST_GAP = 4096; // octets that are rather read than skipped

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

/// Takes little-endian numbers off octets, of which there are enough.
class Taker
{
public:
    explicit Taker(std::string_view octets) : at(octets.data()) {}

    std::uint32_t take8() { return static_cast<unsigned char>(*at++); }

    std::uint32_t take16()
    {
        std::uint32_t const low = take8();
        return low | take8() << 8U;
    }

    std::uint32_t take32()
    {
        std::uint32_t const low = take16();
        return low | take16() << 16U;
    }

    int takeSigned16() { return static_cast<std::int16_t>(take16()); }

    std::string_view take(std::size_t count)
    {
        std::string_view const text(at, count);
        at += count;
        return text;
    }

private:
    char const * at;
};

/// Reads exactly the octets from a position on; false when they are not there.
bool readAt(File & file, std::size_t position, std::size_t count, std::string & octets)
{
    octets.resize(count);
    return file.seek(static_cast<long long>(position)) != 0 && file.read(octets.data(), count) == count;
}

/// Opening a named pipe would wait for a writer.
bool openRegular(File & file, std::string const & name)
{
    std::error_code error;
    return std::filesystem::is_regular_file(name, error) && file.open(name.c_str(), "r") != 0;
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

float degrees(int box_steps)
{
    return static_cast<float>(box_steps) / BOX_UNITS;
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

int MapFile::close()
{
    *this = MapFile();
    return 1;
}

int MapFile::open(char const * file_name)
{
    close();
    std::string const name(detail::viewOf(file_name));
    std::string const in_database = detail::databaseFile(name);
    bool const is_there = !name.empty() && name != "-" && name.front() != '|';
    bool const is_found = is_there && (openRegular(file, in_database) || openRegular(file, name));
    if (is_found && readHeaders())
        return 1;
    Yul::outWarning("MapFile::open: %s: %s\n", name.c_str(),
                    is_found ? "Not a map file, or damaged" : "No such file");
    close();
    return 0;
}

bool MapFile::readHeaders()
{
    long long const size = file.size();
    std::string octets;
    if (size < 0 || size > MAX_OCTETS)
        return false;
    auto const all = static_cast<std::size_t>(size);
    std::size_t const most_text = MAGIC.size() + MAX_SOURCE + 2;
    if (!readAt(file, 0, std::min(all, most_text), octets) || !octets.starts_with(MAGIC))
        return false;
    std::size_t const end = octets.find("\n\n", MAGIC.size() - 1);
    if (end == std::string::npos)
        return false;
    if (end >= MAGIC.size())
        source = octets.substr(MAGIC.size(), end - MAGIC.size());
    if (source.find('\0') != std::string::npos)
        return false;

    std::size_t const start = end + 2;
    if (all - start < 4 || !readAt(file, start, 4, octets))
        return false;
    std::size_t const count = Taker(octets).take32();
    if (count > MAX_LAYERS || all - start - 4 < count * HEADER_OCTETS ||
        !readAt(file, start + 4, count * HEADER_OCTETS, octets))
        return false;
    layers.resize(count);
    Taker taker(octets);
    std::string index;
    for (Layer & layer : layers) {
        std::string const name(taker.take(NAME_OCTETS));
        bool const has_end = name.find('\0') != std::string::npos;
        auto const small = [&] {
            return static_cast<int>(std::min<std::uint32_t>(taker.take32(), 1U << 30U));
        };
        bool is_sound = has_end && layer.header.setName(name.c_str()) != 0;
        is_sound = (layer.header.setKind(small()) & layer.header.setScale(small()) &
                    layer.header.setUnits(small())) != 0 &&
                   is_sound;
        std::size_t const chunks = taker.take32();
        std::size_t const index_offset = taker.take32();
        layer.data_offset = taker.take32();
        std::size_t const data_length = taker.take32();
        bool const is_inside = index_offset <= all && chunks <= (all - index_offset) / CHUNK_OCTETS &&
                               layer.data_offset <= all && data_length <= all - layer.data_offset;
        if (!is_sound || !is_inside || !readAt(file, index_offset, chunks * CHUNK_OCTETS, index) ||
            !readIndex(layer, index))
            return false;
        MapChunk const last = layer.chunks.empty() ? MapChunk() : layer.chunks.back();
        if (std::size_t{last.offset} + last.length != data_length)
            return false;
    }
    return true;
}

bool MapFile::readIndex(Layer & layer, std::string_view octets)
{
    bool const is_area = layer.header.kind == MapFileHeader::AREA;
    std::size_t const count = octets.size() / CHUNK_OCTETS;
    layer.chunks.reserve(count);
    Taker taker(octets);
    std::uint64_t offset = 0;
    for (std::size_t i = 0; i < count; ++i) {
        MapChunk chunk;
        chunk.offset = static_cast<std::uint32_t>(offset);
        chunk.south = taker.takeSigned16();
        chunk.north = taker.takeSigned16();
        chunk.west = taker.takeSigned16();
        chunk.east = taker.takeSigned16();
        chunk.count = static_cast<int>(taker.take16());
        chunk.length = taker.take16();
        chunk.rank = static_cast<int>(taker.take8());
        chunk.is_continued = (taker.take8() & 1U) != 0;
        taker.take16();
        offset += chunk.length;
        bool const is_sound = chunk.count >= (is_area ? 3 : 2) &&
                              chunk.length >= 2 * static_cast<unsigned>(chunk.count) &&
                              chunk.south <= chunk.north && chunk.west <= chunk.east &&
                              !(chunk.is_continued && (is_area || i == 0)) && offset <= MAX_OCTETS;
        if (!is_sound)
            return false;
        addChunk(layer, chunk);
    }
    return true;
}

/// Keeps the chunk and counts it in the header.
void MapFile::addChunk(Layer & layer, MapChunk chunk)
{
    MapFileHeader & header = layer.header;
    if (!chunk.is_continued) {
        layer.first_chunks.push_back(static_cast<std::uint32_t>(layer.chunks.size()));
        header.num_lines += 1;
    }
    header.num_points += chunk.count - (chunk.is_continued ? 1 : 0);
    EarthRange box(degrees(chunk.south), degrees(chunk.west), degrees(chunk.north), degrees(chunk.east));
    if (header.range.isSet()) {
        EarthRange const & range = header.range;
        box = EarthRange(std::min(range.lat1, box.lat1), std::min(range.lon1, box.lon1),
                         std::max(range.lat2, box.lat2), std::max(range.lon2, box.lon2));
    }
    header.range = box;
    layer.chunks.push_back(chunk);
}

MapFileHeader const & MapFile::getHeader(int i) const noexcept
{
    static MapFileHeader const none;
    return i >= 0 && i < getNumLayers() ? layers[static_cast<std::size_t>(i)].header : none;
}

int MapFile::findLayer(char const * name, int scale) const
{
    std::string_view const wanted = detail::viewOf(name);
    std::optional<double> nearest;
    int found = -1;
    for (int i = 0; i < getNumLayers(); ++i) {
        MapFileHeader const & header = getHeader(i);
        if (wanted != header.getName())
            continue;
        double const distance =
            std::fabs(std::log(header.getScale() / std::max(1., static_cast<double>(scale))));
        if (!nearest || distance < *nearest) {
            nearest = distance;
            found = i;
        }
    }
    return found;
}

bool MapFile::isLine(int layer, int line) const noexcept
{
    return line >= 0 && line < getHeader(layer).getNumLines();
}

std::span<MapChunk const> MapFile::getChunks(int layer) const noexcept
{
    if (layer < 0 || layer >= getNumLayers())
        return {};
    return layers[static_cast<std::size_t>(layer)].chunks;
}

std::span<MapChunk const> MapFile::chunksOf(int layer, int line) const
{
    Layer const & of = layers[static_cast<std::size_t>(layer)];
    auto const i = static_cast<std::size_t>(line);
    std::size_t const first = of.first_chunks[i];
    std::size_t const end = i + 1 < of.first_chunks.size() ? of.first_chunks[i + 1] : of.chunks.size();
    return std::span(of.chunks).subspan(first, end - first);
}

int MapFile::getRank(int layer, int line) const noexcept
{
    return isLine(layer, line) ? chunksOf(layer, line).front().rank : Const::MISS;
}

int MapFile::getRange(int layer, int line, EarthRange & range) const
{
    range = EarthRange();
    if (!isLine(layer, line))
        return 0;
    MapChunk box = chunksOf(layer, line).front();
    for (MapChunk const & chunk : chunksOf(layer, line)) {
        box.south = std::min(box.south, chunk.south);
        box.north = std::max(box.north, chunk.north);
        box.west = std::min(box.west, chunk.west);
        box.east = std::max(box.east, chunk.east);
    }
    return range.set(degrees(box.south), degrees(box.west), degrees(box.north), degrees(box.east));
}

int MapFile::getLine(int layer, int line, EarthPoints & points)
{
    points.clear();
    if (!isLine(layer, line))
        return 0;
    auto const chunks = chunksOf(layer, line);
    auto const first = static_cast<std::uint32_t>(chunks.data() - getChunks(layer).data());
    std::vector<std::uint32_t> wanted;
    for (std::uint32_t i = 0; i < chunks.size(); ++i)
        wanted.push_back(first + i);
    MapLines lines;
    if (read(layer, wanted, lines) == 0)
        return 0;
    for (MapLines::Piece const & piece : lines.pieces)
        for (std::size_t i = piece.begin + (piece.is_continued ? 1 : 0); i < piece.end; ++i)
            points.add(EarthPoint(static_cast<float>(lines.lat[i]), static_cast<float>(lines.lon[i])));
    return 1;
}

int MapFile::read(int layer, std::span<std::uint32_t const> wanted, MapLines & lines)
{
    auto const chunks = getChunks(layer);
    std::string octets;
    for (std::size_t i = 0; i < wanted.size();) {
        // as many pieces as lie close together in the file, in one go
        std::size_t end = i;
        std::size_t const from = wanted[i] < chunks.size() ? chunks[wanted[i]].offset : 0;
        std::size_t to = from;
        while (end < wanted.size() && wanted[end] < chunks.size() && chunks[wanted[end]].offset >= to &&
               chunks[wanted[end]].offset - to <= LARGEST_GAP) {
            to = std::size_t{chunks[wanted[end]].offset} + chunks[wanted[end]].length;
            ++end;
        }
        if (end == i)
            return 0; // not ascending indices of this layer
        Layer const & of = layers[static_cast<std::size_t>(layer)];
        std::string_view run = of.data;
        if (isOpen()) {
            if (!readAt(file, of.data_offset + from, to - from, octets)) {
                Yul::outWarning("MapFile::read: %s: The file ends too early\n", file.name().c_str());
                return 0;
            }
            run = octets;
        } else
            run = run.substr(from, to - from);
        for (; i < end; ++i) {
            MapChunk const & chunk = chunks[wanted[i]];
            std::size_t const begin = lines.lat.size();
            if (!detail::decodePoints(run.substr(chunk.offset - from, chunk.length), chunk.count,
                                      of.header.getUnits(), lines)) {
                Yul::outWarning("MapFile::read: %s: A line is damaged\n", file.name().c_str());
                return 0;
            }
            bool const follows = i > 0 && wanted[i - 1] + 1 == wanted[i];
            lines.pieces.push_back({begin, lines.lat.size(), chunk.is_continued && follows});
        }
    }
    return 1;
}

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
