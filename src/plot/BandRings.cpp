#include "plot/BandRings.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Yul::detail {
namespace {

/// How far a walk along a ring has come.
struct Place
{
    std::size_t ring;
    std::size_t start;
    std::size_t done;     // nodes
    std::size_t next_cut; // at the node that was done last
    std::size_t from;     // node of the ring around it that the cut to here starts at
};

/// The order of nodes along a row of points: points and the sides between them in turn.
struct RowPlace
{
    int row;
    int step;
    float t;

    [[nodiscard]] auto order() const { return std::tuple(step, t); }
};

/// None (row -1) for a node between two rows.
RowPlace rowPlace(BandNode const & node)
{
    switch (node.kind) {
    case BandNode::POINT:
        return {node.row, 2 * node.column, 0};
    case BandNode::HORIZONTAL:
        return {node.row, 2 * node.column + 1, node.t};
    default:
        return {-1, 0, 0};
    }
}

/// Twice the area inside, in cells; negative for an outline that goes round clockwise.
double areaOf(BandOutline const & ring)
{
    auto const place = [](BandNode const & n) {
        auto const t = static_cast<double>(n.t);
        return std::pair(n.column + (n.kind == BandNode::HORIZONTAL ? t : 0.),
                         -n.row - (n.kind == BandNode::VERTICAL ? 1 - t : 0.));
    };
    double sum = 0;
    auto [x1, y1] = place(ring.back());
    for (BandNode const & node : ring) {
        auto const [x2, y2] = place(node);
        sum += x1 * y2 - x2 * y1;
        x1 = x2;
        y1 = y2;
    }
    return sum;
}

/// The points of the grid between two nodes of a row, without them.
void addBetween(BandNode const & from, BandNode const & to, BandOutline & line)
{
    int const first = rowPlace(from).step;
    int const last = rowPlace(to).step;
    if (first <= last)
        for (int step = first / 2 + 1; 2 * step < last; ++step)
            line.push_back({step, from.row, BandNode::POINT, 0});
    else
        for (int step = (first - 1) / 2; 2 * step > last; --step)
            line.push_back({step, from.row, BandNode::POINT, 0});
}

} // namespace

/// A node on a row of points.
struct BandRings::RowNode
{
    RowPlace place;
    std::size_t ring;
    std::size_t at;

    [[nodiscard]] auto order() const { return std::tuple(place.row, place.step, place.t); }
};

/// The cut of that number among those at a node.
std::optional<BandRings::Cut> BandRings::Ring::cutAt(std::size_t node, std::size_t number) const
{
    auto const from =
        std::partition_point(cuts.begin(), cuts.end(), [&](Cut const & cut) { return cut.at < node; });
    std::size_t const i = static_cast<std::size_t>(from - cuts.begin()) + number;
    return i < cuts.size() && cuts[i].at == node ? std::optional(cuts[i]) : std::nullopt;
}

void BandRings::add(BandOutline ring)
{
    double const area = ring.size() > 2 ? areaOf(ring) : 0;
    if (area != 0)
        rings.push_back({std::move(ring), {}, area < 0});
}

std::vector<BandOutline> BandRings::tie()
{
    if (std::any_of(rings.begin(), rings.end(), [](Ring const & r) { return r.is_hole; }))
        findCuts();
    std::vector<BandOutline> outlines;
    for (std::size_t i = 0; i < rings.size(); ++i)
        if (!rings[i].is_hole)
            outlines.push_back(walk(i));
    return outlines;
}

/// All nodes on rows of points, row by row from left to right.
std::vector<BandRings::RowNode> BandRings::rowNodes() const
{
    std::vector<RowNode> nodes;
    for (std::size_t i = 0; i < rings.size(); ++i)
        for (std::size_t at = 0; at < rings[i].nodes.size(); ++at)
            if (RowPlace const place = rowPlace(rings[i].nodes[at]); place.row >= 0)
                nodes.push_back({place, i, at});
    std::sort(nodes.begin(), nodes.end(),
              [](RowNode const & a, RowNode const & b) { return a.order() < b.order(); });
    return nodes;
}

/// The leftmost node of each hole, holes from left to right.
std::vector<std::size_t> BandRings::leftmostOfHoles(std::vector<RowNode> const & nodes) const
{
    constexpr auto NONE = static_cast<std::size_t>(-1);
    auto const is_left = [&](std::size_t a, std::size_t b) {
        return nodes[a].place.order() < nodes[b].place.order();
    };
    std::vector<std::size_t> leftmost(rings.size(), NONE);
    for (std::size_t k = 0; k < nodes.size(); ++k)
        if (std::size_t & best = leftmost[nodes[k].ring]; best == NONE || is_left(k, best))
            best = k;
    std::vector<std::size_t> holes;
    for (std::size_t i = 0; i < rings.size(); ++i)
        if (rings[i].is_hole && leftmost[i] != NONE)
            holes.push_back(leftmost[i]);
    std::stable_sort(holes.begin(), holes.end(), is_left);
    return holes;
}

/// Left of the leftmost node of a hole lies the band, and then a line that reaches farther left: holes taken
/// from left to right find it tied already.
void BandRings::findCuts()
{
    std::vector<RowNode> const nodes = rowNodes();
    std::vector<bool> is_tied(rings.size());
    for (std::size_t i = 0; i < rings.size(); ++i)
        is_tied[i] = !rings[i].is_hole;
    for (std::size_t const hole : leftmostOfHoles(nodes)) {
        std::size_t k = hole;
        // Lines that touch in a point have it both; the hole may come first of the two.
        while (k + 1 < nodes.size() && nodes[k + 1].order() == nodes[hole].order())
            ++k;
        while (k > 0 && nodes[k].place.row == nodes[hole].place.row && !is_tied[nodes[k].ring])
            --k;
        if (nodes[k].place.row != nodes[hole].place.row || !is_tied[nodes[k].ring])
            continue;
        rings[nodes[k].ring].cuts.push_back({nodes[k].at, nodes[hole].ring, nodes[hole].at});
        is_tied[nodes[hole].ring] = true;
    }
    for (Ring & ring : rings)
        std::stable_sort(ring.cuts.begin(), ring.cuts.end(),
                         [](Cut const & a, Cut const & b) { return a.at < b.at; });
}

/// The ring with all that is tied to it; without recursion, for holes may hang on one another.
BandOutline BandRings::walk(std::size_t outer) const
{
    BandOutline line;
    std::vector<Place> stack = {{outer, 0, 0, 0, 0}};
    while (!stack.empty()) {
        Place & place = stack.back();
        Ring const & ring = rings[place.ring];
        std::size_t const size = ring.nodes.size();
        std::size_t const last = (place.start + place.done + size - 1) % size;
        if (auto const cut = place.done > 0 ? ring.cutAt(last, place.next_cut) : std::nullopt) {
            ++place.next_cut;
            addBetween(ring.nodes[last], rings[cut->hole].nodes[cut->to], line);
            stack.push_back({cut->hole, cut->to, 0, 0, cut->at});
            continue;
        }
        if (place.done < size) {
            line.push_back(ring.nodes[(place.start + place.done) % size]);
            ++place.done;
            place.next_cut = 0;
            continue;
        }
        Place const finished = place;
        stack.pop_back();
        if (stack.empty())
            break;
        // Back along the cut.
        BandNode const & inner = ring.nodes[finished.start];
        BandNode const & start = rings[stack.back().ring].nodes[finished.from];
        line.push_back(inner);
        addBetween(inner, start, line);
        line.push_back(start);
    }
    return line;
}

} // namespace Yul::detail
