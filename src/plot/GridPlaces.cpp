#include "plot/GridPlaces.h"

#include "core/Const.h"
#include "plot/Clip.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace Yul::detail {
namespace {

/// Projections whose plane is cut along the meridian opposite the reference longitude.
bool hasSeam(int proj)
{
    return proj == Domain::LATLON || proj == Domain::MERC || proj == Domain::LAMB || proj == Domain::ALBERS ||
           proj == Domain::MOLL;
}

/// Latitudes that the projection moves to its edge: they have a place, but not their own.
struct LatitudeRange
{
    float min = -90;
    float max = 90;
};

LatitudeRange ownLatitudes(DomainVal const & val)
{
    constexpr float STEREO = 75;
    constexpr float MERCATOR = 89.9F;
    constexpr float CONE = 89.99F;
    bool const is_north = val.plat >= 0;
    switch (val.proj) {
    case Domain::PSTEREO:
        return is_north ? LatitudeRange{-STEREO, 90} : LatitudeRange{-90, STEREO};
    case Domain::MERC:
        return {-MERCATOR, MERCATOR};
    case Domain::LAMB:
    case Domain::ALBERS:
        return is_north ? LatitudeRange{-CONE, 90} : LatitudeRange{-90, CONE};
    default:
        return {};
    }
}

/// The longitude within half a turn of the middle of the plane; both ends stay as they are.
float offsetFrom(float middle, float lon)
{
    constexpr float HALF = 180;
    float offset = lon - middle;
    offset = offset > HALF ? offset - 2 * HALF : offset;
    offset = offset < -HALF ? offset + 2 * HALF : offset;
    return std::abs(offset) <= HALF ? offset : 0; // a longitude that is missing
}

constexpr float UNITS_PER_DEGREE = 127.F / 180;

/// A cell that spans more longitude than this, in those units, is torn: 45 degrees.
constexpr int TORN = 32;

/// One turn of the plane, 0 for a plane that does not repeat.
double turnWidth(DomainVal const & val)
{
    if (val.proj == Domain::LATLON)
        return 360;
    if (val.proj == Domain::MERC)
        return 360 * Const::DRC * (val.ellipse ? Domain::earth_maj : Domain::earth_rad);
    return 0;
}

/// How far the grid's plane is shifted in x against the plot's; none when they differ in more.
std::optional<double> planeShift(DomainVal const & grid, DomainVal const & plane)
{
    if (grid.compareProj(plane))
        return 0;
    DomainVal aligned = grid;
    aligned.plon = plane.plon;
    if (grid.proj == Domain::LATLON)
        aligned.plat = plane.plat; // means nothing there
    bool const repeats = turnWidth(grid) > 0;
    if (!repeats || isMissing(grid.plon) || isMissing(plane.plon) || !aligned.compareProj(plane))
        return std::nullopt;
    return (static_cast<double>(grid.plon) - static_cast<double>(plane.plon)) * turnWidth(grid) / 360;
}

} // namespace

bool isSamePlane(Domain const & grid, Domain const & plane)
{
    return planeShift(grid.get(), plane.get()).has_value();
}

std::vector<ColumnRowCoordinates>
columnRowCoordinates(Domain const & grid, Domain const & plane, Rect const & frame)
{
    std::vector<ColumnRowCoordinates> sets;
    DomainVal const & val = grid.get();
    auto const shift = planeShift(val, plane.get());
    if (!shift)
        return sets;
    Rect const & limits = grid.getLimits();
    if (limits.y2 <= frame.y1 || limits.y1 >= frame.y2)
        return sets;
    double const turn = turnWidth(val);
    for (int k = turn > 0 ? -2 : 0; k <= (turn > 0 ? 2 : 0); ++k) {
        double const offset = *shift + k * turn;
        double const left = static_cast<double>(limits.x1) + offset;
        double const right = static_cast<double>(limits.x2) + offset;
        if (right <= static_cast<double>(frame.x1) || left >= static_cast<double>(frame.x2))
            continue;
        ColumnRowCoordinates & set = sets.emplace_back();
        for (int i = 0; i < val.nx; ++i)
            set.x.push_back(static_cast<float>(left + i * static_cast<double>(val.dx)));
        for (int j = 0; j < val.ny; ++j)
            set.y.push_back(
                static_cast<float>(static_cast<double>(limits.y2) - j * static_cast<double>(val.dy)));
    }
    return sets;
}

