#include "core/Digits.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/Civil.h"
#include "time/DateTool.h"
#include "time/ForeTime.h"
#include "time/ForeTimeType.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::Decimal;

struct Keyword
{
    std::string_view word;
    int type;
};

/// Words for types; a text that begins with one, in any case, has it. The first that fits wins.
constexpr Keyword KEYWORDS[] = {
    {"acc", ForeTime::ACC},   {"anal", ForeTime::ANAL}, {"anl", ForeTime::ANAL},    {"any", ForeTime::ANY},
    {"ave", ForeTime::AVG},   {"avg", ForeTime::AVG},   {"mean", ForeTime::AVG},    {"diff", ForeTime::DIFF},
    {"fcst", ForeTime::FORE}, {"fore", ForeTime::FORE}, {"max", ForeTime::MAX},     {"min", ForeTime::MIN},
    {"miss", ForeTime::NONE}, {"none", ForeTime::NONE}, {"range", ForeTime::RANGE},
};

struct Unit
{
    long seconds;
    std::string_view text;  ///< as toText writes it
    std::string_view label; ///< as toTimeLabel writes it
};

/// In the order in which texts, labels and codes choose: the first that all times are whole numbers of.
constexpr Unit UNITS[] = {
    {detail::SECONDS_PER_HOUR, "", "hour"},
    {detail::SECONDS_PER_MINUTE, "m", "minute"},
    {1, "s", "second"},
};

struct UnitWord
{
    std::string_view word;
    long seconds;
};

/// Words for units as texts have them; a word that ends where the letters end goes before a prefix, and of
/// either the first that fits wins.
constexpr UnitWord UNIT_WORDS[] = {
    {"hours", detail::SECONDS_PER_HOUR},
    {"hour", detail::SECONDS_PER_HOUR},
    {"hrs", detail::SECONDS_PER_HOUR},
    {"hr", detail::SECONDS_PER_HOUR},
    {"h", detail::SECONDS_PER_HOUR},
    {"minutes", detail::SECONDS_PER_MINUTE},
    {"minute", detail::SECONDS_PER_MINUTE},
    {"mins", detail::SECONDS_PER_MINUTE},
    {"min", detail::SECONDS_PER_MINUTE},
    {"m", detail::SECONDS_PER_MINUTE},
    {"seconds", 1},
    {"second", 1},
    {"secs", 1},
    {"sec", 1},
    {"s", 1},
    {"days", detail::SECONDS_PER_DAY},
    {"day", detail::SECONDS_PER_DAY},
    {"d", detail::SECONDS_PER_DAY},
};

Unit const & commonUnit(long from, long to)
{
    return *std::find_if(std::begin(UNITS), std::end(UNITS) - 1, [&](Unit const & unit) {
        return from % unit.seconds == 0 && to % unit.seconds == 0;
    });
}

/// A number and the unit behind it, in seconds, if there is one.
struct Amount
{
    double value = 0;
    std::optional<long> unit;

    /// In seconds; a number without a unit has the other one.
    [[nodiscard]] std::optional<long> seconds(std::optional<long> other_unit) const
    {
        double const exact =
            value * static_cast<double>(unit.value_or(other_unit.value_or(detail::SECONDS_PER_HOUR)));
        return std::abs(exact) <= static_cast<double>(detail::LONGEST_FORE_TIME)
                   ? std::optional(std::lround(exact))
                   : std::nullopt;
    }
};

/// A forecast time text, read from its front.
class Reader
{
public:
    explicit Reader(std::string_view text) : rest(detail::trimmed(text)) {}

    [[nodiscard]] bool atEnd() const { return rest.empty(); }

    /// A number and its unit, if they stand here: "24", "1.5 h", "f024", "T+24". Behind a second number "min"
    /// alone stands for the minimum.
    std::optional<Amount> readAmount(bool is_second)
    {
        auto number = rest.substr(leadLength());
        bool const is_negative = number.starts_with('-');
        if (is_negative)
            number.remove_prefix(1);
        if (number.empty() || !(detail::isDigit(number.front()) || number.front() == '.'))
            return std::nullopt;
        Amount amount;
        auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), amount.value,
                                                  std::chars_format::fixed);
        if (error != std::errc())
            return std::nullopt;
        if (is_negative)
            amount.value = -amount.value;
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        rest = detail::trimmed(rest);
        amount.unit = readUnit(is_second);
        rest = detail::trimmed(rest);
        return amount;
    }

    bool skipDash()
    {
        bool const is_there = rest.starts_with('-');
        if (is_there)
            rest.remove_prefix(1);
        rest = detail::trimmed(rest);
        return is_there;
    }

    /// The type whose word ends the text; `otherwise` at the end of the text. "forecast" may stand behind it.
    std::optional<int> readType(int otherwise) const
    {
        auto words = rest;
        auto const blank = std::min(words.find(' '), words.size());
        if (findType(detail::trimmed(words.substr(blank))) == ForeTime::FORE)
            words = words.substr(0, blank);
        return words.empty() ? otherwise : findType(words);
    }

