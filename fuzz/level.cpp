// Level texts, and the codes and octets that levels have in files.
#include "grid/Level.h"

#include "core/String.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::String out;
    Yul::Level level;
    if (level.decode(text.c_str()) == 1) {
        level.toLabel(out);
        level.toString(out);
        Yul::Level back;
        if (back.decode(out.get()) == 0 || !back.compare(level) ||
            back.setCodes(level.getTypeCode(), level.getValueCode()) == 0 ||
            back.getType() != level.getType())
            std::abort();
    }
    if (size >= 2 * sizeof(int) + 2 * sizeof(double)) {
        int codes[2];
        double values[2];
        std::memcpy(codes, data, sizeof codes);
        std::memcpy(values, data + sizeof codes, sizeof values);
        level.setCodes(codes[0], codes[1]);
        level.setGrib1(data[0], data[1], data[2]);
        level.getGrib1(codes[0], codes[0], codes[1]);
        level.setGrib2(data[0], values[0], data[1], values[1]);
        level.toString(out);
        if (Yul::Level().decode(out.get()) == 0)
            std::abort();
    }
    return 0;
}
