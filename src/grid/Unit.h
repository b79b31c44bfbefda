// Conversion between units of measurement.
#pragma once

#include "core/Const.h"

namespace Yul {

/// A pair of units and the conversion between them: to = from x factor + offset.
///
/// A unit text is a product of units with powers, in the forms that data centres use: "m s-1", "m/s",
/// "m s**-1", "kg m^-2", "K", "hPa", "mb", "dam", "kt", "%". Letters count in their case where it matters
/// ("m" and "M", "nm" and "NM"); "c", "f", "k", "pa", "hpa" and the like are accepted too, and so are degree
/// signs, micro signs and raised digits in UTF-8. Temperatures convert with their zero points when they stand
/// alone. A mass of water over an area converts to a depth (1 kg m-2 is 1 mm), a Dobson unit to the mass of
/// its ozone.
/// Units of different quantities do not convert; texts that are equal always do, known or not.
class Unit
{
public:
    /// Without units: not valid.
    Unit() = default;

    /// As by `set`.
    Unit(char const * from, char const * to) { set(from, to); }

    /// Returns 0 and becomes not valid when there is no conversion. Prints nothing.
    int set(char const * from, char const * to);
    /// A conversion by its numbers. Returns 0 and becomes not valid when one is not finite or the factor is 0.
    int set(double factor_value, double offset_value);

    /// Whether there is a conversion.
    [[nodiscard]] bool isValid() const noexcept { return is_valid; }

    /// What a value is multiplied by.
    [[nodiscard]] double getFactor() const noexcept { return factor; }

    /// What is added then.
    [[nodiscard]] double getOffset() const noexcept { return offset; }

    /// The value in the other units; Const::MISS for a missing value, for NaN and while not valid.
    [[nodiscard]] float convert(float value) const noexcept;

    /// The same in one step.
    [[nodiscard]] static float convert(float value, char const * from, char const * to);
    /// True when the text is a unit that the library understands.
    [[nodiscard]] static bool isKnown(char const * text);

private:
    double factor = 1;
    double offset = 0;
    bool is_valid = false;
};

} // namespace Yul
