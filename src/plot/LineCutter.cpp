#include "plot/LineCutter.h"

#include "core/Const.h"
#include "plot/Clip.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Yul::detail {
namespace {

constexpr float NEAR = 1e-4F; // of the side that a line ends on
constexpr double JUMP = 0.2;  // of the frame: two samples this far apart are not joined

/// How far a point is from an edge of the frame.
struct EdgeDistance
{
    GraticuleTick::Edge edge;
    float distance;
    float side; // axes may have scales of their own
};

/// From a point to a line.
double distanceTo(Point const & a, Point const & b, Point const & p)
{
    double const dx = static_cast<double>(b.x) - static_cast<double>(a.x);
    double const dy = static_cast<double>(b.y) - static_cast<double>(a.y);
    double const px = static_cast<double>(p.x) - static_cast<double>(a.x);
    double const py = static_cast<double>(p.y) - static_cast<double>(a.y);
    double const length = std::hypot(dx, dy);
    return length > 0 ? std::abs(dx * py - dy * px) / length : std::hypot(px, py);
}

} // namespace

LineCutter::LineCutter(Rect const & f, Graticule & g)
    : frame(f), graticule(g), size(std::max(f.getWidth(), f.getHeight()))
{
    double const slack_x = 1e-6 * static_cast<double>(f.getWidth());
    double const slack_y = 1e-6 * static_cast<double>(f.getHeight());
    outer = Rect(static_cast<float>(static_cast<double>(f.x1) - slack_x),
                 static_cast<float>(static_cast<double>(f.y1) - slack_y),
                 static_cast<float>(static_cast<double>(f.x2) + slack_x),
                 static_cast<float>(static_cast<double>(f.y2) + slack_y));
}

void LineCutter::cut(LineKind kind, float value, std::vector<double> const & x, std::vector<double> const & y)
{
    piece = {kind, value, {}};
    for (std::size_t i = 0; i + 1 < x.size(); ++i) {
        bool const is_line = !isMissing(x[i]) && !isMissing(x[i + 1]) &&
                             std::hypot(x[i + 1] - x[i], y[i + 1] - y[i]) < JUMP * static_cast<double>(size);
        Kept kept;
        if (!is_line || !clipLine(outer, x[i], y[i], x[i + 1], y[i + 1], kept)) {
            finish();
            continue;
        }
        auto const at = [&](double t) {
            return Point(static_cast<float>(x[i] + t * (x[i + 1] - x[i])),
                         static_cast<float>(y[i] + t * (y[i + 1] - y[i])));
        };
        if (piece.points.getNum() == 0 || kept.from > 0) {
            finish();
            piece.points.add(at(kept.from));
        }
        piece.points.add(at(kept.to));
        if (kept.to < 1)
            finish();
    }
    finish();
}

void LineCutter::finish()
{
    auto & points = piece.points.all();
    if (points.size() > 1) {
        note(points.front());
        note(points.back());
        straighten();
        graticule.lines.push_back(piece);
    }
    points.clear();
}

/// A line's end on the frame is a tick; one inside is only where the line ends.
void LineCutter::note(Point const & end)
{
    EdgeDistance const edges[] = {
        {GraticuleTick::LEFT, std::abs(end.x - frame.x1), frame.getWidth()},
        {GraticuleTick::RIGHT, std::abs(end.x - frame.x2), frame.getWidth()},
        {GraticuleTick::BOTTOM, std::abs(end.y - frame.y1), frame.getHeight()},
        {GraticuleTick::TOP, std::abs(end.y - frame.y2), frame.getHeight()},
    };

    for (auto const & [edge, distance, side] : edges)
        if (distance < NEAR * side && isNew(edge, end))
            graticule.ticks.push_back({piece.kind, piece.value, edge, end.x, end.y});
}

bool LineCutter::isNew(GraticuleTick::Edge edge, Point const & end) const
{
    return std::none_of(graticule.ticks.begin(), graticule.ticks.end(), [&](GraticuleTick const & tick) {
        return tick.edge == edge && tick.kind == piece.kind && tick.value == piece.value &&
               std::abs(tick.x - end.x) < NEAR * frame.getWidth() &&
               std::abs(tick.y - end.y) < NEAR * frame.getHeight();
    });
}

/// Drops points that the line passes anyway.
/// Source: D. H. Douglas and T. K. Peucker, Algorithms for the reduction of the number of points required
/// to represent a digitized line, The Canadian Cartographer 10 (1973).
void LineCutter::straighten()
{
    auto & points = piece.points.all();
    std::vector<bool> kept(points.size(), false);
    kept.front() = kept.back() = true;
    std::vector<std::pair<std::size_t, std::size_t>> parts = {{0, points.size() - 1}};
    while (!parts.empty()) {
        auto const [first, last] = parts.back();
        parts.pop_back();
        std::size_t farthest = first;
        double most = FLATNESS * static_cast<double>(size);
        for (std::size_t i = first + 1; i < last; ++i) {
            double const distance = distanceTo(points[first], points[last], points[i]);
            if (distance > most) {
                most = distance;
                farthest = i;
            }
        }
        if (farthest == first)
            continue;
        kept[farthest] = true;
        parts.emplace_back(first, farthest);
        parts.emplace_back(farthest, last);
    }
    std::size_t next = 0;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (kept[i])
            points[next++] = points[i];
    points.resize(next);
}

} // namespace Yul::detail
