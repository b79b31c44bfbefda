// Reading and writing of GRIB files.
#pragma once

#include "core/File.h"
#include "grid/GribPDB.h"
#include "grid/GribParam.h"
#include "grid/Grid.h"
#include "grid/GridSpec.h"
#include "grid/grib/Encode1.h"
#include "grid/grib/Reader.h"
#include "naming/Filename.h"

#include <optional>
#include <string>
#include <vector>

namespace Yul {

class Grids;

/// Reads gridded fields coded in GRIB, editions 1 and 2, from files that may hold other octets (bulletin
/// headings, padding) between messages. Every field becomes a Grid: values with row 0 in the north and column
/// 0 in the west, missing ones -9999; domain, reference date, forecast time, level and variable; version is
/// the edition, source the originating centre, model the generating process.
///
/// Values: Y = (R + X 2^E) 10^-D, computed in double and rounded once to float. Which templates are read is
/// told in docs/grib.md. A message that is damaged and a field that cannot be delivered are named in one
/// warning each and passed over; reading goes on behind them. A message is looked for within 1000 octets
/// behind the one before.
///
/// Operations return 1, or 0 for failure with a warning; 0 without a warning is the end of the file. A grid
/// that is read into keeps its memory: reading on into the same Grid is fastest. Source: WMO Manual on Codes
/// 306, volume I.2, FM 92 GRIB, editions 1 and 2.
class GribFile
{
public:
    GribFile() = default;

    /// Opens the file for reading; `isOpen` tells whether that went well.
    explicit GribFile(char const * name) { open(name); }

    /// Opens the files for reading, read as one; `isOpen` tells whether that went well.
    explicit GribFile(Filename const & names) { open(names); }

    /// For reading; a name "-" reads standard input. An open file is closed first.
    int open(char const * name);
    /// mode  0 to read, 1 to write a new file.
    int open(char const * name, int mode);
    /// Several files, read as one; those that cannot be opened are named and passed over.
    int open(Filename const & names);
    /// 0 when anything written was lost.
    int close();

    /// Whether a file is open.
    [[nodiscard]] bool isOpen() const noexcept { return reader.isOpen() || output.isOpen(); }

    /// Back to the first message; 0 on a pipe.
    int rewind();
    /// The octet at which the message of the field starts that was read, peeked at or passed over last; Const::MISS
    /// before the first. Several fields may share a message.
    [[nodiscard]] long getLoc() const noexcept;
    /// Reading goes on with the first field of the first message at or behind an octet of the open file. 0 on a pipe,
    /// for a number below 0 and where several files are read as one.
    int setLoc(long octet);

    /// The next field. On 0 the grid has no values.
    int read(Grid & grid);
    /// The first field of a file, which is left open.
    int read(char const * name, Grid & grid);
    /// The next field that the grid spec matches. Others are not unpacked.
    int read(GridSpec const & spec, Grid & grid);
    /// All fields from here on; 0 when there is none.
    int read(Grids & grids);
    /// Describes the next field without its values, from its headers alone; `read` then still gives it.
    int peek(Grid & grid);
    /// Passes over the next field.
    int next();

    /// The product description of the field that was read, peeked at or passed over last. Valid until the
    /// next one.
    [[nodiscard]] GribPDB const & getHeader() const noexcept { return header; }

    /// Turns on the detector of bad data: each value is compared with the one before, and when among the last
    /// 20 more than `max` jump by over half of the range that the packing can express, the field counts as
    /// bad. `read` then gives 0 with a warning and `isBad` is true; reading can go on. 0 turns the detector
    /// off.
    int setMaxBad(int max);
    /// The same with a jump of your own, in units of the field; not above 0 stands for half the range.
    int setMaxBad(int max, float threshold);

    /// Whether the field that was just read was found to be bad.
    [[nodiscard]] bool isBad() const noexcept { return is_bad; }

    /// Whether the index file that a Filename may name beside the data file is used: a line for every bulletin, "octet
    /// heading / product". Messages are then looked for in these bulletins only, wherever in the file they begin. 1, the
    /// default, or 0; holds for files opened later too. An index that cannot be read is left aside.
    int useHdrFile(int use);

    /// A description that goes before the tables, for messages of that edition read from now on. 0 for the
    /// missing row, and when 200 rows are known already.
    int setParam(int edition, GribParam const & row);

    /// Appends the grid to a file opened for writing, as a message of edition 1: simple packing with an IBM reference value,
    /// a bitmap where values are missing. Its variable, level, date and domain must have words in edition 1: tables 2 and
    /// 3, lat/lon, Mercator, polar stereographic, Lambert conformal or Albers grids.
    int write(Grid const & grid);
    /// Bits of each packed value, 1 to 31. Without a decimal scale, and by default, 16. 0 goes back to the default.
    int setValueBits(int bits);
    /// Keeps so many decimal places (negative: tens, hundreds ...), -30 to 30, in as few bits as they need, or, when bits
    /// are set, in steps of those bits. Const::MISS goes back to none.
    int setDecimalScale(int places);

    /// 1 when "GRIB" occurs in the first 200 octets of a file.
    static int checkType(char const * name);

private:
    friend class GridFile; // hands out headers first, values later

    [[nodiscard]] int readData(Grid & grid);
    [[nodiscard]] bool findNext();
    [[nodiscard]] bool openNextFile();
    void takeIndex();
    void describe(Grid & grid) const;
    [[nodiscard]] bool unpack(Grid & grid);
    [[nodiscard]] bool takeValues(Grid & grid);
    [[nodiscard]] bool readNext(GridSpec const * spec, Grid & grid);
    void printWarnings();
    void warnSkipped(std::string const & reason);

    detail::grib::Reader reader;
    Filename files;
    int next_file = 0;
    bool uses_index = true;
    bool has_field = false; // `field` is found and not read yet
    bool has_loc = false;   // `field` was found in the file that is open
    detail::grib::Field field;
    DomainVal domain; // of `field`
    GribPDB header;
    detail::GribParamCache params;
    File output;
    detail::grib::PackingChoice packing_choice;
    int max_bad = 0;
    float bad_jump = 0;
    bool is_bad = false;
};

} // namespace Yul
