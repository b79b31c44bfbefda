#include "core/Clamp.h"
#include "core/Digits.h"
#include "core/Format.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/Date.h"
#include "time/DateTool.h"

#include <array>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::Decimal;
using detail::isMissing;

int hourOfHalfDay(Date const & date)
{
    int const hour = date.getHour();
    return isMissing(hour) ? hour : hour % 12 == 0 ? 12 : hour % 12;
}

int roundedSecond(Date const & date)
{
    float const second = date.getSecond();
    return isMissing(second) ? Const::MISS : detail::clampTo<int>(static_cast<double>(second) + 0.5);
}

std::string secondWithFraction(Date const & date)
{
    float const second = date.getSecond();
    if (isMissing(second))
        return "XX.XXXX";
    if (second < 10.0F)
        return detail::format("0%6.4f", static_cast<double>(second));
    return std::string(Decimal(detail::clampTo<int>(static_cast<double>(second)), 4, 7).view());
}

std::string weekday(Date const & date)
{
    std::string_view const name = DateTool::getDayWeek(date.getDayOfWeek());
    return std::string(name.empty() ? "XXX" : name);
}

std::string monthName(Date const & date)
{
    std::string_view const name = DateTool::getMonth(date.getMonth());
    return std::string(name.empty() ? "XXX" : name);
}

std::string halfOfDay(Date const & date)
{
    return date.getHour() >= 12 ? "PM" : "AM"; // kept: AM for a missing hour
}

std::string zoneName(Date const & date)
{
    return date.getZoneName();
}

std::string percent(Date const & /*date*/)
{
    return "%";
}

/// What a letter after "%" stands for: a number with so many digits and such a width, or a text.
struct FormatCode
{
    char letter;
    int digits;
    int width; ///< also the number of X that a missing number gives
    int (*number)(Date const &);
    std::string (*text)(Date const &);
};

constexpr FormatCode FORMAT_CODES[] = {
    {'%', 0, 0, nullptr, percent},
    {'a', 0, 0, nullptr, weekday},
    {'b', 0, 0, nullptr, monthName},
    {'Y', 1, 4, [](Date const & date) { return date.getYear(); }, nullptr},
    {'y', 2, 2, [](Date const & date) { return date.getYear00(); }, nullptr},
    {'m', 2, 2, [](Date const & date) { return date.getMonth(); }, nullptr},
    {'d', 2, 2, [](Date const & date) { return date.getDay(); }, nullptr},
    {'e', 1, 2, [](Date const & date) { return date.getDay(); }, nullptr},
    {'j', 1, 3, [](Date const & date) { return date.getJulian(); }, nullptr},
    {'H', 2, 2, [](Date const & date) { return date.getHour(); }, nullptr},
    {'l', 2, 2, hourOfHalfDay, nullptr},
    {'p', 0, 0, nullptr, halfOfDay},
    {'M', 2, 2, [](Date const & date) { return date.getMinute(); }, nullptr},
    {'S', 2, 2, roundedSecond, nullptr},
    {'s', 0, 0, nullptr, secondWithFraction},
    {'u', 1, 1, [](Date const & date) { return date.getDayOfWeek(); }, nullptr},
    {'Z', 0, 0, nullptr, zoneName},
};

/// The row of every letter, for one look-up a code.
constexpr auto CODE_OF_LETTER = [] {
    std::array<FormatCode const *, 128> rows{};
    for (FormatCode const & code : FORMAT_CODES)
        rows[static_cast<std::size_t>(code.letter)] = &code;
    return rows;
}();

FormatCode const * findCode(char letter)
{
    auto const index = static_cast<unsigned char>(letter);
    return index < CODE_OF_LETTER.size() ? CODE_OF_LETTER[index] : nullptr;
}

void appendField(std::string & out, FormatCode const & code, Date const & date)
{
    if (code.text != nullptr) {
        out += code.text(date);
        return;
    }
    int const number = code.number(date);
    if (isMissing(number))
        out.append(static_cast<std::size_t>(code.width), 'X');
    else
        out += Decimal(number, code.digits, code.width).view();
}

struct NamedFormat
{
    std::string_view name;
    std::string_view format;
};

constexpr NamedFormat NAMED_FORMATS[] = {
    {"RFC1123", "%d %b %Y %H:%M:%S %Z"},
    {"ISO8601", "%Y-%m-%dT%H:%M:%S%Z"},
};

std::string formatDate(Date const & date, std::string_view format)
{
    for (NamedFormat const & named : NAMED_FORMATS)
        if (format == named.name)
            format = named.format;

    std::string out;
    out.reserve(format.size() * 2);
    while (!format.empty()) {
        std::size_t const plain = std::min(format.find('%'), format.size());
        out += format.substr(0, plain);
        format.remove_prefix(plain);
        if (format.size() > 1)
            if (FormatCode const * const code = findCode(format[1])) {
                appendField(out, *code, date);
                format.remove_prefix(1); // the letter; another letter stays and is copied as it is
            }
        format.remove_prefix(std::min<std::size_t>(format.size(), 1));
    }
    return out;
}

std::string orRunOfM(int field, int digits, char const * separator)
{
    std::string text(static_cast<std::size_t>(digits), 'M');
    if (!isMissing(field))
        text = Decimal(field, digits).view();
    return text + separator;
}

} // namespace

int Date::print() const
{
    std::string text = orRunOfM(year, 4, "/") + orRunOfM(month, 2, "/") + orRunOfM(day, 2, " ") +
                       orRunOfM(hour, 2, ":") + orRunOfM(minute, 2, ":");
    if (isMissing(second))
        text += "MM";
    else
        text += detail::format(second < 10.0F ? "0%5.3f" : "%6.3f", static_cast<double>(second));
    detail::writeOut(text + "\n");
    return 1;
}

int Date::printSeconds() const
{
    detail::writeOut(detail::format("%ld\n", seconds));
    return 1;
}

int Date::toText(char const * format, String & out) const
{
    out.assign(formatDate(*this, detail::viewOf(format)));
    return 1;
}

int Date::toText(String & out) const
{
    char const * format = "%H:%M:%S%Z %e %b %Y";
    if (isMissing(second))
        format = "%H:%M%Z %e %b %Y";
    if (isMissing(second) && isMissing(minute))
        format = isMissing(hour) ? "%e %b %Y" : "%H%Z %e %b %Y";
    return toText(format, out);
}

int Date::toString(String & out) const
{
    return toText("%Y%m%d%H%M%s", out);
}

} // namespace Yul
