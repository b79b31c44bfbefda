#include "grid/grib/packing/Complex.h"

#include "core/Const.h"
#include "core/Format.h"
#include "grid/grib/packing/Differences.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t BLOCK = 256; // groups whose tables are unpacked at once
constexpr std::size_t BUFFER =
    4096; // values between unpacking and scaling, so that they stay in the nearest cache
constexpr unsigned WIDEST = 31;

/// Unpacked numbers on their way to scaled values.
class Values
{
public:
    Values(Packing const & packing_values, Differences const & state, std::span<float> values)
        : packing(packing_values), differences(state), out(values)
    {
    }

    /// Takes groups whose numbers are there and fit into what is left of the grid.
    void add(Octets packed, std::uint64_t bit, GroupRows groups) noexcept
    {
        while (groups.count > 0) {
            Run run = nextRun(groups);
            if (run.groups == 0) {
                flush();
                run = nextRun(groups);
            }
            if (run.groups > 0) {
                unpackGroups(packed, bit, {groups.base, groups.width, groups.length, run.groups},
                             buffer.data() + held);
                held += run.numbers;
            } else {
                addGroup(packed, bit, groups.width[0], groups.base[0], groups.length[0]);
                run = {1, groups.length[0], std::uint64_t{groups.length[0]} * groups.width[0]};
            }
            bit += run.bits;
            groups = {groups.base + run.groups, groups.width + run.groups, groups.length + run.groups,
                      groups.count - run.groups};
        }
    }

    void flush() noexcept
    {
        differences.undo(std::span(buffer).first(held));
        scaleIntegers(std::span(buffer).first(held), packing.scale, out.data() + done);
        done += held;
        held = 0;
    }

private:
    /// Groups that are unpacked together.
    struct Run
    {
        std::size_t groups = 0;
        std::size_t numbers = 0;
        std::uint64_t bits = 0;
    };

    /// The groups that fit into the buffer as it is; none where substitutes have to be looked for.
    [[nodiscard]] Run nextRun(GroupRows const & groups) const noexcept
    {
        Run run;
        if (packing.missing_management != 0)
            return run;
        for (; run.groups < groups.count; ++run.groups) {
            std::uint64_t const length = groups.length[run.groups];
            if (length > BUFFER - held - run.numbers)
                break;
            run.numbers += static_cast<std::size_t>(length);
            run.bits += length * groups.width[run.groups];
        }
        return run;
    }

    /// One group in pieces, as many numbers as it has.
    void addGroup(
        Octets packed, std::uint64_t bit, unsigned width, std::uint32_t base, std::size_t length) noexcept
    {
        for (std::size_t piece = 0; length > 0; length -= piece, bit += std::uint64_t{piece} * width) {
            flush();
            piece = std::min(length, BUFFER);
            if (packing.missing_management != 0)
                addSubstituted(packed, bit, width, base, piece);
            else {
                unpackIntegers(packed, bit, width, base, std::span(buffer).first(piece));
                held = piece;
            }
        }
    }

    /// Numbers of a group with substitutes for missing values, which take no part in the differences.
    void addSubstituted(
        Octets packed, std::uint64_t bit, unsigned width, std::uint32_t base, std::size_t count) noexcept
    {
        unpackIntegers(packed, bit, width, 0, std::span(buffer).first(count));
        // A group of one number tells by its reference. References of no bits are all ones as well: their groups are missing.
        unsigned const bits = width > 0 ? width : packing.bits;
        std::uint32_t const top = (std::uint32_t{1} << bits) - 1;
        std::uint32_t const lowest = packing.missing_management == 2 && top > 0 ? top - 1 : top;
        std::size_t present = 0;
        for (std::size_t i = 0; i < count; ++i) {
            std::uint32_t const tell = width > 0 ? buffer[i] : base;
            is_missing[i] = tell >= lowest;
            if (!is_missing[i])
                buffer[present++] = buffer[i] + base;
        }
        differences.undo(std::span(buffer).first(present));
        scaleIntegers(std::span(buffer).first(present), packing.scale, scaled.data());
        std::size_t next = 0;
        for (std::size_t i = 0; i < count; ++i)
            out[done + i] = is_missing[i] ? static_cast<float>(Const::MISS) : scaled[next++];
        done += count;
    }

