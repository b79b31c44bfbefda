#include "surface/WmoIndex.h"

#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "surface/BulletinLine.h"

namespace Yul::detail {

bool WmoIndex::open(char const * name)
{
    last_offset = -1;
    return feed.open(name);
}

bool WmoIndex::rewind()
{
    last_offset = -1;
    return feed.seek(0);
}

bool WmoIndex::next(WmoIndexEntry & entry)
{
    std::string_view line;
    while (feed.next(line)) {
        std::string heading;
        std::string identifier;
        if (scan(line, "%ld %120[^/] / %120[^\n]", &entry.offset, &heading, &identifier) < 2)
            continue;
        last_offset = entry.offset;
        entry.heading = trimmed(heading);
        entry.identifier = trimmed(identifier);
        Yul::outDebug(6, "HDR %d %s / %s\n", static_cast<int>(entry.offset), entry.heading.c_str(),
                      entry.identifier.c_str());
        return true;
    }
    return false;
}

} // namespace Yul::detail
