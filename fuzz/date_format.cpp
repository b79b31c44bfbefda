// Formats, on dates of any fields: the first octets are the fields, the rest is the format.
#include "core/String.h"
#include "time/Date.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

/// Fields as they come, unchecked, with seconds that do not belong to them.
Yul::Date rawDate(std::uint8_t const *& data, std::size_t & size)
{
    struct
    {
        long seconds = 0;
        int fields[5] = {};
        float second = 0.0F;
    } raw;

    std::size_t const taken = size < sizeof raw ? 0 : sizeof raw;
    if (taken != 0)
        std::memcpy(&raw, data, taken);
    data += taken;
    size -= taken;
    Yul::Date date(raw.seconds);
    if (taken != 0)
        date.DateVal::set(raw.fields[0], raw.fields[1], raw.fields[2], raw.fields[3], raw.fields[4],
                          raw.second);
    return date;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Date date = rawDate(data, size);
    std::string const format(reinterpret_cast<char const *>(data), size);
    Yul::String out;
    date.toText(format.c_str(), out);
    date.toText(out);
    date.setFractionalSecond(0.5F);
    date.computeSecs();
    date.toText(format.c_str(), out);
    date.addMonths(static_cast<int>(date.getSeconds()));
    date.toText(out.get(), out);
    return 0;
}
