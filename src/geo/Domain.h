// Domains: conversions between the earth, a projection plane and a grid.
#pragma once

#include "geo/DomainVal.h"
#include "geo/EarthPoint.h"
#include "geo/GridPoint.h"
#include "geo/Point.h"
#include "geo/Rect.h"
#include "geo/projection/Batch.h"
#include "geo/projection/Kernel.h"

#include <cstddef>
#include <span>

namespace Yul {

/// A domain: where a grid or a plot lies on the earth or on a thermodynamic diagram.
///
/// It converts between earth positions (EarthPoint, degrees), its projection plane (Point, units of 100 km;
/// degrees for latlon, radians for the satellite view) and its grid (GridPoint, fractional column and row;
/// row 0 is the northern edge). All conversions are named `tran` and return 1, or 0 with every output
/// coordinate set to Const::MISS when the input is missing, not finite or has no image. On diagrams the
/// longitude slot of an EarthPoint holds the abscissa (temperature, direction) and the latitude slot the
/// ordinate (pressure, speed).
///
/// The earth is a sphere of radius `earth_rad`, or the ellipsoid `earth_maj`, `earth_min` where the domain
/// asks for it (Mercator and satellite view). These are process-wide; a change reaches the next conversion of
/// every domain, while the limits of a domain stay as they were when it was set.
class Domain
{
public:
    /// Projection codes.
    enum Proj {
        UNKNOWN = -1,
        PSTEREO = 1,
        LATLON = 2,
        MERC = 3,
        LAMB = 4,
        ORTHO = 5,
        GNOM = 6,
        MOLL = 7,
        LAMBAZ = 8,
        ALBERS = 9,
        SAT = 10,
        RADIAL = 11,
        PIXEL = 20,
        XY = 21,
        XZ = 22,
        XP = 23,
        XLOGP = 24,
        POLAR = 25,
        CAT = 26,
        SKEWT = 40,
        STUVE = 41,
        EMA = 42,
        TEPH = 43,
        RTEPH = 44,
        ZOOM = 50, ///< while decoding only: adjusts another domain
        SIZE = 51  ///< while decoding only: adjusts another domain
    };

    /// Results of `where`; a corner is the sum of two.
    enum Where { INSIDE = 0, LEFT = 1, RIGHT = 2, BELOW = 4, ABOVE = 8 };

    static double earth_rad;  ///< radius of the spherical earth, units of 100 km
    static double earth_maj;  ///< semi-major axis of the ellipsoid, units of 100 km
    static double earth_min;  ///< semi-minor axis of the ellipsoid, units of 100 km
    static float OFFSET_LL;   ///< width of one turn in a latlon plane, degrees
    static float OFFSET_MERC; ///< width of one turn in a Mercator plane on an earth of radius Const::EARTH

    Domain() { init(); }

    /// A domain from its text, see DomainTool::decode; missing where the text is none.
    explicit Domain(char const * text);
    explicit Domain(DomainVal const & val);

    /// Sets everything to missing.
    int init();

    /// Reads a domain text, see DomainTool::decode; on 0 the domain is missing.
    int set(char const * text);
    /// Takes over the record; missing reference positions become the centre, a given param[2] becomes
    /// `earth_rad`.
    int set(DomainVal const & val);
    /// Keeps the projection and lays the grid between two corners, whose middle counts as a missing reference
    /// position; returns 0 and changes nothing when a corner has no image or a count is below 2.
    int set(EarthPoint const & lower_left, EarthPoint const & upper_right, int nx, int ny);
    /// A plain xy domain with centre 0, 0 and spacing 1; returns 0 and changes nothing for counts below 1.
    int set(int nx, int ny);

    /// The record; valid while the domain lives.
    [[nodiscard]] DomainVal const & get() const noexcept { return val; }

    /// Derives everything that conversions need from the record: reference position, standard latitudes,
    /// earth radius, limits; forgets cached constants and sets the view to 0, 0, 1, 1.
    int setParam();
    /// Computes the limits from centre, counts and spacing. They are all missing when one of these is, or
    /// when a count is below 1; returns 0 then.
    int setLimits();
    int setView(Rect const & rect); ///< stores the view; nothing else depends on it

    /// The extent of the grid in the plane, from the first to the last column and row.
    [[nodiscard]] Rect const & getLimits() const noexcept { return limits; }

    /// What the domain shows of its plane, in the units of the plane.
    [[nodiscard]] Rect const & getView() const noexcept { return view; }

    /// Columns of the grid; less than 1 without one.
    [[nodiscard]] int getNx() const noexcept { return val.nx; }

    /// Rows of the grid; less than 1 without one.
    [[nodiscard]] int getNy() const noexcept { return val.ny; }

    /// Distance of columns, in the units of the plane.
    [[nodiscard]] float getDx() const noexcept { return val.dx; }

    /// Distance of rows, in the units of the plane.
    [[nodiscard]] float getDy() const noexcept { return val.dy; }

