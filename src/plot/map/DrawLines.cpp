// Lines of a map: cut at the frame, at the horizon and at the meridian where the plane is cut open.
#include "core/Const.h"
#include "plot/Clip.h"
#include "plot/map/HalfTurn.h"
#include "plot/map/MapCanvas.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {
namespace {

constexpr double LONG = 0.05;  // of the frame: a segment as long is looked at more closely
constexpr double BREAK = 0.25; // of the frame: so long that its ends do not belong together
constexpr std::size_t SAMPLES = 32;
constexpr double ON_CUT = 1e-6;   // degrees
constexpr int MOST_POINTS = 1000; // of one path on the page

} // namespace

/// Follows lines from point to point and draws what of them shows.
class MapCanvas::LinePen
{
public:
    LinePen(MapCanvas const & on, double by)
        : map(on.map), frame(on.edge), shift(by), dot(on.dot), graph(on.graph),
          size(static_cast<double>(std::max(frame.getWidth(), frame.getHeight())))
    {
    }

    /// Goes on with some pieces; a last line may be left open.
    void draw(MapLines const & lines, std::vector<double> const & x, std::vector<double> const & y)
    {
        for (MapLines::Piece const & piece : lines.pieces) {
            if (!piece.is_continued)
                finish();
            Sample before = sampleAt(lines, x, y, piece.begin);
            for (std::size_t i = piece.begin + 1; i < piece.end; ++i) {
                Sample const now = sampleAt(lines, x, y, i);
                join(before, now);
                before = now;
            }
        }
    }

    /// A ring of points in the plane.
    void drawRing(std::vector<double> const & x, std::vector<double> const & y)
    {
        for (std::size_t i = 0; i < x.size(); ++i) {
            std::size_t const next = (i + 1) % x.size();
            if (isMissing(x[i]) || isMissing(x[next]))
                finish();
            else
                lineTo({{}, x[i] + shift, y[i], 0, true}, {{}, x[next] + shift, y[next], 0, true});
        }
        finish();
    }

    /// Ends the line that is being drawn.
    void finish()
    {
        if (has_rest)
            points.add(rest);
        if (points.getNum() > 1)
            graph.drawLine(points);
        points.clear();
        has_rest = false;
    }

private:
    struct Sample
    {
        Place place;
        double x;
        double y;
        double across; // degrees from the middle meridian, where the plane is cut open
        bool is_shown;
    };

    Sample sampleOf(Place const & place, double x, double y) const
    {
        bool const is_shown = !isMissing(x) && place.lat >= map.south() && place.lat <= map.north();
        return {place, x + shift, y, map.hasCircle() ? 0 : map.across(place.lon), is_shown};
    }

    Sample sampleAt(MapLines const & lines,
                    std::vector<double> const & x,
                    std::vector<double> const & y,
                    std::size_t i) const
    {
        return sampleOf({lines.lat[i], lines.lon[i]}, x[i], y[i]);
    }

    /// Samples from a share of the segment to another, both ends included.
    std::vector<Sample> samples(Sample const & a, Sample const & b, double from, double to) const
    {
        std::vector<double> lat;
        std::vector<double> lon;
        for (std::size_t i = 0; i <= SAMPLES; ++i) {
            double const t = from + (to - from) * static_cast<double>(i) / SAMPLES;
            lat.push_back(a.place.lat + (b.place.lat - a.place.lat) * t);
            lon.push_back(a.place.lon + (b.place.lon - a.place.lon) * t);
        }
        std::vector<double> x;
        std::vector<double> y;
        map.project(lat, lon, x, y);
        std::vector<Sample> found;
        for (std::size_t i = 0; i <= SAMPLES; ++i)
            found.push_back(sampleOf({lat[i], lon[i]}, x[i], y[i]));
        return found;
    }

    static double distance(Sample const & a, Sample const & b)
    {
        return std::max(std::fabs(b.x - a.x), std::fabs(b.y - a.y));
    }

    void join(Sample const & a, Sample const & b)
    {
        if (!a.is_shown && !b.is_shown)
            return;
        if (a.is_shown != b.is_shown)
            joinAtEdge(a, b);
        else if (std::fabs(b.across - a.across) > 180)
            joinOverCut(a, b);
        else if (distance(a, b) > LONG * size)
            joinBent(a, b);
        else
            lineTo(a, b);
    }

    void joinBent(Sample const & a, Sample const & b)
    {
        auto const all = samples(a, b, 0, 1);
        for (std::size_t i = 0; i < SAMPLES; ++i) {
            if (all[i].is_shown && all[i + 1].is_shown && distance(all[i], all[i + 1]) < BREAK * size)
                lineTo(all[i], all[i + 1]);
            else
                finish();
        }
    }

