#include "plot/MapPlot.h"

#include "core/Clamp.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "plot/Plot.h"
#include "plot/map/MapCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>

namespace Yul {
namespace {

constexpr char const * STANDARD_FILE = "yul.map";
constexpr std::string_view GRID = "grid";
constexpr std::string_view SEA = "sea";
constexpr std::string_view EDGE = "edge";
constexpr std::string_view OFF = "off";

/// A layer that is known by name, and how it looks; the order is that of drawing.
struct KnownLayer
{
    std::string_view name;
    std::string_view source; ///< layer of the file
    bool is_fill;
    bool is_standard; ///< drawn unless something else is said
    char const * attr;
};

constexpr KnownLayer KNOWN_LAYERS[] = {
    {"sea", "", true, false, "sea1:fi=0"},
    {"land", "land", true, false, "cornsilk:fi=0"},
    {"water", "lake", true, false, "sea1:fi=0"},
    {"river", "river", false, false, "steelblue:wi=1:st=1"},
    {"lake", "lake", false, false, "steelblue:wi=1:st=1"},
    {"state", "state", false, false, "darkgray:wi=1:st=1"},
    {"country", "country", false, true, "dimgray:wi=1:st=1"},
    {"coast", "coast", false, true, "dimgray:wi=2:st=1"},
    {"edge", "", false, true, "dimgray:wi=1:st=1"},
    {"grid", "", false, true, "gray:wi=1:st=5"},
};

constexpr KnownLayer OTHER_LAYER = {"", "", false, false, "black:wi=1:st=1"};

KnownLayer const & knownLayer(std::string_view name)
{
    auto const * const found = std::find_if(std::begin(KNOWN_LAYERS), std::end(KNOWN_LAYERS),
                                            [&](KnownLayer const & layer) { return layer.name == name; });
    return found != std::end(KNOWN_LAYERS) ? *found : OTHER_LAYER;
}

bool isKnown(std::string_view name)
{
    return &knownLayer(name) != &OTHER_LAYER;
}

/// The highest rank that a scale, in millions, has room for.
int suitableRank(double scale)
{
    struct
    {
        double least_scale;
        int rank;
    } constexpr ROOM[] = {{40, 3}, {20, 5}};

    for (auto const & [least_scale, rank] : ROOM)
        if (scale >= least_scale)
            return rank;
    return 255;
}

} // namespace

/// One drawing of one part of the map.
class MapPlot::Drawer
{
public:
    Drawer(MapPlot const & of, Plot & on)
        : map(of), plot(on), graph(on.getGraph()), frame(on.getFrame()),
          canvas(on.getDomain(), frame, dot(on), graph),
          scale(canvas.plane().degreesPerUnit() * dot(on) / DOT * MILLIONTHS)
    {
    }

    int draw(bool is_fill)
    {
        int is_drawn = 1;
        for (Layer const & layer : map.layers)
            if (layer.name != GRID && knownLayer(layer.name).is_fill == is_fill)
                is_drawn &= drawLayer(layer);
        return is_drawn;
    }

private:
    static constexpr double DOT = 0.07; ///< device units (points on paper): no smaller detail shows
    /// Scale in millions of a map on which a device unit is a degree long: degree by point.
    static constexpr double MILLIONTHS = 111194.9 / 352.7778e-6 / 1e6;

    /// A detail that just shows, units of the plane.
    static double dot(Plot & plot)
    {
        GTran const & tran = plot.getGraph().getTransform(Plot::MAP_TRAN);
        return DOT / static_cast<double>(std::max(tran.getPlotPerWindowX(), tran.getPlotPerWindowY()));
    }

    int drawLayer(Layer const & layer)
    {
        KnownLayer const & known = knownLayer(layer.name);
        PlotAttr attr = layer.attr;
        attr.update(PlotAttr(known.attr));
        std::string_view const source = known.source.empty() ? std::string_view(layer.name) : known.source;
        int const color = plot.findColor(layer.attr, attr.color_name);
        if (known.is_fill) {
            graph.setFillColor(color);
            graph.setFillStyle(attr.fill);
            if (layer.name == SEA) {
                canvas.fillEarth();
                return 1;
            }
        } else {
            graph.setLineColor(color);
            graph.setLineStyle(attr.style);
            graph.setLineWidth(attr.width);
            if (layer.name == EDGE) {
                canvas.drawEdge();
                return 1;
            }
        }
        return drawSource(std::string(source), known.is_fill);
    }

    int drawSource(std::string const & source, bool is_fill)
    {
        if (!file.isOpen() && file.open(map.fileName().c_str()) == 0)
            return 0;
        int const wanted_scale = map.detail > 0 ? map.detail : detail::clampTo<int>(scale);
        int const i = file.findLayer(source.c_str(), wanted_scale);
        if (i < 0) {
            Yul::outWarning("MapPlot::draw: No layer %s in the map file\n", source.c_str());
            return 0;
        }
        bool const is_area = file.getHeader(i).getKind() == MapFileHeader::AREA;
        detail::MapLines lines;
        if (file.read(i, chunksInSight(i), lines) == 0)
            return 0;
        if (is_fill && is_area)
            canvas.fillAreas(lines);
        else if (!is_fill)
            canvas.drawLines(lines, is_area);
        return 1;
    }

    std::vector<std::uint32_t> chunksInSight(int layer)
    {
        if (!seen)
            seen = std::make_unique<detail::SeenCells>(canvas.plane(), frame);
        constexpr double BOX = detail::BOX_UNITS;
        int const most = detail::isMissing(map.rank) ? suitableRank(scale) : map.rank;
        std::vector<std::uint32_t> wanted;
        auto const chunks = file.getChunks(layer);
        for (std::size_t i = 0; i < chunks.size(); ++i) {
            detail::MapChunk const & c = chunks[i];
            if (c.rank <= most && seen->meets(c.south / BOX, c.north / BOX, c.west / BOX, c.east / BOX))
                wanted.push_back(static_cast<std::uint32_t>(i));
        }
        return wanted;
    }

