// Parallels and meridians of a map, axis lines of a diagram.
#pragma once

#include "core/Const.h"
#include "geo/Domain.h"
#include "geo/Point.h"
#include "geo/Rect.h"

#include <string>
#include <vector>

namespace Yul::detail {

/// What a line of the graticule is a line of.
enum class LineKind { PARALLEL, MERIDIAN, X_AXIS, Y_AXIS };

/// A piece of a parallel or meridian inside the frame, in the plane.
struct GraticuleLine
{
    LineKind kind = LineKind::PARALLEL;
    float value = 0; ///< degrees, or the axis value
    Points points;
};

/// Where a line meets the frame.
struct GraticuleTick
{
    enum Edge { LEFT, RIGHT, BOTTOM, TOP };

    LineKind kind;
    float value;
    Edge edge;
    float x; ///< in the plane
    float y;
};

struct Graticule
{
    std::vector<GraticuleLine> lines;
    std::vector<GraticuleTick> ticks;
};

/// How far apart the lines are, degrees; Const::MISS for a step that suits the frame.
struct GraticuleStep
{
    float lat = Const::MISS;
    float lon = Const::MISS;
};

/// The lines of a domain inside a frame in its plane. Curves are followed to a hundredth of a percent of the
/// frame, cut at the frame, and broken where the plane has its seam or a line leaves the projection. Round a
/// pole only every 90th meridian goes through to it. Axis domains get lines of equal x and y; diagrams none.
[[nodiscard]] Graticule makeGraticule(Domain const & domain, Rect const & frame, GraticuleStep const & step);

/// "40°N", "95.5°W", "0°", "180°"; plain numbers for axes.
[[nodiscard]] std::string graticuleLabel(LineKind kind, float value);

} // namespace Yul::detail
