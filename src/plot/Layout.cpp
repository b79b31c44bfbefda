#include "plot/Layout.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace Yul::detail {
namespace {

constexpr float TEXT_HEIGHT = 0.0105F; // of a page with one panel, 8 points on the standard page

/// In text heights: from the frame to the nearest corner label, beyond the tick labels or without them.
constexpr float UPPER_DISTANCE = 3.F;
constexpr float LOWER_DISTANCE = 3.2F;
constexpr float CLOSE_DISTANCE = 1.F;

/// Room round the frames in text heights: tick labels on every side, two lines of labels above, one below.
constexpr float SIDE_ROOM = 5.5F;
constexpr float UPPER_ROOM = 7.F;
constexpr float LOWER_ROOM = 5.5F;
constexpr float TITLE_ROOM = 3.F;

/// Between two panels that share their tick labels.
constexpr float COLUMN_GAP = 2.F;
constexpr float ROW_GAP =
    UPPER_ROOM + LOWER_ROOM - UPPER_DISTANCE - LOWER_DISTANCE + 2 * CLOSE_DISTANCE - 1.F;

constexpr float BAR_ROOM_RIGHT = 7.5F;
constexpr float BAR_ROOM_BOTTOM = 4.5F;

bool isCount(int n)
{
    return n >= 1 && n <= MOST_PANELS;
}

struct Room
{
    float left, right, bottom, top;
};

Rect inside(Rect const & area, Room const & room)
{
    return {area.x1 + room.left, area.y1 + room.bottom, area.x2 - room.right, area.y2 - room.top};
}

/// Row and column of a panel, from the upper left.
struct PanelPlace
{
    int row, column;
};

/// A panel's share of the room that all have, with gaps between them.
Rect cellOf(
    Rect const & room, PanelGrid const & panels, PanelPlace const & place, float column_gap, float row_gap)
{
    auto const columns = static_cast<float>(panels.columns);
    auto const rows = static_cast<float>(panels.rows);
    float const width = (room.getWidth() - column_gap * (columns - 1)) / columns;
    float const height = (room.getHeight() - row_gap * (rows - 1)) / rows;
    float const x1 = room.x1 + static_cast<float>(place.column) * (width + column_gap);
    float const y2 = room.y2 - static_cast<float>(place.row) * (height + row_gap);
    return {x1, y2 - height, x1 + width, y2};
}

/// For labels round the frame of a map.
Room frameRoom(PageStyle const & style, float h)
{
    return style.is_full ? Room{} : Room{SIDE_ROOM * h, SIDE_ROOM * h, LOWER_ROOM * h, UPPER_ROOM * h};
}

/// For the colour bar beside it.
Room barRoom(PageStyle const & style, float h)
{
    return {0, style.bar == BarPlace::RIGHT ? BAR_ROOM_RIGHT * h : 0,
            style.bar == BarPlace::BOTTOM ? BAR_ROOM_BOTTOM * h : 0, 0};
}

/// Places one of several panels that have tick labels at the edges of their common room only.
void shareLabels(PanelLayout & layout, PanelGrid const & panels, PanelPlace const & place, Room const & frame)
{
    float const column_gap = COLUMN_GAP * layout.text_height;
    float const row_gap = ROW_GAP * layout.text_height;
    layout.has_left = place.column == 0;
    layout.has_right = place.column == panels.columns - 1;
    layout.has_top = place.row == 0;
    layout.has_bottom = place.row == panels.rows - 1;
    layout.map = cellOf(layout.maps, panels, place, column_gap, row_gap);
    layout.area = inside(layout.map, {-(layout.has_left ? frame.left : column_gap / 2),
                                      -(layout.has_right ? frame.right : column_gap / 2),
                                      -(layout.has_bottom ? frame.bottom : row_gap / 2),
                                      -(layout.has_top ? frame.top : row_gap / 2)});
}

struct PlaceName
{
    std::string_view name;
    BarPlace place;
};

constexpr PlaceName PLACES[] = {{"r", BarPlace::RIGHT}, {"b", BarPlace::BOTTOM}};

} // namespace

BarPlace decodeBarPlace(char const * text)
{
    std::string_view const wanted = viewOf(text);
    if (wanted.empty())
        return BarPlace::RIGHT;
    for (auto const & [name, place] : PLACES)
        if (startsIgnoringCase(wanted, name))
            return place;
    return BarPlace::NONE;
}

float PanelLayout::upperDistance() const
{
    return (has_top ? UPPER_DISTANCE : CLOSE_DISTANCE) * text_height;
}

float PanelLayout::lowerDistance() const
{
    return (has_bottom ? LOWER_DISTANCE : CLOSE_DISTANCE) * text_height;
}

bool decodePanels(char const * text, PanelGrid & panels)
{
    PanelGrid next{0, 0};
    std::string separator;
    std::string rest;
    int const fields = scan(viewOf(text), "%d%1[xX:]%d%1s", &next.rows, &separator, &next.columns, &rest);
    if (fields == 1 && isCount(next.rows)) {
        int const wanted = next.rows;
        next.columns = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(wanted))));
        next.rows = (wanted + next.columns - 1) / next.columns;
    } else if (fields != 3) {
        return false;
    }
    if (!isCount(next.rows) || !isCount(next.columns))
        return false;
    panels = next;
    return true;
}

PanelLayout layOut(Rect const & page, PageStyle const & style, int panel)
{
    PanelGrid const & panels = style.panels;
    int const index = std::max(panel, 0) % panels.count();
    PanelPlace const place{index / panels.columns, index % panels.columns};
    bool const is_shared = !style.is_full && !style.has_full_labels && panels.count() > 1;

    PanelLayout layout;
    float const share = 1.F / static_cast<float>(std::max(panels.rows, panels.columns));
    float const h = TEXT_HEIGHT * std::pow(share, 0.6F); // smaller panels, not quite as small texts
    layout.text_height = h;
    Room const frame = frameRoom(style, h);
    Room const bar = barRoom(style, h);
    Rect room = page;
    if (style.has_title && panels.count() > 1)
        room.y2 -= TITLE_ROOM * h;
    if (is_shared) {
        room = inside(inside(room, bar), frame);
        layout.maps = room;
        layout.has_bar = style.bar != BarPlace::NONE && index == 0;
        shareLabels(layout, panels, place, frame);
        return layout;
    }
    layout.area = cellOf(room, panels, place, 0, 0);
    layout.map = inside(inside(layout.area, bar), frame);
    layout.maps = layout.map;
    layout.has_bar = style.bar != BarPlace::NONE;
    return layout;
}

} // namespace Yul::detail
