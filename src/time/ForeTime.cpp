#include "time/ForeTime.h"

#include "core/Clamp.h"
#include "core/Digits.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/Civil.h"
#include "time/DateTool.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::Decimal;

constexpr long LONGEST = 10'000L * 366 * detail::SECONDS_PER_DAY;
constexpr int ANY_CODE = INT_MIN;

struct TypeRow
{
    int type;
    std::string_view text;  ///< as toText writes it
    std::string_view label; ///< as toTimeLabel writes it
};

constexpr TypeRow TYPES[] = {
    {ForeTime::NONE, "", "data"},         {ForeTime::FORE, "", ""},
    {ForeTime::ANAL, "anal", "analysis"}, {ForeTime::ACC, "acc", "accumulation"},
    {ForeTime::AVG, "avg", "average"},    {ForeTime::DIFF, "diff", "difference"},
    {ForeTime::RANGE, "range", "period"}, {ForeTime::MAX, "max", "maximum"},
    {ForeTime::MIN, "min", "minimum"},    {ForeTime::ANY, "any", "any time"},
};

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

TypeRow const & rowOf(int type)
{
    return *std::find_if(std::begin(TYPES), std::end(TYPES) - 1,
                         [&](TypeRow const & row) { return row.type == type; });
}

bool isKnown(int type)
{
    return rowOf(type).type == type;
}

bool isInstant(int type)
{
    return type == ForeTime::FORE || type == ForeTime::ANAL;
}

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
        return std::abs(exact) <= static_cast<double>(LONGEST) ? std::optional(std::lround(exact))
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

// The code. From the lowest bit: for an instant 26 bits of time, for a span 13 bits of its end and 13 bits of
// its length; 2 bits of unit (hours, minutes, seconds, days); 3 bits of type. The sign is that of the time or
// the end. So an instant fits up to 776 days in seconds and far longer in hours, a span up to 8191 hours or
// days, 8191 minutes or 8191 seconds.
constexpr long CODE_UNITS[] = {detail::SECONDS_PER_HOUR, detail::SECONDS_PER_MINUTE, 1,
                               detail::SECONDS_PER_DAY};
constexpr int TIME_BITS = 26;
constexpr int HALF_BITS = 13;
constexpr int UNIT_BITS = 2;

constexpr std::int64_t lowest(int bits)
{
    return (std::int64_t{1} << bits) - 1;
}

/// The code in one unit; none where a time is no whole number of it or too large.
std::optional<int> encode(int type, long from, long to, int unit)
{
    long const size = CODE_UNITS[unit];
    if (from % size != 0 || to % size != 0)
        return std::nullopt;
    long const end = std::abs(to / size);
    long const length = (to - from) / size;
    if (end > lowest(isInstant(type) ? TIME_BITS : HALF_BITS) || length > lowest(HALF_BITS))
        return std::nullopt;
    std::int64_t const magnitude = (std::int64_t{type} << (TIME_BITS + UNIT_BITS)) |
                                   (std::int64_t{unit} << TIME_BITS) | (std::int64_t{length} << HALF_BITS) |
                                   end;
    auto const code = static_cast<int>(to < 0 ? -magnitude : magnitude);
    return detail::isMissing(code) ? std::nullopt : std::optional<int>(code);
}

} // namespace

ForeTime::ForeTime(char const * text)
{
    set(text);
}

ForeTime::ForeTime(int hours)
{
    set(hours);
}

ForeTime::ForeTime(int type_value, int hours)
{
    set(type_value, hours);
}

ForeTime::ForeTime(int type_value, int from_hours, int to_hours)
{
    set(type_value, from_hours, to_hours);
}

int ForeTime::init()
{
    *this = ForeTime();
    return 1;
}

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
        return isInstant(*word) ? setSeconds(*word, *first, *first)
                                : setSeconds(*word, std::min(0L, *first), std::max(0L, *first));
    return *word == ANAL || *word == ANY || *word == NONE ? setSeconds(*word, 0, 0) : 0;
}

int ForeTime::set(int hours)
{
    return set(FORE, hours);
}

int ForeTime::set(int type_value, int hours)
{
    if (detail::isMissing(hours))
        return init();
    return isInstant(type_value) ? set(type_value, hours, hours)
                                 : set(type_value, std::min(0, hours), std::max(0, hours));
}

int ForeTime::set(int type_value, int from_hours, int to_hours)
{
    return setSeconds(type_value, from_hours * detail::SECONDS_PER_HOUR, to_hours * detail::SECONDS_PER_HOUR);
}

int ForeTime::setSeconds(int type_value, long from, long to)
{
    if (!isKnown(type_value))
        return 0;
    bool const has_time = type_value != NONE && type_value != ANY;
    bool const is_in_range = -LONGEST <= from && from <= to && to <= LONGEST;
    if (has_time && (!is_in_range || (isInstant(type_value) && from != to)))
        return 0;
    type = type_value;
    from_seconds = has_time ? from : 0;
    to_seconds = has_time ? to : 0;
    return 1;
}

bool ForeTime::hasTime() const noexcept
{
    return type != NONE && type != ANY;
}

int ForeTime::getFore() const noexcept
{
    return hasTime() ? detail::clampToInt(to_seconds / detail::SECONDS_PER_HOUR) : Const::MISS;
}

int ForeTime::getFrom() const noexcept
{
    return hasTime() ? detail::clampToInt(from_seconds / detail::SECONDS_PER_HOUR) : Const::MISS;
}

float ForeTime::getHours() const noexcept
{
    return hasTime() ? static_cast<float>(static_cast<double>(to_seconds) / detail::SECONDS_PER_HOUR)
                     : Const::MISS;
}

float ForeTime::getFromHours() const noexcept
{
    return hasTime() ? static_cast<float>(static_cast<double>(from_seconds) / detail::SECONDS_PER_HOUR)
                     : Const::MISS;
}

long ForeTime::getSeconds() const noexcept
{
    return hasTime() ? to_seconds : Const::MISS;
}

long ForeTime::getFromSeconds() const noexcept
{
    return hasTime() ? from_seconds : Const::MISS;
}

bool ForeTime::match(ForeTime const & other) const noexcept
{
    if (type == ANY || other.type == ANY)
        return isSet() && other.isSet();
    return *this == other;
}

int ForeTime::getCode() const noexcept
{
    if (type == ANY)
        return ANY_CODE;
    if (type != NONE)
        for (int unit = 0; unit < 4; ++unit)
            if (auto const code = encode(type, from_seconds, to_seconds, unit))
                return *code;
    return Const::MISS;
}

int ForeTime::setCode(int code)
{
    if (code == ANY_CODE)
        return setSeconds(ANY, 0, 0);
    if (detail::isMissing(code))
        return init();
    std::int64_t const magnitude = std::abs(std::int64_t{code});
    auto const coded_type = static_cast<int>(magnitude >> (TIME_BITS + UNIT_BITS));
    long const unit = CODE_UNITS[magnitude >> TIME_BITS & lowest(UNIT_BITS)];
    bool const is_instant = isInstant(coded_type);
    long const end = (magnitude & lowest(is_instant ? TIME_BITS : HALF_BITS)) * (code < 0 ? -1 : 1);
    long const length = is_instant ? 0 : magnitude >> HALF_BITS & lowest(HALF_BITS);
    ForeTime next;
    if (next.setSeconds(coded_type, (end - length) * unit, end * unit) == 0 || next.getCode() != code)
        return 0;
    *this = next;
    return 1;
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
    out.assign(text.append(rowOf(type).text));
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
    std::string_view const word = rowOf(type == FORE && to_seconds == 0 ? ANAL : type).label;
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
