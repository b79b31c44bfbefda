// Whole lists of positions at once.
#pragma once

#include "geo/EarthPoint.h"
#include "geo/GridPoint.h"
#include "geo/Point.h"
#include "geo/projection/Kernel.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace Yul::detail {

/// A grid in its plane: its north-western corner and the spacing. For a radar plane the corner is the origin and
/// rows grow northward, so dy is negative.
struct GridFrame
{
    double left = 0;
    double top = 0;
    double dx = 0; ///< 0: there is no grid
    double dy = 0;
    double turn = 0; ///< columns are counted from an x within one turn, 0 for planes without a seam
};

/// Plane to column (x) and row (y); not-a-number without a grid.
[[nodiscard]] inline Plane toGrid(GridFrame const & frame, double x, double y) noexcept
{
    double const across = x - frame.left;
    double const up = across + frame.turn;
    double const down = across - frame.turn;
    double const lowered = across > frame.turn ? down : across;
    double const wrapped = across < -frame.turn ? up : lowered;
    return keepIf(frame.dx != 0, Plane{wrapped / frame.dx, (frame.top - y) / frame.dy});
}

[[nodiscard]] inline Plane fromGrid(GridFrame const & frame, double column, double row) noexcept
{
    return keepIf(frame.dx != 0, Plane{frame.left + column * frame.dx, frame.top - row * frame.dy});
}

/// Two coordinates: latitude and longitude, x and y, or column and row. Not-a-number in one of them: no position.
struct Pair
{
    double a, b;
};

/// True for a number that a float holds.
[[nodiscard]] inline bool fitsFloat(double value) noexcept
{
    return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

/// A coordinate as conversions take it: not-a-number where it is missing or infinite. Tested in its own type, so
/// that a vector of floats is one test; the conditions are joined without a branch.
template <class Real> [[nodiscard]] inline double loaded(Real value) noexcept
{
    constexpr Real MOST = std::numeric_limits<Real>::max();
    bool const is_finite = std::fabs(value) <= MOST;
    bool const is_there = !isMissing(value);
    return static_cast<double>((is_finite & is_there) != 0 ? value : std::numeric_limits<Real>::quiet_NaN());
}

/// A converted pair as it is stored: two missing values unless a float can hold both coordinates.
struct Stored
{
    double a, b;
    bool is_set;
};

[[nodiscard]] inline Stored stored(double a, double b) noexcept
{
    bool const has_a = fitsFloat(a);
    bool const has_b = fitsFloat(b);
    bool const is_set = (has_a & has_b) != 0;
    return {is_set ? a : Const::MISS, is_set ? b : Const::MISS, is_set};
}

/// A block of coordinate pairs, small enough for the first cache.
struct Block
{
    static constexpr std::size_t SIZE = 256;

    alignas(64) double a[SIZE]; ///< latitudes, x or columns
    alignas(64) double b[SIZE]; ///< longitudes, y or rows
};

/// Fills a block with up to SIZE positions; missing ones become not-a-number.
void load(Block & block, EarthPoint const * points, std::size_t count) noexcept;
void load(Block & block, Point const * points, std::size_t count) noexcept;
void load(Block & block, GridPoint const * points, std::size_t count) noexcept;
void load(Block & block, float const * a, float const * b, std::size_t count) noexcept;
void load(Block & block, double const * a, double const * b, std::size_t count) noexcept;

/// Takes the positions out, both coordinates Const::MISS where there is none; returns how many there are.
std::size_t save(Block const & block, EarthPoint * points, std::size_t count) noexcept;
std::size_t save(Block const & block, Point * points, std::size_t count) noexcept;
std::size_t save(Block const & block, GridPoint * points, std::size_t count) noexcept;
std::size_t save(Block const & block, float * a, float * b, std::size_t count) noexcept;
std::size_t save(Block const & block, double * a, double * b, std::size_t count) noexcept;

/// Replaces latitudes and longitudes by x and y; the same bits as `project` gives one by one. All SIZE pairs are
/// converted, whatever stands in the unused ones.
void project(Kernel const & kernel, Block & block) noexcept;
/// Replaces x and y by latitudes and longitudes.
void unproject(Kernel const & kernel, Block & block) noexcept;

void toGrid(GridFrame const & frame, Block & block) noexcept;
void fromGrid(GridFrame const & frame, Block & block) noexcept;

} // namespace Yul::detail
