// The order in which the pieces of a field are read.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Yul::detail {

/// A stretch of a field's values.
struct Piece
{
    std::size_t first = 0;
    std::size_t count = 0;
};

/// The pieces of a field that is read into memory, from its beginning on, or from its end where octets come without waiting
/// for a disk: field after field by turns. Where a field takes the place of the one before, the nearest caches still hold the
/// values that were written last, and writing them again costs half of writing others.
class PieceOrder
{
public:
    /// field_values    of the field.
    /// values_at_once  values of a piece, but for the last one.
    /// octets          how many hold the field.
    /// is_at_hand      tells whether the n-th of them is in memory. It is asked when it is the turn of the end, and for one in
    ///                 the middle as well: the last one may be there because what follows the field was looked at.
    template <class Test>
    PieceOrder(std::size_t field_values, std::size_t values_at_once, std::uint64_t octets, Test is_at_hand)
        : values(field_values), at_once(values_at_once), pieces((values + at_once - 1) / at_once),
          is_from_end(pieces > 1 && takeTurn() && octets > 0 && is_at_hand(octets / 2) &&
                      is_at_hand(octets - 1))
    {
    }

    [[nodiscard]] std::size_t size() const noexcept { return pieces; }

    /// The piece that comes i-th.
    [[nodiscard]] Piece operator[](std::size_t i) const noexcept
    {
        std::size_t const first = (is_from_end ? pieces - 1 - i : i) * at_once;
        return {first, std::min(at_once, values - first)};
    }

private:
    /// Whether it is the turn of the end, and of the beginning next time; for all files of a thread.
    static bool takeTurn() noexcept
    {
        static thread_local bool turn = false;
        return turn = !turn;
    }

    std::size_t values;
    std::size_t at_once;
    std::size_t pieces;
    bool is_from_end;
};

} // namespace Yul::detail
