// Map files: whatever is read of one are positions.
#include "MemoryFile.h"
#include "plot/MapFile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    MemoryFile const input(data, size);
    Yul::MapFile file;
    if (file.open(input.name().c_str()) == 0)
        return 0;
    for (int layer = 0; layer < file.getNumLayers(); ++layer) {
        Yul::MapFileHeader const & header = file.getHeader(layer);
        Yul::EarthPoints points;
        for (int line = 0; line < header.getNumLines(); ++line) {
            if (file.getLine(layer, line, points) == 0)
                continue;
            for (Yul::EarthPoint const & p : points.all())
                if (!(std::fabs(p.lat) <= 90 && std::fabs(p.lon) <= 360))
                    __builtin_trap();
        }
    }
    return 0;
}
