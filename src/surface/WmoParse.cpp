#include "surface/WmoParse.h"

#include "core/Const.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"
#include "surface/HeadingPattern.h"
#include "surface/WmoProduct.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Yul {
namespace {

constexpr std::size_t MAX_PATTERN = 80;
constexpr std::size_t MAX_HEADING = 120;
constexpr std::size_t STARRED_TAIL = 4; // the asterisks that end a "** " line
constexpr std::size_t MAX_BULLETIN = std::size_t{1} << 26;
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
    for (std::string_view const piece : detail::split(detail::viewOf(list), ',')) {
        std::string_view const word = detail::trimmed(piece);
        if (detail::startsIgnoringCase(word, "nohdr"))
            wants_index = false;
        else if (detail::startsIgnoringCase(word, "dollar"))
            stops_at_dollar = true;
        else if (detail::startsIgnoringCase(word, "blank"))
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
    close();
    return openFile(0) ? 1 : 0;
}

int WmoParse::open(char const * name)
{
    return open(Filename(name));
}

/// Changes nothing when the file cannot be opened.
bool WmoParse::openFile(int number)
{
    char const * const name = get(number);
    if (name == nullptr)
        return false;
    Yul::outDebug(3, "Parsing file: %s\n", name);
    detail::LineFeed opened;
    if (!opened.open(name))
        return false;
    close();
    feed = std::move(opened);
    file_index = number;
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
    search_floor = line_position = heading_position = bulletin_position = run_begin = run_end = 0;
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
    if (index.isOpen())
        index.rewind();
    search_floor = run_begin = run_end = position;
    previous_state = state = detail::LINE_NONE;
    is_search_pending = is_at_known_place = false;
    return 1;
}

int WmoParse::newFile()
{
    for (int next = file_index + 1; next < getNum(); ++next)
        if (openFile(next))
            return 1;
    return 0;
}

int WmoParse::getLine(String & line)
{
    std::string_view text;
    always_matches = false;
    is_tracing = Yul::isDebug(6);
    nextDataLine(text);
    if (text.find('\0') == std::string_view::npos) {
        line.assign(text);
    } else {
        std::string copy(text);
        std::replace(copy.begin(), copy.end(), '\0', ' ');
        line.assign(copy);
    }
    return state;
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

/// Goes on to the next data line to hand out; at the end of all files the line is empty and the state 0.
bool WmoParse::nextDataLine(std::string_view & line)
{
    is_new_product = false;
    while (nextRawLine(line)) {
        classify(line);
        trace(line);
        if (isData() && !(skips_blank && detail::trimmed(line).empty()))
            return true;
    }
    return false;
}

int WmoParse::getProduct(WmoProduct & product)
{
    always_matches = true;
    is_tracing = Yul::isDebug(6);
    is_new_product = false;
    bool is_rest = isSelected() && std::max(state, previous_state) >= detail::LINE_DATA;
    for (;; is_rest = false) {
        product.set("", "", Const::MISS);
        if (is_rest)
            describe(product);
        if (!collect(product, is_rest)) {
            product.init();
            return 0;
        }
        product.finish();
        if (!is_rest || !detail::trimmed(product.text).empty())
            return 1;
    }
}

void WmoParse::describe(WmoProduct & product) const
{
    bool const is_same_file = StrLib::equal(product.Filename::get(), get(file_index)) &&
                              StrLib::equal(product.getIndex(), getIndex(file_index));
    if (!is_same_file)
        product.Filename::set(get(file_index), getIndex(file_index));
    product.set(heading.c_str(), identifier.c_str(), bulletin_position);
}

/// Adds the lines of the next bulletin, or of the one that has been found, up to where another begins. False
/// when there is none.
bool WmoParse::collect(WmoProduct & product, bool is_found)
{
    bool is_ended = false; // by ETX
    std::string_view line;
    while (product.text.size() < MAX_BULLETIN && nextRawLine(line)) {
        bool const is_beginning = beginsBulletin(line);
        if (is_beginning && previous_state == detail::LINE_HEADING && expects_identifier) {
            endHeading(); // there is no identifier, nor anything else
            is_found = isSelected();
            describe(product);
        }
        if (is_beginning && is_found) {
            feed.putBack();
            state = previous_state = is_at_known_place ? detail::LINE_NONE : detail::LINE_UNSELECTED;
            heading_matches = is_at_known_place;
            return true;
        }
        classify(line);
        trace(line);
        if (isHeadingEnd() && isSelected()) {
            is_found = true;
            describe(product);
        }
        if (!isData())
            continue;
        if (!is_found)
            describe(product);
        is_found = true;
        line = detail::withoutLineEnd(line);
        if (line.ends_with('\x03')) {
            line.remove_suffix(1);
            is_ended = true;
        }
        if ((is_ended || skips_blank) && detail::trimmed(line).empty())
            continue;
        product.addLine(line, state);
        if (!is_ended)
            collectPlainLines(product);
    }
    return is_found;
}

/// Adds the lines that follow a data line of a selected bulletin, as long as nothing has to be decided about them:
/// the quick way through most of a feed.
void WmoParse::collectPlainLines(WmoProduct & product)
{
    if (is_tracing || skips_blank || !isSelected())
        return;
    long position = feed.position();
    for (std::string_view line; product.text.size() < MAX_BULLETIN && feed.next(line);
         position = feed.position()) {
        bool const is_plain =
            line[0] > '\x03' && line[0] != '*' && line[0] != '$' && !feed.isRest() && !feed.isCut();
        if (!is_plain || detail::withoutLineEnd(line).ends_with('\x03')) {
            feed.putBack();
            return;
        }
        line_position = position;
        state = detail::dataLineCode(line);
        product.addLine(line, state);
    }
}

/// Whether the line read last is the last of a bulletin's head.
bool WmoParse::isHeadingEnd() const
{
    return state == (expects_identifier ? detail::LINE_IDENTIFIER : detail::LINE_HEADING);
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
        bool const is_body = previous_state == detail::LINE_NONE || previous_state >= detail::LINE_UNSELECTED;
        if (is_body && !heading_matches && !is_at_known_place && !is_tracing)
            feed.skipToBulletin();
        line_position = feed.position();
        if (feed.next(line)) {
            if (!isUnfinished(line))
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

/// Whether this is the beginning of a line that has to be whole before it can be told what it is.
bool WmoParse::isUnfinished(std::string_view line) const
{
    if (!feed.isCut())
        return false;
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
    } else if (previous_state == detail::LINE_SEQUENCE) {
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
    if (is_tracing)
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
        return product.set(std::string(entry.heading).c_str(), std::string(entry.identifier).c_str(),
                           entry.offset);
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
    if (!feed.jump(offset))
        return 0;
    resetState();
    heading = entry.heading;
    identifier = entry.identifier;
    heading_position = bulletin_position = run_begin = run_end = offset;
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
