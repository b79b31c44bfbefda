// Contour lines of a grid.
#pragma once

#include "core/Const.h"
#include "geo/Rect.h"
#include "plot/ColorFill.h"
#include "plot/LevelScale.h"
#include "plot/PlacedText.h"
#include "plot/PlotAttr.h"

#include <string>
#include <string_view>
#include <vector>

namespace Yul {

class Grid;
class Plot;

/// Draws a grid as contour lines on a plot, on request with the bands between them filled. Levels come from an
/// interval (and a base), or from a list of values; without either the range is cut into about as many plain steps
/// as there are colours.
///
/// Every contour is drawn cell by cell as lines of two points, in whatever plane the plot has; on request
/// labels stand in the lines and the highs and lows of the field are marked. Operations return 1, or 0 and
/// change nothing for bad input (NaN, infinite and negative intervals, unknown texts).
class ContPlot
{
public:
    ContPlot() = default;

    /// Forgets all settings.
    int init();

    /// The step from level to level; 0 or Const::MISS for a plain one.
    int setInterval(float value);
    /// A level from which the others are counted; Const::MISS for none (0 is one then).
    int setBase(float value);
    /// No level below or above; Const::MISS for no limit.
    int setLow(float value);
    int setHigh(float value);
    /// Explicit levels, see ColorFill::setValues.
    int setValues(char const * text);
    /// How many colours the scale has, see ColorFill::setNumColors.
    int setNumColors(int n);
    /// 1: all lines dashed; -1: lines below the base (or below 0) dashed; any other: all solid.
    int setDash(int mode);
    /// How the lines look. A style here takes the place of the dash mode.
    int setLine(PlotAttr const & attr);
    /// How the line labels look: colour (else that of the line), text height (in heights of the plot's
    /// labels) and weight. Switches them on.
    int setLabel(PlotAttr const & attr);
    /// The scale of colours: they fill the bands where `setFilled` says so, else they colour the lines.
    int setFill(ColorFill const & value);

    /// The scale of colours.
    [[nodiscard]] ColorFill const & getFill() const noexcept { return fill; }

    /// Whether the bands between levels are filled: from each level up to the next in the level's colour,
    /// above the last one in the last colour; below the first one nothing is painted. Without a list of
    /// colours they are those of the colour table, spread over the levels that the field reaches. A colour
    /// "off" leaves its band open.
    int setFilled(bool is_on);

    /// Every nth level, counted from the base, is drawn with wider lines; 0 for none.
    int setEvery(int n);

    /// Settings as a list separated by commas; unknown items are passed over:
    ///   int=N  base=N  low=N  high=N   as above           val=A:B:C    explicit levels
    ///   ncol=N   number of colours                        col=A:B:C    colours of the lines from the lowest
    ///                                                     level up; "col" alone: those of the colour table
    ///   fill, fill=A:B:C, nofill   bands filled, with these colours or those of the colour table
    ///   dash=N   dash mode                                line=ATTR    attribute text, colons between items;
    ///                                                     "line=off" draws none
    ///   every=N  wide lines                               lab or lab=ATTR, nolab   labels in the lines
    ///   hilo, hilo=A:B, nohilo   highs and lows marked, in these colours (blue and red)
    int setParam(char const * params);

    /// Chooses the levels for a grid, as `draw` does. Warns when the interval is too small and replaced.
    /// return 0 for a grid without values.
    int calcLevels(Grid const & grid);

    /// Number of levels of the last choice.
    [[nodiscard]] int getNumLevels() const noexcept { return static_cast<int>(scale.levels.size()); }

    /// Level i of the last choice. Levels beyond the last go on by the interval; beyond explicit ones there
    /// is only the field's maximum plus 1. Const::MISS for a negative index.
    [[nodiscard]] float getLevel(int i) const noexcept;

    /// The interval of the last choice; Const::MISS for explicit levels.
    [[nodiscard]] float getInterval() const noexcept { return scale.interval; }

    /// Lowest and highest level of the last choice.
    [[nodiscard]] float getLow() const noexcept { return scale.lowest; }

    /// The highest of them.
    [[nodiscard]] float getHigh() const noexcept { return scale.highest; }

    /// Draws the grid on an open plot, in the plot's domain or, where it has none, in the grid's own, which
    /// it then takes: first the bands, then lines, labels, highs and lows. Proposes labels for the plot
    /// (variable and level, time, interval, model) and tells it what its colour bar shows.
    /// return 0 with a warning when the plot is not open, or the grid has no values or no place on the plot.
    int draw(Plot & plot, Grid const & grid);

    /// The same in two steps, for what is to come over the lines and under the texts, such as coastlines: first
    /// bands and lines, with gaps where texts will stand, ...
    int drawLines(Plot & plot, Grid const & grid);
    /// ... then the labels, highs and lows of that grid. Without bands all of them have a white edge.
    /// return 0 with a warning when the plot is not open.
    int drawTexts(Plot & plot);

private:
    class Drawer;
    class Style;
    class Texts;

    /// An item of the text that `setParam` takes.
    struct Setting
    {
        std::string_view name;
        void (*set)(ContPlot & plot, std::string const & value);
    };

    static Setting const SETTINGS[];

    template <int (ContPlot::*SET)(float)> static void setNumber(ContPlot & plot, std::string const & value);
    template <int (ContPlot::*SET)(int)> static void setCount(ContPlot & plot, std::string const & value);
    static void setColors(ContPlot & plot, std::string const & value);
    static void setExtrema(ContPlot & plot, std::string const & value);

    static constexpr char const * HIGH_COLOR = "blue";
    static constexpr char const * LOW_COLOR = "red";

    float interval = Const::MISS;
    float base = Const::MISS;
    float low = Const::MISS;
    float high = Const::MISS;
    int dash = 0;
    int every = 0;
    bool has_labels = false;
    bool has_extrema = false;
    std::string high_color = HIGH_COLOR;
    std::string low_color = LOW_COLOR;
    bool is_filled = false;
    bool has_table_colors = false; // those of the colour table, for lines; bands have them anyway
    PlotAttr line;
    PlotAttr label;
    ColorFill fill;
    detail::LevelScale scale;              // of the last choice
    Range range;                           // of the grid that it was for
    std::vector<detail::PlacedText> texts; // of the last drawing, until they are drawn
};

} // namespace Yul
