// What the headers of a JPEG 2000 picture ask for.
#pragma once

#include "grid/grib/Octets.h"

#include <string>

namespace Yul::detail::grib {

/// Compares what the headers of a picture ask for with what is there, before a decoder allocates it: one component with a
/// sample for each value, a tile-part for every tile, and an octet at least for every packet (a precinct of a layer of a
/// resolution). Without this a few octets could claim millions of tiles or precincts, each worth hundreds of octets of
/// memory.
/// stream  from the first marker on.
/// values  samples that there are to be.
/// return  empty, else what is wrong.
/// Source: ISO/IEC 15444-1 (ITU-T T.800), annexes A and B.
[[nodiscard]] std::string checkJpeg2000(Octets stream, std::size_t values);

} // namespace Yul::detail::grib
