#include "plot/Geometry.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <cmath>
#include <string>

namespace Yul::detail {
namespace {

float signedOffset(std::string const & sign, float value)
{
    return sign.front() == '-' ? -value : value;
}

} // namespace

int decodeGeometry(char const * text, GeomBox & box)
{
    GeomBox next;
    std::string x_sign;
    std::string y_sign;
    int result = 0;
    int const fields = scan(viewOf(text), "%fx%f%[-+]%f%[-+]%f", &next.width, &next.height, &x_sign, &next.x,
                            &y_sign, &next.y);
    if (fields == 6) {
        result = 2;
    } else if (fields == 2) {
        result = 1;
    } else {
        next = GeomBox();
        if (scan(viewOf(text), "%[-+]%f%[-+]%f", &x_sign, &next.x, &y_sign, &next.y) == 4)
            result = 3;
    }
    bool const is_finite = std::isfinite(next.width) && std::isfinite(next.height) && std::isfinite(next.x) &&
                           std::isfinite(next.y);
    if (result == 0 || !is_finite)
        return 0;
    if (result != 1) {
        next.x = signedOffset(x_sign, next.x);
        next.y = signedOffset(y_sign, next.y);
    }
    box = next;
    return result;
}

} // namespace Yul::detail
