// How a program and its use qualify the name of a setting.
#pragma once

#include <string>
#include <string_view>

namespace Yul {

class Resrc;

namespace detail {

/// The program's name and the name of this use of it, which may begin with "+".
struct ProgramNames
{
    std::string prog;
    std::string use;
};

/// The resources "prog" and "name"; empty texts where they are not set.
[[nodiscard]] ProgramNames programNames(Resrc const & store);

/// The qualified form of a setting: program, use name and key when the use name begins with "+" (which is
/// left out); use name and key when another use name is given; program and key otherwise; joined by the
/// separator.
[[nodiscard]] std::string qualifiedName(ProgramNames const & names, std::string_view key, char separator);

} // namespace detail
} // namespace Yul
