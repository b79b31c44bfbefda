// Packed values of GRIB: descriptions of a packing with bitmap and data, straight to the kernels that unpack them.
//
// Input: one octet of flags (1 edition 2, 2 bitmap), columns less one, two octets with the rows less one, and in edition 2
// one with the length of section 5 and that section; then the bitmap, and the data: the octets behind the head of section 7,
// or the whole binary data section of edition 1.
#include "grid/grib/Edition1.h"
#include "grid/grib/Edition2.h"
#include "grid/grib/Values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

using namespace Yul::detail::grib;

constexpr std::size_t HEAD = 4;
constexpr std::size_t LARGEST = 1 << 14;

Octets take(Octets & input, std::size_t count)
{
    Octets const taken = input.first(std::min(count, input.size()));
    input = input.subspan(taken.size());
    return taken;
}

/// The field that an input describes; what is left of the input is its data.
Field describe(Octets & input, Octets & bitmap)
{
    Octets const head = take(input, HEAD);
    Field field;
    field.edition = (head[0] & 1U) != 0 ? 2 : 1;
    field.has_bitmap = (head[0] & 2U) != 0;
    field.geometry.kind = GridKind::LATLON;
    field.geometry.nx = head[1] + 1;
    field.geometry.ny = (head[2] << 8 | head[3]) + 1;
    field.points = field.geometry.points();
    Octets const section = field.edition == 2 && !input.empty() ? take(input, take(input, 1)[0]) : Octets{};
    if (field.has_bitmap)
        bitmap = take(input, (field.points + 7) / 8);
    field.bitmap.length = bitmap.size();
    if (field.edition == 2)
        field.refusal = readDRS(Section(section), field.packing);
    else {
        field.refusal = readBDB(Section(input), 0, field.packing);
        input = input.subspan(std::min<std::size_t>(11, input.size()));
    }
    field.packing.row_length = field.has_bitmap ? 0 : static_cast<std::size_t>(field.geometry.nx);
    field.data.length = input.size();
    return field;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    if (size < HEAD)
        return 0;
    Octets input(data, size);
    Octets bitmap;
    Field const field = describe(input, bitmap);
    if (!field.refusal.empty() || field.points > LARGEST || !checkField(field).empty())
        return 0;
    // Copies of their own sizes, so that reading beyond them is seen.
    std::vector<Octet> const own_bitmap(bitmap.begin(), bitmap.end());
    std::vector<Octet> const own_data(input.begin(), input.end());
    std::vector<float> values(field.points);
    if (unpackValues(field, own_bitmap, own_data, values).empty() &&
        std::any_of(values.begin(), values.end(), [](float value) { return std::isnan(value); }))
        __builtin_trap();
    return 0;
}