FieldView ColumnRowCoordinates::view(float const * values, Rect const & frame) const
{
    FieldView view{values, static_cast<int>(x.size()), static_cast<int>(y.size()), 0, 0, 0, 0};
    view.end_column = std::max(view.nx - 1, 0);
    view.end_row = std::max(view.ny - 1, 0);
    auto const at = [](std::vector<float> const & c, int i) { return c[static_cast<std::size_t>(i)]; };
    while (view.first_column < view.end_column && at(x, view.first_column + 1) < frame.x1)
        ++view.first_column;
    while (view.first_column < view.end_column && at(x, view.end_column - 1) > frame.x2)
        --view.end_column;
    while (view.first_row < view.end_row && at(y, view.first_row + 1) > frame.y2)
        ++view.first_row;
    while (view.first_row < view.end_row && at(y, view.end_row - 1) < frame.y1)
        --view.end_row;
    return view;
}

bool PointPlaces::locate(Domain const & grid, Domain const & plane, Rect const & plot_frame)
{
    frame = plot_frame;
    nx = grid.getNx();
    ny = grid.getNy();
    auto const count = static_cast<std::size_t>(grid.getNx()) * static_cast<std::size_t>(grid.getNy());
    try {
        x.resize(count);
        y.resize(count);
        turns.resize(hasSeam(plane.get().proj) ? count : 0);
    } catch (std::bad_alloc const &) {
        return false;
    }
    std::vector<float> & lat = y; // projected in place
    std::vector<float> & lon = x;
    if (grid.calcEarth(lat, lon) == 0)
        return false;

    LatitudeRange const own = ownLatitudes(plane.get());
    for (float & value : lat)
        if (value < own.min || value > own.max)
            value = Const::MISS;
    for (std::size_t i = 0; i < turns.size(); ++i)
        turns[i] = static_cast<Turn>(offsetFrom(plane.get().plon, lon[i]) * UNITS_PER_DEGREE);
    plane.forward(lat, lon, x, y);
    visible = 0;
    for (std::size_t i = 0; i < count; ++i)
        visible += isInside(frame, x[i], y[i]) ? 1 : 0;
    return true;
}

bool PointPlaces::find(int column, int row, float & px, float & py) const
{
    std::size_t const k = index(column, row);
    px = x[k];
    py = y[k];
    return !isMissing(px) && !isMissing(py);
}

bool PointPlaces::isOnMap() const
{
    CellPlaces places;
    for (int row = 0; visible == 0 && row + 1 < ny; ++row)
        for (int column = 0; column + 1 < nx; ++column)
            if ((*this)(column, row, places))
                return true;
    return visible > 0;
}

bool PointPlaces::operator()(int column, int row, CellPlaces & places) const
{
    std::size_t const upper = index(column, row);
    std::size_t const lower = upper + static_cast<std::size_t>(nx);
    std::array<std::size_t, 4> const corners = {upper, upper + 1, lower, lower + 1};
    int west = 127;
    int east = -128;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        places.x[i] = x[corners[i]];
        places.y[i] = y[corners[i]];
        if (isMissing(places.x[i]) || isMissing(places.y[i]))
            return false;
        if (!turns.empty()) {
            west = std::min<int>(west, turns[corners[i]]);
            east = std::max<int>(east, turns[corners[i]]);
        }
    }
    if (east - west > TORN)
        return false;
    auto const [left, right] = std::minmax({places.x[0], places.x[1], places.x[2], places.x[3]});
    auto const [bottom, top] = std::minmax({places.y[0], places.y[1], places.y[2], places.y[3]});
    return right >= frame.x1 && left <= frame.x2 && top >= frame.y1 && bottom <= frame.y2;
}

} // namespace Yul::detail
