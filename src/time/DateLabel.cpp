#include "core/Clamp.h"
#include "core/Digits.h"
#include "core/Format.h"
#include "core/StrLib.h"
#include "core/String.h"
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

using detail::Decimal;
using detail::isMissing;

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
void appendMinuteSecond(
    std::string & out, Date const & date, int second, Precision precision, char const * separator)
{
    if (precision == Precision::HOUR)
        return;
    out += separator;
    out += Decimal(date.minute, 2).view();
    if (precision == Precision::MINUTE)
        return;
    out += separator;
    out += Decimal(second, 2).view();
}

/// "12 PM EST", "5:45:30 AM EST".
void appendHalfDayTime(std::string & out, Date const & local, int second, Precision precision)
{
    out += Decimal(local.hour % 12 == 0 ? 12 : local.hour % 12).view();
    appendMinuteSecond(out, local, second, precision, ":");
    out += local.hour >= 12 ? " PM " : " AM ";
    out += local.getZoneName();
}

/// The time of day as the zone asks for it.
/// local  the date in that zone, where it is set.
void appendTime(std::string & out, Date const & local, Date const & date, Timezone const & zone)
{
    Precision const precision = precisionOf(local);
    int const second = detail::clampTo<int>(static_cast<double>(local.second) + 0.5);
    if (zone.isSet() && zone.getPM() != 0) {
        appendHalfDayTime(out, local, second, precision);
        if (zone.getPM() < 0) {
            Date utc = date;
            utc.changeTimezone(0, "Z");
            out += " [";
            out += Decimal(utc.hour, 2).view();
            appendMinuteSecond(out, utc, second, precision, "");
            out += "Z]";
        }
        return;
    }
    out += Decimal(local.hour, 2).view();
    appendMinuteSecond(out, local, second, precision, precision == Precision::SECOND ? ":" : "");
    if (!zone.isSet())
        out += 'Z';
    else {
        if (precision != Precision::HOUR)
            out += ' ';
        out += local.getZoneName();
    }
}

void appendDay(std::string & out, Date const & date)
{
    if (!isMissing(date.month)) {
        if (!isMissing(date.day)) {
            out += Decimal(date.day, 1, 2).view();
            out += ' ';
        }
        out += DateTool::getMonth(date.month);
        out += ' ';
    }
    if (isMissing(date.year))
        out += "XX";
    else
        out += Decimal(date.getYear00(), 2).view();
}

/// The label without a prefix; the date is set.
void appendLabel(std::string & out, Date const & date, Timezone const & zone, int flags)
{
    Date local = date;
    if (zone.isSet())
        local.changeTimezone(zone.getOffset(), zone.getName());
    bool const has_day = !isMissing(local.month) && !isMissing(local.day);
    if (has_day && !isMissing(local.hour)) {
        appendTime(out, local, date, zone);
        out += ' ';
    }
    if (has_day && (flags & WITH_WEEKDAY) != 0) {
        out += DateTool::getDayWeek(local.getDayOfWeek());
        out += ' ';
    }
    appendDay(out, local);
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

/// Appends a word after a blank, which an empty text does not need.
void appendWord(std::string & out, std::string_view word)
{
    if (!out.empty())
        out += ' ';
    out += word;
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
    std::string label;
    label.reserve(48);
    label += detail::viewOf(prefix);
    if (!label.empty())
        label += ' ';
    appendLabel(label, date, zone, flags);
    out.assign(label);
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
    Date moved = date;
    if (!isMissing(hours))
        moved.addSeconds(hours * static_cast<float>(detail::SECONDS_PER_HOUR));
    return createLabel(moved, zone, out);
}

int DateTool::createLabel(
    Date const & date, Timezone const & zone, char const * prefix, float fhour, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    if (!std::isfinite(fhour))
        fhour = Const::MISS;
    std::string label(detail::viewOf(prefix));
    appendWord(label, forecastWord(fhour, label.empty()));
    label += fhour > 0.0F ? " valid " : " for ";
    if (isMissing(fhour) || fhour == 0.0F) {
        appendLabel(label, date, zone, 0);
    } else {
        Date valid = date;
        valid.addSeconds(fhour * static_cast<float>(detail::SECONDS_PER_HOUR));
        appendLabel(label, valid, zone, WITH_WEEKDAY);
    }
    out.assign(label);
    return 1;
}

int DateTool::createLabel(
    Date const & date, Timezone const & zone, char const * prefix, ForeTime const & fore, String & out)
{
    if (!date.isSet())
        return unsetLabel(out);
    std::string label(detail::viewOf(prefix));
    String word;
    fore.toTimeLabel(word);
    appendWord(label, word.view());
    int const fhour = fore.getFore();
    Date valid = date;
    if (!isMissing(fhour))
        valid.addHours(fhour);
    label += fhour > 0 ? " valid " : " for ";
    appendLabel(label, valid, zone, 0);
    out.assign(label);
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
