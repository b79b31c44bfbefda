// Index files of bulletin feeds.
#pragma once

#include "surface/LineFeed.h"

#include <string_view>

namespace Yul::detail {

/// A line of an index file, "offset heading / identifier": where a bulletin's start line, or its heading, lies
/// in the feed. Heading and identifier are cut to 120 characters and trimmed; they live until the next line is
/// read.
struct WmoIndexEntry
{
    long offset = 0;
    std::string_view heading;
    std::string_view identifier;
};

/// Reads an index file as "%ld %120[^/] / %120[^\n]" would, a line an entry. The identifier may be missing.
class WmoIndex
{
public:
    bool open(char const * name);

    void close() { feed.close(); }

    [[nodiscard]] bool isOpen() const noexcept { return feed.isOpen(); }

    /// The next line that is an entry; others are passed over. False at the end, also in front of a last line
    /// that is being written.
    [[nodiscard]] bool next(WmoIndexEntry & entry);
    /// The first entry of this offset or a later one: the entry read last or one behind it, one from the beginning on
    /// when that is past the offset. False, and reading goes on where it was, when there is none.
    [[nodiscard]] bool find(long offset, WmoIndexEntry & entry);
    bool rewind();

private:
    /// The entry read last: its offset, -1 before the first, and where its line begins.
    struct Last
    {
        long offset = -1;
        long line = 0;
    };

    LineFeed feed;
    Last last;
};

} // namespace Yul::detail
