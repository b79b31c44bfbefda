// Lines of a feed file of any size, with their octet positions.
#pragma once

#include "core/File.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// Reads a file or a pipe line by line through one buffer. A line comes with the characters that end it; a
/// last line without them counts too. A file that has grown since its end was met is read on, and from a pipe
/// lines come as soon as they are there. A line longer than 16 MiB comes in pieces of that size.
class LineFeed
{
public:
    bool open(char const * name);
    void close();

    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    /// The next line, valid until the next call; false at the end.
    [[nodiscard]] bool next(std::string_view & line)
    {
        if (begin == end || is_inside_line)
            return nextPiece(line);
        char const * const first = buffer.data() + begin;
        auto const * const newline = static_cast<char const *>(std::memchr(first, '\n', end - begin));
        if (newline == nullptr)
            return nextPiece(line);
        line_size = static_cast<std::size_t>(newline - first) + 1;
        if (line_size > LONGEST_LINE)
            return nextPiece(line);
        begin += line_size;
        is_rest = is_cut = false;
        line = {first, line_size};
        return true;
    }

    /// Whether the line read last is the rest of one that was too long for one piece.
    [[nodiscard]] bool isRest() const noexcept { return is_rest; }

    /// Whether the line read last ends with the file, not with a newline: more of it may follow.
    [[nodiscard]] bool isCut() const noexcept { return is_cut; }

    /// Takes back the line read last: it comes again.
    void putBack() noexcept;

    /// What is in memory of the lines that come next, at most so many octets, the last line perhaps not whole;
    /// nothing inside a line that comes in pieces.
    [[nodiscard]] std::string_view ahead(std::size_t most) const noexcept
    {
        return is_inside_line ? std::string_view() : unread().substr(0, most);
    }

    /// Passes so many octets of what is ahead, whole lines.
    void pass(std::size_t size) noexcept
    {
        begin += size;
        line_size = 0;
    }

    /// Moves on to the next line that begins a bulletin (a start line or a "** " line), looking at no other
    /// line.
    void skipToBulletin();

    /// The octet position of the line that comes next.
    [[nodiscard]] long position() const noexcept { return buffer_position + static_cast<long>(begin); }

    /// False where that is not possible (a pipe, a negative position). Reads anew what it had in memory.
    [[nodiscard]] bool seek(long position);
    /// The same for short ways: uses what is in memory, and reads little where that does not reach.
    [[nodiscard]] bool jump(long position);

private:
    static constexpr std::size_t LONGEST_LINE = std::size_t{1} << 24;

    /// The next line where it is not whole in memory yet, or a piece of it.
    bool nextPiece(std::string_view & line);
    /// Brings more octets in behind those not read yet; false when there are no more.
    bool fill();

    [[nodiscard]] std::string_view unread() const { return {buffer.data() + begin, end - begin}; }

    void skipLine();

    File file;
    std::vector<char> buffer;
    std::size_t begin = 0; // of what is not read yet
    std::size_t end = 0;
    std::size_t chunk = 0; // how much to read at a time; grows
    std::size_t line_size = 0;
    long buffer_position = 0; // in the file, of the buffer's first octet
    bool can_seek = false;
    bool is_inside_line = false; // the rest of a line that was too long comes next
    bool is_rest = false;
    bool is_cut = false;
};

} // namespace Yul::detail
