// Lines of a graticule inside the frame.
#pragma once

#include "geo/Rect.h"
#include "plot/Graticule.h"

#include <vector>

namespace Yul::detail {

/// How far a drawn line may be from the true one, of the frame.
inline constexpr double FLATNESS = 1e-4;

/// Cuts lines at the frame and notes where they meet it.
class LineCutter
{
public:
    /// graticule  gets the pieces and the ticks; lives longer than this
    LineCutter(Rect const & frame, Graticule & graticule);

    /// A line through points in the plane, broken where one is missing or two are far apart.
    void cut(LineKind kind, float value, std::vector<double> const & x, std::vector<double> const & y);

private:
    void finish();
    void note(Point const & end);
    [[nodiscard]] bool isNew(GraticuleTick::Edge edge, Point const & end) const;
    void straighten();

    Rect frame;
    Rect outer; // a hair larger: lines on the frame belong to it
    Graticule & graticule;
    float size;
    GraticuleLine piece{};
};

} // namespace Yul::detail
