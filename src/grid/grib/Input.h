// A file seen as octets at positions, read in few large pieces.
#pragma once

#include "core/File.h"
#include "grid/grib/Octets.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace Yul::detail::grib {

/// Memory for octets, which are never filled before they are read into. What has HANDY octets goes to the next buffer when this
/// one is gone: where file after file is read, it would go back to the system each time, and come again in pages to be cleared.
class Buffer
{
public:
    /// Octets that are worth one call of the system and stay in the nearest caches; also what a buffer has at least.
    static constexpr std::size_t HANDY = std::size_t{1} << 17;

    Buffer() = default;
    ~Buffer();

    Buffer(Buffer && other) noexcept
        : octets(std::move(other.octets)), capacity(std::exchange(other.capacity, 0))
    {
    }

    Buffer & operator=(Buffer && other) noexcept
    {
        std::swap(octets, other.octets);
        std::swap(capacity, other.capacity);
        return *this;
    }

    Buffer(Buffer const &) = delete;
    Buffer & operator=(Buffer const &) = delete;

    [[nodiscard]] Octet * data() noexcept { return octets.get(); }

    /// Makes room for so many octets, and keeps the first ones.
    void grow(std::size_t needed, std::size_t held);

private:
    std::unique_ptr<Octet[]> octets;
    std::size_t capacity = 0;
};

/// Octets of a file by position, from a regular file or from a pipe. One buffer holds a stretch of the file
/// and is reused. Positions only grow on a pipe: what lies before the last `release` is gone.
class Input
{
public:
    /// "-" is standard input. 1, or 0 when the file cannot be opened.
    int open(char const * name);
    int close();

    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    [[nodiscard]] std::string const & name() const noexcept { return file.name(); }

    /// The octets at a position: `length` of them, fewer at the end of the file. Valid until the next call. Nothing is
    /// allocated for octets that are not there, beyond one piece.
    [[nodiscard]] Octets view(std::uint64_t position, std::uint64_t length);

    /// True when the file has octets up to `position`; looks at the file's size, or reads a pipe.
    [[nodiscard]] bool reaches(std::uint64_t position);

    /// Says that nothing before this position is wanted any more.
    void release(std::uint64_t position) noexcept;

    /// Says that the octets from this position on are wanted again, even when they are released; forgets what was said before.
    void keep(std::uint64_t position) noexcept { kept_from = position; }

    /// Where nothing is kept.
    static constexpr std::uint64_t NOWHERE = ~std::uint64_t{0};

    /// False on a pipe, which cannot be read twice.
    [[nodiscard]] bool canSeek() const noexcept { return file_size >= 0; }

    /// Whether the octet at a position comes without waiting for a disk; false on a pipe.
    [[nodiscard]] bool isAtHand(std::uint64_t position) const;

    /// Forgets all positions; 0 on a pipe.
    int rewind();

private:
    void fill(std::uint64_t position, std::uint64_t length);
    void drop() noexcept;
    void append(std::size_t count);

    File file;
    long long file_size = -1;      // -1 on a pipe
    std::uint64_t base = 0;        // file position of buffer[0]
    std::size_t held = 0;          // octets in the buffer
    std::uint64_t wanted_from = 0; // on a pipe: octets before this may go
    std::uint64_t kept_from = NOWHERE;
    bool is_at_end = false;
    Buffer buffer;
};

} // namespace Yul::detail::grib
