// Reading of GRIB files.
#pragma once

#include "grid/GribPDB.h"
#include "grid/GribParam.h"
#include "grid/Grid.h"
#include "grid/GridSpec.h"
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

    explicit GribFile(Filename const & names) { open(names); }

    /// For reading; a name "-" reads standard input. An open file is closed first.
    int open(char const * name);
    /// mode  0 to read, the only one there is.
    int open(char const * name, int mode);
    /// Several files, read as one; those that cannot be opened are named and passed over.
    int open(Filename const & names);
    int close();

    [[nodiscard]] bool isOpen() const noexcept { return reader.isOpen(); }

    /// Back to the first message; 0 on a pipe.
    int rewind();

    /// The next field. On 0 the grid has no values.
    int read(Grid & grid);
    /// The first field of a file, which is left open.
    int read(char const * name, Grid & grid);
    /// The next field that the specification matches. Others are not unpacked.
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

    [[nodiscard]] bool isBad() const noexcept { return is_bad; }

    /// A description that goes before the tables, for messages of that edition read from now on. 0 for the
    /// missing row, and when 200 rows are known already.
    int setParam(int edition, GribParam const & row);

    /// 1 when "GRIB" occurs in the first 200 octets of a file.
    static int checkType(char const * name);

private:
    [[nodiscard]] bool findNext();
    [[nodiscard]] bool openNextFile();
    [[nodiscard]] bool describe(Grid & grid);
    [[nodiscard]] bool unpack(Grid & grid);
    [[nodiscard]] bool readNext(GridSpec const * spec, Grid & grid);
    void printWarnings();
    void warnSkipped(std::string const & reason);

    detail::grib::Reader reader;
    Filename files;
    int next_file = 0;
    bool has_field = false; // `field` is found and not read yet
    detail::grib::Field field;
    GribPDB header;
    detail::GribParamCache params;
    int max_bad = 0;
    float bad_jump = 0;
    bool is_bad = false;
};

} // namespace Yul
