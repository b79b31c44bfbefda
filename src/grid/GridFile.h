// Grid files of any form.
#pragma once

#include "grid/GribFile.h"
#include "grid/GridYulFile.h"
#include "naming/Filename.h"

#include <optional>
#include <utility>
#include <vector>

namespace Yul {

/// Opens a grid file, finds out from its first octets of what form it is and hands it to the reader of that form:
/// GridYulFile or GribFile, whose rules hold. netCDF files are recognised and refused.
///
/// Operations return 1, or 0 for failure with a warning; 0 from a read without a warning is the end of the file.
/// Settings may be made before or after `open`, and hold for all files that are opened later.
class GridFile
{
public:
    /// Forms of files, 0 for none that is known.
    enum Type { YUL = 1, NETCDF = 3, GRIB = 4 };

    enum Mode { READ = GridYulFile::READ, WRITE = GridYulFile::WRITE };

    GridFile() = default;

    /// Opens the file for reading; `isOpen` tells whether that went well.
    explicit GridFile(char const * name) { open(name); }

    /// The same for several files read as one.
    explicit GridFile(Filename const & names) { open(names); }

    /// The same for reading or writing, see `open`.
    GridFile(char const * name, int mode, int format = 0) { open(name, mode, format); }

    /// The form of a file: YUL when it begins with "YulGRID" or is "-", standard input; NETCDF when it begins with
    /// "CDF"; GRIB when "GRIB" occurs in the first 200 octets; else 0, as for a file that cannot be read.
    static int checkType(char const * name);

    /// mode    READ, or WRITE for a new file.
    /// format  for writing: GridYulFile::TEXT (0 stands for it) or BINARY, or GRIB for GRIB of edition 1.
    /// An open file is closed first.
    int open(char const * name, int mode = READ, int format = 0);
    /// Several files, each of its own form, read as one; those that cannot be opened are named and passed over. The
    /// first name is the one that is written to.
    int open(Filename const & names, int mode = READ, int format = 0);
    /// 0 with a warning when anything written was lost.
    int close();

    /// Whether a file is open.
    [[nodiscard]] bool isOpen() const noexcept { return type != 0; }

    /// The form of the file that is open; 0 without one.
    [[nodiscard]] int getType() const noexcept { return type; }

    // Settings of one form or the other -------------------------------------------------------------------------

    /// YUL: version of the headers that are written, and the printf format of text values.
    int setVer(int version) { return yul.setVer(version); }

    /// See GridYulFile::setFormat.
    int setFormat(char const * text) { return yul.setFormat(text); }

    /// GRIB: descriptions that go before the tables, use of index files, the detector of bad data, bits of each packed
    /// value.
    int setParam(int edition, GribParam const & row);

    /// See GribFile::useHdrFile.
    int useHdrFile(int use) { return grib.useHdrFile(use); }

    /// See GribFile::setMaxBad.
    int setMaxBad(int max) { return grib.setMaxBad(max); }

    /// See GribFile::setMaxBad.
    int setMaxBad(int max, float threshold) { return grib.setMaxBad(max, threshold); }

    /// GRIB: whether the field that was just read was found to be bad. `read` has given 0, but the file has not ended.
    [[nodiscard]] bool isBad() const noexcept { return grib.isBad(); }

    /// See GribFile::setValueBits.
    int setValueBits(int bits) { return grib.setValueBits(bits); }

    /// A value that stands for "missing" in the files beside -9999: where it is read, -9999 is put in its place.
    /// Const::MISS for none. 0 for NaN, which is missing anyway.
    int setMissValue(float value);

    // Reading ---------------------------------------------------------------------------------------------------

    /// The next grid.
    int read(Grid & grid);
    /// Opens the file and reads its first grid; the file stays open.
    int read(char const * name, Grid & grid);
    /// The next grid that the grid spec matches; the values of others are passed over.
    int read(GridSpec const & spec, Grid & grid);
    /// Appends all grids from here on to the list; 0 when there is none, and after a fault that ended the reading, when
    /// the list holds the grids before it.
    int read(Grids & grids);

    /// The fields of the next grid, without its values.
    int readHdr(Grid & grid);
    /// The values behind the header that was just read; 0 with a warning when none was, and for values that are damaged or bad:
    /// the grid has none then.
    int readData(Grid & grid);
    /// The same as `readHdr`, but the grid is there to be read again.
    int peek(Grid & grid);
    /// Passes over the next grid.
    int next();
    /// Back to the first grid; 0 on a pipe.
    int rewind();

    // Writing ---------------------------------------------------------------------------------------------------

    /// Appends the grid; see GridYulFile::write and GribFile::write.
    int write(Grid const & grid);
    /// Opens the file for writing, anew, and writes one grid; the file stays open.
    int write(char const * name, int format, Grid const & grid);

private:
    int openForReading(Filename const & names);
    int openForWriting(char const * name, int format);
    bool openNextFile();
    void passHeader();
    template <class Operation> int inSomeFile(Operation const & operation);
    int replaceMissing(int result, Grid & grid) const;

    GridYulFile yul;
    GribFile grib;
    int type = 0;
    int mode = READ;
    Filename files; // while reading
    int next_file = 0;
    bool has_header = false; // GRIB: a header was handed out, and its values not
    std::vector<std::pair<int, GribParam>> params;
    std::optional<float> miss_value;
};

} // namespace Yul
