#include "grid/grib/Scan.h"

#include <algorithm>
#include <cstddef>

namespace Yul::detail::grib {
namespace {

/// Turns round the lines of `length` values that run the other way: all, or every second one.
void reverseLines(Scan scan, bool is_negative, std::size_t length, std::span<float> values)
{
    if (!scan.alternating && !is_negative)
        return;
    std::size_t const lines = values.size() / length;
    for (std::size_t line = 0; line < lines; ++line) {
        bool const is_turned = scan.alternating && line % 2 == 1;
        if (is_turned != is_negative) {
            auto const first = values.begin() + static_cast<std::ptrdiff_t>(line * length);
            std::reverse(first, first + static_cast<std::ptrdiff_t>(length));
        }
    }
}

/// Puts the last line first.
void flip(std::size_t length, std::span<float> values)
{
    std::size_t const lines = values.size() / length;
    for (std::size_t line = 0; line < lines / 2; ++line) {
        float * const upper = values.data() + line * length;
        std::swap_ranges(upper, upper + length, values.data() + (lines - 1 - line) * length);
    }
}

} // namespace

void arrange(Scan scan, int nx, int ny, std::span<float> values, std::vector<float> & spare)
{
    auto const columns = static_cast<std::size_t>(nx);
    auto const rows = static_cast<std::size_t>(ny);
    if (!scan.j_consecutive) {
        reverseLines(scan, scan.i_negative, columns, values);
        if (scan.j_positive)
            flip(columns, values);
        return;
    }
    reverseLines(scan, scan.j_positive, rows, values);
    if (scan.i_negative)
        flip(rows, values);
    spare.assign(values.begin(), values.end());
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            values[row * columns + column] = spare[column * rows + row];
}

} // namespace Yul::detail::grib
