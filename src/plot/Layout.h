// Where things stand on the page.
#pragma once

#include "geo/Rect.h"

namespace Yul::detail {

/// The panels of a page, all of one size, numbered row by row from the upper left one.
struct PanelGrid
{
    int rows = 1;
    int columns = 1;

    [[nodiscard]] int count() const { return rows * columns; }
};

/// One panel: all measures in NDC.
struct PanelLayout
{
    Rect area;             ///< the whole panel
    Rect map;              ///< the room for the frame: what is left inside the labels
    float text_height = 0; ///< of labels; other texts are in proportion
};

/// How many panels a page may have each way.
constexpr int MOST_PANELS = 12;

/// Reads "2x3", "2:3" or "4" (as square as can be); false, and nothing changes, for another text or a number
/// outside 1 to MOST_PANELS.
bool decodePanels(char const * text, PanelGrid & panels);

/// page   the NDC rectangle
/// panel  a panel number; numbers beyond the last start over
/// is_full  the frame fills the panel: no room is left for labels
[[nodiscard]] PanelLayout layOut(Rect const & page, PanelGrid const & panels, int panel, bool is_full);

} // namespace Yul::detail
