// Where the lines and areas of a map are drawn, and how finely.
#pragma once

#include "geo/Rect.h"
#include "graphics/Graph.h"
#include "plot/map/MapLines.h"
#include "plot/map/MapPlane.h"
#include "plot/map/RingCut.h"

#include <vector>

namespace Yul::detail {

/// The frame of a plot with the earth in it. Lines and areas come out of it on the graph, in its current transform.
class MapCanvas
{
public:
    /// domain, graph  live longer than this
    /// dot            how large a detail still shows, units of the plane
    MapCanvas(Domain const & domain, Rect const & frame, double dot, Graph & graph);

    [[nodiscard]] MapPlane const & plane() const noexcept { return map; }

    [[nodiscard]] Rect const & frame() const noexcept { return edge; }

    /// Draws lines: cut at the frame and where the plane ends, long segments bent as the plane bends them. What
    /// shows no detail is left out. Between two points a line is straight in latitude and longitude, the short way
    /// round.
    /// is_closed  every line ends where it began
    void drawLines(MapLines const & lines, bool is_closed);

    /// Fills areas, each smaller than a quarter of the earth's girth and without holes. They may go over a pole's
    /// meridians, the edge of the plane and the frame.
    void fillAreas(MapLines const & rings);

    /// Draws the edge of what the plane shows of the earth.
    void drawEdge();

    /// Fills all of the earth that the frame shows.
    void fillEarth();

private:
    class LinePen;

    /// A side of a ring in x and y, from one of its points to another.
    struct Side
    {
        std::size_t from = 0;
        std::size_t to = 0;
    };

    void fillRing(Ring ring);
    void fillPlaneRing(Ring const & ring) const;
    [[nodiscard]] std::vector<Ring> cutAtFrame(Ring const & ring, double shift) const;
    [[nodiscard]] std::vector<Side> longSides(std::vector<bool> const & is_done) const;
    void followBends(std::vector<double> & lat, std::vector<double> & lon);
    [[nodiscard]] bool isNear(double x1, double y1, double x2, double y2) const;
    [[nodiscard]] std::vector<Ring> cutAtCircle(Ring const & ring) const;
    [[nodiscard]] std::vector<Ring> cutAtMeridian(Ring ring) const;
    [[nodiscard]] Ring refined(Ring const & ring) const;

    MapPlane map;
    Rect edge;
    double dot;
    double step; // degrees of latitude or longitude that a segment may have and be drawn straight
    std::vector<double> shifts; // of x: more than one where the frame shows more than a turn
    Graph & graph;
    std::vector<double> x; // work space
    std::vector<double> y;
};

/// Some pieces of lines with points put in where a segment has more than `step` degrees either way; longitudes run on
/// over the 180th meridian. Where is_closed, every piece ends where it began.
/// next   in: the first piece; out: behind the last one that was taken
/// dense  out
void densify(MapLines const & lines, std::size_t & next, double step, bool is_closed, MapLines & dense);

} // namespace Yul::detail
