// printf-style formatting into a std::string, independent of the locale.
#pragma once

#include "core/VarArgs.h"

#include <string>

namespace Yul::detail {

/// Formats as printf does in the C locale. "%n" writes nothing, a null "%s" prints "(null)", and widths and
/// precisions of numbers are held to 4095.
[[nodiscard]] std::string vformat(char const * format, VarArgs & args);

/// The same with the arguments in place: format("%d of %d\n", i, n).
[[nodiscard]] [[gnu::format(printf, 1, 2)]] std::string format(char const * format, ...);

} // namespace Yul::detail
