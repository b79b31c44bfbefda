#include "surface/WmoIndex.h"

#include "core/File.h"
#include "core/Number.h"
#include "core/StrLib.h"
#include "core/Yul.h"

#include <charconv>
#include <optional>
#include <string>

namespace Yul::detail {
namespace {

constexpr std::size_t MAX_TEXT = 120;

std::string_view withoutLeadingBlanks(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::optional<WmoIndexEntry> readEntry(std::string_view line)
{
    WmoIndexEntry entry;
    line = withoutLeadingBlanks(line);
    auto const [end, error] = std::from_chars(line.data(), line.data() + line.size(), entry.offset);
    if (error != std::errc())
        return std::nullopt;
    line = withoutLeadingBlanks(line.substr(static_cast<std::size_t>(end - line.data())));
    std::size_t const slash = line.find('/');
    entry.heading = trimmed(line.substr(0, slash).substr(0, MAX_TEXT));
    if (slash != std::string_view::npos && slash <= MAX_TEXT)
        entry.identifier = trimmed(withoutLeadingBlanks(line.substr(slash + 1)).substr(0, MAX_TEXT));
    return entry.heading.empty() ? std::nullopt : std::optional(entry);
}

} // namespace

bool WmoIndex::open(char const * name)
{
    last_offset = -1;
    last_line = 0;
    return File::isRegular(name) && feed.open(name);
}

bool WmoIndex::rewind()
{
    last_offset = -1;
    last_line = 0;
    return feed.seek(0);
}

bool WmoIndex::stepBack()
{
    return feed.jump(last_line);
}

bool WmoIndex::next(WmoIndexEntry & entry)
{
    std::string_view line;
    for (long begin = feed.position(); feed.next(line); begin = feed.position()) {
        if (feed.isCut() && line.find('/') == std::string_view::npos) {
            feed.putBack();
            return false;
        }
        auto const found = feed.isRest() ? std::nullopt : readEntry(line);
        if (!found)
            continue;
        entry = *found;
        last_offset = entry.offset;
        last_line = begin;
        if (Yul::isDebug(6))
            Yul::outDebug(6, "HDR %ld %s / %s\n", entry.offset, std::string(entry.heading).c_str(),
                          std::string(entry.identifier).c_str());
        return true;
    }
    return false;
}

} // namespace Yul::detail
