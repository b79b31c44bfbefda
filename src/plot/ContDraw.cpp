// Drawing the contour lines of a grid, with their labels and the field's highs and lows.
#include "core/Yul.h"
#include "grid/Grid.h"
#include "plot/BandPainter.h"
#include "plot/Clip.h"
#include "plot/ContPlot.h"
#include "plot/Extrema.h"
#include "plot/GridPlaces.h"
#include "plot/LevelText.h"
#include "plot/LineLabels.h"
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Yul {
namespace {

using detail::CellLine;
using detail::DrawnLine;
using detail::Extremum;
using detail::FieldView;
using detail::LabelBox;

/// In heights of the plot's labels.
constexpr float LABEL_HEIGHT = 0.72F;
constexpr float EXTREMUM_HEIGHT = 1.7F;
constexpr float VALUE_HEIGHT = 0.85F;

constexpr float LABEL_SPACING = 0.24F;     // of the page's longer side
constexpr float EXTREMUM_SPACING = 0.085F; // of the frame, in points of the grid
constexpr float LEAST_PROMINENCE = 0.5F;   // of the contour interval
constexpr float WIDE = 2.2F;               // how much wider every nth line is
constexpr float FINENESS = 1.5e-4F; // of the page's longer side: corners of bands that need not be told apart

/// From the plane of the map to page measure (NDC), and to nothing else.
struct PageScale
{
    float x_factor, x_offset, y_factor, y_offset;

    explicit PageScale(Graph const & graph)
    {
        auto const & tran = graph.getTransform(Plot::MAP_TRAN);
        Rect const & window = tran.getWindow();
        Rect const & view = tran.getViewport();
        x_factor = (view.x2 - view.x1) / (window.x2 - window.x1);
        y_factor = (view.y2 - view.y1) / (window.y2 - window.y1);
        x_offset = view.x1 - window.x1 * x_factor;
        y_offset = view.y1 - window.y1 * y_factor;
    }

    [[nodiscard]] float x(float plane_x) const { return plane_x * x_factor + x_offset; }

    [[nodiscard]] float y(float plane_y) const { return plane_y * y_factor + y_offset; }
};

struct Pen
{
    int color;
    float width;
    int style;

    bool operator==(Pen const & other) const = default;
};

} // namespace

/// One drawing of one grid.
class ContPlot::Drawer
{
public:
    Drawer(ContPlot & contours, Plot & on_plot, float const * of_values)
        : cont(contours), plot(on_plot), graph(on_plot.getGraph()), values(of_values),
          frame(on_plot.getFrame())
    {
        // A hair larger: a line on the frame is not cut by rounding.
        float const slack = 1e-5F * std::max(frame.getWidth(), frame.getHeight());
        frame = Rect(frame.x1 - slack, frame.y1 - slack, frame.x2 + slack, frame.y2 + slack);
        for (int i = 0; i < cont.getNumLevels(); ++i)
            pens.push_back(penOf(i));
        has_lines = std::any_of(pens.begin(), pens.end(), [](Pen const & pen) { return pen.color >= 0; });
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

    /// What the plot's colour bar shows of the scale; empty without one.
    [[nodiscard]] detail::ColorBar colorBar(std::string const & units) const
    {
        detail::ColorBar bar;
        for (auto const & [level, color] : bands()) {
            bar.levels.push_back(level);
            bar.colors.push_back(color);
        }
        if (std::all_of(bar.colors.begin(), bar.colors.end(), [](int color) { return color < 0; }))
            return {};
        bar.interval = cont.scale.interval;
        bar.is_open = detail::isMissing(bar.interval) || cont.range.max > bar.levels.back() + bar.interval;
        bar.units = units;
        return bar;
    }

    static int warnOutside()
    {
        Yul::outWarning("ContPlot::draw: The grid has no place on the plot\n");
        return 0;
    }

private:
    [[nodiscard]] Pen penOf(int i)
    {
        PlotAttr const & attr = cont.line;
        Pen pen{};
        bool const is_index = attr.color_name[0] == '\0' && !detail::isMissing(attr.color);
        std::optional<int> const own = cont.is_filled ? std::nullopt : colorOf(i);
        bool const is_off = attr.color_name[0] != '\0' && !attr.validColor();
        pen.color = own        ? *own
                    : is_off   ? -1
                    : is_index ? plot.getColorMap().getValue(attr.color)
                               : plot.findColor(attr.color_name, "black");
        pen.width = detail::isMissing(attr.width) ? 0.F : attr.width;
        if (isWide(i))
            pen.width = WIDE * std::max(pen.width, 1.F);
        pen.style = detail::isMissing(attr.style) ? dashStyle(cont.getLevel(i)) : attr.style;
        return pen;
    }

    /// The levels that the field reaches with their colours, ascending.
    [[nodiscard]] std::vector<detail::Band> bands() const
    {
        std::vector<detail::Band> all;
        for (int i = 0; i < cont.getNumLevels(); ++i)
            if (cont.getLevel(i) <= cont.range.max)
                all.push_back({cont.getLevel(i), colorOf(i).value_or(-1)});
        std::stable_sort(all.begin(), all.end(),
                         [](detail::Band const & a, detail::Band const & b) { return a.from < b.from; });
        return all;
    }

    /// The device's colour for a level in the scale of colours; none where there is no scale, -1 for "off".
    [[nodiscard]] std::optional<int> colorOf(int i) const
    {
        if (char const * const name = cont.fill.getColor(i))
            return PlotAttr(name).validColor() ? plot.findColor(name, "black") : -1;
        ColorMap const & table = plot.getColorMap();
        if ((!cont.is_filled && !cont.has_table_colors) || table.getNumFill() < 1)
            return std::nullopt;
        // Spread over the levels that the field reaches.
        auto const & levels = cont.scale.levels;
        auto const reached =
            std::count_if(levels.begin(), levels.end(), [&](float level) { return level < cont.range.max; });
        double const share = reached > 1 ? std::min(1., i / static_cast<double>(reached - 1)) : 0.5;
        return table.getValue(static_cast<int>(std::lround(share * (table.getNumFill() - 1))));
    }

    [[nodiscard]] int dashStyle(float level) const
    {
        constexpr int SOLID = 1;
        constexpr int DASHED = 2;
        if (cont.dash == 1)
            return DASHED;
        float const limit = detail::isMissing(cont.base) ? 0.F : cont.base;
        return cont.dash == -1 && level < limit ? DASHED : SOLID;
    }

    [[nodiscard]] bool isWide(int i) const
    {
        if (cont.every < 1)
            return false;
        if (detail::isMissing(cont.scale.interval))
            return i % cont.every == 0;
        double const from = detail::isMissing(cont.base) ? 0. : static_cast<double>(cont.base);
        double const steps = std::round((static_cast<double>(cont.getLevel(i)) - from) /
                                        static_cast<double>(cont.scale.interval));
        return std::fmod(steps, cont.every) == 0;
    }

    void usePen(int level)
    {
        Pen const & pen = pens[static_cast<std::size_t>(level)];
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
        PageScale const page(graph);
        graph.setTran(Plot::MAP_TRAN);
        detail::BandPainter(graph, bands(), frame,
                            {FINENESS / std::abs(page.x_factor), FINENESS / std::abs(page.y_factor)})
            .paint(view, places, find);
    }

    template <class Places, class Find>
    void drawView(FieldView const & view, Places const & places, Find const & find, double visible_points)
    {
        float const tweak = (cont.range.max - cont.range.min) / 10000;
        std::span<float const> const levels = cont.scale.levels;
        graph.setTran(Plot::MAP_TRAN);
        if (!has_lines && !cont.has_extrema)
            return;
        auto const sweep = [&](auto const & draw) {
            detail::sweepCells(view, levels, tweak, places,
                               [&](int column, int row, int k, CellLine const & line) {
                                   if (pens[static_cast<std::size_t>(k)].color >= 0)
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

        PageScale const page(graph);
        std::vector<CellLine> plane_lines;
        std::vector<DrawnLine> lines;
        if (has_lines)
            sweep([&](int column, int row, int k, CellLine const & l) {
                plane_lines.push_back(l);
                lines.push_back({page.x(l.x1), page.y(l.y1), page.x(l.x2), page.y(l.y2), column, row,
                                 static_cast<std::int16_t>(k), static_cast<std::int8_t>(l.side1),
                                 static_cast<std::int8_t>(l.side2)});
            });
        Rect const viewport = graph.getTransform(Plot::MAP_TRAN).getViewport();
        detail::LabelBoxes boxes(viewport.x1, viewport.y1, viewport.x2, viewport.y2);
        if (cont.has_extrema)
            drawExtrema(view, find, visible_points, viewport, page, boxes);
        if (cont.has_labels)
            drawLabels(lines, viewport, boxes);
        drawBroken(plane_lines, lines, boxes);
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

    /// Prepares for measuring texts; returns the index of the colour.
    int setTextSize(float height, float weight, char const * color)
    {
        graph.setTran(Plot::PAGE_TRAN);
        graph.setTextHeight(height);
        graph.setTextWeight(weight);
        return plot.findColor(color, "black");
    }

    void drawLabels(std::vector<DrawnLine> const & lines, Rect const & viewport, detail::LabelBoxes & boxes)
    {
        float const share = detail::isMissing(cont.label.size) ? LABEL_HEIGHT : cont.label.size;
        float const height = share * plot.getLayout().text_height;
        float const weight = detail::isMissing(cont.label.weight) ? 1.2F : cont.label.weight;
        int const color = setTextSize(height, weight, cont.label.color_name);
        bool const has_color = cont.label.validColor();
        std::vector<std::string> texts;
        std::vector<detail::LevelLabel> labels;
        for (float const level : cont.scale.levels) {
            texts.push_back(detail::levelText(level, cont.scale.interval));
            labels.push_back({graph.getTextWidth(texts.back().c_str())});
        }
        detail::LabelRules rules;
        rules.frame = viewport;
        rules.text_height = height;
        rules.spacing = LABEL_SPACING;
        for (auto const & placed : detail::placeLabels(lines, labels, rules, boxes)) {
            auto const level = static_cast<std::size_t>(placed.level);
            LabelBox const & box = placed.box; // the text is centred in it, along it
            float const up_x = -box.along_y;
            float const up_y = box.along_x;
            cont.texts.push_back({texts[level], box.x - up_x * height / 2, box.y - up_y * height / 2, up_x,
                                  up_y, height, weight, has_color ? color : pens[level].color});
        }
    }

    /// A power of ten that the range holds some dozens of times.
    [[nodiscard]] float plainStep() const
    {
        constexpr float PARTS = 12;
        float const step = (cont.range.max - cont.range.min) / PARTS;
        return step > 0 ? std::pow(10.F, std::floor(std::log10(step))) : 1.F;
    }

    template <class Find>
    void drawExtrema(FieldView const & view,
                     Find const & find,
                     double visible_points,
                     Rect const & viewport,
                     PageScale const & page,
                     detail::LabelBoxes & boxes)
    {
        float const step = detail::isMissing(cont.scale.interval) ? plainStep() : cont.scale.interval;
        int const reach =
            std::max(2, static_cast<int>(std::sqrt(visible_points) * static_cast<double>(EXTREMUM_SPACING)));
        for (Extremum const & extremum : detail::findExtrema(view, reach, LEAST_PROMINENCE * step)) {
            float x = 0;
            float y = 0;
            if (find(extremum.column, extremum.row, x, y) && detail::isInside(frame, x, y))
                drawExtremum(extremum, step, page.x(x), page.y(y), viewport, boxes);
        }
    }

    /// The letter stands on the place, its value below.
    void drawExtremum(Extremum const & extremum,
                      float step,
                      float x,
                      float y,
                      Rect const & viewport,
                      detail::LabelBoxes & boxes)
    {
        float const h = plot.getLayout().text_height;
        float const letter_height = EXTREMUM_HEIGHT * h;
        float const value_height = VALUE_HEIGHT * h;
        float const gap = 0.3F * h;
        char const * const letter = extremum.is_high ? "H" : "L";
        char const * const color = (extremum.is_high ? cont.high_color : cont.low_color).c_str();
        std::string const value = detail::levelText(extremum.value, step);

        constexpr float VALUE_WEIGHT = 1.5F;
        constexpr float LETTER_WEIGHT = 3;
        int const index = setTextSize(value_height, VALUE_WEIGHT, color);
        LabelBox box;
        box.half_width = std::max(graph.getTextWidth(value.c_str()), letter_height) / 2 + gap;
        box.half_height = (letter_height + gap + value_height) / 2 + gap;
        box.x = x;
        box.y = y - (gap + value_height) / 2;
        bool const is_inside = x - box.half_width > viewport.x1 && x + box.half_width < viewport.x2 &&
                               box.y - box.half_height > viewport.y1 && box.y + box.half_height < viewport.y2;
        if (!is_inside || !boxes.isFree(box))
            return;
        boxes.add(box);
        float const foot = y - letter_height / 2;
        cont.texts.push_back(
            {value, x, foot - gap - value_height, 0, 1, value_height, VALUE_WEIGHT, index, true});
        cont.texts.push_back({letter, x, foot, 0, 1, letter_height, LETTER_WEIGHT, index, true});
    }

    ContPlot & cont;
    Plot & plot;
    Graph & graph;
    float const * values; // as many as the domain has points
    Rect frame;
    std::vector<Pen> pens; // by level; a negative colour draws nothing
    bool has_lines = false;
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
    Drawer drawer(*this, plot, is_closing ? closed.data() : grid.data());
    if (detail::ColorBar bar = drawer.colorBar(plot.getFacts().units); !bar.isEmpty())
        plot.setColorBar(std::move(bar));
    return drawer.draw(domain);
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
