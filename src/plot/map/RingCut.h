// Cutting the rings of areas along a line.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Yul::detail {

/// A point of a ring: latitude and longitude, or x and y.
struct RingPoint
{
    double a;
    double b;

    bool operator==(RingPoint const &) const = default;
};

using Ring = std::vector<RingPoint>;

/// Where the line between a kept and a cut off point meets the cut.
template <class Inside> RingPoint crossingOf(RingPoint kept, RingPoint cut, Inside const & inside)
{
    constexpr int HALVINGS = 52;
    for (int i = 0; i < HALVINGS; ++i) {
        RingPoint const middle = {(kept.a + cut.a) / 2, (kept.b + cut.b) / 2};
        if (middle == kept || middle == cut)
            break;
        (inside(middle) ? kept : cut) = middle;
    }
    return kept;
}

/// Cuts a ring and adds what is left of its area to `kept` as rings. Areas that the cut parts become rings of their
/// own, with nothing but the cut between them.
/// inside(point)   whether a point is kept
/// along(point)    a measure along the cut, at its crossings
/// connect(from, to, ring)   adds what lies on the cut between two crossings
template <class Inside, class Along, class Connect>
void cutRing(Ring const & ring,
             Inside const & inside,
             Along const & along,
             Connect const & connect,
             std::vector<Ring> & kept)
{
    struct End
    {
        double place;
        std::size_t chain;
        bool is_last;
    };

    std::size_t const n = ring.size();
    std::vector<bool> is_in(n);
    std::size_t start = n; // a point that is cut off
    bool is_any_in = false;
    for (std::size_t i = 0; i < n; ++i) {
        is_in[i] = inside(ring[i]);
        is_any_in = is_any_in || is_in[i];
        if (!is_in[i])
            start = i;
    }
    if (!is_any_in)
        return;
    if (start == n) {
        kept.push_back(ring);
        return;
    }

    std::vector<Ring> chains;
    for (std::size_t i = start; i < start + n; ++i) {
        std::size_t const p = i % n;
        std::size_t const q = (i + 1) % n;
        if (!is_in[p] && is_in[q])
            chains.push_back({crossingOf(ring[q], ring[p], inside)});
        if (is_in[p] && !is_in[q])
            chains.back().push_back(crossingOf(ring[p], ring[q], inside));
        if (is_in[q])
            chains.back().push_back(ring[q]);
    }

    // Along the cut the ends of chains lie in pairs, with area between the two of a pair.
    std::vector<End> ends;
    for (std::size_t i = 0; i < chains.size(); ++i) {
        ends.push_back({along(chains[i].front()), i, false});
        ends.push_back({along(chains[i].back()), i, true});
    }
    std::sort(ends.begin(), ends.end(), [](End const & a, End const & b) { return a.place < b.place; });
    std::vector<End> partner(ends.size(), End{});
    auto const slot = [](End const & end) { return 2 * end.chain + (end.is_last ? 1 : 0); };
    for (std::size_t i = 0; i < ends.size(); i += 2) {
        partner[slot(ends[i])] = ends[i + 1];
        partner[slot(ends[i + 1])] = ends[i];
    }
    std::vector<bool> is_used(chains.size(), false);
    for (std::size_t first = 0; first < chains.size(); ++first) {
        Ring joined;
        End entry = {0, first, false};
        while (!is_used[entry.chain]) {
            is_used[entry.chain] = true;
            Ring & chain = chains[entry.chain];
            if (entry.is_last)
                std::reverse(chain.begin(), chain.end());
            if (!joined.empty()) {
                RingPoint const from = joined.back();
                connect(from, chain.front(), joined);
            }
            joined.insert(joined.end(), chain.begin(), chain.end());
            entry = partner[slot({0, entry.chain, !entry.is_last})];
        }
        if (joined.size() > 2) {
            RingPoint const from = joined.back();
            RingPoint const to = joined.front();
            connect(from, to, joined);
            kept.push_back(std::move(joined));
        }
    }
}

} // namespace Yul::detail
