// How each level of a contour layer looks on a plot: its pen, and the colour of the band above it.
#pragma once

#include "plot/BandPainter.h"
#include "plot/ColorBar.h"
#include "plot/ContPlot.h"

#include <optional>
#include <string>
#include <vector>

namespace Yul {

class ContPlot::Style
{
public:
    struct Pen
    {
        int color; ///< the device's; a negative one draws nothing
        float width;
        int style;
    };

    /// For the levels of the last choice.
    Style(ContPlot const & contours, Plot & on_plot);

    [[nodiscard]] Pen const & pen(int level) const { return pens[static_cast<std::size_t>(level)]; }

    /// True when any level has a pen that draws.
    [[nodiscard]] bool hasLines() const noexcept { return has_lines; }

    /// The levels that the field reaches with their colours, ascending.
    [[nodiscard]] std::vector<detail::Band> bands() const;

    /// What the plot's colour bar shows of the scale; empty without one.
    [[nodiscard]] detail::ColorBar colorBar(std::string const & units) const;

private:
    [[nodiscard]] Pen penOf(int i) const;
    [[nodiscard]] std::optional<int> colorOf(int i) const;
    [[nodiscard]] int dashStyle(float level) const;
    [[nodiscard]] bool isWide(int i) const;

    ContPlot const & cont;
    Plot & plot;
    std::vector<Pen> pens; // by level
    bool has_lines;
};

} // namespace Yul
