#include "core/ResrcEnv.h"

#include "core/Resrc.h"
#include "core/ResrcName.h"
#include "core/StrLib.h"

#include <array>
#include <cstdlib>
#include <string>

namespace Yul {

int ResrcEnv::get(Resrc & store, char const * key, char const * alt, String & value)
{
    std::string const bare(detail::viewOf(key));
    std::array<std::string, 3> const variables = {
        "yul_" + detail::qualifiedName(detail::programNames(store), bare, '_'),
        std::string(detail::viewOf(alt)),
        "yul" + bare,
    };
    for (std::string const & variable : variables) {
        char const * const found = variable.empty() ? nullptr : std::getenv(variable.c_str());
        if (found != nullptr)
            return value.set(found);
    }
    return 0;
}

} // namespace Yul
