// Reading of the table files: fonts, font list, symbols, colours.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// A text file of at most 4 MiB, read in one go and given out line by line. Blank lines and lines that begin
/// with "#" are passed over.
class TableFile
{
public:
    /// 0 when there is no such file, it is a pipe, a device or too large, or it is no text (it holds a NUL octet).
    int open(std::string const & name);
    /// The next line without its end; false at the end of the file.
    bool next(std::string_view & line);

private:
    std::string text;
    std::size_t position = 0;
};

/// Takes the first word off a line; empty at the end of the line.
[[nodiscard]] std::string_view nextWord(std::string_view & rest);

/// The words of a line, which blanks separate.
[[nodiscard]] std::vector<std::string_view> words(std::string_view line);

/// Reads a whole word as a number; false, with the value unchanged, for anything else.
[[nodiscard]] bool readInt(std::string_view word, int & value);
[[nodiscard]] bool readFloat(std::string_view word, float & value);

/// The path of a file of the database directory.
[[nodiscard]] std::string databaseFile(std::string_view name);

} // namespace Yul::detail
