#include "surface/LineFeed.h"

#include "surface/BulletinLine.h"

#include <algorithm>
#include <cstring>

namespace Yul::detail {
namespace {

constexpr std::size_t CHUNK = std::size_t{1} << 18;
constexpr std::size_t LONGEST_LINE = std::size_t{1} << 24;
constexpr std::size_t NOT_FOUND = std::string_view::npos;
constexpr std::string_view STARRED_LINE = "\n** ";

/// Where the first line that begins a bulletin begins; the text itself begins a line or does not.
std::size_t findBulletin(std::string_view text, bool begins_line)
{
    auto const begins = [&](std::size_t i) { return i == 0 ? begins_line : text[i - 1] == '\n'; };
    std::size_t soh = text.find('\x01');
    for (; soh != NOT_FOUND; soh = text.find('\x01', soh + 1)) {
        std::size_t const line = soh > 0 && text[soh - 1] == '\x03' ? soh - 1 : soh;
        if (begins(line) && isStartLine(text.substr(line))) {
            soh = line;
            break;
        }
    }
    std::string_view const before = text.substr(0, soh);
    if (begins_line && isStarredHeading(before))
        return 0;
    for (std::size_t star = before.find('*'); star != NOT_FOUND; star = before.find('*', star + 1))
        if (star > 0 && before.substr(star - 1).starts_with(STARRED_LINE))
            return star;
    return soh;
}

} // namespace

bool LineFeed::open(char const * name)
{
    close();
    return file.open(name, "r") != 0;
}

void LineFeed::close()
{
    file.close();
    begin = end = 0;
    buffer_position = 0;
    is_inside_line = false;
}

bool LineFeed::fill()
{
    if (begin > 0) {
        std::memmove(buffer.data(), buffer.data() + begin, end - begin);
        buffer_position += static_cast<long>(begin);
        end -= begin;
        begin = 0;
    }
    if (buffer.size() < end + CHUNK)
        buffer.resize(std::max(buffer.size() * 2, end + CHUNK));
    std::size_t const count = file.read(buffer.data() + end, buffer.size() - end);
    end += count;
    return count > 0;
}

bool LineFeed::next(std::string_view & line)
{
    if (is_inside_line)
        skipLine();
    std::size_t searched = 0;
    for (;;) {
        std::string_view const rest = unread();
        std::size_t const newline = rest.find('\n', searched);
        searched = rest.size();
        if (newline != NOT_FOUND) {
            line = rest.substr(0, newline + 1);
            break;
        }
        if (searched >= LONGEST_LINE || !fill()) {
            line = unread().substr(0, LONGEST_LINE);
            is_inside_line = line.size() == LONGEST_LINE;
            break;
        }
    }
    begin += line.size();
    return !line.empty();
}

void LineFeed::skipLine()
{
    is_inside_line = false;
    do {
        std::size_t const newline = unread().find('\n');
        if (newline != NOT_FOUND) {
            begin += newline + 1;
            return;
        }
        begin = end;
    } while (fill());
}

void LineFeed::skipToBulletin()
{
    if (is_inside_line)
        skipLine();
    if (begin == end && !fill())
        return;
    bool is_line_start = true; // of the first octet not read yet
    do {
        std::size_t const found = findBulletin(unread(), is_line_start);
        if (found != NOT_FOUND) {
            begin += found;
            return;
        }
        // Keep the last line: its beginning may be a bulletin's that is not all here yet.
        std::size_t const newline = unread().rfind('\n');
        is_line_start = is_line_start || newline != NOT_FOUND;
        begin += newline != NOT_FOUND ? newline + 1 : 0;
        if (newline == NOT_FOUND && end - begin > LONGEST_LINE) {
            begin = end - 1;
            is_line_start = false;
        }
    } while (fill());
    begin = end;
}

bool LineFeed::seek(long position)
{
    if (file.seek(position) == 0)
        return false;
    begin = end = 0;
    buffer_position = position;
    is_inside_line = false;
    return true;
}

} // namespace Yul::detail
