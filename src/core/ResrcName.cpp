#include "core/ResrcName.h"

#include "core/Resrc.h"
#include "core/StrLib.h"

namespace Yul::detail {

ProgramNames programNames(Resrc const & store)
{
    return {std::string(viewOf(store.get("prog"))), std::string(viewOf(store.get("name")))};
}

std::string qualifiedName(ProgramNames const & names, std::string_view key, char separator)
{
    bool const has_both = !names.use.empty() && names.use.front() == '+';
    std::string qualified = names.use.empty() || has_both ? names.prog : names.use;
    if (has_both)
        qualified.append(1, separator).append(names.use, 1);
    return qualified.append(1, separator).append(key);
}

} // namespace Yul::detail
