#include "graphics/Graph.h"

#include "core/Format.h"
#include "core/String.h"
#include "cpp/graphics/Page.h"
#include "graphics/Color.h"
#include "graphics/Image.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace Yul {
namespace {

using test::bounds;
using test::Page;
using test::paths;

/// A state setter, tried right after opening and then again.
struct StateCase
{
    char const * name;
    int (*set)(Graph & graph);
    int first;
};

constexpr StateCase STATE_CASES[] = {
    {"line color 1", [](Graph & g) { return g.setLineColor(1); }, 0}, // the initial value
    {"line color", [](Graph & g) { return g.setLineColor(7); }, 1},
    {"line width 1", [](Graph & g) { return g.setLineWidth(1); }, 1}, // never sent before
    {"line width 0", [](Graph & g) { return g.setLineWidth(0); }, 1},
    {"line width -1", [](Graph & g) { return g.setLineWidth(-1); }, 0},
    {"line style 1", [](Graph & g) { return g.setLineStyle(1); }, 0},
    {"line style", [](Graph & g) { return g.setLineStyle(-5); }, 1},
    {"fill color", [](Graph & g) { return g.setFillColor(-1); }, 1},
    {"fill style 0", [](Graph & g) { return g.setFillStyle(0); }, 0},
    {"fill style", [](Graph & g) { return g.setFillStyle(9); }, 1},
    {"text color", [](Graph & g) { return g.setTextColor(0); }, 1},
    {"text weight 1", [](Graph & g) { return g.setTextWeight(1); }, 0},
    {"text weight", [](Graph & g) { return g.setTextWeight(2); }, 1},
    {"text weight nan", [](Graph & g) { return g.setTextWeight(NAN); }, 0},
    {"text height", [](Graph & g) { return g.setTextHeight(5); }, 1},
    {"text height 0", [](Graph & g) { return g.setTextHeight(0); }, 0},
    {"mark color", [](Graph & g) { return g.setMarkColor(3); }, 1},
    {"mark type 1", [](Graph & g) { return g.setMarkType(1); }, 0},
    {"mark type", [](Graph & g) { return g.setMarkType(10); }, 1},
    {"mark type 11", [](Graph & g) { return g.setMarkType(11); }, 1},
    {"mark size", [](Graph & g) { return g.setMarkSize(3); }, 1},
    {"mark weight", [](Graph & g) { return g.setMarkWeight(3); }, 1},
    {"font modern.fnt", [](Graph & g) { return g.setFont("modern.fnt"); }, 0},
    {"font", [](Graph & g) { return g.setFont("modern"); }, 1},
    {"font empty", [](Graph & g) { return g.setFont(""); }, 0},
    {"font null", [](Graph & g) { return g.setFont(nullptr); }, 0},
    {"tran 4", [](Graph & g) { return g.setTran(4); }, 0},
    {"window of tran -1", [](Graph & g) { return g.setWindow(-1, Rect(0, 0, 1, 1)); }, 0},
    {"direction 0", [](Graph & g) { return g.setTextDirection(0, 0); }, 0},
    {"shadow", [](Graph & g) { return g.setDropShadow(INT_MAX); }, 0},
};

TEST(Graph, TellsTheDeviceOfAChangeOnce)
{
    Page page;
    for (auto const & c : STATE_CASES) {
        EXPECT_EQ(c.set(page.graph), c.first) << c.name;
        EXPECT_EQ(c.set(page.graph), 0) << c.name << " again";
        Graph none;
        EXPECT_EQ(c.set(none), 0) << c.name << " without a device";
    }
}

TEST(Graph, StartsAnewWhenItIsOpened)
{
    test::PageFile file;
    Yul::setDatabasePath(YUL_DATABASE);
    Graph graph("postscript", file.path.c_str());
    EXPECT_EQ(graph.setLineColor(0xff0000), 1); // before the page: forgotten
    EXPECT_EQ(graph.setTran(2), 1);
    graph.open();
    EXPECT_EQ(graph.getTran(), 0);
    EXPECT_EQ(graph.setLineColor(1), 0);
    graph.drawLine(0, 0, 1, 1);
    EXPECT_EQ(graph.open(), 1); // an open graph stays as it is
    EXPECT_EQ(graph.close(), 1);
    EXPECT_EQ(graph.close(), 0);
    EXPECT_NE(file.text().find("%%PL:2\n0.00 setgray"), std::string::npos);
}

TEST(Graph, NamesTheDeviceThatIsNotInTheBuild)
{
    struct
    {
        char const * name;
        int kind;
        char const * title;
    } const cases[] = {
        {"hpgl", HPGL_DEVICE, "HP-GL"},       {"meta", META_DEVICE, "metafile"},
        {"display", WINDOW_DEVICE, "window"}, {"Postscript", WINDOW_DEVICE, "window"}, // names are exact
        {nullptr, WINDOW_DEVICE, "window"},
    };

    for (auto const & c : cases) {
        Graph graph;
        testing::internal::CaptureStderr();
        EXPECT_EQ(graph.setDevice(c.name, "a,b"), 1);
        EXPECT_EQ(graph.getDeviceKind(), c.kind);
        EXPECT_EQ(graph.open(), 0);
        EXPECT_EQ(graph.setTitle("x"), 0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  std::string("Graph::setDevice: The ") + c.title + " device is not part of this build\n");
        EXPECT_FALSE(graph.isOpen());
    }
    Graph none;
    testing::internal::CaptureStderr();
    EXPECT_EQ(none.open(), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("window"), std::string::npos);
}

TEST(Graph, ReportsWindowOperationsOfAPageAsDone)
{
    Page page;
    Graph & g = page.graph;
    Image image(3, 3);
    for (int result : {g.update(),
                       g.manage(),
                       g.unmanage(),
                       g.clear(),
                       g.clearRect(Rect(0, 0, 1, 1)),
                       g.setIcon(true),
                       g.setFixed(true),
                       g.setSize(5, 5),
                       g.setOffset(1, 1),
                       g.setInverse(true),
                       g.setBackground(nullptr),
                       g.setCursor(1),
                       g.bell(1),
                       g.newFrame(),
                       g.newFrame(3),
                       g.setFrame(9),
                       g.deleteFrame(0),
                       g.addCallback("AnyEvent", nullptr, nullptr),
                       g.doCallback(nullptr, nullptr),
                       g.callback("a", "b", nullptr)})
        EXPECT_EQ(result, 1);
    EXPECT_EQ(g.getImage(image), 0);
    EXPECT_TRUE(image.isEmpty());
    EXPECT_EQ(g.isLooping(), 0);
    String name;
    EXPECT_EQ(g.getDevice(name), 1);
    EXPECT_STREQ(name.get(), "postscript");
    testing::internal::CaptureStdout();
    g.message("%d lines\n", 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "3 lines\n");
    EXPECT_EQ(page.drawn(), "");
}

/// A mark of size 20 at (100, 200): places as offsets in tenths of half the size; "/" begins another line.
struct MarkCase
{
    int type;
    char const * places;
};

constexpr MarkCase MARK_CASES[] = {
    {1, "0,0 2,0 2,2 0,2 0,0"},
    {2, "-10,0 10,0 / 0,-10 0,10"},
    {4, "10,0 8.66,5 5,8.66 0,10 -5,8.66 -8.66,5 -10,0 -8.66,-5 -5,-8.66 0,-10 5,-8.66 8.66,-5 10,0"},
    {5, "-10,-10 10,10 / 10,-10 -10,10"},
    {6, "-10,10 10,10 10,-10 -10,-10 -10,10"},
    {7, "-10,-10 10,-10 0,10 -10,-10"},
    {8, "0,0 1,1"},
    {9, "-10,10 10,10 0,-10 -10,10"},
    {10, "0,10 5,0 -5,0 0,-10"},
};

TEST(Graph, DrawsTheFiguresOfTheMarks)
{
    for (auto const & c : MARK_CASES) {
        Page page;
        page.graph.setMarkType(c.type);
        page.graph.setMarkSize(20);
        EXPECT_EQ(page.graph.drawMark(100, 200), 1);
        std::string drawn;
        for (auto const & line : paths(page.drawn())) {
            drawn += drawn.empty() ? "" : "/ ";
            for (Point const & p : line)
                drawn += detail::format("%g,%g ", std::round((p.x - 100) * 100) / 100,
                                        std::round((p.y - 200) * 100) / 100);
        }
        EXPECT_EQ(drawn, std::string(c.places) + " ") << c.type;
    }
    Page page; // the star: four strokes through the middle
    page.graph.setMarkType(3);
    page.graph.drawMarkLine(100, 200, 20);
    auto const lines = paths(page.drawn());
    ASSERT_EQ(lines.size(), 1U);
    Rect const box = bounds(lines);
    EXPECT_FLOAT_EQ(box.x1 + box.x2, 200);
    EXPECT_FLOAT_EQ(box.y2 - box.y1, 20);
}

TEST(Graph, DrawsSymbolsInTheMarkColor)
{
    Page page("port,color");
    page.graph.setMarkColor(0xff0000);
    page.graph.setFillColor(0x0000ff);
    EXPECT_EQ(page.graph.drawSymbol(100, 100, "n4", 20), 1); // a circle, half of it filled
    EXPECT_EQ(page.graph.drawSymbol(100, 100, "nothing", 20), 0);
    page.graph.drawFill(Rect(0, 0, 1, 1));
    std::string const drawn = page.drawn();
    auto const lines = paths(drawn);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NEAR(bounds({lines[0]}).x1, 92, 0.01);
    EXPECT_NEAR(bounds({lines[1]}).x1, 100, 0.01);
    EXPECT_NE(drawn.find("%%FA:14\n1.00 0.00 0.00 setrgbcolor"), std::string::npos) << drawn;
    EXPECT_NE(drawn.find("%%FA:4\n0.00 0.00 1.00 setrgbcolor"), std::string::npos);
}

// ---- text ----

/// Where the ink of a text at (300, 300) of height 10 is.
struct TextCase
{
    char const * text;
    int halign;
    int valign;
    float anchor_x;     // what lies at x = 300: 0 left, 0.5 middle, 1 right of the ink
    float baselines[2]; // of the highest and the lowest line, from y = 300
};

constexpr TextCase TEXT_CASES[] = {
    {"HH", 0, 0, 0, {0, 0}},         {"HH", 1, 3, 0, {0, 0}},           {"LT", 2, 1, 0.5F, {0, 0}},
    {"LT", 3, 2, 1, {0, 0}},         {"LT", 9, 0, 0, {0, 0}},           {"H\nH\nH", 1, 0, 0, {26, 0}},
    {"H\nH\nH", 1, 7, 0, {26, 0}},   {"H\nH\nH", 2, 1, 0.5F, {0, -26}}, {"H\nH\nH", 3, 2, 1, {0, -26}},
    {"H\nH\nH", 1, 3, 0, {13, -13}}, {"H\nH", 1, 3, 0, {0, -13}}, // half a step is none
    {"H\n\nH", 1, 0, 0, {26, 0}},                                 // an empty line counts
};

TEST(Graph, PlacesTextByItsAlignment)
{
    for (auto const & c : TEXT_CASES) {
        Page page;
        page.graph.setTextHeight(10);
        page.graph.setTextAlign(c.halign, c.valign);
        EXPECT_EQ(page.graph.drawText(300, 300, c.text), 1);
        Rect const ink = bounds(paths(page.drawn()));
        EXPECT_NEAR(ink.x1 + c.anchor_x * (ink.x2 - ink.x1), 300, 0.02) << c.text << c.halign;
        EXPECT_NEAR(ink.y2, 300 + c.baselines[0] + 10, 0.02) << c.text << c.valign;
        EXPECT_NEAR(ink.y1, 300 + c.baselines[1], 0.02) << c.text << c.valign;
    }
}

TEST(Graph, TurnsTextRoundItsPosition)
{
    auto const inkAt = [](float up_x, float up_y) {
        Page page;
        page.graph.setTextHeight(10);
        page.graph.setTextDirection(up_x, up_y);
        page.graph.drawText(300, 300, "AB\nC");
        return bounds(paths(page.drawn()));
    };
    Rect const upright = inkAt(0, 1);
    Rect const left = inkAt(-3, 0); // up is to the left: the line runs upward
    EXPECT_NEAR(left.x1 - 300, -(upright.y2 - 300), 0.03);
    EXPECT_NEAR(left.x2 - 300, -(upright.y1 - 300), 0.03);
    EXPECT_NEAR(left.y1, upright.x1, 0.03);
    EXPECT_NEAR(left.y2, upright.x2, 0.03);
    Rect const over = inkAt(0, -1);
    EXPECT_NEAR(over.x2 - 300, -(upright.x1 - 300), 0.03);
    EXPECT_NEAR(over.y1 - 300, -(upright.y2 - 300), 0.03);
}

TEST(Graph, ShapesTextByItsAttributes)
{
    auto const widthWith = [](void (*set)(Graph & g), char const * text) {
        Page page;
        page.graph.setTextHeight(10);
        set(page.graph);
        float const width = page.graph.getTextWidth(text);
        page.graph.drawText(300, 300, text);
        EXPECT_NEAR(bounds(paths(page.drawn())).getWidth(), width, 0.02);
        return width;
    };
    float const plain = widthWith([](Graph &) {}, "HHH");
    EXPECT_NEAR(widthWith([](Graph & g) { g.setTextExpansion(2); }, "HHH"), 2 * plain, 0.02);
    EXPECT_NEAR(widthWith([](Graph & g) { g.setTextSpacing(0.5F); }, "HHH"), plain + 2 * 2.5F, 0.02);
    EXPECT_NEAR(widthWith([](Graph & g) { g.setTextCharWidth(1.5F); }, "HHH") -
                    widthWith([](Graph & g) { g.setTextCharWidth(1.5F); }, "H"),
                30, 0.02);
    EXPECT_NEAR(widthWith([](Graph & g) { g.setTextHeight(20); }, "HHH"), 2 * plain, 0.02);
    EXPECT_NEAR(widthWith([](Graph &) {}, "\xe4\xb8\xad"), 6, 0.02); // a box
}

TEST(Graph, KeepsTheRoomOfBlanksAtTheEnds)
{
    Page page;
    page.graph.setTextHeight(10);
    float const plain = page.graph.getTextWidth("HHH");
    float const padded = page.graph.getTextWidth("  HHH");
    EXPECT_GT(padded, plain + 5);
    page.graph.drawText(300, 300, "  HHH");
    Rect const ink = bounds(paths(page.drawn()));
    EXPECT_NEAR(ink.x1, 300 + padded - plain, 0.02);
}

TEST(Graph, KeepsLettersInShapeWhateverTheWindowsAxes)
{
    Page page;
    page.graph.setWindow(Rect(0, 0, 7560, 576));
    page.graph.setTextHeight(10);
    page.graph.drawText(3000, 300, "H");
    Rect backwards;
    backwards.setu(0, 576, 756, 0); // y grows down the page
    page.graph.setWindow(backwards);
    page.graph.drawText(300, 276, "H");
    auto const lines = paths(page.drawn());
    ASSERT_EQ(lines.size(), 6U);
    Rect const wide = bounds({lines[0], lines[1], lines[2]});
    Rect const flipped = bounds({lines[3], lines[4], lines[5]});
    EXPECT_NEAR(wide.getHeight(), 10, 0.02);
    EXPECT_NEAR(wide.x1, flipped.x1, 0.02);
    EXPECT_NEAR(wide.x2, flipped.x2, 0.02);
    EXPECT_NEAR(flipped.y1, 300, 0.02);
    EXPECT_NEAR(flipped.y2, 310, 0.02);
}

TEST(Graph, DrawsShadowsBoxAndLongLines)
{
    Page page("port,color");
    Graph & g = page.graph;
    g.setTextHeight(10);
    g.setTextColor(0x0000ff);
    g.setDropColor(0xff0000);
    g.setDropShadow(3);
    g.setDropWidth(4);
    g.drawText(300, 300, "I");
    g.setDropShadow(0);
    g.setTextBoxColor(0xffff00);
    g.drawText(100, 100, "I\n\nI");
    g.setTextBoxColor(0);
    g.drawText(0, 200, std::string(1000, 'I').c_str());
    std::string const drawn = page.drawn();
    auto const lines = paths(drawn);
    ASSERT_EQ(lines.size(), 4U + 4U + 100U);
    for (std::size_t i = 0; i < 3; ++i) // device pixels to the right and up
        EXPECT_NEAR(lines[i][0].x - lines[3][0].x, static_cast<float>(i), 0.02);
    std::string const shadow = "%%PL:2\n1.00 0.00 0.00 setrgbcolor\n[] 0 setdash\n4.0 dot lw\n";
    std::string const text = "%%PL:2\n0.00 0.00 1.00 setrgbcolor\n[] 0 setdash\n1.0 dot lw\n";
    EXPECT_EQ(drawn.find(shadow), 0U);
    EXPECT_LT(drawn.rfind(shadow), drawn.find(text));
    EXPECT_LT(drawn.find("%%FA:4\n1.00 1.00 0.00 setrgbcolor"), drawn.rfind("%%FA"));
    Rect const box = bounds({lines[5]}); // the boxes come first: of the first line and of the last
    Rect const ink = bounds({lines[7]});
    EXPECT_LT(box.x1, ink.x1);
    EXPECT_GT(box.x2, ink.x2);
    EXPECT_LT(box.y1, ink.y1);
    EXPECT_GT(box.y2, ink.y2);
}

TEST(Graph, WarnsOfAFontThatItCannotLoad)
{
    // The second: a page has no fonts of its own.
    for (char const * const name : {"no such font", "#Helvetica-{12}x", "../CMakeLists.txt"}) {
        Page page;
        page.graph.setTextHeight(10);
        testing::internal::CaptureStderr();
        EXPECT_EQ(page.graph.setFont(name), 0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  detail::format("setFont: unable to load font: %s, using modern\n", name));
        EXPECT_EQ(page.graph.setFont(name), 0); // the name is in use now, no second warning
        EXPECT_EQ(page.graph.drawText(100, 100, "text"), 1);
        EXPECT_FALSE(paths(page.drawn()).empty());
    }
}

TEST(Graph, DrawsNoTextWithoutAFont)
{
    test::PageFile file;
    Yul::setDatabasePath("/nowhere");
    Graph graph;
    testing::internal::CaptureStderr();
    EXPECT_EQ(graph.open("postscript", file.path.c_str()), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "setFont: unable to load font: modern.fnt, using modern\n"
              "setSymbol: unable to load symbols: wx.smb\n");
    EXPECT_EQ(graph.drawText(0, 0, "text"), 0);
    EXPECT_EQ(graph.drawTextLine(0, 0, "text"), 0);
    EXPECT_EQ(graph.getTextWidth("text"), 0);
    EXPECT_EQ(graph.drawSymbol(0, 0, "rain", 1), 0);
    graph.close();
    EXPECT_TRUE(paths(file.text()).empty());
}

TEST(Graph, LooksFontsUpInTheFontList)
{
    test::Folder const folder;
    std::filesystem::copy(std::string(YUL_DATABASE) + "/modern.fnt", folder.path);
    folder.write("yul.fnl", "# a list\nfirst modern.fnt\nsecond none.fnt\nsecond modern.fnt\nthird\n");
    Page page;
    Yul::setDatabasePath(folder.path.c_str());
    testing::internal::CaptureStderr();
    EXPECT_EQ(page.graph.setFont("first"), 1);
    EXPECT_EQ(page.graph.setFont("second"), 0); // the first line counts
    EXPECT_EQ(page.graph.setFont("third"), 0);  // a line without a file is none
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "setFont: unable to load font: none.fnt, using modern\n"
                                                      "setFont: unable to load font: third, using modern\n");
}

