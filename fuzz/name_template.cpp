// Templates of file names.
#include "naming/NameConv.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::NameConv convention(("@" + text).c_str());
    convention.setExt(text.c_str());
    convention.setKey('f', text.c_str());
    convention.setOffset(text.c_str());
    Yul::String name;
    convention.encodeFile(Yul::Date(1794676980L), name);
    convention.encodeFile(Yul::Date(), name);
    return 0;
}
