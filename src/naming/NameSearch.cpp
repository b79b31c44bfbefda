// The search of NameConv through time: which dates are tried, and which files count.
#include "core/FileTool.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "naming/NameConv.h"
#include "naming/NameConvFile.h"
#include "time/Civil.h"

#include <algorithm>
#include <cstdlib>

namespace Yul {
namespace {

constexpr std::size_t MAX_DATE_DIGITS = 12; // YYYYMMDDHHmm

/// Takes up to n digits from the front of the text.
std::string_view takeDigits(std::string_view & text, std::size_t n)
{
    std::size_t i = 0;
    while (i < std::min(n, text.size()) && detail::isDigit(text[i]))
        ++i;
    std::string_view const digits = text.substr(0, i);
    text.remove_prefix(i);
    return digits;
}

/// The number at the front of the text; false when it does not begin with a digit.
bool takeNumber(std::string_view & text, long & value)
{
    std::string_view const digits = takeDigits(text, text.size());
    if (digits.empty())
        return false;
    value = detail::toInt(digits);
    return true;
}

/// Takes YYYY[MM[DD[HH[mm]]]]; what is not given is taken from 1980-01-01 00:00.
Date takeDate(std::string_view & text)
{
    int year = 1980;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    detail::scan(takeDigits(text, MAX_DATE_DIGITS), "%4d%2d%2d%2d%2d", &year, &month, &day, &hour, &minute);
    return {year, month, day, hour, minute, 0.0F};
}

/// Takes "+" or "-" from the front; the character, or 0 where there is none.
char takeSign(std::string_view & text)
{
    if (text.empty() || (text.front() != '+' && text.front() != '-'))
        return '\0';
    char const sign = text.front();
    text.remove_prefix(1);
    return sign;
}

/// Takes a signed offset "[Dd]H[:M]" and returns it in seconds; 0, with the text as it was, where there is
/// none.
long takeOffset(std::string_view & text)
{
    std::string_view rest = text;
    long const direction = takeSign(rest) == '+' ? 1 : -1;
    long days = 0;
    long hours = 0;
    long minutes = 0;
    if (!takeNumber(rest, hours))
        return 0;
    if (rest.starts_with('d')) {
        rest.remove_prefix(1);
        days = hours;
        hours = 0;
        takeNumber(rest, hours);
    }
    if (rest.starts_with(':')) {
        std::string_view behind = rest.substr(1);
        if (takeNumber(behind, minutes))
            rest = behind;
    }
    text = rest;
    return direction * (days * detail::SECONDS_PER_DAY + hours * detail::SECONDS_PER_HOUR +
                        minutes * detail::SECONDS_PER_MINUTE);
}

/// Years 1 to 9999: a search that leaves them ends.
bool isInCalendar(Date const & date)
{
    return date.getYear() >= 1 && date.getYear() <= 9999;
}

bool isFixed(int value)
{
    return value >= 0;
}

/// A missing hour or minute counts as 0, as it does in names.
int orZero(int value)
{
    return detail::isMissing(value) ? 0 : value;
}

bool isStep(int value)
{
    return value < 0 && !detail::isMissing(value);
}

/// A fixed date written as text: where the form applies, and how it is read.
struct FixedForm
{
    bool (*applies)(std::string_view text);
    void (*read)(std::string_view text, DateVal & fixed);
};

bool isPlain(std::string_view text, std::size_t length)
{
    return text.size() == length && text.find(':') == std::string_view::npos;
}

/// Tried in this order; the last one takes everything.
constexpr FixedForm FIXED_FORMS[] = {
    {[](std::string_view t) { return t.starts_with('#'); },
     [](std::string_view t, DateVal & f) {
         t.remove_prefix(1);
         detail::scan(takeDigits(t, MAX_DATE_DIGITS), "%4d%2d%2d%2d%2d", &f.year, &f.month, &f.day, &f.hour,
                      &f.minute);
     }},
    {[](std::string_view t) { return isPlain(t, 6); },
     [](std::string_view t, DateVal & f) { detail::scan(t, "%2d%2d%2d", &f.month, &f.day, &f.hour); }},
    {[](std::string_view t) { return isPlain(t, 4) && detail::isDigit(t.front()); },
     [](std::string_view t, DateVal & f) { detail::scan(t, "%2d%2d", &f.day, &f.hour); }},
    {[](std::string_view t) { return isPlain(t, 3) && detail::isDigit(t.front()); },
     [](std::string_view t, DateVal & f) { detail::scan(t, "%1d%2d", &f.day, &f.hour); }},
    {[](std::string_view t) { return t.find('d') != std::string_view::npos; },
     [](std::string_view t, DateVal & f) { detail::scan(t, "%dd%d:%d", &f.day, &f.hour, &f.minute); }},
    {[](std::string_view t) { return t.starts_with(':'); },
     [](std::string_view t, DateVal & f) { detail::scan(t, ":%d", &f.minute); }},
    {[](std::string_view t) { return t.starts_with("-:"); },
     [](std::string_view t, DateVal & f) {
         int minutes = 0;
         if (detail::scan(t, "-:%d", &minutes) == 1)
             f.minute = minutes > 0 ? -minutes : minutes;
     }},
    {[](std::string_view) { return true; },
     [](std::string_view t, DateVal & f) { detail::scan(t, "%d:%d", &f.hour, &f.minute); }},
};

} // namespace

int NameConv::setOutput(bool is_wanted)
{
    is_output = is_wanted;
    return 1;
}

int NameConv::setFixDate(DateVal const & fixed)
{
    fix_date = fixed;
    return 1;
}

int NameConv::setFixDate(char const * text)
{
    std::string_view const fixed = detail::viewOf(text);
    DateVal next;
    if (!fixed.empty()) {
        auto const * const form = std::find_if(std::begin(FIXED_FORMS), std::end(FIXED_FORMS),
                                               [&](FixedForm const & row) { return row.applies(fixed); });
        form->read(fixed, next);
    }
    fix_date = next;
    return fixed.empty() ? 0 : 1;
}

int NameConv::setLateLimit(int limit)
{
    late_limit = limit;
    return 1;
}

int NameConv::setLateDate(Date const & date)
{
    late_date = date;
    return 1;
}

Date NameConv::startDate(std::string_view & when) const
{
    if (when.starts_with('#')) {
        when.remove_prefix(1);
        return takeDate(when);
    }
    if (!detail::isMissing(Yul::getInitTime()))
        return Date(static_cast<long>(Yul::getInitTime()));
    if (late_date.isSet())
        return late_date;
    if (char const * const variable = std::getenv("yulcurtime")) {
        std::string_view text(variable);
        if (text.starts_with('#'))
            text.remove_prefix(1);
        return takeDate(text);
    }
    return Date(Date::getCurrentSeconds());
}

void NameConv::applyFixedDate(Date & date) const
{
    DateVal const & fixed = fix_date;
    if (isFixed(fixed.month)) {
        if (fixed.month > date.getMonth())
            date.addYears(-1);
        date.setMonth(fixed.month);
    }
    if (isFixed(fixed.day)) {
        if (fixed.day > date.getDay())
            date.addMonths(-1);
        date.setDay(fixed.day);
    }
    if (isFixed(fixed.hour)) {
        if (fixed.hour > orZero(date.getHour()))
            date.addDays(-1);
        date.setHour(fixed.hour);
    } else if (isStep(fixed.hour)) {
        date.setHour(date.getHour() / fixed.hour * fixed.hour);
    }
    if (isFixed(fixed.minute)) {
        if (fixed.minute > orZero(date.getMinute()))
            date.addHours(-1);
        date.setMinute(fixed.minute);
    } else if (isStep(fixed.minute)) {
        date.setMinute(date.getMinute() / fixed.minute * fixed.minute);
    }
}

bool NameConv::accepts(std::string const & name, long & size) const
{
    if (is_output)
        return true;
    size = FileTool::getSize(name.c_str());
    if (detail::isMissing(min_size))
        return size >= 0;
    return min_size >= 0 && size >= min_size;
}

bool NameConv::take(std::string const & name, Date const & date, NameConvFile & result)
{
    found_date = date;
    result.set(name.c_str(), date);
    return true;
}

bool NameConv::findExact(Date const & date, NameConvFile & result)
{
    known = {};
    num_directories = 1;
    std::string name;
    for (directory = 0; directory < num_directories; ++directory) {
        encodePieces(file_pieces, date, name);
        Yul::outDebug(3, "LATE0: %s\n", name.c_str());
        long size = -1;
        if (accepts(name, size))
            return take(name, date, result);
    }
    directory = 0;
    return false;
}

long NameConv::stepLimit() const
{
    long limit = late_limit;
    if (!detail::isMissing(late_minutes) && step > 0)
        limit = std::max(limit, late_minutes * detail::SECONDS_PER_MINUTE / step + 1);
    return limit;
}

bool NameConv::searchDirectory(Date const & start, int direction, long limit, NameConvFile & result)
{
    bool const is_debug = Yul::isDebug(3);
    // A template with no code finer than a month gives nothing to step by.
    long const tries = step > 0 ? limit : std::min(limit, 1L);
    Date date = start;
    std::string name;
    for (long i = 0; i < tries && isInCalendar(date); ++i) {
        encodePieces(file_pieces, date, name);
        long size = -1;
        bool const is_accepted = has_directory && accepts(name, size);
        if (is_debug) {
            Yul::outDebug(3, "LATE:%d %d %d %d %d\n", date.getYear(), date.getMonth(), date.getDay(),
                          date.getHour(), date.getMinute());
            Yul::outDebug(3, "LATE: %s %d %d %d\n", name.c_str(), is_output ? 1 : 0, min_size,
                          static_cast<int>(size));
        }
        if (!has_directory)
            return false;
        if (is_accepted)
            return take(name, date, result);
        date.set(date.getSeconds() + static_cast<long>(direction) * step);
    }
    return false;
}

bool NameConv::search(Date const & start, int direction, long limit, NameConvFile & result)
{
    known = {};
    num_directories = 1;
    for (directory = 0; directory < num_directories; ++directory)
        if (searchDirectory(start, direction, limit, result))
            return true;
    directory = 0;
    return false;
}

int NameConv::setLatest(char const * when, NameConvFile & result)
{
    std::string const copy(StrLib::valid(when) ? when : "la"); // it may be one of the result's own texts
    std::string_view text(copy);
    result.init();
    if (text.starts_with('>')) {
        is_output = true;
        text.remove_prefix(1);
    }
    if (text.starts_with('@'))
        return result.setFilename(text.data() + 1);

    Date start = startDate(text);
    applyFixedDate(start);
    if (long const offset = takeOffset(text)) {
        start.set(start.getSeconds() + offset);
        if (!isInCalendar(start))
            return 0;
    }
    if (text.empty())
        return findExact(start, result) ? 1 : 0;

    int const direction = takeSign(text) == '+' ? 1 : -1;
    if (!detail::startsIgnoringCase(text, "l"))
        return 0;
    text.remove_prefix(detail::startsIgnoringCase(text, "la") ? 2 : 1);
    long limit = stepLimit();
    if (text.starts_with('#')) {
        text.remove_prefix(1);
        takeNumber(text, limit);
    }
    Yul::outDebug(4, "LATE LIMIT: %d\n", static_cast<int>(limit));
    return search(start, direction, limit, result) ? 1 : 0;
}

int NameConv::setFile(Date const & date, NameConvFile & result)
{
    Date const wanted = date; // it may be the result's own date
    result.init();
    return findExact(wanted, result) ? 1 : 0;
}

} // namespace Yul
