// Graticule, panels, line labels and extremes.
#include "plot/Extrema.h"
#include "plot/Graticule.h"
#include "plot/Layout.h"
#include "plot/LineLabels.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail {
namespace {

constexpr char const * DOMAINS[] = {
    "ll,45,0,121,81,1,1",
    "ll,0,180,360,181,1,1",
    "merc:0:-20,35,-20,101,71,1,1",
    "lambert:50:-40:40:60,50,-40,101,81,1,1",
    "pstereo:90:-90,90,-90,121,121,1.5,1.5",
    "pstereo:-90:0,-90,0,121,121,1,1",
    "ortho:40:-40,40,-40,101,101,1.27,1.27",
    "lambaz:45:10,45,10,81,61,1,1",
    "albers:23:-96:29:45,40,-96,61,41,1,1",
};

TEST(Graticule, ASeamHasItsMeridianOnBothSides)
{
    struct
    {
        char const * text;
        int count; ///< of meridians at the seam, both from pole to pole
    } constexpr CASES[] = {
        {"moll:0:0,0,0,185,94,2,2", 2},
        {"moll:0:30,0,30,185,94,2,2", 2}, // 150 W
        {"pstereo:90:0,90,0,121,121,2,2", 1},
    };

    for (auto const & [text, count] : CASES) {
        Domain const domain(text);
        float const seam = domain.get().plon == 30 ? -150.F : -180.F;
        Graticule const graticule = makeGraticule(domain, domain.getLimits(), {30, 30});
        auto const is_seam = [&](GraticuleLine const & line) {
            return line.kind == LineKind::MERIDIAN && line.value == seam;
        };
        EXPECT_EQ(std::count_if(graticule.lines.begin(), graticule.lines.end(), is_seam), count) << text;
    }
}

TEST(Graticule, LinesHoldTheirLatitudeOrLongitude)
{
    for (char const * text : DOMAINS) {
        SCOPED_TRACE(text);
        Domain const domain(text);
        Rect const frame = domain.getLimits();
        Graticule const graticule = makeGraticule(domain, frame, {});
        float const size = std::max(frame.getWidth(), frame.getHeight());
        EXPECT_GE(graticule.lines.size(), 6U);
        EXPECT_LE(graticule.lines.size(), 60U);
        for (GraticuleLine const & line : graticule.lines) {
            auto const & points = line.points.all();
            for (std::size_t i = 0; i + 1 < points.size(); ++i) {
                Point const middle((points[i].x + points[i + 1].x) / 2, (points[i].y + points[i + 1].y) / 2);
                EarthPoint earth;
                Point there;
                if (domain.tran(middle, earth) == 0)
                    continue; // at the limb of the projection
                if (line.kind == LineKind::PARALLEL)
                    earth.lat = line.value;
                else
                    earth.lon = line.value;
                ASSERT_EQ(domain.tran(earth, there), 1);
                float const off = std::hypot(there.x - middle.x, there.y - middle.y);
                EXPECT_LT(off, 1e-2F * size) << graticuleLabel(line.kind, line.value);
                EXPECT_GE(middle.x, frame.x1 - 1e-4F * size);
                EXPECT_LE(middle.y, frame.y2 + 1e-4F * size);
            }
        }
        for (GraticuleTick const & tick : graticule.ticks) {
            bool const is_side = tick.edge == GraticuleTick::LEFT || tick.edge == GraticuleTick::RIGHT;
            float const distance = is_side
                                       ? std::min(std::abs(tick.x - frame.x1), std::abs(tick.x - frame.x2))
                                       : std::min(std::abs(tick.y - frame.y1), std::abs(tick.y - frame.y2));
            EXPECT_LT(distance, 1e-3F * size);
        }
    }
}

TEST(Graticule, ParallelsRoundTheEarthMeetBothSides)
{
    for (char const * text : {"ll,0,0,361,181,1,1", "ll,0,180,361,181,1,1", "ll,10,-75,721,121,.5,.5"}) {
        Domain const domain(text);
        Graticule const graticule = makeGraticule(domain, domain.getLimits(), {30, 60});
        for (auto const edge : {GraticuleTick::LEFT, GraticuleTick::RIGHT}) {
            auto const is_parallel = [&](GraticuleTick const & tick) {
                return tick.edge == edge && tick.kind == LineKind::PARALLEL && std::abs(tick.value) == 30;
            };
            EXPECT_GE(std::count_if(graticule.ticks.begin(), graticule.ticks.end(), is_parallel), 1) << text;
        }
        for (GraticuleLine const & line : graticule.lines) {
            bool const is_whole = line.kind != LineKind::PARALLEL ||
                                  line.points.all().back().x - line.points.all().front().x > 359;
            EXPECT_TRUE(is_whole) << text << ' ' << line.value;
        }
    }
}

TEST(Graticule, WritesDegrees)
{
    EXPECT_EQ(graticuleLabel(LineKind::PARALLEL, 40), "40°N");
    EXPECT_EQ(graticuleLabel(LineKind::PARALLEL, -2.5F), "2.5°S");
    EXPECT_EQ(graticuleLabel(LineKind::PARALLEL, 0), "0°");
    EXPECT_EQ(graticuleLabel(LineKind::MERIDIAN, -95), "95°W");
    EXPECT_EQ(graticuleLabel(LineKind::MERIDIAN, -180), "180°");
    EXPECT_EQ(graticuleLabel(LineKind::Y_AXIS, -0.5F), "-0.5");
}

TEST(Graticule, AbsurdFramesAndStepsGiveFewLines)
{
    Domain const domain(DOMAINS[0]);
    EXPECT_TRUE(makeGraticule(domain, Rect(0, 0, 0, 0), {}).lines.empty());
    EXPECT_TRUE(makeGraticule(domain, Rect(std::nanf(""), 0, 1, 1), {}).lines.empty());
    EXPECT_LE(makeGraticule(domain, domain.getLimits(), {1e-9F, -3}).lines.size(), 60U);
    EXPECT_EQ(makeGraticule(domain, domain.getLimits(), {40, 60}).lines.size(),
              5U); // 40 and 80 N; 60 W, 0, 60 E
}

TEST(Graticule, AxesHaveRoundValuesAcrossTheFrame)
{
    Domain domain;
    ASSERT_EQ(domain.set(41, 31), 1); // columns and rows
    Rect const frame(-0.37F, 12, 3.2F, 8012);
    Graticule const graticule = makeGraticule(domain, frame, {});
    std::size_t upright = 0;
    for (GraticuleLine line : graticule.lines) {
        bool const is_x = line.kind == LineKind::X_AXIS;
        upright += is_x ? 1 : 0;
        float const step = is_x ? 0.5F : 2000;
        EXPECT_NE(graticuleLabel(line.kind, line.value), "-0");
        EXPECT_NEAR(std::remainder(line.value, step), 0, 1e-4) << line.value;
        Point const a = line.points.get(0);
        Point const b = line.points.get(line.points.getNum() - 1);
        EXPECT_NEAR(is_x ? b.y - a.y : b.x - a.x, is_x ? frame.getHeight() : frame.getWidth(), 1e-3);
        EXPECT_EQ(is_x ? a.x : a.y, line.value);
    }
    EXPECT_EQ(upright, 7U);                          // 0 to 3
    EXPECT_EQ(graticule.lines.size() - upright, 4U); // 2000 to 8000
    EXPECT_EQ(graticule.ticks.size(), 2 * graticule.lines.size());
}

TEST(Layout, ReadsPanels)
{
    PanelGrid panels;
    EXPECT_TRUE(decodePanels("2x3", panels));
    EXPECT_EQ(panels.rows, 2);
    EXPECT_EQ(panels.columns, 3);
    EXPECT_TRUE(decodePanels("5", panels));
    EXPECT_EQ(panels.count(), 6);
    for (char const * text : {"0x2", "2x99", "x", "", "2x3x", "-1"})
        EXPECT_FALSE(decodePanels(text, panels)) << text;
    EXPECT_FALSE(decodePanels(nullptr, panels));
}

TEST(Layout, PanelsFillThePage)
{
    PageStyle full;
    full.panels = {2, 3};
    full.has_full_labels = true;
    PageStyle shared = full;
    shared.has_full_labels = false;
    PageStyle bare = full;
    bare.is_full = true;
    Rect const page(0, 0, 1, .75F);
    for (BarPlace const bar : {BarPlace::NONE, BarPlace::RIGHT, BarPlace::BOTTOM}) {
        full.bar = shared.bar = bare.bar = bar;
        float area = 0;
        int bars = 0;
        for (int i = 0; i < full.panels.count(); ++i) {
            PanelLayout const own = layOut(page, full, i);
            PanelLayout const common = layOut(page, shared, i);
            PanelLayout const plain = layOut(page, bare, i);
            area += own.area.getWidth() * own.area.getHeight();
            bars += common.has_bar;
            EXPECT_GT(own.map.x1, own.area.x1);
            EXPECT_LT(own.map.y2, own.area.y2);
            EXPECT_GT(own.map.getHeight(), 0.4F * own.area.getHeight());
            EXPECT_GT(common.map.getWidth(), own.map.getWidth()); // what sharing is for
            EXPECT_GT(common.map.getHeight(), own.map.getHeight());
            EXPECT_GT(plain.map.getWidth(), common.map.getWidth() - 1e-6F);
            EXPECT_EQ(common.has_left, i % 3 == 0);
            EXPECT_EQ(common.has_bottom, i / 3 == 1);
            EXPECT_TRUE(own.has_left && own.has_right && own.has_top && own.has_bottom);
            for (int k = 0; k < i; ++k) {
                Rect const & other = layOut(page, shared, k).map;
                EXPECT_TRUE(other.x2 < common.map.x1 || other.x1 > common.map.x2 ||
                            other.y2 < common.map.y1 || other.y1 > common.map.y2);
            }
        }
        EXPECT_NEAR(area, .75F, 1e-5F);
        EXPECT_EQ(bars, bar == BarPlace::NONE ? 0 : 1);
    }
    bare.bar = BarPlace::NONE;
    EXPECT_EQ(layOut(page, bare, 0).map.getWidth(), layOut(page, bare, 0).area.getWidth());
    EXPECT_EQ(decodeBarPlace(""), BarPlace::RIGHT);
    EXPECT_EQ(decodeBarPlace("Bottom"), BarPlace::BOTTOM);
    EXPECT_EQ(decodeBarPlace("off"), BarPlace::NONE);
}

/// Circles round the middle of the unit square, as lines of cells.
std::vector<DrawnLine> rings(int cells, std::vector<float> const & radii)
{
    std::vector<float> values;
    std::vector<float> x;
    std::vector<float> y;
    for (int j = 0; j <= cells; ++j) {
        y.push_back(1 - static_cast<float>(j) / static_cast<float>(cells));
        x.push_back(static_cast<float>(j) / static_cast<float>(cells));
    }
    for (float const py : y)
        for (float const px : x)
            values.push_back(std::hypot(px - .5F, py - .5F));
    std::vector<DrawnLine> lines;
    sweepCells({values.data(), cells + 1, cells + 1, 0, cells, 0, cells}, radii, 0, ColumnRowPlaces(x, y),
               [&](int column, int row, int k, CellLine const & l) {
                   lines.push_back({l.x1, l.y1, l.x2, l.y2, column, row, static_cast<std::int16_t>(k),
                                    static_cast<std::int8_t>(l.side1), static_cast<std::int8_t>(l.side2)});
               });
    return lines;
}

TEST(LineLabels, StandOnTheirLineUprightAndApart)
{
    std::vector<float> const radii = {.02F, .15F, .25F, .35F, .37F, .45F};
    std::vector<DrawnLine> const lines = rings(200, radii);
    std::vector<LevelLabel> const levels(radii.size(), LevelLabel{.05F});
    LabelRules rules;
    rules.frame = Rect(0, 0, 1, 1);
    rules.text_height = .012F;
    rules.spacing = .2F;
    LabelBoxes boxes(0, 0, 1, 1);
    LabelBox taken;
    taken.x = .5F;
    taken.y = .75F;
    taken.half_width = taken.half_height = .05F;
    boxes.add(taken);

    std::vector<LineLabel> const labels = placeLabels(lines, levels, rules, boxes);
    EXPECT_GE(labels.size(), 10U);
    std::vector<int> count(radii.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        LabelBox const & box = labels[i].box;
        auto const level = static_cast<std::size_t>(labels[i].level);
        ++count[level];
        EXPECT_GE(box.along_x, 0);
        EXPECT_NEAR(std::hypot(box.x - .5F, box.y - .5F), radii[level], .25F * rules.text_height);
        EXPECT_NEAR(box.along_x * (box.x - .5F) + box.along_y * (box.y - .5F), 0, .01F); // along the ring
        EXPECT_FALSE(box.overlaps(taken));
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_FALSE(box.overlaps(labels[j].box));
            float const distance = std::hypot(box.x - labels[j].box.x, box.y - labels[j].box.y);
            EXPECT_TRUE(labels[j].level != labels[i].level || distance >= rules.spacing);
        }
    }
    EXPECT_EQ(count[0], 0); // too small a ring for a text
    EXPECT_GE(count[5], 3);
}

