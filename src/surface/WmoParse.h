// The reader of raw WMO bulletin feeds.
#pragma once

#include "naming/Filename.h"
#include "surface/BulletinLine.h"
#include "surface/LineFeed.h"
#include "surface/WmoIndex.h"

#include <string>
#include <string_view>

namespace Yul {

class String;
class WmoProduct;

/// Reads bulletins from a feed file, or from several in turn, and hands out the lines of those selected one
/// by one. A bulletin is a start line (SOH CR CR, or ETX SOH CR CR), a sequence-number line, the heading, the
/// product identifier line (when identifiers are expected) and data lines; a line "** heading ****" is a
/// heading too. With an index file only bulletins whose heading fits the pattern are read; without one the
/// pattern has no effect. An identifier filter drops what comes before the first line that holds the text
/// (or, for "zn:WIZ064", that names the zone). Operations return 1, or 0 for failure, and print only debug
/// traces. Standard input is "-".
class WmoParse : public Filename
{
public:
    /// What getLine returns.
    enum Code {
        NONE = 0,
        DATA = detail::LINE_DATA,           ///< a line of the bulletin
        NOT_ALNUM = detail::LINE_NOT_ALNUM, ///< one that does not begin with a letter or digit
        END = detail::LINE_END,             ///< "$$"
        ZONE = detail::LINE_ZONE,           ///< zone or county codes, "WIZ063>065-070-"
        EVENT = detail::LINE_EVENT,         ///< event code, "/O.NEW."
        HEADLINE = detail::LINE_HEADLINE    ///< "...HEADLINE"
    };

    WmoParse() { init(); }

    /// Opens the feed; `isOpen` tells whether that went well.
    explicit WmoParse(char const * name);

    /// Closes the files, forgets filters and options and takes the options of the resource "parameter".
    int init();
    /// Options, separated by commas, in any case: "nohdr" reads without an index, "dollar" ends a bulletin at
    /// its "$$" line, "blank" leaves out lines that are blank. Other words are passed over.
    int setParam(char const * list);
    /// Whether the line behind a heading is the product identifier (it is unless said otherwise).
    int setExpectId(bool is_expected);
    /// Heading pattern, at most 80 characters, see detail::matchHeading. Empty takes every bulletin.
    int setHeader(char const * pattern);
    /// Identifier filter, at most 80 characters. Empty takes every line.
    int setId(char const * text);

    /// Opens the first file of the list, with its index file where it has one that can be opened.
    int open(Filename const & names);
    int open(char const * name);

    /// Whether a file is open.
    [[nodiscard]] bool isOpen() const noexcept { return feed.isOpen(); }

    /// Closes feed and index, and goes back to the first file of the list. Returns 1.
    int close();
    /// Back to the beginning of the current file.
    int rewind();
    /// The octet position of the line that is read next; Const::MISS when no file is open.
    [[nodiscard]] long tell() const;
    /// Goes to an octet position; whether the lines there count as selected stays as it is. From the next
    /// start line on an index selects again, bulletins that lie behind the position.
    int seek(long position);

    /// Number of the current file in the list, from 0.
    [[nodiscard]] int getFileInd() const noexcept { return file_index; }

    /// Goes on with the next file of the list that can be opened; 0 when there is none: the current one stays.
    int newFile();

    /// The next data line of a selected bulletin, with the characters that end it; NUL octets become blanks.
    /// return  its code; 0, with an empty line, at the end of all files. Files that grow can be read on.
    int getLine(String & line);
    /// The same, cut to size - 1 characters.
    int getLine(char * buffer, int size);

    /// The next bulletin whose heading fits the pattern, with an index or without, and its lines: those that
    /// getLine would return, without the ETX that ends a bulletin and the blank lines behind it. With an
    /// identifier filter only bulletins in which it is found count. Of a bulletin that is still being written
    /// comes what is there; the rest comes as another product of the same heading, and so does what lies
    /// beyond 64 MiB.
    /// return  1; 0, with the product cleared, at the end of all files.
    int getProduct(WmoProduct & product);

    /// Heading and identifier of the current bulletin, at most 120 characters; valid until the next line is
    /// read.
    [[nodiscard]] char const * getHeader() const noexcept { return heading.c_str(); }

