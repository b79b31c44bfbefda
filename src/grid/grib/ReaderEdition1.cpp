// The sections of a message of edition 1.
#include "core/Format.h"
#include "grid/grib/Edition1.h"
#include "grid/grib/Reader.h"
#include "grid/grib/Scan.h"

#include <algorithm>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t PDB_LEAST = 24;
constexpr std::size_t BITMAP_HEAD = 6;
constexpr std::size_t BDB_HEAD = 21;
constexpr std::size_t BDB_LEAST = 11;

constexpr std::uint64_t LARGE = 0x800000; // bit of the length of a message
constexpr std::uint64_t LARGE_UNIT = 120;

} // namespace

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
    std::uint64_t position = here.position;
    if (char const * const cut = takeSections1(position)) {
        abandon(format("%s section is cut short", cut), here.message + 4);
        return false;
    }
    std::uint64_t const end = position + END_MARK;
    if (end > here.message_end) {
        abandon(format("it is to have %llu octets, but its sections have %llu",
                       static_cast<unsigned long long>(here.message_end - here.message),
                       static_cast<unsigned long long>(end - here.message)),
                position);
        return false;
    }
    complete(here.state);
    field = here.state;
    leave(std::max(end, input.reaches(here.message_end) ? here.message_end : end));
    return true;
}

/// Takes what the sections of the message say, one after the other, and moves behind them. Names the one that is not there
/// as a whole; null when all are.
char const * Reader::takeSections1(std::uint64_t & position)
{
    Presence presence;
    if (!takeProduct1(position, presence))
        return "product definition";
    if (!takeGrid1(position, presence))
        return "grid description";
    here.state.has_bitmap = presence.has_bitmap;
    if (presence.has_bitmap && !takeBitmap1(position))
        return "bitmap";
    return takeData1(position, presence.decimal) ? nullptr : "binary data";
}

bool Reader::takeProduct1(std::uint64_t & position, Presence & presence)
{
    Section section;
    Extent extent;
    if (!takeSection1(position, LARGEST_HEAD, section, extent) || section.size() < PDB_LEAST)
        return false;
    here.refusals.product = readPDB(section, here.state.product, presence);
    return true;
}

bool Reader::takeGrid1(std::uint64_t & position, Presence const & presence)
{
    Section section;
    Extent extent;
    if (!presence.has_grid) {
        here.refusals.grid = predefinedGrid(presence.grid_id, here.state.geometry);
        return true;
    }
    if (!takeSection1(position, LARGEST_HEAD, section, extent))
        return false;
    here.refusals.grid = readGDB(section, here.state.geometry);
    return true;
}

bool Reader::takeBitmap1(std::uint64_t & position)
{
    Section section;
    Extent extent;
    if (!takeSection1(position, BITMAP_HEAD, section, extent) || extent.length < BITMAP_HEAD)
        return false;
    if (section.u16(5) != 0)
        here.refusals.bitmap = format("bitmap %u of the centre's own", section.u16(5));
    here.state.bitmap = {extent.position + BITMAP_HEAD, extent.length - BITMAP_HEAD};
    return true;
}

bool Reader::takeData1(std::uint64_t & position, int decimal)
{
    Field & f = here.state;
    Section section;
    Extent extent;
    if (!takeSection1(position, BDB_HEAD, section, extent, true) || extent.length < BDB_LEAST)
        return false;
    here.refusals.data = readBDB(section, decimal, f.packing);
    if (f.packing.is_alternating)
        f.geometry.scan_flags |= Scan::ALTERNATING;
    f.data = {extent.position + BDB_LEAST, extent.length - BDB_LEAST};
    return true;
}

} // namespace Yul::detail::grib
