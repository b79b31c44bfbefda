#include "plot/DrawList.h"

#include "core/StrLib.h"

#include <string_view>

namespace Yul::detail {
namespace {

struct Keyword
{
    std::string_view name;
    unsigned switches; // bit i is switch i
};

constexpr unsigned ALL = (1U << DRAW_SWITCHES) - 1;

constexpr unsigned TEXTS = (1U << DRAW_TEXT_UL) | (1U << DRAW_TEXT_UC) | (1U << DRAW_TEXT_UR) |
                           (1U << DRAW_TEXT_LL) | (1U << DRAW_TEXT_LC) | (1U << DRAW_TEXT_LR) |
                           (1U << DRAW_BORDER);

/// Compared on their first characters, first hit wins: the order is behaviour.
constexpr Keyword KEYWORDS[] = {
    {"plot", 1U << DRAW_PLOT},
    {"sum", 1U << DRAW_PLOT},
    {"data", 1U << DRAW_DATA},
    {"grid", 1U << DRAW_MAP},
    {"map", 1U << DRAW_MAP},
    {"text_ul", 1U << DRAW_TEXT_UL},
    {"text_uc", 1U << DRAW_TEXT_UC},
    {"text_ur", 1U << DRAW_TEXT_UR},
    {"text_ll", 1U << DRAW_TEXT_LL},
    {"text_lc", 1U << DRAW_TEXT_LC},
    {"text_lr", 1U << DRAW_TEXT_LR},
    {"bord", 1U << DRAW_BORDER},
    {"text", TEXTS},
    {"all", ALL},
};

constexpr std::string_view NONE = "none";

void applyItem(std::string_view item, DrawSwitches & draw)
{
    bool const is_off = item.starts_with('-');
    if (is_off || item.starts_with('+'))
        item.remove_prefix(1);
    if (item.starts_with(NONE)) {
        draw.reset();
        return;
    }
    for (auto const & [name, switches] : KEYWORDS) {
        if (item.starts_with(name)) {
            draw = is_off ? draw & ~DrawSwitches(switches) : draw | DrawSwitches(switches);
            return;
        }
    }
}

} // namespace

DrawSwitches decodeDrawList(char const * list)
{
    std::string_view const text = viewOf(list);
    DrawSwitches draw;
    if (text.starts_with('-'))
        draw.set();
    for (std::string_view const item : split(text, ','))
        applyItem(item, draw);
    return draw;
}

} // namespace Yul::detail
