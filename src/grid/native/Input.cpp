#include "grid/native/Input.h"

#include <algorithm>
#include <cstring>

namespace Yul::detail::native {

// Octets that are read for a line: what follows goes another way.
constexpr std::size_t FEW = 4096;

int Input::open(char const * name)
{
    close();
    int const is_open = file.open(name, "r");
    file.readUnbuffered();
    return is_open;
}

void Input::close()
{
    file.close();
    at = end = 0;
}

int Input::rewind()
{
    at = end = 0;
    return file.size() >= 0 ? file.seek(0) : 0;
}

std::string_view Input::look(std::size_t wanted)
{
    if (end - at < wanted) {
        std::memmove(buffer.data(), buffer.data() + at, end - at);
        end -= at;
        at = 0;
        auto const most = wanted > 1 ? SIZE : FEW;
        for (std::size_t got = 1; end < wanted && got > 0; end += got)
            got = file.read(buffer.data() + end, most - end);
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
    return held < count ? held + file.read(to + held, count - held) : held;
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
        auto const position = file.tell() - static_cast<long long>(end - at) + static_cast<long long>(count);
        at = end = 0;
        return file.seek(position) == 1;
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
    auto const size = file.size();
    auto const position = file.tell() - static_cast<long long>(end - at);
    if (size < 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(std::max(size - position, 0LL));
}

} // namespace Yul::detail::native
