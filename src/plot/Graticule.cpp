#include "plot/Graticule.h"

#include "core/Format.h"
#include "plot/Clip.h"
#include "plot/LineCutter.h"
#include "plot/map/HalfTurn.h"
#include "plot/map/MapPlane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Yul::detail {
namespace {

constexpr int SAMPLES = 360; // along one line
constexpr int LATTICE = 41;  // points a side by which the frame is looked over
constexpr double MOST_PARALLELS = 7;
constexpr double MOST_MERIDIANS = 12;

constexpr double DEGREE_STEPS[] = {.01, .02, .05, .1, .2, .5, 1, 2, 5, 10, 15, 20, 30, 45, 90};

struct Spread
{
    double min;
    double max;

    [[nodiscard]] double width() const { return max - min; }
};

/// What of the earth a frame shows: longitudes as offsets from a middle one.
struct View
{
    Spread lat{91, -91};
    Spread lon{181, -181};
    double mid_lon = 0;
    bool has_pole = false; // a pole inside, where all meridians meet

    [[nodiscard]] bool isEmpty() const { return lat.min > lat.max; }
};

bool polePoint(Domain const & domain, Rect const & frame, double lat)
{
    std::vector<double> const lats(2, lat);
    std::vector<double> const lons = {0, 90};
    std::vector<double> x(2);
    std::vector<double> y(2);
    if (domain.forward(lats, lons, x, y) != 2)
        return false;
    double const size = static_cast<double>(std::max(frame.getWidth(), frame.getHeight()));
    return isInside(frame, static_cast<float>(x[0]), static_cast<float>(y[0])) &&
           std::hypot(x[1] - x[0], y[1] - y[0]) < FLATNESS * size;
}

View lookOver(Domain const & domain, Rect const & frame)
{
    std::vector<double> x;
    std::vector<double> y;
    for (int j = 0; j < LATTICE; ++j) {
        for (int i = 0; i < LATTICE; ++i) {
            x.push_back(static_cast<double>(frame.x1) +
                        static_cast<double>(frame.getWidth()) * i / (LATTICE - 1));
            y.push_back(static_cast<double>(frame.y1) +
                        static_cast<double>(frame.getHeight()) * j / (LATTICE - 1));
        }
    }
    std::vector<double> lat(x.size());
    std::vector<double> lon(x.size());
    domain.inverse(x, y, lat, lon);

    View view;
    double const middle = lon[lon.size() / 2];
    view.mid_lon = isMissing(middle) ? static_cast<double>(domain.get().clon) : middle;
    for (std::size_t i = 0; i < lat.size(); ++i) {
        if (isMissing(lat[i]) || isMissing(lon[i]))
            continue;
        double const offset = halfTurn(lon[i] - view.mid_lon);
        view.lat = {std::min(view.lat.min, lat[i]), std::max(view.lat.max, lat[i])};
        bool const is_opposite = 180 - std::abs(offset) < 1e-6; // it counts on both sides
        view.lon = {std::min(view.lon.min, is_opposite ? -180 : offset),
                    std::max(view.lon.max, is_opposite ? 180 : offset)};
    }
    for (double const pole : {-90., 90.}) {
        if (view.isEmpty() || !polePoint(domain, frame, pole))
            continue;
        view.has_pole = true;
        view.lat = {std::min(view.lat.min, pole), std::max(view.lat.max, pole)};
        view.lon = {-180, 180};
    }
    return view;
}

double degreeStep(Spread const & spread, double most)
{
    for (double const step : DEGREE_STEPS)
        if (spread.width() / step <= most)
            return step;
    return 90;
}

/// The step asked for, unless it fills the frame with lines.
std::optional<double> givenStep(float step, Spread const & spread)
{
    constexpr double MOST_LINES = 400;
    if (isMissing(step) || !(step > 0) || spread.width() / static_cast<double>(step) > MOST_LINES)
        return std::nullopt;
    return static_cast<double>(step);
}

/// 1, 2 or 5 times a power of ten.
double axisStep(Spread const & spread, double most)
{
    double const raw = spread.width() / most;
    double const power = std::pow(10., std::floor(std::log10(raw)));
    for (double const factor : {1., 2., 5.})
        if (raw <= factor * power)
            return factor * power;
    return 10 * power;
}

/// The multiples of a step inside a range.
std::vector<double> multiples(Spread const & spread, double step)
{
    std::vector<double> found;
    double const slack = 1e-6;
    double const first = std::ceil(spread.min / step - slack);
    double const last = std::floor(spread.max / step + slack);
    for (int i = 0; first + i <= last; ++i)
        found.push_back((first + i) * step + 0.0); // no "-0"
    return found;
}

/// A value at each sample from one end of a range to the other.
std::vector<double> samples(double from, double to)
{
    std::vector<double> values;
    for (int i = 0; i <= SAMPLES; ++i)
        values.push_back(from + (to - from) * i / SAMPLES);
    return values;
}

void addMapLine(MapPlane const & plane,
                LineKind kind,
                double value,
                std::vector<double> const & lat,
                std::vector<double> const & lon,
                LineCutter & cutter)
{
    std::vector<double> x;
    std::vector<double> y;
    plane.project(lat, lon, x, y);
    cutter.cut(kind, static_cast<float>(value), x, y);
}

/// Whether two meridians are one line in the plane; on both sides of a seam they are not.
bool areSame(
    MapPlane const & plane, Rect const & frame, std::vector<double> const & lat, double lon, double other)
{
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> other_x;
    std::vector<double> other_y;
    plane.project(lat, std::vector<double>(lat.size(), lon), x, y);
    plane.project(lat, std::vector<double>(lat.size(), other), other_x, other_y);
    double const near = FLATNESS * static_cast<double>(std::max(frame.getWidth(), frame.getHeight()));
    for (std::size_t i = 0; i < lat.size(); ++i)
        if (std::hypot(x[i] - other_x[i], y[i] - other_y[i]) > near)
            return false;
    return true;
}

void addMapLines(Domain const & domain, Rect const & frame, GraticuleStep const & step, LineCutter & cutter)
{
    View const view = lookOver(domain, frame);
    if (view.isEmpty())
        return;
    MapPlane const plane(domain, frame);
    double const lat_step = givenStep(step.lat, view.lat).value_or(degreeStep(view.lat, MOST_PARALLELS));
    double const lon_step = givenStep(step.lon, view.lon).value_or(degreeStep(view.lon, MOST_MERIDIANS));

    // A little beyond what the lattice saw, so that lines surely reach the frame.
    double const lat_slack = view.lat.width() / (LATTICE - 1);
    double const lon_slack = view.lon.width() / (LATTICE - 1);
    Spread const lat = {std::max(view.lat.min - lat_slack, -90.), std::min(view.lat.max + lat_slack, 90.)};
    bool const is_round = view.lon.width() + 1.5 * lon_slack >= 360; // its ends may be one and the same
    Spread const lon =
        is_round ? Spread{view.mid_lon - HALF_ROUND, view.mid_lon + HALF_ROUND}
                 : Spread{view.mid_lon + view.lon.min - lon_slack, view.mid_lon + view.lon.max + lon_slack};

    for (double const value : multiples(lat, lat_step))
        if (std::abs(value) < 90)
            addMapLine(plane, LineKind::PARALLEL, value, std::vector<double>(SAMPLES + 1, value),
                       samples(lon.min, lon.max), cutter);

    double const end_lat = 90 - lat_step; // where most meridians end before a pole
    for (double const value : multiples(lon, lon_step)) {
        bool const is_through = !view.has_pole || std::remainder(value, 90.) == 0;
        Spread const reach =
            is_through ? lat : Spread{std::max(lat.min, -end_lat), std::min(lat.max, end_lat)};
        std::vector<double> const along = samples(reach.min, reach.max);
        double const drawn = std::clamp(value, lon.min, lon.max);
        bool const is_second = value > lon.min + 360 - lon_step / 2;
        if (!is_second || !areSame(plane, frame, along, drawn, lon.min))
            addMapLine(plane, LineKind::MERIDIAN, halfTurn(value), along,
                       std::vector<double>(SAMPLES + 1, drawn), cutter);
    }
}

void addAxisLines(Rect const & frame, LineCutter & cutter)
{
    Spread const x = {static_cast<double>(frame.x1), static_cast<double>(frame.x2)};
    Spread const y = {static_cast<double>(frame.y1), static_cast<double>(frame.y2)};
    for (double const value : multiples(x, axisStep(x, MOST_MERIDIANS))) {
        std::vector<double> const along = samples(y.min, y.max);
        cutter.cut(LineKind::X_AXIS, static_cast<float>(value), std::vector<double>(along.size(), value),
                   along);
    }
    for (double const value : multiples(y, axisStep(y, MOST_PARALLELS))) {
        std::vector<double> const along = samples(x.min, x.max);
        cutter.cut(LineKind::Y_AXIS, static_cast<float>(value), along,
                   std::vector<double>(along.size(), value));
    }
}

bool isFrame(Rect const & frame)
{
    return std::isfinite(frame.x1 + frame.x2 + frame.y1 + frame.y2) && frame.getWidth() > 0 &&
           frame.getHeight() > 0;
}

} // namespace

Graticule makeGraticule(Domain const & domain, Rect const & frame, GraticuleStep const & step)
{
    Graticule graticule;
    if (!isFrame(frame))
        return graticule;
    LineCutter cutter(frame, graticule);
    int const proj = domain.get().proj;
    if (domain.isMap())
        addMapLines(domain, frame, step, cutter);
    else if (proj >= Domain::PIXEL && proj <= Domain::CAT && proj != Domain::POLAR && proj != Domain::XLOGP)
        addAxisLines(frame, cutter);
    return graticule;
}

std::string graticuleLabel(LineKind kind, float value)
{
    constexpr char DEGREE[] = "\xC2\xB0";
    double const size = std::abs(static_cast<double>(value));
    bool const is_plain = size == 0 || (kind == LineKind::MERIDIAN && size == 180);
    switch (kind) {
    case LineKind::PARALLEL:
        return format("%g%s%s", size, DEGREE, is_plain ? "" : value > 0 ? "N" : "S");
    case LineKind::MERIDIAN:
        return format("%g%s%s", size, DEGREE, is_plain ? "" : value > 0 ? "E" : "W");
    default:
        return format("%g", static_cast<double>(value));
    }
}

} // namespace Yul::detail
