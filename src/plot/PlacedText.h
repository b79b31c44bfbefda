// A text that waits for its turn on the page.
#pragma once

#include <string>

namespace Yul::detail {

/// Where a text stands on the page (NDC), which way is up for it, and how it looks.
struct PlacedText
{
    std::string text;
    float x = 0; ///< middle of its foot
    float y = 0;
    float up_x = 0;
    float up_y = 1;
    float height = 0;
    float weight = 1;
    int color = 0;
    bool is_clear = false; ///< with a white edge that keeps it clear of what is behind it
};

} // namespace Yul::detail
