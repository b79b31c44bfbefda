#include "grid/grib/packing/Jpeg2000.h"

#include "grid/grib/packing/Jpeg2000Stream.h"

#include <algorithm>

namespace Yul::detail::grib {

std::string unpackJpeg2000(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.bits == 0 || out.empty()) {
        std::fill(out.begin(), out.end(), static_cast<float>(packing.scale(0)));
        return {};
    }
    std::string const fault = checkJpeg2000(data, out.size());
    return fault.empty() ? decodeJpeg2000(data, packing.scale, out) : fault;
}

#if !defined(YUL_HAVE_OPENJPEG) && !defined(YUL_HAVE_JASPER)

std::string decodeJpeg2000(Octets, Scale const &, std::span<float>)
{
    return "JPEG 2000 pictures are not read: built without a codec";
}

#endif

} // namespace Yul::detail::grib
