// Messages of edition 1 for writing.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Yul::detail::grib {

/// How values are to be packed: with so many bits each, or to so many decimal places. When both are given, the places set
/// the unit and the bits the number of steps; when neither, 16 bits.
struct PackingChoice
{
    static constexpr int DEFAULT_BITS = 16;
    static constexpr int MAX_BITS = 31;

    std::optional<int> bits;    ///< 1 to MAX_BITS
    std::optional<int> decimal; ///< D of 10^-D
};

/// Length of a period as the product definition writes it.
struct Range1
{
    unsigned unit = 1;
    unsigned p1 = 0;
    unsigned p2 = 0;
    unsigned indicator = 0;
};

/// Puts a message together: product definition, grid description, bitmap where a value is missing, binary data.
/// field    its product (edition 1 numbers) and its geometry; the scanning mode is north to south, west to east.
/// range    the forecast time.
/// values   one a point, row 0 in the north, missing ones -9999 or NaN.
/// message  out: the octets.
/// return   empty, else why there is no such message.
/// Source: WMO Manual on Codes 306, volume I.2, FM 92-XIII GRIB.
[[nodiscard]] std::string encode1(Field const & field,
                                  Range1 const & range,
                                  PackingChoice choice,
                                  std::span<float const> values,
                                  std::vector<Octet> & message);

} // namespace Yul::detail::grib
