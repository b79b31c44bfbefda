#include "grid/Level.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/LevelTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace Yul {
namespace {

using detail::isMissing;
using detail::LevelGrib1;
using detail::LevelKind;

constexpr int MAX_KIND = 254;
constexpr int GRIB_MISSING = 255;

/// Words for a level that is not set.
constexpr std::string_view NOT_SET = "miss";
/// Leads the text of a kind that has no words: "L123", "L123:4.5", "L123:4-5".
constexpr char CODE_LEAD = 'l';
constexpr std::string_view FLIGHT_LEVEL = "fl";

/// A value as the level keeps it; none where it is missing or not finite in a float.
std::optional<float> usable(double value)
{
    auto const kept = std::isfinite(value) && std::abs(value) < 3e38 ? static_cast<float>(value) : NAN;
    return std::isnan(kept) || isMissing(kept) ? std::nullopt : std::optional(kept);
}

float orMissing(std::optional<float> value)
{
    return value.value_or(static_cast<float>(Const::MISS));
}

// Text
// ----------------------------------------------------------------------------------------------------------

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
    auto const first = usable(unit.offset + unit.factor * numbers.first);
    if (!first)
        return 0;
    if (!numbers.second)
        return level.set(unit.code, *first);
    auto const second = usable(unit.offset + unit.factor * *numbers.second);
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

// Codes
// -----------------------------------------------------------------------------------------------------------

constexpr int MAX_DECIMALS = 9;
constexpr double MAX_WHOLE = 2147483647.0;
constexpr double MAX_HALF = 32767.0;

/// A value in units of 10^-decimals, held to the range of its code.
double scaled(float value, int decimals, double limit)
{
    return std::clamp(std::round(static_cast<double>(value) * std::pow(10.0, decimals)), -limit, limit);
}

bool keeps(float value, int decimals, double limit)
{
    auto const code = scaled(value, decimals, limit);
    return static_cast<float>(code / std::pow(10.0, decimals)) == value;
}

bool fits(float value, int decimals, double limit)
{
    return std::abs(static_cast<double>(value)) * std::pow(10.0, decimals) <= limit;
}

struct Codes
{
    int type = Const::MISS;
    int value = Const::MISS;
};

Codes encode(Level const & level)
{
    if (!level.isSet())
        return {};
    if (isMissing(level.getValue()))
        return {level.getType(), Const::MISS};

    auto const first = level.getValue();
    auto const second = level.isLayer() ? level.getValue2() : 0.0F;
    auto const limit = level.isLayer() ? MAX_HALF : MAX_WHOLE;
    int decimals = 0;
    while (decimals < MAX_DECIMALS && !(keeps(first, decimals, limit) && keeps(second, decimals, limit)) &&
           fits(first, decimals + 1, limit) && fits(second, decimals + 1, limit))
        ++decimals;
    if (level.isLayer())
        return {level.getType() + 1000 * decimals + 10000,
                static_cast<int>(scaled(first, decimals, limit)) * 65536 +
                    static_cast<int>(scaled(second, decimals, limit))};
    auto const value = static_cast<int>(scaled(first, decimals, limit));
    if (isMissing(value)) // a value that looks like "no value" takes one decimal more
        return {level.getType() + 1000 * (decimals + 1), value * 10};
    return {level.getType() + 1000 * decimals, value};
}

// GRIB
// ------------------------------------------------------------------------------------------------------------

struct Octets
{
    int first = 0;
    int second = 0;
};

struct Values
{
    double first = Const::MISS;
    double second = Const::MISS;
};

Values decodeOctets(LevelGrib1 const & row, Octets octets)
{
    auto const word = octets.first * 256 + octets.second;
    switch (row.form) {
    case LevelGrib1::NO_VALUE:
        return {};
    case LevelGrib1::WORD:
        return {row.offset + row.factor * word};
    case LevelGrib1::SIGNED_WORD:
        return {row.offset + row.factor * ((word & 0x8000) != 0 ? -(word & 0x7FFF) : word)};
    case LevelGrib1::OCTETS:
        return {row.offset + row.factor * octets.first, row.offset + row.factor * octets.second};
    case LevelGrib1::MIXED:
        return {10.0 * octets.first, row.offset + row.factor * octets.second};
    }
    return {};
}

int nearest(double value, int limit)
{
    return static_cast<int>(std::clamp(std::round(value), 0.0, static_cast<double>(limit)));
}

Octets encodeOctets(LevelGrib1 const & row, Values const & values)
{
    auto const count = [&row](double value) { return (value - row.offset) / row.factor; };
    switch (row.form) {
    case LevelGrib1::NO_VALUE:
        return {};
    case LevelGrib1::WORD: {
        auto const word = nearest(count(values.first), 0xFFFF);
        return {word / 256, word % 256};
    }
    case LevelGrib1::SIGNED_WORD: {
        auto const word = nearest(std::abs(count(values.first)), 0x7FFF) | (values.first < 0 ? 0x8000 : 0);
        return {word / 256, word % 256};
    }
    case LevelGrib1::OCTETS:
        return {nearest(count(values.first), 255), nearest(count(values.second), 255)};
    case LevelGrib1::MIXED:
        return {nearest(values.first / 10, 255), nearest(count(values.second), 255)};
    }
    return {};
}

bool isLayerForm(LevelGrib1 const & row)
{
    return row.form == LevelGrib1::OCTETS || row.form == LevelGrib1::MIXED;
}

double siFactor(int kind)
{
    auto const * const row = detail::findLevelKind(kind);
    return row != nullptr ? row->si : 1.0;
}

/// NCEP's local code for the entire atmosphere is taken as WMO's.
int commonKind(int kind)
{
    constexpr int NCEP_ATMOS = 200;
    return kind == NCEP_ATMOS ? static_cast<int>(Level::ATMOS) : kind;
}

bool closeTo(float a, float b)
{
    return a == b || std::abs(a - b) <= 1e-6F * std::max(std::abs(a), std::abs(b));
}

} // namespace

