#include "geo/projection/Math.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace Yul::detail::math {
namespace {

constexpr long double PI_LONG = 3.14159265358979323846264338327950288L;

long double relative(double found, long double expected)
{
    return std::fabs(static_cast<long double>(found) - expected) / std::fmax(std::fabs(expected), 1e-300L);
}

TEST(Math, StaysWithinItsStatedError)
{
    constexpr long double MOST = 2e-13L;
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> unit(-1, 1);
    for (int i = 0; i < 100000; ++i) {
        double const u = unit(random);
        double const degrees = 4000 * u;
        auto const angle = static_cast<long double>(degrees) * PI_LONG / 180;
        EXPECT_LT(std::fabs(static_cast<long double>(sinCos(degrees).sin) - std::sin(angle)), MOST)
            << degrees;
        EXPECT_LT(std::fabs(static_cast<long double>(sinCos(degrees).cos) - std::cos(angle)), MOST)
            << degrees;
        double const small = 45 * u;
        EXPECT_LT(relative(sinCos(small).sin, std::sin(static_cast<long double>(small) * PI_LONG / 180)),
                  MOST)
            << small;
        double const x = std::exp(60 * u);
        EXPECT_LT(std::fabs(static_cast<long double>(log(x)) - std::log(static_cast<long double>(x))),
                  MOST * std::fmax(1.0L, std::fabs(std::log(static_cast<long double>(x)))))
            << x;
        EXPECT_LT(relative(exp(60 * u), std::exp(60 * static_cast<long double>(u))), MOST) << u;
        double const v = unit(random);
        EXPECT_LT(relative(atan2(u, v), std::atan2(static_cast<long double>(u), static_cast<long double>(v)) *
                                            180 / PI_LONG),
                  MOST)
            << u << " " << v;
        double const lat = 89.9 * v;
        auto const half = (90 - static_cast<long double>(lat)) * PI_LONG / 360;
        EXPECT_LT(relative(tanHalfPolarDistance(lat), std::tan(half)), MOST) << lat;
        EXPECT_LT(
            std::fabs(static_cast<long double>(log2TanHalfPolarDistance(lat)) - std::log2(std::tan(half))),
            MOST)
            << lat;
    }
}

TEST(Math, IsExactAtQuarterTurnsAndPassesNotANumberOn)
{
    for (int i = -40; i <= 40; ++i) {
        EXPECT_EQ(sinCos(90.0 * i).sin, std::remainder(i, 2) == 0 ? 0 : (i % 4 + 4) % 4 == 1 ? 1 : -1) << i;
        EXPECT_EQ(sinCos(90.0 * i).cos, sinCos(90.0 * (i + 1)).sin) << i;
    }
    EXPECT_EQ(atan2(0, 0), 0);
    EXPECT_EQ(atan2(0.0, -0.0), 0);
    EXPECT_EQ(atan2(1, 0), 90);
    EXPECT_EQ(atan2(-1, -1), -135);
    EXPECT_EQ(atan2(0, -1), 180);
    EXPECT_EQ(halfTurn(180), 180);
    EXPECT_EQ(halfTurn(-180), -180);
    EXPECT_EQ(halfTurn(725), 5);
    EXPECT_EQ(oneTurn(725), 365);
    EXPECT_EQ(exp(0), 1);
    EXPECT_EQ(tanHalfPolarDistance(90), 0);
    for (double x : {sinCos(NONE).sin, sinCos(NONE).cos, atan2(NONE, 1), atan2(1, NONE), log(NONE), log(-1),
                     log(0), exp(NONE), asin(1.1), clamp(NONE, 0, 1), halfTurn(NONE), log(HUGE_VAL)})
        EXPECT_TRUE(std::isnan(x));
}

} // namespace
} // namespace Yul::detail::math
