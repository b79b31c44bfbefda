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
    last = {};
    return File::isRegular(name) && feed.open(name);
}

bool WmoIndex::rewind()
{
    last = {};
    return feed.seek(0);
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
        last = {entry.offset, begin};
        if (Yul::isDebug(6))
            Yul::outDebug(6, "HDR %ld %s / %s\n", entry.offset, std::string(entry.heading).c_str(),
                          std::string(entry.identifier).c_str());
        return true;
    }
    return false;
}

bool WmoIndex::find(long offset, WmoIndexEntry & entry)
{
    Last const last_before = last;
    long const place_before = feed.position();
    if (offset <= last.offset && !feed.jump(offset == last.offset ? last.line : 0))
        return false;
    while (next(entry))
        if (entry.offset >= offset)
            return true;
    last = last_before;
    static_cast<void>(feed.jump(place_before)); // it has been there: the index is no pipe
    return false;
}

} // namespace Yul::detail
