#include "grid/grib/packing/SecondOrder.h"

#include "core/Format.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t FIRST_OCTET = 12; // of the section, where `data` begins
constexpr std::size_t WIDTHS_OCTET = 22;
constexpr unsigned MATRIX = 0x40; // bits of octet 14
constexpr unsigned SECONDARY_BITMAP = 0x20;
constexpr unsigned WIDTH_EACH = 0x10;
constexpr unsigned EXTENSIONS = 0x0f;
constexpr std::size_t BLOCK = 512;
constexpr unsigned WIDEST = 31;

/// The octets from one of the section on; empty beyond its end.
Octets from(Octets data, std::size_t octet) noexcept
{
    return octet >= FIRST_OCTET && octet - FIRST_OCTET <= data.size() ? data.subspan(octet - FIRST_OCTET)
                                                                      : Octets{};
}

bool bitAt(Octets octets, std::size_t bit) noexcept
{
    return (octets[bit / 8] >> (7 - bit % 8) & 1U) != 0;
}

/// How many values the group that begins at a value has.
std::size_t groupLength(Octets bitmap, std::size_t row_length, std::size_t first, std::size_t count) noexcept
{
    if (bitmap.empty())
        return std::min(row_length, count - first);
    std::size_t next = first + 1;
    while (next < count && !bitAt(bitmap, next))
        ++next;
    return next - first;
}

} // namespace

std::string unpackSecondOrder(Octets data, Packing const & p, std::span<float> out)
{
    if ((p.second_flags & (MATRIX | EXTENSIONS)) != 0)
        return format("second-order packing with extensions (flags %u)", p.second_flags);
    bool const has_bitmap = (p.second_flags & SECONDARY_BITMAP) != 0;
    std::size_t const widths = (p.second_flags & WIDTH_EACH) != 0 ? p.groups : 1;
    Octets const width_of = from(data, WIDTHS_OCTET);
    Octets const first_order = from(data, p.first_values_octet);
    Octets const second_order = from(data, p.second_values_octet);
    Octets const bitmap = has_bitmap ? from(data, WIDTHS_OCTET + widths) : Octets{};
    bool const is_whole =
        width_of.size() >= widths && holds(first_order, 0, p.bits, p.groups) &&
        (has_bitmap ? bitmap.size() >= (out.size() + 7) / 8 && !bitmap.empty() : p.row_length > 0);
    if (!is_whole || p.bits > WIDEST)
        return "second-order packing does not fit its section";

    std::array<std::uint32_t, BLOCK> numbers;
    std::uint64_t bit = 0;
    std::size_t done = 0;
    for (std::size_t group = 0; group < p.groups && done < out.size(); ++group) {
        unsigned const width = width_of[widths > 1 ? group : 0];
        std::size_t const length = groupLength(bitmap, p.row_length, done, out.size());
        if (width > WIDEST || !holds(second_order, bit, width, length))
            return format("group %zu of %u does not fit", group + 1, p.groups);
        std::uint32_t base = 0;
        unpackIntegers(first_order, std::uint64_t{group} * p.bits, p.bits, 0, std::span(&base, 1));
        for (std::size_t at = 0; at < length; at += BLOCK) {
            auto const piece = std::span(numbers).first(std::min(BLOCK, length - at));
            unpackIntegers(second_order, bit + std::uint64_t{at} * width, width, base, piece);
            scaleIntegers(piece, p.scale, out.data() + done + at);
        }
        bit += std::uint64_t{length} * width;
        done += length;
    }
    return done == out.size() ? std::string() : format("groups hold %zu values too few", out.size() - done);
}

} // namespace Yul::detail::grib
