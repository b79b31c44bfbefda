// The file that every reader and writer uses.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace Yul {

/// A file, or the input of a command: a name that begins with a vertical bar is a shell command to write to.
/// Reading from "-" reads standard input. Closed by its destructor. Operations return 1, or 0 for failure,
/// and print nothing.
class File
{
public:
    File() = default;

    ~File() { close(); }

    File(File && other) noexcept;
    File & operator=(File && other) noexcept;
    File(File const &) = delete;
    File & operator=(File const &) = delete;

    /// True when a file of that name is there and no pipe or device, which might keep us waiting when it is opened; "-" is
    /// none. For files that a text from outside may name.
    [[nodiscard]] static bool isRegular(char const * name);

    /// mode  "r" read, "w" create or truncate, "a" append. A directory is refused. An open file is closed
    /// first.
    int open(char const * name, char const * mode);

    [[nodiscard]] bool isOpen() const noexcept { return descriptor >= 0; }

    /// Opens to read what `isRegular` allows; 0 for anything else. An open file is closed first.
    int openRegular(char const * name);

    /// Returns 0 when anything written since `open` was lost, or the command ended with a failure.
    int close();

    /// Writes all octets; 0 when the device did not take them. Failures stick: `close` reports them too.
    int write(std::string_view octets);
    /// Asks for room on the disk for so many octets behind what was written, in one piece: large files are written, and later
    /// replaced, faster. The file's size stays. 0 when the disk has not got it; 1 also where room cannot be asked for, when
    /// appending, and for few octets, which are not worth the asking. Room that a failure leaves unused is given back.
    int reserve(std::size_t octets);
    /// Hands what was written to the operating system; 0 when it, or anything before it, was lost.
    int flush();
    /// Reads up to `size` octets and returns how many were there.
    std::size_t read(void * buffer, std::size_t size);
    /// Reads up to `size` octets at an octet position and returns how many were there; what `read` gives next stays the same.
    /// Nothing is read from a pipe.
    std::size_t readAt(long long position, void * buffer, std::size_t size);
    /// Whether the octet at a position comes at once, because the operating system has it in its memory; false as well where it
    /// does not say, and for a pipe.
    [[nodiscard]] bool isAtHand(long long position) const;
    /// Reads what is there, up to `size` octets, and waits only while there is nothing: lines of a live pipe come
    /// as they are written. Not to be mixed with `read` and `readLine`.
    std::size_t readSome(void * buffer, std::size_t size);
    /// Reads the next line, without its newline; false at the end. What a line has beyond 1 MiB is left out.
    [[nodiscard]] bool readLine(std::string & line);
    /// Moves to an octet position from the start; 0 on a pipe.
    int seek(long long position);
    [[nodiscard]] long long tell() const;
    /// Octets in the file; -1 where that is not known (a pipe).
    [[nodiscard]] long long size() const;

    [[nodiscard]] std::string const & name() const noexcept { return file_name; }

private:
    void take(std::FILE * opened);
    std::FILE * buffered();
    void writeThrough(std::string_view octets);
    void giveRoomBack();

    int descriptor = -1;
    std::FILE * stream =
        nullptr;         // of a command, of standard input, and of a file once `read` or `readLine` wants it
    std::string pending; // written, and not handed to the operating system yet
    bool is_reading = false;
    bool is_pipe = false;
    bool is_standard = false;
    bool has_room = false; // was given some by `reserve`
    bool has_failed = false;
    std::string file_name;
};

} // namespace Yul
