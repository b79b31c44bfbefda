// Values as the samples of a PNG picture.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Octets.h"

#include <span>
#include <string>

namespace Yul::detail::grib {

/// What is wrong with octets that are no PNG picture at all.
constexpr char NOT_A_PNG[] = "Not a PNG file";

/// Unpacks data template 5.41: samples of 1 to 16 bits in gray, of 24 and 32 bits as three and four channels.
/// 0 bits stand for a constant field without a picture. Empty, or what is wrong. Source: WMO Manual on Codes
/// 306, volume I.2, data template 7.41.
[[nodiscard]] std::string unpackPng(Octets data, Packing const & packing, std::span<float> out);

} // namespace Yul::detail::grib
