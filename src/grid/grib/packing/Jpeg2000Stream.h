// What the headers of a JPEG 2000 picture ask for.
#pragma once

#include "grid/grib/Octets.h"

#include <string>

namespace Yul::detail::grib {

/// Compares what the headers of a picture ask for with what is there, before a decoder allocates it: one component with a
/// sample for each value, a tile-part for every tile, an octet at least for every packet (a precinct of a layer of a
/// resolution), and tiles, precincts and code-blocks that are large enough for what a decoder keeps for each, hundreds or
/// thousands of octets. Without this a few octets could claim millions of them. Code-blocks of 16 by 16 samples pass, tiles of 64
/// by 64; the smallest that the format allows do not, but in pictures below some ten thousand samples.
/// stream  from the first marker on.
/// values  samples that there are to be.
/// return  empty, else what is wrong.
/// Source: ISO/IEC 15444-1 (ITU-T T.800), annexes A and B.
[[nodiscard]] std::string checkJpeg2000(Octets stream, std::size_t values);

} // namespace Yul::detail::grib
