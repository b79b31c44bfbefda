// Drawing the bands and contour lines of a grid, and then their texts.
#include "core/Yul.h"
#include "grid/Grid.h"
#include "plot/BandPainter.h"
#include "plot/Clip.h"
#include "plot/ContStyle.h"
#include "plot/ContTexts.h"
#include "plot/GridPlaces.h"
#include "plot/PageScale.h"
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace Yul {
namespace {

using detail::CellLine;
using detail::DrawnLine;
using detail::FieldView;

constexpr float FINENESS = 1.5e-4F; // of the page's longer side: corners of bands that need not be told apart

} // namespace

/// One drawing of one grid.
class ContPlot::Drawer
{
public:
    Drawer(ContPlot & contours, Plot & on_plot, Style const & of_levels, float const * of_values)
        : cont(contours), plot(on_plot), graph(on_plot.getGraph()), style(of_levels), values(of_values),
          frame(on_plot.getFrame())
    {
        // A hair larger: a line on the frame is not cut by rounding.
        float const slack = 1e-5F * std::max(frame.getWidth(), frame.getHeight());
        frame = Rect(frame.x1 - slack, frame.y1 - slack, frame.x2 + slack, frame.y2 + slack);
    }

    int draw(Domain const & domain)
    {
        if (detail::isSamePlane(domain, plot.getDomain())) {
            auto const sets = detail::columnRowCoordinates(domain, plot.getDomain(), frame);
            if (sets.empty())
                return warnOutside();
            for (bool const is_bands : {true, false})
                for (auto const & set : sets)
                    drawSet(set, is_bands);
            return 1;
        }
        detail::PointPlaces places;
        if (!places.locate(domain, plot.getDomain(), frame))
            return warnOutside();
        FieldView const view{values, domain.getNx(),    domain.getNy(), 0, domain.getNx() - 1,
                             0,      domain.getNy() - 1};
        auto const find = [&](int column, int row, float & x, float & y) {
            return places.find(column, row, x, y);
        };
        paintBands(view, places, find);
        drawView(view, places, find, places.getNumVisible());
        return places.isOnMap() ? 1 : warnOutside();
    }

private:
    static int warnOutside()
    {
        Yul::outWarning("ContPlot::draw: The grid has no place on the plot\n");
        return 0;
    }

    void usePen(int level)
    {
        Style::Pen const & pen = style.pen(level);
        if (level == pen_level)
            return;
        pen_level = level;
        graph.setLineStyle(pen.style);
        graph.setLineWidth(pen.width);
        graph.setLineColor(pen.color);
    }

    /// Hands on the part of a line that lies inside the frame.
    template <class Draw> void clipped(CellLine const & l, Draw && draw) const
    {
        if (detail::isInside(frame, l.x1, l.y1) && detail::isInside(frame, l.x2, l.y2))
            return draw(l);
        detail::Kept kept;
        if (!detail::clipLine(frame, l.x1, l.y1, l.x2, l.y2, kept))
            return;
        auto const from = static_cast<float>(kept.from);
        auto const to = static_cast<float>(kept.to);
        draw(CellLine{detail::alongSide(l.x1, l.x2, from), detail::alongSide(l.y1, l.y2, from),
                      detail::alongSide(l.x1, l.x2, to), detail::alongSide(l.y1, l.y2, to),
                      kept.from > 0 ? -1 : l.side1, kept.to < 1 ? -1 : l.side2});
    }

    void drawSet(detail::ColumnRowCoordinates const & set, bool is_bands)
    {
        FieldView const view = set.view(values, frame);
        detail::ColumnRowPlaces const places(set.x, set.y);
        auto const find = [&](int column, int row, float & x, float & y) {
            x = set.x[static_cast<std::size_t>(column)];
            y = set.y[static_cast<std::size_t>(row)];
            return true;
        };
        if (is_bands)
            return paintBands(view, places, find);
        double const cells = static_cast<double>(view.end_column - view.first_column) *
                             static_cast<double>(view.end_row - view.first_row);
        drawView(view, places, find, cells);
    }

    template <class Places, class Find>
    void paintBands(FieldView const & view, Places const & places, Find const & find)
    {
        if (!cont.is_filled)
            return;
        detail::PageScale const page(graph);
        graph.setTran(Plot::MAP_TRAN);
        detail::BandPainter(graph, style.bands(), frame,
                            {FINENESS / std::abs(page.x_factor), FINENESS / std::abs(page.y_factor)})
            .paint(view, places, find);
    }

    template <class Places, class Find>
    void drawView(FieldView const & view, Places const & places, Find const & find, double visible_points)
    {
        float const tweak = (cont.range.max - cont.range.min) / 10000;
        std::span<float const> const levels = cont.scale.levels;
        graph.setTran(Plot::MAP_TRAN);
        if (!style.hasLines() && !cont.has_extrema)
            return;
        auto const sweep = [&](auto const & draw) {
            detail::sweepCells(view, levels, tweak, places,
                               [&](int column, int row, int k, CellLine const & line) {
                                   if (style.pen(k).color >= 0)
                                       clipped(line, [&](CellLine const & l) { draw(column, row, k, l); });
                               });
        };
        if (!cont.has_labels && !cont.has_extrema) {
            sweep([&](int, int, int k, CellLine const & l) {
                usePen(k);
                graph.drawLine(l.x1, l.y1, l.x2, l.y2);
            });
            return;
        }

        detail::PageScale const page(graph);
        std::vector<CellLine> plane_lines;
        std::vector<DrawnLine> lines;
        if (style.hasLines())
            sweep([&](int column, int row, int k, CellLine const & l) {
                plane_lines.push_back(l);
                lines.push_back({page.x(l.x1), page.y(l.y1), page.x(l.x2), page.y(l.y2), column, row,
                                 static_cast<std::int16_t>(k), static_cast<std::int8_t>(l.side1),
                                 static_cast<std::int8_t>(l.side2)});
            });
        Texts placer(cont, plot, style);
        if (cont.has_extrema)
            placer.placeExtrema(view, find, frame, visible_points);
        if (cont.has_labels)
            placer.placeLabels(lines);
        drawBroken(plane_lines, lines, placer.getBoxes());
    }

    /// The lines with gaps where texts stand.
    void drawBroken(std::vector<CellLine> const & plane_lines,
                    std::vector<DrawnLine> const & lines,
                    detail::LabelBoxes const & boxes)
    {
        graph.setTran(Plot::MAP_TRAN);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            CellLine const & l = plane_lines[i];
            DrawnLine const & p = lines[i];
            usePen(p.level);
            boxes.drawAround(p.x1, p.y1, p.x2, p.y2, [&](float from, float to) {
                bool const is_whole = from == 0 && to == 1;
                if (is_whole)
                    graph.drawLine(l.x1, l.y1, l.x2, l.y2);
                else
                    graph.drawLine(detail::alongSide(l.x1, l.x2, from), detail::alongSide(l.y1, l.y2, from),
                                   detail::alongSide(l.x1, l.x2, to), detail::alongSide(l.y1, l.y2, to));
            });
        }
    }

    ContPlot & cont;
    Plot & plot;
    Graph & graph;
    Style const & style;
    float const * values; // as many as the domain has points
    Rect frame;
    int pen_level = -1;
};

