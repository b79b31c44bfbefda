#include "grid/grib/Reader.h"

#include "core/Format.h"
#include "grid/grib/Edition2.h"
#include "grid/grib/Scan.h"
#include "grid/grib/Values.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t SEARCH_LIMIT = 1000; // positions that are tried
constexpr std::size_t READ_AHEAD = 50;
constexpr std::size_t READ_MORE = 20;
constexpr std::uint64_t MAX_SECTION = 10000000;
constexpr std::uint64_t LARGEST_HEAD = 1 << 16; // of a grid, product or data definition that is looked at

constexpr std::uint64_t EDITION1_INDICATOR = 8;
constexpr std::uint64_t EDITION2_INDICATOR = 16;
constexpr std::uint64_t END_MARK = 4; // octets of "7777"
constexpr std::size_t PDB_LEAST = 24;
constexpr std::uint64_t LARGE = 0x800000; // bit of the length of a message of edition 1
constexpr std::uint64_t LARGE_UNIT = 120;
constexpr std::size_t BDB_HEAD = 21;
constexpr std::size_t OCTETS_AT_ONCE = 1 << 17; // of packed values

bool beginsWith(Octets octets, char const (&text)[5])
{
    return octets.size() >= 4 && std::memcmp(octets.data(), text, 4) == 0;
}

} // namespace

int Reader::open(char const * name)
{
    close();
    return input.open(name);
}

int Reader::close()
{
    here = {};
    starts.clear();
    has_found_any = false;
    warnings.clear();
    return input.close();
}

int Reader::rewind(std::uint64_t position)
{
    if (input.rewind() == 0)
        return 0;
    here = {};
    here.position = position;
    return 1;
}

std::vector<std::string> Reader::takeWarnings()
{
    return std::exchange(warnings, {});
}

void Reader::warn(std::string line)
{
    warnings.push_back(std::move(line));
}

bool Reader::next(Field & field)
{
    while (isOpen()) {
        if (!here.is_inside) {
            if (!search())
                return false;
            enter();
            continue;
        }
        if (here.state.edition == 2 ? nextOfEdition2(field) : nextOfEdition1(field))
            return true;
    }
    return false;
}

/// Moves to the next message, behind the next octet of the list that has one where there is a list.
bool Reader::search()
{
    if (starts.empty())
        return searchHere();
    for (auto start = std::ranges::lower_bound(starts, here.position); start != starts.end(); ++start) {
        here.position = *start;
        if (searchHere())
            return true;
    }
    return false;
}

/// Moves to the next "GRIB": 50 octets are read ahead, then 20 more whenever fewer than 20 are left.
bool Reader::searchHere()
{
    std::uint64_t const start = here.position;
    input.release(start);
    std::size_t ahead = READ_AHEAD;
    Octets window = input.view(start, ahead);
    for (std::size_t i = 0; i < SEARCH_LIMIT; ++i) {
        if (i + READ_MORE >= ahead && window.size() == ahead) {
            ahead += READ_MORE;
            window = input.view(start, ahead);
        }
        if (i + 4 > window.size()) {
            if (!has_found_any)
                warn(format("GribFile::read: No GRIB message in %s\n", name().c_str()));
            here.position = start + i;
            return false;
        }
        if (beginsWith(window.subspan(i), "GRIB")) {
            here.position = start + i;
            has_found_any = true;
            return true;
        }
    }
    warn(format("searchGRIB failed to find GRIB: %lld\n", static_cast<long long>(start)));
    here.position = start + SEARCH_LIMIT;
    return false;
}

/// Behind a damaged message: the next "GRIB" with an edition that is known, however far. Where there is a list of octets
/// the search goes on at its next one.
bool Reader::searchOn(std::uint64_t from)
{
    constexpr std::size_t PIECE = 1 << 16;
    if (!starts.empty()) {
        here.position = from;
        return true;
    }
    for (;; from += PIECE - EDITION1_INDICATOR) {
        input.release(from);
        Octets const window = input.view(from, PIECE);
        std::string_view const text(reinterpret_cast<char const *>(window.data()), window.size());
        for (std::size_t i = 0; (i = text.find("GRIB", i)) != std::string_view::npos; ++i)
            if (i + EDITION1_INDICATOR <= window.size() && (window[i + 7] == 1 || window[i + 7] == 2)) {
                here.position = from + i;
                return true;
            }
        if (window.size() < PIECE) {
            here.position = from + window.size();
            return false;
        }
    }
}

