#include "core/FixedScan.h"

#include <random>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace Yul::detail {
namespace {

/// Texts that are close enough to times to get somewhere.
std::string randomText(std::mt19937 & random)
{
    constexpr std::string_view PIECES[] = {" ", "1", "23",  "Z",  ":", "NOV", "-",
                                           "+", ".", "5e1", "\t", "x", ""};
    std::string text;
    for (auto n = random() % 14; n > 0; --n)
        text += PIECES[random() % std::size(PIECES)];
    return text;
}

/// Expects the fixed scan to fill exactly what the interpreted one fills.
template <ScanFormat FORMAT, class... Target> void expectSame(std::string const & text)
{
    std::tuple<Target...> fixed;
    std::tuple<std::conditional_t<std::is_same_v<Target, std::string_view>, std::string, Target>...> scanned;
    bool const is_full = std::apply([&](auto &... t) { return fixedScan<FORMAT>(text, t...); }, fixed);
    int const filled = std::apply([&](auto &... t) { return scan(text, FORMAT.text, &t...); }, scanned);
    EXPECT_EQ(is_full, filled == static_cast<int>(sizeof...(Target)))
        << FORMAT.text << " on '" << text << "'";
    EXPECT_TRUE(!is_full || fixed == scanned) << FORMAT.text << " on '" << text << "'";
}

TEST(FixedScan, ReadsWhatTheInterpretedScanReads)
{
    std::mt19937 random(9);
    for (int i = 0; i < 100'000; ++i) {
        std::string const text = randomText(random);
        expectSame<"%2dZ %3s", int, std::string_view>(text);
        expectSame<"%2d:%2f%4d", int, float, int>(text);
        expectSame<"%4d%f", int, float>(text);
        expectSame<"%1d%*3s %2d%s", int, int, std::string_view>(text);
    }
}

} // namespace
} // namespace Yul::detail
