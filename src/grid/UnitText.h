// Units as texts have them.
#pragma once

#include "grid/UnitTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace Yul::detail {

/// In ASCII, with blanks for underscores and "^" for "**", trimmed.
[[nodiscard]] std::string tidyUnit(std::string_view text);

/// The unit that a tidy text stands for.
[[nodiscard]] std::optional<Quantity> readUnit(std::string_view text);

} // namespace Yul::detail
