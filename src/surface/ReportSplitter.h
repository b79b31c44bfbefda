// Cuts the text of a surface bulletin into single reports.
#pragma once

#include "surface/ReportForm.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// One report of a bulletin.
struct SplitReport
{
    ReportForm const * form = nullptr;
    ReportLabel label;   ///< its station lies in `text`
    std::string text;    ///< as it stands, single blanks between the groups, without "="
    std::string section; ///< what stands once for several: "METAR", "AAXX 06004"; empty when the text has it
};

/// Takes the lines of one bulletin after another. A report ends with "=", with the bulletin, or where a line
/// begins another: with a word such as "METAR", or with a station and what has to stand behind one. Groups are
/// what lies between blanks, without control characters at their ends. What is no report (identifiers, "NNNN", "NIL" without a
/// station, prose) is passed over.
class ReportSplitter
{
public:
    /// done  called with every report; it may move from it.
    explicit ReportSplitter(std::function<void(SplitReport &)> done) : done(std::move(done)) {}

    /// Ends the report at hand; the next line belongs to another bulletin.
    /// form  of reports that stand without a word; null when they need one.
    void startBulletin(ReportForm const * form);
    /// The line has to live until the bulletin ends.
    void addLine(std::string_view line);
    /// Ends the last report.
    void finish();

private:
    /// What stands once for several reports.
    struct Section
    {
        std::string text;       // the word and what belongs to it
        std::string_view group; // "06004" of "AAXX 06004"
        bool is_corrected = false;
    };

    void addPiece(std::string_view piece, bool begins_line);
    void takeHead();

    std::function<void(SplitReport &)> done;
    ReportForm const * form = nullptr;
    Section section;
    std::vector<std::string_view> groups; // of the report at hand
    std::vector<std::string_view> piece_groups;
};

} // namespace Yul::detail
