// What the search for a file takes: the first line is a fixed date, the rest the search text. Digits of the
// step limit are left out, so that no input asks for a search of minutes.
#include "core/Yul.h"
#include "naming/NameConv.h"
#include "naming/NameConvFile.h"

#include <algorithm>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    std::size_t const newline = std::min(text.find('\n'), text.size());
    std::string when = text.substr(std::min(newline + 1, text.size()));
    std::size_t const limit = when.find('#', when.find_first_of("lL"));
    if (limit != std::string::npos)
        when.resize(std::min(when.size(), limit + 4));

    Yul::Yul::setInitTime(1794676980);
    Yul::NameConv convention("@%Y%m%d%h%n");
    convention.setFixDate(text.substr(0, newline).c_str());
    Yul::NameConvFile file;
    convention.setLatest(when.c_str(), file);
    return 0;
}
