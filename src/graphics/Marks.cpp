#include "graphics/Marks.h"

namespace Yul::detail {
namespace {

constexpr MarkVertex POINT[] = {
    {0, 0, true}, {0.2F, 0}, {0.2F, 0.2F}, {0, 0.2F}, {0, 0},
};
constexpr MarkVertex PLUS[] = {
    {-1, 0, true},
    {1, 0},
    {0, -1, true},
    {0, 1},
};
/// One line through the centre: horizontal, rising, vertical and falling stroke.
constexpr MarkVertex STAR[] = {
    {-1, 0, true}, {1, 0}, {0, 0}, {-1, -1}, {1, 1}, {0, 0}, {0, -1}, {0, 1}, {0, 0}, {-1, 1}, {1, -1},
};
constexpr MarkVertex CIRCLE[] = {
    {1, 0, true},    {0.866F, 0.5F},  {0.5F, 0.866F},   {0, 1},           {-0.5F, 0.866F},
    {-0.866F, 0.5F}, {-1, 0},         {-0.866F, -0.5F}, {-0.5F, -0.866F}, {0, -1},
    {0.5F, -0.866F}, {0.866F, -0.5F}, {1, 0},
};
constexpr MarkVertex CROSS[] = {
    {-1, -1, true},
    {1, 1},
    {1, -1, true},
    {-1, 1},
};
constexpr MarkVertex SQUARE[] = {
    {-1, 1, true}, {1, 1}, {1, -1}, {-1, -1}, {-1, 1},
};
constexpr MarkVertex TRIANGLE[] = {
    {-1, -1, true},
    {1, -1},
    {0, 1},
    {-1, -1},
};
constexpr MarkVertex DOT[] = {
    {0, 0, true},
    {0.1F, 0.1F},
};
constexpr MarkVertex INVERTED_TRIANGLE[] = {
    {-1, 1, true},
    {1, 1},
    {0, -1},
    {-1, 1},
};
constexpr MarkVertex LIGHTNING[] = {
    {0, 1, true},
    {0.5F, 0},
    {-0.5F, 0},
    {0, -1},
};

constexpr std::span<MarkVertex const> FIGURES[NUM_MARKS] = {
    POINT, PLUS, STAR, CIRCLE, CROSS, SQUARE, TRIANGLE, DOT, INVERTED_TRIANGLE, LIGHTNING,
};

} // namespace

std::span<MarkVertex const> markFigure(int type)
{
    return type >= 1 && type <= NUM_MARKS ? FIGURES[type - 1] : std::span<MarkVertex const>();
}

} // namespace Yul::detail
