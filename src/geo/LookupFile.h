// Text files of entries that are looked up by a key.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Yul::detail {

/// A text file of entries, one a line: a key, a separator and a value. Empty lines and lines that begin with "#"
/// are passed over. Keys are looked up by hash without regard to the case of ASCII letters; the first of several
/// counts.
class LookupFile
{
public:
    struct Entry
    {
        std::string_view key;
        std::string_view value; ///< what follows the separator, blanks at both ends taken off
    };

    /// Reads the file, from the database directory when it has one of that name, else as the name stands. A file
    /// is read once and kept for the run; it is read again when its size or time of change differs. Null when it
    /// cannot be read or is larger than 64 MiB.
    [[nodiscard]] static std::shared_ptr<LookupFile const> open(char const * name, char separator);

    LookupFile(std::string content, char separator);
    LookupFile(LookupFile const &) = delete;
    LookupFile & operator=(LookupFile const &) = delete;

    /// All entries in the order of the file.
    [[nodiscard]] std::vector<Entry> const & entries() const noexcept { return list; }

    /// The entry of the key; null when there is none.
    [[nodiscard]] Entry const * find(std::string_view key) const;

private:
    std::string text;
    std::vector<Entry> list;
    std::unordered_map<std::string, std::size_t> index; // by the key in lower case
};

} // namespace Yul::detail
