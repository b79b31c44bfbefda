// Colour tables and colour texts.
#include "MemoryFile.h"
#include "core/Yul.h"
#include "graphics/ColorMap.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::NONE);
    MemoryFile const input(data, size);
    Yul::ColorMap colors(64);
    colors.read(input.name().c_str());
    std::string const text(reinterpret_cast<char const *>(data), size);
    int const index = colors.getInd(text.c_str());
    Yul::RGB rgb;
    colors.get(index, rgb);
    if (colors.getNum() > colors.getSize() || colors.getNumFill() > colors.getNum())
        __builtin_trap();
    return 0;
}
