#include "plot/LineLabels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace Yul::detail {
namespace {

/// In text heights.
constexpr float PADDING = 0.45F;   // kept clear around a label
constexpr float MOST_BEND = 0.55F; // how far the line may leave the text's axis
constexpr float KEEP_APART = 0.5F; // between labels of different levels

struct PagePoint
{
    float x;
    float y;
};

/// The cell on the other side of a cell's side, and the side by which it is entered.
struct Step
{
    int column;
    int row;
    int entered;
};

constexpr std::array<Step, 4> STEPS = {{{0, -1, 2}, {1, 0, 3}, {0, 1, 0}, {-1, 0, 1}}};

/// Finds the continuation of lines.
class LineNet
{
public:
    explicit LineNet(std::span<DrawnLine const> all_lines) : lines(all_lines)
    {
        if (lines.empty())
            return;
        first_row = lines.front().row;
        std::size_t at = 0;
        for (int row = first_row; row <= lines.back().row + 1; ++row) {
            while (at < lines.size() && lines[at].row < row)
                ++at;
            row_starts.push_back(at);
        }
    }

    /// The ends of the line beyond one end of a line (end 1 or 2), until the given length or the line's end.
    /// path  starts at the middle of the line; returns the length reached.
    float follow(std::size_t start, int end, float length, std::vector<PagePoint> & path) const
    {
        DrawnLine const * line = &lines[start];
        PagePoint last = {(line->x1 + line->x2) / 2, (line->y1 + line->y2) / 2};
        path.assign(1, last);
        float reached = 0;
        while (true) {
            PagePoint const next = end == 1 ? PagePoint{line->x1, line->y1} : PagePoint{line->x2, line->y2};
            float const step = std::hypot(next.x - last.x, next.y - last.y);
            if (reached + step >= length) {
                float const t = step > 0 ? (length - reached) / step : 0;
                path.push_back({last.x + t * (next.x - last.x), last.y + t * (next.y - last.y)});
                return length;
            }
            reached += step;
            path.push_back(next);
            last = next;
            if (path.size() > MOST_STEPS)
                return reached;
            int const side = end == 1 ? line->side1 : line->side2;
            line = side >= 0 ? neighbour(*line, side, end) : nullptr;
            if (line == nullptr)
                return reached;
        }
    }

private:
    static constexpr std::size_t MOST_STEPS = 4000;

    /// The line of the same level that goes on in the next cell; end: its far end.
    [[nodiscard]] DrawnLine const * neighbour(DrawnLine const & line, int side, int & end) const
    {
        Step const step = STEPS[static_cast<std::size_t>(side)];
        int const row = line.row + step.row;
        int const column = line.column + step.column;
        int const row_index = row - first_row;
        if (row_index < 0 || row_index + 1 >= static_cast<int>(row_starts.size()))
            return nullptr;
        auto const begin =
            lines.begin() + static_cast<std::ptrdiff_t>(row_starts[static_cast<std::size_t>(row_index)]);
        auto const stop =
            lines.begin() + static_cast<std::ptrdiff_t>(row_starts[static_cast<std::size_t>(row_index) + 1]);
        auto at =
            std::lower_bound(begin, stop, column, [](DrawnLine const & l, int c) { return l.column < c; });
        for (; at != stop && at->column == column; ++at) {
            if (at->level != line.level)
                continue;
            if (at->side1 == step.entered) {
                end = 2;
                return &*at;
            }
            if (at->side2 == step.entered) {
                end = 1;
                return &*at;
            }
        }
        return nullptr;
    }

    std::span<DrawnLine const> lines;
    int first_row = 0;
    std::vector<std::size_t> row_starts;
};

/// A place for a label: the box of the text with its padding, and how much the line bends in it.
struct Candidate
{
    LabelBox box;
    float bend;
};

class Placer
{
public:
    Placer(std::span<DrawnLine const> all_lines, LabelRules const & label_rules)
        : net(all_lines), rules(label_rules)
    {
    }

