// Octets of values turned round, plain and wide.
#include "grid/native/ByteOrder.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(NativeByteOrder, EveryFormTurnsOctetsAlike)
{
    using namespace Yul::detail::native;
    if (swapWide() == nullptr)
        GTEST_SKIP() << "this processor has no AVX2";
    std::vector<float> from(100);
    std::mt19937 random(7);
    for (auto & value : from) {
        auto const bits = static_cast<std::uint32_t>(random());
        std::memcpy(&value, &bits, sizeof value);
    }
    for (std::size_t start = 0; start < 9; ++start)
        for (std::size_t count = 0; count < 60; ++count) {
            std::vector<float> plain(101, 1.0F);
            std::vector<float> wide(101, 1.0F);
            swapPlain(from.data() + start, plain.data() + start, count);
            swapWide()(from.data() + start, wide.data() + start, count);
            ASSERT_EQ(std::memcmp(plain.data(), wide.data(), plain.size() * sizeof(float)), 0)
                << start << ' ' << count;
        }
}

} // namespace
