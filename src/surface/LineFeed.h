// Lines of a feed file of any size, with their octet positions.
#pragma once

#include "core/File.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// Reads a file or a pipe line by line through one buffer. A line comes with the characters that end it; a
/// last line without them counts too. A file that has grown since its end was met is read on. What a line has
/// beyond 16 MiB is left out.
class LineFeed
{
public:
    bool open(char const * name);
    void close();

    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    /// The next line, valid until the next call; false at the end.
    [[nodiscard]] bool next(std::string_view & line);
    /// Moves on to the next line that begins a bulletin (a start line or a "** " line), looking at no other
    /// line.
    void skipToBulletin();

    /// The octet position of the line that comes next.
    [[nodiscard]] long position() const noexcept { return buffer_position + static_cast<long>(begin); }

    /// False where that is not possible (a pipe, a negative position).
    [[nodiscard]] bool seek(long position);

private:
    /// Brings more octets in behind those not read yet; false when there are no more.
    bool fill();

    [[nodiscard]] std::string_view unread() const { return {buffer.data() + begin, end - begin}; }

    void skipLine();

    File file;
    std::vector<char> buffer;
    std::size_t begin = 0; // of what is not read yet
    std::size_t end = 0;
    long buffer_position = 0;    // in the file, of the buffer's first octet
    bool is_inside_line = false; // the rest of a line that was too long comes next
};

} // namespace Yul::detail
