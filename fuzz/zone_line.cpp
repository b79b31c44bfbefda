// Zone and county lines: a zone, and behind a newline the line. "ALL" takes whatever a number takes.
#include "core/StrLib.h"
#include "surface/BulletinLine.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const *>(data), size);
    std::string const zone(text.substr(0, text.find('\n')));
    std::string_view const line = text.substr(std::min(zone.size() + 1, size));
    bool const fits = Yul::detail::matchZone(line, zone);
    if (fits && !Yul::detail::matchZone(line, zone.substr(0, 3) + "ALL"))
        std::abort();
    static_cast<void>(Yul::detail::dataLineCode(line));
    return 0;
}
