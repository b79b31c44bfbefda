#include "core/Format.h"
#include "core/Number.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/Level.h"
#include "grid/LevelTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::isMissing;

/// Words for a level that is not set.
constexpr std::string_view NOT_SET = "miss";
/// Leads the text of a kind that has no words: "L123", "L123:4.5", "L123:4-5".
constexpr char CODE_LEAD = 'l';
constexpr std::string_view FLIGHT_LEVEL = "fl";

/// Small letters without blanks.
std::string compact(std::string_view text)
{
    std::string out;
    for (char const c : text)
        if (!detail::isBlank(c))
            out += detail::toLower(c);
    return out;
}

/// Takes a decimal number from the front of the text; no "inf", "nan" or exponents.
std::optional<double> takeNumber(std::string_view & text)
{
    auto const digits = text.substr(text.starts_with('-') ? 1 : 0);
    if (digits.empty() || !(detail::isDigit(digits[0]) || digits[0] == '.'))
        return std::nullopt;
    double value = 0;
    auto const [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

/// One value, or two with a dash between them, from the front of the text.
struct Numbers
{
    double first;
    std::optional<double> second;
};

std::optional<Numbers> takeNumbers(std::string_view & text)
{
    auto const first = takeNumber(text);
    if (!first)
        return std::nullopt;
    Numbers numbers{*first, std::nullopt};
    auto rest = text;
    if (rest.starts_with('-')) {
        rest.remove_prefix(1);
        numbers.second = takeNumber(rest);
        if (numbers.second)
            text = rest;
    }
    return numbers;
}

/// The second value of a layer whose values both have their unit, "1000mb-500mb".
void takeSecond(std::string_view & text, Numbers & numbers)
{
    auto const unit = text.substr(0, text.find('-'));
    if (unit.empty() || unit.size() == text.size())
        return;
    auto rest = text.substr(unit.size() + 1);
    auto const second = takeNumber(rest);
    if (second && rest == unit) {
        numbers.second = second;
        text = rest;
    }
}

/// A word or suffix of the vocabulary; the table's own come before the other ways to write them.
std::optional<detail::LevelAlias> findText(std::string_view text, bool has_value)
{
    for (auto const & kind : detail::levelKinds())
        if (kind.has_value == has_value && text == kind.text)
            return detail::LevelAlias{text, kind.code};
    for (auto const & alias : detail::levelAliases())
        if (text == alias.text && detail::findLevelKind(alias.code)->has_value == has_value)
            return alias;
    return std::nullopt;
}

/// Sets the level from numbers in the unit of an alias; 0 when they cannot be kept.
int setNumbers(Level & level, detail::LevelAlias const & unit, Numbers const & numbers)
{
    auto const first = detail::levelValue(unit.offset + unit.factor * numbers.first);
    if (!first)
        return 0;
    if (!numbers.second)
        return level.set(unit.code, *first);
    auto const second = detail::levelValue(unit.offset + unit.factor * *numbers.second);
    return second ? level.set(unit.code, *first, *second) : 0;
}

/// "l123", "l123:4.5", "l123:4-5": any kind by its code.
int setByCode(Level & level, std::string_view text)
{
    text.remove_prefix(1);
    int code = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    if (error != std::errc() || code < 0)
        return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty())
        return level.set(code);
    if (!text.starts_with(':'))
        return 0;
    text.remove_prefix(1);
    auto const numbers = takeNumbers(text);
    return numbers && text.empty() ? setNumbers(level, {"", code}, *numbers) : 0;
}

/// "fl340", "fl180-240", "fl180-fl240": pressures.
int setByFlightLevel(Level & level, std::string_view text)
{
    auto const take = [&text]() -> std::optional<double> {
        if (text.starts_with(FLIGHT_LEVEL))
            text.remove_prefix(FLIGHT_LEVEL.size());
        auto const number = takeNumber(text);
        return number ? detail::flightLevelPressure(*number) : std::nullopt;
    };
    Numbers pressures{0, std::nullopt};
    auto const first = take();
    bool const is_layer = first && text.starts_with('-');
    if (is_layer) {
        text.remove_prefix(1);
        pressures.second = take();
    }
    pressures.first = first.value_or(0);
    bool const is_read = first && text.empty() && (!is_layer || pressures.second);
    return is_read ? setNumbers(level, {"", Level::PRES}, pressures) : 0;
}

/// A value behind its word, "sigma 0.995" or "hybrid 60": the kinds without a unit, and potential temperature.
int setByWord(Level & level, std::string_view text)
{
    auto const end = std::min(text.find_first_of("-.0123456789"), text.size());
    auto const word = findText(text.substr(0, end), true);
    text.remove_prefix(end);
    auto const numbers = takeNumbers(text);
    if (!word || !numbers || !text.empty())
        return 0;
    bool const has_unit = *detail::findLevelKind(word->code)->units != '1';
    return has_unit && word->text != "theta" ? 0 : setNumbers(level, *word, *numbers);
}

/// What a label says.
int setByLabel(Level & level, std::string_view text)
{
    for (auto const & kind : detail::levelKinds()) {
        auto const label = compact(kind.label);
        auto const value = std::min(label.find("%s"), label.size());
        auto const before = std::string_view(label).substr(0, value);
        auto const behind = std::string_view(label).substr(kind.has_value ? value + 2 : value);
        if (text.size() < before.size() + behind.size() || !text.starts_with(before) ||
            !text.ends_with(behind))
            continue;
        auto between = text.substr(before.size(), text.size() - before.size() - behind.size());
        if (!kind.has_value && between.empty())
            return level.set(kind.code);
        auto const numbers = takeNumbers(between);
        if (kind.has_value && numbers && between.empty())
            return setNumbers(level, {"", kind.code}, *numbers);
    }
    return 0;
}

/// The shortest decimal text that reads back to the same float, without an exponent.
std::string shortest(float value)
{
    std::array<char, 128> buffer{};
    auto const end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
    return {buffer.data(), end};
}

std::string valueText(Level const & level)
{
    auto text = shortest(level.getValue());
    if (level.isLayer())
        text += '-' + shortest(level.getValue2());
    return text;
}

} // namespace

