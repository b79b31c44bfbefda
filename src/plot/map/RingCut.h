// Cutting the rings of areas along a line.
#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
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

/// The kept parts of a ring from `start` on, a point that is cut off; each begins and ends on the cut.
template <class Inside>
std::vector<Ring>
keptChains(Ring const & ring, std::vector<bool> const & is_in, std::size_t start, Inside const & inside)
{
    std::size_t const n = ring.size();
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
    return chains;
}

/// The ends of chains, two numbers to a chain: 2 i for the first point of chain i, 2 i + 1 for its last. Along the cut
/// they lie in pairs with area between the two of a pair: the other one of its pair for each end.
template <class Along>
std::vector<std::size_t> partnersAlong(std::vector<Ring> const & chains, Along const & along)
{
    std::vector<double> places;
    for (Ring const & chain : chains) {
        places.push_back(along(chain.front()));
        places.push_back(along(chain.back()));
    }
    std::vector<std::size_t> ends(places.size());
    std::iota(ends.begin(), ends.end(), std::size_t{0});
    std::sort(ends.begin(), ends.end(), [&](std::size_t a, std::size_t b) { return places[a] < places[b]; });
    std::vector<std::size_t> partner(ends.size());
    for (std::size_t i = 0; i < ends.size(); i += 2) {
        partner[ends[i]] = ends[i + 1];
        partner[ends[i + 1]] = ends[i];
    }
    return partner;
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
    std::vector<bool> is_in(ring.size());
    std::transform(ring.begin(), ring.end(), is_in.begin(), inside);
    auto const cut_off = std::find(is_in.rbegin(), is_in.rend(), false);
    if (cut_off == is_in.rend()) {
        if (!ring.empty())
            kept.push_back(ring);
        return;
    }

    std::vector<Ring> chains =
        keptChains(ring, is_in, static_cast<std::size_t>(is_in.rend() - cut_off) - 1, inside);
    std::vector<std::size_t> const partner = partnersAlong(chains, along);
    std::vector<bool> is_used(chains.size(), false);
    for (std::size_t first = 0; first < chains.size(); ++first) {
        Ring joined;
        for (std::size_t entry = 2 * first; !is_used[entry / 2]; entry = partner[entry ^ 1U]) {
            is_used[entry / 2] = true;
            Ring & chain = chains[entry / 2];
            if (entry % 2 == 1) // is entered at its last point
                std::reverse(chain.begin(), chain.end());
            if (!joined.empty()) {
                RingPoint const from = joined.back();
                connect(from, chain.front(), joined);
            }
            joined.insert(joined.end(), chain.begin(), chain.end());
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
