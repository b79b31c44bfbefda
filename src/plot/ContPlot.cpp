#include "plot/ContPlot.h"

#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/Grid.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace Yul {
namespace {

int store(float & field, float value)
{
    if (!std::isfinite(value))
        return 0;
    field = value;
    return 1;
}

/// The grid's range; only its finite values where some are not.
Range finiteRange(Grid const & grid)
{
    Range range;
    grid.getRange(range);
    if (std::isfinite(range.max - range.min))
        return range;
    range = Range();
    for (float const value : grid.getValues()) {
        if (!std::isfinite(value) || detail::isMissing(value))
            continue;
        bool const is_first = detail::isMissing(range.max);
        range =
            is_first ? Range(value, value) : Range(std::min(range.min, value), std::max(range.max, value));
    }
    return range;
}

} // namespace

int ContPlot::init()
{
    *this = ContPlot();
    return 1;
}

int ContPlot::setInterval(float value)
{
    if (value < 0 && !detail::isMissing(value))
        return 0;
    return store(interval, value);
}

int ContPlot::setBase(float value)
{
    return store(base, value);
}

int ContPlot::setLow(float value)
{
    return store(low, value);
}

int ContPlot::setHigh(float value)
{
    return store(high, value);
}

int ContPlot::setValues(char const * text)
{
    return fill.setValues(text);
}

int ContPlot::setNumColors(int n)
{
    return fill.setNumColors(n);
}

int ContPlot::setDash(int mode)
{
    dash = mode;
    return 1;
}

int ContPlot::setLine(PlotAttr const & attr)
{
    line = attr;
    return 1;
}

int ContPlot::setLabel(PlotAttr const & attr)
{
    label = attr;
    has_labels = true;
    return 1;
}

int ContPlot::setFill(ColorFill const & value)
{
    fill = value;
    return 1;
}

int ContPlot::setFilled(bool is_on)
{
    is_filled = is_on;
    return 1;
}

int ContPlot::setEvery(int n)
{
    if (n < 0)
        return 0;
    every = n;
    return 1;
}

/// A setting for which the text has to be a number.
template <int (ContPlot::*SET)(float)> void ContPlot::setNumber(ContPlot & plot, std::string const & value)
{
    float number = Const::MISS;
    if (detail::scan(value, "%f", &number) == 1)
        (plot.*SET)(number);
}

template <int (ContPlot::*SET)(int)> void ContPlot::setCount(ContPlot & plot, std::string const & value)
{
    (plot.*SET)(detail::toInt(value));
}

/// Colours of lines and bands, or those of the colour table.
void ContPlot::setColors(ContPlot & plot, std::string const & value)
{
    plot.has_table_colors = value.empty();
    plot.fill.setColors(value.c_str());
}

void ContPlot::setExtrema(ContPlot & plot, std::string const & value)
{
    std::size_t const colon = std::min(value.find(':'), value.size());
    plot.has_extrema = true;
    plot.high_color = value.empty() ? HIGH_COLOR : value.substr(0, colon);
    plot.low_color = value.empty() ? LOW_COLOR : value.substr(std::min(colon + 1, value.size()));
}

ContPlot::Setting const ContPlot::SETTINGS[] = {
    {"int", setNumber<&ContPlot::setInterval>},
    {"base", setNumber<&ContPlot::setBase>},
    {"low", setNumber<&ContPlot::setLow>},
    {"high", setNumber<&ContPlot::setHigh>},
    {"val", [](ContPlot & plot, std::string const & value) { plot.setValues(value.c_str()); }},
    {"ncol", setCount<&ContPlot::setNumColors>},
    {"col", setColors},
    {"fill",
     [](ContPlot & plot, std::string const & value) {
         plot.is_filled = true;
         setColors(plot, value);
     }},
    {"nofill", [](ContPlot & plot, std::string const &) { plot.is_filled = false; }},
    {"dash", setCount<&ContPlot::setDash>},
    {"every", setCount<&ContPlot::setEvery>},
    {"line", [](ContPlot & plot, std::string const & value) { plot.setLine(PlotAttr(value.c_str())); }},
    {"lab", [](ContPlot & plot, std::string const & value) { plot.setLabel(PlotAttr(value.c_str())); }},
    {"nolab", [](ContPlot & plot, std::string const &) { plot.has_labels = false; }},
    {"hilo", setExtrema},
    {"nohilo", [](ContPlot & plot, std::string const &) { plot.has_extrema = false; }},
};

int ContPlot::setParam(char const * params)
{
    for (std::string_view const item : detail::split(detail::viewOf(params), ',')) {
        std::size_t const equals = std::min(item.find('='), item.size());
        std::string const value(item.substr(std::min(equals + 1, item.size())));
        for (Setting const & setting : SETTINGS)
            if (detail::sameIgnoringCase(item.substr(0, equals), setting.name))
                setting.set(*this, value);
    }
    return 1;
}

int ContPlot::calcLevels(Grid const & grid)
{
    range = finiteRange(grid);
    scale =
        detail::chooseLevels({interval, base, low, high, fill.getNumColors() - 1, fill.getValues()}, range);
    if (scale.is_recomputed)
        Yul::outWarning("Contour interval too small, recomputing...\n");
    fill.setInterval(scale.interval);
    fill.setBase(detail::isMissing(base) ? scale.lowest : base);
    return grid.isData() ? 1 : 0;
}

float ContPlot::getLevel(int i) const noexcept
{
    if (i < 0)
        return Const::MISS;
    if (i < getNumLevels())
        return scale.levels[static_cast<std::size_t>(i)];
    return fill.getNumValues() > 0 ? range.max + 1 : scale.lowest + static_cast<float>(i) * scale.interval;
}

} // namespace Yul
