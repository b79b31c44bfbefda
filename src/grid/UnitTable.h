// The vocabulary of units of measurement.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace Yul::detail {

/// A unit: powers of the base quantities, and its size in their SI units, si = factor * value + offset.
struct Quantity
{
    enum Base { METRE, KILOGRAM, SECOND, KELVIN, MOLE, RADIAN, NUM_BASE };

    std::array<int, NUM_BASE> powers{};
    double factor = 1;
    double offset = 0;
};

/// The unit with that name or sign, in its own case before any other.
[[nodiscard]] std::optional<Quantity> findUnit(std::string_view text);

/// The unit of a phrase that is no product of units, such as "degrees celsius", in any case.
[[nodiscard]] std::optional<Quantity> findUnitPhrase(std::string_view text);

} // namespace Yul::detail
