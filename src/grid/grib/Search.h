// Where messages begin.
#pragma once

#include "grid/grib/Input.h"

#include <cstdint>

namespace Yul::detail::grib {

/// How a search for a message ended.
enum class Sought { FOUND, NOT_NEAR, END };

/// Looks for "GRIB" at 1000 octets from a position on.
/// position  out: of the "G" when it is found, else where the search ended.
/// return    NOT_NEAR when it is at none of them, END when the file ends before.
[[nodiscard]] Sought searchNear(Input & input, std::uint64_t & position);

/// True when "GRIB" stands at a position.
[[nodiscard]] bool isMessage(Input & input, std::uint64_t position);

/// Looks for "GRIB" with an edition that is known, however far: the way on behind a damaged message.
/// position  out: of the "G", else the end of the file.
void searchFar(Input & input, std::uint64_t & position);

} // namespace Yul::detail::grib
