// Where things stand on the page.
#pragma once

#include "geo/Rect.h"
#include "plot/ColorBar.h"

namespace Yul::detail {

/// The panels of a page, all of one size, numbered row by row from the upper left one.
struct PanelGrid
{
    int rows = 1;
    int columns = 1;

    [[nodiscard]] int count() const { return rows * columns; }
};

/// What a page has to leave room for.
struct PageStyle
{
    PanelGrid panels;
    bool is_full = false;          ///< the map fills its panel: no room is left for texts
    bool has_full_labels = false;  ///< every panel has tick labels on all sides; else those inside are shared
    bool has_title = false;        ///< one over all panels
    BarPlace bar = BarPlace::NONE; ///< of each panel with full labels, else one for all
};

/// One panel: all measures in NDC.
struct PanelLayout
{
    Rect area;             ///< the whole panel
    Rect map;              ///< the room for the frame: what is left inside the labels
    float text_height = 0; ///< of labels; other texts are in proportion

    /// Sides with tick labels.
    bool has_left = true;
    bool has_right = true;
    bool has_bottom = true;
    bool has_top = true;

    bool has_bar = false; ///< the bar is drawn with this panel
    Rect maps;            ///< the room of all maps that the bar is for

    /// In the other panels of a row, and over those below the first, texts stand closer.
    [[nodiscard]] float upperDistance() const;
    [[nodiscard]] float lowerDistance() const;
};

/// How many panels a page may have each way.
constexpr int MOST_PANELS = 12;

/// Reads "2x3", "2:3" or "4" (as square as can be); false, and nothing changes, for another text or a number
/// outside 1 to MOST_PANELS.
bool decodePanels(char const * text, PanelGrid & panels);

/// page   the NDC rectangle
/// panel  a panel number; numbers beyond the last start over
[[nodiscard]] PanelLayout layOut(Rect const & page, PageStyle const & style, int panel);

} // namespace Yul::detail
