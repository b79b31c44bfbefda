// Cutting areas at a rectangle.
#pragma once

#include "geo/Point.h"
#include "geo/Rect.h"

#include <algorithm>
#include <vector>

namespace Yul::detail {

/// Keeps the part of an area that lies inside an ordered rectangle; parts that come apart stay joined along
/// its edge. scratch is overwritten.
/// Source: I. E. Sutherland and G. W. Hodgman, Reentrant polygon clipping, Communications of the ACM 17 (1974).
inline void clipArea(Rect const & rect, std::vector<Point> & outline, std::vector<Point> & scratch)
{
    auto const cut = [&](auto const & distance) {
        scratch.clear();
        for (std::size_t i = 0; i < outline.size(); ++i) {
            Point const & a = outline[i];
            Point const & b = outline[i + 1 < outline.size() ? i + 1 : 0];
            float const from = distance(a);
            float const to = distance(b);
            if (from >= 0)
                scratch.push_back(a);
            if ((from >= 0) != (to >= 0)) {
                float const t = from / (from - to);
                scratch.emplace_back(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y));
            }
        }
        std::swap(outline, scratch);
    };
    cut([&](Point const & p) { return p.x - rect.x1; });
    cut([&](Point const & p) { return rect.x2 - p.x; });
    cut([&](Point const & p) { return p.y - rect.y1; });
    cut([&](Point const & p) { return rect.y2 - p.y; });
}

} // namespace Yul::detail
