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

    /// Size and offset as they stand; Const::MISS for one that is not given.
    GeomBox(float width_value, float height_value, float x_value, float y_value)
        : width(width_value), height(height_value), x(x_value), y(y_value)
    {
    }

    /// Neither size nor offset.
    int init()
    {
        *this = GeomBox();
        return 1;
    }

    /// Whether both sides are given.
    [[nodiscard]] bool isSize() const noexcept
    {
        return !detail::isMissing(width) && !detail::isMissing(height);
    }

    /// Whether both offsets are given.
    [[nodiscard]] bool isOffset() const noexcept { return !detail::isMissing(x) && !detail::isMissing(y); }

    /// As "WxH+X-Y" has them; Const::MISS for one that is not given.
    float width = Const::MISS;
    float height = Const::MISS;
    float x = Const::MISS;
    float y = Const::MISS;
};

} // namespace Yul
