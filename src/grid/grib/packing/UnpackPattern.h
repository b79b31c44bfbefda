// How wide registers take apart numbers of any width: octets to shuffle and shifts, by table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Yul::detail::grib {

/// Eight numbers of w bits are w octets: a step over a multiple of eight numbers always begins at the same bit of an octet,
/// and one pattern serves all steps. Each number lies in four octets as long as w is at most 25.
constexpr unsigned WIDEST_PATTERN = 25;

/// How to bring LANES numbers that begin at a bit of an octet (0 to 7) into as many lanes. The octets are loaded in HALVES
/// pieces, because some registers shuffle only within their halves.
template <unsigned LANES, unsigned HALVES> struct UnpackPattern
{
    std::array<std::uint8_t, std::size_t{4} * LANES>
        octets{}; ///< four a lane, least significant first, within its load
    std::array<std::uint32_t, LANES> shift{};
    std::uint32_t mask = 0;
    std::uint32_t upper = 0; ///< octet at which the load of the upper half begins; 0 without halves
};

template <unsigned LANES, unsigned HALVES>
constexpr UnpackPattern<LANES, HALVES> makeUnpackPattern(unsigned start, unsigned width)
{
    UnpackPattern<LANES, HALVES> pattern;
    pattern.mask = (1U << width) - 1;
    pattern.upper = HALVES > 1 ? (start + LANES / 2 * width) / 8 : 0;
    for (unsigned lane = 0; lane < LANES; ++lane) {
        unsigned const bit = start + lane * width;
        unsigned const octet = bit / 8 - (lane < LANES / 2 ? 0 : pattern.upper);
        for (unsigned i = 0; i < 4; ++i)
            pattern.octets[4 * lane + i] = static_cast<std::uint8_t>(octet + 3 - i);
        pattern.shift[lane] = 32 - width - bit % 8;
    }
    return pattern;
}

/// By the bit of an octet at which the numbers begin, and their width; width 0 gives zeros.
template <unsigned LANES, unsigned HALVES>
using UnpackPatterns = std::array<std::array<UnpackPattern<LANES, HALVES>, WIDEST_PATTERN + 1>, 8>;

template <unsigned LANES, unsigned HALVES> constexpr UnpackPatterns<LANES, HALVES> makeUnpackPatterns()
{
    UnpackPatterns<LANES, HALVES> patterns{};
    for (unsigned start = 0; start < 8; ++start)
        for (unsigned width = 1; width <= WIDEST_PATTERN; ++width)
            patterns[start][width] = makeUnpackPattern<LANES, HALVES>(start, width);
    return patterns;
}

} // namespace Yul::detail::grib
