// Areas of a map: cut at the frame, at the horizon and at the meridian where the plane is cut open.
#include "core/Const.h"
#include "plot/map/HalfTurn.h"
#include "plot/map/MapCanvas.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {
namespace {

constexpr double MOST_PARTS = 128; // of a side

/// The box of a ring.
struct Box
{
    double low_a = 1e300;
    double high_a = -1e300;
    double low_b = 1e300;
    double high_b = -1e300;
};

Box boxOf(Ring const & ring)
{
    Box box;
    for (RingPoint const & p : ring) {
        box.low_a = std::min(box.low_a, p.a);
        box.high_a = std::max(box.high_a, p.a);
        box.low_b = std::min(box.low_b, p.b);
        box.high_b = std::max(box.high_b, p.b);
    }
    return box;
}

constexpr auto STRAIGHT = [](RingPoint, RingPoint, Ring &) {};

/// Keeps what lies on one side of a value of the first or second coordinate.
std::vector<Ring> cutAt(std::vector<Ring> const & rings, bool is_second, double at, bool keeps_below)
{
    auto const value = [=](RingPoint p) { return is_second ? p.b : p.a; };
    std::vector<Ring> kept;
    for (Ring const & ring : rings)
        cutRing(
            ring, [&](RingPoint p) { return keeps_below ? value(p) <= at : value(p) >= at; },
            [=](RingPoint p) { return is_second ? p.a : p.b; }, STRAIGHT, kept);
    return kept;
}

/// Puts a point on every side that runs along the meridian over the latitude.
void addOnMeridian(Ring & ring, double lat, double lon)
{
    for (std::size_t i = 0; i < ring.size(); ++i) {
        RingPoint const p = ring[i];
        RingPoint const q = ring[(i + 1) % ring.size()];
        if (std::fabs(p.b - lon) < 1e-9 && std::fabs(q.b - lon) < 1e-9 && (p.a - lat) * (q.a - lat) < 0)
            ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(++i), {lat, lon});
    }
}

} // namespace

/// The ring with points put in on long sides.
Ring MapCanvas::refined(Ring const & ring) const
{
    Ring dense;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        RingPoint const p = ring[i];
        RingPoint const q = ring[(i + 1) % ring.size()];
        double const longest = std::max(std::fabs(q.a - p.a), std::fabs(q.b - p.b));
        int const parts = static_cast<int>(std::clamp(std::ceil(longest / step), 1., MOST_PARTS));
        for (int k = 0; k < parts; ++k)
            dense.push_back({p.a + (q.a - p.a) * k / parts, p.b + (q.b - p.b) * k / parts});
    }
    return dense;
}

std::vector<Ring> MapCanvas::cutAtCircle(Ring const & ring) const
{
    Box const box = boxOf(ring);
    std::vector<Ring> whole = {ring};
    Place far{};
    if (map.hasFarPoint(far)) {
        double const mid = (box.low_b + box.high_b) / 2;
        double const lon = mid + halfTurn(far.lon - mid);
        if (far.lat >= box.low_a && far.lat <= box.high_a && lon > box.low_b && lon < box.high_b) {
            std::vector<Ring> const east = cutAt(whole, true, lon, false);
            whole = cutAt(whole, true, lon, true);
            whole.insert(whole.end(), east.begin(), east.end());
            for (Ring & part : whole)
                addOnMeridian(part, far.lat, lon);
        }
    }
    std::vector<Ring> kept;
    for (Ring const & part : whole) {
        Box const inner = boxOf(part);
        double const towards =
            map.bearing((inner.low_a + inner.high_a) / 2, (inner.low_b + inner.high_b) / 2);
        auto const along = [&](RingPoint p) { return halfTurn(map.bearing(p.a, p.b) - towards); };
        auto const followCircle = [&](RingPoint from, RingPoint to, Ring & out) {
            double const start = along(from);
            double const turn = along(to) - start;
            int const parts = static_cast<int>(std::ceil(std::fabs(turn)));
            for (int i = 1; i < parts; ++i) {
                Place const place = map.onCircle(towards + start + turn * i / parts);
                out.push_back({place.lat, place.lon});
            }
        };
        cutRing(
            refined(part), [&](RingPoint p) { return map.depth(p.a, p.b) >= 0; }, along, followCircle, kept);
    }
    return kept;
}

