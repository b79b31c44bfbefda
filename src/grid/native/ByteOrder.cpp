#include "grid/native/ByteOrder.h"

#include <algorithm>

namespace Yul::detail::native {

void swapPlain(float const * from, float * to, std::size_t count) noexcept
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = swapped(from[i]);
}

void toMachineOrder(float const * from, float * to, std::size_t count) noexcept
{
    if constexpr (std::endian::native == std::endian::big) {
        if (from != to)
            std::copy_n(from, count, to);
        return;
    }
    static Swap const BEST = swapWide() != nullptr ? swapWide() : swapPlain;
    BEST(from, to, count);
}

} // namespace Yul::detail::native
