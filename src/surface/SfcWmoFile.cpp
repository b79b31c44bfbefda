#include "surface/SfcWmoFile.h"

#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/BulletinLine.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Yul {
namespace {

constexpr std::size_t MAX_HEADING = 18; // "TTAAii CCCC YYGGgg"
constexpr std::string_view STARRED = "** ";

struct HeadingCode
{
    std::string_view begin;
    int code;
};

constexpr HeadingCode KINDS[] = {
    {"SA", SfcWmoData::HOURLY},   {"SI", SfcWmoData::SYNOPTIC}, {"SM", SfcWmoData::SYNOPTIC},
    {"SN", SfcWmoData::SYNOPTIC}, {"SS", SfcWmoData::SYNOPTIC},
};

constexpr HeadingCode COUNTRIES[] = {
    {"SACN", SfcWmoData::CANADA}, {"SPCN", SfcWmoData::CANADA}, {"SAMX", SfcWmoData::MEXICO},
    {"SAUS", SfcWmoData::USA},    {"SAUE", SfcWmoData::USA},    {"SAUM", SfcWmoData::USA},
    {"SAUW", SfcWmoData::USA},    {"SAUC", SfcWmoData::USA},    {"SACA", SfcWmoData::USA},
    {"SAXX", SfcWmoData::USA},    {"SAHW", SfcWmoData::USA},    {"SAPA", SfcWmoData::USA},
    {"SAPQ", SfcWmoData::USA},    {"SAAK", SfcWmoData::USA},
};

/// The word that reports of such bulletins may leave out.
struct HeadingWord
{
    std::string_view begin;
    std::string_view word;
};

constexpr HeadingWord WORDS[] = {
    {"SA", "METAR"}, {"SP", "SPECI"}, {"FC", "TAF"},  {"FT", "TAF"},
    {"SI", "AAXX"},  {"SM", "AAXX"},  {"SN", "AAXX"}, {"CS", "CLIMAT"},
};

template <class Row, std::size_t N> Row const * findRow(Row const (&rows)[N], std::string_view heading)
{
    auto const row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](Row const & r) { return heading.starts_with(r.begin); });
    return row != std::end(rows) ? row : nullptr;
}

/// The heading of a line, or nothing.
std::string_view headingOf(std::string_view line)
{
    using detail::beginsLike;
    if (beginsLike(line, "uuuudd uuuu dddddd") || beginsLike(line, "uuuu uuuu dddddd"))
        return line.substr(0, MAX_HEADING);
    if (line.starts_with(STARRED) && detail::beginsWithLetter(line.substr(3)) &&
        detail::beginsWithLetter(line.substr(4)))
        return line.substr(STARRED.size(), MAX_HEADING);
    return {};
}

detail::ReportForm const * formOf(std::string_view heading)
{
    HeadingWord const * const row = findRow(WORDS, heading);
    return row != nullptr ? detail::findReportForm(row->word) : nullptr;
}

} // namespace

SfcWmoFile::SfcWmoFile(char const * name)
{
    init();
    open(name);
}

int SfcWmoFile::init()
{
    WmoParse::init();
    setExpectId(false);
    wanted = nullptr;
    reference = Date();
    kind = SfcWmoData::NONE;
    bulletin.init();
    reports.clear();
    forgetHeading();
    return 1;
}

int SfcWmoFile::setType(char const * name)
{
    if (!StrLib::valid(name)) {
        wanted = nullptr;
        return 1;
    }
    detail::ReportForm const * const form = detail::findReportType(name);
    if (form == nullptr)
        return 0;
    wanted = form;
    std::erase_if(reports, [this](SfcWmoData const & report) { return report.type != wanted->type; });
    return 1;
}

int SfcWmoFile::setDate(Date const & date)
{
    reference = date;
    return 1;
}

int SfcWmoFile::read(SfcWmoData & report)
{
    if (place != getNumMoves())
        reports.clear();
    while (reports.empty() && getProduct(bulletin) != 0)
        split();
    place = getNumMoves();
    if (reports.empty()) {
        report.init();
        return 0;
    }
    report = std::move(reports.front());
    reports.pop_front();
    return 1;
}

int SfcWmoFile::checkHeader(char const * line)
{
    std::string_view const text = detail::viewOf(line);
    std::string_view const heading = detail::trimmed(headingOf(detail::withoutLineEnd(text)));
    if (heading.empty())
        return 0;
    forgetHeading();
    checked_heading = heading;
    detail::scan(heading, "%*s %*s %2d%2d%2d", &day, &hour, &minute);
    Yul::outDebug(3, text.starts_with(STARRED) ? "WMO* %s - %d %d %d\n" : "WMO: %s - %d %d %d\n",
                  checked_heading.c_str(), day, hour, minute);
    if (HeadingCode const * const row = findRow(KINDS, heading))
        kind = row->code;
    HeadingCode const * const row = findRow(COUNTRIES, heading);
    country = row != nullptr ? row->code : SfcWmoData::ELSEWHERE;
    return 1;
}

void SfcWmoFile::forgetHeading()
{
    checked_heading.clear();
    day = hour = minute = Const::MISS;
    country = SfcWmoData::ELSEWHERE;
    num_reports = 0;
}

/// Cuts the bulletin at hand into reports. A heading may also stand among its lines.
void SfcWmoFile::split()
{
    detail::ReportSplitter splitter([this](detail::SplitReport & report) { keep(report); });
    startBulletin(splitter, bulletin.getHeader());
    std::string_view text = bulletin.view();
    while (!text.empty()) {
        std::string_view const line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (headingOf(line).empty())
            splitter.addLine(line);
        else
            startBulletin(splitter, line);
    }
    splitter.finish();
}

void SfcWmoFile::startBulletin(detail::ReportSplitter & splitter, std::string_view heading)
{
    splitter.startBulletin(formOf(heading)); // ends the last report, which belongs to the heading before
    whole_heading = detail::trimmed(heading.substr(0, SfcWmoData::MAX_HEADER));
    if (checkHeader(whole_heading.c_str()) == 0)
        forgetHeading();
}

void SfcWmoFile::keep(detail::SplitReport & report)
{
    if (wanted != nullptr && wanted->type != report.form->type)
        return;
    SfcWmoData & data = reports.emplace_back();
    data.station = report.label.station;
    data.text = std::move(report.text);
    data.message = report.section.empty() ? data.text : report.section + ' ' + data.text;
    data.word = report.form->word;
    data.type = report.form->type;
    data.header = whole_heading;
    data.date = dateOf(report.label.time);
    data.loc = bulletin.getLoc();
    data.kind = kind;
    data.country = country;
    data.is_nil = report.label.is_nil;
    data.is_corrected = report.label.is_corrected;
    ++num_reports;
}

/// The stated time, or what the heading states of it, with month and year.
Date SfcWmoFile::dateOf(detail::DayTime const & stated) const
{
    detail::DayTime time = stated;
    if (detail::isMissing(time.day))
        time.day = day;
    if (detail::isMissing(time.hour)) {
        time.hour = hour;
        time.minute = minute;
    }
    Date date = reference;
    if (!date.isSet()) {
        bool const has_initial_time = Yul::getInitTime() > 0;
        has_initial_time ? date.set(static_cast<long>(Yul::getInitTime())) : date.set();
    }
    return detail::completeDate(time, date) != 0 ? date : Date();
}

} // namespace Yul
