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

std::string cut(char const * text, std::size_t length)
{
    return std::string(detail::viewOf(text).substr(0, length));
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
    ++num_moves;
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
    ++num_moves;
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
    detail::WmoIndexEntry entry;
    if (offset < 0 || !index.find(offset, entry) || !feed.jump(offset))
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
