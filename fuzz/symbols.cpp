// Symbol files.
#include "MemoryFile.h"
#include "graphics/Symbol.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    MemoryFile const input(data, size);
    Yul::Symbol symbols;
    if (symbols.open(input.name().c_str()) != 0)
        for (int i = 0; i < symbols.getNum(); ++i)
            if (symbols.find(symbols.getName(i)) == nullptr)
                __builtin_trap();
    return 0;
}
