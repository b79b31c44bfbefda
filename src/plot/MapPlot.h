// The map under and over the data of a plot.
#pragma once

#include "core/Const.h"
#include "plot/MapFile.h"
#include "plot/PlotAttr.h"

#include <string>
#include <string_view>
#include <vector>

namespace Yul {

class Plot;

/// Draws coastlines, boundaries, lakes, rivers, land and sea on a plot, and the graticule. Areas lie under the data of
/// a plot and lines over it:
///
///     map.drawFill(plot);
///     contours.draw(plot, grid);
///     map.drawLines(plot);
///     plot.drawBorder();
///     plot.drawLabels();
///
/// The layers, each with its attributes, are drawn in this order:
///   sea      all of the earth           land     land areas          water    areas of lakes
///   river    rivers                     lake     shores of lakes     state    boundaries within countries
///   country  boundaries of countries    coast    coastlines          edge     where the earth ends, on a globe
///   grid     the graticule
/// and, before the graticule, any other layer of the map file that was named, as lines. At first there are coast,
/// country, edge and grid. Which detail is drawn follows from the scale of the page, unless it is set.
///
/// Lines are cut at the frame, at the horizon and where the projection cuts the earth open; what shows no detail at
/// the scale is left out. The labels of the graticule come with the plot's border. Operations return 1, or 0 for
/// failure.
class MapPlot
{
public:
    MapPlot() { init(); }

    /// Back to coast, country, edge and grid from the standard map.
    int init();

    /// The map file, in the database directory or as it stands; null or empty for the setting "map_file", which is
    /// "yul.map" when it is not set.
    int setFile(char const * name);

    /// Draws the layers of the scale nearest to this one, in millions (110 or 50 in the standard map); 0 for the one
    /// that suits the page. 0 and no change outside 0 to 1000.
    int setDetail(int millions);

    /// See setDetail.
    [[nodiscard]] int getDetail() const noexcept { return detail; }

    /// Leaves out lines of a higher rank, 0 to 255; Const::MISS for a limit that suits the page. 0 and no change for
    /// another number.
    int setRank(int most);

    /// Draws a layer so: line colour, width and style, or colour and fill style of an area. What is not given comes
    /// from the layer's own defaults; the colour "off" takes the layer out. An attribute text may be null or empty.
    /// return  0 for a name that no layer can have
    int setLayer(char const * name, PlotAttr const & attr);
    int setLayer(char const * name, char const * attr);
    /// 1 when the layer is to be drawn.
    [[nodiscard]] int isLayer(char const * name) const;
    /// Takes all layers out.
    int clearLayers();

    /// Steps of the graticule, degrees; Const::MISS for suitable ones.
    int setSteps(float lat, float lon);

    /// Settings as a list separated by commas; unknown items without "=" are passed over:
    ///   LAYER=ATTR   attribute text, colons between items      LAYER     with its defaults
    ///   noLAYER      without it                                none      without any
    ///   detail=N  rank=N  file=NAME  as above                  step=LAT:LON   of the graticule (or one for both)
    int setParam(char const * params);

    /// Fills sea, land and water; draws rivers to graticule; does both in turn. Nothing is drawn when the plot's
    /// switch for maps is off, and only axis lines where the plot's domain is none of the earth.
    /// return  0 with a warning when the plot is not open, has no domain, or the map file cannot be read
    int drawFill(Plot & plot) const;
    int drawLines(Plot & plot) const;
    int draw(Plot & plot) const;

private:
    struct Layer
    {
        std::string name;
        PlotAttr attr;
    };

    class Drawer;

    [[nodiscard]] Layer const * find(std::string_view name) const;
    [[nodiscard]] std::string fileName() const;
    int drawPart(Plot & plot, bool is_fill) const;

    std::string file_name;
    int detail = 0;
    int rank = Const::MISS;
    float lat_step = Const::MISS;
    float lon_step = Const::MISS;
    std::vector<Layer> layers;
};

} // namespace Yul
