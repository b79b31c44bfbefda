// Positions of a grid and in it, all through its domain.
#include "core/Yul.h"
#include "grid/Grid.h"
#include "grid/GridKernels.h"

#include <algorithm>

namespace Yul {

int Grid::tran(EarthPoint const & in, Point & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(EarthPoint const & in, GridPoint & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(Point const & in, EarthPoint & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(Point const & in, GridPoint & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(GridPoint const & in, EarthPoint & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(GridPoint const & in, Point & out) const
{
    return domain.tran(in, out);
}

int Grid::tran(Point const & in, Domain const & to, Point & out) const
{
    return domain.translate(to, in, out);
}

int Grid::tran(GridPoint const & in, Domain const & to, GridPoint & out) const
{
    return domain.translate(to, in, out);
}

int Grid::tran(Domain const & from, Point const & in, Point & out) const
{
    return from.translate(domain, in, out);
}

int Grid::tran(Domain const & from, GridPoint const & in, GridPoint & out) const
{
    return from.translate(domain, in, out);
}

int Grid::tran(int index, EarthPoint & out) const
{
    return domain.tran(index, out);
}

int Grid::tran(int index, GridPoint & out) const
{
    return domain.tran(index, out);
}

int Grid::tran(int index, Point & out) const
{
    return domain.tran(index, out);
}

float Grid::adjustDir(float angle, EarthPoint const & point) const
{
    return domain.adjustDir(angle, point);
}

float Grid::unadjustDir(float angle, EarthPoint const & point) const
{
    return domain.unadjustDir(angle, point);
}

int Grid::allocLocate()
{
    auto const count = static_cast<std::size_t>(std::max(getSize(), 0)); // below 0 without a size
    if (count == 0 || !locate_x.allocate(count) || !locate_y.allocate(count)) {
        forgetLocations();
        Yul::outWarning("Grid::allocLocate: No size set or not enough memory: %d x %d\n", nx, ny);
        return 0;
    }
    std::fill_n(locate_x.data(), count, Const::MISS);
    std::fill_n(locate_y.data(), count, Const::MISS);
    return 1;
}

int Grid::setLocate()
{
    return setLocate(domain);
}

int Grid::setLocate(Domain const & plane)
{
    if (domain.getNx() != nx || domain.getNy() != ny || (!isLocate() && allocLocate() == 0))
        return 0;
    return domain.calcPlane(plane, {locate_x.data(), locate_x.size()}, {locate_y.data(), locate_y.size()});
}

int Grid::setLocate(int column, int row, Point const & point)
{
    if (column < 0 || column >= nx || row < 0 || row >= ny || !isLocate())
        return 0;
    locate_x.data()[indexOf(column, row)] = detail::orMiss(point.x);
    locate_y.data()[indexOf(column, row)] = detail::orMiss(point.y);
    return 1;
}

int Grid::getLocate(int column, int row, Point & point) const
{
    point = Point();
    if (column < 0 || column >= nx || row < 0 || row >= ny || !isLocate())
        return 0;
    point.set(locate_x.data()[indexOf(column, row)], locate_y.data()[indexOf(column, row)]);
    return 1;
}

void Grid::forgetLocations() noexcept
{
    locate_x.release();
    locate_y.release();
}

} // namespace Yul
