// The reader of single reports from feeds of surface bulletins.
#pragma once

#include "surface/ReportSplitter.h"
#include "surface/SfcWmoData.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"

#include <deque>

namespace Yul {

/// Reads the bulletins of a feed as WmoParse does, selected by heading with an index or without, and hands out
/// their reports one by one. No product identifiers are expected: where one stands behind the heading it is
/// passed over. Operations return 1, or 0 for failure.
class SfcWmoFile : public WmoParse
{
public:
    SfcWmoFile() { init(); }

    /// Opens the feed; `isOpen` tells whether that went well.
    explicit SfcWmoFile(char const * name);

    /// As WmoParse::init, without product identifiers; reports of all types are taken again.
    int init();

    /// Only reports of this type or word, "METAR" or "AAXX", in any case; null or empty takes all.
    /// return  0 for a type that there is not; the choice stays as it was.
    int setType(char const * name);
    /// The time at which the feed was taken, UTC. Headings and reports state day and hour only: they get the
    /// month and the year that make them the latest at this time, or at most one day behind it. Until set,
    /// the library's initial time counts, and without that the clock.
    int setDate(Date const & date);

    /// The next report; 0, with the report cleared, at the end of all files. Goes on where the feed has been set to:
    /// what is left of another place's bulletin is forgotten.
    int read(SfcWmoData & report);
    using WmoParse::read;

    /// Takes a line as the heading of the bulletin whose reports follow: "TTAAii CCCC YYGGgg", the same without
    /// ii, or "** " and two letters. Report kind and country follow from its first letters; the counter of
    /// reports starts anew. Debug level 3 "WMO: heading - day hour minute".
    /// return  1; 0 when the line is none: everything stays as it was.
    int checkHeader(char const * line);

    /// What the heading last checked said: its first 18 characters, and day, hour and minute (Const::MISS
    /// where it states none).
    [[nodiscard]] char const * getHeading() const noexcept { return checked_heading.c_str(); }

    /// Day of the month.
    [[nodiscard]] int getDay() const noexcept { return day; }

    /// 0 to 23.
    [[nodiscard]] int getHour() const noexcept { return hour; }

    /// 0 to 59.
    [[nodiscard]] int getMinute() const noexcept { return minute; }

    /// SfcWmoData::Kind: 1 for "SA", 5 for "SI", "SM", "SN" and "SS"; other headings keep what was before.
    [[nodiscard]] int getKind() const noexcept { return kind; }

    /// SfcWmoData::Country.
    [[nodiscard]] int getCountry() const noexcept { return country; }

    /// Reports found since the last heading, those not chosen left out.
    [[nodiscard]] int getNumReports() const noexcept { return num_reports; }

private:
    void forgetHeading();
    void split();
    void startBulletin(detail::ReportSplitter & splitter, std::string_view heading);
    void keep(detail::SplitReport & report);
    [[nodiscard]] Date dateOf(detail::DayTime const & stated) const;

    detail::ReportForm const * wanted = nullptr;
    Date reference;
    std::string whole_heading; // of the reports that are being split off
    std::string checked_heading;
    int day = Const::MISS;
    int hour = Const::MISS;
    int minute = Const::MISS;
    int kind = SfcWmoData::NONE;
    int country = SfcWmoData::ELSEWHERE;
    int num_reports = 0;
    WmoProduct bulletin;
    std::deque<SfcWmoData> reports; // of the bulletin, not handed out yet
    unsigned place = 0;             // of the reader, when it split them off
};

} // namespace Yul
