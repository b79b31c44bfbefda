// Bands of values: what an outline encloses is what the cells say.
#include "plot/BandTracer.h"

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail {
namespace {

struct Place
{
    double x;
    double y;
};

/// Column to the right, row downward, so that y is -row.
Place placeOf(BandNode const & n)
{
    double const t = static_cast<double>(n.t);
    switch (n.kind) {
    case BandNode::HORIZONTAL:
        return {n.column + t, static_cast<double>(-n.row)};
    case BandNode::VERTICAL:
        return {static_cast<double>(n.column), -n.row - 1 + t};
    default:
        return {static_cast<double>(n.column), static_cast<double>(-n.row)};
    }
}

/// How often the outlines go round a place.
int winding(std::vector<BandOutline> const & outlines, Place const & p)
{
    int turns = 0;
    for (BandOutline const & outline : outlines) {
        for (std::size_t i = 0; i < outline.size(); ++i) {
            Place const a = placeOf(outline[i]);
            Place const b = placeOf(outline[(i + 1) % outline.size()]);
            if ((a.y <= p.y) == (b.y <= p.y))
                continue;
            double const x = a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
            if (x > p.x)
                turns += b.y > a.y ? 1 : -1;
        }
    }
    return turns;
}

class Field
{
public:
    Field(std::vector<float> z, int columns, int rows) : values(std::move(z)), nx(columns), ny(rows) {}

    [[nodiscard]] FieldView view() const { return {values.data(), nx, ny, 0, nx - 1, 0, ny - 1}; }

    [[nodiscard]] float at(int i, int j) const { return values[static_cast<std::size_t>(j * nx + i)]; }

    /// Whether the place lies above the level by the contour lines of its cell: the segments of a cell cut it
    /// in parts, and every part has a corner.
    [[nodiscard]] bool isAbove(Place const & p, float level, SaddleRule rule) const
    {
        auto const i = static_cast<int>(std::floor(p.x));
        auto const j = static_cast<int>(std::floor(-p.y));
        double const u = p.x - i;
        double const v = p.y + j + 1; // upward from the lower side
        std::array<double, 4> const c = {static_cast<double>(at(i, j)), static_cast<double>(at(i + 1, j)),
                                         static_cast<double>(at(i, j + 1)),
                                         static_cast<double>(at(i + 1, j + 1))};
        auto const l = static_cast<double>(level);
        auto const in = [&](std::size_t k) { return c[k] >= l; };
        auto const t = [&](std::size_t a, std::size_t b) { return (l - c[a]) / (c[b] - c[a]); };
        // Where the contour meets the sides, as far as it does.
        Place const top = {t(0, 1), 1};
        Place const right = {1, t(3, 1)};
        Place const bottom = {t(2, 3), 0};
        Place const left = {0, t(2, 0)};
        auto const isLeftOf = [&](Place const & a, Place const & b) {
            return (b.x - a.x) * (v - a.y) - (b.y - a.y) * (u - a.x) >=
                   0; // a line of no length cuts nothing off
        };
        int const ins = in(0) + in(1) + in(2) + in(3);
        if (ins == 0 || ins == 4)
            return ins == 4;
        bool const is_saddle = in(0) == in(3) && in(1) == in(2) && in(0) != in(1);
        if (is_saddle) {
            bool const are_neighbours = rule == SaddleRule::AS_LINES
                                            ? bottom.x + left.y + (2 - top.x - right.y) >= 2
                                            : in(0) == ((c[0] + c[1] + c[2] + c[3]) / 4 >= l);
            if (are_neighbours) { // corners 1 and 2 are cut off
                if (!isLeftOf(right, top))
                    return in(1);
                return isLeftOf(left, bottom) ? in(0) : in(2);
            }
            if (!isLeftOf(top, left))
                return in(0);
            return isLeftOf(bottom, right) ? in(1) : in(3);
        }
        if (in(0) == in(1) && in(2) == in(3))
            return isLeftOf(left, right) ? in(0) : in(2);
        if (in(0) == in(2) && in(1) == in(3))
            return isLeftOf(bottom, top) ? in(0) : in(1);
        // One corner differs from the others.
        if (in(1) == in(2) && in(1) == in(3))
            return isLeftOf(top, left) ? in(1) : in(0);
        if (in(0) == in(2) && in(0) == in(3))
            return isLeftOf(right, top) ? in(0) : in(1);
        if (in(0) == in(1) && in(0) == in(3))
            return isLeftOf(left, bottom) ? in(0) : in(2);
        return isLeftOf(bottom, right) ? in(0) : in(3);
    }

    std::vector<float> values;
    int nx;
    int ny;
};

/// Fields full of holes, islands in holes, saddles and missing places.
TEST(BandTracer, EnclosesWhatLiesInTheBand)
{
    std::mt19937 random(20261122);
    auto const pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    auto const share = [&] { return static_cast<double>(random() >> 8) / 0x1p24; };
    int checked = 0;
    for (int round = 0; round < 300; ++round) {
        int const nx = 2 + pick(24);
        int const ny = 2 + pick(24);
        int const roughness = 1 + pick(4);
        std::vector<float> z;
        for (int k = 0; k < nx * ny; ++k) {
            float const smooth =
                std::sin(static_cast<float>(k % nx) * .7F) * std::cos(static_cast<float>(k / nx) * .6F);
            z.push_back(pick(3) < roughness ? static_cast<float>(pick(5)) + .25F * static_cast<float>(pick(2))
                                            : 4 * smooth);
            if (round % 3 == 0 && pick(6) == 0)
                z.back() = pick(2) == 0 ? static_cast<float>(Const::MISS) : std::nanf("");
        }
        Field const field(z, nx, ny);
        std::vector<float> const levels = {-1, 0.5F, 1, 2, 3.125F, 9};
        std::vector<std::uint8_t> usable(static_cast<std::size_t>((nx - 1) * (ny - 1)));
        for (std::size_t i = 0; i < usable.size(); ++i)
            usable[i] = round % 5 != 0 || pick(8) != 0 ? 1 : 0;
        BandTracer const as_lines(field.view(), levels, SaddleRule::AS_LINES, usable);
        BandTracer const nested(field.view(), levels, SaddleRule::NESTED, usable);
        for (auto const & [low, high] :
             {std::pair{0, -1}, {1, -1}, {2, -1}, {3, 4}, {1, 2}, {0, 5}, {5, -1}}) {
            SaddleRule const rule = high >= 0 ? SaddleRule::NESTED : SaddleRule::AS_LINES;
            std::vector<BandOutline> const outlines = (high >= 0 ? nested : as_lines).trace(low, high);
            for (int n = 0; n < 60; ++n) {
                Place const p = {share() * (nx - 1), -share() * (ny - 1)};
                auto const i = static_cast<int>(std::floor(p.x));
                auto const j = static_cast<int>(std::floor(-p.y));
                bool is_in = usable[static_cast<std::size_t>(j * (nx - 1) + i)] != 0;
                for (int k = 0; k < 4; ++k) {
                    float const v = field.at(i + k % 2, j + k / 2);
                    is_in = is_in && std::isfinite(v) && !isMissing(v);
                }
                is_in = is_in && field.isAbove(p, levels[static_cast<std::size_t>(low)], rule) &&
                        !(high >= 0 && field.isAbove(p, levels[static_cast<std::size_t>(high)], rule));
                ASSERT_EQ(winding(outlines, p), is_in ? 1 : 0)
                    << "field " << round << ", " << nx << " x " << ny << ", levels " << low << ' ' << high
                    << ", at " << p.x << ' ' << p.y;
                checked += is_in ? 1 : 0;
            }
        }
    }
    EXPECT_GT(checked, 20000);
}

TEST(BandTracer, RefusesLevelsThatItHasNot)
{
    std::vector<float> const z = {0, 1, 2, 3};
    BandTracer const tracer({z.data(), 2, 2, 0, 1, 0, 1}, std::vector<float>{1.F}, SaddleRule::NESTED,
                            {true});
    EXPECT_EQ(tracer.trace(0, -1).size(), 1U);
    EXPECT_TRUE(tracer.trace(-1, -1).empty());
    EXPECT_TRUE(tracer.trace(1, -1).empty());
    EXPECT_TRUE(tracer.trace(0, 1).empty());
}

} // namespace
} // namespace Yul::detail
