// Stroke font files, and text set with whatever was read.
#include "MemoryFile.h"
#include "graphics/GFont.h"
#include "graphics/TextLine.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    MemoryFile const input(data, size);
    Yul::GFont font;
    if (font.open(input.name().c_str()) == 0)
        return 0;
    std::string_view const text(reinterpret_cast<char const *>(data), size);
    for (auto const & placed : Yul::detail::TextLine(font, text.substr(0, 400), {1.5F, 0.25F, 0}).glyphs)
        if (placed.glyph != nullptr && font.vertices(*placed.glyph).size() != placed.glyph->count)
            __builtin_trap();
    return 0;
}
