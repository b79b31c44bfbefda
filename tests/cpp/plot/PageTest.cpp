// Whole pages: what stands on them is read back and compared with the field.
#include "core/Resrc.h"
#include "core/Scan.h"
#include "core/Yul.h"
#include "cpp/Folder.h"
#include "geo/Domain.h"
#include "grid/Grid.h"
#include "plot/ContPlot.h"
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul {
namespace {

/// Settings of one test, gone after it.
class Page : public testing::Test
{
protected:
    void SetUp() override
    {
        Yul::setDatabasePath(YUL_DATABASE);
        Yul::resrc().clear();
        Yul::setResrc("device", "postscript");
    }

    void TearDown() override { Yul::resrc().clear(); }

    [[nodiscard]] std::string text() const { return test::octetsOf(name); }

    [[nodiscard]] bool exists() const { return std::filesystem::exists(name); }

    test::Folder folder;
    std::string const name = folder.of("page.ps");
};

struct PageLine
{
    float x1, y1, x2, y2;
};

/// The two-point lines of a page, device units.
std::vector<PageLine> readLines(std::string const & page)
{
    std::vector<PageLine> lines;
    std::istringstream in(page);
    std::string row;
    while (std::getline(in, row)) {
        if (row != "%%PL:2")
            continue;
        PageLine line{};
        while (std::getline(in, row) && row != "stroke") {
            float x = 0;
            float y = 0;
            std::string verb;
            if (detail::scan(row, "%f %f %s", &x, &y, &verb) != 3)
                continue;
            if (verb == "mv") {
                line.x1 = x;
                line.y1 = y;
            } else if (verb == "ln") {
                line.x2 = x;
                line.y2 = y;
            }
        }
        lines.push_back(line);
    }
    return lines;
}

/// A wavy field of the earth, 0 to about 100.
Grid wavyGrid(char const * domain_text)
{
    Domain const domain(domain_text);
    Grid grid(domain.getNx(), domain.getNy());
    grid.setDomain(domain);
    for (int row = 0; row < grid.getNy(); ++row) {
        for (int column = 0; column < grid.getNx(); ++column) {
            EarthPoint earth;
            grid.tran(row * grid.getNx() + column, earth);
            double const lat = static_cast<double>(earth.lat) * Const::DRC;
            double const lon = static_cast<double>(earth.lon) * Const::DRC;
            grid.setValue(
                column, row,
                static_cast<float>(50 + 30 * std::sin(lat) + 20 * std::cos(lat) * std::cos(3 * lon)));
        }
    }
    return grid;
}

struct MapCase
{
    char const * name;
    char const * grid;
    char const * plot; // empty: the grid's own domain
    std::size_t least_lines;
};

constexpr MapCase MAP_CASES[] = {
    {"own latlon plane", "ll,45,0,61,41,1,1", "", 300},
    {"own Lambert plane", "lambert:40:-100:30:60,40,-100,61,41,1.5,1.5", "", 300},
    {"own stereographic plane", "pstereo:90:-90,60,-90,61,51,2,2", "", 300},
    {"part of the own plane", "ll,45,0,121,81,1,1", "ll,45,0,21,21,1.03,1.03", 40},
    {"turned round: Pacific grid on an Atlantic map", "ll,0,180,360,121,1,1", "ll,0,0,181,81,1,1", 1000},
    {"latlon on Lambert, over the dateline", "ll,45,180,91,51,1,1", "lambert:45:180:30:60,45,180,61,41,1,1",
     300},
    {"whole earth on a polar map", "ll,0,0,181,91,2,2", "pstereo:90:0,90,0,61,61,4,4", 300},
    {"whole earth on a cone", "ll,0,0,181,91,2,2", "lambert:45:0:30:60,60,0,81,81,4,4", 300},
    {"polar grid on a world map", "pstereo:90:-90,90,-90,101,101,2,2", "ll,30,0,361,91,1,1", 300},
    {"whole earth on a hemisphere", "ll,0,0,181,91,2,2", "ortho:40:-40,40,-40,61,61,1.27,1.27", 200},
    {"Mercator", "merc:0:-20,20,-20,61,41,2,2", "ll,20,-20,91,61,1,1", 300},
};

TEST_F(Page, ContoursLieWhereTheFieldHasTheLevel)
{
    constexpr float INTERVAL = 5;
    for (auto const & row : MAP_CASES) {
        SCOPED_TRACE(row.name);
        Grid const grid = wavyGrid(row.grid);
        Plot plot;
        ASSERT_EQ(plot.open(name.c_str()), 1);
        if (*row.plot != '\0') {
            ASSERT_EQ(plot.setDomain(Domain(row.plot)), 1);
        }
        ContPlot contours;
        contours.setInterval(INTERVAL);
        ASSERT_EQ(contours.draw(plot, grid), 1);
        GTran const tran = plot.getGraph().getTransform(Plot::MAP_TRAN);
        Domain const domain = plot.getDomain();
        ASSERT_EQ(plot.close(), 1);

        std::vector<PageLine> const lines = readLines(text());
        EXPECT_GT(lines.size(), row.least_lines);
        float worst = 0;
        float longest = 0;
        std::size_t outside = 0;
        for (PageLine const & line : lines) {
            longest = std::max(longest, std::hypot(line.x2 - line.x1, line.y2 - line.y1));
            for (auto const & [x, y] : {std::pair{line.x1, line.y1}, {line.x2, line.y2}}) {
                EarthPoint earth;
                domain.tran(Point(tran.tranPlotWindowX(x), tran.tranPlotWindowY(y)), earth);
                float const value = grid.getValue(earth);
                if (detail::isMissing(value))
                    ++outside; // on the grid's edge, by rounding
                else
                    worst = std::max(worst, std::abs(value - std::round(value / INTERVAL) * INTERVAL));
            }
        }
        EXPECT_LT(worst, INTERVAL / 100);
        EXPECT_LT(outside, lines.size() / 20);
        EXPECT_LT(longest, 60); // no line runs over the page from seam to seam
    }
}

TEST_F(Page, StaysInsideTheFrame)
{
    Grid const grid = wavyGrid("ll,45,0,121,81,1,1");
    Plot plot;
    ASSERT_EQ(plot.open(name.c_str()), 1);
    ASSERT_EQ(plot.setDomain(Domain("lambert:45:0:30:60,45,5,41,31,1,1")), 1);
    ContPlot contours;
    ASSERT_EQ(contours.draw(plot, grid), 1);
    Rect const frame = plot.getGraph().getTransform(Plot::MAP_TRAN).getClipRect();
    plot.close();
    for (PageLine const & line : readLines(text()))
        for (auto const & [x, y] : {std::pair{line.x1, line.y1}, {line.x2, line.y2}})
            EXPECT_TRUE(x > frame.x1 - .1F && x < frame.x2 + .1F && y > frame.y1 - .1F && y < frame.y2 + .1F)
                << x << ' ' << y;
}

TEST_F(Page, LabelsBreakTheLinesAndNothingElse)
{
    Grid const grid = wavyGrid("ll,45,0,121,81,1,1");
    std::vector<double> lengths;
    for (char const * params : {"int=5", "int=5,lab,hilo"}) {
        Plot plot;
        ASSERT_EQ(plot.open(name.c_str()), 1);
        ContPlot contours;
        contours.setParam(params);
        ASSERT_EQ(contours.draw(plot, grid), 1);
        plot.close();
        double length = 0;
        std::string page = text();
        for (PageLine const & line : readLines(page))
            length += static_cast<double>(std::hypot(line.x2 - line.x1, line.y2 - line.y1));
        lengths.push_back(length);
    }
    EXPECT_LT(lengths[1], lengths[0]);
    EXPECT_GT(lengths[1], 0.7 * lengths[0]);
}

TEST_F(Page, PensFollowTheLevel)
{
    Grid const grid = wavyGrid("ll,45,0,121,81,1,1");

    struct
    {
        char const * params;
        char const * wanted;
        char const * unwanted;
    } const cases[] = {
        {"int=5", "\n[] 0 setdash", "\n[6] 0 setdash"},
        {"int=5,dash=1", "\n[6] 0 setdash", "\n[] 0 setdash"},
        {"int=5,dash=-1,base=50", "\n[6] 0 setdash", "\n[2] 0 setdash"},
        {"int=5,line=red:st=dot", "\n[2] 0 setdash", "\n[] 0 setdash"},
        {"int=5,line=red", "\n1.00 0.00 0.00 setrgbcolor", "\n0.00 0.00 0.00 setrgbcolor"},
        {"int=5,col=red:blue", "\n0.00 0.00 1.00 setrgbcolor", "\n0.00 0.00 0.00 setrgbcolor"},
        {"int=5,line=#FF0000", "\n1.00 0.00 0.00 setrgbcolor", "\n0.00 0.00 0.00 setrgbcolor"},
        {"int=5,line=nosuch", "\n0.00 0.00 0.00 setrgbcolor", "\n1.00 0.00 0.00 setrgbcolor"},
        {"int=5", "\n1.0 dot lw", "\n2.0 dot lw"},
        {"int=5,every=2,line=wi=2", "\n4.4 dot lw", "\n1.0 dot lw\n[]"},
    };

    for (auto const & [params, wanted, unwanted] : cases) {
        Plot plot;
        ASSERT_EQ(plot.open((name + ",color").c_str()), 1);
        ContPlot contours;
        contours.setParam(params);
        ASSERT_EQ(contours.draw(plot, grid), 1);
        plot.close();
        std::string const page = text();
        std::string const body = page.substr(page.find("%%Begin plot"));
        EXPECT_NE(body.find(wanted), std::string::npos) << params;
        EXPECT_EQ(body.find(unwanted), std::string::npos) << params;
    }
}

TEST_F(Page, OpeningFailsBeforeAnythingIsWritten)
{
    Plot plot;
    Yul::setResrc("plot_domain", "nowhere at all");
    EXPECT_EQ(plot.open(name.c_str()), 0);
    EXPECT_FALSE(exists());
    Yul::resrc().clear();
    EXPECT_EQ(plot.open(name.c_str()), 0); // no device: the window, which this build may not have
    EXPECT_FALSE(exists());
    Yul::setResrc("device", "postscript,no/such/folder/page.ps");
    EXPECT_EQ(plot.open(name.c_str()), 0); // the setting has parameters of its own
    EXPECT_FALSE(exists());
    EXPECT_EQ(plot.close(), 0);
    ContPlot contours;
    EXPECT_EQ(contours.draw(plot, wavyGrid("ll,45,0,11,11,1,1")), 0);
    EXPECT_EQ(plot.drawBorder() + plot.drawLabels() + plot.drawGraticule(), 0);
}

TEST_F(Page, DeviceItemTakesThePlaceOfTheSetting)
{
    Yul::setResrc("device", "hpgl,other.plt");
    Plot plot;
    EXPECT_EQ(plot.open((name + ",de=post").c_str()), 1);
    EXPECT_EQ(plot.close(), 1);
    EXPECT_TRUE(exists());
}

TEST_F(Page, GridsWithoutValuesOrPlaceAreRefused)
{
    Plot plot;
    ASSERT_EQ(plot.open(name.c_str()), 1);
    ContPlot contours;
    EXPECT_EQ(contours.draw(plot, Grid()), 0);
    Grid grid = wavyGrid("ll,45,0,11,11,1,1");
    grid.setDomain(Domain("ll,45,0,12,11,1,1"));
    EXPECT_EQ(contours.draw(plot, grid), 0);
    Grid missing(11, 11); // no values and no domain: its columns and rows, and nothing on them
    EXPECT_EQ(contours.draw(plot, missing), 1);
    EXPECT_EQ(contours.getNumLevels(), 0);
    EXPECT_TRUE(readLines(text()).empty());
}

TEST_F(Page, CornerLabelsSayWhatTheGridHolds)
{
    Grid grid = wavyGrid("ll,45,0,11,11,1,1");
    grid.setVar("TMP");
    grid.setLevel("850mb");
    grid.setDate(Date(2026, 11, 14, 12, 0, 0));
    grid.setForeTime("24");
    Plot plot;
    Yul::setResrc("name", "demo");
    ASSERT_EQ(plot.open(name.c_str()), 1);
    ContPlot contours;
    contours.setInterval(2.5F);
    ASSERT_EQ(contours.draw(plot, grid), 1);

    struct
    {
        char const * label;
        char const * text;
    } const cases[] = {
        {"%n at %l", "TMP at 850 hPa"},
        {"%f", "24 hour valid 1200Z SUN 15 NOV 26"},
        {"%t\\nfrom %i", "1200Z SUN 15 NOV 26\nfrom 1200Z 14 NOV 26"},
        {"%c %p{, %m}{, %n}", "2.5 demo, TMP"},
        {"100%% %q %", "100% q %"},
        {"", ""},
    };

    for (auto const & [label, expected] : cases) {
        String out;
        EXPECT_EQ(plot.formatLabel(label, out), 1);
        EXPECT_STREQ(out.get(), expected) << label;
    }
    char small[4] = "xxx";
    EXPECT_EQ(plot.formatLabel("%n at", small, 4), 1);
    EXPECT_STREQ(small, "TMP");
    EXPECT_EQ(plot.formatLabel("%n", small, 0), 0);
    EXPECT_EQ(plot.formatLabel(nullptr, nullptr, 5), 0);
}

TEST_F(Page, DrawingListDecidesWhatIsDrawn)
{
    Grid const grid = wavyGrid("ll,45,0,41,41,1,1");
    auto const lengthWith = [&](char const * list) {
        if (list != nullptr)
            Yul::setResrc("draw", list);
        Plot plot;
        EXPECT_EQ(plot.open(name.c_str()), 1);
        ContPlot contours;
        contours.draw(plot, grid);
        plot.drawGraticule();
        plot.drawBorder();
        plot.setLabel("ul", "Title");
        plot.setLabel("lc", "Foot");
        plot.drawLabels();
        plot.close();
        return text().size();
    };
    std::size_t const all = lengthWith(nullptr);
    EXPECT_EQ(lengthWith("all"), all);
    std::size_t const none = lengthWith("none");
    EXPECT_LT(none, 800U); // header and trailer
    std::size_t sum = 0;
    for (char const * part : {"data", "map", "bord", "text_ul", "text_ll", "text_lc"}) {
        std::size_t const one = lengthWith(part);
        EXPECT_GT(one, none) << part;
        sum += one - none;
    }
    EXPECT_NEAR(static_cast<double>(sum), static_cast<double>(all - none), 0.02 * static_cast<double>(all));
}

} // namespace
} // namespace Yul
