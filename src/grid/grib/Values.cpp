#include "grid/grib/Values.h"

#include "core/Format.h"
#include "grid/grib/packing/Bitmap.h"
#include "grid/grib/packing/Ccsds.h"
#include "grid/grib/packing/Complex.h"
#include "grid/grib/packing/Ieee.h"
#include "grid/grib/packing/Jpeg2000.h"
#include "grid/grib/packing/Png.h"
#include "grid/grib/packing/RunLength.h"
#include "grid/grib/packing/SecondOrder.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul::detail::grib {
namespace {

/// The most points of a grid; it also bounds what a few octets of a constant field can ask for.
constexpr std::uint64_t MAX_POINTS = std::uint64_t{1} << 27;

std::string unpackSimple(Octets data, Packing const & packing, std::span<float> values)
{
    if (!holds(data, 0, packing.bits, values.size()))
        return format("%zu octets of data for %zu values of %u bits", data.size(), values.size(),
                      packing.bits);
    unpackScaled(data, 0, packing.bits, packing.scale, values);
    return {};
}

struct Unpacker
{
    PackingKind kind;
    std::string (*unpack)(Octets, Packing const &, std::span<float>);
};

constexpr Unpacker UNPACKERS[] = {
    {PackingKind::SIMPLE, unpackSimple},
    {PackingKind::COMPLEX, unpackComplex},
    {PackingKind::IEEE, unpackIeee},
    {PackingKind::JPEG2000, unpackJpeg2000},
    {PackingKind::PNG, unpackPng},
    {PackingKind::CCSDS, unpackCcsds},
    {PackingKind::RUN_LENGTH, unpackRunLength},
    {PackingKind::SECOND_ORDER, unpackSecondOrder},
};

Unpacker const * findUnpacker(PackingKind kind) noexcept
{
    for (auto const & row : UNPACKERS)
        if (row.kind == kind)
            return &row;
    return nullptr;
}

/// Values that no float can hold come from damaged scale factors.
bool isWithinFloat(Scale const & scale, unsigned bits) noexcept
{
    double const low = scale(0);
    double const high = bits > 0 ? scale(std::ldexp(1.0, static_cast<int>(bits))) : low;
    constexpr double LARGEST = std::numeric_limits<float>::max();
    return std::abs(low) <= LARGEST && std::abs(high) <= LARGEST; // false for NaN
}

} // namespace

std::string checkField(Field const & field)
{
    Geometry const & g = field.geometry;
    if (g.kind == GridKind::NONE || field.packing.kind == PackingKind::NONE)
        return "no grid or no data definition";
    if (g.nx < 1 || g.ny < 1 || g.points() > MAX_POINTS)
        return format("grid of %d by %d points", g.nx, g.ny);
    if ((g.scan_flags & 0x0fU) != 0)
        return format("staggered rows (scanning mode %u)", g.scan_flags);
    if (findUnpacker(field.packing.kind) == nullptr)
        return format("data template 5.%d", field.packing.template_number);
    std::uint64_t const points = g.codedPoints();
    std::uint64_t const packed = field.packing.points;
    if (field.has_bitmap && field.bitmap.length < (points + 7) / 8)
        return format("bitmap of %llu octets for %llu points",
                      static_cast<unsigned long long>(field.bitmap.length),
                      static_cast<unsigned long long>(points));
    if (field.edition == 2 && (packed > points || (!field.has_bitmap && packed != points)))
        return format("%llu values for %llu points", static_cast<unsigned long long>(packed),
                      static_cast<unsigned long long>(points));
    if (field.packing.kind == PackingKind::SIMPLE && !field.has_bitmap &&
        field.data.length < (points * field.packing.bits + 7) / 8)
        return format("%llu octets of data for %llu values of %u bits",
                      static_cast<unsigned long long>(field.data.length),
                      static_cast<unsigned long long>(points), field.packing.bits);
    if (!isWithinFloat(field.packing.scale, field.packing.bits))
        return "scale factors beyond the range of values";
    return {};
}

void spreadPole(Geometry const & geometry, std::span<float> values) noexcept
{
    auto const row = static_cast<std::size_t>(geometry.nx);
    std::size_t const coded = values.size() - row + 1;
    if (geometry.pole_row == PoleRow::LAST)
        std::fill(values.begin() + static_cast<std::ptrdiff_t>(coded), values.end(), values[coded - 1]);
    else if (geometry.pole_row == PoleRow::FIRST) {
        std::copy_backward(values.begin() + 1, values.begin() + static_cast<std::ptrdiff_t>(coded),
                           values.end());
        std::fill_n(values.begin() + 1, row - 1, values[0]);
    }
}

std::string unpackValues(Field const & field, Octets bitmap, Octets data, std::span<float> values)
{
    Unpacker const * const unpacker = findUnpacker(field.packing.kind);
    if (unpacker == nullptr)
        return "packing";
    if (!field.has_bitmap)
        return unpacker->unpack(data, field.packing, values);
    std::uint64_t const present = countPresent(bitmap, values.size());
    if (field.edition == 2 && present != field.packing.points)
        return format("bitmap shows %llu values, but %llu are packed",
                      static_cast<unsigned long long>(present),
                      static_cast<unsigned long long>(field.packing.points));
    std::string fault;
    if (present > 0) // else whatever the packing says has no meaning
        fault = unpacker->unpack(data, field.packing, values.last(static_cast<std::size_t>(present)));
    if (fault.empty())
        expand(bitmap, values);
    return fault;
}

} // namespace Yul::detail::grib
