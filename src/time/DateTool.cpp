#include "time/DateTool.h"

#include "core/Clamp.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/Date.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace Yul {
namespace {

constexpr std::array DAYS_OF_WEEK = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};
constexpr std::array MONTHS = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                               "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
constexpr std::array MONTHS_LOWER = {"jan", "feb", "mar", "apr", "may", "jun",
                                     "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr std::array MONTHS_LONG = {"January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December"};

template <std::size_t N> char const * nameOf(std::array<char const *, N> const & names, long index)
{
    return index >= 0 && index < static_cast<long>(N) ? names[static_cast<std::size_t>(index)] : "";
}

/// What the fields of a header time are, in the order in which its form reads them.
enum class Fields {
    HOUR,               ///< hour, day, month name, year
    HOUR_MINUTE,        ///< hour, minute, day, month name, year; three digits behind a blank are "945"
    HOUR_MINUTE_SECOND, ///< hour, minute, second, day, month name, year
    NUMBERS,            ///< hour, day, month number, year
    DAY                 ///< day, month name, year
};

/// A form of a header time, read from the start of the text (tail 0) or from its last characters; a text with
/// fewer characters does not have the form.
struct HeaderForm
{
    std::size_t tail;
    Fields fields;
    char const * format;
};

/// The first form that fits decides: the order is behaviour.
constexpr HeaderForm HEADER_FORMS[] = {
    {0, Fields::HOUR, "%2dZ %2d %3s %4d"},
    {0, Fields::HOUR, "%2dZ %2d %3s %2d"},
    {17, Fields::HOUR_MINUTE, "%2d%2dZ %2d %3s %4d"},
    {15, Fields::HOUR_MINUTE, "%2d%2dZ %2d %3s %2d"},
    {21, Fields::HOUR_MINUTE_SECOND, "%2d:%2d:%2fZ %2d %3s %4d"},
    {19, Fields::HOUR_MINUTE_SECOND, "%2d:%2d:%2fZ %2d %3s %2d"},
    {19, Fields::HOUR, "%2dZ %*3s %2d %3s %4d"},
    {17, Fields::HOUR, "%2dZ %*3s %2d %3s %2d"},
    {15, Fields::HOUR, "%2dZ %2d %3s %4d"},
    {13, Fields::HOUR, "%2dZ %2d %3s %2d"},
    {0, Fields::NUMBERS, "%2d %2d %2d %2d"},
    {0, Fields::DAY, "%2d %3s %2d"},
    {11, Fields::DAY, "%2d %3s %4d"},
};

struct MonthName
{
    char text[4] = "";
};

/// Reads the text by the form; true when every field is there. The month name, if the form has one, goes to
/// `month`.
bool readForm(HeaderForm const & form, std::string_view text, DateVal & value, MonthName & month)
{
    auto * const name = &month.text;
    switch (form.fields) {
    case Fields::HOUR:
        return detail::scan(text, form.format, &value.hour, &value.day, name, &value.year) == 4;
    case Fields::HOUR_MINUTE:
        if (detail::scan(text, form.format, &value.hour, &value.minute, &value.day, name, &value.year) != 5)
            return false;
        if (text.front() == ' ')
            detail::scan(text.substr(1), "%1d%2d", &value.hour, &value.minute);
        return true;
    case Fields::HOUR_MINUTE_SECOND:
        return detail::scan(text, form.format, &value.hour, &value.minute, &value.second, &value.day, name,
                            &value.year) == 6;
    case Fields::NUMBERS:
        return detail::scan(text, form.format, &value.hour, &value.day, &value.month, &value.year) == 4;
    case Fields::DAY:
        return detail::scan(text, form.format, &value.day, name, &value.year) == 3;
    }
    return false;
}

DateVal readHeader(std::string_view text)
{
    for (HeaderForm const & form : HEADER_FORMS) {
        if (text.size() < form.tail)
            continue;
        std::string_view const part = form.tail == 0 ? text : text.substr(text.size() - form.tail);
        DateVal value;
        MonthName month;
        if (!readForm(form, part, value, month))
            continue;
        if (value.year < 50)
            value.year += 2000;
        if (value.year < 200)
            value.year += 1900;
        if (form.fields != Fields::NUMBERS)
            value.month = DateTool::decodeMonth(month.text);
        return value;
    }
    return {};
}

struct CurrentStyle
{
    std::string_view name;
    char const * format;
};

constexpr CurrentStyle CURRENT_STYLES[] = {
    {"RFC1123", "%d %b %Y %H:%M:%S GMT"},
    {"ISO8601", "%Y-%m-%dT%H:%M:%SZ"},
};

} // namespace

long DateTool::getSeconds(char const * text)
{
    std::string_view const view = detail::viewOf(text);
    if (view.size() < 2 || view[0] != '#' || !detail::isDigit(view[1]))
        return static_cast<long>(detail::toLong(view));
    DateVal value;
    detail::scan(view.substr(1), "%4d%2d%2d%2d%2d", &value.year, &value.month, &value.day, &value.hour,
                 &value.minute);
    return value.computeSecs();
}

int DateTool::getMinutes(char const * text)
{
    int hours = 0;
    int minutes = 0;
    detail::scan(detail::viewOf(text), "%d:%d", &hours, &minutes);
    return detail::clampToInt(hours * 60L + (hours < 0 ? -1L : 1L) * minutes);
}

int DateTool::getCurrent(String & out)
{
    return getCurrent(nullptr, out);
}

int DateTool::getCurrent(char const * style, String & out)
{
    char const * format = "%y %b %d  %H:%M:%SZ";
    for (CurrentStyle const & row : CURRENT_STYLES)
        if (detail::viewOf(style) == row.name)
            format = row.format;
    return Date(Date::getCurrentSeconds()).toText(format, out);
}

int DateTool::decode(char const * text, Date & date)
{
    return date.set(readHeader(detail::viewOf(text)));
}

int DateTool::decodeMonth(char const * text)
{
    std::string_view const view = detail::viewOf(text).substr(0, 3);
    auto const letter = [&](std::size_t i) { return i < view.size() ? view[i] : '\0'; };
    bool const is_small = letter(0) >= 'a' && letter(0) <= 'z';
    auto const is = [&](std::size_t i, char capital) {
        return letter(i) == (is_small ? detail::toLower(capital) : capital);
    };

    struct Row
    {
        char first;
        std::size_t position; ///< of the letter that tells months with the same first letter apart
        char other;
        int month;
    };

    constexpr Row ROWS[] = {
        {'F', 0, 'F', 2},  {'S', 0, 'S', 9}, {'O', 0, 'O', 10}, {'N', 0, 'N', 11},
        {'D', 0, 'D', 12}, {'J', 1, 'A', 1}, {'J', 2, 'N', 6},  {'J', 2, 'L', 7},
        {'M', 2, 'R', 3},  {'M', 2, 'Y', 5}, {'A', 2, 'R', 4},  {'A', 2, 'G', 8},
    };
    for (Row const & row : ROWS)
        if (is(0, row.first) && is(row.position, row.other))
            return row.month;
    return 0;
}

char const * DateTool::getMonth(int month)
{
    return nameOf(MONTHS, month - 1L);
}

char const * DateTool::getMonthLower(int month)
{
    return nameOf(MONTHS_LOWER, month - 1L);
}

char const * DateTool::getMonthLong(int month)
{
    return nameOf(MONTHS_LONG, month - 1L);
}

char const * DateTool::getDayWeek(int day)
{
    return nameOf(DAYS_OF_WEEK, day);
}

int DateTool::print(int seconds)
{
    return Date(static_cast<long>(seconds)).print();
}

} // namespace Yul