private:
    static bool isLetter(char c)
    {
        char const small = detail::toLower(c);
        return small >= 'a' && small <= 'z';
    }

    static std::optional<int> findType(std::string_view word)
    {
        for (Keyword const & keyword : KEYWORDS)
            if (detail::startsIgnoringCase(word, keyword.word) &&
                std::all_of(word.begin(), word.end(), isLetter))
                return keyword.type;
        return std::nullopt;
    }

    /// Characters that mark a forecast in front of its number: "f", "t", "+", "t+".
    [[nodiscard]] std::size_t leadLength() const
    {
        std::size_t length = 0;
        if (!rest.empty() && (detail::toLower(rest[0]) == 'f' || detail::toLower(rest[0]) == 't'))
            ++length;
        if (rest.substr(length).starts_with('+'))
            ++length;
        return length < rest.size() && detail::isDigit(rest[length]) ? length : 0;
    }

    /// The unit that stands here, also behind a dash ("24-hour"). "max" right behind a number is a type, not
    /// minutes.
    std::optional<long> readUnit(bool is_second)
    {
        bool const has_dash = rest.size() > 1 && rest[0] == '-' && isLetter(rest[1]);
        auto const text = rest.substr(has_dash ? 1 : 0);
        auto const letters = text.substr(
            0, static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isLetter) - text.begin()));
        bool const is_minimum = is_second && detail::sameIgnoringCase(text, "min");
        for (UnitWord const & unit : UNIT_WORDS)
            if (detail::sameIgnoringCase(letters, unit.word) && !is_minimum)
                return takeUnit(text, unit);
        if (readType(ForeTime::NONE))
            return std::nullopt;
        for (UnitWord const & unit : UNIT_WORDS)
            if (detail::startsIgnoringCase(text, unit.word))
                return takeUnit(text, unit);
        return std::nullopt;
    }

    long takeUnit(std::string_view text, UnitWord const & unit)
    {
        rest = text.substr(unit.word.size());
        return unit.seconds;
    }

    std::string_view rest;
};

} // namespace

int ForeTime::set(char const * text)
{
    Reader reader(detail::viewOf(text));
    if (reader.atEnd())
        return init();
    std::optional<Amount> const begin = reader.readAmount(false);
    bool const has_second = begin && reader.skipDash();
    std::optional<Amount> const end = has_second ? reader.readAmount(true) : std::nullopt;
    std::optional<int> const word = reader.readType(has_second ? RANGE : FORE);
    if (!word || (has_second && !end))
        return 0;
    std::optional<long> const first = begin ? begin->seconds(end ? end->unit : std::nullopt) : std::nullopt;
    std::optional<long> const second = end ? end->seconds(std::nullopt) : std::nullopt;
    if ((begin && !first) || (end && !second))
        return 0;
    if (second)
        return setSeconds(*word, *first, *second);
    if (first)
        return detail::isInstant(*word) ? setSeconds(*word, *first, *first)
                                        : setSeconds(*word, std::min(0L, *first), std::max(0L, *first));
    return *word == ANAL || *word == ANY || *word == NONE ? setSeconds(*word, 0, 0) : 0;
}

int ForeTime::toText(String & out) const
{
    std::string text;
    bool const is_plain_analysis = type == ANAL && to_seconds == 0;
    if (hasTime() && !is_plain_analysis) {
        Unit const & unit = commonUnit(from_seconds, to_seconds);
        if (isSpan())
            text.append(Decimal(from_seconds / unit.seconds).view()).append(unit.text).append("-");
        text.append(Decimal(to_seconds / unit.seconds).view()).append(unit.text);
    }
    out.assign(text.append(detail::foreTimeType(type).text));
    return 1;
}

int ForeTime::toTimeLabel(String & out) const
{
    std::string text;
    Unit const & unit = commonUnit(from_seconds, to_seconds);
    bool const is_hours = unit.seconds == detail::SECONDS_PER_HOUR;
    if (isSpan()) {
        text.append(Decimal(from_seconds / unit.seconds).view())
            .append(from_seconds < 0 ? " to " : "-")
            .append(Decimal(to_seconds / unit.seconds).view())
            .append(" ")
            .append(unit.label);
    } else if (to_seconds != 0 && is_hours) {
        DateTool::createHourLabel(getHours(), 0, out);
        text = out.view();
    } else if (to_seconds != 0) {
        text.append(Decimal(to_seconds / unit.seconds).view()).append(" ").append(unit.label);
    }
    std::string_view const word = detail::foreTimeType(type == FORE && to_seconds == 0 ? ANAL : type).label;
    if (!text.empty() && !word.empty())
        text += ' ';
    out.assign(text.append(word));
    return 1;
}

int ForeTime::print() const
{
    String text;
    toText(text);
    detail::writeOut(std::string(text.view()) + "\n");
    return 1;
}

} // namespace Yul
