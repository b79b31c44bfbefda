// One cell, and whole fields beside it.
#include "plot/GridBox.h"

#include "plot/CellSweep.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

/// A unit square: corner 0 upper left, 1 upper right, 2 lower left, 3 lower right.
GridBox unitBox(std::array<float, 4> const & values, float tweak)
{
    GridBox box;
    box.setTweak(tweak);
    box.setValues(values[0], values[1], values[2], values[3]);
    box.setPoints({0, 1}, {1, 1}, {0, 0}, {1, 0});
    return box;
}

struct BoxCase
{
    char const * name;
    std::array<float, 4> values;
    float tweak;
    float level;
    int count;
    std::array<float, 4> sides;
};

constexpr BoxCase BOX_CASES[] = {
    {"slope to the right", {0, 4, 0, 4}, 1e-3F, 1, 2, {.25F, -5, .25F, -5}},
    {"slope downward", {0, 0, 4, 4}, 1e-3F, 1, 2, {-5, .75F, -5, .75F}},
    {"corner cut off", {4, 0, 0, 0}, 1e-3F, 1, 2, {.75F, -5, -5, .25F}},
    {"saddle", {1, 0, 0, 1}, 1e-3F, .5F, 4, {.5F, .5F, .5F, .5F}},
    {"corner on the level is lowered", {1, 2, 1, 0}, .5F, 1, 2, {.5F / 1.5F, .5F, -2, -5}},
    {"corner stays on the level", {1, 0, 2, 2}, 0, 1, 2, {-1, .5F, -5, 1}},
    {"line through two corners", {1, 2, 0, 1}, 0, 1, 2, {-1, 0, -1, 1}},
    {"flat cell on the level", {1, 1, 1, 1}, 0, 1, 0, {-4, -4, -4, -4}},
    {"one flat side on the level", {1, 1, 0, 0}, 0, 1, 2, {-4, 1, -5, 1}},
    {"three corners on the level", {1, 1, 0, 1}, 0, 1, 0, {-4, -4, -1, -1}},
    {"level below", {2, 3, 2, 3}, 0, 1, 0, {-5, -5, -5, -5}},
    {"missing corner", {2, -9999, 0, 3}, 0, 1, 0, {-5, -5, -5, -5}},
};

TEST(GridBox, FindsCrossings)
{
    for (auto const & row : BOX_CASES) {
        GridBox box = unitBox(row.values, row.tweak);
        SCOPED_TRACE(row.name);
        EXPECT_EQ(box.setLevel(row.level), row.count);
        EXPECT_EQ(box.getNumCross(), row.count);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(box.getSide(i), row.sides[static_cast<std::size_t>(i)]) << "side " << i;
    }
}

TEST(GridBox, PlacesCrossingsInSideOrder)
{
    GridBox box = unitBox({4, 0, 0, 0}, 1e-3F);
    box.setLevel(1);
    EXPECT_EQ(box.getCross(0).x, .75F);
    EXPECT_EQ(box.getCross(0).y, 1);
    EXPECT_EQ(box.getCross(1).x, 0);
    EXPECT_EQ(box.getCross(1).y, .25F);
    EXPECT_EQ(box.getCrossSide(1), 3);
    EXPECT_FALSE(box.getCross(2).isSet());
    EXPECT_FALSE(box.getCross(-1).isSet());
}

TEST(GridBox, ReportsPositionAndSaddle)
{
    GridBox box = unitBox({1, 0, 0, 1}, 1e-3F);
    EXPECT_EQ(box.setLevel(-1), 0);
    EXPECT_EQ(box.getPosition(), -1);
    EXPECT_EQ(box.setLevel(2), 0);
    EXPECT_EQ(box.getPosition(), 1);
    EXPECT_EQ(box.getSide(0), -5);
    EXPECT_EQ(box.setLevel(.25F), 4);
    EXPECT_EQ(box.getPosition(), 0);
    EXPECT_EQ(box.getSaddle(), 1); // .25 + .25 + (2 - .75 - .75)
}

