// The contour segments of a field, to be called from bench/contours.py and timed there.
#include "plot/CellSweep.h"

#include <cstddef>
#include <numeric>
#include <span>
#include <vector>

/// values    ny rows of nx
/// segments  room for `most` segments of four numbers: columns to the right, rows upward
/// return    how many there are; those beyond the room are counted only
extern "C" std::size_t contour_segments(float const * values,
                                        int nx,
                                        int ny,
                                        float const * levels,
                                        int count,
                                        float tweak,
                                        float * segments,
                                        std::size_t most)
{
    using namespace Yul::detail;
    std::vector<float> x(static_cast<std::size_t>(nx));
    std::vector<float> y(static_cast<std::size_t>(ny));
    std::iota(x.begin(), x.end(), 0.F);
    std::iota(y.rbegin(), y.rend(), 0.F);
    std::size_t n = 0;
    sweepCells({values, nx, ny, 0, nx - 1, 0, ny - 1}, {levels, static_cast<std::size_t>(count)}, tweak,
               ColumnRowPlaces(x, y), [&](int, int, int, CellLine const & line) {
                   if (n < most) {
                       float * const out = segments + 4 * n;
                       out[0] = line.x1;
                       out[1] = line.y1;
                       out[2] = line.x2;
                       out[3] = line.y2;
                   }
                   ++n;
               });
    return n;
}
