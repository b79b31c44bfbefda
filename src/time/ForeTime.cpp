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
    {"acc", ForeTime::ACC},   {"anal", ForeTime::ANAL},   {"any", ForeTime::ANY},   {"ave", ForeTime::AVG},
    {"avg", ForeTime::AVG},   {"mean", ForeTime::AVG},    {"diff", ForeTime::DIFF}, {"fcst", ForeTime::FORE},
    {"fore", ForeTime::FORE}, {"max", ForeTime::MAX},     {"min", ForeTime::MIN},   {"miss", ForeTime::NONE},
    {"none", ForeTime::NONE}, {"range", ForeTime::RANGE},
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

/// Words for units as texts have them, the first that fits wins.
constexpr UnitWord UNIT_WORDS[] = {
    {"hour", detail::SECONDS_PER_HOUR},
    {"hr", detail::SECONDS_PER_HOUR},
    {"h", detail::SECONDS_PER_HOUR},
    {"m", detail::SECONDS_PER_MINUTE},
    {"s", 1},
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

/// A forecast time text, read from its front.
class Reader
{
public:
    explicit Reader(std::string_view text) : rest(text) { skipBlanks(); }

    [[nodiscard]] bool atEnd() const { return rest.empty(); }

    /// A time in seconds, if one stands here.
    std::optional<long> readTime()
    {
        bool const is_negative = rest.starts_with('-');
        std::string_view const number = rest.substr(is_negative ? 1 : 0);
        if (number.empty() || !(detail::isDigit(number.front()) || number.front() == '.'))
            return std::nullopt;
        double value = 0.0;
        auto const [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
        if (error != std::errc())
            return std::nullopt;
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        double const seconds = value * static_cast<double>(readUnit());
        skipBlanks();
        if (!(seconds <= static_cast<double>(LONGEST)))
            return std::nullopt;
        long const whole = std::lround(seconds);
        return is_negative ? -whole : whole;
    }

    bool skipDash()
    {
        bool const is_there = rest.starts_with('-');
        if (is_there)
            rest.remove_prefix(1);
        skipBlanks();
        return is_there;
    }

    /// The type whose word ends the text; `otherwise` at the end of the text.
    std::optional<int> readType(int otherwise)
    {
        if (rest.empty())
            return otherwise;
        for (Keyword const & keyword : KEYWORDS)
            if (detail::startsIgnoringCase(rest, keyword.word) &&
                std::all_of(rest.begin(), rest.end(), isLetter))
                return keyword.type;
        return std::nullopt;
    }

private:
    static bool isLetter(char c)
    {
        char const small = detail::toLower(c);
        return small >= 'a' && small <= 'z';
    }

    void skipBlanks()
    {
        while (!rest.empty() && detail::isBlank(rest.front()))
            rest.remove_prefix(1);
        while (!rest.empty() && detail::isBlank(rest.back()))
            rest.remove_suffix(1);
    }

    /// The unit that stands here, hours if none. "max" right behind a number is a type, not minutes.
    long readUnit()
    {
        if (readType(ForeTime::NONE) && !rest.empty())
            return detail::SECONDS_PER_HOUR;
        for (UnitWord const & unit : UNIT_WORDS)
            if (detail::startsIgnoringCase(rest, unit.word)) {
                rest.remove_prefix(unit.word.size());
                return unit.seconds;
            }
        return detail::SECONDS_PER_HOUR;
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
    std::optional<long> const first = reader.readTime();
    bool const has_second = first && reader.skipDash();
    std::optional<long> const second = has_second ? reader.readTime() : std::nullopt;
    std::optional<int> const word = reader.readType(has_second ? RANGE : FORE);
    if (!word || (has_second && !second))
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
