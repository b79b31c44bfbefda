// Names of generating processes.
#pragma once

namespace Yul::detail::grib {

/// The name of a centre's generating process; where that is not known, the centre's name; an empty text where
/// neither is. Source: WMO common code table C-11 (centres); NCEP Office Note 388, table A (processes of
/// centre 7).
[[nodiscard]] char const * modelName(int centre, int process) noexcept;

} // namespace Yul::detail::grib
