// Values as the samples of a JPEG 2000 picture.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// Unpacks data template 5.40: a code stream with one component. 0 bits stand for a constant field without a
/// picture. Empty, or what is wrong. Source: WMO Manual on Codes 306, volume I.2, data template 7.40.
[[nodiscard]] std::string unpackJpeg2000(Octets data, Packing const & packing, std::span<float> out);

/// Decodes a code stream of as many samples as there are values and scales them. One of two back ends, chosen
/// when the library is configured: JasPer or OpenJPEG.
[[nodiscard]] std::string decodeJpeg2000(Octets stream, Scale const & scale, std::span<float> out);

} // namespace Yul::detail::grib
