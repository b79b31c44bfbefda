#include "grid/grib/packing/Complex.h"

#include "core/Const.h"
#include "core/Format.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t BLOCK = 256; // groups whose tables are unpacked at once
constexpr std::size_t BUFFER =
    4096; // values between unpacking and scaling, so that they stay in the nearest cache
constexpr unsigned WIDEST = 31;

/// One of the three tables at the head of the section, a number a group; each begins on an octet.
class GroupTable
{
public:
    GroupTable(Octets octets, unsigned width_bits) : packed(octets), width(width_bits) {}

    void unpack(std::size_t first, std::uint32_t base, std::span<std::uint32_t> out) const noexcept
    {
        unpackIntegers(packed, static_cast<std::uint64_t>(first) * width, width, base, out);
    }

private:
    Octets packed;
    unsigned width;
};

/// Undoes the differences of the values that pass through it, in order. Sums are modulo 2^32, which changes
/// no result that fits into 32 bits.
class Differences
{
public:
    Differences() = default;

    Differences(unsigned order_number, std::array<std::uint32_t, 2> const & first, std::uint32_t minimum)
        : order(order_number), given(first), min(minimum)
    {
    }

    void undo(std::span<std::uint32_t> values) noexcept
    {
        std::size_t i = 0;
        for (; i < values.size() && seen < order; ++i, ++seen)
            start(values[i]);
        if (order == 1)
            for (; i < values.size(); ++i)
                values[i] = sum += values[i] + min;
        else if (order == 2)
            for (; i < values.size(); ++i) {
                slope += values[i] + min;
                values[i] = sum += slope;
            }
    }

private:
    /// The first one or two values are given in full.
    void start(std::uint32_t & value) noexcept
    {
        value = given[seen];
        slope = value - sum;
        sum = value;
    }

    unsigned order = 0;
    unsigned seen = 0;
    std::array<std::uint32_t, 2> given{};
    std::uint32_t min = 0;
    std::uint32_t sum = 0;
    std::uint32_t slope = 0;
};

/// Unpacked numbers on their way to scaled values.
class Values
{
public:
    Values(Packing const & packing_values, Differences const & state, std::span<float> values)
        : packing(packing_values), differences(state), out(values)
    {
    }

    [[nodiscard]] std::size_t left() const noexcept { return out.size() - done - held; }

    [[nodiscard]] std::size_t room() const noexcept { return BUFFER - held; }

    void add(Octets packed, std::uint64_t bit, unsigned width, std::uint32_t base, std::size_t count) noexcept
    {
        unpackIntegers(packed, bit, width, base, std::span(buffer).subspan(held, count));
        held += count;
    }

    /// Numbers of a group with substitutes for missing values, which take no part in the differences.
    void addSubstituted(
        Octets packed, std::uint64_t bit, unsigned width, std::uint32_t base, std::size_t count) noexcept
    {
        flush();
        unpackIntegers(packed, bit, width, 0, std::span(buffer).first(count));
        unsigned const bits =
            width > 0 ? width : packing.bits; // a group of one number tells by its reference
        std::uint32_t const top = bits > 0 ? (std::uint32_t{1} << bits) - 1 : 0;
        std::uint32_t const lowest = packing.missing_management == 2 && bits > 1 ? top - 1 : top;
        std::size_t present = 0;
        for (std::size_t i = 0; i < count; ++i) {
            std::uint32_t const tell = width > 0 ? buffer[i] : base;
            is_missing[i] = bits > 0 && tell >= lowest;
            if (!is_missing[i])
                buffer[present++] = buffer[i] + base;
        }
        differences.undo(std::span(buffer).first(present));
        std::array<float, BUFFER> scaled;
        scaleIntegers(std::span(buffer).first(present), packing.scale, scaled.data());
        std::size_t next = 0;
        for (std::size_t i = 0; i < count; ++i)
            out[done + i] = is_missing[i] ? static_cast<float>(Const::MISS) : scaled[next++];
        done += count;
    }

