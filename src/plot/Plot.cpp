#include "plot/Plot.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/VarArgs.h"
#include "core/Yul.h"
#include "plot/Geometry.h"

#include <cmath>
#include <cstdarg>
#include <string_view>

namespace Yul {
namespace {

struct Parameter
{
    std::string_view key;
    std::string_view value;
};

Parameter split(std::string_view item)
{
    std::size_t const equals = item.find('=');
    if (equals == std::string_view::npos)
        return {item, {}};
    return {item.substr(0, equals), item.substr(equals + 1)};
}

bool hasExtent(Rect const & rect)
{
    return !detail::isMissing(rect.x1) && std::isfinite(rect.getWidth()) && std::isfinite(rect.getHeight()) &&
           rect.getWidth() > 0 && rect.getHeight() > 0;
}

} // namespace

Plot::Plot()
{
    init();
}

int Plot::init()
{
    graph.close();
    colors.init(COLOR_CAPACITY);
    draw.reset();
    has_draw_list = is_inverse = false;
    file_name.clear();
    logo.clear();
    transparent_color.clear();
    output_type.clear();
    border_color.clear();
    style = {};
    color_bar = {};
    panel = 0;
    layout = {};
    setting_domain.init();
    domain.init();
    steps = {};
    labels = {};
    facts = {};
    return 1;
}

int Plot::close()
{
    if (!graph.isOpen())
        return 0;
    int const is_saved = output_type.empty() ? 1 : saveImage(nullptr);
    return graph.close() & is_saved;
}

int Plot::findColor(char const * name, char const * fallback)
{
    for (char const * const wanted : {name, fallback}) {
        int const known = colors.getNum();
        int const index = colors.getInd(wanted);
        if (index < 0)
            continue;
        RGB rgb;
        if (index >= known && index < colors.getNum() && colors.get(index, rgb) != 0)
            colors.setValue(index, graph.allocColor(rgb));
        return colors.getValue(index);
    }
    return graph.allocColor(0, 0, 0);
}

int Plot::findColor(PlotAttr const & attr, char const * fallback)
{
    bool const is_index = attr.color_name[0] == '\0' && !detail::isMissing(attr.color);
    return is_index ? colors.getValue(attr.color) : findColor(attr.color_name, fallback);
}

int Plot::setDrawing(char const * list)
{
    draw = detail::decodeDrawList(list);
    has_draw_list = true;
    return 1;
}

int Plot::getDrawing(int i) const noexcept
{
    return i >= 0 && i < detail::DRAW_SWITCHES && draw[static_cast<std::size_t>(i)] ? 1 : 0;
}

bool Plot::isDrawn(int i) const noexcept
{
    return !has_draw_list || getDrawing(i) != 0;
}

int Plot::printDrawing() const
{
    std::string list;
    for (int i = 0; i < detail::DRAW_SWITCHES; ++i)
        list += detail::format("draw[%d] = %d\n", i, getDrawing(i));
    detail::writeOut(list);
    return 1;
}

int Plot::decodeGeometryStr(char const * text, GeomBox & box) const
{
    return detail::decodeGeometry(text, box);
}

int Plot::setParam(char const * params)
{
    for (std::string_view const item : detail::split(detail::viewOf(params), ',')) {
        auto const [key, value] = ::Yul::split(item);
        std::string const text(value);
        auto const is = [&key = key](std::string_view name) { return detail::sameIgnoringCase(key, name); };
        if (is("ti")) {
            facts.title = text;
            style.has_title = !text.empty();
            graph.setTitle(text.c_str());
        } else if (is("bg")) {
            graph.setBackground(text.c_str());
        } else if (is("ic")) {
            graph.setIcon(true);
        } else if (is("col")) {
            border_color = text;
        } else if (is("pan")) {
            detail::decodePanels(text.c_str(), style.panels);
        } else if (is("full")) {
            style.is_full = true;
        } else if (is("full_lab")) {
            style.has_full_labels = true;
        } else if (is("bar")) {
            style.bar = detail::decodeBarPlace(text.c_str());
        } else if (is("inv")) {
            is_inverse = true;
            graph.setInverse(true);
        } else if (is("lo")) {
            logo = text;
        } else if (is("trans_col")) {
            transparent_color = text;
        } else if (is("tz")) {
            facts.zone.set(text.c_str());
        }
    }
    return graph.isOpen() ? setUpPanel() : 1;
}

int Plot::setDomain(Domain const & value)
{
    if (!hasExtent(value.getLimits()))
        return 0;
    domain = value;
    return showDomain();
}

int Plot::useDomain(Domain const & value)
{
    return hasExtent(domain.getLimits()) ? showDomain() : setDomain(value);
}

int Plot::showDomain()
{
    if (!graph.isOpen())
        return 1;
    Rect const & frame = domain.getLimits();
    graph.setTran(MAP_TRAN);
    graph.setWindow(frame);
    graph.setViewportAspect(layout.map, frame.getWidth() / frame.getHeight());
    return 1;
}

int Plot::setUpPanel()
{
    graph.setTran(PAGE_TRAN);
    layout = detail::layOut(graph.getMaxViewport(), style, panel);
    graph.setTran(MAP_TRAN);
    return hasExtent(domain.getLimits()) ? showDomain() : 1;
}

int Plot::newPanel(char const * params)
{
    setParam(params);
    panel = (panel + 1) % style.panels.count();
    domain = setting_domain;
    labels = {};
    color_bar = {};
    return graph.isOpen() ? setUpPanel() : 0;
}

int Plot::drawFormText(float x, float y, char const * format, ...)
{
    if (format == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return graph.drawText(x, y, detail::vformat(format, args).c_str());
}

int Plot::message(char const * format, ...)
{
    if (format == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return graph.message("%s", detail::vformat(format, args).c_str());
}

int Plot::callback(char const * name, char const * event, void const * data)
{
    return Listener::callback(name, event, data);
}

} // namespace Yul
