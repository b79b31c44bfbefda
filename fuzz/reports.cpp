// Single reports: the input is a feed. A report is one line that holds its station.
#include "MemoryFile.h"
#include "core/Yul.h"
#include "surface/SfcWmoFile.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    MemoryFile const file(data, size);
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    Yul::SfcWmoFile feed;
    feed.setDate(Yul::Date(1578268800L));
    feed.open(file.name().c_str());
    Yul::SfcWmoData report;
    while (feed.read(report) != 0) {
        std::string const text = report.getText();
        std::string const station = report.getStation();
        if (station.empty() || text.find(station) == std::string::npos ||
            text.find_first_of("=\n") != std::string::npos)
            std::abort();
    }
    return 0;
}
