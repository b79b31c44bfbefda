#include "grid/Grids.h"

#include <cstddef>
#include <exception>

namespace Yul {

int Grids::setNum(int num)
{
    if (num < 0 || num > MAX_GRIDS)
        return 0;
    try {
        all().resize(static_cast<std::size_t>(num));
    } catch (std::exception const &) {
        return 0;
    }
    return 1;
}

int Grids::find(GridSpec const & spec) const
{
    for (std::size_t i = 0; i < all().size(); ++i)
        if (all()[i].meets(spec))
            return static_cast<int>(i);
    return -1;
}

int Grids::print() const
{
    for (auto const & grid : all())
        grid.printInfo();
    return 1;
}

} // namespace Yul
