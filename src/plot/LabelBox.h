// The place of a text on the page.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Yul::detail {

/// A turned rectangle, all measures in one unit of length.
struct LabelBox
{
    float x = 0; ///< centre
    float y = 0;
    float along_x = 1; ///< unit vector along the text
    float along_y = 0;
    float half_width = 0;
    float half_height = 0;

    [[nodiscard]] LabelBox grown(float margin) const
    {
        LabelBox box = *this;
        box.half_width += margin;
        box.half_height += margin;
        return box;
    }

    /// Half the extent of the upright rectangle around it.
    [[nodiscard]] float reachX() const
    {
        return half_width * std::abs(along_x) + half_height * std::abs(along_y);
    }

    [[nodiscard]] float reachY() const
    {
        return half_width * std::abs(along_y) + half_height * std::abs(along_x);
    }

    /// True when the boxes have a point in common: no axis of either parts them.
    [[nodiscard]] bool overlaps(LabelBox const & other) const
    {
        return !isParted(along_x, along_y, other) && !isParted(-along_y, along_x, other) &&
               !isParted(other.along_x, other.along_y, other) &&
               !isParted(-other.along_y, other.along_x, other);
    }

    /// The part of the line from (x1, y1) to (x2, y2) that lies in the box, as fractions of the line. False
    /// when there is none.
    [[nodiscard]] bool covers(float x1, float y1, float x2, float y2, float & from, float & to) const
    {
        float const dx = x2 - x1;
        float const dy = y2 - y1;
        from = 0;
        to = 1;
        return cover(along_x, along_y, half_width, x1, y1, dx, dy, from, to) &&
               cover(-along_y, along_x, half_height, x1, y1, dx, dy, from, to);
    }

private:
    [[nodiscard]] float reach(float axis_x, float axis_y) const
    {
        return half_width * std::abs(along_x * axis_x + along_y * axis_y) +
               half_height * std::abs(along_x * axis_y - along_y * axis_x);
    }

    [[nodiscard]] bool isParted(float axis_x, float axis_y, LabelBox const & other) const
    {
        float const distance = std::abs((other.x - x) * axis_x + (other.y - y) * axis_y);
        return distance > reach(axis_x, axis_y) + other.reach(axis_x, axis_y);
    }

    bool cover(float axis_x,
               float axis_y,
               float half,
               float x1,
               float y1,
               float dx,
               float dy,
               float & from,
               float & to) const
    {
        float const start = (x1 - x) * axis_x + (y1 - y) * axis_y;
        float const step = dx * axis_x + dy * axis_y;
        if (step == 0)
            return std::abs(start) < half;
        float const a = (-half - start) / step;
        float const b = (half - start) / step;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
        return from < to;
    }
};

/// Boxes that are found by place: which ones come near a rectangle is known without asking each.
class LabelBoxes
{
public:
    /// The upright rectangle that holds all places; boxes reach out of it at their own cost.
    LabelBoxes(float x1, float y1, float x2, float y2)
        : left(x1), bottom(y1), tile_width(std::max((x2 - x1) / TILES, 1e-6F)),
          tile_height(std::max((y2 - y1) / TILES, 1e-6F))
    {
    }

    void add(LabelBox const & box)
    {
        boxes.push_back(box);
        Tiles const t =
            tilesOf(box.x - box.reachX(), box.y - box.reachY(), box.x + box.reachX(), box.y + box.reachY());
        for (int j = t.first_row; j <= t.last_row; ++j)
            for (int i = t.first_column; i <= t.last_column; ++i)
                tiles[index(i, j)].push_back(boxes.size() - 1);
    }

    [[nodiscard]] bool isFree(LabelBox const & wanted) const
    {
        return std::none_of(boxes.begin(), boxes.end(),
                            [&](LabelBox const & box) { return box.overlaps(wanted); });
    }

    [[nodiscard]] bool isEmpty() const { return boxes.empty(); }

    /// Calls draw(from, to) for the parts of a line, as fractions of it, that no box covers.
    template <class Draw> void drawAround(float x1, float y1, float x2, float y2, Draw && draw) const
    {
        float from = 0;
        Tiles const t = tilesOf(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
        if (t.first_row == t.last_row && t.first_column == t.last_column &&
            tiles[index(t.first_column, t.first_row)].empty())
            return draw(0.F, 1.F); // nearly every line: it is short, and no label is near
        std::vector<std::array<float, 2>> covered;
        for (int j = t.first_row; j <= t.last_row; ++j) {
            for (int i = t.first_column; i <= t.last_column; ++i) {
                for (std::size_t const k : tiles[index(i, j)]) {
                    std::array<float, 2> part{};
                    if (boxes[k].covers(x1, y1, x2, y2, part[0], part[1]))
                        covered.push_back(part);
                }
            }
        }
        std::sort(covered.begin(), covered.end());
        for (auto const & [start, end] : covered) {
            if (start > from)
                draw(from, start);
            from = std::max(from, end);
        }
        if (from < 1)
            draw(from, 1.F);
    }

private:
    static constexpr int TILES = 32;

    struct Tiles
    {
        int first_column, last_column, first_row, last_row;
    };

    [[nodiscard]] static int tile(float distance, float size)
    {
        return static_cast<int>(std::clamp(distance / size, 0.F, static_cast<float>(TILES - 1)));
    }

    [[nodiscard]] Tiles tilesOf(float x1, float y1, float x2, float y2) const
    {
        return {tile(x1 - left, tile_width), tile(x2 - left, tile_width), tile(y1 - bottom, tile_height),
                tile(y2 - bottom, tile_height)};
    }

    [[nodiscard]] static std::size_t index(int column, int row)
    {
        return static_cast<std::size_t>(row) * TILES + static_cast<std::size_t>(column);
    }

    float left;
    float bottom;
    float tile_width;
    float tile_height;
    std::vector<LabelBox> boxes;
    std::array<std::vector<std::size_t>, static_cast<std::size_t>(TILES) * TILES> tiles;
};

} // namespace Yul::detail