    /// The product identifier; empty where none is expected.
    [[nodiscard]] char const * getAwip() const noexcept { return identifier.c_str(); }

    /// Whether a heading came before the line read last.
    [[nodiscard]] bool isNewProd() const noexcept { return is_new_product; }

    /// Whether the line read last is one of a bulletin's data.
    [[nodiscard]] bool isData() const noexcept { return state >= detail::LINE_DATA; }

    /// Octet positions of the line read last and of the current heading.
    [[nodiscard]] long getLoc() const noexcept { return line_position; }

    /// The octet position of the current heading.
    [[nodiscard]] long getHeaderLoc() const noexcept { return heading_position; }

    /// True for the two start lines and for "** ".
    [[nodiscard]] static bool isStart(char const * line);

    /// The next bulletin of the index whose heading fits the pattern; 0 at the end, and without an index.
    int peek(WmoProduct & product);
    /// Reads nothing; kept for callers that expect it.
    int read(WmoProduct & product);
    /// Goes to the bulletin at an octet position; its lines come next, whatever the filters say. Without an
    /// index it only moves there. 0, and reading goes on where it was, when the index ends before the position.
    int setLoc(long offset);
    /// The same in file number `index` of the list.
    int setLoc(int index, long offset);

    /// The current heading and identifier, or given ones, against a pattern.
    [[nodiscard]] int compare(char const * pattern) const;
    [[nodiscard]] int compare(char const * heading, char const * identifier, char const * pattern) const;
    /// A zone line against a zone, see detail::matchZone.
    [[nodiscard]] static int checkZone(char const * line, char const * zone);

protected:
    /// Another number once the reader has been set to another place than behind what it read last.
    [[nodiscard]] unsigned getNumMoves() const noexcept { return num_moves; }

private:
    [[nodiscard]] bool usesIndex() const noexcept { return wants_index && index.isOpen(); }

    [[nodiscard]] bool isSelected() const noexcept { return heading_matches && identifier_found; }

    bool openFile(int number);
    void resetState();
    bool nextDataLine(std::string_view & line);
    bool findInIndex();
    bool nextRawLine(std::string_view & line);
    [[nodiscard]] bool isUnfinished(std::string_view line) const;
    [[nodiscard]] bool beginsBulletin(std::string_view line) const;
    void classify(std::string_view line);
    void trace(std::string_view line) const;
    void collectData(WmoProduct & product, std::string_view line, bool & is_ended);
    void collectPlainLines(WmoProduct & product);
    bool collectBlock(WmoProduct & product);

    /// The state after the last line of a bulletin's head.
    [[nodiscard]] int headEnd() const noexcept
    {
        return expects_identifier ? detail::LINE_IDENTIFIER : detail::LINE_HEADING;
    }

    int findProduct(WmoProduct & product);
    bool collect(WmoProduct & product, bool is_found);
    void describe(WmoProduct & product) const;
    void takeHeading(std::string_view text);
    void endHeading();
    void searchIdentifier(std::string_view line);
    void classifyData(std::string_view line);

    detail::LineFeed feed;
    detail::WmoIndex index;
    int file_index = 0;
    bool wants_index = true;
    bool expects_identifier = true;
    bool stops_at_dollar = false;
    bool skips_blank = false;
    bool is_tracing = false;
    bool always_matches = false; // the pattern counts without an index too
    std::string pattern;
    std::string filter;

    std::string heading;
    std::string identifier;
    int previous_state = detail::LINE_NONE;
    int state = detail::LINE_NONE;
    bool is_new_product = false;
    bool heading_matches = false;
    bool identifier_found = false;
    bool is_search_pending = true;  // of the index, before the next line is read
    bool is_at_known_place = false; // the next start line is the one that an index or setLoc named
    bool is_chosen = false;         // by setLoc: no filter applies
    long search_floor = 0;          // bulletins of the index before this position are passed over
    long run_begin = 0;             // what has been read since the index was asked last: bulletins in it too
    long run_end = 0;
    long line_position = 0;
    long heading_position = 0;
    long bulletin_position = 0; // of the start line
    unsigned num_moves = 0;
};

} // namespace Yul
