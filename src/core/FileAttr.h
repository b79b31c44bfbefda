// How a file is opened.
#pragma once

namespace Yul {

class FileAttr
{
public:
    /// What a file is opened for.
    enum Mode : int {
        READ = 0,
        WRITE = 1, ///< created, or emptied first
        APPEND = 2 ///< created, or written behind its end
    };

    /// The mode text that File::open takes, "r", "w" or "a"; null for any other number.
    [[nodiscard]] static constexpr char const * getText(int mode) noexcept
    {
        constexpr char const * TEXTS[] = {"r", "w", "a"};
        return mode >= READ && mode <= APPEND ? TEXTS[mode] : nullptr;
    }
};

} // namespace Yul
