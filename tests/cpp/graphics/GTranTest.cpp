#include "graphics/GTran.h"

#include "cpp/graphics/Page.h"

#include <cmath>
#include <limits>

namespace Yul {
namespace {

Rect corners(float x1, float y1, float x2, float y2)
{
    Rect rect;
    rect.setu(x1, y1, x2, y2);
    return rect;
}

void expectRect(Rect const & rect, Rect const & wanted, char const * what)
{
    EXPECT_NEAR(rect.x1, wanted.x1, 1e-5) << what;
    EXPECT_NEAR(rect.y1, wanted.y1, 1e-5) << what;
    EXPECT_NEAR(rect.x2, wanted.x2, 1e-5) << what;
    EXPECT_NEAR(rect.y2, wanted.y2, 1e-5) << what;
}

struct NdcCase
{
    Rect device;
    float width;
    float height;
};

TEST(GTran, LongerSideOfTheDeviceIsOne)
{
    NdcCase const cases[] = {
        {corners(0, 576, 756, 0), 1, 576.0F / 756},
        {corners(0, 0, 576, 756), 576.0F / 756, 1},
        {corners(0, 100, 100, 0), 1, 1},
    };
    for (auto const & c : cases) {
        GTran tran(c.device);
        tran.setWindow(5, 6, 7, 8);
        tran.resize(c.device); // forgets the window
        Rect const whole(0, 0, c.width, c.height);
        expectRect(tran.getNdc(), whole, "ndc");
        expectRect(tran.getWindow(), whole, "window");
        expectRect(tran.getViewport(), whole, "viewport");
        EXPECT_EQ(tran.tranNdcPlotX(0), c.device.x1);
        EXPECT_EQ(tran.tranNdcPlotX(c.width), c.device.x2);
        EXPECT_EQ(tran.tranNdcPlotY(c.height), c.device.y1); // the NDC top is the device's first y
        EXPECT_EQ(tran.tranNdcPlotY(0), c.device.y2);
    }
}

TEST(GTran, ThereAndBackReturnsThePosition)
{
    for (Rect const & device : {corners(0, 576, 756, 0), corners(0, 0, 800, 600)})
        for (Rect const & window :
             {corners(-180, -90, 180, 90), corners(10, 1000, 20, 100), corners(3, 1, -2, 5)}) {
            GTran tran(device);
            tran.setWindow(window);
            tran.setViewport(0.1F, 0.2F, 0.9F, 0.6F);
            for (float part : {0.0F, 0.3F, 0.77F, 1.0F, 1.4F}) {
                float const x = window.x1 + part * window.getWidth();
                float const y = window.y1 + part * window.getHeight();
                EXPECT_NEAR(tran.tranPlotWindowX(tran.tranWindowPlotX(x)), x, 1e-3);
                EXPECT_NEAR(tran.tranPlotWindowY(tran.tranWindowPlotY(y)), y, 1e-3);
                EXPECT_NEAR(tran.tranPlotNdcX(tran.tranWindowPlotX(x)), 0.1F + part * 0.8F, 1e-5);
                EXPECT_NEAR(tran.tranPlotNdcY(tran.tranWindowPlotY(y)), 0.2F + part * 0.4F, 1e-5);
            }
        }
}

TEST(GTran, HoldsPlotCoordinatesOnly)
{
    constexpr float FAR = std::numeric_limits<float>::infinity();
    GTran tran(corners(0, 576, 756, 0));
    EXPECT_EQ(tran.tranWindowPlotX(1000), 30000);
    EXPECT_EQ(tran.tranWindowPlotX(-FAR), -30000);
    EXPECT_EQ(tran.tranWindowPlotY(1e30F), 30000);
    EXPECT_EQ(tran.tranNdcPlotY(-1e30F), -30000);
    EXPECT_EQ(tran.tranWindowNdcX(1000), 1000);
    EXPECT_FLOAT_EQ(tran.tranPlotWindowX(7.56e6F), 1e4F);
    EXPECT_TRUE(std::isnan(tran.tranWindowPlotX(std::numeric_limits<float>::quiet_NaN())));
}

TEST(GTran, RefusesRectanglesWithoutExtent)
{
    constexpr float FAR = std::numeric_limits<float>::infinity();
    GTran tran(corners(0, 576, 756, 0));
    tran.setWindow(1, 2, 3, 4);
    for (Rect const & bad : {corners(1, 0, 1, 5), corners(0, 2, 5, 2), corners(0, 0, FAR, 1),
                             corners(-3e38F, 0, 3e38F, 1), corners(0, NAN, 1, 1)}) {
        EXPECT_EQ(tran.setWindow(bad), 0);
        EXPECT_EQ(tran.setViewport(bad), 0);
        EXPECT_EQ(tran.set(bad), 0);
    }
    expectRect(tran.getWindow(), Rect(1, 2, 3, 4), "window");
    expectRect(tran.getPlot(), corners(0, 576, 756, 0), "plot");
}

TEST(GTran, GoesBetweenTransforms)
{
    GTran a(corners(0, 100, 100, 0));
    GTran b = a;
    a.setWindow(0, 0, 10, 10);
    a.setViewport(0, 0, 0.5F, 0.5F);
    b.setWindow(-1, -1, 1, 1);
    EXPECT_FLOAT_EQ(GTran::tranWindowX(a, b, 10), 0); // the middle of the page
    EXPECT_FLOAT_EQ(GTran::tranWindowY(a, b, 5), -0.5F);
    EXPECT_FLOAT_EQ(GTran::tranWindowY(b, a, -0.5F), 5);
}

TEST(GTran, SeesPointsWhoseBoxTouchesTheWindow)
{
    GTran tran(corners(0, 100, 100, 0));
    tran.setWindow(10, 10, 0, 0); // backwards
    auto const sees = [&](std::initializer_list<Point> list) {
        Points points;
        points.all() = list;
        return tran.isPointsInWindow(points);
    };
    EXPECT_TRUE(sees({{5, 5}}));
    EXPECT_TRUE(sees({{-5, -5}, {15, 15}})); // the box goes round the window
    EXPECT_TRUE(sees({{10, 10}}));
    EXPECT_FALSE(sees({{11, 5}, {12, 5}}));
    EXPECT_FALSE(sees({}));
    EXPECT_FALSE(tran.isPointsInWindow(3, nullptr));
}

struct AspectCase
{
    Rect rect;
    float aspect;
    int halign;
    int valign;
    Rect wanted;
};

TEST(Graph, SetsAViewportOfAnAspect)
{
    test::Page page("sz=10:5"); // NDC 1 x 0.5
    AspectCase const cases[] = {
        {corners(-0.1F, 0, 1, 0.5F), 0, 2, 2, corners(0.1F, 0, 1, 0.5F)},
        {corners(-0.1F, -0.2F, -0.3F, -0.1F), 0, 2, 2, corners(0.1F, 0.2F, 0.7F, 0.4F)},
        {corners(0, 0, 1, 0.5F), 1, 2, 2, corners(0.25F, 0, 0.75F, 0.5F)},
        {corners(0, 0, 1, 0.5F), 1, 1, 9, corners(0, 0, 0.5F, 0.5F)},
        {corners(0, 0, 1, 0.5F), 1, 3, 1, corners(0.5F, 0, 1, 0.5F)},
        {corners(0, 0, 1, 0.5F), 4, 1, 1, corners(0, 0, 1, 0.25F)},
        {corners(0, 0, 1, 0.5F), 4, 1, 3, corners(0, 0.25F, 1, 0.5F)},
        {corners(0, 0, 1, 0.5F), 4, 1, 2, corners(0, 0.125F, 1, 0.375F)},
    };
    for (auto const & c : cases) {
        EXPECT_EQ(page.graph.setViewportAspect(c.rect, c.aspect, c.halign, c.valign), 1);
        expectRect(page.graph.getViewport(), c.wanted, std::to_string(c.aspect).c_str());
    }
    EXPECT_EQ(page.graph.setViewportAspect(corners(0, 0, 0, 0.5F), 0), 0);
    EXPECT_EQ(page.graph.setViewportAspect(corners(0, 0, 1, 1), NAN), 0);
}

} // namespace
} // namespace Yul