int Level::init()
{
    *this = Level();
    return 1;
}

int Level::set(int kind)
{
    if (kind == NONE)
        return init();
    if (kind < 0 || kind > MAX_KIND)
        return 0;
    init();
    type = kind;
    return 1;
}

int Level::set(int kind, float value)
{
    if (isMissing(value) || kind == NONE)
        return set(kind);
    if (!std::isfinite(value) || set(kind) == 0)
        return 0;
    auto const * const row = detail::findLevelKind(kind);
    if (row == nullptr || row->has_value)
        val = value + 0.0F; // no negative zero
    return 1;
}

int Level::set(int kind, float first, float second)
{
    if (isMissing(second) || isMissing(first))
        return set(kind, isMissing(first) ? second : first);
    if (!std::isfinite(second) || set(kind, first) == 0)
        return 0;
    if (!isMissing(val))
        val2 = second + 0.0F;
    return 1;
}

int Level::set(Level const & level)
{
    *this = level;
    return 1;
}

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

int Level::setGrib1(int table_3, int octet_11, int octet_12)
{
    auto const is_octet = [](int octet) { return octet >= 0 && octet <= 255; };
    auto const rows = detail::levelsGrib1();
    auto const row = std::ranges::find(rows, table_3, &LevelGrib1::type);
    if (row == rows.end() || !is_octet(octet_11) || !is_octet(octet_12))
        return 0;
    auto const values = decodeOctets(*row, {octet_11, octet_12});
    return set(row->code, orMissing(usable(values.first)), orMissing(usable(values.second)));
}

int Level::getGrib1(int & table_3, int & octet_11, int & octet_12) const
{
    LevelGrib1 const * best = nullptr;
    double best_error = INFINITY;
    Values const values{val, val2};
    for (auto const & row : detail::levelsGrib1()) {
        if (row.code != type || isLayerForm(row) != isLayer() ||
            (row.form == LevelGrib1::NO_VALUE) != isMissing(val))
            continue;
        auto const back = decodeOctets(row, encodeOctets(row, values));
        auto const error = std::abs(back.first - values.first) + std::abs(back.second - values.second);
        if (error < best_error * (1 - 1e-9)) {
            best = &row;
            best_error = error;
        }
    }
    if (best == nullptr)
        return 0;
    auto const octets = encodeOctets(*best, values);
    table_3 = best->type;
    octet_11 = octets.first;
    octet_12 = octets.second;
    return 1;
}

int Level::setGrib2(int first_kind, double first_value, int second_kind, double second_value)
{
    if (first_kind == GRIB_MISSING && second_kind == GRIB_MISSING)
        return init();
    if (first_kind == GRIB_MISSING)
        return setGrib2(second_kind, second_value, GRIB_MISSING, Const::MISS);
    if (first_kind == SFC && second_kind == TOA)
        return set(ATMOS);

    auto const convert = [](int kind, double value) {
        return orMissing(isMissing(value) ? std::nullopt : usable(value / siFactor(kind)));
    };
    auto const first = convert(first_kind, first_value);
    auto const second =
        second_kind == first_kind ? convert(second_kind, second_value) : static_cast<float>(Const::MISS);
    return set(commonKind(first_kind), first, second);
}

int Level::getGrib2(int & first_kind, double & first_value, int & second_kind, double & second_value) const
{
    if (!isSet())
        return 0;
    auto const convert = [this](float value) {
        return isMissing(value) ? static_cast<double>(Const::MISS)
                                : static_cast<double>(value) * siFactor(type);
    };
    first_kind = type;
    first_value = convert(val);
    second_kind = isLayer() ? type : GRIB_MISSING;
    second_value = convert(val2);
    return 1;
}

int Level::getTypeCode() const
{
    return encode(*this).type;
}

int Level::getValueCode() const
{
    return encode(*this).value;
}

int Level::setCodes(int type_code, int value_code)
{
    if (isMissing(type_code))
        return init();
    auto const kind = type_code % 1000;
    if (type_code < 0 || type_code >= 20000 || kind > MAX_KIND)
        return 0;
    auto const unit = std::pow(10.0, type_code / 1000 % 10);
    if (type_code >= 10000) {
        auto const second = value_code & 0xFFFF;
        auto const signed_second = second > 32767 ? second - 65536 : second;
        auto const first = (static_cast<long>(value_code) - signed_second) / 65536;
        return set(kind, static_cast<float>(static_cast<double>(first) / unit),
                   static_cast<float>(signed_second / unit));
    }
    return isMissing(value_code) ? set(kind) : set(kind, static_cast<float>(value_code / unit));
}

bool Level::isKnown() const
{
    return detail::findLevelKind(type) != nullptr;
}

char const * Level::getUnits() const
{
    auto const * const row = detail::findLevelKind(type);
    return row != nullptr ? row->units : "";
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

bool Level::compare(Level const & level) const
{
    if (type != level.type || isLayer() != level.isLayer())
        return false;
    return (closeTo(val, level.val) && closeTo(val2, level.val2)) ||
           (isLayer() && closeTo(val, level.val2) && closeTo(val2, level.val));
}

int Level::print() const
{
    String text;
    toString(text);
    text.append("\n");
    detail::writeOut(text.view());
    return 1;
}

} // namespace Yul
