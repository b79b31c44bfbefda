#include "grid/grib/packing/Jpeg2000Stream.h"

#include "core/Format.h"

#include <algorithm>

namespace Yul::detail::grib {
namespace {

// Markers.
constexpr unsigned START = 0xff4f;
constexpr unsigned SIZE = 0xff51;
constexpr unsigned CODING_STYLE = 0xff52;
constexpr unsigned COMPONENT_STYLE = 0xff53;
constexpr unsigned TILE_PART = 0xff90;
constexpr unsigned TILE_DATA = 0xff93;

constexpr std::uint64_t LEAST_TILE_PART = 14; // its header and the mark of its data
constexpr unsigned MOST_LEVELS = 32;
constexpr unsigned WIDEST_PRECINCT = 15; // as a power of two, where none is given

constexpr char const * DAMAGED = "damaged JPEG 2000 picture";

struct Sizes
{
    std::uint64_t width = 0;
    std::uint64_t height = 0;
};

/// What a decoder keeps for parts of a picture, in octets, as measured with OpenJPEG 2.5. Samples are beside it.
constexpr std::uint64_t TILE_MEMORY = 10000;
constexpr std::uint64_t PRECINCT_MEMORY = 400; // of each sub-band
constexpr std::uint64_t BLOCK_MEMORY = 450;
constexpr std::uint64_t SAMPLE_MEMORY =
    6; // what the parts may take for each value; the samples take as much again
constexpr std::uint64_t SMALL_MEMORY = 1ULL << 20; // which they may take in any case

/// What an area of the picture is divided into.
struct Parts
{
    std::uint64_t packets = 0; ///< at the least: what is at the edges is left out
    std::uint64_t memory = 0;  ///< of a decoder
};

constexpr std::uint64_t dividedUp(std::uint64_t extent, unsigned shift) noexcept
{
    return (extent + (std::uint64_t{1} << shift) - 1) >> shift;
}

/// Parts of an area in the coding style of a marker segment.
/// s       the marker's segment, whose first octet is the length.
/// style   octet of the coding style; the number of decomposition levels follows at `levels_octet`.
Parts partsOf(Section & s, std::size_t style, std::size_t levels_octet, unsigned layers, Sizes const & area)
{
    bool const has_precincts = (s.u8(style) & 1U) != 0;
    unsigned const levels = std::min(s.u8(levels_octet), MOST_LEVELS);
    unsigned const block_width = (s.u8(levels_octet + 1) & 15U) + 2;
    unsigned const block_height = (s.u8(levels_octet + 2) & 15U) + 2;
    Parts parts;
    for (unsigned resolution = 0; resolution <= levels; ++resolution) {
        unsigned const precinct =
            has_precincts ? s.u8(levels_octet + 5 + resolution) : (WIDEST_PRECINCT << 4 | WIDEST_PRECINCT);
        unsigned const reduced = levels - resolution;
        unsigned const across = reduced + (precinct & 15U);
        unsigned const down = reduced + (precinct >> 4);
        unsigned const halved = resolution > 0 ? 1 : 0; // a sub-band has half the samples of its resolution
        std::uint64_t const bands = resolution > 0 ? 3 : 1;
        parts.packets += (area.width >> across) * (area.height >> down);
        parts.memory +=
            bands * PRECINCT_MEMORY * dividedUp(area.width, across) * dividedUp(area.height, down) +
            bands * BLOCK_MEMORY * dividedUp(area.width, std::min(reduced + halved + block_width, across)) *
                dividedUp(area.height, std::min(reduced + halved + block_height, down));
    }
    parts.packets *= layers;
    return parts;
}

/// Samples between two places of the reference grid, one every `step`.
std::uint64_t samples(std::uint64_t from, std::uint64_t to, unsigned step) noexcept
{
    return (to + step - 1) / step - (from + step - 1) / step;
}

/// Goes from marker to marker.
class Headers
{
public:
    Headers(Octets stream, std::size_t count) : data(stream), values(count) {}

    [[nodiscard]] std::string check()
    {
        if (next() != START || next() != SIZE || !readSize())
            return fault.empty() ? DAMAGED : fault;
        for (;;) {
            unsigned const marker = next();
            if (has_tile && !is_in_header && marker != TILE_PART) // the end, which may be missing
                return {};
            bool const is_good = marker == TILE_PART   ? enterTile()
                                 : marker == TILE_DATA ? leaveTile()
                                                       : readSegment(marker);
            if (!is_good)
                return fault.empty() ? DAMAGED : fault;
        }
    }

private:
    /// The marker at the current octet; 0 at the end.
    [[nodiscard]] unsigned next() noexcept
    {
        Section s(left());
        position += 2;
        return s.u16(1);
    }

