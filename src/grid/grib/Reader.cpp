#include "grid/grib/Reader.h"

#include "core/Format.h"
#include "grid/grib/Scan.h"
#include "grid/grib/Search.h"
#include "grid/grib/Values.h"

#include <algorithm>
#include <utility>

namespace Yul::detail::grib {
namespace {

constexpr std::uint64_t EDITION1_INDICATOR = 8;
constexpr std::uint64_t EDITION2_INDICATOR = 16;

} // namespace

int Reader::open(char const * name)
{
    close();
    return input.open(name);
}

int Reader::close()
{
    if (!isOpen())
        return 1;
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
    here.is_told = position > 0;
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

/// Moves to the next message, behind the next octet of the list that has one where there is a list. A place that was told
/// may be that of a message itself.
bool Reader::search()
{
    bool const is_told = std::exchange(here.is_told, false);
    if (starts.empty() || (is_told && isMessage(input, here.position)))
        return searchHere();
    for (auto start = std::ranges::lower_bound(starts, here.position); start != starts.end(); ++start) {
        here.position = *start;
        if (searchHere())
            return true;
    }
    return false;
}

/// Moves to the next "GRIB" behind the current position.
bool Reader::searchHere()
{
    std::uint64_t const start = here.position;
    switch (searchNear(input, here.position)) {
    case Sought::FOUND:
        has_found_any = true;
        return true;
    case Sought::END:
        if (!has_found_any)
            warn(format("GribFile::read: No GRIB message in %s\n", name().c_str()));
        return false;
    case Sought::NOT_NEAR:
        warn(format("searchGRIB failed to find GRIB: %lld\n", static_cast<long long>(start)));
        return false;
    }
    return false;
}

/// Goes on behind a damaged message: with the next "GRIB" however far, or where there is a list of octets at its next one.
void Reader::searchOn(std::uint64_t from)
{
    quit(from);
    if (starts.empty())
        searchFar(input, here.position);
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

/// Ends the message, and with it the wish for its bitmap.
void Reader::quit(std::uint64_t next_position)
{
    here.is_inside = false;
    here.position = next_position;
    input.keep(Input::NOWHERE);
}

/// Ends the message; the search for the next one begins at a position.
void Reader::leave(std::uint64_t next_position)
{
    quit(next_position);
    input.release(next_position);
}

/// Names a damaged message and moves to the next one.
void Reader::abandon(std::string const & fault, std::uint64_t next_position)
{
    warn(format("GribFile::read: %s: message at octet %llu skipped: %s\n", name().c_str(),
                static_cast<unsigned long long>(here.message), fault.c_str()));
    searchOn(next_position);
}

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

std::string Reader::unpack(Field const & field, std::span<float> values)
{
    return field_values.read(input, field, values);
}

} // namespace Yul::detail::grib
