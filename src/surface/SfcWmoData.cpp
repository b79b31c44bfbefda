#include "surface/SfcWmoData.h"

#include "core/Format.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/ReportForm.h"

namespace Yul {

int SfcWmoData::init()
{
    *this = SfcWmoData();
    return 1;
}

int SfcWmoData::setReport(char const * code_word,
                          char const * report_station,
                          char const * report,
                          char const * whole_message)
{
    word = detail::viewOf(code_word);
    detail::ReportForm const * const form = detail::findReportForm(word);
    type = form != nullptr ? form->type : std::string_view();
    station = detail::viewOf(report_station);
    text = detail::viewOf(report);
    message = detail::viewOf(whole_message);
    return 1;
}

int SfcWmoData::setDate(Date const & value)
{
    date = value;
    return 1;
}

int SfcWmoData::setBulletin(char const * heading, long location, int bulletin_kind, int bulletin_country)
{
    bool const is_kind = bulletin_kind == NONE || bulletin_kind == HOURLY || bulletin_kind == SYNOPTIC;
    if (!is_kind || bulletin_country < USA || bulletin_country > ELSEWHERE)
        return 0;
    header = detail::viewOf(heading).substr(0, MAX_HEADER);
    loc = location;
    kind = bulletin_kind;
    country = bulletin_country;
    return 1;
}

int SfcWmoData::setFlags(bool has_nothing, bool corrects)
{
    is_nil = has_nothing;
    is_corrected = corrects;
    return 1;
}

int SfcWmoData::print() const
{
    char const * const name = country == USA      ? "USA"
                              : country == CANADA ? "CANADA"
                              : country == MEXICO ? "MEXICO"
                                                  : nullptr;
    std::string const place = name != nullptr ? name : detail::format("%d", country);
    Yul::print(("Location: " + place + "\n" + message + "\n").c_str());
    return 1;
}

} // namespace Yul
