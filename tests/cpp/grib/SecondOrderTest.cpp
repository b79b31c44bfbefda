#include "grid/grib/packing/SecondOrder.h"

#include "cpp/grib/BitWriter.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t ROW = 30;
constexpr unsigned BITMAP = 0x20;
constexpr unsigned WIDTH_EACH = 0x10;
constexpr unsigned EXTENDED = 0x08;

struct Packed
{
    Packing packing;
    std::vector<std::uint8_t> octets;
    std::vector<float> values;
};

/// A field of `rows` lines, packed as the flags say, laid out from octet 12 of its section on.
Packed pack(unsigned flags, std::size_t rows)
{
    std::mt19937 random(flags);
    Packed out;
    Packing & p = out.packing;
    p.scale = {10, 0.5, 1};
    p.bits = 11;
    p.second_flags = flags;
    p.row_length = ROW;
    std::vector<std::size_t> lengths;
    std::size_t const count = rows * ROW;
    for (std::size_t done = 0; done < count; done += lengths.back())
        lengths.push_back((flags & BITMAP) != 0 ? std::min<std::size_t>(1 + random() % 50, count - done)
                                                : ROW);
    p.groups = static_cast<std::uint32_t>(lengths.size());

    std::vector<unsigned> widths;
    BitWriter head;
    for (std::size_t i = 0; i < ((flags & WIDTH_EACH) != 0 ? lengths.size() : 1); ++i) {
        widths.push_back((flags & WIDTH_EACH) != 0 ? static_cast<unsigned>(random() % 9) : 5U);
        head.put(widths.back(), 8);
    }
    BitWriter bitmap;
    BitWriter first;
    BitWriter second;
    for (std::size_t group = 0; group < lengths.size(); ++group) {
        unsigned const width = widths[widths.size() > 1 ? group : 0];
        auto const base = static_cast<std::uint32_t>(random() % 2048);
        first.put(base, p.bits);
        for (std::size_t i = 0; i < lengths[group]; ++i) {
            auto const number = static_cast<std::uint32_t>(random() & ((1U << width) - 1));
            second.put(number, width);
            bitmap.put(i == 0 ? 1 : 0, 1);
            out.values.push_back(static_cast<float>(10 + (base + number) * 0.5));
        }
    }
    out.octets.assign(22 - 12, 0);
    auto const append = [&](BitWriter const & part) {
        std::size_t const octet = 12 + out.octets.size();
        out.octets.insert(out.octets.end(), part.octets.begin(), part.octets.end());
        return octet;
    };
    append(head);
    if ((flags & BITMAP) != 0)
        append(bitmap);
    p.first_values_octet = append(first);
    p.second_values_octet = append(second);
    return out;
}

TEST(SecondOrderPacking, GivesBackRowsAndGroupsOfOneAndOfManyWidths)
{
    for (unsigned const flags : {0U, WIDTH_EACH, BITMAP, BITMAP | WIDTH_EACH})
        for (std::size_t const rows : {1U, 2U, 40U}) {
            auto const packed = pack(flags, rows);
            std::vector<float> out(rows * ROW);
            ASSERT_EQ(unpackSecondOrder(packed.octets, packed.packing, out), "") << flags;
            EXPECT_EQ(out, packed.values) << flags << ' ' << rows;
        }
}

/// The same with a length for each group and differences of an order, as if it were a list of any length.
Packed packExtended(unsigned order, std::size_t count)
{
    constexpr int LEAST = -5;
    std::mt19937 random(order);
    Packed out;
    Packing & p = out.packing;
    p.scale = {10, 0.5, 1};
    p.bits = 6;
    p.second_flags = EXTENDED | WIDTH_EACH | order;
    BitWriter widths;
    BitWriter lengths;
    BitWriter first;
    BitWriter second;
    std::vector<std::int64_t> sums(order + 1);
    auto const add = [&](std::int64_t number) {
        sums[order] = number;
        for (unsigned k = order; k-- > 0;)
            sums[k] += sums[k + 1];
        out.values.push_back(static_cast<float>(10 + static_cast<double>(sums[0]) * 0.5));
    };
    BitWriter head;
    for (unsigned const octet : {4U, 6U, 0U, 0U})
        head.put(octet, 8);
    if (order > 0)
        head.put(20, 8);
    for (unsigned i = 0; i < order; ++i) // at first every value is 100
        head.put(100, 20);
    if (order > 0) {
        head.put(1, 1);
        head.put(-LEAST, 19);
        sums[0] = 100;
        out.values.assign(order, 60);
    }
    for (std::size_t done = order; done < count; ++p.groups) {
        auto const length = std::min<std::size_t>(random() % 50, count - done);
        auto const width = static_cast<unsigned>(random() % 5);
        std::int64_t const base = static_cast<std::int64_t>(random() % 10);
        widths.put(width, 4);
        lengths.put(length, 6);
        first.put(static_cast<std::uint64_t>(base), p.bits);
        for (std::size_t i = 0; i < length; ++i) {
            std::uint64_t const number = random() & ((1U << width) - 1);
            second.put(number, width);
            add(base + static_cast<std::int64_t>(number) + (order > 0 ? LEAST : 0));
        }
        done += length;
    }
    out.octets.assign(22 - 12, 0);
    for (auto const & part : {head, widths, lengths, first, second})
        out.octets.insert(out.octets.end(), part.octets.begin(), part.octets.end());
    return out;
}

TEST(SecondOrderPacking, GivesBackGroupsOfAnyLengthAndOrder)
{
    for (unsigned order = 0; order <= 3; ++order)
        for (std::size_t const count : {3U, 4U, 600U}) {
            auto const packed = packExtended(order, count);
            std::vector<float> out(count);
            ASSERT_EQ(unpackSecondOrder(packed.octets, packed.packing, out), "") << order;
            EXPECT_EQ(out, packed.values) << order << ' ' << count;
            for (std::size_t length = 0; length < packed.octets.size(); length += 7) {
                std::vector<std::uint8_t> const cut(
                    packed.octets.begin(), packed.octets.begin() + static_cast<std::ptrdiff_t>(length));
                EXPECT_NE(unpackSecondOrder(cut, packed.packing, out), "") << length;
            }
        }
}

TEST(SecondOrderPacking, RefusesEveryCutAndExtensions)
{
    auto const packed = pack(BITMAP | WIDTH_EACH, 5);
    std::vector<float> out(5 * ROW);
    for (std::size_t length = 0; length < packed.octets.size(); ++length) {
        std::vector<std::uint8_t> const cut(packed.octets.begin(),
                                            packed.octets.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(unpackSecondOrder(cut, packed.packing, out), "") << length;
    }
    Packing extended = packed.packing;
    extended.second_flags |= EXTENDED;
    EXPECT_NE(unpackSecondOrder(packed.octets, extended, out), "");
    Packing few = packed.packing;
    few.groups = 2;
    EXPECT_NE(unpackSecondOrder(packed.octets, few, out), "");
    Packing rows = packed.packing;
    rows.second_flags = WIDTH_EACH; // row by row
    rows.row_length = 0;
    EXPECT_NE(unpackSecondOrder(packed.octets, rows, out), "");
    Packing empty; // sixteen million groups of nothing
    empty.second_flags = EXTENDED;
    empty.groups = (1U << 24) - 1;
    EXPECT_EQ(unpackSecondOrder(std::vector<std::uint8_t>(20), empty, out),
              "second-order packing does not fit its section");
}

} // namespace
} // namespace Yul::detail::grib
