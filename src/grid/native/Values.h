// The values behind a header of a native grid file.
#pragma once

#include "core/File.h"
#include "grid/native/Header.h"
#include "grid/native/Input.h"

#include <string>

namespace Yul {

class Grid;

namespace detail::native {

/// Reads the values that the header announces, and passes over what ends them. Octets that the file has not got are
/// found out before memory is taken for them. Returns why not, empty when all is well; the grid has no values then.
[[nodiscard]] std::string readValues(Input & input, Header const & header, Grid & grid);

/// Passes over them.
[[nodiscard]] std::string skipValues(Input & input, Header const & header);

/// Writes a grid's values as TEXT, each by the printf format and a newline, or BINARY. False when the device did not
/// take them.
[[nodiscard]] bool writeValues(File & file, Grid const & grid, int form, std::string const & value_format);

/// The format of values that are written as text, unless another one is set.
inline constexpr char const * VALUE_FORMAT = "%14.8e";

/// True for a printf format that prints one number of floating point: one of %e %f %g %E %F %G, no "*", and other
/// characters around it.
[[nodiscard]] bool isValueFormat(std::string_view format) noexcept;

} // namespace detail::native
} // namespace Yul
