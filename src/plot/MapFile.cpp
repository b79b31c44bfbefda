#include "plot/MapFile.h"

#include "core/Const.h"
#include "core/FileTool.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/TableFile.h"
#include "plot/map/MapFormat.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Yul {
namespace {

using detail::BOX_UNITS;
using detail::MapChunk;
using detail::MapLines;
using namespace detail::map_format;

constexpr std::size_t LARGEST_GAP = 4096; // octets that are rather read than skipped

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

/// How many of the first wanted pieces lie close together in the file, one behind the other.
std::size_t runLength(std::span<MapChunk const> chunks, std::span<std::uint32_t const> wanted)
{
    std::size_t count = 0;
    std::size_t end = 0;
    for (; count < wanted.size() && wanted[count] < chunks.size(); ++count) {
        MapChunk const & chunk = chunks[wanted[count]];
        if (count > 0 && (chunk.offset < end || chunk.offset - end > LARGEST_GAP))
            break;
        end = std::size_t{chunk.offset} + chunk.length;
    }
    return count;
}

float degrees(int box_steps)
{
    return static_cast<float>(box_steps) / BOX_UNITS;
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
    bool const is_found =
        is_there && (file.openRegular(in_database.c_str()) != 0 || file.openRegular(name.c_str()) != 0);
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
    if (size < 0 || size > MAX_OCTETS)
        return false;
    auto const all = static_cast<std::size_t>(size);
    std::string octets;
    std::size_t start = 0;
    if (!readSource(all, start) || all - start < 4 || !readAt(file, start, 4, octets))
        return false;
    std::size_t const count = Taker(octets).take32();
    start += 4;
    if (count > MAX_LAYERS || all - start < count * HEADER_OCTETS ||
        !readAt(file, start, count * HEADER_OCTETS, octets))
        return false;
    layers.resize(count);
    std::string_view rest = octets;
    for (Layer & layer : layers) {
        if (!readLayer(layer, rest.substr(0, HEADER_OCTETS), all))
            return false;
        rest.remove_prefix(HEADER_OCTETS);
    }
    return true;
}

/// The first lines of a file of so many octets, down to an empty one.
/// end  out: what lies behind it
bool MapFile::readSource(std::size_t all, std::size_t & end)
{
    std::string octets;
    std::size_t const most_text = MAGIC.size() + MAX_SOURCE + 2;
    if (!readAt(file, 0, std::min(all, most_text), octets) || !octets.starts_with(MAGIC))
        return false;
    end = octets.find("\n\n", MAGIC.size() - 1);
    if (end == std::string::npos)
        return false;
    if (end >= MAGIC.size())
        source = octets.substr(MAGIC.size(), end - MAGIC.size());
    end += 2;
    return source.find('\0') == std::string::npos;
}

/// A layer with its index, from its header in a file of so many octets.
bool MapFile::readLayer(Layer & layer, std::string_view octets, std::size_t all)
{
    Taker taker(octets);
    std::string const name(taker.take(NAME_OCTETS));
    auto const take = [&] { return static_cast<int>(std::min<std::uint32_t>(taker.take32(), 1U << 30U)); };
    bool const has_name = name.find('\0') != std::string::npos && layer.header.setName(name.c_str()) != 0;
    bool const has_kind = layer.header.setKind(take()) != 0;
    bool const has_scale = layer.header.setScale(take()) != 0;
    bool const has_units = layer.header.setUnits(take()) != 0;
    std::size_t const chunks = taker.take32();
    std::size_t const index_offset = taker.take32();
    layer.data_offset = taker.take32();
    std::size_t const data_length = taker.take32();
    bool const is_inside = index_offset <= all && chunks <= (all - index_offset) / CHUNK_OCTETS &&
                           layer.data_offset <= all && data_length <= all - layer.data_offset;
    std::string index;
    if (!has_name || !has_kind || !has_scale || !has_units || !is_inside ||
        !readAt(file, index_offset, chunks * CHUNK_OCTETS, index) || !readIndex(layer, index))
        return false;
    MapChunk const last = layer.chunks.empty() ? MapChunk() : layer.chunks.back();
    return std::size_t{last.offset} + last.length == data_length;
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
    static MapFileHeader const NONE;
    return i >= 0 && i < getNumLayers() ? layers[static_cast<std::size_t>(i)].header : NONE;
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
    for (std::size_t i = 0; i < wanted.size();) {
        std::size_t const count = runLength(chunks, wanted.subspan(i));
        if (count == 0)
            return 0; // not ascending indices of this layer
        if (char const * const fault = readRun(layer, wanted, i, count, lines)) {
            Yul::outWarning("MapFile::read: %s: %s\n", file.name().c_str(), fault);
            return 0;
        }
        i += count;
    }
    return 1;
}

/// Adds the points of some of the wanted pieces, which lie close together in the file and are read in one go. Null, or
/// what is wrong.
char const * MapFile::readRun(
    int layer, std::span<std::uint32_t const> wanted, std::size_t first, std::size_t count, MapLines & lines)
{
    Layer const & of = layers[static_cast<std::size_t>(layer)];
    MapChunk const & last = of.chunks[wanted[first + count - 1]];
    std::size_t const from = of.chunks[wanted[first]].offset;
    std::size_t const length = std::size_t{last.offset} + last.length - from;
    std::string octets;
    if (isOpen() && !readAt(file, of.data_offset + from, length, octets))
        return "The file ends too early";
    std::string_view const run = isOpen() ? octets : std::string_view(of.data).substr(from, length);
    for (std::size_t i = first; i < first + count; ++i) {
        MapChunk const & chunk = of.chunks[wanted[i]];
        std::size_t const begin = lines.lat.size();
        if (!detail::decodePoints(run.substr(chunk.offset - from, chunk.length), chunk.count,
                                  of.header.getUnits(), lines))
            return "A line is damaged";
        bool const follows = i > 0 && wanted[i - 1] + 1 == wanted[i];
        lines.pieces.push_back({begin, lines.lat.size(), chunk.is_continued && follows});
    }
    return nullptr;
}

} // namespace Yul
