#include "grid/Unit.h"

#include "core/Number.h"
#include "core/StrLib.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Yul {
namespace {

/// Powers of the base quantities, and the size of the unit in their SI units: si = factor * value + offset.
enum Base { METRE, KILOGRAM, SECOND, KELVIN, MOLE, RADIAN, NUM_BASE };

using Powers = std::array<int, NUM_BASE>;

struct Quantity
{
    Powers powers{};
    double factor = 1;
    double offset = 0;
};

struct Row
{
    std::string_view text;
    Quantity quantity;
};

constexpr Quantity number(double factor)
{
    return {{}, factor, 0};
}

constexpr Quantity length(double factor)
{
    return {{1}, factor, 0};
}

constexpr Quantity mass(double factor)
{
    return {{0, 1}, factor, 0};
}

constexpr Quantity duration(double factor)
{
    return {{0, 0, 1}, factor, 0};
}

constexpr Quantity temperature(double factor, double offset)
{
    return {{0, 0, 0, 1}, factor, offset};
}

constexpr Quantity pressure(double factor)
{
    return {{-1, 1, -2}, factor, 0};
}

constexpr Quantity speed(double factor)
{
    return {{1, 0, -1}, factor, 0};
}

constexpr Quantity energy(double factor)
{
    return {{2, 1, -2}, factor, 0};
}

constexpr Quantity power(double factor)
{
    return {{2, 1, -3}, factor, 0};
}

constexpr Quantity rate(double factor)
{
    return {{0, 0, -1}, factor, 0};
}

constexpr Quantity angle(double factor)
{
    return {{0, 0, 0, 0, 0, 1}, factor, 0};
}

constexpr double DEGREE = 3.14159265358979323846 / 180;
constexpr double KNOT = 1852.0 / 3600.0;

/// Compared exactly first, then in any case, in this order. Sources: BIPM, The International System of Units,
/// 9th edition, tables 1 to 8; NIST Special Publication 811, appendix B (inch, foot, mile, mercury, calorie).
/// A Dobson unit, 0.44615 mmol m-2, counts as a mass of ozone (47.9982 g mol-1), as models store the column.
constexpr Row UNITS[] = {
    {"m", length(1)},
    {"km", length(1000)},
    {"dam", length(10)},
    {"dm", length(0.1)},
    {"cm", length(0.01)},
    {"mm", length(0.001)},
    {"um", length(1e-6)},
    {"nm", length(1e-9)},
    {"metre", length(1)},
    {"meter", length(1)},
    {"metres", length(1)},
    {"meters", length(1)},
    {"micron", length(1e-6)},
    {"microns", length(1e-6)},
    {"millimetre", length(0.001)},
    {"millimetres", length(0.001)},
    {"millimeter", length(0.001)},
    {"millimeters", length(0.001)},
    {"centimetre", length(0.01)},
    {"centimetres", length(0.01)},
    {"centimeter", length(0.01)},
    {"centimeters", length(0.01)},
    {"kilometre", length(1000)},
    {"kilometres", length(1000)},
    {"kilometer", length(1000)},
    {"kilometers", length(1000)},
    {"gpm", length(1)},
    {"gpdam", length(10)},
    {"dagpm", length(10)},
    {"gpdm", length(10)},
    {"ft", length(0.3048)},
    {"foot", length(0.3048)},
    {"feet", length(0.3048)},
    {"kft", length(304.8)},
    {"in", length(0.0254)},
    {"inch", length(0.0254)},
    {"inches", length(0.0254)},
    {"yd", length(0.9144)},
    {"mi", length(1609.344)},
    {"mile", length(1609.344)},
    {"miles", length(1609.344)},
    {"SM", length(1609.344)},
    {"nmi", length(1852)},
    {"NM", length(1852)},
    {"L", {{3}, 1e-3, 0}},
    {"litre", {{3}, 1e-3, 0}},
    {"litres", {{3}, 1e-3, 0}},
    {"liter", {{3}, 1e-3, 0}},
    {"liters", {{3}, 1e-3, 0}},
    {"kg", mass(1)},
    {"g", mass(1e-3)},
    {"mg", mass(1e-6)},
    {"ug", mass(1e-9)},
    {"s", duration(1)},
    {"sec", duration(1)},
    {"second", duration(1)},
    {"seconds", duration(1)},
    {"min", duration(60)},
    {"minute", duration(60)},
    {"minutes", duration(60)},
    {"h", duration(3600)},
    {"hr", duration(3600)},
    {"hrs", duration(3600)},
    {"hour", duration(3600)},
    {"hours", duration(3600)},
    {"d", duration(86400)},
    {"day", duration(86400)},
    {"days", duration(86400)},
    {"K", temperature(1, 0)},
    {"C", temperature(1, 273.15)},
    {"F", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"degK", temperature(1, 0)},
    {"degC", temperature(1, 273.15)},
    {"degF", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"kelvin", temperature(1, 0)},
    {"kelvins", temperature(1, 0)},
    {"celsius", temperature(1, 273.15)},
    {"fahrenheit", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"Pa", pressure(1)},
    {"hPa", pressure(100)},
    {"kPa", pressure(1000)},
    {"mb", pressure(100)},
    {"mbar", pressure(100)},
    {"millibar", pressure(100)},
    {"millibars", pressure(100)},
    {"pascal", pressure(1)},
    {"pascals", pressure(1)},
    {"hectopascal", pressure(100)},
    {"hectopascals", pressure(100)},
    {"bar", pressure(1e5)},
    {"dbar", pressure(1e4)},
    {"atm", pressure(101325)},
    {"torr", pressure(101325.0 / 760)},
    {"psi", pressure(6894.757)},
    {"inHg", pressure(3386.389)},
    {"mmHg", pressure(133.3224)},
    {"kt", speed(KNOT)},
    {"kts", speed(KNOT)},
    {"kn", speed(KNOT)},
    {"knot", speed(KNOT)},
    {"knots", speed(KNOT)},
    {"mph", speed(0.44704)},
    {"kph", speed(1 / 3.6)},
    {"kmh", speed(1 / 3.6)},
    {"kmph", speed(1 / 3.6)},
    {"mps", speed(1)},
    {"N", {{1, 1, -2}, 1, 0}},
    {"J", energy(1)},
    {"kJ", energy(1e3)},
    {"MJ", energy(1e6)},
    {"cal", energy(4.184)},
    {"W", power(1)},
    {"mW", power(1e-3)},
    {"kW", power(1e3)},
    {"MW", power(1e6)},
    {"Hz", rate(1)},
    {"Bq", rate(1)},
    {"mol", {{0, 0, 0, 0, 1}, 1, 0}},
    {"DU", {{-2, 1}, 2.14145e-5, 0}},
    {"dobson", {{-2, 1}, 2.14145e-5, 0}},
    {"Sv", {{3, 0, -1}, 1e6, 0}},
    {"rad", angle(1)},
    {"radian", angle(1)},
    {"radians", angle(1)},
    {"sr", number(1)},
    {"deg", angle(DEGREE)},
    {"degree", angle(DEGREE)},
    {"degrees", angle(DEGREE)},
    {"%", number(0.01)},
    {"percent", number(0.01)},
    {"pct", number(0.01)},
    {"tenths", number(0.1)},
    {"okta", number(0.125)},
    {"oktas", number(0.125)},
    {"octas", number(0.125)},
    {"eighths", number(0.125)},
    {"psu", number(1e-3)},
    {"ppm", number(1e-6)},
    {"ppmv", number(1e-6)},
    {"ppb", number(1e-9)},
    {"ppbv", number(1e-9)},
    {"numeric", number(1)},
    {"proportion", number(1)},
    {"fraction", number(1)},
    {"PVU", {{2, -1, -1, 1}, 1e-6, 0}},
};

/// Texts that are no products of units.
constexpr std::pair<std::string_view, std::string_view> WHOLE_TEXTS[] = {
    {"deg c", "degC"},
    {"degrees c", "degC"},
    {"deg f", "degF"},
    {"degrees f", "degF"},
    {"degree c", "degC"},
    {"deg celsius", "degC"},
    {"degree celsius", "degC"},
    {"degrees celsius", "degC"},
    {"degree f", "degF"},
    {"deg fahrenheit", "degF"},
    {"degree fahrenheit", "degF"},
    {"degrees fahrenheit", "degF"},
    {"deg k", "K"},
    {"degree k", "K"},
    {"degrees k", "K"},
    {"degree kelvin", "K"},
    {"degrees kelvin", "K"},
    {"deg true", "deg"},
    {"degree true", "deg"},
    {"degrees true", "deg"},
    {"degree north", "deg"},
    {"degrees north", "deg"},
    {"degree east", "deg"},
    {"degrees east", "deg"},
    {"nautical mile", "nmi"},
    {"nautical miles", "nmi"},
    {"statute mile", "mi"},
    {"statute miles", "mi"},
    {"in hg", "inHg"},
    {"mm hg", "mmHg"},
    {"dobson unit", "DU"},
    {"dobson units", "DU"},
    {"non-dim", "numeric"},
    {"(0 - 1)", "numeric"},
    {"dimensionless", "numeric"},
};

constexpr int MAX_POWER = 99;
constexpr std::size_t LONGEST_TEXT = 250;

std::optional<Quantity> findUnit(std::string_view text)
{
    for (auto const & row : UNITS)
        if (row.text == text)
            return row.quantity;
    for (auto const & row : UNITS)
        if (detail::sameIgnoringCase(row.text, text))
            return row.quantity;
    return std::nullopt;
}

struct Symbol
{
    std::string_view utf8;
    std::string_view plain;
    bool is_power = false;
};

/// Signs outside ASCII that units are written with.
constexpr Symbol SYMBOLS[] = {
    {"\u00b0", "deg"},     {"\u00ba", "deg"},     {"\u2103", "degC"},    {"\u2109", "degF"},
    {"\u00b5", "u"},       {"\u03bc", "u"},       {"\u00b7", " "},       {"\u22c5", " "},
    {"\u2212", "-"},       {"\u207b", "-", true}, {"\u207a", "+", true}, {"\u2070", "0", true},
    {"\u00b9", "1", true}, {"\u00b2", "2", true}, {"\u00b3", "3", true}, {"\u2074", "4", true},
    {"\u2075", "5", true}, {"\u2076", "6", true}, {"\u2077", "7", true}, {"\u2078", "8", true},
    {"\u2079", "9", true},
};

/// The text in ASCII as far as its signs are known: "\u00b0C" is "degC", "s\u207b\u00b9" is "s^-1".
std::string plainText(std::string_view text)
{
    std::string out;
    bool in_power = false;
    while (!text.empty()) {
        auto const * const symbol = std::ranges::find_if(
            SYMBOLS, [text](Symbol const & known) { return text.starts_with(known.utf8); });
        bool const is_known = symbol != std::end(SYMBOLS);
        if (is_known && symbol->is_power && !in_power)
            out += '^';
        in_power = is_known && symbol->is_power;
        out += is_known ? symbol->plain : text.substr(0, 1);
        text.remove_prefix(is_known ? symbol->utf8.size() : 1);
    }
    return out;
}

/// In ASCII, with blanks for underscores and "^" for "**", trimmed.
std::string tidied(std::string_view original)
{
    std::string const text = plainText(original);
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i] == '_' || detail::isBlank(text[i]) ? ' ' : text[i];
        if (c == '*' && i + 1 < text.size() && text[i + 1] == '*') {
            out += '^';
            ++i;
        } else if (c != ' ' || (!out.empty() && out.back() != ' ')) {
            out += c;
        }
    }
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    return out;
}

