// Colours by level.
#pragma once

#include "core/Const.h"

#include <string>
#include <vector>

namespace Yul {

class ColorMap;

/// Which colour belongs to which level: explicit level values or an interval with a base, and a list of
/// colours, or none to take the fill colours of the colour table.
class ColorFill
{
public:
    /// As many colours as a plain scale has while nothing else is said.
    static constexpr int NUM_COLORS = 10;
    /// The most colours and the most explicit values.
    static constexpr int MAX_COLORS = 512;

    ColorFill() = default;

    /// Forgets levels and colours.
    int init();

    /// Explicit levels, separated by commas, colons or blanks; an empty or null text takes them away. 0, and
    /// nothing changes, when an item is no number or there are more than MAX_COLORS.
    int setValues(char const * text);

    /// Number of explicit levels.
    [[nodiscard]] int getNumValues() const noexcept { return static_cast<int>(values.size()); }

    /// Const::MISS for an index outside the list.
    [[nodiscard]] float getValue(int i) const noexcept;

    /// All explicit levels.
    [[nodiscard]] std::vector<float> const & getValues() const noexcept { return values; }

    /// 1 to MAX_COLORS, else 0.
    int setNumColors(int n);

    /// The number that was set, else the number of colours in the list, else NUM_COLORS.
    [[nodiscard]] int getNumColors() const noexcept;

    /// Colour names, separated by commas or colons, from the lowest level up; the last one also serves all
    /// levels above. An empty or null text takes them away.
    int setColors(char const * names);

    /// The name for level i, null where there is none: no list, or a negative index.
    [[nodiscard]] char const * getColor(int i) const noexcept;

    /// Colours in that list.
    [[nodiscard]] int getNumListed() const noexcept { return static_cast<int>(colors.size()); }

    /// The number that `setNumColors` set; Const::MISS before.
    [[nodiscard]] int getNumGiven() const noexcept { return num_colors; }

    /// Level interval, and the level that colour 0 belongs to; Const::MISS while not set. NaN and infinite
    /// numbers are refused with 0.
    int setInterval(float value);
    int setBase(float value);

    /// Const::MISS while not set.
    [[nodiscard]] float getInterval() const noexcept { return interval; }

    /// Const::MISS while not set.
    [[nodiscard]] float getBase() const noexcept { return base; }

private:
    std::vector<float> values;
    std::vector<std::string> colors;
    int num_colors = Const::MISS;
    float interval = Const::MISS;
    float base = Const::MISS;
};

} // namespace Yul
