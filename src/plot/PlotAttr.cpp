#include "plot/PlotAttr.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/Scan.h"
#include "core/StrLib.h"

#include <optional>
#include <span>
#include <string_view>

namespace Yul {
namespace {

struct Keyword
{
    std::string_view name;
    int code;
};

/// Compared on their first characters, first hit wins: the order is behaviour.
constexpr Keyword LINE_STYLES[] = {
    {"sol", 1}, {"dsh", 2}, {"lsdsh", 3}, {"llsdsh", 4}, {"dot", 5},
};

constexpr Keyword FILL_STYLES[] = {
    {"sol", 0},                                                   // solid
    {"st", 1},   {"ost", 2},  {"rst", 3}, {"lst", 4},             // stipples
    {"vln", 5},  {"||", 5},                                       // vertical lines
    {"dlr", 6},  {"\\\\", 6}, {"\\", 6},                          // diagonals down to the right
    {"drl", 7},  {"//", 7},                                       // diagonals down to the left
    {"hln", 8},  {"--", 8},                                       // horizontal lines
    {"hat", 9},  {"XX", 9},                                       // cross hatch
    {"clr", 10}, {"0%", 10},                                      // clear
    {"1%", 11},  {"2%", 12},  {"3%", 13}, {"4%", 14}, {"5%", 15}, // densities
    {"6%", 16},  {"7%", 17},  {"8%", 18}, {"9%", 19},
};

constexpr Keyword MARKERS[] = {
    {"pnt", 1},    {".", 1},   {"plus", 2}, {"+", 2},   {"star", 3},   {"*", 3},      {"crcl", 4},
    {"circle", 4}, {"o", 4},   {"x", 5},    {"sqr", 6}, {"square", 6}, {"#", 6},      {"tri", 7},
    {"^", 7},      {"dot", 8}, {"itri", 9}, {"v", 9},   {"z", 10},     {"light", 10},
};

constexpr int PLUS = 2;

/// A keyword of one character is the whole text, so that "zebra" is not taken for "z".
std::optional<int> find(std::span<Keyword const> keywords, std::string_view text)
{
    for (auto const & [name, code] : keywords)
        if (name.size() == 1 ? detail::sameIgnoringCase(text, name) : detail::startsIgnoringCase(text, name))
            return code;
    return std::nullopt;
}

enum class Field { COLOR, LABEL_COLOR, WIDTH, SHADOW, STYLE, FONT, FILL, SIZE, WEIGHT, EXPANSION };

struct Prefix
{
    std::string_view name;
    Field field;
};

/// A marker's scale and a text's height are one setting.
constexpr Prefix PREFIXES[] = {
    {"co=", Field::COLOR}, {"la=", Field::LABEL_COLOR}, {"wi=", Field::WIDTH}, {"sh=", Field::SHADOW},
    {"st=", Field::STYLE}, {"fo=", Field::FONT},        {"fi=", Field::FILL},  {"fp=", Field::FILL},
    {"sc=", Field::SIZE},  {"we=", Field::WEIGHT},      {"hi=", Field::SIZE},  {"te=", Field::EXPANSION},
};

constexpr std::size_t PREFIX_LENGTH = 3;

void setField(PlotAttr & attr, Field field, std::string_view value)
{
    switch (field) {
    case Field::COLOR:
        detail::copyText(attr.color_name, value);
        attr.color = Const::MISS;
        break;
    case Field::LABEL_COLOR:
        detail::copyText(attr.label_color, value);
        break;
    case Field::WIDTH:
        attr.width = detail::toFloat(value);
        break;
    case Field::SHADOW:
        attr.shadow = detail::toInt(value);
        break;
    case Field::STYLE:
        attr.style = find(LINE_STYLES, value).value_or(detail::toInt(value));
        break;
    case Field::FONT:
        detail::copyText(attr.font, value);
        break;
    case Field::FILL:
        attr.fill = find(FILL_STYLES, value).value_or(detail::toInt(value));
        break;
    case Field::SIZE:
        attr.size = detail::toFloat(value);
        break;
    case Field::WEIGHT:
        attr.weight = detail::toFloat(value);
        break;
    case Field::EXPANSION:
        attr.expansion = detail::toFloat(value);
        break;
    }
}

/// An item without a key: a letter and a number, or "t", two characters and a font name of up to 20 octets.
void setByLetter(PlotAttr & attr, std::string_view item)
{
    constexpr std::size_t SHORT_FONT = 20;
    char const letter = detail::toLower(item.front());
    std::string_view const rest = item.substr(1);
    switch (letter) {
    case 'w':
        detail::scan(rest, "%f", &attr.width);
        break;
    case 's':
        detail::scan(rest, "%d", &attr.style);
        break;
    case 'h':
        detail::scan(rest, "%f", &attr.size);
        break;
    case 'e':
        detail::scan(rest, "%f", &attr.expansion);
        break;
    case 't':
        detail::copyText(attr.font,
                         item.size() > PREFIX_LENGTH ? item.substr(PREFIX_LENGTH, SHORT_FONT) : "");
        break;
    case 'f':
        if (!rest.empty() && detail::toLower(rest.front()) == 'm')
            attr.fill = Const::MISS;
        else
            detail::scan(rest, "%d", &attr.fill);
        break;
    default:
        break;
    }
}

void setItem(PlotAttr & attr, std::string_view item)
{
    if (item.empty())
        return;
    for (auto const & [name, field] : PREFIXES)
        if (detail::startsIgnoringCase(item, name))
            return setField(attr, field, item.substr(PREFIX_LENGTH));
    setByLetter(attr, item);
}

template <class Number> void fillIn(Number & value, Number other)
{
    if (detail::isMissing(value))
        value = other;
}

template <std::size_t N> void fillIn(char (&text)[N], char const (&other)[N])
{
    if (text[0] == '\0')
        detail::copyText(text, other);
}

} // namespace

int PlotAttr::init()
{
    *this = PlotAttr();
    return 1;
}

int PlotAttr::set(char const * text)
{
    return parse(text);
}

int PlotAttr::set(char const * text, char const * defaults)
{
    parse(text);
    return update(PlotAttr(defaults));
}

int PlotAttr::parse(char const * text)
{
    init();
    std::string_view const all = detail::viewOf(text);
    char const separator = all.find(':') != std::string_view::npos ? ':' : ',';
    bool is_first = true;
    for (std::string_view const item : detail::split(all, separator)) {
        if (is_first && item.find('=') == std::string_view::npos)
            setField(*this, Field::COLOR, item);
        else
            setItem(*this, item);
        is_first = false;
    }
    return 1;
}

int PlotAttr::parseFillStyle(char const * text) const
{
    std::string_view const name = detail::viewOf(text);
    return find(FILL_STYLES, name).value_or(detail::toInt(name));
}

int PlotAttr::parseMarker(char const * text) const
{
    return find(MARKERS, detail::viewOf(text)).value_or(PLUS);
}

int PlotAttr::setColor(char const * name)
{
    setField(*this, Field::COLOR, detail::viewOf(name));
    return 1;
}

bool PlotAttr::validColor() const
{
    return color_name[0] != '\0' && !StrLib::iequal(color_name, "off");
}

int PlotAttr::update(PlotAttr const & defaults)
{
    fillIn(width, defaults.width);
    fillIn(size, defaults.size);
    fillIn(weight, defaults.weight);
    fillIn(expansion, defaults.expansion);
    fillIn(style, defaults.style);
    fillIn(shadow, defaults.shadow);
    fillIn(fill, defaults.fill);
    fillIn(color, defaults.color);
    fillIn(color_name, defaults.color_name);
    fillIn(font, defaults.font);
    fillIn(label_color, defaults.label_color);
    return 1;
}

int PlotAttr::update(PlotAttr const & first, PlotAttr const & second)
{
    update(first);
    return update(second);
}

int PlotAttr::print() const
{
    detail::writeOut(detail::format("PlotAttr co: %s %d "
                                    "st: %d "
                                    "he: %5.2f "
                                    "we: %5.2f "
                                    "wi: %5.2f "
                                    "ex: %5.2f "
                                    "fi: %d "
                                    "sh: %d "
                                    "fo: %s\n",
                                    color_name, color, style, static_cast<double>(size),
                                    static_cast<double>(weight), static_cast<double>(width),
                                    static_cast<double>(expansion), fill, shadow, font));
    return 1;
}

} // namespace Yul
