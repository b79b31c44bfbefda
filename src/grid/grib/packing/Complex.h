// Complex packing, with or without spatial differencing.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks data templates 5.2 and 5.3: groups of numbers, each with its own reference, width and length;
/// missing values as substitutes of the largest number (and the largest but one) of a group's width;
/// differences of first or second order between the values that are not missing. Nothing is allocated.
/// data    the data section behind its five octets of length and number
/// out     the values in the message's order, missing ones -9999
/// return  empty; else what is wrong with the section, and out is partly written
/// Source: WMO Manual on Codes 306, volume I.2, data templates 7.2 and 7.3 and their notes.
[[nodiscard]] std::string unpackComplex(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
