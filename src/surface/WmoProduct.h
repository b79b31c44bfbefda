// One bulletin found in an index.
#pragma once

#include "core/Const.h"
#include "naming/Filename.h"

#include <string>

namespace Yul {

/// Which bulletin this is: the feed file's name (Filename), heading and product identifier (80 characters
/// each), and the octet position of its start line.
class WmoProduct : public Filename
{
public:
    int init();
    int set(char const * heading, char const * identifier, long location);

    [[nodiscard]] char const * getHeader() const noexcept { return header.c_str(); }

    [[nodiscard]] char const * getAwip() const noexcept { return awip.c_str(); }

    /// Const::MISS until set.
    [[nodiscard]] long getLoc() const noexcept { return loc; }

private:
    std::string header;
    std::string awip;
    long loc = Const::MISS;
};

} // namespace Yul
