// Telling the lines of a feed: what each is, and whether its bulletin is one of those wanted.
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/HeadingPattern.h"
#include "surface/WmoParse.h"

#include <algorithm>
#include <utility>

namespace Yul {
namespace {

constexpr std::size_t MAX_HEADING = 120;
constexpr std::size_t STARRED_TAIL = 4; // the asterisks that end a "** " line
constexpr std::string_view ZONE_FILTER = "zn:";

/// The heading of a "** heading ****" line.
std::string_view starredHeading(std::string_view line)
{
    std::string_view text = detail::withoutLineEnd(line).substr(3);
    return text.substr(0, text.size() - std::min(text.size(), STARRED_TAIL));
}

} // namespace

/// Goes on to the next data line to hand out; at the end of all files the line is empty and the state 0.
bool WmoParse::nextDataLine(std::string_view & line)
{
    is_new_product = false;
    while (nextRawLine(line)) {
        classify(line);
        if (is_tracing)
            trace(line);
        if (isData() && !(skips_blank && detail::trimmed(line).empty()))
            return true;
    }
    return false;
}

/// Reads the next line to look at, through the index and across the ends of files; the line is empty and the
/// state 0 where there is none, and reading goes on from there when more has come.
bool WmoParse::nextRawLine(std::string_view & line)
{
    line = {};
    if (state != detail::LINE_NONE)
        previous_state = state;
    state = detail::LINE_NONE;
    while (isOpen()) {
        if (usesIndex() && is_search_pending && !findInIndex())
            return false;
        bool const is_body = previous_state == detail::LINE_NONE || previous_state >= headEnd();
        if (is_body && !heading_matches && !is_at_known_place && !is_tracing)
            feed.skipToBulletin();
        line_position = feed.position();
        if (feed.next(line)) {
            if (!feed.isCut() || !isUnfinished(line))
                return true;
            feed.putBack();
            line = {};
        }
        run_end = line_position;
        if (usesIndex())
            is_search_pending = true;
        else if (newFile() == 0)
            return false;
    }
    return false;
}

/// Whether this line that the file's end cuts has to be whole before it can be told what it is.
bool WmoParse::isUnfinished(std::string_view line) const
{
    bool const is_in_frame = previous_state == detail::LINE_START ||
                             previous_state == detail::LINE_SEQUENCE ||
                             (previous_state == detail::LINE_HEADING && expects_identifier);
    return is_in_frame || line.starts_with('\x01') || line.starts_with("\x03\x01") || line == "*" ||
           line == "**" || detail::isStarredHeading(line);
}

bool WmoParse::findInIndex()
{
    detail::WmoIndexEntry entry;
    for (;;) {
        if (!index.next(entry)) {
            if (newFile() == 0)
                return false;
            if (!usesIndex())
                return true;
            continue;
        }
        bool const is_read = entry.offset > run_begin && entry.offset < run_end;
        if (is_read || entry.offset < search_floor ||
            !detail::matchHeading(entry.heading, entry.identifier, pattern) || !feed.jump(entry.offset))
            continue;
        heading = entry.heading;
        identifier = entry.identifier;
        heading_position = bulletin_position = run_begin = run_end = entry.offset;
        heading_matches = true;
        identifier_found = filter.empty();
        is_search_pending = is_chosen = false;
        is_at_known_place = true;
        previous_state = detail::LINE_NONE;
        return true;
    }
}

/// Whether a bulletin begins with the line read last, before it is classified.
bool WmoParse::beginsBulletin(std::string_view line) const
{
    if (feed.isRest() || is_at_known_place)
        return false;
    bool const is_in_frame = previous_state == detail::LINE_START ||
                             previous_state == detail::LINE_SEQUENCE ||
                             (previous_state == detail::LINE_HEADING && expects_identifier);
    return detail::isStartLine(line) || (detail::isStarredHeading(line) && !is_in_frame);
}

void WmoParse::classify(std::string_view line)
{
    bool const is_named = std::exchange(is_at_known_place, false); // by the index, or by setLoc
    bool const is_in_frame = previous_state != detail::LINE_NONE && previous_state < detail::LINE_UNSELECTED;
    // An index may give the place of the heading itself.
    bool const is_named_heading = is_named && !heading.empty() && line.starts_with(heading);
    if (feed.isRest() && is_in_frame) {
        state = previous_state; // of a frame line only the beginning counts
    } else if (detail::isStartLine(line) && !feed.isRest()) {
        state = detail::LINE_START;
        bulletin_position = line_position;
        if (!is_named) {
            heading_matches = false;
            is_chosen = false;
            is_search_pending = true;
            run_end = line_position;
        }
    } else if (previous_state == detail::LINE_START) {
        state = detail::LINE_SEQUENCE;
    } else if (previous_state == detail::LINE_SEQUENCE || is_named_heading) {
        takeHeading(line);
    } else if (previous_state == detail::LINE_HEADING && expects_identifier) {
        state = detail::LINE_IDENTIFIER;
        identifier = detail::trimmed(line.substr(0, MAX_HEADING));
        endHeading();
    } else if (detail::isStarredHeading(line) && !feed.isRest()) {
        bulletin_position = line_position;
        is_chosen = is_chosen && is_named;
        takeHeading(starredHeading(line));
    } else {
        searchIdentifier(line);
        classifyData(line);
    }
}

void WmoParse::trace(std::string_view line) const
{
    Yul::outDebug(6, "line:%x:%d-%d:%s", static_cast<unsigned>(state), heading_matches ? 1 : 0,
                  identifier_found ? 1 : 0, std::string(line).c_str());
}

void WmoParse::takeHeading(std::string_view text)
{
    state = detail::LINE_HEADING;
    heading = detail::trimmed(text.substr(0, MAX_HEADING));
    heading_position = line_position;
    identifier.clear();
    identifier_found = false;
    is_new_product = true;
    if (!expects_identifier)
        endHeading();
}

void WmoParse::endHeading()
{
    bool const is_tested = !is_chosen && (usesIndex() || always_matches);
    heading_matches = !is_tested || detail::matchHeading(heading, identifier, pattern);
    identifier_found = is_chosen || filter.empty();
}

void WmoParse::searchIdentifier(std::string_view line)
{
    if (identifier_found || filter.empty())
        return;
    std::string_view const wanted = filter;
    if (!wanted.starts_with(ZONE_FILTER))
        identifier_found = line.find(wanted) != std::string_view::npos;
    else if (detail::dataLineCode(line) == detail::LINE_ZONE)
        identifier_found = detail::matchZone(line, wanted.substr(ZONE_FILTER.size()));
}

void WmoParse::classifyData(std::string_view line)
{
    state = isSelected() ? detail::dataLineCode(line) : detail::LINE_UNSELECTED;
    if (state == detail::LINE_END && stops_at_dollar)
        heading_matches = false;
}

} // namespace Yul
