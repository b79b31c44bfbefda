#include "grid/PieceOrder.h"

#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail {
namespace {

TEST(PieceOrder, TakesEveryValueOnceFromEitherEnd)
{
    for (std::size_t const values : {0, 1, 9, 10, 11, 30, 31}) {
        bool has_begun_at_end = false;
        for (int turn = 0; turn < 4; ++turn) {
            PieceOrder const pieces(values, 10, values, [](std::uint64_t) { return true; });
            std::vector<int> taken(values);
            for (std::size_t i = 0; i < pieces.size(); ++i)
                for (std::size_t k = 0; k < pieces[i].count; ++k)
                    ++taken.at(pieces[i].first + k);
            EXPECT_EQ(taken, std::vector<int>(values, 1)) << values;
            has_begun_at_end = has_begun_at_end || (pieces.size() > 1 && pieces[0].first > 0);
        }
        EXPECT_EQ(has_begun_at_end, values > 10) << values;
    }
}

TEST(PieceOrder, TakesADiskInItsOrder)
{
    for (std::uint64_t const absent : {50, 99})
        for (int turn = 0; turn < 2; ++turn) {
            PieceOrder const pieces(100, 10, 100, [=](std::uint64_t octet) { return octet != absent; });
            EXPECT_EQ(pieces[0].first, 0U);
        }
}

} // namespace
} // namespace Yul::detail
