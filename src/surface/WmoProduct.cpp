#include "surface/WmoProduct.h"

#include "core/StrLib.h"

namespace Yul {
namespace {

constexpr std::size_t MAX_TEXT = 80;

} // namespace

int WmoProduct::init()
{
    *this = WmoProduct();
    return 1;
}

int WmoProduct::set(char const * heading, char const * identifier, long location)
{
    header = std::string(detail::viewOf(heading).substr(0, MAX_TEXT));
    awip = std::string(detail::viewOf(identifier).substr(0, MAX_TEXT));
    loc = location;
    return 1;
}

} // namespace Yul
