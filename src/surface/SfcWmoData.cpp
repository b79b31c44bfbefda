#include "surface/SfcWmoData.h"

#include "core/Format.h"
#include "core/Yul.h"

namespace Yul {

int SfcWmoData::init()
{
    *this = SfcWmoData();
    return 1;
}

int SfcWmoData::print() const
{
    char const * const name = country == USA      ? "USA"
                              : country == CANADA ? "CANADA"
                              : country == MEXICO ? "MEXICO"
                                                  : nullptr;
    std::string const place = name != nullptr ? name : detail::format("%d", country);
    Yul::print(("Location: " + place + "\n" + message + "\n").c_str());
    return 1;
}

} // namespace Yul
