#include "plot/map/MapLines.h"

#include <cstdlib>

namespace Yul::detail {
namespace {

void appendNumber(std::string & octets, std::int32_t value)
{
    auto rest = static_cast<std::uint32_t>(value) << 1U ^ static_cast<std::uint32_t>(value >> 31);
    while (rest >= 128) {
        octets += static_cast<char>(rest % 128 + 128);
        rest /= 128;
    }
    octets += static_cast<char>(rest);
}

/// Takes one number off the octets; false when there is none, or it is too large for any position.
bool takeNumber(unsigned char const *& at, unsigned char const * end, std::int64_t & value)
{
    constexpr unsigned MOST_BITS = 28; // a difference of two positions, at 10000 steps a degree
    std::uint64_t number = 0;
    for (unsigned shift = 0; at != end && shift < MOST_BITS; shift += 7) {
        unsigned const octet = *at++;
        number |= std::uint64_t{octet & 127U} << shift;
        if (octet < 128) {
            value = static_cast<std::int64_t>(number >> 1U) ^ -static_cast<std::int64_t>(number & 1U);
            return true;
        }
    }
    return false;
}

} // namespace

void appendPoint(std::string & octets, std::int32_t lat, std::int32_t lon)
{
    appendNumber(octets, lat);
    appendNumber(octets, lon);
}

bool decodePoints(std::string_view octets, int count, int units, MapLines & lines)
{
    auto const * at = reinterpret_cast<unsigned char const *>(octets.data());
    auto const * const end = at + octets.size();
    std::size_t const before = lines.lat.size();
    std::int64_t const highest = 90LL * units;
    std::int64_t const farthest = 360LL * units;
    std::int64_t lat = 0;
    std::int64_t lon = 0;
    bool is_whole = true;
    for (int i = 0; i < count && is_whole; ++i) {
        std::int64_t d_lat = 0;
        std::int64_t d_lon = 0;
        is_whole = takeNumber(at, end, d_lat) && takeNumber(at, end, d_lon);
        lat += d_lat;
        lon += d_lon;
        is_whole = is_whole && std::llabs(lat) <= highest && std::llabs(lon) <= farthest;
        lines.lat.push_back(static_cast<double>(lat) / units);
        lines.lon.push_back(static_cast<double>(lon) / units);
    }
    if (is_whole && at == end)
        return true;
    lines.lat.resize(before);
    lines.lon.resize(before);
    return false;
}

} // namespace Yul::detail
