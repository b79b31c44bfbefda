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
    bool rewind();
    /// The entry read last comes again; the first, when none has been read.
    bool stepBack();

    /// The offset read last, -1 before the first.
    [[nodiscard]] long offset() const noexcept { return last_offset; }

private:
    LineFeed feed;
    long last_offset = -1;
    long last_line = 0; // where the entry read last begins in the index
};

} // namespace Yul::detail
