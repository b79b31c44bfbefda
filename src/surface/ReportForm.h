// The forms of reports in the WMO's alphanumeric codes: how they begin, and where station and time stand.
#pragma once

#include "surface/DayTime.h"

#include <span>
#include <string_view>

namespace Yul::detail {

/// What the groups behind a report's word are.
enum class ReportLayout {
    AIRPORT,    ///< (COR|AMD) CCCC YYGGggZ ...
    LAND,       ///< a section "AAXX YYGGi", then reports IIiii iihVV Nddff ...
    COAST,      ///< a section "CMAN YYGGi", then reports IDENT iihVV Nddff ...
    SHIP,       ///< D....D YYGGi 99LLL QLLLL ...
    BUOY,       ///< Abnnn YYMMJ GGggi QLLLLL LLLLLL ...
    UPPER,      ///< YYGGI IIiii ...
    UPPER_SHIP, ///< D....D YYGGI 99LLL ...
    CLIMATE     ///< a section "CLIMAT MMJJJ", then reports IIiii 111 ...
};

/// A word that begins a report or a section of them.
struct ReportForm
{
    std::string_view word;
    std::string_view type; ///< "METAR", "SYNOP", "SHIP", ...
    ReportLayout layout;
};

using Groups = std::span<std::string_view const>;

/// The form that a word begins; null for other words.
[[nodiscard]] ReportForm const * findReportForm(std::string_view word);
/// The form that these groups begin by their first word; null for others.
[[nodiscard]] ReportForm const * findReportForm(Groups groups);
/// The form of the type or word, in any case; null for others.
[[nodiscard]] ReportForm const * findReportType(std::string_view name);

/// Whether the group says that what it stands in corrects or amends another.
[[nodiscard]] bool isCorrection(std::string_view group);
/// Whether the word stands once for a section, with a group of its own, and is no part of the reports.
[[nodiscard]] bool isSectionWord(ReportForm const & form) noexcept;
/// Whether these groups, without a word in front, are surely the beginning of a report of the form.
/// station_before  that of the report in front of them; empty where there is none.
[[nodiscard]] bool beginsReport(ReportForm const & form, Groups groups, std::string_view station_before);
/// Whether the first group is the one that a section's word, alone on its line, has left out.
[[nodiscard]] bool isSectionGroup(ReportForm const & form, Groups groups);
/// How many groups at the front are the word and what belongs to it ("METAR COR", "AAXX 06004"), no report.
[[nodiscard]] std::size_t headLength(ReportForm const & form, Groups groups);

/// What a report says of itself.
struct ReportLabel
{
    std::string_view station; ///< empty when it is no report
    DayTime time;
    bool is_nil = false;
    bool is_corrected = false;
};

/// Reads station and time off a whole report.
/// groups   with or without the word in front.
/// section  the group behind the section's word ("06004" of "AAXX 06004"); empty when there is none.
[[nodiscard]] ReportLabel readLabel(ReportForm const & form, Groups groups, std::string_view section);

} // namespace Yul::detail
