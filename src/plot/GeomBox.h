// The size and place of a window.
#pragma once

#include "core/Const.h"

namespace Yul {

/// Window geometry, device units. What is not given is Const::MISS; a negative offset is measured from the
/// right or the bottom edge.
class GeomBox
{
public:
    GeomBox() = default;

    GeomBox(float width_value, float height_value, float x_value, float y_value)
        : width(width_value), height(height_value), x(x_value), y(y_value)
    {
    }

    int init()
    {
        *this = GeomBox();
        return 1;
    }

    [[nodiscard]] bool isSize() const noexcept
    {
        return !detail::isMissing(width) && !detail::isMissing(height);
    }

    [[nodiscard]] bool isOffset() const noexcept { return !detail::isMissing(x) && !detail::isMissing(y); }

    float width = Const::MISS;
    float height = Const::MISS;
    float x = Const::MISS;
    float y = Const::MISS;
};

} // namespace Yul
