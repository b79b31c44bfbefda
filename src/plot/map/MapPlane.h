// What of the earth a projection's plane shows, and where it cuts the earth open.
#pragma once

#include "geo/Domain.h"
#include "geo/Rect.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <vector>

namespace Yul::detail {

/// A position on the earth, degrees.
struct Place
{
    double lat;
    double lon;
};

/// The part of the earth that a map domain shows in its plane. Some projections show what lies within a circle about
/// a point (up to the horizon, or to the far point where the plane ends); the others cut the earth open along a
/// meridian, half a turn from the one in their middle.
class MapPlane
{
public:
    /// domain  lives longer than this; a map with limits
    MapPlane(Domain const & domain, Rect const & frame);

    /// True where the shown part is bounded by a circle; false where it is cut along a meridian.
    [[nodiscard]] bool hasCircle() const noexcept { return has_circle; }

    /// The meridian in the middle of a plane that is cut, degrees.
    [[nodiscard]] double middleLon() const noexcept { return mid_lon; }

    /// Latitudes between which positions have an image of their own.
    [[nodiscard]] double south() const noexcept { return min_lat; }

    [[nodiscard]] double north() const noexcept { return max_lat; }

    /// Degrees east of the middle meridian, within half a turn.
    [[nodiscard]] double across(double lon) const noexcept;

    /// For a plane with a circle: how far the position lies inside, a cosine; negative outside.
    [[nodiscard]] double depth(double lat, double lon) const noexcept;
    /// The direction of the position as seen from the middle of the circle, degrees, -180 to 180.
    [[nodiscard]] double bearing(double lat, double lon) const noexcept;
    /// The position on the circle in that direction.
    [[nodiscard]] Place onCircle(double bearing) const noexcept;
    /// The far point, opposite to the middle of the circle, where it has no image of its own although everything
    /// round it has; false where the plane shows less.
    [[nodiscard]] bool hasFarPoint(Place & place) const noexcept;

    /// Many positions to the plane; both coordinates Const::MISS where there is no image. Where the plane repeats
    /// itself turn by turn, x lies within half a turn of the middle of the frame.
    void project(std::vector<double> const & lat,
                 std::vector<double> const & lon,
                 std::vector<double> & x,
                 std::vector<double> & y) const;

    /// Width of one turn in the plane; 0 where it does not repeat itself.
    [[nodiscard]] double turn() const noexcept { return turn_width; }

    /// The edge of the shown part, as a ring in the plane.
    void outline(std::vector<double> & x, std::vector<double> & y) const;

    /// Degrees of a great circle that a unit of the plane is long in the frame's middle, or where the domain has its
    /// centre; 0 when neither lies on the earth.
    [[nodiscard]] double degreesPerUnit() const;

private:
    struct Vector
    {
        double x, y, z;
    };

    [[nodiscard]] Vector vectorOf(double lat, double lon) const noexcept;
    void setCircle();

    Domain const & domain;
    Rect frame;
    bool has_circle = false;
    double mid_lon = 0;
    double min_lat = -90;
    double max_lat = 90;
    double turn_width = 0;
    double mid_x = 0;      // of the frame
    double stretch = 1;    // of the earth's axis, which makes a sphere of an ellipsoid
    double limit = -1;     // cosine of the radius of the circle
    bool is_whole = false; // all but the far point lies in the circle
    Vector axis{};         // to the middle of the circle, and two across
    Vector east{};
    Vector up{};
};

/// The cells of a coarse net over the earth of which a frame may show something.
class SeenCells
{
public:
    SeenCells(MapPlane const & plane, Rect const & frame);

    /// False when the frame certainly shows nothing of the box, degrees.
    [[nodiscard]] bool meets(double south, double north, double west, double east) const noexcept;

private:
    static constexpr int COLUMNS = 72;
    static constexpr int ROWS = 36;
    static constexpr double CELL = 5; // degrees
    static constexpr int POINTS = 9;  // in which a cell is looked at: its corners, middle, and those between

    struct Extent;

    std::array<std::bitset<COLUMNS>, ROWS> cells;
};

} // namespace Yul::detail
