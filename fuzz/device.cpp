// Parameters of the PostScript device, and a line drawn with them. The page goes nowhere.
#include "core/Yul.h"
#include "graphics/Postscript.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::NONE);
    std::string const items(reinterpret_cast<char const *>(data), size);
    Yul::Postscript page;
    page.setParam(("/dev/null," + items).c_str());
    page.setTitle(items.c_str());
    if (page.open() == 0 || !(page.getWidth() > 0) || !(page.getHeight() > 0))
        __builtin_trap();
    page.setLineWidth(Yul::LINE_PEN, static_cast<float>(size));
    page.drawLine(Yul::LINE_PEN, 0, 0, page.getWidth(), page.getHeight());
    page.setClip(page.getCoords());
    page.close();
    return 0;
}
