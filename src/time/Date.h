// A calendar time with missing fields, its seconds since 1970 and its display zone.
#pragma once

#include "time/DateVal.h"

namespace Yul {

class String;

/// A calendar time, UTC unless a zone has been applied. It adds to the six fields of DateVal the day of the
/// week, the day of the year, the seconds since 1970-01-01 00:00:00 of its (possibly shifted) wall clock, and
/// the zone. A plain value of fixed size, copied whole. Operations return 1 unless they say otherwise.
///
/// Setters of single fields refuse a value out of range: they return 0 and change nothing; the missing marker
/// is always accepted. Full sets never fail, they normalise (DateVal::validate). Sums beyond the range of a
/// type stop at its ends.
class Date : public DateVal
{
public:
    /// All missing, seconds "not set", zone "Z" with offset 0.
    Date() = default;
    Date(
        int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value);
    explicit Date(DateVal const & value);
    explicit Date(char const * text);
    explicit Date(long seconds_value);

    /// As a new one.
    int init();
    /// Sets the current clock.
    int set();
    /// Copies everything, the zone too.
    int set(Date const & other);
    /// Starts anew from the six fields. With the month missing and year and day given, the day counts as the
    /// day of the year; then the fields are validated and the seconds computed.
    int
    set(int year_value, int month_value, int day_value, int hour_value, int minute_value, float second_value);
    int set(DateVal const & value);
    /// The same for fields that already stand in a zone: nothing is shifted.
    /// offset  seconds that the zone is ahead of UTC.
    /// name    of the zone, cut to 4 characters.
    int set(DateVal const & value, int offset, char const * name);
    /// Reads "2026111412", "#202611141245": year 4, month, day, hour, minute 2 digits each, then seconds, as
    /// far as present, after an optional "#". A text that begins with "cu" stands for the current clock.
    int set(char const * text);
    /// Sets the time that lies so many seconds after 1970 began; the zone stays as it is. All fields are
    /// filled, the second is whole. A count whose year does not fit an int leaves all fields missing.
    int set(long seconds_value);

    /// Starts anew with a time of day only: year, month and day become missing.
    int setTime(int hour_value, int minute_value, float second_value);
    /// Sets the time of day from the seconds since midnight; the day stays.
    int setTime(float seconds_of_day);
    /// Sets the day that is the n-th from 1970-01-01 (1); the time of day stays. 0 when n is below 1.
    int setDays(int n);
    /// The number of the day, 1970-01-01 is 1; Const::MISS while year, month or day is missing. Kept: January
    /// counts 28 days here, so from February on the result is 3 less than the true count.
    [[nodiscard]] int getDays() const;

    /// Kept: 2000 is added to a value below 50 and 1900 to a value below 200, both tests made on the
    /// argument, so 26 is stored as 3926 and the missing marker as -6099. Negative years are refused.
    int setYear(int value);
    int setMonth(int value);  ///< 1 to 12
    int setDay(int value);    ///< 1 to 31
    int setHour(int value);   ///< 0 to 23
    int setMinute(int value); ///< 0 to 59
    /// 0.0 to 59.99999.
    int setSecond(float value);
    /// Adds a fraction, 0 <= value < 1 (the missing marker is not checked), to the second; the seconds since
    /// 1970 stay.
    int setFractionalSecond(float value);
    /// Year modulo 100, or Const::MISS.
    [[nodiscard]] int getYear00() const noexcept;

    /// Stores what DateVal::computeSecs gives, with the day of the week and of the year that belong to it.
    /// return  the seconds.
    long computeSecs();

    /// Whether any field is there.
    [[nodiscard]] bool isSet() const noexcept { return seconds != Const::MISS; }

    /// Seconds since 1970; Const::MISS while not set.
    [[nodiscard]] long getSeconds() const noexcept { return seconds; }

    /// 0 = Sunday .. 6 = Saturday; Const::MISS until computed.
    [[nodiscard]] int getDayOfWeek() const noexcept { return day_of_week; }

    /// Day of the year, 1 = 1 January; Const::MISS until computed.
    [[nodiscard]] int getJulian() const noexcept { return julian; }

