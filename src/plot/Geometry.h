// Geometry texts.
#pragma once

#include "plot/GeomBox.h"

namespace Yul::detail {

/// Reads "WxH", "WxH+X-Y" or "+X-Y" into the box. Returns 1 (size only), 2 (size and offset), 3 (offset
/// only), or 0 when the text is none of these; the box then stays as it was.
int decodeGeometry(char const * text, GeomBox & box);

} // namespace Yul::detail