std::vector<Ring> MapCanvas::cutAtMeridian(Ring ring) const
{
    Box box = boxOf(ring);
    double const mid = (box.low_b + box.high_b) / 2;
    double const move = halfTurn(mid - map.middleLon()) - mid;
    for (RingPoint & p : ring)
        p.b += move;
    box.low_b += move;
    box.high_b += move;
    std::vector<Ring> parts = {std::move(ring)};
    if (box.low_a < map.south())
        parts = cutAt(parts, false, map.south(), false);
    if (box.high_a > map.north())
        parts = cutAt(parts, false, map.north(), true);
    for (double const side : {-180., 180.}) {
        if (side < 0 ? box.low_b >= side : box.high_b <= side)
            continue;
        std::vector<Ring> beyond = cutAt(parts, true, side, side > 0);
        parts.swap(beyond); // `beyond` now has the whole, parts what stays
        for (Ring & part : cutAt(beyond, true, side, side < 0)) {
            for (RingPoint & p : part)
                p.b -= 2 * side;
            parts.push_back(std::move(part));
        }
    }
    for (Ring & part : parts) {
        part = refined(part);
        for (RingPoint & p : part)
            p.b = map.middleLon() + std::clamp(p.b, -HALF_ROUND, HALF_ROUND);
    }
    return parts;
}

/// The sides of a ring in the plane that are long and near the frame, but for those that are done.
std::vector<MapCanvas::Side> MapCanvas::longSides(std::vector<bool> const & is_done) const
{
    constexpr double LONG = 0.03; // of the frame
    double const least = LONG * static_cast<double>(std::max(edge.getWidth(), edge.getHeight()));
    std::vector<Side> sides;
    for (std::size_t i = 0; i < x.size(); ++i) {
        std::size_t const j = (i + 1) % x.size();
        bool const is_long = !is_done[i] && !isMissing(x[i]) && !isMissing(x[j]) &&
                             std::max(std::fabs(x[j] - x[i]), std::fabs(y[j] - y[i])) > least;
        if (is_long && isNear(x[i], y[i], x[j], y[j]))
            sides.push_back({i, j});
    }
    return sides;
}

/// Puts points in on long sides that are bent: round the far point and beside poles a short way on the earth is a long
/// one on the map. lat, lon and their images x, y grow together.
void MapCanvas::followBends(std::vector<double> & lat, std::vector<double> & lon)
{
    constexpr int MOST_HALVINGS = 12;
    std::vector<bool> is_done(lat.size(), false);
    for (int round = 0; round < MOST_HALVINGS; ++round) {
        auto const sides = longSides(is_done);
        if (sides.empty())
            return;
        std::vector<double> mid_lat;
        std::vector<double> mid_lon;
        for (auto const & [i, j] : sides) {
            mid_lat.push_back((lat[i] + lat[j]) / 2);
            mid_lon.push_back(lon[i] + std::remainder(lon[j] - lon[i], 360.) / 2);
        }
        std::vector<double> mid_x;
        std::vector<double> mid_y;
        map.project(mid_lat, mid_lon, mid_x, mid_y);
        for (std::size_t k = sides.size(); k-- > 0;) { // from the back: places before it stay
            auto const & [i, j] = sides[k];
            is_done[i] = isMissing(mid_x[k]) ||
                         std::hypot(mid_x[k] - (x[i] + x[j]) / 2, mid_y[k] - (y[i] + y[j]) / 2) < dot;
            if (is_done[i])
                continue;
            auto const at = static_cast<std::ptrdiff_t>(i + 1);
            lat.insert(lat.begin() + at, mid_lat[k]);
            lon.insert(lon.begin() + at, mid_lon[k]);
            x.insert(x.begin() + at, mid_x[k]);
            y.insert(y.begin() + at, mid_y[k]);
            is_done.insert(is_done.begin() + at, false);
        }
    }
}

