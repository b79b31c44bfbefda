// Values as a CCSDS lossless data compression stream.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks data template 5.42: blocks of unsigned samples, each block coded in the way that suits it best, as differences to
/// the sample before. 0 bits stand for a constant field. Nothing is allocated. Empty, or what is wrong.
/// Source: WMO Manual on Codes 306, volume I.2, data templates 5.42 and 7.42; CCSDS 121.0-B-2, Lossless data compression.
[[nodiscard]] std::string unpackCcsds(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
