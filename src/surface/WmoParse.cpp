#include "surface/WmoParse.h"

#include "core/Const.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"
#include "surface/HeadingPattern.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <cstring>

namespace Yul {
namespace {

constexpr std::size_t MAX_PATTERN = 80;
constexpr std::size_t MAX_HEADING = 120;
constexpr std::size_t STARRED_TAIL = 4; // the asterisks that end a "** " line
constexpr std::string_view ZONE_FILTER = "zn:";

std::string cut(char const * text, std::size_t length)
{
    return std::string(detail::viewOf(text).substr(0, length));
}

/// The heading of a "** heading ****" line.
std::string_view starredHeading(std::string_view line)
{
    std::string_view text = detail::withoutLineEnd(line).substr(3);
    return text.substr(0, text.size() - std::min(text.size(), STARRED_TAIL));
}

} // namespace

WmoParse::WmoParse(char const * name)
{
    init();
    open(name);
}

int WmoParse::init()
{
    close();
    Filename::init();
    wants_index = true;
    expects_identifier = true;
    stops_at_dollar = false;
    skips_blank = false;
    pattern.clear();
    filter.clear();
    return setParam(Yul::getResrc("parameter"));
}

int WmoParse::setParam(char const * list)
{
    for (std::string_view const word : detail::split(detail::viewOf(list), ',')) {
        if (word == "nohdr")
            wants_index = false;
        else if (word == "dollar")
            stops_at_dollar = true;
        else if (word == "blank")
            skips_blank = true;
    }
    return 1;
}

int WmoParse::setExpectId(bool is_expected)
{
    expects_identifier = is_expected;
    return 1;
}

int WmoParse::setHeader(char const * text)
{
    pattern = cut(text, MAX_PATTERN);
    return 1;
}

int WmoParse::setId(char const * text)
{
    filter = cut(text, MAX_PATTERN);
    return 1;
}

int WmoParse::open(Filename const & names)
{
    Filename::operator=(Filename(names)); // a copy first: the list may be this object's own
    return openFile(0) ? 1 : 0;
}

int WmoParse::open(char const * name)
{
    return open(Filename(name));
}

bool WmoParse::openFile(int number)
{
    close();
    char const * const name = get(number);
    if (name == nullptr)
        return false;
    Yul::outDebug(3, "Parsing file: %s\n", name);
    file_index = number;
    if (!feed.open(name))
        return false;
    if (StrLib::valid(getIndex(number)))
        index.open(getIndex(number));
    return true;
}

int WmoParse::close()
{
    feed.close();
    index.close();
    file_index = 0;
    resetState();
    return 1;
}

void WmoParse::resetState()
{
    heading.clear();
    identifier.clear();
    previous_state = state = detail::LINE_NONE;
    is_new_product = heading_matches = identifier_found = false;
    is_search_pending = true;
    is_at_known_place = is_chosen = false;
    line_position = heading_position = 0;
}

int WmoParse::rewind()
{
    if (!feed.seek(0))
        return 0;
    index.rewind();
    resetState();
    return 1;
}

long WmoParse::tell() const
{
    return isOpen() ? feed.position() : Const::MISS;
}

int WmoParse::seek(long position)
{
    if (!feed.seek(position))
        return 0;
    resetState();
    is_search_pending = false;
    return 1;
}

int WmoParse::newFile()
{
    int const next = file_index + 1;
    if (getNum() < 2 || next >= getNum())
        return 0;
    return openFile(next) ? 1 : 0;
}

int WmoParse::getLine(String & line)
{
    std::string_view text;
    int const code = readLine(text);
    std::string copy(text);
    std::replace(copy.begin(), copy.end(), '\0', ' ');
    line.assign(copy);
    return code;
}

int WmoParse::getLine(char * buffer, int size)
{
    if (buffer == nullptr || size < 1)
        return 0;
    String line;
    int const code = getLine(line);
    std::string_view const text = line.view().substr(0, static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return code;
}

/// The next data line to hand out and its code; 0 at the end of all files.
int WmoParse::readLine(std::string_view & line)
{
    is_new_product = false;
    while (isOpen() && nextRawLine(line)) {
        classify(line);
        if (Yul::isDebug(6))
            Yul::outDebug(6, "line:%x:%d-%d:%s", static_cast<unsigned>(state), heading_matches ? 1 : 0,
                          identifier_found ? 1 : 0, std::string(line).c_str());
        bool const is_left_out = skips_blank && detail::trimmed(line).empty();
        if (isData() && !is_left_out)
            return state;
    }
    line = {};
    state = detail::LINE_NONE;
    return 0;
}

/// Reads the next line to look at, through the index and across the ends of files.
bool WmoParse::nextRawLine(std::string_view & line)
{
    previous_state = state;
    state = detail::LINE_NONE;
    if (usesIndex() && is_search_pending && !findInIndex())
        return false;
    bool const is_body = previous_state == detail::LINE_NONE || previous_state >= detail::LINE_UNSELECTED;
    if (is_body && !heading_matches && !is_at_known_place && !Yul::isDebug(6))
        feed.skipToBulletin();
    for (;;) {
        line_position = feed.position();
        if (feed.next(line))
            return true;
        if (newFile() == 0 || (usesIndex() && !findInIndex()))
            return false;
    }
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
        if (!detail::matchHeading(entry.heading, entry.identifier, pattern) || !feed.seek(entry.offset))
            continue;
        heading = entry.heading;
        identifier = entry.identifier;
        heading_position = entry.offset;
        heading_matches = true;
        is_search_pending = false;
        is_at_known_place = true;
        previous_state = detail::LINE_NONE;
        return true;
    }
}

void WmoParse::classify(std::string_view line)
{
    if (detail::isStartLine(line)) {
        state = detail::LINE_START;
        if (!is_at_known_place) {
            heading_matches = false;
            is_search_pending = true;
            is_chosen = false;
        }
        is_at_known_place = false;
    } else if (previous_state == detail::LINE_START) {
        state = detail::LINE_SEQUENCE;
    } else if (previous_state == detail::LINE_SEQUENCE) {
        takeHeading(line);
    } else if (previous_state == detail::LINE_HEADING && expects_identifier) {
        state = detail::LINE_IDENTIFIER;
        identifier = detail::trimmed(line.substr(0, MAX_HEADING));
        endHeading();
    } else if (detail::isStarredHeading(line)) {
        is_at_known_place = false;
        takeHeading(starredHeading(line));
    } else {
        searchIdentifier(line);
        classifyData(line);
    }
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
    heading_matches = is_chosen || !usesIndex() || detail::matchHeading(heading, identifier, pattern);
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

bool WmoParse::isStart(char const * line)
{
    std::string_view const text = detail::viewOf(line);
    return detail::isStartLine(text) || detail::isStarredHeading(text);
}

int WmoParse::peek(WmoProduct & product)
{
    detail::WmoIndexEntry entry;
    while (usesIndex()) {
        if (!index.next(entry)) {
            if (newFile() == 0)
                break;
            continue;
        }
        if (!detail::matchHeading(entry.heading, entry.identifier, pattern))
            continue;
        product.Filename::set(get(file_index), getIndex(file_index));
        return product.set(entry.heading.c_str(), entry.identifier.c_str(), entry.offset);
    }
    return 0;
}

int WmoParse::read(WmoProduct &)
{
    return 1;
}

int WmoParse::setLoc(long offset)
{
    if (!isOpen())
        return 0;
    if (!usesIndex())
        return seek(offset);
    if (offset <= index.offset())
        index.rewind();
    detail::WmoIndexEntry entry;
    do {
        if (!index.next(entry))
            return 0;
    } while (entry.offset < offset);
    if (!feed.seek(offset))
        return 0;
    resetState();
    heading = entry.heading;
    identifier = entry.identifier;
    heading_position = offset;
    heading_matches = identifier_found = true;
    is_search_pending = false;
    is_at_known_place = is_chosen = true;
    return 1;
}

int WmoParse::setLoc(int number, long offset)
{
    return openFile(number) ? setLoc(offset) : 0;
}

int WmoParse::compare(char const * text) const
{
    return compare(heading.c_str(), identifier.c_str(), text);
}

int WmoParse::compare(char const * given_heading, char const * given_identifier, char const * text) const
{
    return detail::matchHeading(detail::viewOf(given_heading), detail::viewOf(given_identifier),
                                detail::viewOf(text))
               ? 1
               : 0;
}

int WmoParse::checkZone(char const * line, char const * zone)
{
    return detail::matchZone(detail::viewOf(line), detail::viewOf(zone)) ? 1 : 0;
}

} // namespace Yul