/// Reads the indicator of the message at the current position.
void Reader::enter()
{
    here.message = here.position;
    Section indicator(input.view(here.message, EDITION2_INDICATOR));
    unsigned const edition = indicator.u8(8);
    std::uint64_t const length = edition == 2 ? indicator.u32(13) : indicator.u24(5);
    here.state = {};
    here.state.edition = edition == 2 ? 2 : 1;
    here.state.message = here.message;
    here.known_bitmap.reset();
    here.refusals = {};
    here.message_end = here.message + length;
    here.is_inside = true;
    if (indicator.isShort()) {
        abandon("cut short", here.message + 4);
        return;
    }
    if (edition > 2) {
        abandon(format("edition %u", edition), here.message + 4);
        return;
    }
    here.state.product.discipline = edition == 2 ? static_cast<int>(indicator.u8(7)) : -1;
    here.position = here.message + (edition == 2 ? EDITION2_INDICATOR : EDITION1_INDICATOR);
}

/// Ends the message; the search for the next one begins at a position.
void Reader::leave(std::uint64_t next_position)
{
    here.is_inside = false;
    here.position = next_position;
    input.release(next_position);
}

/// Names a damaged message and moves to the next one.
void Reader::abandon(std::string const & fault, std::uint64_t next_position)
{
    warn(format("GribFile::read: %s: message at octet %llu skipped: %s\n", name().c_str(),
                static_cast<unsigned long long>(here.message), fault.c_str()));
    here.is_inside = false;
    (void)searchOn(next_position);
}

// Edition 2 ------------------------------------------------------------------------------------------------

bool Reader::nextOfEdition2(Field & field)
{
    for (;;) {
        if (here.position + END_MARK > here.message_end) {
            abandon("its end is not marked", here.position);
            return false;
        }
        Section head(input.view(here.position, 5));
        if (head.u8(1) == '7' && head.u8(2) == '7') {
            leave(here.position + END_MARK);
            return false;
        }
        Extent const extent{here.position, head.u32(1)};
        unsigned const number = head.u8(5);
        if (head.isShort()) {
            abandon("cut short", here.position);
            return false;
        }
        if (extent.length > MAX_SECTION) {
            warn(format("readSection: invalid length: %d\n", static_cast<int>(extent.length)));
            here.is_inside = false;
            (void)searchOn(here.position);
            return false;
        }
        if (extent.length < 5 || number == 0 || number >= 8) {
            abandon(format("section number %u of %llu octets", number,
                           static_cast<unsigned long long>(extent.length)),
                    here.position);
            return false;
        }
        std::uint64_t const end = extent.position + extent.length;
        if (end > here.message_end || !input.reaches(end)) {
            abandon(format("section %u is cut short", number), here.position);
            return false;
        }
        here.position = end;
        std::uint64_t const wanted = number >= 6 ? 6 : std::min(extent.length, LARGEST_HEAD);
        if (takeSection2(Section(input.view(extent.position, std::min(wanted, extent.length))), number,
                         extent)) {
            complete(here.state);
            field = here.state;
            return true;
        }
    }
}

