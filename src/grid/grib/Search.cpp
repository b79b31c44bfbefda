#include "grid/grib/Search.h"

#include <cstring>
#include <string_view>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t SEARCH_LIMIT = 1000; // positions that are tried
constexpr std::size_t READ_AHEAD = 50;
constexpr std::size_t READ_MORE = 20;
constexpr std::size_t PIECE = 1 << 16;

constexpr std::string_view MARK = "GRIB";
constexpr std::size_t EDITION = 7; // octets from the mark to the edition

bool beginsWithMark(Octets octets)
{
    return octets.size() >= MARK.size() && std::memcmp(octets.data(), MARK.data(), MARK.size()) == 0;
}

bool isEdition(Octet octet)
{
    return octet == 1 || octet == 2;
}

} // namespace

/// 50 octets are read ahead, then 20 more whenever fewer than 20 are left.
Sought searchNear(Input & input, std::uint64_t & position)
{
    std::uint64_t const start = position;
    input.release(start);
    std::size_t ahead = READ_AHEAD;
    Octets window = input.view(start, ahead);
    for (std::size_t i = 0; i < SEARCH_LIMIT; ++i) {
        if (i + READ_MORE >= ahead && window.size() == ahead) {
            ahead += READ_MORE;
            window = input.view(start, ahead);
        }
        position = start + i;
        if (i + MARK.size() > window.size())
            return Sought::END;
        if (beginsWithMark(window.subspan(i)))
            return Sought::FOUND;
    }
    position = start + SEARCH_LIMIT;
    return Sought::NOT_NEAR;
}

bool isMessage(Input & input, std::uint64_t position)
{
    return beginsWithMark(input.view(position, MARK.size()));
}

void searchFar(Input & input, std::uint64_t & position)
{
    for (;; position += PIECE - EDITION - 1) {
        input.release(position);
        Octets const window = input.view(position, PIECE);
        std::string_view const text(reinterpret_cast<char const *>(window.data()), window.size());
        for (std::size_t i = 0; (i = text.find(MARK, i)) != std::string_view::npos; ++i)
            if (i + EDITION < window.size() && isEdition(window[i + EDITION])) {
                position += i;
                return;
            }
        if (window.size() < PIECE) {
            position += window.size();
            return;
        }
    }
}

} // namespace Yul::detail::grib