/// True when the box round two points touches the frame or its surroundings.
bool MapCanvas::isNear(double x1, double y1, double x2, double y2) const
{
    double const wide = static_cast<double>(edge.getWidth()) / 4;
    double const high = static_cast<double>(edge.getHeight()) / 4;
    return shifts.size() > 1 || (std::max(x1, x2) > static_cast<double>(edge.x1) - wide &&
                                 std::min(x1, x2) < static_cast<double>(edge.x2) + wide &&
                                 std::max(y1, y2) > static_cast<double>(edge.y1) - high &&
                                 std::min(y1, y2) < static_cast<double>(edge.y2) + high);
}

/// Fills a ring of latitudes and longitudes.
void MapCanvas::fillRing(Ring ring)
{
    for (std::size_t i = 1; i < ring.size(); ++i) // longitudes that run on
        ring[i].b -= 360 * std::nearbyint((ring[i].b - ring[i - 1].b) / 360);
    std::vector<double> lat;
    std::vector<double> lon;
    for (Ring const & part : map.hasCircle() ? cutAtCircle(ring) : cutAtMeridian(std::move(ring))) {
        lat.clear();
        lon.clear();
        for (RingPoint const & p : part) {
            lat.push_back(p.a);
            lon.push_back(p.b);
        }
        map.project(lat, lon, x, y);
        followBends(lat, lon);
        Ring image;
        for (std::size_t i = 0; i < x.size(); ++i)
            if (!isMissing(x[i]))
                image.push_back({x[i], y[i]});
        fillPlaneRing(image);
    }
}

/// What of a ring in the plane lies in the frame of a map that is shifted by so much.
std::vector<Ring> MapCanvas::cutAtFrame(Ring const & ring, double shift) const
{
    Box const box = boxOf(ring);
    double const left = static_cast<double>(edge.x1) - shift;
    double const right = static_cast<double>(edge.x2) - shift;
    auto const bottom = static_cast<double>(edge.y1);
    auto const top = static_cast<double>(edge.y2);
    std::vector<Ring> parts = {ring};
    if (box.low_a < left)
        parts = cutAt(parts, false, left, false);
    if (box.high_a > right)
        parts = cutAt(parts, false, right, true);
    if (box.low_b < bottom)
        parts = cutAt(parts, true, bottom, false);
    if (box.high_b > top)
        parts = cutAt(parts, true, top, true);
    return parts;
}

/// Fills a ring in the plane.
void MapCanvas::fillPlaneRing(Ring const & ring) const
{
    for (double const shift : shifts)
        for (Ring const & part : cutAtFrame(ring, shift)) {
            Points points;
            RingPoint last = {1e300, 1e300};
            for (RingPoint const & p : part) {
                if (std::fabs(p.a - last.a) < dot && std::fabs(p.b - last.b) < dot)
                    continue;
                points.add(Point(static_cast<float>(p.a + shift), static_cast<float>(p.b)));
                last = p;
            }
            graph.drawFill(points);
        }
}

void MapCanvas::fillAreas(MapLines const & rings)
{
    for (MapLines::Piece const & piece : rings.pieces) {
        Ring ring;
        for (std::size_t i = piece.begin; i < piece.end; ++i)
            ring.push_back({rings.lat[i], rings.lon[i]});
        fillRing(std::move(ring));
    }
}

void MapCanvas::fillEarth()
{
    map.outline(x, y);
    Ring ring;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (!isMissing(x[i]))
            ring.push_back({x[i], y[i]});
    fillPlaneRing(ring);
}

} // namespace Yul::detail
