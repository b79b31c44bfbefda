#include "grid/Variable.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/variables/Tables.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::trimmed;

constexpr std::size_t LONGEST_NAME = 31;
constexpr std::size_t LONGEST_UNITS = 200;
constexpr std::size_t LONGEST_TEXT = 250; // name, units, and blanks round them
constexpr std::string_view NOT_SET = "miss";

bool isNameCharacter(char c)
{
    constexpr std::string_view OTHERS = "_-+./";
    auto const small = detail::toLower(c);
    return (small >= 'a' && small <= 'z') || detail::isDigit(c) || OTHERS.find(c) != std::string_view::npos;
}

/// With a letter in it, so that no number passes.
bool isName(std::string_view text)
{
    auto const is_letter = [](char c) { return detail::toLower(c) >= 'a' && detail::toLower(c) <= 'z'; };
    return text.size() <= LONGEST_NAME && std::ranges::all_of(text, isNameCharacter) &&
           std::ranges::any_of(text, is_letter);
}

/// "name", "name[units]" or "name:units".
struct Parts
{
    std::string_view name;
    std::optional<std::string_view> units;
};

Parts splitUnits(std::string_view text)
{
    auto const bracket = text.find('[');
    if (bracket != std::string_view::npos && text.ends_with(']'))
        return {trimmed(text.substr(0, bracket)),
                trimmed(text.substr(bracket + 1, text.size() - bracket - 2))};
    auto const colon = text.find(':');
    if (colon != std::string_view::npos)
        return {trimmed(text.substr(0, colon)), trimmed(text.substr(colon + 1))};
    return {text, std::nullopt};
}

/// A text of nothing but digits.
std::optional<int> wholeNumber(std::string_view text)
{
    int value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && detail::isDigit(text[0])
               ? std::optional(value)
               : std::nullopt;
}

} // namespace

int Variable::init()
{
    *this = Variable();
    return 1;
}

int Variable::set(char const * text)
{
    if (decode(text) == 1)
        return 1;
    Yul::outWarning("Variable::set: Invalid variable: %s\n", text != nullptr ? text : "");
    return 0;
}

int Variable::decode(char const * text)
{
    auto const whole = trimmed(detail::viewOf(text));
    if (whole.empty() || whole.size() > LONGEST_TEXT)
        return 0;
    if (detail::sameIgnoringCase(whole, NOT_SET))
        return init();
    auto const [head, new_units] = splitUnits(whole);
    if (head.empty() || (new_units && new_units->size() > LONGEST_UNITS))
        return 0;

    Variable next;
    auto const number = wholeNumber(head);
    auto const * const row = number ? VarName::find(*number) : VarName::find(std::string(head).c_str());
    if (row != nullptr)
        next.set(*row);
    else if (!number && isName(head) && !detail::sameIgnoringCase(head, NOT_SET))
        next.name = head;
    else
        return 0;
    if (new_units)
        next.units = *new_units;
    *this = std::move(next);
    return 1;
}

int Variable::set(int index_value)
{
    auto const * const row = VarName::find(index_value);
    return row != nullptr ? set(*row) : 0;
}

int Variable::set(VarNameItem const & item)
{
    name = item.name;
    long_name = item.long_name;
    units = item.units;
    index = item.index;
    return 1;
}

int Variable::set(Variable const & variable)
{
    *this = variable;
    return 1;
}

int Variable::set(char const * name_text, char const * long_text, char const * units_text, int index_value)
{
    if (!isName(detail::viewOf(name_text)))
        return 0;
    Variable next;
    next.name = name_text;
    next.long_name = detail::viewOf(long_text);
    next.units = detail::viewOf(units_text);
    next.index = index_value;
    *this = std::move(next);
    return 1;
}

int Variable::setGrib1(int centre, int table, int number)
{
    auto const * const row = VarName::findGrib1(centre, table, number);
    if (row == nullptr)
        return 0;
    set(*row);
    auto const * const local = detail::findLocalGrib1(centre, table, number);
    if (local != nullptr && local->units != nullptr)
        units = local->units;
    return 1;
}

int Variable::setGrib2(int centre, int discipline, int category, int number)
{
    auto const * const row = VarName::findGrib2(centre, discipline, category, number);
    return row != nullptr ? set(*row) : 0;
}

int Variable::setUnits(char const * text)
{
    units = std::string(detail::viewOf(text));
    return 1;
}

int Variable::toString(String & text) const
{
    std::string out(isSet() ? std::string_view(name) : NOT_SET);
    auto const * const row = VarName::find(name.c_str());
    if (isSet() && units != (row != nullptr ? row->units : ""))
        out += '[' + units + ']';
    text.assign(out);
    return 1;
}

bool Variable::compare(Variable const & variable) const
{
    if (!detail::isMissing(index) && !detail::isMissing(variable.index))
        return index == variable.index;
    return detail::sameIgnoringCase(name, variable.name);
}

int Variable::print() const
{
    detail::writeOut(
        detail::format("%s %d %s [%s]\n", name.c_str(), index, long_name.c_str(), units.c_str()));
    return 1;
}

} // namespace Yul
