// Settings files: lines, quoted texts, name patterns, nested conditions.
#include "MemoryFile.h"
#include "core/Resrc.h"
#include "core/ResrcFile.h"
#include "core/Yul.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    MemoryFile const input(data, size);
    Yul::Resrc store;
    Yul::ResrcFile file(store);
    file.readFile(store, input.name().c_str());
    return 0;
}
