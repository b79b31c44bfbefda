// A stroke font.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Yul {

/// A font of pen strokes with 256 character slots (ISO 8859-1). A glyph is a sequence of integer pairs: 254
/// or more ends it, a first number of 128 or more moves to (number - 128, y), a smaller one draws to (x, y).
/// The form of the file is described in docs/formats.md.
class GFont
{
public:
    static constexpr int NUM_GLYPHS = 256;

    /// One vertex of a glyph, in font units.
    struct Vertex
    {
        std::int16_t x;
        std::int16_t y;
        bool is_move; ///< the pen is up on the way here
    };

    /// One glyph: its cell (what spacing is measured from) and the horizontal extent of its ink.
    struct Glyph
    {
        std::int16_t left = 0;
        std::int16_t right = 0;
        std::int16_t ink_left = 0;
        std::int16_t ink_right = 0;
        std::uint32_t first = 0; // vertex
        std::uint32_t count = 0;
    };

    GFont();

    /// Reads a font file. 0 (printing nothing) for a file that cannot be read or is not a whole font; the
    /// font is then as it was.
    int open(char const * name);

    [[nodiscard]] bool isOpen() const noexcept { return !glyphs.empty(); }

    int close();

    /// Height of the baseline and of a capital letter above it, in font units.
    [[nodiscard]] int getBaseline() const noexcept { return baseline; }

    [[nodiscard]] int getCapHeight() const noexcept { return cap_height; }

    /// The least width of a stroke, in font units, at which neighbouring strokes touch; 0 where any width will do.
    [[nodiscard]] int getPen() const noexcept { return pen; }

    /// The glyph of a character code 0 to 255; null where the font has none.
    [[nodiscard]] Glyph const * find(int code) const noexcept;
    /// The vertices of a glyph of this font; valid until the font changes.
    [[nodiscard]] std::span<Vertex const> vertices(Glyph const & glyph) const noexcept;

private:
    struct Reader;

    static constexpr std::int16_t UNUSED = -1;

    int baseline = 0;
    int cap_height = 0;
    int pen = 0;
    std::array<std::int16_t, NUM_GLYPHS> slots{}; // index into glyphs, or UNUSED
    std::vector<Glyph> glyphs;
    std::vector<Vertex> all_vertices;
};

} // namespace Yul
