// One coordinate transform: window to viewport to device.
#pragma once

#include "geo/Point.h"
#include "geo/Rect.h"

#include <algorithm>

namespace Yul {

/// A rectangle given by two corners as they stand, with its extents; both may be negative.
struct Coords : Rect
{
    Coords() = default;
    explicit Coords(Rect const & rect);

    float dx = 0; ///< x2 - x1
    float dy = 0; ///< y2 - y1
};

/// The chain from a plot's own coordinates ("window") over normalised device coordinates ("NDC", the longer
/// side of the device is 1; the viewport lies in it) to device units ("plot"; y runs down from the NDC top).
/// Values in plot coordinates are held to -30000..30000; all others are as they come out. A value that is not
/// a number stays one.
class GTran
{
public:
    static constexpr float PLOT_LIMIT = 30000;

    /// Until `set`: everything is the unit square.
    GTran();
    explicit GTran(Rect const & device);

    /// Makes the transform anew for a device rectangle (corners as they stand): NDC from its proportions,
    /// window and viewport both the whole NDC. 0, and nothing changes, for a rectangle that is not finite or
    /// has no width or height.
    int set(Rect const & device);
    int resize(Rect const & device);

    /// 0, and nothing changes, for a rectangle that is not finite or has no width or height. A rectangle may
    /// run backwards.
    int setWindow(Rect const & rect);
    int setViewport(Rect const & rect);
    int setWindow(float x1, float y1, float x2, float y2);
    int setViewport(float x1, float y1, float x2, float y2);

    /// The device, plot coordinates.
    [[nodiscard]] Rect const & getPlot() const noexcept { return plot; }

    /// The device, NDC.
    [[nodiscard]] Rect const & getNdc() const noexcept { return ndc; }

    /// The window, as it was set.
    [[nodiscard]] Rect const & getWindow() const noexcept { return window; }

    /// The viewport, NDC, as it was set.
    [[nodiscard]] Rect const & getViewport() const noexcept { return viewport; }

    /// The viewport in plot coordinates, ordered.
    [[nodiscard]] Rect const & getClipRect() const noexcept { return clip; }

    /// Device units per window unit, without sign.
    [[nodiscard]] float getPlotPerWindowX() const noexcept;
    [[nodiscard]] float getPlotPerWindowY() const noexcept;

    /// Window coordinates to NDC.
    [[nodiscard]] float tranWindowNdcX(float x) const noexcept { return toFloat(windowToNdcX(x)); }

    /// The same up the page.
    [[nodiscard]] float tranWindowNdcY(float y) const noexcept { return toFloat(windowToNdcY(y)); }

    /// Window to plot coordinates.
    [[nodiscard]] float tranWindowPlotX(float x) const noexcept { return hold(ndcToPlotX(windowToNdcX(x))); }

    /// The same up the page.
    [[nodiscard]] float tranWindowPlotY(float y) const noexcept { return hold(ndcToPlotY(windowToNdcY(y))); }

    /// NDC to plot coordinates.
    [[nodiscard]] float tranNdcPlotX(float x) const noexcept { return hold(ndcToPlotX(x)); }

    /// The same up the page.
    [[nodiscard]] float tranNdcPlotY(float y) const noexcept { return hold(ndcToPlotY(y)); }

    /// Plot coordinates to NDC, and to those of the window.
    [[nodiscard]] float tranPlotNdcX(float x) const noexcept;
    [[nodiscard]] float tranPlotNdcY(float y) const noexcept;
    [[nodiscard]] float tranPlotWindowX(float x) const noexcept;
    [[nodiscard]] float tranPlotWindowY(float y) const noexcept;

    /// A window coordinate of one transform as a window coordinate of another at the same NDC place.
    [[nodiscard]] static float tranWindowX(GTran const & from, GTran const & to, float x) noexcept;
    [[nodiscard]] static float tranWindowY(GTran const & from, GTran const & to, float y) noexcept;

    /// True when the bounding box of the points overlaps or touches the window; false for no points.
    [[nodiscard]] bool isPointsInWindow(int n, Point const * points) const;
    [[nodiscard]] bool isPointsInWindow(Points const & points) const;

    /// Lists the rectangles and scales on standard output.
    int print() const;

private:
    [[nodiscard]] double windowToNdcX(double x) const noexcept
    {
        return (x - window.x1) * view_scale_x + viewport.x1;
    }

    [[nodiscard]] double windowToNdcY(double y) const noexcept
    {
        return (y - window.y1) * view_scale_y + viewport.y1;
    }

    [[nodiscard]] double ndcToPlotX(double x) const noexcept { return x * plot_scale_x + plot.x1; }

    [[nodiscard]] double ndcToPlotY(double y) const noexcept { return (ndc.y2 - y) * plot_scale_y + plot.y1; }

    /// A plot coordinate, held to its range and rounded to the raster of the doubles at 2^24 (some 4e-9), so
    /// that the edges of the device come out exactly and never as a negative zero.
    [[nodiscard]] static float hold(double value) noexcept
    {
        constexpr double RASTER = 1 << 24;
        double const rounded = (value + RASTER) - RASTER;
        return static_cast<float>(
            std::clamp(rounded, static_cast<double>(-PLOT_LIMIT), static_cast<double>(PLOT_LIMIT)));
    }

    [[nodiscard]] static float toFloat(double value) noexcept;
    void update();

    Coords plot;
    Coords ndc;
    double view_scale_x = 1; // window to viewport; double, so that there and back gives the same float
    double view_scale_y = 1;
    double plot_scale_x = 1; // device units per NDC unit
    double plot_scale_y = 1;
    Coords window;
    Coords viewport;
    Rect clip;
};

} // namespace Yul
