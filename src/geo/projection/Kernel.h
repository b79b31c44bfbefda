// The projection of a domain as constants for its formulas.
#pragma once

#include <variant>

namespace Yul::detail {

/// The earth's dimensions, units of 100 km.
struct EarthFigure
{
    double radius = 0;
    double major = 0;
    double minor = 0;

    bool operator==(EarthFigure const &) const = default;
};

/// A grid in its plane: the north-western corner and the spacing.
struct GridFrame
{
    double left = 0;
    double top = 0;
    double dx = 0;
    double dy = 0;
    bool is_set = false;
};

using Kernel = std::variant<std::monostate>;

} // namespace Yul::detail