namespace {

/// What the labels of the plot can say about a grid.
void tellFacts(Grid const & grid, Range const & range, float interval, Plot & plot)
{
    detail::LabelFacts & facts = plot.getFacts();
    facts.var_name = grid.getVar().getName();
    facts.var_long_name = grid.getVar().getLongName();
    if (facts.var_long_name.empty())
        facts.var_long_name = grid.getInfo();
    String level;
    grid.getLevel().toLabel(level);
    facts.level = level.get();
    facts.units = grid.getUnits();
    if (facts.units == "1") // pure numbers need none
        facts.units.clear();
    facts.model = grid.getGenName();
    facts.date = grid.getDate();
    facts.fore = grid.getForeTime();
    if (grid.getValidDate(facts.valid) == 0)
        facts.valid = facts.date;
    facts.interval = interval;
    facts.min = range.min;
    facts.max = range.max;

    bool const is_pressure = grid.getLevelType() == Level::PRES; // by habit it comes first
    plot.proposeLabel(detail::UPPER_LEFT, is_pressure ? "{%l }%v{ (%u)}" : "%v{ (%u)}{, %l}");
    plot.proposeLabel(detail::UPPER_RIGHT, "%f");
    plot.proposeLabel(detail::LOWER_LEFT, detail::isMissing(interval) ? "" : "Contour interval %c{ %u}");
    plot.proposeLabel(detail::LOWER_RIGHT, "%m");
}

/// The grid's domain, or columns and rows for a grid without one.
bool findDomain(Grid const & grid, Domain & domain)
{
    domain = grid.getDomain();
    if (domain.isMiss())
        domain.set(grid.getNx(), grid.getNy());
    return domain.getNx() == grid.getNx() && domain.getNy() == grid.getNy() &&
           !detail::isMissing(domain.getLimits().x1);
}

/// True for a grid that goes round the earth and ends one column before it began.
bool isClosed(Domain const & domain)
{
    DomainVal const & val = domain.get();
    constexpr double SLACK = 1e-3; // of a column
    double const gap = 360 / static_cast<double>(val.dx) - val.nx;
    return val.proj == Domain::LATLON && val.nx > 1 && std::abs(gap) < SLACK;
}

/// The values with the first column once more behind the last one; the domain grows with them.
std::vector<float> closedValues(Grid const & grid, Domain & domain)
{
    DomainVal val = domain.get();
    val.nx += 1;
    val.clon += val.dx / 2;
    domain.set(val);
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(val.nx) * static_cast<std::size_t>(val.ny));
    auto const width = static_cast<std::ptrdiff_t>(grid.getNx());
    for (auto row = grid.getValues().begin(); row != grid.getValues().end(); row += width) {
        values.insert(values.end(), row, row + width);
        values.push_back(*row);
    }
    return values;
}

