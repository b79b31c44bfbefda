#include "grid/grib/packing/Complex.h"

#include "cpp/grib/BitWriter.h"
#include "grid/grib/packing/RunLength.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail::grib {
namespace {

constexpr auto MISSING = -9999.F;

/// A value to be packed: a number, or missing with the primary (1) or secondary (2) substitute.
struct Value
{
    std::int64_t number = 0;
    unsigned missing = 0;
};

struct Packed
{
    Packing packing;
    std::vector<std::uint8_t> octets;
};

/// Complex packing by the book: differences of what is present, groups of random lengths, tables, numbers.
Packed pack(std::vector<Value> values, unsigned order, unsigned management, std::mt19937 & random)
{
    Packed out;
    Packing & p = out.packing;
    p.kind = PackingKind::COMPLEX;
    p.points = values.size();
    p.scale = {1.5, 2, 0.1};
    p.missing_management = management;
    p.order = order;

    std::vector<std::int64_t> before;
    std::vector<std::int64_t> differences;
    for (auto const & value : values)
        if (value.missing == 0)
            before.push_back(value.number);
    std::int64_t least = 0;
    for (std::size_t i = order; i < before.size(); ++i) {
        std::int64_t const d = order == 0   ? before[i]
                               : order == 1 ? before[i] - before[i - 1]
                                            : before[i] - 2 * before[i - 1] + before[i - 2];
        differences.push_back(d);
        least = i == order ? d : std::min(least, d);
    }
    if (order == 0)
        least = 0;
    std::size_t next = 0;
    for (auto & value : values)
        if (value.missing == 0) {
            std::size_t const i = next++;
            value.number = i < order ? 0 : differences[i - order] - least;
        }
    BitWriter writer;
    p.extra_octets = order > 0 ? 3 : 0;
    auto const putSigned = [&](std::int64_t number) {
        writer.put(number < 0 ? 1 : 0, 1);
        writer.put(static_cast<std::uint64_t>(std::abs(number)), 23);
    };
    for (unsigned i = 0; i < order; ++i)
        putSigned(i < before.size() ? before[i] : 0);
    if (order > 0)
        putSigned(least);

    struct Group
    {
        std::size_t first = 0;
        std::size_t length = 0;
        std::int64_t reference = 0;
        unsigned width = 0;
    };

    std::vector<Group> groups;
    for (std::size_t first = 0; first < values.size();) {
        Group g{.first = first, .length = std::min<std::size_t>(1 + random() % 40, values.size() - first)};
        std::optional<std::int64_t> low;
        std::int64_t high = 0;
        for (std::size_t i = first; i < first + g.length; ++i) {
            if (values[i].missing == 0) {
                low = std::min(low.value_or(values[i].number), values[i].number);
                high = std::max(high, values[i].number);
            }
        }
        g.reference = low.value_or(0);
        auto const range = static_cast<std::uint64_t>(low ? high - *low : 0);
        g.width = static_cast<unsigned>(std::bit_width(range + management));
        groups.push_back(g);
        first += g.length;
    }
    p.groups = static_cast<std::uint32_t>(groups.size());
    p.width_reference = 1;
    for (auto & g : groups)
        g.width = std::max(g.width, p.width_reference);
    p.bits = 20;
    p.width_bits = 5;
    p.length_reference = 1;
    p.length_increment = 1;
    p.length_bits = 6;
    p.last_length = groups.empty() ? 0 : static_cast<std::uint32_t>(groups.back().length);
    for (auto const & g : groups)
        writer.put(static_cast<std::uint64_t>(g.reference), p.bits);
    writer.align();
    for (auto const & g : groups)
        writer.put(g.width - p.width_reference, p.width_bits);
    writer.align();
    for (auto const & g : groups)
        writer.put(g.length - p.length_reference, p.length_bits);
    writer.align();
    for (auto const & g : groups)
        for (std::size_t i = g.first; i < g.first + g.length; ++i)
            writer.put(values[i].missing != 0 ? (std::uint64_t{1} << g.width) - values[i].missing
                                              : static_cast<std::uint64_t>(values[i].number - g.reference),
                       g.width);
    out.octets = writer.octets;
    return out;
}

std::vector<Value> someValues(std::size_t count, unsigned management, std::mt19937 & random)
{
    std::vector<Value> values(count);
    std::int64_t level = 500;
    for (auto & value : values) {
        level = std::clamp<std::int64_t>(level + static_cast<std::int64_t>(random() % 21) - 10, 0, 1000);
        value.number = level;
        if (management > 0 && random() % 3 == 0)
            value.missing = 1 + static_cast<unsigned>(random()) % management;
    }
    return values;
}

TEST(ComplexPacking, TakesGroupsOfNoWidthAndReferencesOfNoBitsForMissing)
{
    for (unsigned management = 1; management <= 2; ++management) {
        Packing p;
        p.scale = {7, 1, 1};
        p.missing_management = management;
        p.groups = 2;
        p.width_bits = 2;
        p.length_reference = p.last_length = 3;
        BitWriter writer;
        writer.put(management, 2); // the first group has zeros and something missing
        writer.put(0, 2);
        writer.align();
        for (unsigned const number : {0U, (1U << management) - 1, 0U})
            writer.put(number, management);
        std::vector<float> out(6);
        ASSERT_EQ(unpackComplex(writer.octets, p, out), "");
        EXPECT_EQ(out, (std::vector{7.F, MISSING, 7.F, MISSING, MISSING, MISSING})) << management;
    }
}

TEST(ComplexPacking, GivesBackValuesOfEveryOrderAndManagement)
{
    std::mt19937 random(3);
    for (unsigned order = 0; order <= 2; ++order)
        for (unsigned management = 0; management <= 2; ++management)
            for (std::size_t const count : {1U, 2U, 3U, 50U, 5000U, 20000U}) {
                auto const values = someValues(count, management, random);
                auto const packed = pack(values, order, management, random);
                std::vector<float> out(count);
                ASSERT_EQ(unpackComplex(packed.octets, packed.packing, out), "");
                for (std::size_t i = 0; i < count; ++i)
                    ASSERT_EQ(out[i], values[i].missing != 0
                                          ? MISSING
                                          : static_cast<float>(
                                                (1.5 + static_cast<double>(values[i].number) * 2) * 0.1))
                        << order << ' ' << management << ' ' << count << ' ' << i;
            }
}

TEST(ComplexPacking, RefusesEveryCutAndEveryWrongCount)
{
    std::mt19937 random(4);
    auto const values = someValues(300, 1, random);
    auto const packed = pack(values, 2, 1, random);
    std::vector<float> out(values.size());
    for (std::size_t length = 0; length < packed.octets.size(); ++length) {
        std::vector<std::uint8_t> const cut(packed.octets.begin(),
                                            packed.octets.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(unpackComplex(cut, packed.packing, out), "") << length;
    }
    for (std::size_t const count : {0U, 1U, 299U, 301U}) {
        std::vector<float> other(count);
        EXPECT_NE(unpackComplex(packed.octets, packed.packing, other), "") << count;
    }
    for (auto const change :
         {+[](Packing & p) { p.groups = 0xffffffffU; }, +[](Packing & p) { p.length_increment = 255; },
          +[](Packing & p) { p.last_length = 0xffffffffU; }, +[](Packing & p) { p.width_reference = 255; },
          +[](Packing & p) { p.extra_octets = 255; }}) {
        Packing wrong = packed.packing;
        change(wrong);
        EXPECT_NE(unpackComplex(packed.octets, wrong, out), "");
    }
}

TEST(ComplexPacking, ReadsAConstantFieldWithoutGroups)
{
    Packing packing;
    packing.scale = {25, 1, 0.1};
    std::vector<float> out(10);
    EXPECT_EQ(unpackComplex({}, packing, out), "");
    EXPECT_EQ(out, std::vector<float>(10, 2.5F));
}

/// Missing values may also be told by a group's reference, all of whose bits are set.
TEST(ComplexPacking, ReadsGroupsOfMissingValuesWithoutWidth)
{
    Packing p;
    p.missing_management = 2;
    p.bits = 4;
    p.groups = 3;
    p.length_reference = 2;
    p.last_length = 2;
    std::vector<std::uint8_t> const octets{0xf3, 0xe0}; // references 15, 3, 14
    std::vector<float> out(6);
    ASSERT_EQ(unpackComplex(octets, p, out), "");
    EXPECT_EQ(out, (std::vector<float>{MISSING, MISSING, 3, 3, MISSING, MISSING}));
}

TEST(RunLengthPacking, ReadsRunsInTheBaseOfTheNumbersLeftOver)
{
    Packing p;
    p.bits = 4;
    p.max_level = 10; // 11 to 15 are digits of base 5
    p.levels = {1.5F, 2.5F, 3, 4, 5, 6, 7, 8, 9, 10};
    std::vector<std::uint8_t> const octets{0x0b, 0x12, 0xfc, 0xc0}; // level 0, digit 0; 1; 2, digits 4, 1, 1
    std::vector<float> out(1 + 1 + (1 + 4 + 5 + 25) + 1);
    ASSERT_EQ(unpackRunLength(octets, p, out), "");
    EXPECT_EQ(out[0], MISSING);
    EXPECT_EQ(out[1], 1.5F);
    EXPECT_EQ(std::count(out.begin(), out.end(), 2.5F), 35);
    EXPECT_EQ(out.back(), MISSING); // the last four bits are level 0 again
    for (std::size_t const count : {0U, 1U, 36U, 39U}) {
        std::vector<float> other(count);
        EXPECT_NE(unpackRunLength(octets, p, other), "") << count;
    }
    std::vector<float> small(2);
    EXPECT_NE(unpackRunLength(std::vector<std::uint8_t>{0xb0}, p, small), ""); // a digit without a level
    p.levels.resize(1);
    EXPECT_NE(unpackRunLength(octets, p, out), ""); // a level beyond the table
    p.max_level = 0;
    EXPECT_EQ(unpackRunLength({}, p, small), ""); // none occurs
    EXPECT_EQ(small, (std::vector{MISSING, MISSING}));
}

} // namespace
} // namespace Yul::detail::grib
