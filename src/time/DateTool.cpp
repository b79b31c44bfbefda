#include "time/DateTool.h"

#include "core/Clamp.h"
#include "core/FixedScan.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "time/Date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
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

/// What a header time holds; the month is still a name where the form has one.
struct Header
{
    DateVal value;
    std::string_view month;
};

/// A form of a header time, read from the start of the text (tail 0) or from its last characters; a text with
/// fewer characters does not have the form.
struct HeaderForm
{
    std::size_t tail;
    bool (*read)(std::string_view text, Header & header);
};

template <detail::ScanFormat FORMAT> bool hour(std::string_view text, Header & h)
{
    return detail::fixedScan<FORMAT>(text, h.value.hour, h.value.day, h.month, h.value.year);
}

template <detail::ScanFormat FORMAT> bool hourMinute(std::string_view text, Header & h)
{
    if (!detail::fixedScan<FORMAT>(text, h.value.hour, h.value.minute, h.value.day, h.month, h.value.year))
        return false;
    if (text.front() == ' ') // " 945": one digit of hour
        detail::fixedScan<"%1d%2d">(text.substr(1), h.value.hour, h.value.minute);
    return true;
}

template <detail::ScanFormat FORMAT> bool hourMinuteSecond(std::string_view text, Header & h)
{
    DateVal & v = h.value;
    return detail::fixedScan<FORMAT>(text, v.hour, v.minute, v.second, v.day, h.month, v.year);
}

template <detail::ScanFormat FORMAT> bool numbers(std::string_view text, Header & h)
{
    return detail::fixedScan<FORMAT>(text, h.value.hour, h.value.day, h.value.month, h.value.year);
}

template <detail::ScanFormat FORMAT> bool day(std::string_view text, Header & h)
{
    return detail::fixedScan<FORMAT>(text, h.value.day, h.month, h.value.year);
}

/// The first form that fits decides: the order is behaviour. Those with a "Z" come first, and are passed over
/// for texts without one.
constexpr HeaderForm Z_FORMS[] = {
    {0, hour<"%2dZ %2d %3s %4d">},
    {0, hour<"%2dZ %2d %3s %2d">},
    {17, hourMinute<"%2d%2dZ %2d %3s %4d">},
    {15, hourMinute<"%2d%2dZ %2d %3s %2d">},
    {21, hourMinuteSecond<"%2d:%2d:%2fZ %2d %3s %4d">},
    {19, hourMinuteSecond<"%2d:%2d:%2fZ %2d %3s %2d">},
    {19, hour<"%2dZ %*3s %2d %3s %4d">},
    {17, hour<"%2dZ %*3s %2d %3s %2d">},
    {15, hour<"%2dZ %2d %3s %4d">},
    {13, hour<"%2dZ %2d %3s %2d">},
};

constexpr HeaderForm OTHER_FORMS[] = {
    {0, numbers<"%2d %2d %2d %2d">},
    {0, day<"%2d %3s %2d">},
    {11, day<"%2d %3s %4d">},
};

int decodeMonthName(std::string_view name)
{
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
    constexpr int TO_SMALL = 'a' - 'A';
    bool const is_small = !name.empty() && name[0] >= 'a';
    char letters[3] = {};
    for (std::size_t i = 0; i < std::min<std::size_t>(name.size(), 3); ++i)
        letters[i] = static_cast<char>(name[i] - (is_small ? TO_SMALL : 0));
    for (Row const & row : ROWS)
        if (letters[0] == row.first && letters[row.position] == row.other)
            return row.month;
    return 0;
}

/// Reads the text by the first form that fits.
bool readFirst(std::span<HeaderForm const> forms, std::string_view text, Header & header)
{
    return std::any_of(forms.begin(), forms.end(), [&](HeaderForm const & form) {
        if (text.size() < form.tail)
            return false;
        header = Header();
        return form.read(form.tail == 0 ? text : text.substr(text.size() - form.tail), header);
    });
}

DateVal readHeader(std::string_view text)
{
    Header header;
    bool const has_z = text.find('Z') != std::string_view::npos;
    if (!(has_z && readFirst(Z_FORMS, text, header)) && !readFirst(OTHER_FORMS, text, header))
        return {};
    DateVal & value = header.value;
    if (value.year < 50)
        value.year += 2000;
    if (value.year < 200)
        value.year += 1900;
    if (header.month.data() != nullptr)
        value.month = decodeMonthName(header.month);
    return value;
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
    detail::fixedScan<"%4d%2d%2d%2d%2d">(view.substr(1), value.year, value.month, value.day, value.hour,
                                         value.minute);
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
    return decodeMonthName(detail::viewOf(text));
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
