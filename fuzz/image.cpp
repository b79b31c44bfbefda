// PNG pictures: what is read comes back the same from what is written, and fits on a page.
#include "graphics/Image.h"

#include "MemoryFile.h"
#include "core/Yul.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::NONE);
    MemoryFile const input(data, size);
    Yul::Image image;
    if (image.read(input.name().c_str()) == 0)
        return 0;
    if (image.getWidth() > 500 || image.getHeight() > 500)
        image.resize(50, 50);
    MemoryFile const output(nullptr, 0);
    Yul::Image back;
    if (image.write(output.name().c_str()) == 0 || back.read(output.name().c_str()) == 0)
        __builtin_trap();
    for (int row = 0; row < image.getHeight(); ++row)
        for (int column = 0; column < image.getWidth(); ++column)
            if (image.getPixel(column, row) != back.getPixel(column, row))
                __builtin_trap();
    back.toIndexed(2);
    if (back.getNumColors() > 2)
        __builtin_trap();
    return 0;
}
