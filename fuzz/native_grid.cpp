// Native grid files: headers of every version, values in every form, several grids in one file. What is read is written
// and read again.
#include "MemoryFile.h"
#include "core/Yul.h"
#include "geo/Domain.h"
#include "grid/GridFile.h"
#include "grid/Grids.h"

#include <cstdlib>
#include <cstring>

namespace {

/// A grid that a file can hold comes out of it bit for bit.
void writeAndRead(Yul::Grid const & grid)
{
    MemoryFile const copy(nullptr, 0);
    Yul::GridYulFile file;
    if (file.write(copy.name().c_str(), Yul::GridYulFile::BINARY, grid) == 0)
        return;
    Yul::Grid back;
    if (file.read(copy.name().c_str(), 0, back) == 0 || back.getSize() != grid.getSize() ||
        std::memcmp(back.data(), grid.data(), grid.getValues().size_bytes()) != 0)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    static double const EARTH = Yul::Domain::earth_rad;
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    MemoryFile const input(data, size);
    Yul::GridFile::checkType(input.name().c_str());
    Yul::GridYulFile file(input.name().c_str());
    Yul::Grid grid;
    while (file.peek(grid) == 1 && file.read(grid) == 1)
        writeAndRead(grid);
    Yul::Grids grids;
    file.rewind();
    file.read(grids);
    file.rewind();
    file.read(Yul::GridSpec("TMP,500mb"), grid);
    Yul::Domain::earth_rad = EARTH; // a domain may have changed it for all
    return 0;
}
