// Packs numbers for the tests of the unpacking kernels.
#pragma once

#include <cstdint>
#include <vector>

/// Puts numbers of any width behind each other, most significant bit first.
class BitWriter
{
public:
    void put(std::uint64_t number, unsigned width)
    {
        for (unsigned i = width; i-- > 0; ++bit) {
            if (bit % 8 == 0)
                octets.push_back(0);
            octets.back() = static_cast<std::uint8_t>(octets.back() | ((number >> i & 1U) << (7 - bit % 8)));
        }
    }

    /// The next number begins on an octet.
    void align() { bit = (bit + 7) / 8 * 8; }

    std::vector<std::uint8_t> octets;

private:
    std::uint64_t bit = 0;
};
