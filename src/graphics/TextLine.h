// One line of text laid out with a stroke font.
#pragma once

#include "graphics/GFont.h"

#include <string_view>
#include <vector>

namespace Yul::detail {

/// The character codes (ISO 8859-1) of UTF-8 text. Dashes, quotation marks, blanks and the like that the code
/// lacks become their plain forms, further Latin letters lose their marks; octets that are not UTF-8 count as codes themselves; control characters other
/// than the tabulator (a blank) are left out; any other character is UNKNOWN_CHARACTER.
inline constexpr int UNKNOWN_CHARACTER = -1;
[[nodiscard]] std::vector<int> characterCodes(std::string_view text);

/// How the characters of a line are set.
struct TextStyle
{
    float expansion = 1;
    float spacing = 0;    ///< gap between cells, text heights
    float char_width = 0; ///< above 0: all cells are this wide, text heights
};

/// One character of a line. Lengths are in text heights (the height of a capital letter).
struct PlacedGlyph
{
    GFont::Glyph const * glyph; ///< null: the font has none, a box stands for it
    float x;                    ///< where the glyph's own x = 0 lies, from the start of the line
};

/// The characters of a line in their places along the baseline, and the extent of the ink. A blank counts
/// with its cell, so that leading and trailing blanks keep their room.
struct TextLine
{
    TextLine(GFont const & font, std::string_view text, TextStyle const & style);

    std::vector<PlacedGlyph> glyphs;
    float ink_left = 0;
    float ink_right = 0;
    bool has_ink = false;
};

/// What stands for a character that the font lacks: an upright box.
inline constexpr float BOX_WIDTH = 0.6F;

} // namespace Yul::detail