/// Reads a product of units: "kg m-2 s-1", "10^-6 g/m^3".
class Reader
{
    static constexpr std::string_view DIVIDERS[] = {"/", "per "};

public:
    explicit Reader(std::string_view whole) : text(whole) {}

    std::optional<Quantity> read()
    {
        Quantity product;
        bool divides = false;
        int factors = 0;
        while (!text.empty()) {
            if (auto const separator = takeSeparator()) {
                divides = *separator == '/';
                continue;
            }
            if (!takeFactor(product, divides, factors == 0))
                return std::nullopt;
            divides = false;
            ++factors;
        }
        if (divides || factors == 0)
            return std::nullopt;
        if (factors > 1 || has_power)
            product.offset = 0; // zero points count for a temperature that stands alone
        return product;
    }

private:
    /// A slash wins over the blanks round it, and so does "per".
    std::optional<char> takeSeparator()
    {
        std::optional<char> found;
        while (!text.empty() && std::string_view(" *.").find(text[0]) != std::string_view::npos) {
            found = text[0];
            text.remove_prefix(1);
        }
        auto const slash = std::ranges::find_if(
            DIVIDERS, [this](std::string_view divider) { return text.starts_with(divider); });
        if (slash != std::end(DIVIDERS)) {
            found = '/';
            text.remove_prefix(slash->size());
            while (text.starts_with(' '))
                text.remove_prefix(1);
        }
        return found;
    }

