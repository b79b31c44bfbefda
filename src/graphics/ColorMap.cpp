#include "graphics/ColorMap.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/TableFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace Yul {
namespace {

struct SpecialName
{
    std::string_view name;
    int index;
    int packed; // what stands for it on a device without patterns
};

constexpr int BLACK = 0x000000;
constexpr int WHITE = 0xffffff;
constexpr int GRAY = 0x808080;

/// Names that stand for no entry of the table.
constexpr SpecialName SPECIAL_NAMES[] = {
    {"end", ColorMap::END, -1},   {"none", ColorMap::OFF, -1}, {"off", ColorMap::OFF, -1},
    {"back", ColorMap::BACK, -1}, {"pblk", 500, BLACK},        {"pbblk", 501, BLACK},
    {"ptblk", 502, BLACK},        {"pwht", 503, WHITE},        {"pbwht", 504, WHITE},
    {"ptwht", 505, WHITE},        {"pgry", 506, GRAY},         {"pbgry", 507, GRAY},
    {"ptgry", 508, GRAY},
};

/// Parses digits of the same length for each component; none when a component is out of 0..255.
std::optional<RGB> parseComponents(std::string_view digits, int base)
{
    std::size_t const length = digits.size() / 3;
    std::array<float, 3> part{};
    for (std::size_t i = 0; i < part.size(); ++i) {
        std::string_view const text = digits.substr(i * length, length);
        unsigned value = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
        if (error != std::errc{} || end != text.data() + text.size() || value > 255)
            return std::nullopt;
        part[i] = static_cast<float>(value) / 255.0F;
    }
    return RGB(part[0], part[1], part[2]);
}

/// "#" with 6 hexadecimal or 9 decimal digits.
std::optional<RGB> parseColor(std::string_view text)
{
    constexpr std::size_t HEX_SIZE = 7;
    constexpr std::size_t DECIMAL_SIZE = 10;
    if (text.empty() || text.front() != '#')
        return std::nullopt;
    if (text.size() == HEX_SIZE)
        return parseComponents(text.substr(1), 16);
    if (text.size() == DECIMAL_SIZE)
        return parseComponents(text.substr(1), 10);
    return std::nullopt;
}

std::string_view cutName(char const * name)
{
    return detail::viewOf(name).substr(0, Color::NAME_SIZE);
}

/// One line of a colour table file: "color NAME R G B" (0 to 255) or "fill N".
struct TableLine
{
    std::string_view name; // empty: the line sets the number of fill colours
    RGB rgb;
    int num_fill = 0;
};

std::optional<TableLine> parseLine(std::string_view text)
{
    auto const word = detail::words(text);
    TableLine line;
    if (word[0] == "fill" && word.size() == 2 && detail::readInt(word[1], line.num_fill))
        return line;
    std::array<float, 3> part{};
    if (word[0] != "color" || word.size() != 5)
        return std::nullopt;
    for (std::size_t i = 0; i < part.size(); ++i)
        if (!detail::readFloat(word[2 + i], part[i]) || part[i] < 0 || part[i] > 255)
            return std::nullopt;
    line.name = word[1];
    line.rgb.set(part[0] / 255, part[1] / 255, part[2] / 255);
    return line;
}

} // namespace

ColorMap::ColorMap(int capacity)
{
    init(capacity);
}

int ColorMap::init(int capacity)
{
    colors.clear();
    size = std::max(capacity, 0);
    num_fill = 0;
    return 1;
}

int ColorMap::add(char const * name, float r, float g, float b)
{
    if (getNum() >= size) {
        Yul::outWarning("Color map size exceeded %d > %d\n", getNum(), size);
        return -1;
    }
    std::string_view const wanted = cutName(name);
    if (wanted.empty())
        return -1;
    auto const found =
        std::find_if(colors.begin(), colors.end(), [&](Color const & c) { return wanted == c.getName(); });
    auto const index = static_cast<int>(found - colors.begin());
    if (found != colors.end())
        found->setRGB(r, g, b);
    else
        colors.emplace_back(name, r, g, b);
    return index;
}

int ColorMap::add(char const * name, RGB const & rgb)
{
    return add(name, rgb.r, rgb.g, rgb.b);
}