    /// (nx - 1) / (ny - 1); 0 when a count is missing or ny is 1.
    [[nodiscard]] float getAspect() const noexcept;
    /// The height of the limits; 0 without limits.
    [[nodiscard]] float getVert() const noexcept;

    /// True for a projection of the earth (codes 1 to 11), false for axes and diagrams.
    [[nodiscard]] bool isMap() const noexcept { return val.isMap(); }

    /// Whether there is no projection.
    [[nodiscard]] bool isMiss() const noexcept { return val.isMiss(); }

    /// The code of a projection keyword; -1 when there is none, -9999 for "miss".
    [[nodiscard]] static int getProj(char const * name);

    /// Standard latitude 1 or 2 that the projection uses, degrees; Const::MISS for any other number.
    [[nodiscard]] float getStdLat(int number) const noexcept;
    /// The distance of a satellite view's satellite from the earth's centre, units of 100 km.
    [[nodiscard]] static float satelliteDistance(DomainVal const & val) noexcept;

    /// Converts a position. earth: latitude and longitude, degrees, north and east positive; point: x to the right
    /// and y upward in the plane, units of 100 km (degrees for latlon, radians for the satellite view); grid:
    /// fractional column and row, row 0 in the north. The last argument is the result.
    /// return  1; 0, and Const::MISS in every coordinate of the result, when the input is missing, not finite or
    ///         has no image. Prints nothing.
    int tran(EarthPoint const & earth, Point & point) const;
    int tran(Point const & point, EarthPoint & earth) const;
    int tran(GridPoint const & grid, Point & point) const;
    int tran(Point const & point, GridPoint & grid) const;
    int tran(EarthPoint const & earth, GridPoint & grid) const;
    int tran(GridPoint const & grid, EarthPoint & earth) const;

    /// From the index row * nx + column of a grid point; 0 for an index outside the grid.
    int tran(int index, EarthPoint & earth) const;
    int tran(int index, GridPoint & grid) const;
    int tran(int index, Point & point) const;

    /// Whole lists: the output gets as many items as the input has. Returns 1 when all had an image. Much
    /// faster than single points.
    int tran(EarthPoints const & earth, Points & points) const;
    int tran(EarthPoints const & earth, GridPoints & grid) const;
    int tran(Points const & points, EarthPoints & earth) const;
    int tran(Points const & points, GridPoints & grid) const;
    int tran(GridPoints const & grid, EarthPoints & earth) const;
    int tran(GridPoints const & grid, Points & points) const;

    /// Whole arrays, all of one length (the shortest counts); an output may be the array of an input.
    /// Positions without an image become Const::MISS. Return how many had one.
    std::size_t forward(std::span<float const> lat,
                        std::span<float const> lon,
                        std::span<float> x,
                        std::span<float> y) const;
    std::size_t forward(std::span<double const> lat,
                        std::span<double const> lon,
                        std::span<double> x,
                        std::span<double> y) const;
    std::size_t inverse(std::span<float const> x,
                        std::span<float const> y,
                        std::span<float> lat,
                        std::span<float> lon) const;
    std::size_t inverse(std::span<double const> x,
                        std::span<double const> y,
                        std::span<double> lat,
                        std::span<double> lon) const;
    /// From the earth to fractional columns and rows, which are rounded to floats as those of a GridPoint.
    std::size_t locate(std::span<double const> lat,
                       std::span<double const> lon,
                       std::span<float> column,
                       std::span<float> row) const;

    /// Positions of all grid points, index = row * nx + column. Returns 0 when the arrays do not hold nx * ny
    /// items or the domain has no limits.
    int calcEarth(std::span<float> lat, std::span<float> lon) const;
    /// The same in the plane of another domain, for drawing this grid on it.
    int calcPlane(Domain const & plane, std::span<float> x, std::span<float> y) const;

    /// 1 when the position lies inside the limits, edges included.
    [[nodiscard]] int within(Point const & point) const;
    [[nodiscard]] int within(EarthPoint const & earth) const;
    /// The same with the limits widened by `extension` grid spacings on every side.
    [[nodiscard]] int withinExt(Point const & point, int extension) const;
    /// Where the point lies: INSIDE, or LEFT or RIGHT plus BELOW or ABOVE; Const::MISS without a point or
    /// limits.
    [[nodiscard]] int where(Point const & point) const;

    /// Carries a position from this domain's plane or grid to another's.
    int translate(Domain const & to, Point const & from, Point & point) const;
    int translate(Domain const & to, GridPoint const & from, GridPoint & grid) const;

    /// Shifts x by turns of a latlon or Mercator plane until it lies within half a turn of the middle of the
    /// limits. Returns 0 for a missing point; other projections have no seam and leave points alone.
    int adjust(Point & point) const;
    int adjust(Points & points) const;

