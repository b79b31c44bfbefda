// The closed lines round a band, holes and all, as outlines that are one line each.
#pragma once

#include "plot/BandOutline.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Yul::detail {

/// Collects the closed lines of a band and ties those inside to those around them by cuts along the rows of the grid.
class BandRings
{
public:
    /// A line with the band to its left; one that encloses nothing is left out.
    void add(BandOutline ring);

    /// The outer lines, each with the holes in it: along a cut to a hole, round that, and back.
    [[nodiscard]] std::vector<BandOutline> tie();

private:
    /// From node `at` of a ring along the row to node `to` of ring `hole`.
    struct Cut
    {
        std::size_t at;
        std::size_t hole;
        std::size_t to;
    };

    struct Ring
    {
        BandOutline nodes;
        std::vector<Cut> cuts; // in the order of their nodes
        bool is_hole;

        [[nodiscard]] std::optional<Cut> cutAt(std::size_t node, std::size_t number) const;
    };

    struct RowNode;

    [[nodiscard]] std::vector<RowNode> rowNodes() const;
    [[nodiscard]] std::vector<std::size_t> leftmostOfHoles(std::vector<RowNode> const & nodes) const;
    void findCuts();
    [[nodiscard]] BandOutline walk(std::size_t outer) const;

    std::vector<Ring> rings;
};

} // namespace Yul::detail
