// Argument lists: one argument a line, with two declared options and one positional one.
#include "core/Resrc.h"
#include "core/Strings.h"
#include "core/Yul.h"
#include "program/ResrcDB.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string text(reinterpret_cast<char const *>(data), size);
    text.insert(0, "program\n-df\n/nowhere\n"); // no files: they have a target of their own
    Yul::Strings args(text.c_str(), '\n');
    Yul::ResrcDBList keyed;
    Yul::ResrcDBList positional;
    keyed.add("level", nullptr, "lv", "level");
    keyed.add("length", "LENGTH", "ln", "length");
    positional.add("files", nullptr, "", "files");
    Yul::Yul::resrc().clear();
    Yul::ResrcDB::create(args, keyed, positional);
    return 0;
}