    bool takeFactor(Quantity & product, bool divides, bool is_first)
    {
        if (detail::isDigit(text[0])) {
            if (is_first)
                return takeNumber(product);
            if (!divides || !takeCount(product))
                return false;
        }
        std::size_t end = 0;
        while (end < text.size() && isLetter(text[end]))
            ++end;
        auto const unit = findUnit(text.substr(0, end));
        if (end == 0 || !unit)
            return false;
        text.remove_prefix(end);
        auto const power = takePower();
        return power && multiply(product, *unit, divides ? -*power : *power);
    }

    /// A number in front: "1/s", "10^-6 g".
    bool takeNumber(Quantity & product)
    {
        double value = 0;
        auto const end = std::from_chars(text.data(), text.data() + text.size(), value).ptr;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (text.starts_with('^')) {
            auto const power = takePower();
            if (!power)
                return false;
            value = std::pow(value, *power);
        }
        product.factor = value;
        return std::isfinite(value) && value > 0;
    }

    /// A number below a slash, right in front of its unit: "hPa/3h", "K/100m".
    bool takeCount(Quantity & product)
    {
        double value = 0;
        auto const * const end =
            std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        product.factor /= value;
        return !text.empty() && isLetter(text[0]) && std::isfinite(product.factor) && value > 0;
    }

