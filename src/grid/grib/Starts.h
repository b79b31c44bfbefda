// Where the bulletins of a file begin.
#pragma once

#include <cstdint>
#include <vector>

namespace Yul::detail::grib {

/// Octets of a data file at which its bulletins begin, in order, as the index file beside it lists them: a line for each,
/// "octet heading / product". Other lines are passed over. Empty when there is no such file.
[[nodiscard]] std::vector<std::uint64_t> readStarts(char const * index_name);

} // namespace Yul::detail::grib
