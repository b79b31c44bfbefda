// Where points lie, directions and scale, derived domains, and lines across the seam.
#include "geo/Domain.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>
#include <vector>

namespace Yul {

namespace {

using detail::isMissing;

bool isPlain(float value)
{
    return std::isfinite(value) && !isMissing(value);
}

bool isPlain(Point const & point)
{
    return isPlain(point.x) && isPlain(point.y);
}

/// A direction turned by an angle, within 0 to 360, 360 excluded; missing where there is not one of the two.
float turned(float direction, double degrees)
{
    if (!isPlain(direction) || !std::isfinite(degrees))
        return Const::MISS;
    double const rest = std::fmod(static_cast<double>(direction) + degrees, 360);
    auto const angle = static_cast<float>(rest < 0 ? rest + 360 : rest);
    return angle < 360 ? angle : 0;
}

/// The crossing of the segment with a vertical line, x given.
float heightAt(double x, double x1, double y1, double x2, double y2)
{
    return static_cast<float>(x1 == x2 ? y1 : y1 + (y2 - y1) * (x - x1) / (x2 - x1));
}

} // namespace

bool Domain::hasLimits() const noexcept
{
    return !isMissing(limits.x1) || !isMissing(limits.x2);
}

double Domain::seamWidth() const noexcept
{
    if (val.proj == LATLON)
        return static_cast<double>(OFFSET_LL);
    if (val.proj == MERC) {
        auto const * const ellipsoid = std::get_if<detail::MercatorEllipsoid>(&currentKernel());
        double const radius = ellipsoid != nullptr ? ellipsoid->scale : earth_rad;
        return static_cast<double>(OFFSET_MERC) * radius / Const::EARTH;
    }
    return 0;
}

double Domain::middle() const noexcept
{
    return hasLimits() ? (static_cast<double>(limits.x1) + static_cast<double>(limits.x2)) / 2 : 0;
}

int Domain::where(Point const & point) const
{
    if (!isPlain(point) || !hasLimits())
        return Const::MISS;
    auto const [left, right] = std::minmax(limits.x1, limits.x2);
    auto const [below, above] = std::minmax(limits.y1, limits.y2);
    return (point.x < left ? LEFT : 0) | (point.x > right ? RIGHT : 0) | (point.y < below ? BELOW : 0) |
           (point.y > above ? ABOVE : 0);
}

int Domain::within(Point const & point) const
{
    return where(point) == INSIDE ? 1 : 0;
}

int Domain::within(EarthPoint const & earth) const
{
    Point point;
    return tran(earth, point) && adjust(point) ? within(point) : 0;
}

int Domain::withinExt(Point const & point, int extension) const
{
    if (!isPlain(point) || !hasLimits())
        return 0;
    auto const [left, right] = std::minmax(limits.x1, limits.x2);
    auto const [below, above] = std::minmax(limits.y1, limits.y2);
    double const wide = extension * std::fabs(static_cast<double>(val.dx));
    double const high = extension * std::fabs(static_cast<double>(val.dy));
    return static_cast<double>(point.x) >= static_cast<double>(left) - wide &&
                   static_cast<double>(point.x) <= static_cast<double>(right) + wide &&
                   static_cast<double>(point.y) >= static_cast<double>(below) - high &&
                   static_cast<double>(point.y) <= static_cast<double>(above) + high
               ? 1
               : 0;
}

int Domain::translate(Domain const & to, Point const & from, Point & point) const
{
    EarthPoint earth;
    if (isMap() != to.isMap() || !tran(from, earth)) {
        point = Point();
        return 0;
    }
    return to.tran(earth, point);
}

int Domain::translate(Domain const & to, GridPoint const & from, GridPoint & grid) const
{
    EarthPoint earth;
    if (isMap() != to.isMap() || !tran(from, earth)) {
        grid = GridPoint();
        return 0;
    }
    return to.tran(earth, grid);
}

int Domain::adjust(Point & point) const
{
    if (!isPlain(point))
        return 0;
    double const width = seamWidth();
    bool const is_out = !hasLimits() || (where(point) & (LEFT | RIGHT)) != 0;
    if (is_out && std::isnormal(width)) {
        double const turns = std::nearbyint((static_cast<double>(point.x) - middle()) / width);
        point.x = static_cast<float>(static_cast<double>(point.x) - turns * width);
    }
    return 1;
}

int Domain::adjust(Points & points) const
{
    int all = 1;
    for (Point & point : points.all())
        all &= adjust(point);
    return all;
}

detail::Distortion Domain::distortionAt(EarthPoint const & earth) const
{
    Point point;
    if (!tran(earth, point))
        return {detail::math::NONE, detail::math::NONE};
    auto const lat = static_cast<double>(earth.lat);
    double const lon = detail::math::oneTurn(static_cast<double>(earth.lon));
    return std::visit(
        [=](auto const & k) {
            if constexpr (detail::IS_MAP<std::decay_t<decltype(k)>>)
                return distortion(k, lat, lon);
            else
                return detail::Distortion{1, 0};
        },
        currentKernel());
}

float Domain::adjustDir(float angle, EarthPoint const & earth) const
{
    return turned(angle, distortionAt(earth).north);
}

float Domain::unadjustDir(float angle, EarthPoint const & earth) const
{
    return turned(angle, -distortionAt(earth).north);
}

float Domain::adjustDir(float angle, Point const & point) const
{
    EarthPoint earth;
    tran(point, earth);
    return adjustDir(angle, earth);
}

float Domain::unadjustDir(float angle, Point const & point) const
{
    EarthPoint earth;
    tran(point, earth);
    return unadjustDir(angle, earth);
}

float Domain::getMapFactor(EarthPoint const & earth) const
{
    double const scale = distortionAt(earth).scale;
    return detail::fitsFloat(scale) ? static_cast<float>(scale) : Const::MISS;
}

float Domain::calcEarthDist(EarthPoint const & a, EarthPoint const & b)
{
    auto const is_position = [](EarthPoint const & p) {
        return std::fabs(p.lat) <= 90 && std::fabs(static_cast<double>(p.lon)) <= detail::MOST_TURNS;
    };
    if (!is_position(a) || !is_position(b))
        return Const::MISS;
    // the haversine: exact for near points and never beyond 1 by more than rounding
    auto const lat1 = static_cast<double>(a.lat);
    auto const lat2 = static_cast<double>(b.lat);
    double const s_lat = detail::math::sinCos((lat2 - lat1) / 2).sin;
    double const s_lon =
        detail::math::sinCos((static_cast<double>(b.lon) - static_cast<double>(a.lon)) / 2).sin;
    double const chord =
        s_lat * s_lat + detail::math::sinCos(lat1).cos * detail::math::sinCos(lat2).cos * s_lon * s_lon;
    double const half = std::sqrt(std::min(chord, 1.0));
    double const angle = 2 * detail::math::DEGREE * detail::math::atan2(half, std::sqrt(1 - half * half));
    double const distance = earth_rad * angle;
    return earth_rad > 0 && detail::fitsFloat(distance) ? static_cast<float>(distance) : Const::MISS;
}

int Domain::scaleSize(int nx, int ny)
{
    DomainVal next = val;
    return next.scaleSize(nx, ny) ? set(next) : 0;
}

int Domain::scaleGrid(float factor)
{
    auto const scaled = [=](int n) { return std::nearbyint((n - 1.0) * static_cast<double>(factor)) + 1; };
    double const nx = scaled(val.nx);
    double const ny = scaled(val.ny);
    constexpr double MOST = std::numeric_limits<int>::max();
    if (!(factor > 0) || !(nx <= MOST) || !(ny <= MOST) || val.nx < 1 || val.ny < 1)
        return 0;
    return scaleSize(static_cast<int>(nx), static_cast<int>(ny));
}

int Domain::recentre(EarthPoint const & centre, float factor)
{
    Point point;
    if (!isPlain(factor) || factor <= 0 || !tran(centre, point))
        return 0;
    DomainVal next = val;
    next.clat = centre.lat;
    next.clon = centre.lon;
    if (!isMissing(val.dx))
        next.dx *= factor;
    if (!isMissing(val.dy))
        next.dy *= factor;
    Domain moved = *this;
    moved.set(next);
    if (hasLimits() && !moved.hasLimits())
        return 0;
    *this = moved;
    return 1;
}

int Domain::zoom(EarthPoint const & centre, float factor)
{
    return recentre(centre, factor);
}

int Domain::zoom(Point const & centre, float factor)
{
    EarthPoint earth;
    return tran(centre, earth) ? recentre(earth, factor) : 0;
}

int Domain::pan(EarthPoint const & centre)
{
    return recentre(centre, 1);
}

int Domain::pan(Point const & centre)
{
    return zoom(centre, 1);
}

int Domain::offset(Point const & point, float dx, float dy, Point & result) const
{
    Point const moved(point.x + dx, point.y + dy);
    bool const is_set = isPlain(point) && isPlain(dx) && isPlain(dy) && isPlain(moved);
    result = is_set ? moved : Point();
    return is_set ? 1 : 0;
}

int Domain::offsetLatLon(EarthPoint const & earth, float dx, float dy, EarthPoint & result) const
{
    Point point;
    if (!tran(earth, point) || !offset(point, dx, dy, point)) {
        result = EarthPoint();
        return 0;
    }
    return tran(point, result);
}

int Domain::wrapLine(Point const & from, Point const & to, Point & end, Point & start) const
{
    Point a = from;
    Point b = to;
    end = Point();
    start = Point();
    double const width = seamWidth();
    if (!adjust(a) || !adjust(b) || !std::isnormal(width))
        return 0;
    double const jump = static_cast<double>(b.x) - static_cast<double>(a.x);
    if (!(std::fabs(jump) > std::fabs(width) / 2))
        return 0;
    // The line leaves over the edge that is nearer to its first point and comes back over the other one.
    double const turn = std::copysign(width, -jump); // brings `to` next to `from`
    double const edge = middle() + std::copysign(width / 2, turn);
    float const height = heightAt(edge, static_cast<double>(a.x), static_cast<double>(a.y),
                                  static_cast<double>(b.x) + turn, static_cast<double>(b.y));
    end.set(static_cast<float>(edge), height);
    start.set(static_cast<float>(edge - turn), height);
    return 1;
}

int Domain::wrapLine(Points const & line, Points & pieces) const
{
    std::vector<Point> result;
    int count = 0;
    bool is_open = false;
    Point before;
    for (Point point : line.all()) {
        Point end;
        Point start;
        if (!adjust(point)) {
            is_open = false;
            continue;
        }
        if (is_open && wrapLine(before, point, end, start)) {
            result.insert(result.end(), {end, Point(), start});
            ++count;
        } else if (!is_open) {
            if (!result.empty())
                result.emplace_back();
            ++count;
        }
        result.push_back(point);
        before = point;
        is_open = true;
    }
    pieces.all() = std::move(result);
    return count;
}

int Domain::offsetLine(Points & line) const
{
    double const width = std::fabs(seamWidth());
    if (!std::isnormal(width))
        return 0;
    int shifted = 0;
    Point const * before = nullptr;
    for (Point & point : line.all()) {
        if (!isPlain(point))
            continue;
        if (before != nullptr) {
            double const jump = static_cast<double>(point.x) - static_cast<double>(before->x);
            double const turns = std::nearbyint(jump / width);
            shifted |= turns != 0 ? 1 : 0;
            point.x = static_cast<float>(static_cast<double>(point.x) - turns * width);
        }
        before = &point;
    }
    return shifted;
}

} // namespace Yul
