#include "grid/Level.h"

#include "core/Output.h"
#include "grid/LevelTable.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

using detail::isMissing;

bool closeTo(float a, float b)
{
    constexpr float RELATIVE = 1e-6F;
    return a == b || std::abs(a - b) <= RELATIVE * std::max(std::abs(a), std::abs(b));
}

} // namespace

int Level::init()
{
    *this = Level();
    return 1;
}

int Level::set(int kind)
{
    if (kind == NONE)
        return init();
    if (kind < 0 || kind > detail::MAX_LEVEL_KIND)
        return 0;
    init();
    type = kind;
    return 1;
}

int Level::set(int kind, float value)
{
    if (isMissing(value) || kind == NONE)
        return set(kind);
    if (!std::isfinite(value) || set(kind) == 0)
        return 0;
    auto const * const row = detail::findLevelKind(kind);
    if (row == nullptr || row->has_value)
        val = value + 0.0F; // no negative zero
    return 1;
}

int Level::set(int kind, float first, float second)
{
    if (isMissing(second) || isMissing(first))
        return set(kind, isMissing(first) ? second : first);
    if (!std::isfinite(second) || set(kind, first) == 0)
        return 0;
    if (!isMissing(val))
        val2 = second + 0.0F;
    return 1;
}

int Level::set(Level const & level)
{
    *this = level;
    return 1;
}

bool Level::isKnown() const
{
    return detail::findLevelKind(type) != nullptr;
}

char const * Level::getUnits() const
{
    auto const * const row = detail::findLevelKind(type);
    return row != nullptr ? row->units : "";
}

bool Level::compare(Level const & level) const
{
    if (type != level.type || isLayer() != level.isLayer())
        return false;
    return (closeTo(val, level.val) && closeTo(val2, level.val2)) ||
           (isLayer() && closeTo(val, level.val2) && closeTo(val2, level.val));
}

int Level::print() const
{
    String text;
    toString(text);
    text.append("\n");
    detail::writeOut(text.view());
    return 1;
}

} // namespace Yul
