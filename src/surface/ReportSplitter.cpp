#include "surface/ReportSplitter.h"

#include "core/Number.h"

#include <algorithm>

namespace Yul::detail {
namespace {

constexpr char REPORT_END = '=';
constexpr std::string_view MESSAGE_END = "NNNN";

/// Control characters at the ends of a group are marks of the line, no part of the report.
bool isControl(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

/// Groups are what lies between blanks.
void cutIntoGroups(std::string_view text, std::vector<std::string_view> & groups)
{
    groups.clear();
    for (auto p = text.begin(); p != text.end();) {
        p = std::find_if_not(p, text.end(), isBlank);
        auto const end = std::find_if(p, text.end(), isBlank);
        std::string_view group(p, end);
        while (!group.empty() && isControl(group.front()))
            group.remove_prefix(1);
        while (!group.empty() && isControl(group.back()))
            group.remove_suffix(1);
        if (!group.empty())
            groups.push_back(group);
        p = end;
    }
}

std::string joined(Groups groups)
{
    std::string text;
    for (std::string_view const group : groups) {
        if (!text.empty())
            text += ' ';
        text += group;
    }
    return text;
}

} // namespace

void ReportSplitter::startBulletin(ReportForm const * default_form)
{
    finish();
    form = default_form;
    section = {};
}

void ReportSplitter::addLine(std::string_view line)
{
    bool begins_line = true;
    for (std::size_t end = line.find(REPORT_END); end != std::string_view::npos;
         end = line.find(REPORT_END)) {
        addPiece(line.substr(0, end), begins_line);
        finish();
        line.remove_prefix(end + 1);
        begins_line = false;
    }
    addPiece(line, begins_line);
}

/// Adds what lies before the next "=" or the end of the line.
void ReportSplitter::addPiece(std::string_view piece, bool begins_line)
{
    cutIntoGroups(piece, piece_groups);
    if (piece_groups.empty())
        return;
    bool const is_end = piece_groups.back() == MESSAGE_END;
    if (is_end)
        piece_groups.pop_back();
    if (piece_groups.empty()) {
        finish();
        return;
    }
    ReportForm const * const named =
        begins_line || groups.empty() ? findReportForm(Groups(piece_groups)) : nullptr;
    if (named != nullptr ||
        (begins_line && form != nullptr &&
         beginsReport(*form, piece_groups, groups.empty() ? std::string_view() : groups.front())))
        finish();
    if (named != nullptr) {
        form = named;
        section = {};
    }
    Groups piece_left = piece_groups;
    bool const lacks_group = form != nullptr && section.text == form->word && isSectionWord(*form);
    if (lacks_group && groups.empty() && isSectionGroup(*form, piece_groups)) {
        section.group = piece_groups.front();
        section.text += ' ';
        section.text += section.group;
        piece_left = piece_left.subspan(1);
    }
    groups.insert(groups.end(), piece_left.begin(), piece_left.end());
    if (named != nullptr)
        takeHead();
    if (is_end)
        finish();
}

/// Takes what stands once for several reports off the report at hand.
void ReportSplitter::takeHead()
{
    std::size_t const length = headLength(*form, groups);
    if (length < groups.size() && !isSectionWord(*form))
        return; // the word belongs to this report
    auto const head_end = groups.begin() + static_cast<std::ptrdiff_t>(length);
    section.group = isSectionWord(*form) && length > 1 ? groups[1] : std::string_view();
    std::vector<std::string_view> kept(groups.begin(), head_end);
    if (!isSectionWord(*form)) // a time of the bulletin, "METAR 060000"
        std::erase_if(kept, [](std::string_view group) { return isDigit(group.front()); });
    section.text = joined(kept);
    section.is_corrected = std::any_of(kept.begin(), kept.end(), isCorrection);
    groups.erase(groups.begin(), head_end);
}

void ReportSplitter::finish()
{
    if (form != nullptr && !groups.empty()) {
        SplitReport report;
        report.form = form;
        report.label = readLabel(*form, groups, section.group);
        if (!report.label.station.empty()) {
            report.text = joined(groups);
            if (groups.front() != form->word) {
                report.section = section.text.empty() ? form->word : section.text;
                report.label.is_corrected = report.label.is_corrected || section.is_corrected;
            }
            done(report);
        }
    }
    groups.clear();
}

} // namespace Yul::detail
