// How the pictures of a plot are called.
#pragma once

#include <string>
#include <string_view>

namespace Yul::detail {

/// The file for a picture of a plot. Kept: a PNG has only the first five characters of the plot's name unless
/// it is a frame of a loop.
/// name   the plot's; empty: "output"
/// type   "gif" or "png"
/// frame  number in a loop, from 0; negative for a single picture
[[nodiscard]] std::string imageName(std::string_view name, std::string_view type, int frame);

} // namespace Yul::detail
