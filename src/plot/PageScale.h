// From the plane of the map to page measure.
#pragma once

#include "plot/Plot.h"

namespace Yul::detail {

/// From the plane of the map to page measure (NDC), and to nothing else.
struct PageScale
{
    float x_factor, x_offset, y_factor, y_offset;

    explicit PageScale(Graph const & graph)
    {
        auto const & tran = graph.getTransform(Plot::MAP_TRAN);
        Rect const & window = tran.getWindow();
        Rect const & view = tran.getViewport();
        x_factor = (view.x2 - view.x1) / (window.x2 - window.x1);
        y_factor = (view.y2 - view.y1) / (window.y2 - window.y1);
        x_offset = view.x1 - window.x1 * x_factor;
        y_offset = view.y1 - window.y1 * y_factor;
    }

    [[nodiscard]] float x(float plane_x) const { return plane_x * x_factor + x_offset; }

    [[nodiscard]] float y(float plane_y) const { return plane_y * y_factor + y_offset; }
};

} // namespace Yul::detail
