#include "grid/Unit.h"

#include "core/StrLib.h"
#include "grid/UnitText.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace Yul {
namespace {

using detail::Quantity;
using detail::readUnit;
using detail::tidyUnit;

constexpr std::size_t LONGEST_TEXT = 250;

/// A mass of water over an area as a depth: 1 kg m-2 is 1 mm.
Quantity asDepth(Quantity quantity)
{
    constexpr double WATER_DENSITY = 1000; // kg m-3
    if (quantity.powers[Quantity::METRE] == -2 && quantity.powers[Quantity::KILOGRAM] == 1) {
        quantity.powers[Quantity::METRE] = 1;
        quantity.powers[Quantity::KILOGRAM] = 0;
        quantity.factor /= WATER_DENSITY;
    }
    return quantity;
}

} // namespace

int Unit::set(char const * from, char const * to)
{
    *this = Unit();
    auto const from_view = detail::viewOf(from);
    auto const to_view = detail::viewOf(to);
    if (from_view.size() > LONGEST_TEXT || to_view.size() > LONGEST_TEXT)
        return 0;
    auto const from_text = tidyUnit(from_view);
    auto const to_text = tidyUnit(to_view);
    if (from_text == to_text) {
        is_valid = true;
        return 1;
    }
    auto source = readUnit(from_text);
    auto target = readUnit(to_text);
    if (!source || !target)
        return 0;
    if (source->powers != target->powers) {
        source = asDepth(*source);
        target = asDepth(*target);
        if (source->powers != target->powers)
            return 0;
    }
    factor = source->factor / target->factor;
    offset = (source->offset - target->offset) / target->factor;
    is_valid = std::isfinite(factor) && std::isfinite(offset);
    return is_valid ? 1 : 0;
}

int Unit::set(double factor_value, double offset_value)
{
    *this = Unit();
    if (!std::isfinite(factor_value) || !std::isfinite(offset_value) || factor_value == 0)
        return 0;
    factor = factor_value;
    offset = offset_value;
    is_valid = true;
    return 1;
}

float Unit::convert(float value) const noexcept
{
    if (!is_valid || detail::isMissing(value) || std::isnan(value))
        return static_cast<float>(Const::MISS);
    constexpr double LARGEST = std::numeric_limits<float>::max();
    auto const result = static_cast<double>(value) * factor + offset;
    if (std::abs(result) > LARGEST)
        return std::copysign(std::numeric_limits<float>::infinity(), static_cast<float>(result > 0 ? 1 : -1));
    return static_cast<float>(result);
}

float Unit::convert(float value, char const * from, char const * to)
{
    return Unit(from, to).convert(value);
}

bool Unit::isKnown(char const * text)
{
    auto const view = detail::viewOf(text);
    return view.size() <= LONGEST_TEXT && readUnit(tidyUnit(view)).has_value();
}

} // namespace Yul
