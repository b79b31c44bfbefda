// One bulletin of a feed.
#pragma once

#include "core/Const.h"
#include "naming/Filename.h"

#include <string>
#include <string_view>

namespace Yul {

class Date;
class WmoParse;

/// Which bulletin this is: the feed file's name (Filename), heading and product identifier (80 characters
/// each), and the octet position of its start line; and its lines, when WmoParse::getProduct has read them.
class WmoProduct : public Filename
{
public:
    /// Forgets everything.
    int init();
    /// Texts are cut to 80 characters; the location is that of the start line, octets. The lines are
    /// forgotten. Returns 1.
    int set(char const * heading, char const * identifier, long location);
    /// Lines made by hand: their text, joined by newlines, and their codes, a character each; null texts are empty. 0, and
    /// nothing changes, unless there are as many codes as lines.
    int setLines(char const * lines, char const * line_codes);

    /// The heading; valid until this product changes, as all its texts.
    [[nodiscard]] char const * getHeader() const noexcept { return header.c_str(); }

    /// The product identifier.
    [[nodiscard]] char const * getAwip() const noexcept { return awip.c_str(); }

    /// Const::MISS until set.
    [[nodiscard]] long getLoc() const noexcept { return loc; }

    /// Turns a reference time, UTC, into the heading's time: the latest with its day, hour and minute that lies
    /// before the reference, or at most one day behind it. 0 when the heading has none: the date stays.
    int completeDate(Date & date) const;

    /// Number of lines read.
    [[nodiscard]] int getNumLines() const noexcept { return static_cast<int>(codes.size()); }

    /// All lines, without the characters that end them, joined by newlines; NUL octets are blanks. Valid
    /// until this product changes.
    [[nodiscard]] char const * getText() const noexcept { return text.c_str(); }

    /// The same as a view.
    [[nodiscard]] std::string_view view() const noexcept { return text; }

    /// A character a line, whose number is the line's code (see WmoParse).
    [[nodiscard]] char const * getCodes() const noexcept { return codes.c_str(); }

    /// The code of line i, 0 is the first; 0 for an index outside the list.
    [[nodiscard]] int getCode(int i) const noexcept;

private:
    friend class WmoParse;

    /// Without the characters that end it.
    void addLine(std::string_view line, int code);
    /// Several, each ended by a newline.
    void addLines(std::string_view lines, std::string_view line_codes);
    /// All lines are there.
    void finish();

    std::string header;
    std::string awip;
    long loc = Const::MISS;
    std::string text;
    std::string codes;
};

} // namespace Yul