TEST(Graph, LeavesTextToTheDeviceWhenTold)
{
    Page page("port,hfont"); // a page draws no text of its own
    EXPECT_EQ(page.graph.drawText(100, 100, "text"), 0);
    EXPECT_EQ(page.graph.drawTextLine(100, 100, "I"), 1); // always strokes
    EXPECT_EQ(paths(page.drawn()).size(), 1U);
}

/// Where a symbol's first line ends when it is turned.
struct TurnCase
{
    float angle;
    float x;
    float y;
};

TEST(Graph, TurnsSymbolsClockwiseAndKeepsTheirShape)
{
    TurnCase const cases[] = {{0, 0, 20}, {90, 20, 0}, {180, 0, -20}, {-90, -20, 0}, {450, 20, 0}};
    for (bool const is_wide : {false, true})
        for (auto const & c : cases) {
            Page page;
            if (is_wide) // ten window units across are one on the page
                page.graph.setWindow(Rect(0, 0, 7560, 576));
            EXPECT_EQ(page.graph.drawSymbol(is_wide ? 1000 : 100, 100, "wind10", 40, c.angle), 1);
            auto const shaft = paths(page.drawn()).at(0);
            EXPECT_NEAR(shaft.at(1).x - 100, c.x, 0.02) << c.angle;
            EXPECT_NEAR(shaft.at(1).y - 100, c.y, 0.02) << c.angle;
        }
    Page page;
    EXPECT_EQ(page.graph.drawSymbol(0, 0, "wind10", 40, NAN), 0);
    EXPECT_EQ(page.graph.drawSymbol(0, 0, "wind10", -1), 0);
    EXPECT_EQ(page.drawn(), "");
}

