// From a data type and a time to the name of a file, and the search for the latest one.
#pragma once

#include "core/Const.h"
#include "core/String.h"
#include "naming/NameTemplate.h"
#include "time/Date.h"

#include <string>
#include <string_view>
#include <vector>

namespace Yul {

class NameConvFile;

/// A file name convention: templates for a data file and its header file, whose codes are filled from a date,
/// from directory resources and from keys, and a search through time for a file that is there and large
/// enough.
class NameConv
{
public:
    NameConv() = default;

    /// As by `set`.
    explicit NameConv(char const * spec) { set(spec); }

    /// Everything as in a new object.
    int init();

    /// Chooses the convention: a data type, "type:k=value:...,header,extension,min=...,size=...", looked up
    /// in the name-convention file; "@template" takes the template as it stands; "none" none at all.
    /// return  1; 0 for an empty text, and, with a warning, when there is no name-convention file (the type
    ///         name is then the template).
    int set(char const * spec);

    /// The file is to be written: searches accept the first name without looking at the disk.
    int setOutput(bool is_wanted);
    /// Fields that a search holds fixed: a missing field is free, a negative hour or minute -N rounds down to
    /// a multiple of N. The year is not used.
    int setFixDate(DateVal const & fixed);
    /// The same from a text: "#YYYYMMDDHHmm" (as far as given), "MMDDHH", "DDHH", "DHH", "DdHH:mm", ":mm",
    /// "-:N", "HH:mm" (a leading "-" makes the hour a step). 0 for an empty text, which frees all fields.
    int setFixDate(char const * text);
    /// How many times a search may look back to.
    int setLateLimit(int limit);
    /// Stands for the present in searches while no run time is set.
    int setLateDate(Date const & date);

    /// A directory that replaces every directory resource; empty for none.
    int setPath(char const * path);
    int setPath(String const & path);

    /// The directory that stands for all others; empty for none.
    [[nodiscard]] char const * getPath() const noexcept { return own_path.c_str(); }

    /// The file template.
    [[nodiscard]] char const * getFile() const noexcept { return file_template.c_str(); }

    /// The extension that %e writes, at most 30 characters.
    int setExt(char const * extension);

    /// The extension; empty for none.
    [[nodiscard]] char const * getExt() const noexcept { return ext.c_str(); }

    /// The forecast hour that %f writes without a key "f".
    int setFore(int hour);
    /// Gives a key its value (at most 19 characters); 0 when it is new and 20 keys are set already.
    int setKey(char key, char const * value);
    /// Empty for a key that is not set; valid until it is set again.
    [[nodiscard]] char const * getKey(char key) const;

    /// Seconds between the times that the template tells apart (kept as the search step), Const::MISS for
    /// none.
    int setOffset(char const * text);

    /// Fills a template: which 1 the header's, anything else the file's. 0, with an empty name, for an empty
    /// template.
    int encode(Date const & date, int which, String & name);

    /// The name of the data file, and of its header file.
    int encodeFile(Date const & date, String & name) { return encode(date, 0, name); }

    /// The same of the header file.
    int encodeHdr(Date const & date, String & name) { return encode(date, 1, name); }

    /// Finds the file for "[>][#YYYYMMDDHHmm][+-[Dd]H[:M]][[+-]la[#limit]]", or takes "@name" as it stands;
    /// null or empty is "la": the latest file. 0, with the result cleared, when there is none.
    int setLatest(char const * when, NameConvFile & result);
    /// The file of one date; 0, with the result cleared, when it is not there.
    int setFile(Date const & date, NameConvFile & result);
    /// The date of the last result.
    int getDate(Date & date) const;

    /// Lists templates, extension, directory, search step and keys on standard output.
    int print() const;

private:
    struct Key
    {
        char key;
        std::string value;
    };

    /// The directory asked about last: a search asks for the same one again and again.
    struct KnownDirectory
    {
        std::string path;
        bool exists = false;
    };

    int setType(char const * spec);
    int setFromTable(std::string const & type, std::string_view header);
    void setOptions(std::string_view options);
    void setSizeAndExtension(std::string const & column);
    void setTemplates(std::string_view file, std::string_view header);

    void encodePieces(detail::NameTemplate const & pieces, Date const & date, std::string & out);
    void encodePiece(detail::NamePiece const & piece, Date const & date, std::string & out) const;
    void encodeForecast(detail::NamePiece const & piece, std::string & out) const;
    void encodeKey(detail::NamePiece const & piece, std::string & out) const;
    void encodeDirectory(std::string const & resource, std::string & out);
    [[nodiscard]] Key const * findKey(char key) const;

    [[nodiscard]] Date startDate(std::string_view & when) const;
    void applyFixedDate(Date & date) const;
    [[nodiscard]] bool accepts(std::string const & name, long & size) const;
    bool take(std::string const & name, Date const & date, NameConvFile & result);
    bool findExact(Date const & date, NameConvFile & result);
    bool search(Date const & start, int direction, long limit, NameConvFile & result);
    bool searchDirectory(Date const & start, int direction, long limit, NameConvFile & result);
    [[nodiscard]] long stepLimit() const;

    std::string file_template;
    std::string header_template;
    detail::NameTemplate file_pieces;
    detail::NameTemplate header_pieces;
    std::string ext;
    std::string ext2;
    std::string own_path;
    std::string options_text;
    std::vector<Key> keys;
    int min_size = Const::MISS;
    int late_minutes = Const::MISS;
    int fore_hour = 0;
    DateVal fix_date;
    Date late_date;
    int step = Const::MISS;
    Date found_date;
    int num_directories = 1;
    int directory = 0;
    int late_limit = 100;
    bool is_output = false;
    bool has_directory = true;
    KnownDirectory known;
};

} // namespace Yul
