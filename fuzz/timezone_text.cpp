// Texts of time zones, and the labels that are made in such zones.
#include "core/String.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/Timezone.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::Timezone const zone(text.c_str());
    if (std::strlen(zone.getName()) > 4 || zone.isSet() == (zone.getOffset() == -9999))
        std::abort();

    Yul::String out;
    for (char const * const time : {"2026", "20261114", "2026111417", "202611141745", "20261114174530.5"}) {
        Yul::Date date(time);
        Yul::DateTool::createLabel(text.c_str(), date, zone, 1, out);
        Yul::DateTool::createLabel(date, zone, static_cast<float>(size), out);
        Yul::DateTool::createLabel(date, zone, text.c_str(), static_cast<float>(zone.getOffset()), out);
        long const before = date.getSeconds();
        date.changeTimezone(zone.getOffset(), text.c_str());
        date.changeTimezone(0, zone.getName());
        if (date.getSeconds() != before)
            std::abort();
    }
    return 0;
}
