// The plain value record of a domain.
#pragma once

#include "core/Const.h"
#include "core/String.h"

namespace Yul {

/// Where a grid or a plot lies, as plain values: the projection with its parameters, the centre, the spacing
/// and the number of points. Every number starts as Const::MISS. It is stored in grids and files, compared
/// and printed; class Domain does the conversions.
class DomainVal
{
public:
    /// Number of projection parameters.
    static constexpr int NUM_PARAM = 4;

    /// Sets everything to missing; returns 1.
    int init();

    /// True when no projection is given.
    [[nodiscard]] bool isMiss() const noexcept { return detail::isMissing(proj); }

    /// True for a projection of the earth (codes 1 to 11), false for axes and diagrams.
    [[nodiscard]] bool isMap() const noexcept;

    /// Projection parameter i, 0 to 3; Const::MISS for any other index.
    [[nodiscard]] float getParam(int i) const noexcept;
    /// Returns 0 and changes nothing for an index outside 0 to 3.
    int setParam(int i, float value) noexcept;

    /// Lays other counts over the same extent. Returns 0 and changes nothing for counts below 2 and where the
    /// record has no extent.
    int scaleSize(int columns, int rows);

    /// Writes the domain as a text that DomainTool::decode reads back: the projection with its parameters,
    /// the centre, the number of points and the spacing, as in
    /// "lamb:40.000000:-95.000000:30.000000:60.000000,40.000000,-95.000000,101,81,0.500000,0.500000".
    /// Missing parameters are left out, or left empty before a parameter that is there; a domain without a
    /// projection is "miss". A code that has no name is written as "pstereo".
    int toString(String & text) const;

    /// Prints that text and a newline to standard output.
    int print() const;

    /// True when all values are the same. A value that is not a number equals nothing.
    [[nodiscard]] bool compare(DomainVal const & other) const noexcept;

    /// True when projection, reference position, parameters and figure of the earth are the same.
    [[nodiscard]] bool compareProj(DomainVal const & other) const noexcept;

    int proj = Const::MISS;   ///< projection code, see Domain::Proj
    float plat = Const::MISS; ///< reference latitude, degrees
    float plon = Const::MISS; ///< reference (central) longitude, degrees
    float param[NUM_PARAM] = {Const::MISS, Const::MISS, Const::MISS, Const::MISS};
    float clat = Const::MISS; ///< latitude of the centre, degrees
    float clon = Const::MISS; ///< longitude of the centre, degrees
    float dx = Const::MISS;   ///< spacing in x, units of the plane
    float dy = Const::MISS;   ///< spacing in y, units of the plane
    int nx = Const::MISS;     ///< number of columns
    int ny = Const::MISS;     ///< number of rows
    bool ellipse = false;     ///< the earth is an ellipsoid
};

} // namespace Yul
