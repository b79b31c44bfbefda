// Cutting lines at a rectangle.
#pragma once

#include "geo/Rect.h"

#include <algorithm>
#include <array>

namespace Yul::detail {

/// The part of a line that is kept, as fractions of it from its first to its second end.
struct Kept
{
    double from = 0;
    double to = 1;

    [[nodiscard]] bool isWhole() const { return from == 0 && to == 1; }
};

/// Cuts the line from (x1, y1) to (x2, y2) at an ordered rectangle, edges inside. False when nothing of it
/// lies inside, or a coordinate is not a number.
/// Source: Y.-D. Liang and B. A. Barsky, A new concept and method for line clipping, ACM Transactions on
/// Graphics 3 (1984).
[[nodiscard]] inline bool clipLine(Rect const & rect, double x1, double y1, double x2, double y2, Kept & kept)
{
    double const dx = x2 - x1;
    double const dy = y2 - y1;
    kept = {};
    std::array<std::array<double, 2>, 4> const edges = {{
        {-dx, x1 - static_cast<double>(rect.x1)},
        {dx, static_cast<double>(rect.x2) - x1},
        {-dy, y1 - static_cast<double>(rect.y1)},
        {dy, static_cast<double>(rect.y2) - y1},
    }};
    for (auto const & [step, room] : edges) {
        if (step == 0 && room >= 0)
            continue;
        if (step < 0)
            kept.from = std::max(kept.from, room / step);
        else if (step > 0)
            kept.to = std::min(kept.to, room / step);
        else
            return false;
    }
    return kept.from < kept.to;
}

/// True when the point lies inside an ordered rectangle or on its edge.
[[nodiscard]] inline bool isInside(Rect const & rect, float x, float y)
{
    return x >= rect.x1 && x <= rect.x2 && y >= rect.y1 && y <= rect.y2;
}

} // namespace Yul::detail
