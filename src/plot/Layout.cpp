#include "plot/Layout.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace Yul::detail {
namespace {

constexpr float TEXT_HEIGHT = 0.0105F; // of a page with one panel, 8 points on the standard page

/// Room round the frame in text heights: tick labels on every side, two lines of labels above, one below.
constexpr float SIDE_ROOM = 5.5F;
constexpr float UPPER_ROOM = 7.F;
constexpr float LOWER_ROOM = 5.5F;

bool isCount(int n)
{
    return n >= 1 && n <= MOST_PANELS;
}

} // namespace

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

PanelLayout layOut(Rect const & page, PanelGrid const & panels, int panel, bool is_full)
{
    int const index = std::max(panel, 0) % panels.count();
    auto const column = static_cast<float>(index % panels.columns);
    auto const row = static_cast<float>(index / panels.columns);
    float const width = page.getWidth() / static_cast<float>(panels.columns);
    float const height = page.getHeight() / static_cast<float>(panels.rows);

    PanelLayout layout;
    float const share = 1.F / static_cast<float>(std::max(panels.rows, panels.columns));
    layout.text_height = TEXT_HEIGHT * std::pow(share, 0.6F); // smaller panels, not quite as small texts
    layout.area = Rect(page.x1 + column * width, page.y2 - (row + 1) * height, page.x1 + (column + 1) * width,
                       page.y2 - row * height);
    float const h = is_full ? 0.F : layout.text_height;
    layout.map = Rect(layout.area.x1 + SIDE_ROOM * h, layout.area.y1 + LOWER_ROOM * h,
                      layout.area.x2 - SIDE_ROOM * h, layout.area.y2 - UPPER_ROOM * h);
    return layout;
}

} // namespace Yul::detail
