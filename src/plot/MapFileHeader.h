// What a map file says of one of its layers.
#pragma once

#include "core/Const.h"
#include "geo/EarthRange.h"

#include <string>

namespace Yul {

/// One layer of a map file: its name ("coast"), the scale that it was drawn for, and whether its lines are lines or
/// the edges of areas.
class MapFileHeader
{
public:
    /// What the lines of a layer are.
    enum Kind {
        LINE = 0, ///< lines, open or closed
        AREA = 1  ///< rings round an area, without holes; the last point is joined to the first
    };

    static constexpr int MAX_NAME = 15;     ///< octets of a name
    static constexpr int MAX_UNITS = 10000; ///< steps of a degree

    /// Forgets everything; returns 1.
    int init();

    /// 1 to 15 letters, digits, "_" and "-"; 0 and no change for any other name.
    int setName(char const * text);
    /// The scale in millions: 50 for 1 : 50 million. 0 and no change outside 1 to 1000.
    int setScale(int millions);
    /// LINE or AREA; 0 and no change for another kind.
    int setKind(int value);
    /// In how many steps a degree is divided, 1 to 10000; positions are kept to half a step. 0 and no change for
    /// another number.
    int setUnits(int steps);

    /// Valid until the header changes.
    [[nodiscard]] char const * getName() const noexcept { return name.c_str(); }

    /// Millions: 50 for 1 : 50 million.
    [[nodiscard]] int getScale() const noexcept { return scale; }

    /// LINE or AREA.
    [[nodiscard]] int getKind() const noexcept { return kind; }

    /// Steps of a degree.
    [[nodiscard]] int getUnits() const noexcept { return units; }

    /// Number of lines.
    [[nodiscard]] int getNumLines() const noexcept { return num_lines; }

    /// Points of all lines.
    [[nodiscard]] int getNumPoints() const noexcept { return num_points; }

    /// What the lines lie in, to a fiftieth of a degree outward; not set for a layer without lines. Longitudes may
    /// pass 180 a little, where an area does.
    [[nodiscard]] EarthRange const & getRange() const noexcept { return range; }

    /// Lists the layer on one line of standard output.
    int print() const;

private:
    friend class MapFile;

    std::string name;
    int scale = Const::MISS;
    int kind = LINE;
    int units = 1000;
    int num_lines = 0;
    int num_points = 0;
    EarthRange range;
};

} // namespace Yul
