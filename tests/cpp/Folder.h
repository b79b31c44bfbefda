// Files of a test's own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace Yul::test {

[[nodiscard]] inline std::string octetsOf(std::string const & name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A new folder with a short name, gone at the end with all that is in it.
class Folder
{
public:
    Folder() = default;

    ~Folder() { std::filesystem::remove_all(path); }

    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;

    /// The path of a file or folder in it.
    [[nodiscard]] std::string of(std::string const & name) const { return path / name; }

    /// Writes a file and returns its path. It is a new one every time: some file systems make haste to save one that
    /// is written over.
    std::string write(std::string const & name, std::string const & octets) const
    {
        std::filesystem::remove(path / name);
        std::ofstream(path / name, std::ios::binary) << octets;
        return of(name);
    }

    std::filesystem::path const path = [] {
        std::string name = std::filesystem::temp_directory_path() / "yul-XXXXXX";
        return std::filesystem::path(mkdtemp(name.data()));
    }();
};

} // namespace Yul::test
