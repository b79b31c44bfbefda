#include "grid/grib/Starts.h"

#include "core/File.h"
#include "core/StrLib.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace Yul::detail::grib {

std::vector<std::uint64_t> readStarts(char const * index_name)
{
    constexpr std::size_t MOST = 10'000'000;
    std::vector<std::uint64_t> starts;
    File file;
    if (file.openRegular(index_name) == 0)
        return starts;
    for (std::string line; starts.size() < MOST && file.readLine(line);) {
        auto const text = trimmed(line);
        std::uint64_t start = 0;
        if (std::from_chars(text.data(), text.data() + text.size(), start).ec == std::errc())
            starts.push_back(start);
    }
    std::ranges::sort(starts);
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    return starts;
}

} // namespace Yul::detail::grib
