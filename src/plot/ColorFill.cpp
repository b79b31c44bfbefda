#include "plot/ColorFill.h"

#include "core/Scan.h"
#include "core/StrLib.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace Yul {
namespace {

/// The items of a list with any of the separators between them, empty ones left out.
std::vector<std::string_view> items(char const * text, std::string_view separators)
{
    std::vector<std::string_view> found;
    std::string_view rest = detail::viewOf(text);
    while (!rest.empty()) {
        std::size_t const end = std::min(rest.find_first_of(separators), rest.size());
        if (end > 0)
            found.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return found;
}

} // namespace

int ColorFill::init()
{
    *this = ColorFill();
    return 1;
}

int ColorFill::setValues(char const * text)
{
    std::vector<float> next;
    for (std::string_view const item : items(text, ",: ")) {
        float value = 0;
        std::string rest;
        if (next.size() == MAX_COLORS || detail::scan(item, "%f%1s", &value, &rest) != 1 ||
            !std::isfinite(value))
            return 0;
        next.push_back(value);
    }
    values = std::move(next);
    return 1;
}

float ColorFill::getValue(int i) const noexcept
{
    return i >= 0 && i < getNumValues() ? values[static_cast<std::size_t>(i)]
                                        : static_cast<float>(Const::MISS);
}

int ColorFill::setNumColors(int n)
{
    if (n < 1 || n > MAX_COLORS)
        return 0;
    num_colors = n;
    return 1;
}

int ColorFill::getNumColors() const noexcept
{
    if (!detail::isMissing(num_colors))
        return num_colors;
    return colors.empty() ? NUM_COLORS : static_cast<int>(colors.size());
}

int ColorFill::setColors(char const * names)
{
    std::vector<std::string> next;
    for (std::string_view const item : items(names, ",:")) {
        if (next.size() == MAX_COLORS)
            return 0;
        next.emplace_back(item);
    }
    colors = std::move(next);
    return 1;
}

char const * ColorFill::getColor(int i) const noexcept
{
    if (i < 0 || colors.empty())
        return nullptr;
    return colors[std::min(static_cast<std::size_t>(i), colors.size() - 1)].c_str();
}

int ColorFill::setInterval(float value)
{
    if (!std::isfinite(value))
        return 0;
    interval = value;
    return 1;
}

int ColorFill::setBase(float value)
{
    if (!std::isfinite(value))
        return 0;
    base = value;
    return 1;
}

} // namespace Yul