/// Takes what a section says. True when it completes a field. A section that comes again replaces what it
/// said before, and a reason to refuse the field with it.
bool Reader::takeSection2(Section section, unsigned number, Extent const & extent)
{
    Field & f = here.state;
    switch (number) {
    case 1:
        here.refusals.product = readIDS(section, f.product);
        break;
    case 3:
        here.refusals.grid = readGDS(section, f.geometry);
        break;
    case 4:
        here.refusals.product = readPDS(section, f.product);
        break;
    case 5:
        here.refusals.data = readDRS(section, f.packing);
        break;
    case 6:
        here.refusals.bitmap.clear();
        f.has_bitmap = section.u8(6) != 255;
        if (section.u8(6) == 0)
            here.known_bitmap =
                Extent{extent.position + 6, extent.length - std::min<std::uint64_t>(6, extent.length)};
        else if (f.has_bitmap && section.u8(6) != 254)
            here.refusals.bitmap = format("bitmap %u of the centre's own", section.u8(6));
        else if (f.has_bitmap && !here.known_bitmap)
            here.refusals.bitmap = "refers to an earlier bitmap, but there is none";
        f.bitmap = f.has_bitmap && here.known_bitmap ? *here.known_bitmap : Extent{};
        break;
    case 7:
        f.data = {extent.position + 5, extent.length - 5};
        return true;
    default:
        break;
    }
    return false;
}

// Edition 1 ------------------------------------------------------------------------------------------------

/// Views the first octets of a section that begins with a length of three octets and moves behind it. False
/// when it is not there as a whole.
bool Reader::takeSection1(
    std::uint64_t & position, std::size_t head, Section & section, Extent & extent, bool is_data)
{
    Section length(input.view(position, 3));
    extent = {position, length.u24(1)};
    if (is_data)
        correctLarge(extent);
    std::uint64_t const end = position + extent.length;
    if (length.isShort() || extent.length < 4 || !input.reaches(end))
        return false;
    section = Section(input.view(position, std::min<std::uint64_t>(head, extent.length)));
    position = end;
    return true;
}

/// Messages above 8 MB, as ECMWF writes them: with its first bit set the message's length counts units of 120 octets, and
/// the length of the data section, then below 120, is what of the last unit lies behind it (and behind the end mark).
void Reader::correctLarge(Extent & data)
{
    std::uint64_t const stated = here.message_end - here.message;
    std::uint64_t const units = (stated & ~LARGE) * LARGE_UNIT;
    if ((stated & LARGE) == 0 || data.length >= LARGE_UNIT || data.length > units)
        return;
    std::uint64_t const length = units - data.length + END_MARK;
    here.message_end = here.message + length;
    data.length = std::max(here.message_end, data.position + END_MARK) - END_MARK - data.position;
}

bool Reader::nextOfEdition1(Field & field)
{
    Field & f = here.state;
    Section section;
    Extent extent;
    Presence presence;
    std::uint64_t position = here.position;
    if (!takeSection1(position, LARGEST_HEAD, section, extent) || section.size() < PDB_LEAST) {
        abandon("product definition section is cut short", here.message + 4);
        return false;
    }
    here.refusals.product = readPDB(section, f.product, presence);
    if (presence.has_grid) {
        if (!takeSection1(position, LARGEST_HEAD, section, extent)) {
            abandon("grid description section is cut short", here.message + 4);
            return false;
        }
        here.refusals.grid = readGDB(section, f.geometry);
    } else
        here.refusals.grid = predefinedGrid(presence.grid_id, f.geometry);
    f.has_bitmap = presence.has_bitmap;
    if (f.has_bitmap) {
        if (!takeSection1(position, 6, section, extent) || extent.length < 6) {
            abandon("bitmap section is cut short", here.message + 4);
            return false;
        }
        if (section.u16(5) != 0)
            here.refusals.bitmap = format("bitmap %u of the centre's own", section.u16(5));
        f.bitmap = {extent.position + 6, extent.length - 6};
    }
    if (!takeSection1(position, BDB_HEAD, section, extent, true) || extent.length < 11) {
        abandon("binary data section is cut short", here.message + 4);
        return false;
    }
    here.refusals.data = readBDB(section, presence.decimal, f.packing);
    if (f.packing.is_alternating)
        f.geometry.scan_flags |= Scan::ALTERNATING;
    f.data = {extent.position + 11, extent.length - 11};
    std::uint64_t const end = position + END_MARK;
    if (end > here.message_end) {
        abandon(format("it is to have %llu octets, but its sections have %llu",
                       static_cast<unsigned long long>(here.message_end - here.message),
                       static_cast<unsigned long long>(end - here.message)),
                position);
        return false;
    }
    complete(f);
    field = f;
    leave(std::max(end, input.reaches(here.message_end) ? here.message_end : end));
    return true;
}

