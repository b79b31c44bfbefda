// Heading patterns: heading, identifier and pattern, a line each.
#include "core/StrLib.h"
#include "surface/HeadingPattern.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    auto const lines = Yul::detail::split({reinterpret_cast<char const *>(data), size}, '\n');
    std::string_view const heading = lines[0];
    std::string_view const identifier = lines.size() > 1 ? lines[1] : std::string_view();
    std::string_view const pattern = lines.size() > 2 ? lines[2] : std::string_view();
    static_cast<void>(Yul::detail::matchHeading(heading, identifier, pattern));
    return 0;
}