TEST(Graph, DrawsWindBarbsToTheNearestFiveKnots)
{
    struct
    {
        float speed;
        std::size_t lines; // with the shaft; a ring is one
        std::size_t fills;
    } const cases[] = {{0, 1, 0},  {2.4F, 1, 0}, {2.6F, 2, 0}, {10, 2, 0},  {47, 6, 0},
                       {48, 1, 1}, {65, 3, 1},   {100, 1, 2},  {200, 1, 4}, {1e30F, 1, 4}};

    for (auto const & c : cases) {
        Page page;
        EXPECT_EQ(page.graph.drawWindBarb(100, 100, 0, c.speed, 40), 1) << c.speed;
        std::string const drawn = page.drawn();
        EXPECT_EQ(paths(drawn).size(), c.lines + c.fills) << c.speed;
        EXPECT_EQ(std::size_t(std::count(drawn.begin(), drawn.end(), 'F')), c.fills) << c.speed;
    }
    Page page; // feathers towards the lower pressure: east of a north wind, west of it in the south
    page.graph.drawWindBarb(100, 100, 0, 20, 40);
    page.graph.drawWindBarb(300, 100, 0, 20, 40, true);
    EXPECT_EQ(page.graph.drawWindBarb(0, 0, 0, -1, 40), 0);
    EXPECT_EQ(page.graph.drawWindBarb(0, 0, NAN, 10, 40), 0);
    EXPECT_EQ(page.graph.drawWindBarb(0, 0, 0, NAN, 40), 0);
    auto const lines = paths(page.drawn());
    EXPECT_GT(lines.at(1).at(1).x, 100);
    EXPECT_LT(lines.at(4).at(1).x, 300);
}

TEST(Graph, WidensTheStrokesOfAFontThatAsksForIt)
{
    Page page;
    page.graph.setTextHeight(84); // a font unit is a point
    EXPECT_EQ(page.graph.setFont("bold"), 1);
    page.graph.drawText(100, 100, "I");
    page.graph.setTextWeight(40); // wider already
    page.graph.drawText(100, 100, "I");
    page.graph.setTextWeight(1);
    page.graph.setFont("modern");
    page.graph.drawText(100, 100, "I");
    std::string const drawn = page.drawn();
    auto const widths = [&](char const * width) {
        std::size_t count = 0;
        for (std::size_t at = drawn.find(width); at != std::string::npos; at = drawn.find(width, at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(widths("\n18.2 dot lw\n"), 2U); // 6 points: outline and middle
    EXPECT_EQ(widths("\n40.0 dot lw\n"), 2U);
    EXPECT_EQ(widths("\n1.0 dot lw\n"), 1U);
}

} // namespace
} // namespace Yul
