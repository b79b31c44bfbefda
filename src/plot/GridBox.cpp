#include "plot/GridBox.h"

#include <cmath>

namespace Yul {

int GridBox::init()
{
    *this = GridBox();
    return 1;
}

int GridBox::setTweak(float value)
{
    if (std::isnan(value))
        return 0;
    tweak = value;
    return 1;
}

int GridBox::setValues(float c0, float c1, float c2, float c3)
{
    corners.set(c0, c1, c2, c3);
    return 1;
}

int GridBox::setPoints(Point const & p0, Point const & p1, Point const & p2, Point const & p3)
{
    points = {p0, p1, p2, p3};
    return 1;
}

int GridBox::setLevel(float value)
{
    level = value;
    crossings = detail::crossCell(corners, tweak, level);
    cross = {};
    std::size_t next = 0;
    for (std::size_t i = 0; i < detail::CELL_SIDES.size(); ++i) {
        if (!crossings.isCrossed(i))
            continue;
        Point const & start = points[detail::CELL_SIDES[i].start];
        Point const & end = points[detail::CELL_SIDES[i].end];
        float const t = crossings.side[i];
        cross[next++] = {static_cast<int>(i),
                         Point(detail::alongSide(start.x, end.x, t), detail::alongSide(start.y, end.y, t))};
    }
    return crossings.count;
}

float GridBox::getValue(int i) const noexcept
{
    return i >= 0 && i < 4 ? corners.value[static_cast<std::size_t>(i)] : static_cast<float>(Const::MISS);
}

float GridBox::getSide(int i) const noexcept
{
    return i >= 0 && i < 4 ? crossings.side[static_cast<std::size_t>(i)] : static_cast<float>(Const::MISS);
}

int GridBox::getCrossSide(int i) const noexcept
{
    return i >= 0 && i < crossings.count ? cross[static_cast<std::size_t>(i)].side : -1;
}

Point & GridBox::getCross(int i)
{
    if (i >= 0 && i < crossings.count)
        return cross[static_cast<std::size_t>(i)].point;
    outside = Point();
    return outside;
}

} // namespace Yul
