// A native grid file as it is read: lines, numbers and octets in turn.
#pragma once

#include "core/File.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Yul::detail::native {

/// Reads a file or a pipe forward through one small buffer; large pieces go past it, straight to where they are
/// wanted. Nothing is allocated by what the file says.
class Input
{
public:
    /// "-" is standard input. 1, or 0 when the file cannot be opened.
    int open(char const * name);
    void close();

    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    [[nodiscard]] std::string const & name() const noexcept { return file.name(); }

    /// Back to the first octet; 0 on a pipe.
    int rewind();

    /// The next line without its newline, cut to `limit` characters. None when the file ends before a newline, or no
    /// newline comes within MAX_LINE octets.
    [[nodiscard]] std::optional<std::string> readLine(std::size_t limit);
    /// True when there is nothing more to read.
    [[nodiscard]] bool isAtEnd();
    /// The octets in the buffer: at least `wanted`, at most SIZE, fewer only where the file ends. Valid until the next
    /// call.
    [[nodiscard]] std::string_view look(std::size_t wanted);

    /// Passes over octets of the buffer.
    void drop(std::size_t count) noexcept { at += count; }

    /// Reads octets and returns how many there were.
    [[nodiscard]] std::size_t read(char * to, std::size_t count);
    /// Reads octets that lie so many octets ahead, and stays where it is; returns how many there were. Not on a pipe.
    [[nodiscard]] std::size_t readAhead(std::uint64_t distance, char * to, std::size_t count);
    /// Whether the octet so many octets ahead comes without waiting for a disk; false on a pipe.
    [[nodiscard]] bool isAtHand(std::uint64_t distance) const;
    /// Passes over octets; false when the file ends before.
    [[nodiscard]] bool skip(std::uint64_t count);
    /// How many octets are left; none on a pipe, where nobody knows.
    [[nodiscard]] std::optional<std::uint64_t> left() const;

    static constexpr std::size_t SIZE = std::size_t{1} << 16;
    static constexpr std::size_t MAX_LINE = std::size_t{1} << 20;

private:
    std::size_t fetch(char * to, std::size_t count);

    File file;
    bool can_seek = false;
    long long position = 0; // in the file, of the octet behind those of the buffer
    std::size_t at = 0;     // next octet of the buffer
    std::size_t end = 0;    // behind its last one
    std::array<char, SIZE> buffer;
};

} // namespace Yul::detail::native
