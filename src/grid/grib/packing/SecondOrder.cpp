#include "grid/grib/packing/SecondOrder.h"

#include "core/Format.h"
#include "grid/grib/packing/Differences.h"
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
constexpr unsigned GENERAL_EXTENDED = 0x08;
constexpr unsigned EXTENSIONS = 0x0f;
constexpr unsigned ORDER = 0x03;
constexpr std::size_t BLOCK = 512;
constexpr unsigned WIDEST = 31;
constexpr char const * MISFIT = "second-order packing does not fit its section";

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

/// Numbers of one width, the first at the head of the octets.
class Table
{
public:
    /// Cuts the table off the front of the data, in whole octets; false when it is not there as a whole.
    [[nodiscard]] bool cut(Octets & data, unsigned number_width, std::size_t count)
    {
        width = number_width;
        if (width > WIDEST || !holds(data, 0, width, count))
            return false;
        std::size_t const length = (count * width + 7) / 8;
        octets = data.first(length);
        data = data.subspan(length);
        return true;
    }

    [[nodiscard]] std::uint32_t operator[](std::size_t i) const noexcept
    {
        std::uint32_t number = 0;
        unpackIntegers(octets, std::uint64_t{i} * width, width, 0, std::span(&number, 1));
        return number;
    }

private:
    Octets octets;
    unsigned width = 0;
};

/// Second-order values, one group behind the other, on their way to scaled values.
class Groups
{
public:
    Groups(Octets second_order,
           Scale const & scale_values,
           Differences const & state,
           std::span<float> values)
        : packed(second_order), scale(scale_values), differences(state), out(values)
    {
    }

    /// The next group; false when its numbers are not there or go beyond the grid.
    [[nodiscard]] bool add(unsigned width, std::uint32_t base, std::size_t length) noexcept
    {
        if (width > WIDEST || length > left() || !holds(packed, bit, width, length))
            return false;
        for (std::size_t at = 0; at < length; at += BLOCK) {
            auto const piece = std::span(numbers).first(std::min(BLOCK, length - at));
            unpackIntegers(packed, bit + std::uint64_t{at} * width, width, base, piece);
            put(piece);
        }
        bit += std::uint64_t{length} * width;
        return true;
    }

    /// The values at the head of all that are given in full.
    void addGiven(std::size_t count) noexcept { put(std::span(numbers).first(count)); }

    [[nodiscard]] std::size_t done() const noexcept { return at; }

    [[nodiscard]] std::size_t left() const noexcept { return out.size() - at; }

private:
    void put(std::span<std::uint32_t> piece) noexcept
    {
        differences.undo(piece);
        scaleIntegers(piece, scale, out.data() + at);
        at += piece.size();
    }

    Octets packed;
    Scale scale;
    Differences differences;
    std::span<float> out;
    std::uint64_t bit = 0;
    std::size_t at = 0;
    std::array<std::uint32_t, BLOCK> numbers{};
};

std::string misfitOf(std::size_t group, Packing const & p)
{
    return format("group %zu of %u does not fit", group + 1, p.groups);
}

std::string shortageOf(Groups const & groups)
{
    return groups.left() == 0 ? std::string() : format("groups hold %zu values too few", groups.left());
}

/// Groups with a width and a length each, of differences of order 0 to 3: ECMWF's general extended form. Its tables follow
/// each other; the octets at which they begin are coded too, but in too few bits for long fields.
std::string unpackExtended(Octets data, Packing const & p, std::span<float> out)
{
    unsigned const order = p.second_flags & ORDER;
    constexpr std::size_t BEFORE = FIRST_OCTET - 1;
    Section head(data);
    unsigned const width_bits = head.u8(22 - BEFORE);
    unsigned const length_bits = head.u8(23 - BEFORE);
    unsigned const given_bits = order > 0 ? head.u8(26 - BEFORE) : 0;
    Octets rest = from(data, order > 0 ? 27 : 26);
    Table given;
    Table widths;
    Table lengths;
    Table bases;
    bool const is_whole = !head.isShort() && given.cut(rest, given_bits, order > 0 ? order + 1 : 0) &&
                          widths.cut(rest, width_bits, p.groups) &&
                          lengths.cut(rest, length_bits, p.groups) && bases.cut(rest, p.bits, p.groups);
    if (!is_whole || order > out.size() || p.groups > out.size())
        return MISFIT;
    std::array<std::uint32_t, Differences::HIGHEST_ORDER> first{};
    for (unsigned i = 0; i < order; ++i)
        first[i] = given[i];
    std::int64_t const least = given_bits > 0 ? signMagnitude(given[order], given_bits) : 0;
    Groups groups(rest, p.scale, {std::span(first).first(order), static_cast<std::uint32_t>(least)}, out);
    groups.addGiven(order);
    for (std::size_t group = 0; group < p.groups; ++group)
        if (!groups.add(widths[group], bases[group], lengths[group]))
            return misfitOf(group, p);
    return shortageOf(groups);
}

} // namespace

std::string unpackSecondOrder(Octets data, Packing const & p, std::span<float> out)
{
    unsigned const extensions = p.second_flags & EXTENSIONS;
    bool const has_bitmap = (p.second_flags & SECONDARY_BITMAP) != 0;
    bool const is_extended = (extensions & GENERAL_EXTENDED) != 0;
    if ((p.second_flags & MATRIX) != 0 || (extensions != 0 && !is_extended) || (is_extended && has_bitmap))
        return format("second-order packing with extensions (flags %u)", p.second_flags);
    if (is_extended)
        return unpackExtended(data, p, out);
    std::size_t const widths = (p.second_flags & WIDTH_EACH) != 0 ? p.groups : 1;
    Octets const width_of = from(data, WIDTHS_OCTET);
    Octets const bitmap = has_bitmap ? from(data, WIDTHS_OCTET + widths) : Octets{};
    Table bases;
    Octets first_order = from(data, p.first_values_octet);
    bool const is_whole =
        width_of.size() >= widths && bases.cut(first_order, p.bits, p.groups) &&
        (has_bitmap ? bitmap.size() >= (out.size() + 7) / 8 && !bitmap.empty() : p.row_length > 0);
    if (!is_whole)
        return MISFIT;
    Groups groups(from(data, p.second_values_octet), p.scale, {}, out);
    for (std::size_t group = 0; group < p.groups && groups.left() > 0; ++group) {
        std::size_t const length = groupLength(bitmap, p.row_length, groups.done(), out.size());
        if (!groups.add(width_of[widths > 1 ? group : 0], bases[group], length))
            return misfitOf(group, p);
    }
    return shortageOf(groups);
}

} // namespace Yul::detail::grib