TEST(LabelBoxes, CutLinesWhereTheyPassUnderABox)
{
    LabelBoxes boxes(0, 0, 1, 1);
    LabelBox box;
    box.x = box.y = .5F;
    box.along_x = box.along_y = std::sqrt(.5F);
    box.half_width = .2F;
    box.half_height = .1F;
    boxes.add(box);
    std::vector<float> parts;
    auto const draw = [&](float from, float to) {
        parts.push_back(from);
        parts.push_back(to);
    };
    boxes.drawAround(0, 0, 1, 1, draw); // along its axis
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_NEAR(parts[1], .5F - .2F * std::sqrt(.5F), 1e-5F);
    EXPECT_NEAR(parts[2], .5F + .2F * std::sqrt(.5F), 1e-5F);
    parts.clear();
    boxes.drawAround(0, .9F, 1, .9F, draw); // passes by
    EXPECT_EQ(parts, (std::vector<float>{0, 1}));
    parts.clear();
    boxes.drawAround(.5F, .5F, .51F, .51F, draw); // inside
    EXPECT_TRUE(parts.empty());
}

TEST(Extrema, FindsWhatStandsOut)
{
    constexpr int N = 60;
    std::vector<float> values;
    for (int row = 0; row < N; ++row)
        for (int column = 0; column < N; ++column)
            values.push_back(
                10 *
                    std::exp(-std::hypot(static_cast<float>(column - 15), static_cast<float>(row - 20)) / 5) -
                8 * std::exp(-std::hypot(static_cast<float>(column - 40), static_cast<float>(row - 45)) / 5));
    values[5 * N + 50] = Const::MISS;
    values[6 * N + 50] = INFINITY;
    FieldView const field{values.data(), N, N, 0, N - 1, 0, N - 1};
    auto const found = findExtrema(field, 6, 2);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0].is_high);
    EXPECT_EQ(found[0].column, 15);
    EXPECT_EQ(found[0].row, 20);
    EXPECT_FALSE(found[1].is_high);
    EXPECT_EQ(found[1].column, 40);
    EXPECT_EQ(found[1].row, 45);
    std::vector<float> const flat(N * N, 3.F);
    EXPECT_TRUE(findExtrema({flat.data(), N, N, 0, N - 1, 0, N - 1}, 6, 0.1F).empty());
    EXPECT_TRUE(findExtrema({flat.data(), 1, 1, 0, 0, 0, 0}, 6, 0).empty());
}

} // namespace
} // namespace Yul::detail