    /// Seconds that the zone is ahead of UTC.
    [[nodiscard]] int getZoneOffset() const noexcept { return zone_offset; }

    /// At most 4 characters; lives as long as this date.
    [[nodiscard]] char const * getZoneName() const noexcept { return zone_name; }

    /// By the seconds since 1970.
    bool operator<(Date const & other) const noexcept { return seconds < other.seconds; }

    /// By the seconds since 1970.
    bool operator>(Date const & other) const noexcept { return seconds > other.seconds; }

    /// Moves by whole seconds; all fields are filled, missing markers are lost.
    Date & operator+=(int value);

    /// The year alone changes, the other fields stay.
    int addYears(int n);
    /// The day stays: 31 January plus one month is 31 February in the fields, and 3 March in the seconds.
    int addMonths(int n);
    /// Move the time and keep missing what was missing among day, hour, minute and second; year and month are
    /// always filled.
    int addDays(int n);
    int addHours(int n);
    int addMinutes(int n);
    /// Moves by the whole part of value, cut towards zero.
    int addSeconds(float value);
    /// Turns to another zone: the wall time becomes UTC plus offset (seconds), whatever zone was set before.
    /// Missing fields stay missing as in addDays.
    int changeTimezone(int offset, char const * name);

    /// Sets month and day from the day of the year; 0 when it is outside 1..365 (1..366 in leap years).
    int setJulian(int jday);
    static int setJulian(int year_value, int jday, int & month_value, int & day_value);
    /// Kept: one more than the day of the year; 1 January gives 2. The month is held to 1..12.
    [[nodiscard]] static int getJulian(int year_value, int month_value, int day_value);
    /// The Gregorian rule.
    [[nodiscard]] static bool isYearLeap(int year_value) noexcept;
    [[nodiscard]] bool isLeap() const noexcept;

    /// Completes a reported "HH", "DDHH" or "MMDDHH" from this reference time: moves to the nearest day,
    /// month or year that has it. A value out of range is passed over.
    /// return  1; 0 when a value was out of range
    int adjustHour(int h);
    int adjustHour(int d, int h);
    /// Kept: the month is set before it is compared, so the year changes only when the month was refused.
    int adjustHour(int m, int d, int h);
    /// The same with a minute, and with minute and second.
    int adjustMinute(int h, int minute_value);
    int adjustMinute(int d, int h, int minute_value);
    int adjustMinute(int m, int d, int h, int minute_value);
    int adjustSecond(int h, int minute_value, float second_value);

    /// Fills what is missing: second and minute 0, day and month 1, year 1970. A missing hour and the seconds
    /// since 1970 stay.
    int fix();

    /// Prints "2026/11/14 12:45:30.000" and a newline, runs of "M" for missing fields.
    int print() const;
    /// Prints the seconds since 1970 and a newline.
    int printSeconds() const;

    /// Formats the time. In the format "%" and a letter stand for a field:
    ///   %Y %y year, 4 and 2 digits    %b month "NOV"   %m month   %d day   %e day, blank padded
    ///   %j day of the year   %a weekday "SAT"   %u weekday 0..6
    ///   %H hour   %l hour 01..12   %p AM, PM   %M minute   %S second, rounded   %s second with 4 places
    ///   %Z zone name   %% percent sign
    /// Missing fields give runs of "X"; a missing hour gives "AM". Any other letter stands for itself.
    /// "RFC1123" and "ISO8601" name two whole formats.
    int toText(char const * format, String & out) const;
    /// The precision decides: "14 NOV 2026", "12Z 14 NOV 2026", "12:45Z 14 NOV 2026", "12:45:30Z 14 NOV
    /// 2026".
    int toText(String & out) const;
    /// "%Y%m%d%H%M%s", which set(text) reads.
    int toString(String & out) const;

    /// The system's seconds since 1970.
    [[nodiscard]] static long getCurrentSeconds();

private:
    int shift(long amount);

    int day_of_week = Const::MISS;
    int julian = Const::MISS;
    long seconds = Const::MISS;
    int zone_offset = 0;
    char zone_name[5] = "Z";
};

} // namespace Yul
