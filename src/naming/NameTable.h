// The name-convention file: one line a data type.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Yul::detail {

/// A line of the name-convention file: type, file template, header template ("-" for none), size and
/// extension, options; separated by blanks and cut to 20, 80, 80, 30 and 50 characters.
struct NameTableRow
{
    std::string type;
    std::string file;
    std::string header;
    std::string size_and_extension;
    std::string options;
    bool is_partial = false; ///< the line's type is only the beginning of the type asked for
};

/// The path of the convention file: the one that the resource "name_conv" names, in the directory of
/// "file_path"; where that does not exist, the file "name_conv" there.
[[nodiscard]] std::string nameTablePath();

/// How a look-up ended.
enum class NameLookup { NO_FILE, NO_LINE, FOUND };

/// Looks a type up: the first line whose type equals it, or is the beginning of it, whatever the case. Lines
/// that begin with "#" or are shorter than 20 characters do not count.
[[nodiscard]] NameLookup findNameRow(std::string const & path, std::string_view type, NameTableRow & row);

} // namespace Yul::detail
