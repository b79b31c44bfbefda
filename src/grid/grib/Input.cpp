#include "grid/grib/Input.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t PIECE = 4096;          // the least that is read from a file at once
constexpr std::size_t LARGE_PIECE = 1 << 20; // the most that is allocated ahead of a pipe's octets

/// What a buffer has at least. Where sanitizers look, a buffer has what is asked for and not an octet more.
#ifdef YUL_EXACT_BUFFERS
constexpr std::size_t CAPACITY = 0;
#else
constexpr std::size_t CAPACITY = Buffer::HANDY;
#endif

/// A buffer of that size, for the next one.
std::atomic<Octet *> spare = nullptr;

std::unique_ptr<Octet[]> exchangeSpare(std::unique_ptr<Octet[]> buffer)
{
    return std::unique_ptr<Octet[]>(spare.exchange(buffer.release()));
}

} // namespace

Buffer::~Buffer()
{
    if (capacity == CAPACITY)
        exchangeSpare(std::move(octets));
}

void Buffer::grow(std::size_t needed, std::size_t held)
{
    if (needed <= capacity)
        return;
    std::size_t const larger = std::max({needed, held > 0 ? 2 * capacity : 0, CAPACITY});
    auto next = larger == CAPACITY ? exchangeSpare(nullptr) : nullptr;
    if (next == nullptr)
        next = std::make_unique_for_overwrite<Octet[]>(larger);
    if (held > 0)
        std::memcpy(next.get(), octets.get(), held);
    octets = std::move(next);
    capacity = larger;
}

int Input::open(char const * name)
{
    close();
    if (file.open(name, "r") == 0)
        return 0;
    file_size = file.size();
    return 1;
}

int Input::close()
{
    file.close();
    file_size = -1;
    base = wanted_from = 0;
    kept_from = NOWHERE;
    held = 0;
    is_at_end = false;
    return 1;
}

Octets Input::view(std::uint64_t position, std::uint64_t length)
{
    if (file_size >= 0) {
        auto const size = static_cast<std::uint64_t>(file_size);
        if (position >= size)
            return {};
        length = std::min(length, size - position);
    }
    if (position < base || position + length > base + held)
        fill(position, length);
    if (position < base || position >= base + held)
        return {};
    std::uint64_t const offset = position - base;
    return {buffer.data() + offset, static_cast<std::size_t>(std::min<std::uint64_t>(length, held - offset))};
}

bool Input::reaches(std::uint64_t position)
{
    if (file_size >= 0)
        return position <= static_cast<std::uint64_t>(file_size);
    return position == 0 || !view(position - 1, 1).empty();
}

void Input::release(std::uint64_t position) noexcept
{
    wanted_from = std::max(wanted_from, std::min(position, kept_from));
}

bool Input::isAtHand(std::uint64_t position) const
{
    return canSeek() && file.isAtHand(static_cast<long long>(position));
}

int Input::rewind()
{
    if (!isOpen() || !canSeek())
        return 0;
    wanted_from = 0;
    return 1;
}

/// Makes the buffer hold the octets asked for, as far as the file has them.
void Input::fill(std::uint64_t position, std::uint64_t length)
{
    if (canSeek()) {
        base = position;
        held = 0;
        append(static_cast<std::size_t>(std::min(std::max<std::uint64_t>(length, PIECE),
                                                 static_cast<std::uint64_t>(file_size) - position)));
        return;
    }
    while (!is_at_end && base + held < position + length) {
        drop();
        append(
            static_cast<std::size_t>(std::min<std::uint64_t>(position + length - base - held, LARGE_PIECE)));
    }
}

/// On a pipe: takes octets that nobody wants any more off the front.
void Input::drop() noexcept
{
    std::size_t const gone =
        wanted_from > base ? static_cast<std::size_t>(std::min<std::uint64_t>(wanted_from - base, held)) : 0;
    if (gone > 0)
        std::memmove(buffer.data(), buffer.data() + gone, held - gone);
    held -= gone;
    base += gone;
}

/// Reads on behind what the buffer holds.
void Input::append(std::size_t count)
{
    buffer.grow(held + count, held);
    Octet * const to = buffer.data() + held;
    std::size_t const got =
        canSeek() ? file.readAt(static_cast<long long>(base) + static_cast<long long>(held), to, count)
                  : file.read(to, count);
    held += got;
    is_at_end = got < count;
}

} // namespace Yul::detail::grib