    /// One end has no image: up to where the images end.
    void joinAtEdge(Sample const & a, Sample const & b)
    {
        auto const all = samples(a, b, 0, 1);
        for (std::size_t i = 0; i < SAMPLES; ++i) {
            Sample const & p = all[i];
            Sample const & q = all[i + 1];
            if (p.is_shown && q.is_shown) {
                lineTo(p, q);
            } else if (p.is_shown != q.is_shown) {
                auto const fine = samples(p, q, 0, 1);
                auto const shown = [](Sample const & s) { return s.is_shown; };
                if (p.is_shown) {
                    auto const last = std::find_if_not(fine.begin(), fine.end(), shown) - 1;
                    lineTo(p, *last);
                    finish();
                } else
                    lineTo(*std::find_if(fine.begin(), fine.end(), shown), q);
            }
        }
    }

    void joinOverCut(Sample const & a, Sample const & b)
    {
        auto const isOnCut = [](Sample const & s) { return std::fabs(s.across) > 180 - ON_CUT; };
        double const side = (isOnCut(a) ? -b.across : a.across) > 0 ? 1 : -1;
        double const from = isOnCut(a) ? side * 180 : a.across;
        double const to = isOnCut(b) ? side * 180 : b.across + side * 360;
        double const t = from == to ? 0 : (side * 180 - from) / (to - from);
        double const lat = a.place.lat + (b.place.lat - a.place.lat) * t;
        std::vector<double> x;
        std::vector<double> y;
        double const lon = map.middleLon();
        map.project({lat, lat}, {lon + side * HALF_ROUND, lon - side * HALF_ROUND}, x, y);
        if (isMissing(x[0]) || isMissing(x[1]))
            return finish();
        // a point on the cut belongs to both sides
        if (!isOnCut(a))
            lineTo(a, {{lat, lon + side * HALF_ROUND}, x[0] + shift, y[0], side * 180, true});
        finish();
        if (!isOnCut(b))
            lineTo({{lat, lon - side * HALF_ROUND}, x[1] + shift, y[1], -side * 180, true}, b);
    }

    [[nodiscard]] bool isInFrame(Sample const & s) const
    {
        return s.x >= static_cast<double>(frame.x1) && s.x <= static_cast<double>(frame.x2) &&
               s.y >= static_cast<double>(frame.y1) && s.y <= static_cast<double>(frame.y2);
    }

    /// Draws a straight segment; a is where the pen stands, or it is lifted.
    void lineTo(Sample const & a, Sample const & b)
    {
        if (isInFrame(a) && isInFrame(b)) {
            if (points.getNum() == 0)
                begin(a.x, a.y);
            extend(b.x, b.y);
            return;
        }
        Kept kept;
        if (!clipLine(frame, a.x, a.y, b.x, b.y, kept))
            return finish();
        auto const x = [&](double t) { return a.x + t * (b.x - a.x); };
        auto const y = [&](double t) { return a.y + t * (b.y - a.y); };
        if (kept.from > 0 || points.getNum() == 0) {
            finish();
            begin(x(kept.from), y(kept.from));
        }
        extend(x(kept.to), y(kept.to));
        if (kept.to < 1)
            finish();
    }

    void begin(double x, double y)
    {
        points.add(Point(static_cast<float>(x), static_cast<float>(y)));
        last_x = x;
        last_y = y;
        has_rest = false;
    }

    /// A point that shows no detail waits: it counts only where the line ends there.
    void extend(double x, double y)
    {
        has_rest = std::fabs(x - last_x) < dot && std::fabs(y - last_y) < dot;
        if (has_rest) {
            rest = Point(static_cast<float>(x), static_cast<float>(y));
            return;
        }
        begin(x, y);
        if (points.getNum() >= MOST_POINTS) {
            finish();
            begin(x, y);
        }
    }

    MapPlane const & map;
    Rect frame;
    double shift;
    double dot;
    Graph & graph;
    double size;
    Points points;
    double last_x = 0;
    double last_y = 0;
    Point rest;
    bool has_rest = false;
};

void MapCanvas::drawLines(MapLines const & lines, bool is_closed)
{
    for (double const shift : shifts) {
        LinePen pen(*this, shift);
        MapLines dense;
        for (std::size_t next = 0; next < lines.pieces.size();) {
            densify(lines, next, step, is_closed, dense);
            map.project(dense.lat, dense.lon, x, y);
            pen.draw(dense, x, y);
        }
        pen.finish();
    }
}

void MapCanvas::drawEdge()
{
    if (map.turn() > 0) // a plane that repeats itself ends nowhere
        return;
    map.outline(x, y);
    for (double const shift : shifts)
        LinePen(*this, shift).drawRing(x, y);
}

} // namespace Yul::detail
