// The forecast time of a field: an instant or a span after the initial time.
#pragma once

#include "core/Const.h"

namespace Yul {

class String;

/// When a field holds, counted from its initial time: an analysis, a forecast for an instant, or what
/// happened over a span (a sum, a mean, a difference, an extreme). Times are whole seconds and may be
/// negative; an instant begins where it ends. Operations return 1 unless they say otherwise; a set that is
/// refused returns 0 and changes nothing.
///
/// The forecast hour of a span is its end.
///
/// Source: WMO Manual on Codes, code table 4.10 of GRIB edition 2 and code table 5 of GRIB edition 1.
class ForeTime
{
public:
    enum Type {
        NONE = -9999, ///< not set
        FORE = 0,     ///< forecast for an instant
        ANAL = 1,     ///< analysis
        ACC = 2,      ///< accumulation over the span
        AVG = 3,      ///< average over the span
        DIFF = 4,     ///< difference, end of the span minus its beginning
        RANGE = 5,    ///< anything else that holds for the span
        MAX = 6,      ///< maximum in the span
        MIN = 7,      ///< minimum in the span
        ANY = 9       ///< matches every time
    };

    ForeTime() = default;
    /// As by `set`; not set where that returns 0.
    explicit ForeTime(char const * text);
    /// A forecast for an instant.
    explicit ForeTime(int hours);
    ForeTime(int type_value, int hours);
    ForeTime(int type_value, int from_hours, int to_hours);

    /// Forgets type and times.
    int init();
    /// Reads what toText writes, and more. Times are hours, or end in a word or letter for hours, minutes,
    /// seconds or days; "f" or "T+" may stand in front, "forecast" behind. The unit of a span's end holds for
    /// a beginning without one; "min" behind a single time is minutes, behind a span the minimum.
    /// "24", "90m", "anal", "0-24 acc", "6-12 max", "f024", "24 h", "15-30 minutes acc", "any", "none";
    /// letters of either case, words on any prefix that their table in ForeTimeText.cpp lists first, blanks
    /// anywhere between parts. "" and null reset.
    int set(char const * text);
    int set(int hours);
    /// NONE and ANY carry no time. A span given by one time begins at 0, or ends there when the time is
    /// negative; Const::MISS hours reset.
    int set(int type_value, int hours);
    int set(int type_value, int from_hours, int to_hours);
    /// The same in seconds. Refused: an unknown type, an end before the beginning, an instant with a length,
    /// and times beyond 10000 years.
    int setSeconds(int type_value, long from, long to);

    /// Whether there is a type.
    [[nodiscard]] bool isSet() const noexcept { return type != NONE; }

    /// A Type.
    [[nodiscard]] int getType() const noexcept { return type; }

    /// Whether the type holds for a span rather than an instant.
    [[nodiscard]] bool isSpan() const noexcept { return type >= ACC && type <= MIN; }

    /// The forecast hour, whole hours cut towards zero; Const::MISS without a time.
    [[nodiscard]] int getFore() const noexcept;
    /// The beginning in the same way.
    [[nodiscard]] int getFrom() const noexcept;
    /// The same with their fractions.
    [[nodiscard]] float getHours() const noexcept;
    [[nodiscard]] float getFromHours() const noexcept;
    /// The same in seconds.
    [[nodiscard]] long getSeconds() const noexcept;
    [[nodiscard]] long getFromSeconds() const noexcept;

    bool operator==(ForeTime const & other) const noexcept = default;
    /// Equality in which ANY, on either side, stands for every time that is set.
    [[nodiscard]] bool match(ForeTime const & other) const noexcept;

    /// One integer that setCode turns back: the hours for a forecast on whole hours, Const::MISS for NONE and
    /// for a time that does not fit (see ForeTime.cpp for the layout and its limits).
    [[nodiscard]] int getCode() const noexcept;
    /// 0 for a number that getCode does not give.
    int setCode(int code);

    /// "24", "90m", "anal", "0-24acc"; empty for NONE.
    int toText(String & out) const;
    /// For plot labels: "24 hour", "3 day", "90 minute", "analysis", "0-24 hour accumulation"; "data" for
    /// NONE.
    int toTimeLabel(String & out) const;
    int print() const; ///< prints the text and a newline

private:
    [[nodiscard]] bool hasTime() const noexcept;

    int type = NONE;
    long from_seconds = 0;
    long to_seconds = 0;
};

} // namespace Yul
