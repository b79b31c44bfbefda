#include "grid/native/Input.h"

#include <algorithm>
#include <cstring>

namespace Yul::detail::native {

// Octets that are read for a line: what follows goes another way.
constexpr std::size_t FEW = 4096;

int Input::open(char const * name)
{
    close();
    if (file.open(name, "r") == 0)
        return 0;
    can_seek = file.size() >= 0;
    position = can_seek ? std::max(file.tell(), 0LL) : 0;
    return 1;
}

void Input::close()
{
    file.close();
    at = end = 0;
    position = 0;
    can_seek = false;
}

int Input::rewind()
{
    at = end = 0;
    position = 0;
    return can_seek ? 1 : 0;
}

/// Octets of the file itself, behind those of the buffer. Without the C library's buffer where that can be: ours is enough.
std::size_t Input::fetch(char * to, std::size_t count)
{
    auto const got = can_seek ? file.readAt(position, to, count) : file.read(to, count);
    position += static_cast<long long>(got);
    return got;
}

std::string_view Input::look(std::size_t wanted)
{
    if (end - at < wanted) {
        std::memmove(buffer.data(), buffer.data() + at, end - at);
        end -= at;
        at = 0;
        auto const most = wanted > 1 ? SIZE : FEW;
        for (std::size_t got = 1; end < wanted && got > 0; end += got)
            got = fetch(buffer.data() + end, most - end);
    }
    return {buffer.data() + at, end - at};
}

bool Input::isAtEnd()
{
    return look(1).empty();
}

std::optional<std::string> Input::readLine(std::size_t limit)
{
    std::string line;
    for (std::size_t length = 0; length <= MAX_LINE;) {
        auto const ahead = look(1);
        if (ahead.empty())
            return std::nullopt;
        auto const newline = ahead.find('\n');
        auto const part = ahead.substr(0, newline);
        line += part.substr(0, limit - line.size());
        length += part.size();
        drop(newline != std::string_view::npos ? newline + 1 : part.size());
        if (newline != std::string_view::npos)
            return line;
    }
    return std::nullopt;
}

std::size_t Input::read(char * to, std::size_t count)
{
    auto const held = std::min(count, end - at);
    std::copy_n(buffer.data() + at, held, to);
    at += held;
    return held < count ? held + fetch(to + held, count - held) : held;
}

std::size_t Input::readAhead(std::uint64_t distance, char * to, std::size_t count)
{
    std::uint64_t const ahead = end - at;
    auto const held = distance < ahead ? std::min<std::size_t>(count, ahead - distance) : 0;
    std::copy_n(buffer.data() + at + (held > 0 ? distance : 0), held, to);
    auto const behind = static_cast<long long>(distance + held - ahead);
    return held < count ? held + file.readAt(position + behind, to + held, count - held) : held;
}

bool Input::isAtHand(std::uint64_t distance) const
{
    return can_seek && file.isAtHand(position + static_cast<long long>(distance - (end - at)));
}

bool Input::skip(std::uint64_t count)
{
    if (auto const octets_left = left()) {
        if (*octets_left < count)
            return false;
        if (count <= end - at) {
            at += static_cast<std::size_t>(count);
            return true;
        }
        position += static_cast<long long>(count - (end - at));
        at = end = 0;
        return true;
    }
    while (count > 0 && !isAtEnd()) {
        auto const part = static_cast<std::size_t>(std::min<std::uint64_t>(count, end - at));
        drop(part);
        count -= part;
    }
    return count == 0;
}

std::optional<std::uint64_t> Input::left() const
{
    if (!can_seek)
        return std::nullopt;
    return static_cast<std::uint64_t>(std::max(file.size() - position, 0LL)) + (end - at);
}

} // namespace Yul::detail::native