TEST(GridBox, DerivesTheTweakFromTheFirstCornerOnTheLevel)
{
    GridBox box = unitBox({100, 200, 50, 100}, Const::MISS);
    box.setLevel(100);
    EXPECT_NEAR(box.getTweak(), .005F, 1e-9);
    EXPECT_NEAR(box.getValue(0), 99.995F, 1e-5);
    EXPECT_NEAR(box.getValue(3), 99.995F, 1e-5);
    box = unitBox({-100, 0, -200, 0}, Const::MISS);
    box.setLevel(-100);
    EXPECT_GT(box.getValue(0), -100); // a negative corner moves up
    box = unitBox({0, 1, 0, 1}, Const::MISS);
    box.setLevel(0);
    EXPECT_EQ(box.getValue(0), 0);
    EXPECT_EQ(box.getTweak(), 0); // and is set from then on
    EXPECT_EQ(box.setTweak(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(GridBox, SurvivesAbsurdNumbers)
{
    float const absurd[] = {0,
                            Const::MISS,
                            std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::max(),
                            std::numeric_limits<float>::max(),
                            std::numeric_limits<float>::denorm_min()};
    for (float a : absurd)
        for (float b : absurd)
            for (float level : absurd) {
                GridBox box = unitBox({a, b, b, a}, Const::MISS);
                int const count = box.setLevel(level);
                EXPECT_TRUE(count == 0 || count == 2 || count == 4);
            }
}

using Line = std::array<float, 4>;

/// Every cell by the cell worker and every level in turn, as the text of a manual would do it.
std::vector<Line>
walkAllLevels(std::vector<float> const & z, int nx, int ny, std::vector<float> const & levels, float tweak)
{
    std::vector<Line> lines;
    auto const at = [&](int i, int j) { return z[static_cast<std::size_t>(j * nx + i)]; };
    auto const point = [](int i, int j) {
        return Point(static_cast<float>(i) * 1.5F, static_cast<float>(-j));
    };
    for (int j = 0; j + 1 < ny; ++j) {
        for (int i = 0; i + 1 < nx; ++i) {
            GridBox box;
            box.setTweak(tweak);
            box.setValues(at(i, j), at(i + 1, j), at(i, j + 1), at(i + 1, j + 1));
            std::array<Point, 4> const p = {point(i, j), point(i + 1, j), point(i, j + 1),
                                            point(i + 1, j + 1)};
            box.setPoints(p[0], p[1], p[2], p[3]);
            for (float level : levels) {
                box.setLevel(level);
                constexpr std::array<std::array<std::size_t, 2>, 4> SIDES = {
                    {{0, 1}, {3, 1}, {2, 3}, {2, 0}}};
                for (int s = 0; s < 4; ++s) {
                    auto const [a, b] = SIDES[static_cast<std::size_t>(s)];
                    if (box.getSide(s) == -4)
                        lines.push_back({p[a].x, p[a].y, p[b].x, p[b].y});
                }
                auto const join = [&](int a, int b) {
                    lines.push_back(
                        {box.getCross(a).x, box.getCross(a).y, box.getCross(b).x, box.getCross(b).y});
                };
                if (box.getNumCross() == 2) {
                    join(0, 1);
                } else if (box.getNumCross() == 4) {
                    bool const is_high = box.getSaddle() >= 2;
                    join(0, is_high ? 1 : 3);
                    join(is_high ? 2 : 1, is_high ? 3 : 2);
                }
            }
        }
    }
    return lines;
}

std::vector<Line>
sweep(std::vector<float> const & z, int nx, int ny, std::vector<float> const & levels, float tweak)
{
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < nx; ++i)
        x.push_back(static_cast<float>(i) * 1.5F);
    for (int j = 0; j < ny; ++j)
        y.push_back(static_cast<float>(-j));
    std::vector<Line> lines;
    detail::sweepCells({z.data(), nx, ny, 0, nx - 1, 0, ny - 1}, levels, tweak, detail::ColumnRowPlaces(x, y),
                       [&](int, int, int, detail::CellLine const & l) {
                           lines.push_back({l.x1, l.y1, l.x2, l.y2});
                       });
    return lines;
}

/// Fields full of corners on levels, flat places, spikes, missing values and rounding traps.
TEST(CellSweep, DrawsWhatTheCellWorkerDraws)
{
    std::mt19937 random(20261114);
    auto const pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int field = 0; field < 400; ++field) {
        int const nx = 2 + pick(70);
        int const ny = 2 + pick(12);
        float const offset =
            std::array{0.F, 100.F, -3.F, 1e6F, 1e-6F, 16777216.F}[static_cast<std::size_t>(pick(6))];
        float const scale =
            std::array{1.F, 10.F, 1e-3F, 1e5F, 1e-30F, 1e30F}[static_cast<std::size_t>(pick(6))];
        int const steps = 1 + pick(12);
        std::vector<float> z;
        for (int k = 0; k < nx * ny; ++k) {
            float const smooth =
                std::sin(static_cast<float>(k % nx) * .3F) * std::cos(static_cast<float>(k / nx) * .4F);
            float const value =
                pick(2) != 0 ? static_cast<float>(pick(steps)) : smooth * static_cast<float>(steps);
            z.push_back(offset + scale * value);
            if (pick(40) == 0)
                z.back() = Const::MISS;
            if (pick(90) == 0)
                z.back() =
                    std::array{std::nanf(""), 1e38F, -1e38F, 1e-40F}[static_cast<std::size_t>(pick(4))];
            if (pick(30) == 0)
                z.back() = std::nextafter(z.back(), 1e38F);
        }
        std::vector<float> levels;
        int const count = 1 + pick(30);
        for (int k = 0; k < count; ++k)
            levels.push_back(offset + scale * (static_cast<float>(k - 5) * .5F));
        if (pick(4) == 0)
            std::shuffle(levels.begin(), levels.end(), random);
        if (pick(4) == 0)
            levels.push_back(levels.back() * 1.5F);
        float const tweak = scale * std::array{0.F, 1e-4F, 1e-12F, .3F}[static_cast<std::size_t>(pick(4))];
        ASSERT_EQ(sweep(z, nx, ny, levels, tweak), walkAllLevels(z, nx, ny, levels, tweak))
            << "field " << field;
    }
}

} // namespace
} // namespace Yul
