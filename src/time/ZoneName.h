// The fixed-size zone name that dates and time zones hold.
#pragma once

#include "core/StrLib.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace Yul::detail {

constexpr std::size_t ZONE_NAME_SIZE = 5;

/// Copies a name, cut to 4 characters; a null pointer empties it. The name may be the target itself.
inline void copyZoneName(char (&target)[ZONE_NAME_SIZE], std::string_view name) noexcept
{
    std::size_t const length = std::min(name.size(), ZONE_NAME_SIZE - 1);
    if (length != 0)
        std::memmove(target, name.data(), length);
    std::memset(target + length, 0, ZONE_NAME_SIZE - length);
}

inline void copyZoneName(char (&target)[ZONE_NAME_SIZE], char const * name) noexcept
{
    copyZoneName(target, viewOf(name));
}

} // namespace Yul::detail
