// Levels as texts.
#pragma once

#include <string>

namespace Yul::detail {

/// Decimals that tell levels apart which lie an interval apart.
[[nodiscard]] int decimalsOf(float interval);

/// A level or a value as it is written on a map, with the decimals of the interval; with no more than it
/// takes when that is Const::MISS.
[[nodiscard]] std::string levelText(float value, float interval);

} // namespace Yul::detail
