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

int ContPlot::setParam(char const * params)
{
    for (std::string_view const item : detail::split(detail::viewOf(params), ',')) {
        std::size_t const equals = std::min(item.find('='), item.size());
        std::string_view const key = item.substr(0, equals);
        std::string const value(item.substr(std::min(equals + 1, item.size())));
        auto const is = [&](std::string_view name) { return detail::sameIgnoringCase(key, name); };
        float number = Const::MISS;
        bool const is_number = detail::scan(value, "%f", &number) == 1;
        if (is("int") && is_number)
            setInterval(number);
        else if (is("base") && is_number)
            setBase(number);
        else if (is("low") && is_number)
            setLow(number);
        else if (is("high") && is_number)
            setHigh(number);
        else if (is("val"))
            setValues(value.c_str());
        else if (is("ncol"))
            setNumColors(detail::toInt(value));
        else if (is("col") || is("fill")) {
            is_filled = is_filled || is("fill");
            has_table_colors = value.empty();
            fill.setColors(value.c_str());
        } else if (is("nofill"))
            is_filled = false;
        else if (is("dash"))
            setDash(detail::toInt(value));
        else if (is("every"))
            setEvery(detail::toInt(value));
        else if (is("line"))
            setLine(PlotAttr(value.c_str()));
        else if (is("lab"))
            setLabel(PlotAttr(value.c_str()));
        else if (is("nolab"))
            has_labels = false;
        else if (is("hilo")) {
            has_extrema = true;
            std::size_t const colon = std::min(value.find(':'), value.size());
            high_color = value.empty() ? HIGH_COLOR : value.substr(0, colon);
            low_color = value.empty() ? LOW_COLOR : value.substr(std::min(colon + 1, value.size()));
        } else if (is("nohilo"))
            has_extrema = false;
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