    MapPlot const & map;
    Plot & plot;
    Graph & graph;
    Rect frame;
    detail::MapCanvas canvas;
    double scale; // in millions
    MapFile file;
    std::unique_ptr<detail::SeenCells> seen;
};

int MapPlot::init()
{
    file_name.clear();
    detail = 0;
    rank = Const::MISS;
    lat_step = lon_step = Const::MISS;
    layers.clear();
    for (KnownLayer const & known : KNOWN_LAYERS)
        if (known.is_standard)
            layers.push_back({std::string(known.name), PlotAttr()});
    return 1;
}

int MapPlot::setFile(char const * name)
{
    file_name = detail::viewOf(name);
    return 1;
}

std::string MapPlot::fileName() const
{
    return file_name.empty() ? std::string(Yul::getResrc("map_file", STANDARD_FILE)) : file_name;
}

int MapPlot::setDetail(int millions)
{
    if (millions < 0 || millions > 1000)
        return 0;
    detail = millions;
    return 1;
}

int MapPlot::setRank(int most)
{
    if (!detail::isMissing(most) && (most < 0 || most > 255))
        return 0;
    rank = most;
    return 1;
}

int MapPlot::setSteps(float lat, float lon)
{
    lat_step = lat;
    lon_step = lon;
    return 1;
}

MapPlot::Layer const * MapPlot::find(std::string_view name) const
{
    auto const found =
        std::find_if(layers.begin(), layers.end(), [&](Layer const & layer) { return layer.name == name; });
    return found != layers.end() ? &*found : nullptr;
}

int MapPlot::isLayer(char const * name) const
{
    return find(detail::viewOf(name)) != nullptr ? 1 : 0;
}

int MapPlot::clearLayers()
{
    layers.clear();
    return 1;
}

int MapPlot::setLayer(char const * name, PlotAttr const & attr)
{
    constexpr std::size_t MOST_LAYERS = 100;
    std::string const key(detail::viewOf(name));
    MapFileHeader header;
    if (header.setName(key.c_str()) == 0)
        return 0;
    Layer const layer = {key, attr}; // a copy first: the attributes may be our own
    std::erase_if(layers, [&](Layer const & known) { return known.name == key; });
    if (detail::sameIgnoringCase(layer.attr.color_name, OFF) ||
        detail::sameIgnoringCase(layer.attr.color_name, "none"))
        return 1;
    if (layers.size() >= MOST_LAYERS)
        return 0;
    // known layers in their order, others behind
    auto const place = [](std::string_view of) {
        return isKnown(of) ? &knownLayer(of) : std::end(KNOWN_LAYERS);
    };
    auto const next = std::find_if(layers.begin(), layers.end(),
                                   [&](Layer const & other) { return place(other.name) > place(key); });
    layers.insert(next, layer);
    return 1;
}

int MapPlot::setLayer(char const * name, char const * attr)
{
    return setLayer(name, PlotAttr(attr));
}

int MapPlot::setParam(char const * params)
{
    for (std::string_view const item : detail::split(detail::viewOf(params), ',')) {
        std::size_t const equals = std::min(item.find('='), item.size());
        std::string const key(item.substr(0, equals));
        std::string const value(item.substr(std::min(equals + 1, item.size())));
        bool const has_value = equals < item.size();
        if (key == "none") {
            clearLayers();
        } else if (key == "detail") {
            setDetail(detail::toInt(value));
        } else if (key == "rank") {
            setRank(detail::toInt(value));
        } else if (key == "file") {
            setFile(value.c_str());
        } else if (key == "step") {
            float lat = Const::MISS;
            float lon = Const::MISS;
            int const count = detail::scan(value, "%f:%f", &lat, &lon);
            setSteps(lat, count == 2 ? lon : lat);
        } else if (has_value || isKnown(key)) {
            setLayer(key.c_str(), value.c_str());
        } else if (key.starts_with("no")) {
            setLayer(key.c_str() + 2, OFF.data());
        }
    }
    return 1;
}

int MapPlot::drawPart(Plot & plot, bool is_fill) const
{
    if (!plot.isOpen()) {
        Yul::outWarning("MapPlot::draw: The plot is not open\n");
        return 0;
    }
    if (!plot.isDrawn(detail::DRAW_MAP))
        return 1;
    Domain const & domain = plot.getDomain();
    Rect const frame = plot.getFrame();
    bool const has_frame = !detail::isMissing(frame.x1) && frame.getWidth() > 0 && frame.getHeight() > 0;
    if (!has_frame) {
        Yul::outWarning("MapPlot::draw: The plot has no domain\n");
        return 0;
    }
    plot.getGraph().setTran(Plot::MAP_TRAN);
    int is_drawn = domain.isMap() ? Drawer(*this, plot).draw(is_fill) : 1;
    if (Layer const * const grid = find(GRID); grid != nullptr && !is_fill) {
        PlotAttr attr = grid->attr;
        attr.update(PlotAttr(knownLayer(GRID).attr));
        is_drawn &= plot.drawGraticule(attr, lat_step, lon_step);
    }
    return is_drawn;
}

int MapPlot::drawFill(Plot & plot) const
{
    return drawPart(plot, true);
}

int MapPlot::drawLines(Plot & plot) const
{
    return drawPart(plot, false);
}

int MapPlot::draw(Plot & plot) const
{
    return drawFill(plot) & drawLines(plot);
}

} // namespace Yul
