// Originating centres whose messages need rules of their own.
#pragma once

namespace Yul::detail::grib {

// Source: WMO Manual on Codes 306, volume I.2, common code tables C-1 and C-11.
constexpr int NCEP = 7;
constexpr int JMA = 34;
constexpr int JMA_OTHER = 35; ///< a second number of the same centre
constexpr int ECMWF = 98;     ///< as centre, and as sub-centre of those whose fields ECMWF codes

} // namespace Yul::detail::grib
