#include "core/Clamp.h"
#include "core/Format.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/TextBuffer.h"
#include "time/Date.h"
#include "time/DateTool.h"

#include <array>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::Decimal;
using detail::isMissing;
using detail::TextBuffer;

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

void addSecondWithFraction(TextBuffer & out, Date const & date)
{
    float const second = date.getSecond();
    if (isMissing(second))
        out.add("XX.XXXX");
    else if (second < 10.0F)
        out.add(detail::format("0%6.4f", static_cast<double>(second)));
    else // kept: an integer format, which loses the fraction
        out.addDecimal(detail::clampTo<int>(static_cast<double>(second)), 4, 7);
}

/// A name from a table, or "XXX".
void addName(TextBuffer & out, std::string_view name)
{
    out.add(name.empty() ? "XXX" : name);
}

/// A number, or a run of X of its width.
template <int DIGITS, int WIDTH> void addNumber(TextBuffer & out, int number)
{
    if (isMissing(number))
        out.add(WIDTH, 'X');
    else
        out.addDecimal(number, DIGITS, WIDTH);
}

/// What a letter after "%" stands for.
struct FormatCode
{
    char letter;
    void (*add)(TextBuffer & out, Date const & date);
};

constexpr FormatCode FORMAT_CODES[] = {
    {'%', [](TextBuffer & out, Date const &) { out.add('%'); }},
    {'a',
     [](TextBuffer & out, Date const & date) { addName(out, DateTool::getDayWeek(date.getDayOfWeek())); }},
    {'b', [](TextBuffer & out, Date const & date) { addName(out, DateTool::getMonth(date.getMonth())); }},
    {'Y', [](TextBuffer & out, Date const & date) { addNumber<1, 4>(out, date.getYear()); }},
    {'y', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, date.getYear00()); }},
    {'m', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, date.getMonth()); }},
    {'d', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, date.getDay()); }},
    {'e', [](TextBuffer & out, Date const & date) { addNumber<1, 2>(out, date.getDay()); }},
    {'j', [](TextBuffer & out, Date const & date) { addNumber<1, 3>(out, date.getJulian()); }},
    {'H', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, date.getHour()); }},
    {'l', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, hourOfHalfDay(date)); }},
    {'p', [](TextBuffer & out, Date const & date) { out.add(date.getHour() >= 12 ? "PM" : "AM"); }},
    {'M', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, date.getMinute()); }},
    {'S', [](TextBuffer & out, Date const & date) { addNumber<2, 2>(out, roundedSecond(date)); }},
    {'s', addSecondWithFraction},
    {'u', [](TextBuffer & out, Date const & date) { addNumber<1, 1>(out, date.getDayOfWeek()); }},
    {'Z', [](TextBuffer & out, Date const & date) { out.add(date.getZoneName()); }},
};

/// The row of every letter, for one look-up a code.
constexpr auto CODE_OF_LETTER = [] {
    std::array<FormatCode const *, 128> rows{};
    for (FormatCode const & code : FORMAT_CODES)
        rows[static_cast<unsigned char>(code.letter)] = &code;
    return rows;
}();

FormatCode const * findCode(char letter)
{
    auto const index = static_cast<unsigned char>(letter);
    return index < CODE_OF_LETTER.size() ? CODE_OF_LETTER[index] : nullptr;
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

void addFormatted(TextBuffer & out, Date const & date, std::string_view format)
{
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%')
            out.add(format[i]);
        else if (i + 1 < format.size())
            if (FormatCode const * const code = findCode(format[i + 1])) {
                code->add(out, date);
                ++i; // another letter is copied as it stands
            }
    }
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
    std::string_view view = detail::viewOf(format);
    for (NamedFormat const & named : NAMED_FORMATS)
        if (view == named.name)
            view = named.format;
    TextBuffer text;
    addFormatted(text, *this, view);
    out.assign(text.view());
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