int ColorMap::read(char const * name)
{
    detail::TableFile file;
    std::string const given(detail::viewOf(name));
    if (file.open(given) == 0 && file.open(detail::databaseFile(given)) == 0) {
        Yul::outWarning("ColorMap::read: Unable to open file: %s\n", given.c_str());
        return 0;
    }
    ColorMap next(*this); // filled first: a damaged file leaves the table as it was
    std::string_view text;
    bool is_table = file.next(text) && text == "YulColors 1";
    while (is_table && file.next(text)) {
        auto const line = parseLine(text);
        if (!line)
            is_table = false;
        else if (line->name.empty())
            is_table = next.setNumFill(line->num_fill);
        else if (next.add(std::string(line->name).c_str(), line->rgb) < 0)
            return 0;
    }
    if (!is_table) {
        Yul::outWarning("ColorMap::read: Not a color table: %s\n", given.c_str());
        return 0;
    }
    *this = std::move(next);
    return 1;
}

int ColorMap::getInd(char const * name)
{
    std::string_view const wanted = detail::viewOf(name);
    for (SpecialName const & special : SPECIAL_NAMES)
        if (detail::sameIgnoringCase(special.name, wanted))
            return special.index;
    for (int i = 0; i < getNum(); ++i)
        if (detail::sameIgnoringCase(getName(i), cutName(name)))
            return i;
    if (auto const rgb = parseColor(wanted))
        return add(name, *rgb);
    return !wanted.empty() && detail::isDigit(wanted.front()) ? detail::toInt(wanted) : -1;
}

Color const * ColorMap::find(int index) const
{
    if (index < 0 || colors.empty())
        return nullptr;
    return &colors[std::min(static_cast<std::size_t>(index), colors.size() - 1)];
}

char const * ColorMap::getName(int index) const
{
    return index >= 0 && index < getNum() ? colors[static_cast<std::size_t>(index)].getName() : nullptr;
}

int ColorMap::get(int index, RGB & rgb) const
{
    Color const * const color = find(index);
    rgb = color != nullptr ? color->rgb : RGB(-1, -1, -1);
    return color != nullptr ? 1 : 0;
}

int ColorMap::getRGB(int index, float & r, float & g, float & b) const
{
    RGB rgb;
    int const is_found = get(index, rgb);
    r = rgb.r;
    g = rgb.g;
    b = rgb.b;
    return is_found;
}

int ColorMap::getIRGB(int index, int & r, int & g, int & b) const
{
    RGB rgb;
    int const is_found = get(index, rgb);
    auto const level = [&](float part) {
        return is_found != 0 ? static_cast<int>(std::lround(part * 255)) : -1;
    };
    r = level(rgb.r);
    g = level(rgb.g);
    b = level(rgb.b);
    return is_found;
}

int ColorMap::setValue(int index, int value)
{
    if (index < 0 || index >= getNum())
        return 0;
    colors[static_cast<std::size_t>(index)].value = value;
    return 1;
}

int ColorMap::getValue(int index) const
{
    if (index >= getNum())
        for (SpecialName const & special : SPECIAL_NAMES)
            if (special.index == index)
                return special.packed;
    Color const * const color = find(index);
    return color != nullptr ? color->value : -1;
}

int ColorMap::getValue(char const * name)
{
    return getValue(getInd(name));
}

bool ColorMap::setNumFill(int n)
{
    if (n < 0 || n > getNum())
        return false;
    num_fill = n;
    return true;
}

bool ColorMap::isColorNear(int index, RGB const & rgb) const
{
    RGB own;
    return get(index, own) != 0 &&
           std::abs(own.r - rgb.r) + std::abs(own.g - rgb.g) + std::abs(own.b - rgb.b) < 0.01F;
}

int ColorMap::print() const
{
    std::string list;
    for (int i = 0; i < getNum(); ++i) {
        Color const & c = colors[static_cast<std::size_t>(i)];
        list += detail::format("%3d - %8d (%4.2f,%4.2f,%4.2f) %s\n", i, c.value, c.rgb.r, c.rgb.g, c.rgb.b,
                               c.getName());
    }
    detail::writeOut(list + detail::format("Fill: %d\n", num_fill));
    return 1;
}

} // namespace Yul
