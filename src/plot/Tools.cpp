#include "plot/Tools.h"

#include <algorithm>
#include <cmath>

namespace Yul {

float Tools::calcInterval(float max, float min, int n)
{
    // All in single precision: 0.3 * 10 is 3 there and stays 3 when rounded up.
    float const raw = (max - min) / static_cast<float>(std::max(n, 1));
    if (raw == 0.F)
        return 1.F;
    // Kept: above 10 as well the next integer, not a rounder number (237.4 gives 238).
    if (raw >= 1.F)
        return std::ceil(raw);
    for (float const scale : {10.F, 100.F, 1000.F, 10000.F})
        if (raw >= 1.F / scale)
            return std::ceil(raw * scale) / scale;
    return raw;
}

} // namespace Yul
