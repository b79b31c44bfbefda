// Reading the time texts of data headers and making the time labels of plots.
#pragma once

namespace Yul {

class Date;
class ForeTime;
class String;
class Timezone;

/// Stateless operations on dates. Texts may be null, which counts as empty. Operations return 1 unless they
/// say otherwise; outputs are replaced and may be the String that an input points into.
class DateTool
{
public:
    /// Seconds since 1970: of "#YYYY[MM[DD[HH[mm]]]]", else the text as an integer.
    [[nodiscard]] static long getSeconds(char const * text);
    /// Minutes of "h" or "h:m"; with h below 0 the minutes count backwards too ("-5:30" is -330, and "-0:30"
    /// is 30). 0 for any other text.
    [[nodiscard]] static int getMinutes(char const * text);

    /// The current time as "26 NOV 14  12:45:30Z".
    static int getCurrent(String & out);
    /// style  "RFC1123" ("14 NOV 2026 12:45:30 GMT"), "ISO8601" ("2026-11-14T12:45:30Z"), else as above.
    static int getCurrent(char const * style, String & out);

    /// Reads the time of a data header, "12Z 14 NOV 2026" and its relatives, also at the end of a longer
    /// text. The first form that fits wins, in the order of the table in DateTool.cpp: "14 NOV 2026" is read
    /// as 2020 by the form with a two-digit year. date  out: unset when no form fits.
    static int decode(char const * text, Date & date);
    /// Month 1..12 of a three-letter name; 0 when it is none. The letters looked at must all be capitals or
    /// all be small: "Jan" gives 0. Most months are known by one or two letters.
    [[nodiscard]] static int decodeMonth(char const * text);

    /// "JAN", "jan", "January" of 1..12 and "SUN" of 0..6; an empty text outside. Valid for ever.
    [[nodiscard]] static char const * getMonth(int month);
    [[nodiscard]] static char const * getMonthLower(int month);
    [[nodiscard]] static char const * getMonthLong(int month);
    [[nodiscard]] static char const * getDayWeek(int day);

    /// A time label for a plot, as precise as the date: "1245Z 14 NOV 26", "12 PM EST [17Z] 14 NOV 26".
    /// prefix  goes before it with a blank, unless it is empty.
    /// zone    the label shows the time in this zone when it is set.
    /// flags   the value 1 adds the weekday.
    /// return  1; 0 with an empty text when the date is not set.
    static int
    createLabel(char const * prefix, Date const & date, Timezone const & zone, int flags, String & out);
    static int createLabel(char const * prefix, Date const & date, Timezone const & zone, String & out);
    static int createLabel(Date const & date, Timezone const & zone, String & out);
    static int createLabel(Date const & date, String & out);
    /// hours  that the date is moved by first; Const::MISS for none.
    static int createLabel(Date const & date, Timezone const & zone, float hours, String & out);
    /// A forecast label: "Forecast 24 hour valid 1200Z SAT 14 NOV 26", "Analysis for ...", "Data for ...".
    /// date   the forecast's initial time.
    /// fhour  forecast hour; 0 for an analysis, Const::MISS for data.
    static int
    createLabel(Date const & date, Timezone const & zone, char const * prefix, float fhour, String & out);
    static int createLabel(
        Date const & date, Timezone const & zone, char const * prefix, ForeTime const & fore, String & out);
    static int createLabel(Date const & date, char const * prefix, float fhour, String & out);

    /// "36 hour", "3 day", "3.5 day"; empty for 0 and Const::MISS. Days and half days are used above 60
    /// hours. day_form  not 0: 12, 24, 36, 48 and 60 hours are given in days too.
    static int createHourLabel(float hours, int day_form, String & out);

    /// Prints the time that lies so many seconds after 1970 began.
    static int print(int seconds);
};

} // namespace Yul
