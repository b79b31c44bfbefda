// Attribute texts, and what two of them make of one another.
#include "core/Const.h"
#include "plot/PlotAttr.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    std::string const first = text.substr(0, size / 2);
    Yul::PlotAttr const whole(text.c_str());
    Yul::PlotAttr const joined(first.c_str(), text.c_str());
    Yul::PlotAttr filled(first.c_str());
    filled.update(whole);
    bool const is_same = filled.style == joined.style && filled.fill == joined.fill &&
                         filled.color == joined.color && std::strcmp(filled.font, joined.font) == 0;
    bool const is_ended = std::memchr(whole.color_name, '\0', sizeof whole.color_name) != nullptr &&
                          std::memchr(whole.font, '\0', sizeof whole.font) != nullptr &&
                          std::memchr(whole.label_color, '\0', sizeof whole.label_color) != nullptr;
    if (!is_same || !is_ended || filled.parseMarker(text.c_str()) < 1 ||
        filled.parseMarker(text.c_str()) > 10)
        __builtin_trap();
    filled.parseFillStyle(text.c_str());
    return 0;
}
