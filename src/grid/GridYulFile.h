// Reading and writing of the library's own grid files.
#pragma once

#include "core/File.h"
#include "grid/Grid.h"
#include "grid/GridSpec.h"
#include "grid/native/Header.h"
#include "grid/native/Input.h"

#include <memory>
#include <string>

namespace Yul {

class Grids;

/// Files of the library's own form: for each grid five header lines and its values, as text or as binary floats, one
/// grid after another. docs/grid_files.md describes every line. Binary files of version 4 give back every value bit
/// for bit, text files every value but NaN, which becomes missing.
///
/// Operations return 1, or 0 for failure with a warning; 0 from a read without a warning is the end of the file.
/// Reading ends at the first fault, because nobody knows where the next grid begins; `rewind` begins anew. A grid that
/// is read into keeps its memory: reading on into the same Grid is fastest. Fields of which a header says nothing stay
/// as the grid has them, so that version 1, which has no line for level, forecast time and variable, is best read into
/// a new grid.
class GridYulFile
{
public:
    enum Mode { READ = 0, WRITE = 1 };

    /// How values are kept: text, binary, or in a file of their own (read only).
    enum Format {
        TEXT = detail::native::TEXT,
        BINARY = detail::native::BINARY,
        SEPARATE = detail::native::SEPARATE
    };

    GridYulFile() = default;

    /// Opens the file; `isOpen` tells whether that went well.
    explicit GridYulFile(char const * name) { open(name); }

    /// Opens the file, see `open`.
    GridYulFile(char const * name, int mode, int format = 0) { open(name, mode, format); }

    /// name    "-" reads standard input; a command behind "|" is written to.
    /// mode    READ, or WRITE for a new file.
    /// format  TEXT or BINARY for writing, 0 is TEXT; a file that is read says itself what it is.
    /// An open file is closed first.
    int open(char const * name, int mode = READ, int format = 0);
    /// 0 with a warning when anything written was lost.
    int close();

    /// Whether a file is open.
    [[nodiscard]] bool isOpen() const noexcept { return input != nullptr || output.isOpen(); }

    /// The version of the headers that are written, 1 to 4; it holds for files opened later too. Versions 1 and 2 have
    /// no line for level, forecast time and variable, and version 2 is read as if it had one: kept, such a file does not
    /// read back.
    int setVer(int value);

    /// The version of the headers that are written.
    [[nodiscard]] int getVer() const noexcept { return version; }

    /// The printf format of text values, at most 15 characters (the rest is cut off), with one number of %e, %f or %g
    /// and no other; what stands beside it has to be blanks, or the file does not read back. Null or empty is "%14.8e",
    /// which keeps every float. Returns 0 and changes nothing for any other text.
    int setFormat(char const * text);

    /// The format of text values; valid until it changes.
    [[nodiscard]] char const * getFormat() const noexcept { return value_format.c_str(); }

    /// The next grid.
    int read(Grid & grid);
    /// Opens the file and reads its first grid; the file stays open.
    int read(char const * name, int format, Grid & grid);
    /// The next grid that the grid spec matches; the values of others are passed over.
    int read(GridSpec const & spec, Grid & grid);
    /// Appends all grids from here on to the list; 0 when there is none, and after a fault, when the list holds the
    /// grids before it.
    int read(Grids & grids);

    /// The next header: the fields of the grid, which is then without values.
    int readHdr(Grid & grid);
    /// The values behind the header that was just read; 0 with a warning when none was, and for values that are damaged: the
    /// grid has none then.
    int readData(Grid & grid);
    /// The same as `readHdr`, but the header is there to be read again.
    int peek(Grid & grid);
    /// Passes over the next grid.
    int next();
    /// Back to the first grid; 0 on a pipe.
    int rewind();

    /// Appends the grid. When 1 is returned the operating system has it whole. 0 for a grid without values, without a
    /// domain or with one of another size, and for a domain that a header cannot hold; nothing is written then.
    int write(Grid const & grid);
    /// Opens the file for writing, anew, and writes one grid; the file stays open.
    int write(char const * name, int format, Grid const & grid);

    /// 1 when the file begins as files of this form do.
    static int checkType(char const * name);

private:
    enum class Next {
        HEADER,     ///< the header of the next grid is to be read
        KNOWN,      ///< it has been read ahead
        VALUES,     ///< it has been handed out, and its values not
        NOTHING,    ///< the file has ended, or none is open
        UNREADABLE, ///< a fault has been met
    };

    bool findNext(char const * operation, Grid * grid);
    bool fail(char const * operation, std::string const & fault);

    int version = detail::native::NEWEST_VERSION;
    int format = TEXT;
    std::string value_format;
    std::unique_ptr<detail::native::Input> input; // while reading
    File output;                                  // while writing
    Next next_part = Next::NOTHING;
    detail::native::Header header;
};

} // namespace Yul
