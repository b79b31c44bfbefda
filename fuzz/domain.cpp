// Domain texts, and conversions in the domains that they make.
#include "core/String.h"
#include "core/Yul.h"
#include "geo/Domain.h"
#include "geo/DomainTool.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Yul::Yul::setMessageLevel(Yul::Yul::ERROR);
    std::string const text(reinterpret_cast<char const *>(data), size);
    Yul::Domain domain;
    if (Yul::DomainTool::decode(text.c_str(), domain) == 0)
        return 0;
    Yul::String out;
    domain.toString(out);
    Yul::EarthPoint earth;
    Yul::GridPoint place;
    for (float column = -1; column < 3; column++) {
        domain.tran(Yul::GridPoint(column, column * 7), earth);
        domain.tran(earth, place);
    }
    return 0;
}
