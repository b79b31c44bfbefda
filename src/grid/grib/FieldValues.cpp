#include "grid/grib/FieldValues.h"

#include "grid/PieceOrder.h"
#include "grid/grib/Scan.h"
#include "grid/grib/Values.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>

namespace Yul::detail::grib {
namespace {

constexpr std::uint64_t LARGEST_GAP = 1 << 16; // between bitmap and data that are viewed as one

constexpr char const * CUT_SHORT = "cut short";

/// Simple packing goes through a small buffer, so that the octets of the message never leave the nearest caches.
std::string unpackInPieces(Input & input, Field const & field, std::span<float> values)
{
    Packing const & packing = field.packing;
    std::size_t const at_once =
        Buffer::HANDY / std::max(packing.bits, 1U) * 8; // so that pieces begin with whole octets
    PieceOrder const pieces(values.size(), at_once, field.data.length,
                            [&](std::uint64_t octet) { return input.isAtHand(field.data.position + octet); });
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        auto const [first, count] = pieces[i];
        auto const piece = values.subspan(first, count);
        std::uint64_t const position = field.data.position + std::uint64_t{first} / 8 * packing.bits;
        input.release(position);
        Octets const packed = input.view(position, (std::uint64_t{piece.size()} * packing.bits + 7) / 8);
        if (!holds(packed, 0, packing.bits, piece.size()))
            return CUT_SHORT;
        unpackScaled(packed, 0, packing.bits, packing.scale, piece);
    }
    return {};
}

/// Whether the data lie so close behind the bitmap that one view takes both.
bool areTogether(Extent const & bitmap, Extent const & data)
{
    std::uint64_t const end = bitmap.position + bitmap.length;
    return end <= data.position && data.position - end <= LARGEST_GAP;
}

std::string unpackBehindBitmap(Input & input, Field const & field, std::span<float> values)
{
    Extent const & bitmap = field.bitmap;
    Extent const & data = field.data;
    input.release(std::min(bitmap.position, data.position));
    if (areTogether(bitmap, data)) {
        std::uint64_t const distance = data.position - bitmap.position;
        Octets const both = input.view(bitmap.position, distance + data.length);
        if (both.size() < distance + data.length)
            return CUT_SHORT;
        return unpackValues(field, both.first(bitmap.length), both.subspan(distance), values);
    }
    // The bitmap of an earlier field: a copy, since the next view takes its place.
    Octets const view = input.view(bitmap.position, bitmap.length);
    std::vector<Octet> const copy(view.begin(), view.end());
    Octets const octets = input.view(data.position, data.length);
    if (copy.size() < bitmap.length || octets.size() < data.length)
        return CUT_SHORT;
    return unpackValues(field, copy, octets, values);
}

std::string unpackWhole(Input & input, Field const & field, std::span<float> values)
{
    input.release(field.data.position);
    Octets const octets = input.view(field.data.position, field.data.length);
    return octets.size() < field.data.length ? CUT_SHORT : unpackValues(field, {}, octets, values);
}

} // namespace

std::string FieldValues::read(Input & input, Field const & field, std::span<float> values)
{
    auto const coded = values.first(static_cast<std::size_t>(field.geometry.codedPoints()));
    bool const is_simple = field.packing.kind == PackingKind::SIMPLE;
    auto const unpack = field.has_bitmap ? unpackBehindBitmap : is_simple ? unpackInPieces : unpackWhole;
    std::string fault = unpack(input, field, coded);
    if (fault.empty()) {
        spreadPole(field.geometry, values);
        arrange(Scan::of(field.geometry.scan_flags), field.geometry.nx, field.geometry.ny, values, spare);
    }
    return fault;
}

} // namespace Yul::detail::grib
