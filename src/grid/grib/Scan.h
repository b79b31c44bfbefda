// From a message's order of points to the grid's own.
#pragma once

#include <span>
#include <vector>

namespace Yul::detail::grib {

/// Flags of the scanning mode, the same in both editions (edition 1 has the first three).
/// Source: WMO Manual on Codes 306, volume I.2, flag table 3.4.
struct Scan
{
    bool i_negative = false;    ///< 0x80: points run toward -x (westward)
    bool j_positive = false;    ///< 0x40: lines run toward +y (northward)
    bool j_consecutive = false; ///< 0x20: adjacent points lie along y
    bool alternating = false;   ///< 0x10: every second line runs the other way

    static constexpr unsigned ALTERNATING = 0x10;

    [[nodiscard]] static constexpr Scan of(unsigned flags) noexcept
    {
        return {(flags & 0x80U) != 0, (flags & 0x40U) != 0, (flags & 0x20U) != 0, (flags & ALTERNATING) != 0};
    }
};

/// Brings values from the order of their message into row-major order, row 0 at the top (north) and column 0
/// on the left (west), in place. `spare` is used, and keeps its memory, only where adjacent points lie along
/// y.
void arrange(Scan scan, int nx, int ny, std::span<float> values, std::vector<float> & spare);

} // namespace Yul::detail::grib