    [[nodiscard]] Octets left() const noexcept
    {
        return data.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(position, data.size())));
    }

    /// The segment behind a marker; empty when it is not there as a whole.
    [[nodiscard]] Section takeSegment() noexcept
    {
        Section s(left());
        unsigned const length = s.u16(1);
        if (length < 2 || length > s.size())
            return {};
        Section const segment(left().first(length));
        position += length;
        return segment;
    }

    [[nodiscard]] bool readSize()
    {
        Section s = takeSegment();
        std::uint64_t const x1 = s.u32(5);
        std::uint64_t const y1 = s.u32(9);
        std::uint64_t const x0 = s.u32(13);
        std::uint64_t const y0 = s.u32(17);
        std::uint64_t const tile_width = s.u32(21);
        std::uint64_t const tile_height = s.u32(25);
        std::uint64_t const tile_x = s.u32(29);
        std::uint64_t const tile_y = s.u32(33);
        unsigned const components = s.u16(37);
        unsigned const step_x = s.u8(40);
        unsigned const step_y = s.u8(41);
        if (s.isShort() || x1 <= x0 || y1 <= y0 || tile_width == 0 || tile_height == 0 || tile_x > x0 ||
            tile_y > y0 || step_x == 0 || step_y == 0)
            return false;
        if (components != 1) {
            fault = format("JPEG 2000 picture of %u components", components);
            return false;
        }
        picture = {samples(x0, x1, step_x), samples(y0, y1, step_y)};
        if (picture.width * picture.height != values) {
            fault = format("JPEG 2000 picture of %llu by %llu samples for %zu values",
                           static_cast<unsigned long long>(picture.width),
                           static_cast<unsigned long long>(picture.height), values);
            return false;
        }
        std::uint64_t const tiles =
            ((x1 - tile_x - 1) / tile_width + 1) * ((y1 - tile_y - 1) / tile_height + 1);
        if (tiles > data.size() / LEAST_TILE_PART) {
            fault = format("JPEG 2000 picture of %llu tiles in %zu octets",
                           static_cast<unsigned long long>(tiles), data.size());
            return false;
        }
        tile = {std::min(picture.width, tile_width / step_x), std::min(picture.height, tile_height / step_y)};
        all.memory = tiles * TILE_MEMORY;
        return true;
    }

    /// What the header of a tile-part says is of that tile alone.
    [[nodiscard]] bool enterTile()
    {
        std::uint64_t const begin = position - 2;
        Section s = takeSegment();
        std::uint64_t const length = s.u32(5);
        if (s.isShort())
            return false;
        has_tile = is_in_header = true;
        tile_end = length == 0 ? data.size() : begin + length;
        return true;
    }

    [[nodiscard]] bool leaveTile() noexcept
    {
        bool const goes_on = is_in_header && tile_end >= position;
        position = tile_end;
        is_in_header = false;
        return goes_on;
    }

    [[nodiscard]] bool readSegment(unsigned marker)
    {
        Section s = takeSegment();
        if (s.size() == 0)
            return false;
        Sizes const & area = has_tile ? tile : picture;
        Parts parts;
        if (marker == CODING_STYLE) {
            layers = s.u16(5);
            parts = partsOf(s, 3, 8, layers, area);
        } else if (marker == COMPONENT_STYLE)
            parts = partsOf(s, 4, 5, layers, area);
        all.packets += parts.packets;
        all.memory += parts.memory;
        return !s.isShort() && isAffordable();
    }

    [[nodiscard]] bool isAffordable()
    {
        if (all.packets > data.size())
            fault = format("JPEG 2000 picture of %llu packets in %zu octets",
                           static_cast<unsigned long long>(all.packets), data.size());
        else if (all.memory > values * SAMPLE_MEMORY + SMALL_MEMORY)
            fault = format("JPEG 2000 picture whose parts take %llu octets of memory for %zu values",
                           static_cast<unsigned long long>(all.memory), values);
        return fault.empty();
    }

    Octets data;
    std::size_t values;
    std::uint64_t position = 0;
    std::uint64_t tile_end = 0;
    bool has_tile = false;
    bool is_in_header = false; // of a tile-part
    Sizes picture;
    Sizes tile;
    unsigned layers = 1;
    Parts all;
    std::string fault;
};

} // namespace

std::string checkJpeg2000(Octets stream, std::size_t values)
{
    return Headers(stream, values).check();
}

} // namespace Yul::detail::grib
