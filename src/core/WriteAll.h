// Writing to a file descriptor.
#pragma once

#include <cerrno>
#include <string_view>

#include <unistd.h>

namespace Yul::detail {

/// Writes all octets, going on after signals; false when the descriptor did not take them. The C library's streams would
/// not do: when a signal comes in between they forget what they hold.
[[nodiscard]] inline bool writeAll(int descriptor, std::string_view octets) noexcept
{
    while (!octets.empty()) {
        ssize_t const taken = ::write(descriptor, octets.data(), octets.size());
        if (taken < 0 && errno != EINTR)
            return false;
        octets.remove_prefix(taken > 0 ? static_cast<std::size_t>(taken) : 0);
    }
    return true;
}

} // namespace Yul::detail
