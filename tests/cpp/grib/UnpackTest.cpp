#include "grid/grib/packing/Unpack.h"

#include "cpp/grib/BitWriter.h"
#include "grid/grib/Octets.h"
#include "grid/grib/Scan.h"
#include "grid/grib/packing/Bitmap.h"

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail::grib {
namespace {

std::uint32_t maskOf(unsigned width)
{
    return static_cast<std::uint32_t>((std::uint64_t{1} << width) - 1);
}

std::vector<UnpackForm const *> forms()
{
    std::vector<UnpackForm const *> all{&plainForm()};
    for (auto const * const form : {wideForm(), widestForm()})
        if (form != nullptr)
            all.push_back(form);
    return all;
}

/// The octets end right behind the last number, so that the address sanitizer sees any read beyond them.
TEST(Unpack, GivesBackNumbersOfEveryWidthAndStart)
{
    std::mt19937 random(1);
    for (unsigned width = 0; width <= 32; ++width)
        for (unsigned start = 0; start < 8; ++start)
            for (std::size_t const count : {0U, 1U, 7U, 8U, 9U, 15U, 16U, 17U, 63U, 200U}) {
                BitWriter writer;
                writer.put(0x55, start);
                std::vector<std::uint32_t> numbers(count);
                for (auto & number : numbers) {
                    number = static_cast<std::uint32_t>(random()) & maskOf(width);
                    writer.put(number, width);
                }
                for (auto const * const form : forms())
                    for (Scale const scale : {Scale{-3.25, 0.5, 0.01}, Scale{-1e6 / 3, 0x1p-9, 1}}) {
                        std::vector<std::uint32_t> integers(count);
                        std::vector<float> scaled(count);
                        form->integers(writer.octets, start, width, 5, integers);
                        form->scaled(writer.octets, start, width, scale, scaled);
                        for (std::size_t i = 0; i < count; ++i) {
                            ASSERT_EQ(integers[i], numbers[i] + 5)
                                << form->name << width << ' ' << start << ' ' << i;
                            ASSERT_EQ(scaled[i],
                                      static_cast<float>((scale.reference + numbers[i] * scale.binary) *
                                                         scale.decimal))
                                << form->name << width << ' ' << start << ' ' << i;
                        }
                    }
            }
}

/// Scales that floats hold and that they do not, sums that are exact in double and that are not, results up to infinity.
TEST(Unpack, ScalesAlikeInAllForms)
{
    std::mt19937 random(5);
    std::uniform_int_distribution<int> exponent(-150, 130);
    constexpr std::size_t COUNT = 32;
    for (int round = 0; round < 20000; ++round) {
        unsigned const width = 1 + static_cast<unsigned>(random() % 25);
        BitWriter writer;
        for (std::size_t i = 0; i < COUNT; ++i)
            writer.put(static_cast<std::uint32_t>(random()) & maskOf(width), width);
        writer.put(0, 32);
        int const binary = round % 2 == 0 ? exponent(random) : exponent(random) / 8;
        double const reference =
            std::ldexp(static_cast<double>(random()) - 0x1p31, exponent(random) / 4 - 31);
        Scale const scale{round % 3 == 0 ? reference : static_cast<double>(static_cast<float>(reference)),
                          std::ldexp(1.0, binary), round % 5 == 0 ? 0.1 : 1};
        std::vector<float> expected(COUNT);
        plainForm().scaled(writer.octets, 0, width, scale, expected);
        for (auto const * const form : forms()) {
            std::vector<float> out(COUNT);
            form->scaled(writer.octets, 0, width, scale, out);
            ASSERT_EQ(std::memcmp(out.data(), expected.data(), COUNT * sizeof(float)), 0)
                << form->name << ' ' << width << ' ' << scale.reference << ' ' << binary;
        }
    }
}

TEST(Unpack, ScalesSignedNumbers)
{
    std::vector<std::uint32_t> const values{0, 1, 0xffffffffU, 0x7fffffffU, 0x80000000U, 17, 18, 19, 20};
    for (auto const * const form : forms()) {
        std::vector<float> out(values.size());
        form->scale(values, {10, 2, 0.1}, out.data());
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_EQ(out[i], static_cast<float>((10 + static_cast<std::int32_t>(values[i]) * 2.0) * 0.1));
    }
}

TEST(Unpack, AddsUpWithTheSumSoFar)
{
    std::mt19937 random(3);
    for (std::size_t const count : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 33U, 100U}) {
        std::vector<std::uint32_t> numbers(count);
        for (auto & number : numbers)
            number = static_cast<std::uint32_t>(random()); // sums pass 2^32
        std::uint32_t const step = static_cast<std::uint32_t>(random());
        for (auto const * const form : forms()) {
            auto sums = numbers;
            std::uint32_t carried = 77;
            form->accumulate(sums, step, carried);
            std::uint32_t sum = 77;
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(sums[i], sum += numbers[i] + step) << form->name << ' ' << count << ' ' << i;
            EXPECT_EQ(carried, sum) << form->name << ' ' << count;
        }
    }
}

/// Groups of all widths behind each other, the last ones close to the end of the octets.
TEST(Unpack, TakesGroupsApart)
{
    std::mt19937 random(4);
    for (int round = 0; round < 200; ++round) {
        BitWriter writer;
        unsigned const start = static_cast<unsigned>(random() % 8);
        writer.put(0, start);
        std::vector<std::uint32_t> bases, widths, lengths, expected;
        for (unsigned group = 0; group < 1 + random() % 40; ++group) {
            widths.push_back(static_cast<std::uint32_t>(random() % (group % 5 == 0 ? 32 : 9)));
            lengths.push_back(static_cast<std::uint32_t>(random() % 40));
            bases.push_back(static_cast<std::uint32_t>(random()));
            for (std::uint32_t i = 0; i < lengths.back(); ++i) {
                std::uint32_t const number = static_cast<std::uint32_t>(random()) & maskOf(widths.back());
                writer.put(number, widths.back());
                expected.push_back(bases.back() + number);
            }
        }
        for (auto const * const form : forms()) {
            std::vector<std::uint32_t> out(expected.size() + GROUP_SLACK);
            form->groups(writer.octets, start, {bases.data(), widths.data(), lengths.data(), bases.size()},
                         out.data());
            out.resize(expected.size());
            ASSERT_EQ(out, expected) << form->name << ' ' << round;
        }
    }
}

TEST(Unpack, KnowsHowManyNumbersThereAre)
{
    std::vector<std::uint8_t> const octets(10);
    EXPECT_TRUE(holds(octets, 0, 8, 10));
    EXPECT_FALSE(holds(octets, 0, 8, 11));
    EXPECT_FALSE(holds(octets, 1, 8, 10));
    EXPECT_FALSE(holds(octets, 81, 1, 0));
    EXPECT_TRUE(holds(octets, 80, 0, ~std::uint64_t{0}));
    EXPECT_FALSE(holds(octets, 0, 32, ~std::uint64_t{0}));
}

TEST(Bitmap, SpreadsValuesOverTheirPoints)
{
    std::mt19937 random(2);
    for (std::size_t const points : {1U, 7U, 63U, 64U, 65U, 130U, 1000U})
        for (unsigned const density : {0U, 1U, 128U, 254U, 256U}) {
            std::vector<std::uint8_t> bitmap((points + 7) / 8, 0xff); // bits behind the last point are set
            std::vector<float> expected(points, -9999.F);
            std::vector<float> values;
            for (std::size_t i = 0; i < points; ++i)
                if (random() % 256 < density) {
                    expected[i] = static_cast<float>(values.size());
                    values.push_back(expected[i]);
                } else
                    bitmap[i / 8] = static_cast<std::uint8_t>(bitmap[i / 8] & ~(0x80U >> i % 8));
            ASSERT_EQ(countPresent(bitmap, points), values.size());
            values.insert(values.begin(), points - values.size(), -1.F);
            for (auto const form : {&expandPlain, expandWide()})
                if (form != nullptr) {
                    auto spread = values;
                    form(bitmap, spread);
                    ASSERT_EQ(spread, expected) << points << ' ' << density;
                }
        }
}

/// Where the value at place i of the message belongs, straight from the flags.
std::size_t placeOf(Scan scan, std::size_t i, std::size_t nx, std::size_t ny)
{
    std::size_t const length = scan.j_consecutive ? ny : nx;
    std::size_t const line = i / length;
    std::size_t along = i % length;
    if (scan.alternating && line % 2 == 1)
        along = length - 1 - along;
    std::size_t column = scan.j_consecutive ? line : along;
    std::size_t row = scan.j_consecutive ? along : line;
    if (scan.i_negative)
        column = nx - 1 - column;
    if (scan.j_positive)
        row = ny - 1 - row;
    return row * nx + column;
}

TEST(Scan, PutsEveryModeNorthAndWestFirst)
{
    std::vector<float> spare;
    for (unsigned flags = 0; flags < 256; flags += 16)
        for (auto const & [nx, ny] : {std::pair{5, 4}, {4, 5}, {1, 3}, {3, 1}, {1, 1}}) {
            Scan const scan = Scan::of(flags);
            auto const count = static_cast<std::size_t>(nx * ny);
            std::vector<float> values(count);
            std::vector<float> expected(count);
            for (std::size_t i = 0; i < count; ++i) {
                values[i] = static_cast<float>(i);
                expected[placeOf(scan, i, static_cast<std::size_t>(nx), static_cast<std::size_t>(ny))] =
                    values[i];
            }
            arrange(scan, nx, ny, values, spare);
            EXPECT_EQ(values, expected) << flags << ' ' << nx << ' ' << ny;
        }
}

TEST(Section, NeverReadsBeyondItsEnd)
{
    std::vector<std::uint8_t> const octets{0x80, 0x01, 0xff, 0xfe};
    Section section(octets);
    EXPECT_EQ(section.u8(1), 0x80U);
    EXPECT_EQ(section.s8(1), 0);
    EXPECT_EQ(section.s16(1), -1);
    EXPECT_EQ(section.s24(2), 0x1fffe);
    EXPECT_EQ(section.u32(1), 0x8001fffeU);
    EXPECT_EQ(section.s32(1), -0x1fffe);
    EXPECT_FALSE(section.isShort());
    EXPECT_EQ(section.u16(4), 0U);
    EXPECT_TRUE(section.isShort());
    EXPECT_TRUE(section.from(5).empty());
    EXPECT_EQ(section.from(4).size(), 1U);
    Section empty;
    EXPECT_EQ(empty.u8(1), 0U);
    EXPECT_TRUE(empty.isShort());
}

TEST(Numbers, ReadsReferenceValuesOfEdition1)
{
    EXPECT_EQ(convIBMFloat(std::uint32_t{0x00123456}), 0); // a zero first octet is zero
    EXPECT_EQ(convIBMFloat(std::uint32_t{0x41100000}), 1);
    EXPECT_EQ(convIBMFloat(std::uint32_t{0xc276a000}), -118.625);
    EXPECT_EQ(convIBMFloat(std::uint32_t{0x40800000}), 0.5);
    for (double const value : {0.0, 1.0, -1.0, 273.16, -273.16, 1e-30, 5.4e75, 101325.0, 16777216.0, -0.1}) {
        double const back = convIBMFloat(convIBMFloat(value));
        EXPECT_LE(back, value);
        EXPECT_NEAR(back, value, std::abs(value) * 1e-6);
    }
    EXPECT_EQ(convIBMFloat(std::nan("")), 0U);
    EXPECT_EQ(convIBMFloat(1e300), 0x7fffffffU);
}

TEST(Numbers, ScalesByExactPowersOfTen)
{
    EXPECT_EQ(decimalScale(0), 1);
    EXPECT_EQ(decimalScale(2), 0.01);
    EXPECT_EQ(decimalScale(-3), 1000);
    EXPECT_EQ(decimalScale(-22), 1e22);
    EXPECT_EQ(decimalScale(32767), 0);
    EXPECT_TRUE(std::isinf(decimalScale(-32767)));
    EXPECT_EQ(convScale(-3), 0.125);
}

} // namespace
} // namespace Yul::detail::grib