int Level::set(char const * text)
{
    if (decode(text) == 1)
        return 1;
    Yul::outWarning("Level::set: Invalid level: %s\n", text != nullptr ? text : "");
    return 0;
}

int Level::decode(char const * text)
{
    auto const words = compact(detail::viewOf(text));
    if (words.empty())
        return 0;
    if (words == NOT_SET)
        return init();
    if (auto const word = findText(words, false))
        return set(word->code);
    if (words.size() > 1 && words[0] == CODE_LEAD && detail::isDigit(words[1]))
        return setByCode(*this, words);
    if (words.starts_with(FLIGHT_LEVEL) && words.size() > 2 && detail::isDigit(words[2]))
        return setByFlightLevel(*this, words);
    std::string_view rest = words;
    auto numbers = takeNumbers(rest);
    if (numbers && !numbers->second)
        takeSecond(rest, *numbers);
    auto const unit = numbers ? findText(rest, true) : std::nullopt;
    if (unit)
        return setNumbers(*this, *unit, *numbers);
    return setByWord(*this, words) == 1 || setByLabel(*this, words) == 1 ? 1 : 0;
}

int Level::toString(String & text) const
{
    auto const * const row = detail::findLevelKind(type);
    std::string out(NOT_SET);
    if (row != nullptr && row->has_value != isMissing(val))
        out = row->has_value ? valueText(*this) + row->text : std::string(row->text);
    else if (isSet())
        out = detail::format("L%d", type) + (isMissing(val) ? "" : ":" + valueText(*this));
    text.assign(out);
    return 1;
}

int Level::toLabel(String & text) const
{
    auto const * const row = detail::findLevelKind(type);
    if (!isSet()) {
        text.clear();
    } else if (row == nullptr || row->has_value == isMissing(val)) {
        text.assign(detail::format("Level type %d", type) + (isMissing(val) ? "" : ": " + valueText(*this)));
    } else {
        std::string out = row->label;
        if (row->has_value)
            out.replace(out.find("%s"), 2, valueText(*this));
        text.assign(out);
    }
    return 1;
}

} // namespace Yul
