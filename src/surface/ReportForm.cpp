#include "surface/ReportForm.h"

#include "core/Number.h"
#include "core/StrLib.h"

#include <algorithm>

namespace Yul::detail {
namespace {

/// WMO Manual on Codes, volume I.1, and NWS Observing Handbook 2 (CMAN). The first of a type stands for it.
constexpr ReportForm FORMS[] = {
    {"METAR", "METAR", ReportLayout::AIRPORT},   {"SPECI", "SPECI", ReportLayout::AIRPORT},
    {"TAF", "TAF", ReportLayout::AIRPORT},       {"AAXX", "SYNOP", ReportLayout::LAND},
    {"BBXX", "SHIP", ReportLayout::SHIP},        {"OOXX", "MOBIL", ReportLayout::SHIP},
    {"ZZYY", "BUOY", ReportLayout::BUOY},        {"CMAN", "CMAN", ReportLayout::COAST},
    {"CLIMAT", "CLIMAT", ReportLayout::CLIMATE}, {"TTAA", "TEMP", ReportLayout::UPPER},
    {"TTBB", "TEMP", ReportLayout::UPPER},       {"TTCC", "TEMP", ReportLayout::UPPER},
    {"TTDD", "TEMP", ReportLayout::UPPER},       {"UUAA", "TEMP", ReportLayout::UPPER_SHIP},
    {"UUBB", "TEMP", ReportLayout::UPPER_SHIP},  {"UUCC", "TEMP", ReportLayout::UPPER_SHIP},
    {"UUDD", "TEMP", ReportLayout::UPPER_SHIP},  {"PPAA", "PILOT", ReportLayout::UPPER},
    {"PPBB", "PILOT", ReportLayout::UPPER},      {"PPCC", "PILOT", ReportLayout::UPPER},
    {"PPDD", "PILOT", ReportLayout::UPPER},      {"QQAA", "PILOT", ReportLayout::UPPER_SHIP},
    {"QQBB", "PILOT", ReportLayout::UPPER_SHIP}, {"QQCC", "PILOT", ReportLayout::UPPER_SHIP},
    {"QQDD", "PILOT", ReportLayout::UPPER_SHIP},
};

/// Words that a report may have between its word and its station, as it may have "CCA".
constexpr std::string_view CORRECTED = "COR";
constexpr std::string_view AMENDED = "AMD";
constexpr std::string_view DELAYED = "RTD";

/// Words of four letters that may stand in front of a time within a report.
constexpr std::string_view NO_STATIONS[] = {"NEXT", "LAST", "TILL", "FROM", "UNTL"};

constexpr std::size_t MOST_NIL_GROUPS = 5; // COR CCCC YYGGggZ AUTO NIL
constexpr int KNOTS = 50;                  // added to the day in upper-air reports whose winds are in knots

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

/// u upper-case letter, d digit, x digit or solidus, a upper-case letter or digit; others themselves.
bool fits(std::string_view group, std::string_view pattern)
{
    auto const fitsOne = [](char c, char p) {
        return p == 'u'   ? isUpper(c)
               : p == 'd' ? isDigit(c)
               : p == 'x' ? isDigit(c) || c == '/'
               : p == 'a' ? isUpper(c) || isDigit(c)
                          : c == p;
    };
    return std::equal(group.begin(), group.end(), pattern.begin(), pattern.end(), fitsOne);
}

std::string_view at(Groups groups, std::size_t i)
{
    return i < groups.size() ? groups[i] : std::string_view();
}

bool isNil(std::string_view group)
{
    return group == "NIL";
}

/// A word about the report as a whole.
bool isMark(std::string_view group)
{
    return group == DELAYED || isCorrection(group);
}

bool isAirport(std::string_view group)
{
    return fits(group, "uaaa") &&
           std::find(std::begin(NO_STATIONS), std::end(NO_STATIONS), group) == std::end(NO_STATIONS);
}

/// "060000Z", also without the Z, and "0600Z".
bool isAirportTime(std::string_view group)
{
    return fits(group, "ddddddZ") || fits(group, "ddddddz") || fits(group, "dddddd") || fits(group, "ddddZ");
}

bool isWind(std::string_view group)
{
    return group.size() >= 7 && (fits(group.substr(0, 5), "xxxxx") || fits(group.substr(0, 5), "VRBdd")) &&
           (group.ends_with("KT") || group.ends_with("MPS") || group.ends_with("KMH"));
}

/// Day and hour of "YYGGi", unset when it is no such group.
DayTime readSynopticTime(std::string_view group, int most_added = 0)
{
    if (!fits(group, "ddddx"))
        return {};
    char text[] = {group[0], group[1], group[2], group[3], '\0'};
    if (most_added > 0 && toInt(group.substr(0, 2)) > most_added)
        text[0] = static_cast<char>(text[0] - most_added / 10);
    return readDayTime(text);
}

/// The second to fourth group of a synoptic report: iihVV, Nddff with a wind direction, and temperature or a gust.
bool beginsSynopticBody(Groups groups)
{
    std::string_view const visibility = at(groups, 1);
    std::string_view const wind = at(groups, 2);
    std::string_view const temperature = at(groups, 3);
    if (!fits(visibility, "xxxxx") || !fits(wind, "xxxxx") || !fits(temperature, "xxxxx"))
        return false;
    std::string_view const direction = wind.substr(1, 2);
    return visibility[0] <= '4' && visibility[1] != '0' && visibility[1] <= '7' &&
           (direction <= "36" || direction == "99") &&
           (temperature.starts_with("10") || temperature.starts_with("11") || temperature.starts_with("1/") ||
            temperature.starts_with("00"));
}

/// The groups behind the word, by layout. is_named: the word stands in front of this report.
ReportLabel readAirport(Groups groups, bool is_named)
{
    ReportLabel label;
    std::size_t i = 0;
    auto const passMarks = [&] {
        for (; isMark(at(groups, i)); ++i)
            label.is_corrected = label.is_corrected || isCorrection(groups[i]);
    };
    passMarks();
    if (isAirportTime(at(groups, i)))
        ++i;
    if (!isAirport(at(groups, i)))
        return label;
    std::string_view const station = groups[i++];
    passMarks();
    std::string_view const time = at(groups, i);
    if (fits(time, "ddddZ"))
        label.time = {Const::MISS, Const::MISS, toInt(time.substr(0, 2)), toInt(time.substr(2, 2))};
    else if (isAirportTime(time))
        label.time = readDayTime(time.substr(0, 6));
    bool const is_garbled = is_named && !time.empty() && (isDigit(time[0]) || time[0] == '/');
    if (isAirportTime(time) || isNil(time) || isWind(time) || is_garbled ||
        (time == "AUTO" && isWind(at(groups, i + 1))))
        label.station = station;
    return label;
}

ReportLabel readLand(Groups groups, std::string_view section, bool is_coast)
{
    ReportLabel label;
    label.time = readSynopticTime(section);
    std::string_view const station = at(groups, 0);
    bool const is_station = is_coast ? fits(station, "aaaaa") : fits(station, "ddddd");
    if (is_station && (isNil(at(groups, 1)) || fits(at(groups, 1), "xxxxx")))
        label.station = station;
    return label;
}

ReportLabel readShip(Groups groups, int most_added)
{
    ReportLabel label;
    label.time = readSynopticTime(at(groups, 1), most_added);
    bool const is_sign = groups.size() > 2 && groups[0].size() >= 3 && groups[0].size() <= 9;
    if (is_sign && label.time.isSet() && (fits(groups[2], "99xxx") || isNil(groups[2])))
        label.station = groups[0];
    return label;
}

ReportLabel readBuoy(Groups groups)
{
    ReportLabel label;
    std::string_view const station = at(groups, 0);
    std::string_view const date = at(groups, 1);
    std::string_view const time = at(groups, 2);
    bool const is_station = station.size() >= 5 && station.size() <= 7 && fits(station.substr(0, 5), "ddddd");
    if (!is_station || !fits(date, "ddddd") || !fits(time, "ddddx"))
        return label;
    int const month = toInt(date.substr(2, 2));
    char const text[] = {date[0], date[1], time[0], time[1], time[2], time[3], '\0'};
    label.time = readDayTime(text);
    if (label.time.isSet() && month >= 1 && month <= 12) {
        label.time.month = month;
        label.station = station;
    }
    return label;
}

ReportLabel readUpper(Groups groups)
{
    ReportLabel label;
    label.time = readSynopticTime(at(groups, 0), KNOTS);
    if (label.time.isSet() && fits(at(groups, 1), "ddddd"))
        label.station = groups[1];
    return label;
}

ReportLabel readClimate(Groups groups)
{
    ReportLabel label;
    if (fits(at(groups, 0), "ddddd") && (at(groups, 1) == "111" || isNil(at(groups, 1))))
        label.station = groups[0];
    return label;
}

/// How often the word stands in front: "TAF TAF" occurs.
std::size_t wordLength(ReportForm const & form, Groups groups)
{
    std::size_t n = 0;
    while (at(groups, n) == form.word)
        ++n;
    return n;
}

ReportLabel readBody(ReportForm const & form, Groups groups, std::string_view section, bool is_named)
{
    switch (form.layout) {
    case ReportLayout::AIRPORT:
        return readAirport(groups, is_named);
    case ReportLayout::LAND:
        return readLand(groups, section, false);
    case ReportLayout::COAST:
        return readLand(groups, section, true);
    case ReportLayout::SHIP:
        return readShip(groups, 0);
    case ReportLayout::BUOY:
        return readBuoy(groups);
    case ReportLayout::UPPER:
        return readUpper(groups);
    case ReportLayout::UPPER_SHIP:
        return readShip(groups, KNOTS);
    case ReportLayout::CLIMATE:
        return readClimate(groups);
    }
    return {};
}

} // namespace

ReportForm const * findReportForm(std::string_view word)
{
    if (word.size() < 3 || !isUpper(word.front()))
        return nullptr;
    auto const form =
        std::find_if(std::begin(FORMS), std::end(FORMS), [&](auto const & f) { return f.word == word; });
    return form != std::end(FORMS) ? form : nullptr;
}

ReportForm const * findReportType(std::string_view name)
{
    auto const form = std::find_if(std::begin(FORMS), std::end(FORMS), [&](auto const & f) {
        return sameIgnoringCase(f.type, name) || sameIgnoringCase(f.word, name);
    });
    return form != std::end(FORMS) ? form : nullptr;
}

ReportForm const * findReportForm(Groups groups)
{
    ReportForm const * const form = findReportForm(at(groups, 0));
    bool const is_upper_air =
        form != nullptr && (form->layout == ReportLayout::UPPER || form->layout == ReportLayout::UPPER_SHIP);
    // "UUDD" is an airport, too.
    return is_upper_air && readLabel(*form, groups, {}).station.empty() ? nullptr : form;
}

bool isCorrection(std::string_view group)
{
    return group == CORRECTED || group == AMENDED || fits(group, "CCu");
}

bool isSectionWord(ReportForm const & form) noexcept
{
    return form.layout == ReportLayout::LAND || form.layout == ReportLayout::COAST ||
           form.layout == ReportLayout::CLIMATE;
}

bool beginsReport(ReportForm const & form, Groups groups, std::string_view station_before)
{
    switch (form.layout) {
    case ReportLayout::AIRPORT: {
        std::size_t const i = isMark(at(groups, 0)) ? 1 : 0;
        std::string_view const time = at(groups, i + 1);
        bool const is_time = fits(time, "ddddddZ") || (fits(time, "dddddd") && isWind(at(groups, i + 2)));
        return isAirport(at(groups, i)) && (is_time || isNil(time));
    }
    case ReportLayout::LAND:
    case ReportLayout::COAST: {
        // The groups of later sections look much the same: the block number has to agree.
        std::string_view const station = readBody(form, groups, {}, false).station;
        bool const is_block = station_before.empty() || form.layout == ReportLayout::COAST ||
                              station.substr(0, 2) == station_before.substr(0, 2);
        return !station.empty() && is_block && (isNil(at(groups, 1)) || beginsSynopticBody(groups));
    }
    case ReportLayout::BUOY:
        return !readBody(form, groups, {}, false).station.empty() && fits(at(groups, 3), "dddddd");
    case ReportLayout::SHIP:
    case ReportLayout::CLIMATE:
        return !readBody(form, groups, {}, false).station.empty();
    default:
        return false;
    }
}

bool isSectionGroup(ReportForm const & form, Groups groups)
{
    bool const is_synoptic = form.layout == ReportLayout::LAND || form.layout == ReportLayout::COAST;
    if (!is_synoptic || !readSynopticTime(at(groups, 0)).isSet())
        return false;
    return groups.size() == 1 || beginsReport(form, groups.subspan(1), {});
}

std::size_t headLength(ReportForm const & form, Groups groups)
{
    std::size_t const n_words = wordLength(form, groups);
    if (n_words == 0)
        return 0;
    std::size_t n = n_words;
    if (isSectionWord(form))
        return n + (fits(at(groups, n), "ddddx") ? 1 : 0);
    if (form.layout == ReportLayout::AIRPORT) {
        while (isMark(at(groups, n)) || isAirportTime(at(groups, n)))
            ++n;
    }
    return n;
}

ReportLabel readLabel(ReportForm const & form, Groups groups, std::string_view section)
{
    std::size_t const n_words = wordLength(form, groups);
    bool const is_named = n_words > 0;
    groups = groups.subspan(n_words);
    ReportLabel label = readBody(form, groups, section, is_named);
    label.is_nil =
        groups.size() <= MOST_NIL_GROUPS && isNil(groups.empty() ? std::string_view() : groups.back());
    return label;
}

} // namespace Yul::detail