    /// Turns a direction (degrees clockwise) from true north to grid north, the upward direction of the
    /// plane, at a position or a point of the plane; result 0 to 360. Const::MISS when an input is missing or
    /// the position has no image.
    [[nodiscard]] float adjustDir(float angle, EarthPoint const & earth) const;
    [[nodiscard]] float adjustDir(float angle, Point const & point) const;
    /// From grid north to true north.
    [[nodiscard]] float unadjustDir(float angle, EarthPoint const & earth) const;
    [[nodiscard]] float unadjustDir(float angle, Point const & point) const;

    /// The scale of the plane at a position: length in the plane over length on the earth. Where it depends
    /// on the direction it is the square root of the areal scale. Const::MISS where the position has no
    /// image.
    [[nodiscard]] float getMapFactor(EarthPoint const & earth) const;
    /// Great-circle distance, units of 100 km; Const::MISS when a coordinate is missing or the earth has no radius.
    [[nodiscard]] static float calcEarthDist(EarthPoint const & a, EarthPoint const & b);

    /// Other counts over the same extent. Returns 0 and changes nothing for counts below 2.
    int scaleSize(int nx, int ny);
    /// A grid that is `factor` times as dense over the same extent.
    int scaleGrid(float factor);
    /// Moves the centre and multiplies the extent by `factor`; the counts stay. Returns 0 and changes nothing when
    /// the centre has no image or the extent is beyond all floats.
    int zoom(Point const & centre, float factor);
    int zoom(EarthPoint const & centre, float factor);
    /// Moves the centre.
    int pan(Point const & centre);
    int pan(EarthPoint const & centre);

    /// The point dx to the right and dy upward, units of the plane.
    int offset(Point const & point, float dx, float dy, Point & result) const;
    /// The same from one position on the earth to another.
    int offsetLatLon(EarthPoint const & earth, float dx, float dy, EarthPoint & result) const;

    /// The width of one turn in a latlon or Mercator plane; 0 for planes without a seam.
    [[nodiscard]] double seamWidth() const noexcept;
    /// Cuts a line where it crosses the seam of a latlon or Mercator plane, which is taken to happen where x
    /// jumps by more than half a turn. pieces: out; the pieces end on the seam and a missing Point parts
    /// them. Returns the number of pieces.
    int wrapLine(Points const & line, Points & pieces) const;
    /// The same for one segment: 1 and the end of the first and the start of the second piece when it crosses
    /// the seam, else 0 and two missing points.
    int wrapLine(Point const & from, Point const & to, Point & end, Point & start) const;
    /// Shifts the points behind every crossing of the seam by whole turns, so that the line runs on; it may
    /// leave the limits. Returns 1 when a point was shifted.
    int offsetLine(Points & line) const;

    /// The domain text, see DomainVal::toString.
    int toString(String & text) const { return val.toString(text); }

    /// Lists the values on standard output, see DomainVal::print.
    int print() const { return val.print(); }

    /// Prints the four limits and a newline to standard output.
    int printLimits() const;

    /// True when the whole domains are the same.
    [[nodiscard]] bool compare(Domain const & other) const noexcept { return val.compare(other.val); }

    /// True when projection and parameters are the same.
    [[nodiscard]] bool compareProj(Domain const & other) const noexcept { return val.compareProj(other.val); }

private:
    /// What a pair of coordinates means.
    enum class Space { EARTH, PLANE, GRID };

    [[nodiscard]] detail::Kernel const & currentKernel() const;
    [[nodiscard]] detail::Pair project(detail::Pair earth) const;
    [[nodiscard]] detail::Pair unproject(detail::Pair plane) const;
    [[nodiscard]] detail::Pair toGrid(detail::Pair plane) const;
    [[nodiscard]] detail::Pair fromGrid(detail::Pair grid) const;
    void convert(Space from, Space to, detail::Block & block) const;
    template <class In, class Out> int convertList(Space from, Space to, In const & in, Out & out) const;
    template <class Real, class Out>
    std::size_t convertArrays(Space from,
                              Space to,
                              std::span<Real const> a,
                              std::span<Real const> b,
                              std::span<Out> out_a,
                              std::span<Out> out_b) const;
    template <class Run> int calcGrid(std::span<float> a, std::span<float> b, Run const & run) const;
    [[nodiscard]] bool isInGrid(int index) const noexcept;
    [[nodiscard]] bool hasLimits() const noexcept;
    [[nodiscard]] double middle() const noexcept;
    [[nodiscard]] detail::Distortion distortionAt(EarthPoint const & earth) const;
    int recentre(EarthPoint const & centre, float factor);

    DomainVal val;
    Rect limits;
    Rect view;
    float std_lat1 = 30;
    float std_lat2 = 60;
    detail::GridFrame frame;            // the grid in the plane
    mutable detail::Kernel kernel;      // constants of the projection, made when first needed
    mutable detail::EarthFigure figure; // the earth they were made for
};

} // namespace Yul
