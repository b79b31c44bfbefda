// The key to the colours of a layer.
#pragma once

#include "core/Const.h"

#include <string>
#include <vector>

namespace Yul::detail {

/// Which colours stand for which values: colour i from level i up to the next one, the last one also for all
/// values above.
struct ColorBar
{
    std::vector<float> levels; ///< ascending
    std::vector<int> colors;   ///< the device's values, -1 for none; as many as levels
    float interval = Const::MISS;
    bool is_open = false; ///< values go on above the last level
    std::string units;

    [[nodiscard]] bool isEmpty() const { return levels.empty(); }
};

/// Where the bar stands.
enum class BarPlace { NONE, RIGHT, BOTTOM };

/// "" and "right", "bottom", "off" in any case, on a prefix; NONE for another text.
[[nodiscard]] BarPlace decodeBarPlace(char const * text);

} // namespace Yul::detail
