#include "surface/LineFeed.h"

#include "surface/BulletinLine.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace Yul::detail {
namespace {

constexpr std::size_t CHUNK = std::size_t{1} << 18;
constexpr std::size_t FIRST_CHUNK = std::size_t{1} << 13; // behind a jump: most bulletins fit
constexpr std::size_t BLOCK = std::size_t{1}
                              << 12; // stays in the processor's nearest cache while two searches pass
constexpr std::size_t NOT_FOUND = std::string_view::npos;
constexpr std::string_view STARRED_LINE = "\n** ";
constexpr long LAST_POSITION = std::numeric_limits<long>::max();

/// Where the first line that begins a bulletin begins; the text itself begins a line or does not.
std::size_t findBulletin(std::string_view text, bool begins_line)
{
    if (begins_line && isStarredHeading(text))
        return 0;
    auto const begins = [&](std::size_t i) { return i == 0 ? begins_line : text[i - 1] == '\n'; };
    for (std::size_t at = 0; at < text.size(); at += BLOCK) {
        std::string_view const block = text.substr(0, std::min(at + BLOCK, text.size()));
        std::size_t found = NOT_FOUND;
        for (std::size_t soh = block.find('\x01', at); soh != NOT_FOUND; soh = block.find('\x01', soh + 1)) {
            std::size_t const line = soh > 0 && text[soh - 1] == '\x03' ? soh - 1 : soh;
            if (begins(line) && isStartLine(text.substr(line))) {
                found = line;
                break;
            }
        }
        std::string_view const before = block.substr(0, found);
        for (std::size_t star = before.find('*', at); star != NOT_FOUND; star = before.find('*', star + 1))
            if (star > 0 && text.substr(star - 1).starts_with(STARRED_LINE))
                return star;
        if (found != NOT_FOUND)
            return found;
    }
    return NOT_FOUND;
}

} // namespace

bool LineFeed::open(char const * name)
{
    close();
    if (file.open(name, "r") == 0)
        return false;
    can_seek = file.size() >= 0;
    return true;
}

void LineFeed::close()
{
    file.close();
    begin = end = line_size = 0;
    buffer_position = 0;
    chunk = CHUNK;
    can_seek = is_inside_line = is_rest = is_cut = false;
}

bool LineFeed::fill()
{
    if (begin > 0) {
        std::memmove(buffer.data(), buffer.data() + begin, end - begin);
        buffer_position += static_cast<long>(begin);
        end -= begin;
        begin = 0;
    }
    if (buffer.size() < end + chunk)
        buffer.resize(std::max(buffer.size() * 2, end + chunk));
    // A line that goes on and on is read in ever larger pieces.
    std::size_t const room = std::max(chunk, std::min(buffer.size() - end, end));
    char * const free = buffer.data() + end;
    std::size_t const count = can_seek ? file.readAt(buffer_position + static_cast<long>(end), free, room)
                                       : file.readSome(free, room);
    chunk = std::min(chunk * 2, CHUNK);
    end += count;
    return count > 0;
}

bool LineFeed::nextPiece(std::string_view & line)
{
    is_rest = is_inside_line;
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
            line = unread();
            break;
        }
    }
    line = line.substr(0, LONGEST_LINE);
    line_size = line.size();
    begin += line_size;
    bool const has_end = !line.empty() && line.back() == '\n';
    is_inside_line = line.empty() ? is_inside_line : !has_end && line_size == LONGEST_LINE;
    is_cut = !has_end && !is_inside_line;
    return !line.empty();
}

void LineFeed::putBack() noexcept
{
    begin -= line_size;
    line_size = 0;
    is_inside_line = is_rest;
}

void LineFeed::skipLine()
{
    do {
        std::size_t const newline = unread().find('\n');
        if (newline != NOT_FOUND) {
            begin += newline + 1;
            is_inside_line = false;
            return;
        }
        begin = end;
    } while (fill());
}

void LineFeed::skipToBulletin()
{
    if (is_inside_line)
        skipLine();
    line_size = 0;
    bool is_line_start = !is_inside_line; // of the first octet not read yet
    do {
        std::size_t const found = findBulletin(unread(), is_line_start);
        if (found != NOT_FOUND) {
            begin += found;
            is_inside_line = false;
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
    is_inside_line = !is_line_start;
}

bool LineFeed::seek(long position)
{
    if (position < 0 || position > LAST_POSITION - static_cast<long>(LONGEST_LINE) || !can_seek)
        return false;
    begin = end = line_size = 0;
    buffer_position = position;
    chunk = CHUNK;
    is_inside_line = is_rest = is_cut = false;
    return true;
}

bool LineFeed::jump(long position)
{
    long const offset = position - buffer_position; // both are below LAST_POSITION
    if (position >= 0 && offset >= 0 && offset < static_cast<long>(end)) {
        begin = static_cast<std::size_t>(offset);
        line_size = 0;
        is_inside_line = is_rest = is_cut = false;
        return true;
    }
    if (!seek(position))
        return false;
    chunk = FIRST_CHUNK;
    return true;
}

} // namespace Yul::detail
