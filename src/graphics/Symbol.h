// A set of drawing symbols.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Yul {

/// Named symbols made of lines and filled areas, read from a file whose form docs/formats.md describes.
class Symbol
{
public:
    /// One vertex, in units of half the symbol's size: the symbol lies in -1..1.
    struct Vertex
    {
        float x;
        float y;
    };

    /// One line or filled area of a symbol.
    struct Part
    {
        bool is_fill;
        std::vector<Vertex> vertices;
    };

    using Shape = std::vector<Part>;

    /// Reads a symbol file. 0 (printing nothing) for a file that cannot be read or is not a whole symbol set;
    /// the set is then as it was.
    int open(char const * name);

    [[nodiscard]] bool isOpen() const noexcept { return !shapes.empty(); }

    int close();

    /// The symbol of that name, exactly as written; null when there is none. Valid until the set changes.
    [[nodiscard]] Shape const * find(char const * name) const;

    [[nodiscard]] int getNum() const noexcept { return static_cast<int>(shapes.size()); }

    /// Name i in the order of the file (0 is the first), null outside. Valid until the set changes.
    [[nodiscard]] char const * getName(int i) const;

private:
    struct Reader;

    std::vector<Shape> shapes;
    std::vector<std::string> names;                        // in the order of the file
    std::map<std::string, std::size_t, std::less<>> index; // names and further names
};

} // namespace Yul
