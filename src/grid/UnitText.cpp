#include "grid/UnitText.h"

#include "core/Number.h"
#include "core/StrLib.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace Yul::detail {
namespace {

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
        if (isDigit(text[0])) {
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
        constexpr int MAX_POWER = 99;
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
        constexpr int MAX_SUM = 1000;
        for (std::size_t i = 0; i < Quantity::NUM_BASE; ++i) {
            product.powers[i] += power * unit.powers[i];
            if (std::abs(product.powers[i]) > MAX_SUM)
                return false;
        }
        product.factor *= std::pow(unit.factor, power);
        product.offset = unit.offset;
        return std::isfinite(product.factor) && product.factor > 0;
    }

    static bool isLetter(char c)
    {
        auto const small = toLower(c);
        return (small >= 'a' && small <= 'z') || c == '%';
    }

    std::string_view text;
    bool has_power = false;
};

} // namespace

std::string tidyUnit(std::string_view original)
{
    std::string const text = plainText(original);
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i] == '_' || isBlank(text[i]) ? ' ' : text[i];
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

std::optional<Quantity> readUnit(std::string_view text)
{
    auto const phrase = findUnitPhrase(text);
    return phrase ? phrase : Reader(text).read();
}

} // namespace Yul::detail
