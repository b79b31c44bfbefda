#include "grid/grib/Octets.h"

#include <algorithm>

namespace Yul::detail::grib {
namespace {

/// Powers of ten that a double holds exactly.
constexpr double POWERS[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int EXACT = 22;
constexpr int BEYOND = 700; // 10^700 is infinite, 10^-700 is 0

} // namespace

double decimalScale(int d) noexcept
{
    d = std::clamp(d, -BEYOND, BEYOND);
    double scale = 1;
    for (; d > EXACT; d -= EXACT)
        scale /= POWERS[EXACT];
    for (; d < -EXACT; d += EXACT)
        scale *= POWERS[EXACT];
    return d >= 0 ? scale / POWERS[d] : scale * POWERS[-d];
}

std::uint32_t convIBMFloat(double value) noexcept
{
    constexpr double LARGEST_MANTISSA = 16777215;
    bool const is_negative = value < 0;
    double const magnitude = is_negative ? -value : value;
    if (!(magnitude > 0)) // 0 and NaN
        return 0;
    int exponent = 64;
    double mantissa = std::ldexp(magnitude, 24);
    for (; mantissa > LARGEST_MANTISSA && exponent < 127; ++exponent)
        mantissa /= 16;
    for (; mantissa < LARGEST_MANTISSA / 16 && exponent > 1; --exponent)
        mantissa *= 16;
    mantissa = is_negative ? std::ceil(mantissa) : std::floor(mantissa);
    if (mantissa > LARGEST_MANTISSA && exponent < 127) { // rounding carried into a 25th bit
        mantissa = is_negative ? std::ceil(mantissa / 16) : std::floor(mantissa / 16);
        ++exponent;
    }
    auto const fraction = static_cast<std::uint32_t>(std::min(mantissa, LARGEST_MANTISSA));
    std::uint32_t const sign = is_negative ? 0x80000000U : 0U;
    return fraction == 0 ? 0 : sign | static_cast<std::uint32_t>(exponent) << 24 | fraction;
}

} // namespace Yul::detail::grib
