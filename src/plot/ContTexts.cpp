#include "plot/ContTexts.h"

#include "plot/Clip.h"
#include "plot/LevelText.h"
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace Yul {
namespace {

/// In heights of the plot's labels.
constexpr float LABEL_HEIGHT = 0.72F;
constexpr float EXTREMUM_HEIGHT = 1.7F;
constexpr float VALUE_HEIGHT = 0.85F;

constexpr float LABEL_SPACING = 0.24F;     // of the page's longer side
constexpr float EXTREMUM_SPACING = 0.085F; // of the frame, in points of the grid
constexpr float LEAST_PROMINENCE = 0.5F;   // of the contour interval

} // namespace

ContPlot::Texts::Texts(ContPlot & contours, Plot & on_plot, Style const & of_lines)
    : cont(contours), plot(on_plot), graph(on_plot.getGraph()), style(of_lines),
      viewport(graph.getTransform(Plot::MAP_TRAN).getViewport()),
      boxes(viewport.x1, viewport.y1, viewport.x2, viewport.y2)
{
}

/// Prepares for measuring texts.
void ContPlot::Texts::setTextSize(float height, float weight)
{
    graph.setTran(Plot::PAGE_TRAN);
    graph.setTextHeight(height);
    graph.setTextWeight(weight);
}

void ContPlot::Texts::placeLabels(std::vector<detail::DrawnLine> const & lines)
{
    float const share = detail::isMissing(cont.label.size) ? LABEL_HEIGHT : cont.label.size;
    float const height = share * plot.getLayout().text_height;
    float const weight = detail::isMissing(cont.label.weight) ? 1.2F : cont.label.weight;
    setTextSize(height, weight);
    int const color = plot.findColor(cont.label, "black");
    bool const has_color = cont.label.validColor() || !detail::isMissing(cont.label.color);
    std::vector<std::string> texts;
    std::vector<detail::LevelLabel> labels;
    for (float const level : cont.scale.levels) {
        texts.push_back(detail::levelText(level, cont.scale.interval));
        labels.push_back({graph.getTextWidth(texts.back().c_str())});
    }
    detail::LabelRules rules;
    rules.frame = viewport;
    rules.text_height = height;
    rules.spacing = LABEL_SPACING;
    for (auto const & placed : detail::placeLabels(lines, labels, rules, boxes)) {
        auto const level = static_cast<std::size_t>(placed.level);
        detail::LabelBox const & box = placed.box; // the text is centred in it, along it
        float const up_x = -box.along_y;
        float const up_y = box.along_x;
        cont.texts.push_back({texts[level], box.x - up_x * height / 2, box.y - up_y * height / 2, up_x, up_y,
                              height, weight, has_color ? color : style.pen(placed.level).color});
    }
}

/// A power of ten that the range holds some dozens of times.
float ContPlot::Texts::plainStep() const
{
    constexpr float PARTS = 12;
    float const step = (cont.range.max - cont.range.min) / PARTS;
    return step > 0 ? std::pow(10.F, std::floor(std::log10(step))) : 1.F;
}

void ContPlot::Texts::placeExtrema(detail::FieldView const & view,
                                   Find const & find,
                                   Rect const & frame,
                                   double visible_points)
{
    detail::PageScale const page(graph);
    float const step = detail::isMissing(cont.scale.interval) ? plainStep() : cont.scale.interval;
    int const reach =
        std::max(2, static_cast<int>(std::sqrt(visible_points) * static_cast<double>(EXTREMUM_SPACING)));
    for (detail::Extremum const & extremum : detail::findExtrema(view, reach, LEAST_PROMINENCE * step)) {
        float x = 0;
        float y = 0;
        if (find(extremum.column, extremum.row, x, y) && detail::isInside(frame, x, y))
            placeExtremum(extremum, step, page.x(x), page.y(y));
    }
}

/// The letter stands on the place, its value below.
void ContPlot::Texts::placeExtremum(detail::Extremum const & extremum, float step, float x, float y)
{
    float const h = plot.getLayout().text_height;
    float const letter_height = EXTREMUM_HEIGHT * h;
    float const value_height = VALUE_HEIGHT * h;
    float const gap = 0.3F * h;
    char const * const letter = extremum.is_high ? "H" : "L";
    std::string const & color = extremum.is_high ? cont.high_color : cont.low_color;
    std::string const value = detail::levelText(extremum.value, step);

    constexpr float VALUE_WEIGHT = 1.5F;
    constexpr float LETTER_WEIGHT = 3;
    setTextSize(value_height, VALUE_WEIGHT);
    detail::LabelBox box;
    box.half_width = std::max(graph.getTextWidth(value.c_str()), letter_height) / 2 + gap;
    box.half_height = (letter_height + gap + value_height) / 2 + gap;
    box.x = x;
    box.y = y - (gap + value_height) / 2;
    bool const is_inside = x - box.half_width > viewport.x1 && x + box.half_width < viewport.x2 &&
                           box.y - box.half_height > viewport.y1 && box.y + box.half_height < viewport.y2;
    if (!is_inside || !boxes.isFree(box))
        return;
    boxes.add(box);
    float const foot = y - letter_height / 2;
    int const ink = plot.findColor(color.c_str(), "black");
    cont.texts.push_back({value, x, foot - gap - value_height, 0, 1, value_height, VALUE_WEIGHT, ink, true});
    cont.texts.push_back({letter, x, foot, 0, 1, letter_height, LETTER_WEIGHT, ink, true});
}

} // namespace Yul
