// The choice of contour levels.
#include "plot/LevelScale.h"

#include "plot/ColorFill.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace Yul {
namespace {

constexpr float MISS = Const::MISS;

struct LevelCase
{
    detail::LevelRequest request;
    Range range;
    float interval, lowest, highest;
    std::size_t count;
};

detail::LevelRequest request(float interval, float base, int parts, float low = MISS, float high = MISS)
{
    return {interval, base, low, high, parts, {}};
}

TEST(LevelScale, ChoosesLevels)
{
    LevelCase const cases[] = {
        {request(10, MISS, 9), {0, 100}, 10, 0, 110, 12},
        {request(60, MISS, 9), {4970, 5880}, 60, 4920, 5940, 18},
        {request(60, 30, 9), {4970, 5880}, 60, 4950, 5910, 17},
        {request(0, MISS, 9), {0, 1000}, 112, 0, 1008, 10},
        {request(MISS, MISS, 9), {5, 5}, 1, 5, 6, 2},
        {request(.1F, MISS, 9), {0, .3F}, .1F, 0, .4F, 5},
        {request(.01F, MISS, 9), {0, 100}, 12, 0, 108, 10},
        {request(1e-38F, MISS, 9), {0, 100}, 12, 0, 108, 10}, // more steps than floats can count
        {request(10, MISS, 9, 20, 45), {0, 100}, 10, 20, 40, 3},
        {request(10, MISS, 9), {MISS, MISS}, 1, 0, MISS, 0},
        {request(10, MISS, 9), {0, std::numeric_limits<float>::infinity()}, 1, 0, MISS, 0},
    };
    for (auto const & row : cases) {
        auto const scale = detail::chooseLevels(row.request, row.range);
        SCOPED_TRACE(std::to_string(row.range.min) + " to " + std::to_string(row.range.max));
        EXPECT_EQ(scale.interval, row.interval);
        EXPECT_EQ(scale.lowest, row.lowest);
        EXPECT_EQ(scale.highest, row.highest);
        EXPECT_EQ(scale.levels.size(), row.count);
    }
    EXPECT_TRUE(detail::chooseLevels(request(.01F, MISS, 9), {0, 100}).is_recomputed);
    EXPECT_FALSE(detail::chooseLevels(request(1, MISS, 9), {0, 148}).is_recomputed);
    EXPECT_TRUE(detail::chooseLevels(request(1, MISS, 9), {0, 149}).is_recomputed);
}

TEST(LevelScale, ExplicitValuesTakeThePlaceOfAllTheRest)
{
    float const values[] = {5, 1, 9};
    auto const scale = detail::chooseLevels({10, 3, MISS, MISS, 9, values}, {0, 100});
    EXPECT_EQ(scale.interval, MISS);
    EXPECT_EQ(scale.lowest, 5);
    EXPECT_EQ(scale.levels, std::vector<float>({5, 1, 9}));
}

TEST(ColorFill, RefusesListsThatAreNoNumbers)
{
    ColorFill fill;
    EXPECT_EQ(fill.setValues("1,2.5:-3 4e1"), 1);
    ASSERT_EQ(fill.getNumValues(), 4);
    EXPECT_EQ(fill.getValue(3), 40);
    EXPECT_EQ(fill.setValues("1,two"), 0);
    EXPECT_EQ(fill.setValues("1,2x"), 0);
    EXPECT_EQ(fill.getNumValues(), 4);
    EXPECT_EQ(fill.getValue(4), MISS);
    EXPECT_EQ(fill.setValues(nullptr), 1);
    EXPECT_EQ(fill.getNumValues(), 0);
    EXPECT_EQ(fill.setNumColors(0), 0);
    EXPECT_EQ(fill.getNumColors(), ColorFill::NUM_COLORS);
    fill.setColors("red,blue");
    EXPECT_STREQ(fill.getColor(9), "blue");
    EXPECT_EQ(fill.getColor(-1), nullptr);
    EXPECT_EQ(fill.getNumColors(), 2);
}

} // namespace
} // namespace Yul
