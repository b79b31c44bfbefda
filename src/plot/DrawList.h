// Which parts of a picture are drawn.
#pragma once

#include <bitset>

namespace Yul::detail {

/// The drawing switches of a plot.
enum DrawSwitch {
    DRAW_PLOT = 0, ///< the plotted data summary
    DRAW_DATA = 1,
    DRAW_MAP = 2,
    DRAW_TEXT_UL = 3, ///< the six corner labels: upper left, centre, right, lower left, centre, right
    DRAW_TEXT_UC = 4,
    DRAW_TEXT_UR = 5,
    DRAW_TEXT_LL = 6,
    DRAW_TEXT_LC = 7,
    DRAW_TEXT_LR = 8,
    DRAW_BORDER = 9,
    DRAW_SWITCHES = 13 ///< 10 to 12 have no keyword
};

using DrawSwitches = std::bitset<DRAW_SWITCHES>;

/// The switches of a drawing list such as "map,bord" or "-text": comma-separated keywords, each with an
/// optional "+" (on, the default) or "-" (off). When the first item starts with "-" all 13 start on,
/// otherwise off. Keywords are case-sensitive; unknown ones are passed over.
[[nodiscard]] DrawSwitches decodeDrawList(char const * list);

} // namespace Yul::detail
