#include "graphics/Postscript.h"

#include "core/Format.h"
#include "cpp/graphics/Page.h"
#include "graphics/Image.h"
#include "graphics/PsNumber.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <regex>

namespace Yul {
namespace {

using test::Page;
using test::PageFile;

std::string const PROLOG = "/inch {72 mul} def\n/dot {.33 mul} def\n/mv {moveto} def\n/ln {lineto} def\n"
                           "/lw {setlinewidth} def\n/np {newpath} def\n/cp {closepath} def\n";
std::string const STATE = "2 setlinejoin\n1 dot lw\n[] 0 setdash\n";
std::string const TRAILER = "%%End of plot\nsaveobj restore\nshowpage\nend\n%%EOF\n";
std::string const EPS_TRAILER =
    "1 dict begin save (saveobj) cvn exch def\n%%End of plot\nsaveobj restore\nshowpage\nend\n%%EOF\n";

std::string withoutDate(std::string const & page)
{
    return std::regex_replace(page, std::regex("CreationDate: \\d\\d [A-Z]{3} \\d\\d  \\d\\d:\\d\\d:\\d\\dZ"),
                              "CreationDate: NOW");
}

/// A whole page: its parameters, how it starts, what stands between title and prolog, and all after it.
struct WholePage
{
    char const * params;
    char const * magic;
    char const * begin;
    char const * placement;
    char const * scale;
    std::string const & trailer;
};

WholePage const WHOLE_PAGES[] = {
    {"", "%!PS-Adobe-1.0\n", "30 dict begin\n/saveobj save def\n",
     "90 rotate\n.25 inch -8.25 inch translate\n0 setgray\n", "1.00 1.00 scale\n", TRAILER},
    {",PORTRAIT,color,scale=0.8,unknown", "%!PS-Adobe-1.0\n", "30 dict begin\n/saveobj save def\n",
     ".25 inch .25 inch translate\n0 0 0 setrgbcolor\n", "0.80 0.80 scale\n", TRAILER},
    {",eps", "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 576 756\n", "",
     "90 rotate\n0. inch -8.5 inch translate\n0 setgray\n", "1.00 1.00 scale\n", EPS_TRAILER},
    {",noeps,eps,port,a4,scale=,scale=-1,scale=x", "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 756 576\n",
     "", "0 setgray\n", "1.00 1.00 scale\n", EPS_TRAILER},
};

TEST(Postscript, WritesHeaderPrologAndTrailer)
{
    for (auto const & c : WHOLE_PAGES) {
        PageFile file;
        Graph graph("postscript", (file.path + c.params).c_str());
        graph.setTitle("Sky\nshowpage");
        testing::internal::CaptureStdout();
        ASSERT_EQ(graph.open(), 1);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Creating: " + file.path + "\n");
        EXPECT_EQ(graph.close(), 1);
        EXPECT_EQ(withoutDate(file.text()),
                  c.magic +
                      std::string("%%Title: Yul Graphics Display: Sky showpage\n"
                                  "%%Creator: Yul Postscript Processor-5.5\n%%CreationDate: NOW\n"
                                  "%%EndComments\n%%Postscript initialization\n") +
                      c.begin + PROLOG + c.placement + STATE + c.scale +
                      "%%Begin plot\n%%Yul Plot: Sky showpage\n" + c.trailer)
            << c.params;
    }
}

TEST(Postscript, AppendedPlotLeavesThePageOpen)
{
    PageFile file;
    for (int i = 0; i < 2; ++i) {
        Graph graph;
        testing::internal::CaptureStdout();
        graph.open("postscript", ("+" + file.path).c_str());
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Appending to: " + file.path + "\n");
    } // the destructor closes
    std::string const text = file.text();
    EXPECT_TRUE(text.ends_with("%%End of plot\n"));
    EXPECT_EQ(text.find("showpage"), std::string::npos);
    EXPECT_NE(text.find("%!PS", 1), std::string::npos);
}

TEST(Postscript, PipesIntoACommandThatIsDoneAtClose)
{
    PageFile file;
    Graph graph;
    testing::internal::CaptureStdout();
    ASSERT_EQ(graph.open("postscript", ("|cat > " + file.path).c_str()), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Spooling to: |cat > " + file.path + "\n");
    EXPECT_EQ(graph.close(), 1);
    EXPECT_TRUE(file.text().ends_with("%%EOF\n"));
}

struct SizeCase
{
    char const * item;
    float width;
    float height;
};

constexpr SizeCase SIZE_CASES[] = {
    {"", 756, 576},           {"letter", 756, 576},    {"legal", 972, 576},   {"11x17", 1188, 756},
    {"A4", 806.4F, 561.6F},   {"a3", 1108.8F, 806.4F}, {"ansid", 2412, 1548}, {"sz=8:6", 576, 432},
    {"sz:8.5:2.5", 612, 180}, {"sz=8", 756, 576},      {"sz=0:6", 756, 576},  {"sz=-8:-6", 756, 576},
    {"sz=nan:inf", 756, 576}, {"sz=3e38:1", 756, 576}, {"sz", 756, 576},
};

TEST(Postscript, TakesThePageSizeFromItsParameters)
{
    for (auto const & c : SIZE_CASES) {
        Postscript device;
        device.setParam((std::string("x.ps,port,") + c.item).c_str());
        Rect const page = device.getCoords();
        EXPECT_FLOAT_EQ(page.x2, c.width) << c.item;
        EXPECT_FLOAT_EQ(page.y1, c.height) << c.item;
        EXPECT_EQ(page.x1, 0);
        EXPECT_EQ(page.y2, 0); // y1 > y2: the page's top comes first
        device.setSize(10, 10);
        EXPECT_FLOAT_EQ(device.getWidth(), c.width) << c.item;
    }
}

/// One figure on a fresh page, and the whole text that it leaves there.
struct FigureCase
{
    char const * params;
    void (*draw)(Graph & graph);
    char const * text;
};

FigureCase const FIGURE_CASES[] = {
    {"port", [](Graph & g) { g.drawLine(0, 0, 100.125F, 50.5F); },
     "%%PL:2\n0.00 setgray\n1.0 dot lw\n[] 0 setdash\nnp\n0.00 0.00 mv\n100.12 50.50 ln\nstroke\n"},
    {"port,color,lwidth=2",
     [](Graph & g) {
         g.setLineColor(0xff8000);
         g.setLineWidth(1.5F);
         g.setLineStyle(4);
         g.drawLine(1, 2, 3, 4);
     },
     "%%PL:2\n1.00 0.50 0.00 setrgbcolor\n3.0 dot lw\n[6 6 3 6] 0 setdash\nnp\n1.00 2.00 mv\n3.00 4.00 "
     "ln\nstroke\n"},
    {"port",
     [](Graph & g) {
         g.setLineColor(0xff0000);
         g.setLineStyle(6);
         g.setLineWidth(0);
         g.drawLine(0, 0, 40000, -1e30F);
     },
     "%%PL:2\n0.33 setgray\n1.0 dot lw\nnp\n0.00 0.00 mv\n30000.00 -30000.00 ln\nstroke\n"},
    {"port",
     [](Graph & g) {
         g.setFillColor(0x0000ff);
         g.drawFill(Rect(10, 20, 30, 40));
     },
     "%%FA:4\n0.30 setgray\nnp\n10.00 20.00 mv\n30.00 20.00 ln\n30.00 40.00 ln\n10.00 40.00 ln\ncp\nfill\n"},
    {"port",
     [](Graph & g) {
         g.setLineWidth(5);
         g.setMarkWeight(2);
         g.setMarkType(5);
         g.drawMarkLine(100, 100, 10);
     },
     "%%PL:2\n0.00 setgray\n[] 0 setdash\n2.0 dot lw\nnp\n95.00 95.00 mv\n105.00 105.00 ln\nstroke\n"
     "%%PL:2\n0.00 setgray\n[] 0 setdash\n2.0 dot lw\nnp\n105.00 95.00 mv\n95.00 105.00 ln\nstroke\n"},
    {"port", [](Graph & g) { g.setClip(Rect(10, 20, 30, 40)); },
     "initclip\nnp\n10.00 20.00 mv\n30.00 20.00 ln\n30.00 40.00 ln\n10.00 40.00 ln\ncp\nclip\n"},
    {"port,color",
     [](Graph & g) {
         Image image(2, 2);
         image.setPixel(0, 0, 0xff8000);
         image.setPixel(1, 1, 0x0000ff);
         g.setImageAlign(2, 3);
         g.drawImage(image, 100, 50);
     },
     "gsave\n99 48 translate\n2 2 scale\n/picstr 2 string def\n2 2 8 [ 2 0 0 -2 0 2 ]\n"
     "{ currentfile picstr readhexstring pop }\nfalse 3 colorimage\nFF8000FFFFFF\nFFFFFF0000FF\ngrestore\n"},
    {"port",
     [](Graph & g) {
         Image image(1, 1);
         g.drawImage(image, 7, 8);
         g.drawImage(Image(), 7, 8);
     },
     "gsave\n7 8 translate\n1 1 scale\n/picstr 1 string def\n1 1 8 [ 1 0 0 -1 0 1 ]\n"
     "{ currentfile picstr readhexstring pop }\nimage\nFF\ngrestore\n"},
};

TEST(Postscript, WritesEachFigureAtOnce)
{
    for (auto const & c : FIGURE_CASES) {
        Page page(c.params);
        ASSERT_TRUE(page.is_open);
        c.draw(page.graph);
        EXPECT_EQ(page.drawn(), c.text);
    }
}

TEST(Postscript, LeavesOutFiguresThatAreNoNumbers)
{
    constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
    constexpr float FAR = std::numeric_limits<float>::infinity();
    Page page;
    Points points;
    for (float x : {1.0F, NONE, 3.0F})
        points.add(Point(x, x));
    EXPECT_EQ(page.graph.drawLine(points), 0);
    EXPECT_EQ(page.graph.drawFill(points), 0);
    EXPECT_EQ(page.graph.drawLine(0, NONE, 1, 1), 0);
    EXPECT_EQ(page.graph.drawText(NONE, 5, "x"), 0);
    EXPECT_EQ(page.graph.drawMark(NONE, 0), 0);
    EXPECT_EQ(page.graph.setClip(Rect(NONE, 0, 1, 1)), 0);
    EXPECT_EQ(page.graph.drawImage(Image(1, 1), NONE, 0), 0);
    EXPECT_EQ(page.graph.setWindow(Rect(0, 0, FAR, 1)), 0);
    EXPECT_EQ(page.graph.setLineWidth(NONE), 0);
    EXPECT_EQ(page.graph.drawLine(0, 0, FAR, -FAR), 1); // held to the limit
    Postscript device;                                  // by itself it refuses infinities too
    device.setParam(page.file.path.c_str());
    EXPECT_EQ(device.drawLine(LINE_PEN, 0, 0, FAR, 0), 0);
    std::string const drawn = page.drawn();
    EXPECT_EQ(drawn.find("nan"), std::string::npos);
    EXPECT_EQ(test::paths(drawn).size(), 1U);
}

TEST(Postscript, ReportsAPageThatCouldNotBeWritten)
{
    for (char const * target : {"/dev/full", "|exit 3", "|true"}) {
        Graph graph;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Yul::setDatabasePath(YUL_DATABASE);
        ASSERT_EQ(graph.open("postscript", target), 1);
        for (int i = 0; i < 20000; ++i)
            graph.drawLine(0, 0, 1, 1);
        EXPECT_EQ(graph.close(), 0) << target;
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  std::string("Postscript::close: unable to write all of the plot to: ") + target + "\n");
    }
}

TEST(Postscript, SaysWhenItCannotOpen)
{
    Graph graph("postscript", "/nowhere/at/all.ps");
    testing::internal::CaptureStderr();
    EXPECT_EQ(graph.open(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Postscript: unable to output to file\n");
    EXPECT_FALSE(graph.isOpen());
    EXPECT_EQ(graph.drawLine(0, 0, 1, 1), 0);
}

TEST(Postscript, KeepsSixtyCharactersOfTheFileName)
{
    Postscript device;
    std::string const name = "/nowhere/" + std::string(80, 'x');
    device.setParam(name.c_str());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    device.open();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Creating: " + name.substr(0, 60) + "\n");
}

TEST(PsNumber, PrintsWhatPrintfPrints)
{
    std::mt19937 random(5);
    std::uniform_int_distribution<std::uint32_t> bits;
    std::uniform_real_distribution<float> points(-30000, 30000);
    auto const check = [](float value) {
        char ours[detail::NUMBER_ROOM];
        char theirs[64];
        std::string const text(ours, detail::writeFixed2(ours, value));
        std::snprintf(theirs, sizeof theirs, "%3.2f", static_cast<double>(value));
        ASSERT_EQ(text, theirs);
    };
    for (float value : {0.0F, -0.0F, 0.005F, 0.125F, -0.125F, 0.375F, 99.995F, 9999.995F, -0.001F, 30000.0F,
                        1e7F, 9999999.0F, 1e9F, 3.4e38F, 1e-40F})
        check(value);
    for (int i = 0; i < 100000; ++i) {
        check(points(random));
        check(std::round(points(random) * 8) / 8); // exact ties
        auto const any = std::bit_cast<float>(bits(random));
        if (std::isfinite(any))
            check(any);
    }
}

} // namespace
} // namespace Yul
