// File name conventions: the first line is the data type asked for, the rest the convention file.
#include "MemoryFile.h"
#include "core/Resrc.h"
#include "core/Yul.h"
#include "naming/NameConv.h"
#include "naming/NameConvFile.h"

#include <algorithm>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    auto const * const newline = std::find(data, data + size, static_cast<std::uint8_t>('\n'));
    std::string const type(data, newline);
    auto const used = static_cast<std::size_t>(newline - data);
    MemoryFile const table(data + used, size - used);

    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    Yul::Yul::resrc().clear();
    Yul::Yul::setResrc("name_conv", table.name().c_str());
    Yul::NameConv convention(type.c_str());
    Yul::String name;
    convention.encodeFile(Yul::Date(1794676980L), name);
    convention.encodeHdr(Yul::Date(), name);
    Yul::NameConvFile file;
    convention.setLatest("la#20", file);
    return 0;
}