    [[nodiscard]] std::optional<Candidate> tryAt(std::size_t line, float text_width)
    {
        float const half = text_width / 2 + PADDING * rules.text_height;
        if (net.follow(line, 1, half, before) < half || net.follow(line, 2, half, behind) < half)
            return std::nullopt;
        PagePoint from = before.back();
        PagePoint to = behind.back();
        if (to.x < from.x)
            std::swap(from, to);
        float const chord = std::hypot(to.x - from.x, to.y - from.y);
        if (chord < 1.8F * half)
            return std::nullopt;

        Candidate place{};
        place.box.along_x = (to.x - from.x) / chord;
        place.box.along_y = (to.y - from.y) / chord;
        place.box.half_width = half;
        place.box.half_height = (0.5F + PADDING) * rules.text_height;
        auto const [low, high] = offsets(from, place.box);
        place.bend = high - low;
        if (place.bend > MOST_BEND * rules.text_height)
            return std::nullopt;
        float const middle = (low + high) / 2; // the text sits in the middle of the bend
        place.box.x = (from.x + to.x) / 2 - middle * place.box.along_y;
        place.box.y = (from.y + to.y) / 2 + middle * place.box.along_x;
        if (!isInFrame(place.box))
            return std::nullopt;
        return place;
    }

private:
    /// How far the line lies to the left of the chord, least and most.
    [[nodiscard]] std::array<float, 2> offsets(PagePoint const & from, LabelBox const & box) const
    {
        std::array<float, 2> range = {0, 0};
        for (auto const * path : {&before, &behind}) {
            for (PagePoint const & p : *path) {
                float const offset = (p.y - from.y) * box.along_x - (p.x - from.x) * box.along_y;
                range = {std::min(range[0], offset), std::max(range[1], offset)};
            }
        }
        return range;
    }

    [[nodiscard]] bool isInFrame(LabelBox const & box) const
    {
        return box.x - box.reachX() > rules.frame.x1 && box.x + box.reachX() < rules.frame.x2 &&
               box.y - box.reachY() > rules.frame.y1 && box.y + box.reachY() < rules.frame.y2;
    }

    LineNet net;
    LabelRules const & rules;
    std::vector<PagePoint> before;
    std::vector<PagePoint> behind;
};

} // namespace

std::vector<LineLabel> placeLabels(std::span<DrawnLine const> lines,
                                   std::span<LevelLabel const> levels,
                                   LabelRules const & rules,
                                   LabelBoxes & boxes)
{
    std::vector<std::vector<std::size_t>> members(levels.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].side1 >= 0)
            members[static_cast<std::size_t>(lines[i].level)].push_back(i);

    Placer placer(lines, rules);
    std::vector<LineLabel> labels;
    std::vector<Candidate> candidates;
    for (std::size_t level = 0; level < levels.size(); ++level) {
        if (levels[level].width <= 0)
            continue;
        candidates.clear();
        auto const & own = members[level];
        std::size_t const stride =
            std::max<std::size_t>(1, own.size() / static_cast<std::size_t>(rules.most_candidates));
        for (std::size_t i = stride / 2; i < own.size(); i += stride)
            if (auto const place = placer.tryAt(own[i], levels[level].width))
                candidates.push_back(*place);
        std::stable_sort(candidates.begin(), candidates.end(),
                         [](Candidate const & a, Candidate const & b) { return a.bend < b.bend; });
        std::size_t const first_own = labels.size();
        for (Candidate const & place : candidates) {
            auto const is_near = [&](LineLabel const & label) {
                return std::hypot(label.box.x - place.box.x, label.box.y - place.box.y) < rules.spacing;
            };
            if (std::any_of(labels.begin() + static_cast<std::ptrdiff_t>(first_own), labels.end(), is_near) ||
                !boxes.isFree(place.box.grown(KEEP_APART * rules.text_height)))
                continue;
            boxes.add(place.box);
            labels.push_back({place.box, static_cast<int>(level)});
        }
    }
    return labels;
}

} // namespace Yul::detail