void drawPlacedTexts(Plot & plot, std::vector<detail::PlacedText> const & texts)
{
    constexpr float HALO = 6; // dots
    if (texts.empty())
        return;
    Graph & graph = plot.getGraph();
    graph.setTran(Plot::PAGE_TRAN);
    graph.setTextAlign(2, 1);
    int const white = plot.findColor("white", "white");
    for (detail::PlacedText const & text : texts) {
        graph.setTextDirection(text.up_x, text.up_y);
        graph.setTextHeight(text.height);
        for (bool const is_edge : {true, false}) {
            if (is_edge && !text.is_clear)
                continue;
            graph.setTextColor(is_edge ? white : text.color);
            graph.setTextWeight(is_edge ? text.weight + HALO : text.weight);
            graph.drawText(text.x, text.y, text.text.c_str());
        }
    }
    graph.setTextDirection(0, 1);
    graph.setTran(Plot::MAP_TRAN);
}

} // namespace

int ContPlot::draw(Plot & plot, Grid const & grid)
{
    int const result = drawLines(plot, grid);
    drawPlacedTexts(plot, std::exchange(texts, {}));
    return result;
}

int ContPlot::drawLines(Plot & plot, Grid const & grid)
{
    texts.clear();
    if (!plot.isOpen()) {
        Yul::outWarning("ContPlot::draw: The plot is not open\n");
        return 0;
    }
    Domain domain;
    if (!grid.isData() || !findDomain(grid, domain) || plot.useDomain(domain) == 0) {
        Yul::outWarning("ContPlot::draw: The grid has no values or no domain\n");
        return 0;
    }
    calcLevels(grid);
    tellFacts(grid, range, scale.interval, plot);
    if (!plot.isDrawn(detail::DRAW_PLOT) && !plot.isDrawn(detail::DRAW_DATA))
        return 1;
    // A map other than the grid's own may show the seam, and the field has none there.
    bool const is_closing = isClosed(domain) && !plot.getDomain().get().compare(domain.get());
    std::vector<float> const closed = is_closing ? closedValues(grid, domain) : std::vector<float>();
    Style const style(*this, plot);
    if (detail::ColorBar bar = style.colorBar(plot.getFacts().units); !bar.isEmpty())
        plot.setColorBar(std::move(bar));
    return Drawer(*this, plot, style, is_closing ? closed.data() : grid.data()).draw(domain);
}

int ContPlot::drawTexts(Plot & plot)
{
    if (!plot.isOpen()) {
        Yul::outWarning("ContPlot::drawTexts: The plot is not open\n");
        return 0;
    }
    for (detail::PlacedText & text : texts)
        text.is_clear = text.is_clear || !is_filled;
    drawPlacedTexts(plot, std::exchange(texts, {}));
    return 1;
}

} // namespace Yul
