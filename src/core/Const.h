// Constants that every room shares.
#pragma once

namespace Yul {

/// Shared constants. MISS is the missing value of every numeric field, date field, grid value and coordinate:
/// -9999 as an integer and -9999.0 as a floating-point number.
class Const
{
public:
    static constexpr int MISS = -9999;

    static constexpr double PI = 3.1415926535898;
    static constexpr double TWO_PI = 6.283185307;
    static constexpr double DRC = 0.017453293; ///< degrees to radians
    static constexpr double RDC = 57.29577951; ///< radians to degrees
    static constexpr double EARTH = 63.7122;   ///< earth radius, units of 100 km

    static constexpr float R = 287.05F;  ///< gas constant of dry air, J/(kg K)
    static constexpr float G = 9.8F;     ///< acceleration of gravity, m/s2
    static constexpr float CP = 1004.0F; ///< specific heat of dry air at constant pressure, J/(kg K)
    static constexpr float CV = 717.0F;  ///< specific heat of dry air at constant volume, J/(kg K)
};

namespace detail {

/// True when the value is the missing value.
template <class Number> [[nodiscard]] constexpr bool isMissing(Number value) noexcept
{
    return value == static_cast<Number>(Const::MISS);
}

} // namespace detail
} // namespace Yul
