// The octets of a map file, whose numbers have their least significant octet first.
#pragma once

#include <cstddef>
#include <string_view>

namespace Yul::detail::map_format {

inline constexpr std::string_view MAGIC = "YulMAP 1\n";
inline constexpr std::size_t NAME_OCTETS = 16;
inline constexpr std::size_t HEADER_OCTETS = NAME_OCTETS + std::size_t{7} * 4;
inline constexpr std::size_t CHUNK_OCTETS = 16;
inline constexpr long long MAX_OCTETS = 1LL << 28;

} // namespace Yul::detail::map_format
