#include "graphics/Color.h"

#include "core/StrLib.h"

#include <algorithm>

namespace Yul {
namespace {

float holdComponent(float value)
{
    return value > 0 ? std::min(value, 1.0F) : 0.0F; // also for a value that is not a number
}

} // namespace

Color::Color(char const * color_name, float r, float g, float b)
{
    setName(color_name);
    setRGB(r, g, b);
}

int Color::setName(char const * color_name)
{
    name = detail::viewOf(color_name).substr(0, NAME_SIZE);
    return 1;
}

int Color::setRGB(float r, float g, float b)
{
    return rgb.set(holdComponent(r), holdComponent(g), holdComponent(b));
}

} // namespace Yul
