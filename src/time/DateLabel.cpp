#include "core/Clamp.h"
#include "core/Format.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/TextBuffer.h"
#include "time/Civil.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/ForeTime.h"
#include "time/Timezone.h"

#include <cmath>
#include <string>
#include <string_view>

namespace Yul {
namespace {

using detail::isMissing;
using detail::TextBuffer;

constexpr int WITH_WEEKDAY = 1; // of the label flags

/// How much of the time of day is known.
enum class Precision { HOUR, MINUTE, SECOND };

Precision precisionOf(Date const & date)
{
    if (isMissing(date.minute))
        return Precision::HOUR;
    return isMissing(date.second) ? Precision::MINUTE : Precision::SECOND;
}

/// Appends ":45", ":45:30" or nothing; `separator` may be empty.
void addMinuteSecond(
    TextBuffer & out, Date const & date, int second, Precision precision, char const * separator)
{
    if (precision == Precision::HOUR)
        return;
    out.add(separator);
    out.addDecimal(date.minute, 2);
    if (precision == Precision::MINUTE)
        return;
    out.add(separator);
    out.addDecimal(second, 2);
}

/// "12 PM EST", "5:45:30 AM EST".
void addHalfDayTime(TextBuffer & out, Date const & local, int second, Precision precision)
{
    out.addDecimal(local.hour % 12 == 0 ? 12 : local.hour % 12);
    addMinuteSecond(out, local, second, precision, ":");
    out.add(local.hour >= 12 ? " PM " : " AM ");
    out.add(local.getZoneName());
}

/// The time of day as the zone asks for it.
/// local  the date in that zone, where it is set.
void addTime(TextBuffer & out, Date const & local, Date const & date, Timezone const & zone)
{
    Precision const precision = precisionOf(local);
    int const second = detail::clampTo<int>(static_cast<double>(local.second) + 0.5);
    if (zone.isSet() && zone.getPM() != 0) {
        addHalfDayTime(out, local, second, precision);
        if (zone.getPM() < 0) {
            Date utc = date;
            utc.changeTimezone(0, "Z");
            out.add(" [");
            out.addDecimal(utc.hour, 2);
            addMinuteSecond(out, utc, second, precision, "");
            out.add("Z]");
        }
        return;
    }
    out.addDecimal(local.hour, 2);
    addMinuteSecond(out, local, second, precision, precision == Precision::SECOND ? ":" : "");
    if (!zone.isSet())
        out.add('Z');
    else {
        if (precision != Precision::HOUR)
            out.add(' ');
        out.add(local.getZoneName());
    }
}

void addDay(TextBuffer & out, Date const & date)
{
    if (!isMissing(date.month)) {
        if (!isMissing(date.day)) {
            out.addDecimal(date.day, 1, 2);
            out.add(' ');
        }
        out.add(DateTool::getMonth(date.month));
        out.add(' ');
    }
    if (isMissing(date.year))
        out.add("XX");
    else
        out.addDecimal(date.getYear00(), 2);
}

/// The label without a prefix; the date is set.
void addLabel(TextBuffer & out, Date const & date, Timezone const & zone, int flags)
{
    Date local = date;
    if (zone.isSet())
        local.changeTimezone(zone.getOffset(), zone.getName());
    bool const has_day = !isMissing(local.month) && !isMissing(local.day);
    if (has_day && !isMissing(local.hour)) {
        addTime(out, local, date, zone);
        out.add(' ');
    }
    if (has_day && (flags & WITH_WEEKDAY) != 0) {
        out.add(DateTool::getDayWeek(local.getDayOfWeek()));
        out.add(' ');
    }
    addDay(out, local);
}

std::string hourLabel(float hours, bool has_day_form)
{
    constexpr float LONGEST_IN_HOURS = 60.0F;
    constexpr float HALF_DAY = 12.0F;
    constexpr float DAY = 24.0F;
    if (!std::isfinite(hours) || isMissing(hours) || hours == 0.0F)
        return {};
    bool const is_half_day = std::fmod(hours, DAY) == HALF_DAY;
    bool const is_day = std::fmod(hours, DAY) == 0.0F;
    bool const is_named_day = has_day_form && hours >= HALF_DAY && hours <= LONGEST_IN_HOURS;
    if ((is_day || is_half_day) && (is_named_day || hours > LONGEST_IN_HOURS))
        return detail::format(is_half_day ? "%.0f.5 day" : "%.0f day",
                              std::floor(static_cast<double>(hours / DAY)));
    return detail::format("%.0f hour", static_cast<double>(hours));
}

/// The date so many hours on, to the nearest second: few fractions of an hour are exact, and 1.05 hours are to be
/// 63 minutes.
Date movedByHours(Date date, float hours)
{
    date.addSeconds(std::round(hours * static_cast<float>(detail::SECONDS_PER_HOUR)));
    return date;
}

/// Appends a word after a blank, which an empty text does not need.
void addWord(TextBuffer & out, std::string_view word)
{
    if (!out.empty())
        out.add(' ');
    out.add(word);
}

/// The word of a forecast label for the forecast hour.
std::string forecastWord(float fhour, bool begins_label)
{
    if (isMissing(fhour))
        return begins_label ? "Data" : "data";
    if (fhour == 0.0F)
        return begins_label ? "Analysis" : "analysis";
    return hourLabel(fhour, false);
}

int unsetLabel(String & out)
{
    out.clear();
    return 0;
}

} // namespace

int DateTool::createLabel(
    char const * prefix, Date const & date, Timezone const & zone, int flags, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    TextBuffer label;
    label.add(detail::viewOf(prefix));
    if (!label.empty())
        label.add(' ');
    addLabel(label, date, zone, flags);
    out.assign(label.view());
    return 1;
}

int DateTool::createLabel(char const * prefix, Date const & date, Timezone const & zone, String & out)
{
    return createLabel(prefix, date, zone, 0, out);
}

int DateTool::createLabel(Date const & date, Timezone const & zone, String & out)
{
    return createLabel(nullptr, date, zone, 0, out);
}

int DateTool::createLabel(Date const & date, String & out)
{
    return createLabel(date, Timezone(), out);
}

int DateTool::createLabel(Date const & date, Timezone const & zone, float hours, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    return createLabel(isMissing(hours) ? date : movedByHours(date, hours), zone, out);
}

int DateTool::createLabel(
    Date const & date, Timezone const & zone, char const * prefix, float fhour, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    if (!std::isfinite(fhour))
        fhour = Const::MISS;
    TextBuffer label;
    label.add(detail::viewOf(prefix));
    addWord(label, forecastWord(fhour, label.empty()));
    label.add(fhour > 0.0F ? " valid " : " for ");
    if (isMissing(fhour) || fhour == 0.0F)
        addLabel(label, date, zone, 0);
    else
        addLabel(label, movedByHours(date, fhour), zone, WITH_WEEKDAY);
    out.assign(label.view());
    return 1;
}

int DateTool::createLabel(
    Date const & date, Timezone const & zone, char const * prefix, ForeTime const & fore, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    TextBuffer label;
    label.add(detail::viewOf(prefix));
    String word;
    fore.toTimeLabel(word);
    addWord(label, word.view());
    int const fhour = fore.getFore();
    Date valid = date;
    if (!isMissing(fhour))
        valid.addHours(fhour);
    label.add(fhour > 0 ? " valid " : " for ");
    addLabel(label, valid, zone, 0);
    out.assign(label.view());
    return 1;
}

int DateTool::createLabel(Date const & date, char const * prefix, float fhour, String & out)
{
    return createLabel(date, Timezone(), prefix, fhour, out);
}

int DateTool::createHourLabel(float hours, int day_form, String & out)
{
    out.assign(hourLabel(hours, day_form != 0));
    return 1;
}

} // namespace Yul
