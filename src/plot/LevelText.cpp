#include "plot/LevelText.h"

#include "core/Const.h"
#include "core/Format.h"
#include "plot/LabelText.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {

int decimalsOf(float interval)
{
    double scaled = std::abs(static_cast<double>(interval));
    int decimals = 0;
    while (decimals < 6 && std::abs(scaled - std::round(scaled)) > 1e-3 * std::min(scaled, 1.)) {
        scaled *= 10;
        ++decimals;
    }
    return decimals;
}

std::string levelText(float value, float interval)
{
    if (isMissing(interval))
        return plainNumber(value);
    std::string text = format("%.*f", decimalsOf(interval), static_cast<double>(value));
    bool const is_zero = text.find_first_not_of("-0.") == std::string::npos;
    return is_zero && text.front() == '-' ? text.substr(1) : text;
}

} // namespace Yul::detail
