// Variable texts and unit texts.
#include "grid/Variable.h"

#include "core/String.h"
#include "grid/Unit.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::Variable variable;
    if (variable.decode(text.c_str()) == 1) {
        Yul::String out;
        Yul::Variable back;
        variable.toString(out);
        if (back.decode(out.get()) == 0 || !back.compare(variable))
            std::abort();
    }
    auto const half = text.find('\n');
    auto const from = text.substr(0, half);
    auto const to = half != std::string::npos ? text.substr(half + 1) : "K";
    Yul::Unit const unit(from.c_str(), to.c_str());
    [[maybe_unused]] auto const converted = unit.convert(280);
    if (unit.isValid() != Yul::Unit(to.c_str(), from.c_str()).isValid())
        std::abort();
    return 0;
}
