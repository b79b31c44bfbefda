// The bar that says what the colours mean.
#include "plot/LevelText.h"
#include "plot/Plot.h"

#include <algorithm>
#include <string>
#include <utility>

namespace Yul {
namespace {

/// In text heights.
constexpr float THICKNESS = 1.3F;
constexpr float RIGHT_DISTANCE = 6.F; // from the frame, beyond the tick labels
constexpr float CLOSE_DISTANCE = 1.5F;
constexpr float BOTTOM_DISTANCE = 6.8F; // beyond the corner labels
constexpr float LABEL_GAP = 0.5F;
constexpr float LABEL_HEIGHT = 0.82F;
constexpr float LEAST_LINE = 1.9F; // from label to label

constexpr float SHARE = 0.9F; // of the side of the map
constexpr float LINE_WIDTH = 1.5F;
constexpr float TEXT_WEIGHT = 1.5F;

/// Boxes of one size from the lowest level up, each with its level at its lower end.
class Bar
{
public:
    /// h  text height
    Bar(Graph & graph, detail::ColorBar const & bar, Rect const & place, bool is_upright, float h)
        : graph(graph), bar(bar), place(place), is_upright(is_upright), h(h),
          length(is_upright ? place.getHeight() : place.getWidth()),
          step(length / static_cast<float>(bar.levels.size()))
    {
    }

    void fill()
    {
        graph.setFillStyle(0);
        for (std::size_t i = 0; i < bar.levels.size(); ++i) {
            if (bar.colors[i] < 0)
                continue;
            graph.setFillColor(bar.colors[i]);
            graph.drawFill(boxOf(i));
        }
    }

    void drawBoxes()
    {
        for (std::size_t i = 0; i < bar.levels.size(); ++i)
            graph.drawRect(boxOf(i));
    }

    void drawLabels()
    {
        for (std::size_t i = 0; i < bar.levels.size(); ++i)
            drawLabel(static_cast<float>(i) * step, bar.levels[i]);
        if (!bar.is_open && !detail::isMissing(bar.interval))
            drawLabel(length, bar.levels.back() + bar.interval);
    }

    void drawUnits()
    {
        if (bar.units.empty())
            return;
        graph.setTextAlign(is_upright ? 2 : 1, 1);
        if (is_upright)
            graph.drawText((place.x1 + place.x2) / 2, place.y2 + 0.8F * h, bar.units.c_str());
        else
            graph.drawText(place.x2 + 1.2F * h, place.y1 + (place.getHeight() - LABEL_HEIGHT * h) / 2,
                           bar.units.c_str());
    }

private:
    [[nodiscard]] Rect boxOf(std::size_t i) const
    {
        float const from = static_cast<float>(i) * step;
        return is_upright ? Rect(place.x1, place.y1 + from, place.x2, place.y1 + from + step)
                          : Rect(place.x1 + from, place.y1, place.x1 + from + step, place.y2);
    }

    /// Leaves a label out that would touch the one before.
    void drawLabel(float at, float level)
    {
        std::string const text = detail::levelText(level, bar.interval);
        float const size =
            is_upright ? LEAST_LINE * LABEL_HEIGHT * h : graph.getTextWidth(text.c_str()) + LABEL_HEIGHT * h;
        if (at - size / 2 < free_from)
            return;
        free_from = at + size / 2;
        graph.setTextAlign(is_upright ? 1 : 2, 1);
        if (is_upright)
            graph.drawText(place.x2 + LABEL_GAP * h, place.y1 + at - LABEL_HEIGHT * h / 2, text.c_str());
        else
            graph.drawText(place.x1 + at, place.y1 - (LABEL_GAP + LABEL_HEIGHT) * h, text.c_str());
    }

    Graph & graph;
    detail::ColorBar const & bar;
    Rect place;
    bool is_upright;
    float h;
    float length;
    float step;           // from level to level
    float free_from = -1; // where the last label ends
};

} // namespace

int Plot::setColorBar(detail::ColorBar value)
{
    color_bar = std::move(value);
    return 1;
}

int Plot::drawBar()
{
    if (!graph.isOpen() || !layout.has_bar || color_bar.isEmpty() ||
        color_bar.colors.size() < color_bar.levels.size())
        return 0;
    float const h = layout.text_height;
    Rect const view = graph.getTransform(MAP_TRAN).getViewport();
    bool const is_upright = style.bar == detail::BarPlace::RIGHT;
    // One bar for several maps stands by their common room, else by the map itself.
    bool const is_common = !style.has_full_labels && style.panels.count() > 1;
    Rect const & maps = is_common ? layout.maps : view;
    float const thickness = THICKNESS * h;
    Rect place;
    if (is_upright) {
        float const x = maps.x2 + (style.is_full ? CLOSE_DISTANCE : RIGHT_DISTANCE) * h;
        float const cut = (1 - SHARE) / 2 * maps.getHeight();
        place = Rect(x, maps.y1 + cut, x + thickness, maps.y2 - cut);
    } else {
        float const y = maps.y1 - (style.is_full ? CLOSE_DISTANCE : BOTTOM_DISTANCE) * h;
        float const cut = (1 - SHARE) / 2 * maps.getWidth();
        place = Rect(maps.x1 + cut, y - thickness, maps.x2 - cut, y);
    }
    graph.setTran(PAGE_TRAN);
    drawBarAt(place, is_upright);
    graph.setTran(MAP_TRAN);
    return 1;
}

void Plot::drawBarAt(Rect const & place, bool is_upright)
{
    float const h = layout.text_height;
    Bar bar(graph, color_bar, place, is_upright, h);
    bar.fill();
    graph.setLineColor(findColor(labelColor(), plainColor()));
    graph.setLineStyle(1);
    graph.setLineWidth(LINE_WIDTH);
    bar.drawBoxes();
    startText(LABEL_HEIGHT * h, TEXT_WEIGHT);
    bar.drawLabels();
    bar.drawUnits();
}

} // namespace Yul
