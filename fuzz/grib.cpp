// GRIB files: the search for messages, sections of both editions, every packing, grid definitions.
#include "MemoryFile.h"
#include "core/Yul.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

/// A few octets can describe a constant field of any size; filling large ones tells nothing and takes the time of all
/// others.
constexpr int LARGEST = 20000;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    MemoryFile const input(data, size);
    Yul::GribFile file(input.name().c_str());
    Yul::Grid grid;
    Yul::Grid header;
    file.setMaxBad(10);
    while (file.peek(header) != 0) {
        if (header.getNx() * header.getNy() > LARGEST)
            file.next();
        else if (file.read(grid) == 0 && !file.isBad())
            break;
    }
    return 0;
}