    Packing const & packing;
    Differences differences;
    std::span<float> out;
    std::size_t done = 0;
    std::size_t held = 0;
    std::array<std::uint32_t, BUFFER + GROUP_SLACK> buffer;
    std::array<bool, BUFFER> is_missing;
    std::array<float, BUFFER> scaled;
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
    std::array<std::uint32_t, Differences::HIGHEST_ORDER + 1> numbers{};
    for (std::size_t i = 0; i < count && octets > 0; ++i)
        numbers[i] = static_cast<std::uint32_t>(
            signMagnitude(section.number(1 + i * octets, octets), static_cast<unsigned>(8 * octets)));
    differences = {std::span(numbers).first(packing.order), numbers[packing.order]};
    data = data.subspan(count * octets);
    return true;
}

/// The tables at the head of the section, a number a group: reference, width and length. Each begins on an octet.
class GroupTables
{
public:
    /// Cuts the tables off the front of the data; false when they are not there as a whole.
    [[nodiscard]] bool cut(Octets & data, Packing const & packing)
    {
        return cutOne(data, packing.bits, packing.groups, references) &&
               cutOne(data, packing.width_bits, packing.groups, widths) &&
               cutOne(data, packing.length_bits, packing.groups, lengths);
    }

    /// Unpacks the rows from group `first` on. Lengths beyond 32 bits become the largest that 32 bits hold.
    void load(Packing const & packing, std::size_t first) noexcept
    {
        count = std::min<std::size_t>(BLOCK, packing.groups - first);
        unpackIntegers(references, first * std::uint64_t{packing.bits}, packing.bits, 0, rows(reference));
        unpackIntegers(widths, first * std::uint64_t{packing.width_bits}, packing.width_bits,
                       packing.width_reference, rows(width));
        unpackIntegers(lengths, first * std::uint64_t{packing.length_bits}, packing.length_bits, 0,
                       rows(length));
        constexpr std::uint64_t LONGEST = 0xffffffffU;
        for (auto & scaled : rows(length))
            scaled = static_cast<std::uint32_t>(std::min(
                packing.length_reference + std::uint64_t{packing.length_increment} * scaled, LONGEST));
        if (first + count == packing.groups)
            length[count - 1] = packing.last_length;
    }

    std::size_t count = 0; ///< rows loaded
    std::array<std::uint32_t, BLOCK> reference;
    std::array<std::uint32_t, BLOCK> width;
    std::array<std::uint32_t, BLOCK> length;

private:
    [[nodiscard]] static bool cutOne(Octets & data, unsigned width_bits, std::uint64_t groups, Octets & table)
    {
        if (width_bits > WIDEST || !holds(data, 0, width_bits, groups))
            return false;
        auto const octets = static_cast<std::size_t>((groups * width_bits + 7) / 8);
        table = data.first(octets);
        data = data.subspan(octets);
        return true;
    }

    [[nodiscard]] std::span<std::uint32_t> rows(std::array<std::uint32_t, BLOCK> & column) const noexcept
    {
        return std::span(column).first(count);
    }

    Octets references;
    Octets widths;
    Octets lengths;
};

} // namespace

std::string unpackComplex(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.groups == 0 && packing.bits == 0) {
        std::fill(out.begin(), out.end(), static_cast<float>(packing.scale(0)));
        return {};
    }
    if (packing.groups > out.size())
        return format("%u groups for %zu values", packing.groups, out.size());
    Differences differences;
    GroupTables tables;
    if (!readDescriptors(data, packing, differences) || !tables.cut(data, packing))
        return "data section too short for its groups";
    Values values(packing, differences, out);
    std::uint64_t bit = 0;
    std::uint64_t left = out.size();
    for (std::size_t first = 0; first < packing.groups; first += tables.count) {
        tables.load(packing, first);
        std::uint64_t const begin = bit;
        for (std::size_t g = 0; g < tables.count; ++g) {
            std::uint64_t const length = tables.length[g];
            unsigned const width = tables.width[g];
            bit += length * width;
            if (length > left || width > WIDEST || bit > 8 * std::uint64_t{data.size()})
                return format("group %zu of %u does not fit", first + g + 1, packing.groups);
            left -= length;
        }
        values.add(data, begin,
                   {tables.reference.data(), tables.width.data(), tables.length.data(), tables.count});
    }
    values.flush();
    return left == 0 ? std::string()
                     : format("groups hold %llu values too few", static_cast<unsigned long long>(left));
}

} // namespace Yul::detail::grib
