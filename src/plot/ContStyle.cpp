#include "plot/ContStyle.h"

#include "plot/Plot.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

constexpr float WIDE = 2.2F; // how much wider every nth line is

} // namespace

ContPlot::Style::Style(ContPlot const & contours, Plot & on_plot) : cont(contours), plot(on_plot)
{
    for (int i = 0; i < cont.getNumLevels(); ++i)
        pens.push_back(penOf(i));
    has_lines = std::any_of(pens.begin(), pens.end(), [](Pen const & pen) { return pen.color >= 0; });
}

ContPlot::Style::Pen ContPlot::Style::penOf(int i) const
{
    PlotAttr const & attr = cont.line;
    Pen pen{};
    std::optional<int> const own = cont.is_filled ? std::nullopt : colorOf(i);
    bool const is_off = attr.color_name[0] != '\0' && !attr.validColor();
    pen.color = own ? *own : is_off ? -1 : plot.findColor(attr, "black");
    pen.width = detail::isMissing(attr.width) ? 0.F : attr.width;
    if (isWide(i))
        pen.width = WIDE * std::max(pen.width, 1.F);
    pen.style = detail::isMissing(attr.style) ? dashStyle(cont.getLevel(i)) : attr.style;
    return pen;
}

/// The device's colour for a level in the scale of colours; none where there is no scale, -1 for "off".
std::optional<int> ContPlot::Style::colorOf(int i) const
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

int ContPlot::Style::dashStyle(float level) const
{
    constexpr int SOLID = 1;
    constexpr int DASHED = 2;
    if (cont.dash == 1)
        return DASHED;
    float const limit = detail::isMissing(cont.base) ? 0.F : cont.base;
    return cont.dash == -1 && level < limit ? DASHED : SOLID;
}

bool ContPlot::Style::isWide(int i) const
{
    if (cont.every < 1)
        return false;
    if (detail::isMissing(cont.scale.interval))
        return i % cont.every == 0;
    double const from = detail::isMissing(cont.base) ? 0. : static_cast<double>(cont.base);
    double const steps =
        std::round((static_cast<double>(cont.getLevel(i)) - from) / static_cast<double>(cont.scale.interval));
    return std::fmod(steps, cont.every) == 0;
}

std::vector<detail::Band> ContPlot::Style::bands() const
{
    std::vector<detail::Band> all;
    for (int i = 0; i < cont.getNumLevels(); ++i)
        if (cont.getLevel(i) <= cont.range.max)
            all.push_back({cont.getLevel(i), colorOf(i).value_or(-1)});
    std::stable_sort(all.begin(), all.end(),
                     [](detail::Band const & a, detail::Band const & b) { return a.from < b.from; });
    return all;
}

detail::ColorBar ContPlot::Style::colorBar(std::string const & units) const
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

} // namespace Yul
