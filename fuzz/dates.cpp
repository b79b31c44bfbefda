// Texts with times in them: dates, zones, header times, formats, and the labels made from what was read.
#include "core/String.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/Timezone.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::String out;
    Yul::Date header;
    Yul::DateTool::decode(text.c_str(), header);
    Yul::Timezone const zone(text.c_str());
    for (Yul::Date date :
         {header, Yul::Date(text.c_str()), Yul::Date(Yul::DateTool::getSeconds(text.c_str()))}) {
        date.toText(text.c_str(), out);
        Yul::DateTool::createLabel(text.c_str(), date, zone, 1, out);
        date.addMonths(Yul::DateTool::getMinutes(text.c_str()));
        date.fix();
        date.toString(out);
    }
    return 0;
}