    void flush() noexcept
    {
        differences.undo(std::span(buffer).first(held));
        scaleIntegers(std::span(buffer).first(held), packing.scale, out.data() + done);
        done += held;
        held = 0;
    }

private:
    Packing const & packing;
    Differences differences;
    std::span<float> out;
    std::size_t done = 0;
    std::size_t held = 0;
    std::array<std::uint32_t, BUFFER> buffer;
    std::array<bool, BUFFER> is_missing;
};

/// The values before the group tables: the first one or two values in full, and the least difference.
[[nodiscard]] bool readDescriptors(Octets & data, Packing const & packing, Differences & differences)
{
    if (packing.order == 0)
        return true;
    std::size_t const octets = packing.extra_octets;
    std::size_t const count = packing.order + 1;
    if (octets > 4 || count * octets > data.size())
        return false;
    Section section(data);
    std::array<std::uint32_t, 3> numbers{};
    for (std::size_t i = 0; i < count && octets > 0; ++i)
        numbers[i] = static_cast<std::uint32_t>(
            signMagnitude(section.number(1 + i * octets, octets), static_cast<unsigned>(8 * octets)));
    differences = {packing.order, {numbers[0], packing.order == 2 ? numbers[1] : 0}, numbers[packing.order]};
    data = data.subspan(count * octets);
    return true;
}

/// Cuts a table off the front of the data.
[[nodiscard]] bool cutTable(Octets & data, unsigned width, std::uint64_t count, Octets & table)
{
    if (width > WIDEST || !holds(data, 0, width, count))
        return false;
    std::size_t const octets = static_cast<std::size_t>((count * width + 7) / 8);
    table = data.first(octets);
    data = data.subspan(octets);
    return true;
}

} // namespace

std::string unpackComplex(Octets data, Packing const & p, std::span<float> out)
{
    Differences differences;
    Octets references;
    Octets widths;
    Octets lengths;
    if (p.groups == 0 && p.bits == 0) {
        std::fill(out.begin(), out.end(), static_cast<float>(p.scale(0)));
        return {};
    }
    if (p.groups > out.size())
        return format("%u groups for %zu values", p.groups, out.size());
    if (!readDescriptors(data, p, differences) || !cutTable(data, p.bits, p.groups, references) ||
        !cutTable(data, p.width_bits, p.groups, widths) || !cutTable(data, p.length_bits, p.groups, lengths))
        return "data section too short for its groups";

    GroupTable const reference_table(references, p.bits);
    GroupTable const width_table(widths, p.width_bits);
    GroupTable const length_table(lengths, p.length_bits);
    std::array<std::uint32_t, BLOCK> reference;
    std::array<std::uint32_t, BLOCK> width;
    std::array<std::uint32_t, BLOCK> scaled_length;
    Values values(p, differences, out);
    std::uint64_t bit = 0;
    for (std::size_t first = 0; first < p.groups; first += BLOCK) {
        std::size_t const block = std::min<std::size_t>(BLOCK, p.groups - first);
        reference_table.unpack(first, 0, std::span(reference).first(block));
        width_table.unpack(first, p.width_reference, std::span(width).first(block));
        length_table.unpack(first, 0, std::span(scaled_length).first(block));
        for (std::size_t g = 0; g < block; ++g) {
            bool const is_last = first + g + 1 == p.groups;
            std::uint64_t length =
                is_last ? p.last_length
                        : p.length_reference + std::uint64_t{p.length_increment} * scaled_length[g];
            if (length > values.left() || width[g] > WIDEST || !holds(data, bit, width[g], length))
                return format("group %zu of %u does not fit", first + g + 1, p.groups);
            while (length > 0) {
                if (values.room() == 0)
                    values.flush();
                std::size_t const piece = static_cast<std::size_t>(
                    std::min<std::uint64_t>(length, p.missing_management != 0 ? BUFFER : values.room()));
                if (p.missing_management != 0)
                    values.addSubstituted(data, bit, width[g], reference[g], piece);
                else
                    values.add(data, bit, width[g], reference[g], piece);
                bit += std::uint64_t{piece} * width[g];
                length -= piece;
            }
        }
    }
    values.flush();
    return values.left() == 0 ? std::string() : format("groups hold %zu values too few", values.left());
}

} // namespace Yul::detail::grib
