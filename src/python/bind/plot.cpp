// Plots, their attributes and the contour layer.
#include "plot/Plot.h"

#include "core/String.h"
#include "geo/Domain.h"
#include "grid/Grid.h"
#include "plot/ColorFill.h"
#include "plot/ContPlot.h"
#include "plot/GeomBox.h"
#include "plot/GridBox.h"
#include "plot/PlotAttr.h"
#include "plot/Tools.h"
#include "python/bind/Bind.h"

namespace Yul::python {

void bindPlotAttr(Module & m)
{
    Class<PlotAttr>(m, "PlotAttr")
        .constructor<>()
        .constructor<char const *>()
        .constructor<char const *, char const *>()
        .constructor<PlotAttr const &>()
        .method("init", &PlotAttr::init)
        .method("set", overload<int(char const *)>(&PlotAttr::set),
                overload<int(char const *, char const *)>(&PlotAttr::set))
        .method("parse", &PlotAttr::parse)
        .method("parseFillStyle", &PlotAttr::parseFillStyle)
        .method("parseMarker", &PlotAttr::parseMarker)
        .method("setColor", &PlotAttr::setColor)
        .method("validColor", &PlotAttr::validColor)
        .method("update", overload<int(PlotAttr const &)>(&PlotAttr::update),
                overload<int(PlotAttr const &, PlotAttr const &)>(&PlotAttr::update))
        .member("width", &PlotAttr::width)
        .member("size", &PlotAttr::size)
        .member("weight", &PlotAttr::weight)
        .member("expansion", &PlotAttr::expansion)
        .member("style", &PlotAttr::style)
        .member("shadow", &PlotAttr::shadow)
        .member("fill", &PlotAttr::fill)
        .member("color", &PlotAttr::color)
        .member("color_name", &PlotAttr::color_name)
        .member("font", &PlotAttr::font)
        .member("label_color", &PlotAttr::label_color)
        .print(&PlotAttr::print);
}

void bindColorFill(Module & m)
{
    Class<ColorFill>(m, "ColorFill")
        .constructor<>()
        .constructor<ColorFill const &>()
        .method("init", &ColorFill::init)
        .method("setValues", &ColorFill::setValues)
        .method("getNumValues", &ColorFill::getNumValues)
        .method("getValue", &ColorFill::getValue)
        .method("setNumColors", &ColorFill::setNumColors)
        .method("getNumColors", &ColorFill::getNumColors)
        .method("setColors", &ColorFill::setColors)
        .method("getColor", &ColorFill::getColor)
        .method("getNumListed", &ColorFill::getNumListed)
        .method("getNumGiven", &ColorFill::getNumGiven)
        .method("setInterval", &ColorFill::setInterval)
        .method("getInterval", &ColorFill::getInterval)
        .method("setBase", &ColorFill::setBase)
        .method("getBase", &ColorFill::getBase);
}

void bindGeomBox(Module & m)
{
    Class<GeomBox>(m, "GeomBox")
        .constructor<>()
        .constructor<float, float, float, float>()
        .method("init", &GeomBox::init)
        .method("isSize", &GeomBox::isSize)
        .method("isOffset", &GeomBox::isOffset)
        .member("width", &GeomBox::width)
        .member("height", &GeomBox::height)
        .member("x", &GeomBox::x)
        .member("y", &GeomBox::y);
}

void bindPlot(Module & m)
{
    Class<Plot>(m, "Plot")
        .base<Listener>()
        .constructor<>()
        .method("init", &Plot::init)
        .method("open", overload<int(char const *)>(&Plot::open), overload<int()>(&Plot::open))
        .method("isOpen", &Plot::isOpen)
        .method("getFile", &Plot::getFile)
        .method("close", &Plot::close)
        .method("getGraph", &Plot::getGraph)
        .method("getColorMap", &Plot::getColorMap)
        .method("findColor", overload<int(char const *, char const *)>(&Plot::findColor),
                overload<int(PlotAttr const &, char const *)>(&Plot::findColor))
        .method("setDrawing", &Plot::setDrawing)
        .method("getDrawing", &Plot::getDrawing)
        .method("isDrawn", &Plot::isDrawn)
        .method("printDrawing", &Plot::printDrawing)
        .method("decodeGeometryStr", &Plot::decodeGeometryStr)
        .method("setParam", &Plot::setParam)
        .method("setDomain", &Plot::setDomain)
        .method("useDomain", &Plot::useDomain)
        .method("getDomain", &Plot::getDomain)
        .method("getFrame", &Plot::getFrame)
        .method("newPanel", &Plot::newPanel)
        .method("drawGraticule", overload<int(PlotAttr const &, float, float)>(&Plot::drawGraticule),
                overload<int(char const *, float, float)>(&Plot::drawGraticule),
                overload<int(char const *)>(&Plot::drawGraticule), overload<int()>(&Plot::drawGraticule))
        .method("drawBorder", &Plot::drawBorder)
        .method("getLabelPosIndex", &Plot::getLabelPosIndex)
        .method("setLabel", overload<int(char const *, char const *)>(&Plot::setLabel),
                overload<int(int, char const *)>(&Plot::setLabel))
        .method("formatLabel", overload<int(char const *, String &) const>(&Plot::formatLabel))
        .method("drawLabels", &Plot::drawLabels)
        .method("drawBar", &Plot::drawBar)
        .method("drawImage", &Plot::drawImage)
        .method("saveImage", overload<int(char const *, char const *)>(&Plot::saveImage),
                overload<int(char const *)>(&Plot::saveImage))
        .method("clearLabels", &Plot::clearLabels)
        .method("drawFormText", &Plot::drawFormText)
        .method("message", &Plot::message);
}

void bindContPlot(Module & m)
{
    Class<ContPlot>(m, "ContPlot")
        .constructor<>()
        .constructor<ContPlot const &>()
        .method("init", &ContPlot::init)
        .method("setInterval", &ContPlot::setInterval)
        .method("setBase", &ContPlot::setBase)
        .method("setLow", &ContPlot::setLow)
        .method("setHigh", &ContPlot::setHigh)
        .method("setValues", &ContPlot::setValues)
        .method("setNumColors", &ContPlot::setNumColors)
        .method("setDash", &ContPlot::setDash)
        .method("setLine", &ContPlot::setLine)
        .method("setLabel", &ContPlot::setLabel)
        .method("setFill", &ContPlot::setFill)
        .method("getFill", &ContPlot::getFill)
        .method("setFilled", &ContPlot::setFilled)
        .method("setEvery", &ContPlot::setEvery)
        .method("setParam", &ContPlot::setParam)
        .method("calcLevels", &ContPlot::calcLevels)
        .method("getNumLevels", &ContPlot::getNumLevels)
        .method("getLevel", &ContPlot::getLevel)
        .method("getInterval", &ContPlot::getInterval)
        .method("getLow", &ContPlot::getLow)
        .method("getHigh", &ContPlot::getHigh)
        .method("draw", &ContPlot::draw)
        .method("drawLines", &ContPlot::drawLines)
        .method("drawTexts", &ContPlot::drawTexts);
}

void bindGridBox(Module & m)
{
    Class<GridBox>(m, "GridBox")
        .constructor<>()
        .method("init", &GridBox::init)
        .method("setTweak", &GridBox::setTweak)
        .method("getTweak", &GridBox::getTweak)
        .method("setValues", &GridBox::setValues)
        .method("setPoints", &GridBox::setPoints)
        .method("setLevel", &GridBox::setLevel)
        .method("getLevel", &GridBox::getLevel)
        .method("getValue", &GridBox::getValue)
        .method("getSide", &GridBox::getSide)
        .method("getNumCross", &GridBox::getNumCross)
        .method("getCrossSide", &GridBox::getCrossSide)
        .method("getCross", &GridBox::getCross)
        .method("getMin", &GridBox::getMin)
        .method("getMax", &GridBox::getMax)
        .method("getPosition", &GridBox::getPosition)
        .method("getSaddle", &GridBox::getSaddle);
}

void bindTools(Module & m)
{
    Class<Tools>(m, "Tools").constructor<>().staticMethod("calcInterval", &Tools::calcInterval);
}

} // namespace Yul::python