    /// 1 where none is written; none for one that is not a small whole number.
    std::optional<int> takePower()
    {
        bool const is_marked = text.starts_with('^');
        if (is_marked)
            text.remove_prefix(1);
        if (text.starts_with('+'))
            text.remove_prefix(1);
        int power = 1;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), power);
        if (error == std::errc::invalid_argument)
            return is_marked || text.starts_with('-') ? std::nullopt : std::optional(1);
        if (error != std::errc() || std::abs(power) > MAX_POWER)
            return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        has_power = has_power || power != 1;
        return power;
    }

    static bool multiply(Quantity & product, Quantity const & unit, int power)
    {
        for (std::size_t i = 0; i < NUM_BASE; ++i) {
            product.powers[i] += power * unit.powers[i];
            if (std::abs(product.powers[i]) > 1000)
                return false;
        }
        product.factor *= std::pow(unit.factor, power);
        product.offset = unit.offset;
        return std::isfinite(product.factor) && product.factor > 0;
    }

    static bool isLetter(char c)
    {
        auto const small = detail::toLower(c);
        return (small >= 'a' && small <= 'z') || c == '%';
    }

    std::string_view text;
    bool has_power = false;
};

std::optional<Quantity> readUnit(std::string_view text)
{
    for (auto const & [whole, unit] : WHOLE_TEXTS)
        if (detail::sameIgnoringCase(text, whole))
            return findUnit(unit);
    return Reader(text).read();
}

/// A mass of water over an area as a depth: 1 kg m-2 is 1 mm.
Quantity asDepth(Quantity quantity)
{
    constexpr double WATER_DENSITY = 1000; // kg m-3
    if (quantity.powers[METRE] == -2 && quantity.powers[KILOGRAM] == 1) {
        quantity.powers[METRE] = 1;
        quantity.powers[KILOGRAM] = 0;
        quantity.factor /= WATER_DENSITY;
    }
    return quantity;
}

} // namespace

int Unit::set(char const * from, char const * to)
{
    *this = Unit();
    auto const from_view = detail::viewOf(from);
    auto const to_view = detail::viewOf(to);
    if (from_view.size() > LONGEST_TEXT || to_view.size() > LONGEST_TEXT)
        return 0;
    auto const from_text = tidied(from_view);
    auto const to_text = tidied(to_view);
    if (from_text == to_text) {
        is_valid = true;
        return 1;
    }
    auto source = readUnit(from_text);
    auto target = readUnit(to_text);
    if (!source || !target)
        return 0;
    if (source->powers != target->powers) {
        source = asDepth(*source);
        target = asDepth(*target);
        if (source->powers != target->powers)
            return 0;
    }
    factor = source->factor / target->factor;
    offset = (source->offset - target->offset) / target->factor;
    is_valid = std::isfinite(factor) && std::isfinite(offset);
    return is_valid ? 1 : 0;
}

int Unit::set(double factor_value, double offset_value)
{
    *this = Unit();
    if (!std::isfinite(factor_value) || !std::isfinite(offset_value) || factor_value == 0)
        return 0;
    factor = factor_value;
    offset = offset_value;
    is_valid = true;
    return 1;
}

float Unit::convert(float value) const noexcept
{
    if (!is_valid || detail::isMissing(value) || std::isnan(value))
        return static_cast<float>(Const::MISS);
    constexpr double LARGEST = std::numeric_limits<float>::max();
    auto const result = static_cast<double>(value) * factor + offset;
    if (std::abs(result) > LARGEST)
        return std::copysign(std::numeric_limits<float>::infinity(), static_cast<float>(result > 0 ? 1 : -1));
    return static_cast<float>(result);
}

float Unit::convert(float value, char const * from, char const * to)
{
    return Unit(from, to).convert(value);
}

bool Unit::isKnown(char const * text)
{
    auto const view = detail::viewOf(text);
    return view.size() <= LONGEST_TEXT && readUnit(tidied(view)).has_value();
}

} // namespace Yul
