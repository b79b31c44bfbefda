// One report of a surface bulletin.
#pragma once

#include "core/Const.h"
#include "time/Date.h"

#include <cstddef>
#include <string>

namespace Yul {

/// The text of one report (METAR, SYNOP, ...), not decoded, with its station and time. Texts live until the
/// object changes.
class SfcWmoData
{
public:
    /// Report kinds by heading, and countries. NONE: no heading has told yet.
    enum Kind { NONE = 0, HOURLY = 1, SYNOPTIC = 5 };

    enum Country { USA = 1, CANADA = 2, MEXICO = 3, ELSEWHERE = 4 };

    /// Everything empty or missing.
    int init();

    /// The report as it stands in the bulletin, on one line, with single blanks between the groups and without
    /// "=": "METAR EGLL 060020Z ...", "03772 11582 ...".
    [[nodiscard]] char const * getText() const noexcept { return text.c_str(); }

    /// The same with what the bulletin says once for several reports: "METAR KDEN 060053Z ...", "AAXX 06001
    /// 03772 11582 ...".
    [[nodiscard]] char const * getMessage() const noexcept { return message.c_str(); }

    /// The word of the code form: "METAR", "SPECI", "TAF", "AAXX", "BBXX", "OOXX", "ZZYY", "CMAN", "CLIMAT",
    /// "TTAA", ...
    [[nodiscard]] char const * getWord() const noexcept { return word.c_str(); }

    /// What that is: "METAR", "SPECI", "TAF", "SYNOP", "SHIP", "MOBIL", "BUOY", "CMAN", "CLIMAT", "TEMP",
    /// "PILOT".
    [[nodiscard]] char const * getType() const noexcept { return type.c_str(); }

    /// Location indicator, station number or call sign.
    [[nodiscard]] char const * getStation() const noexcept { return station.c_str(); }

    /// The report's own time, UTC; where it states none, that of its section ("AAXX 06001") or of the
    /// heading. Month and year are completed as SfcWmoFile::setDate says. Not set where nothing states one.
    [[nodiscard]] Date const & getDate() const noexcept { return date; }

    /// Heading of the bulletin, at most 80 characters, and the octet position of its start line in the feed.
    [[nodiscard]] char const * getHeader() const noexcept { return header.c_str(); }

    /// The octet position; Const::MISS where it is not known.
    [[nodiscard]] long getLoc() const noexcept { return loc; }

    /// A Kind.
    [[nodiscard]] int getKind() const noexcept { return kind; }

    /// A Country.
    [[nodiscard]] int getCountry() const noexcept { return country; }

    /// Whether the station says that it has nothing to report.
    [[nodiscard]] bool isNil() const noexcept { return is_nil; }

    /// Whether the report, or the line in front of its section, says that it corrects or amends another (COR, AMD, CCA).
    [[nodiscard]] bool isCorrected() const noexcept { return is_corrected; }

    /// A report made by hand, in four parts; null texts are empty. The type follows from the word and is empty for one
    /// that no report begins with.
    int setReport(char const * code_word,
                  char const * report_station,
                  char const * report,
                  char const * whole_message);

    /// Its time, UTC; one that is not set for none.
    int setDate(Date const & value);

    /// Where it stands: the heading is cut to 80 characters. 0, and nothing changes, for a kind or a country that there is not.
    int setBulletin(char const * heading, long location, int bulletin_kind, int bulletin_country);

    /// What `isNil` and `isCorrected` say.
    int setFlags(bool has_nothing, bool corrects);

    /// Prints "Location: USA", ... and the message, a line each.
    int print() const;

private:
    friend class SfcWmoFile;

    static constexpr std::size_t MAX_HEADER = 80;

    std::string text;
    std::string message;
    std::string word;
    std::string type;
    std::string station;
    std::string header;
    Date date;
    long loc = Const::MISS;
    int kind = NONE;
    int country = ELSEWHERE;
    bool is_nil = false;
    bool is_corrected = false;
};

} // namespace Yul