// Both -----------------------------------------------------------------------------------------------------

/// Puts together why the field cannot be delivered.
void Reader::complete(Field & field)
{
    field.points = 0;
    field.refusal.clear();
    for (auto const * reason :
         {&here.refusals.product, &here.refusals.grid, &here.refusals.data, &here.refusals.bitmap})
        if (!reason->empty() && field.refusal.empty())
            field.refusal = *reason;
    if (!field.refusal.empty())
        return;
    bool const is_by_column = Scan::of(field.geometry.scan_flags).j_consecutive;
    field.packing.row_length =
        field.has_bitmap ? 0 : static_cast<std::size_t>(is_by_column ? field.geometry.ny : field.geometry.nx);
    field.refusal = checkField(field);
    field.points = field.geometry.points();
}

/// Simple packing goes through a small buffer, so that the octets of the message never leave the nearest caches.
std::string Reader::unpackInPieces(Field const & field, std::span<float> values)
{
    Packing const & packing = field.packing;
    std::size_t const at_once =
        OCTETS_AT_ONCE / std::max(packing.bits, 1U) * 8; // so that pieces begin with whole octets
    for (std::size_t first = 0; first < values.size(); first += at_once) {
        auto const piece = values.subspan(first, std::min(at_once, values.size() - first));
        std::uint64_t const position = field.data.position + std::uint64_t{first} / 8 * packing.bits;
        input.release(position);
        Octets const packed = input.view(position, (std::uint64_t{piece.size()} * packing.bits + 7) / 8);
        if (!holds(packed, 0, packing.bits, piece.size()))
            return "cut short";
        unpackScaled(packed, 0, packing.bits, packing.scale, piece);
    }
    return {};
}

std::string Reader::unpack(Field const & field, std::span<float> values)
{
    auto const coded = values.first(static_cast<std::size_t>(field.geometry.codedPoints()));
    bool const is_simple = field.packing.kind == PackingKind::SIMPLE && !field.has_bitmap;
    std::string fault = is_simple ? unpackInPieces(field, coded) : unpackWhole(field, coded);
    if (fault.empty()) {
        spreadPole(field.geometry, values);
        arrange(Scan::of(field.geometry.scan_flags), field.geometry.nx, field.geometry.ny, values, spare);
    }
    return fault;
}

/// Bitmap and data in memory.
std::string Reader::unpackWhole(Field const & field, std::span<float> values)
{
    input.release(
        std::min(field.has_bitmap ? field.bitmap.position : field.data.position, field.data.position));
    std::vector<Octet> bitmap_copy;
    Octets bitmap;
    Octets data;
    if (field.has_bitmap) {
        // One view over both where they lie close together, as they do but for bitmaps of earlier fields.
        std::uint64_t const span = field.data.position + field.data.length - field.bitmap.position;
        if (field.bitmap.position < field.data.position &&
            span <= field.bitmap.length + field.data.length + LARGEST_HEAD) {
            Octets const both = input.view(field.bitmap.position, span);
            if (both.size() < span)
                return "cut short";
            bitmap = both.first(static_cast<std::size_t>(field.bitmap.length));
            data = both.subspan(static_cast<std::size_t>(field.data.position - field.bitmap.position));
        } else {
            Octets const view = input.view(field.bitmap.position, field.bitmap.length);
            bitmap_copy.assign(view.begin(), view.end());
            bitmap = bitmap_copy;
        }
    }
    if (data.empty())
        data = input.view(field.data.position, field.data.length);
    if (data.size() < field.data.length || (field.has_bitmap && bitmap.size() < field.bitmap.length))
        return "cut short";
    return unpackValues(field, bitmap, data, values);
}

} // namespace Yul::detail::grib
