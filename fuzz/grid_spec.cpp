// Grid specs and model specs as texts.
#include "core/String.h"
#include "grid/GridSpec.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::String out;
    Yul::GridSpec spec;
    if (spec.decode(text.c_str()) == 1) {
        Yul::GridSpec back;
        spec.toString(out);
        if (back.decode(out.get()) == 0 || !spec.match(back))
            std::abort();
    }
    Yul::ModelSpec model;
    model.decode(text.c_str());
    model.toString(out);
    if (Yul::ModelSpec().decode(out.get()) == 0)
        std::abort();
    return 0;
}
