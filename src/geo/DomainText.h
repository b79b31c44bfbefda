// Numbers in domain texts.
#pragma once

#include <optional>
#include <string_view>

namespace Yul::detail {

/// The number that fills the whole text, blanks at both ends and one leading "+" aside; none for a word, a number
/// that the type does not hold, an infinity or not-a-number, or -9999.
[[nodiscard]] std::optional<float> readFloat(std::string_view text) noexcept;
[[nodiscard]] std::optional<int> readInt(std::string_view text) noexcept;

} // namespace Yul::detail
