// Colours, images and the drawing front end.
#include "core/String.h"
#include "graphics/Color.h"
#include "graphics/ColorMap.h"
#include "graphics/GTran.h"
#include "graphics/Graph.h"
#include "graphics/Image.h"
#include "graphics/Listener.h"
#include "python/bind/Bind.h"

#include <memory>

namespace Yul::python {
namespace {

/// A copy of the samples as an array (rows, columns).
IntArrayView samplesOf(Image const & image)
{
    auto const samples = std::make_shared<std::vector<int>>(image.getSamples());
    return {{.data = std::shared_ptr<void>(samples, samples->data()),
             .format = "i",
             .item_size = sizeof(int),
             .shape = {image.getHeight(), image.getWidth()}}};
}

} // namespace

void bindColor(Module & m)
{
    Class<Color>(m, "Color")
        .constructor<>()
        .constructor<char const *, float, float, float>()
        .method("getName", &Color::getName)
        .method("setName", &Color::setName)
        .method("setRGB", &Color::setRGB)
        .member("rgb", &Color::rgb)
        .member("value", &Color::value);
}

void bindRGB(Module & m)
{
    Class<RGB>(m, "RGB")
        .constructor<>()
        .constructor<float, float, float>()
        .method("set", &RGB::set)
        .member("r", &RGB::r)
        .member("g", &RGB::g)
        .member("b", &RGB::b);
}

void bindColorMap(Module & m)
{
    Class<ColorMap>(m, "ColorMap")
        .constants({
            {"BACK", ColorMap::BACK},
            {"OFF", ColorMap::OFF},
            {"END", ColorMap::END},
        })
        .constructor<int>()
        .constructor<ColorMap const &>()
        .method("init", &ColorMap::init)
        .method("add", overload<int(char const *, float, float, float)>(&ColorMap::add),
                overload<int(char const *, RGB const &)>(&ColorMap::add))
        .method("read", &ColorMap::read)
        .method("getInd", &ColorMap::getInd)
        .method("getName", &ColorMap::getName)
        .method("get", &ColorMap::get)
        .method("getRGB", &ColorMap::getRGB)
        .method("getIRGB", &ColorMap::getIRGB)
        .method("setValue", &ColorMap::setValue)
        .method("getValue", overload<int(int) const>(&ColorMap::getValue),
                overload<int(char const *)>(&ColorMap::getValue))
        .method("getNum", &ColorMap::getNum)
        .method("getSize", &ColorMap::getSize)
        .method("getNumFill", &ColorMap::getNumFill)
        .method("setNumFill", &ColorMap::setNumFill)
        .method("isColorNear", &ColorMap::isColorNear)
        .print(&ColorMap::print);
}

void bindImage(Module & m)
{
    Class<Image>(m, "Image")
        .constants({
            {"TRANSPARENT", Image::TRANSPARENT},
            {"MAX_COLORS", Image::MAX_COLORS},
        })
        .constructor<>()
        .constructor<int, int>()
        .constructor<Image const &>()
        .method("init", &Image::init)
        .method("initIndexed", &Image::initIndexed)
        .method("clear", &Image::clear)
        .method("getWidth", &Image::getWidth)
        .method("getHeight", &Image::getHeight)
        .method("isEmpty", &Image::isEmpty)
        .method("isIndexed", &Image::isIndexed)
        .method("setPixel", &Image::setPixel)
        .method("getPixel", &Image::getPixel)
        .method("getSamples", [](Image const & image) { return samplesOf(image); })
        .method("setSamples", &Image::setSamples)
        .method("addColor", &Image::addColor)
        .method("setColor", &Image::setColor)
        .method("getColor", &Image::getColor)
        .method("getNumColors", &Image::getNumColors)
        .method("setIndex", &Image::setIndex)
        .method("getIndex", &Image::getIndex)
        .method(
            "toIndexed", [](Image & image) { return image.toIndexed(); }, &Image::toIndexed)
        .method("toRGB", &Image::toRGB)
        .method("resize", &Image::resize)
        .method("read", &Image::read)
        .method("write", &Image::write)
        .method("writeGif", &Image::writeGif);
}

void bindListener(Module & m)
{
    Class<Listener>(m, "Listener")
        .constructor<>()
        .method("callback", [](Listener & listener, char const * name, char const * event) {
            return listener.callback(name, event, nullptr);
        });
}

void bindGraph(Module & m)
{
    Class<Graph>(m, "Graph")
        .base<Listener>()
        .constructor<>()
        .constructor<char const *, char const *>()
        // the device
        .method("setDevice", &Graph::setDevice)
        .method("getDeviceKind", &Graph::getDeviceKind)
        .method("open", overload<int()>(&Graph::open),
                overload<int(char const *, char const *)>(&Graph::open))
        .method("isOpen", &Graph::isOpen)
        .method("close", &Graph::close)
        .method("update", &Graph::update)
        .method("manage", &Graph::manage)
        .method("unmanage", &Graph::unmanage)
        .method("clear", &Graph::clear)
        .method("clearRect", &Graph::clearRect)
        .method("setTitle", &Graph::setTitle)
        .method("setIcon", &Graph::setIcon)
        .method("setFixed", &Graph::setFixed)
        .method("setSize", &Graph::setSize)
        .method("setOffset", &Graph::setOffset)
        .method("setInverse", &Graph::setInverse)
        .method("getInverse", &Graph::getInverse)
        .method("setBackground", &Graph::setBackground)
        .method("getDevice", &Graph::getDevice)
        .method("setCursor", &Graph::setCursor)
        .method("bell", &Graph::bell)
        .method("message", &Graph::message)
        .method("newFrame", overload<int()>(&Graph::newFrame), overload<int(int)>(&Graph::newFrame))
        .method("setFrame", &Graph::setFrame)
        .method("getFrame", &Graph::getFrame)
        .method("deleteFrame", &Graph::deleteFrame)
        .method("getNumFrames", &Graph::getNumFrames)
        .method("isLooping", &Graph::isLooping)
        // transforms
        .method("setTran", &Graph::setTran)
        .method("getTran", &Graph::getTran)
        .method("setWindow", overload<int(Rect const &)>(&Graph::setWindow),
                overload<int(int, Rect const &)>(&Graph::setWindow))
        .method("setViewport", overload<int(Rect const &)>(&Graph::setViewport),
                overload<int(int, Rect const &)>(&Graph::setViewport))
        .method("getWindow", overload<Rect const &() const>(&Graph::getWindow),
                overload<int(Rect &) const>(&Graph::getWindow))
        .method("getViewport", overload<Rect const &() const>(&Graph::getViewport),
                overload<int(Rect &) const>(&Graph::getViewport))
        .method("getMaxViewport", overload<Rect const &() const>(&Graph::getMaxViewport),
                overload<int(Rect &) const>(&Graph::getMaxViewport))
        .method("getDeviceViewport", overload<Rect const &() const>(&Graph::getDeviceViewport),
                overload<int(Rect &) const>(&Graph::getDeviceViewport))
        .method(
            "setViewportAspect",
            [](Graph & graph, Rect const & rect, float aspect) {
                return graph.setViewportAspect(rect, aspect);
            },
            &Graph::setViewportAspect)
        .method("tranPlotWindow", overload<int(float, float, float &, float &) const>(&Graph::tranPlotWindow),
                overload<int(float, float, Point &) const>(&Graph::tranPlotWindow))
        .method("tranPlotView", overload<int(float, float, float &, float &) const>(&Graph::tranPlotView),
                overload<int(float, float, Point &) const>(&Graph::tranPlotView))
        .method("tranWindow",
                overload<int(int, float, float, int, float &, float &) const>(&Graph::tranWindow),
                overload<int(int, float, float, int, Point &) const>(&Graph::tranWindow))
        .method("printTran", &Graph::printTran)
        .method("getTransform", &Graph::getTransform)
        .method("setClip", overload<int(Rect const &)>(&Graph::setClip), overload<int()>(&Graph::setClip))
        // colours
        .method("allocColor", overload<int(float, float, float)>(&Graph::allocColor),
                overload<int(RGB const &)>(&Graph::allocColor))
        // lines
        .method("setLineColor", &Graph::setLineColor)
        .method("setLineWidth", &Graph::setLineWidth)
        .method("setLineStyle", &Graph::setLineStyle)
        .method("drawLine", overload<int(float, float, float, float)>(&Graph::drawLine),
                overload<int(Point const &, Point const &)>(&Graph::drawLine),
                overload<int(Points const &)>(&Graph::drawLine))
        .method("drawRect", &Graph::drawRect)
        .method("drawCircle", &Graph::drawCircle)
        // fills
        .method("setFillColor", &Graph::setFillColor)
        .method("setFillStyle", &Graph::setFillStyle)
        .method("drawFill", overload<int(Points const &)>(&Graph::drawFill),
                overload<int(Rect const &)>(&Graph::drawFill))
        .method("drawFillarea", &Graph::drawFillarea)
        // text
        .method("setFont", &Graph::setFont)
        .method("getFont", &Graph::getFont)
        .method("setTextColor", &Graph::setTextColor)
        .method("setTextHeight", &Graph::setTextHeight)
        .method("setTextWeight", &Graph::setTextWeight)
        .method("setTextExpansion", &Graph::setTextExpansion)
        .method("setTextSpacing", &Graph::setTextSpacing)
        .method("setTextCharWidth", &Graph::setTextCharWidth)
        .method("setTextDirection", &Graph::setTextDirection)
        .method("setTextAlign", &Graph::setTextAlign)
        .method("setTextBoxColor", &Graph::setTextBoxColor)
        .method("setDropColor", &Graph::setDropColor)
        .method("setDropShadow", &Graph::setDropShadow)
        .method("getDropShadow", &Graph::getDropShadow)
        .method("setDropWidth", &Graph::setDropWidth)
        .method("drawText", overload<int(float, float, char const *)>(&Graph::drawText),
                overload<int(Point const &, char const *)>(&Graph::drawText))
        .method("drawFormText", &Graph::drawFormText)
        .method("drawTextLine", &Graph::drawTextLine)
        .method("getTextWidth", &Graph::getTextWidth)
        // marks and symbols
        .method("setMarkColor", &Graph::setMarkColor)
        .method("setMarkSize", &Graph::setMarkSize)
        .method("setMarkType", &Graph::setMarkType)
        .method("setMarkWeight", &Graph::setMarkWeight)
        .method("drawMark", &Graph::drawMark)
        .method("drawMarkLine", &Graph::drawMarkLine)
        .method("setSymbol", &Graph::setSymbol)
        .method("drawSymbol", overload<int(float, float, char const *, float)>(&Graph::drawSymbol),
                overload<int(float, float, char const *, float, float)>(&Graph::drawSymbol))
        .method(
            "drawWindBarb",
            [](Graph & graph, float x, float y, float direction, float speed, float size) {
                return graph.drawWindBarb(x, y, direction, speed, size);
            },
            &Graph::drawWindBarb)
        // images
        .method("setImageAlign", &Graph::setImageAlign)
        .method("drawImage", overload<int(Image const &, float, float)>(&Graph::drawImage),
                overload<int(Image const &, int, float, float)>(&Graph::drawImage))
        .method("getImage", &Graph::getImage)
        // callbacks, without data of their own
        .keeping("addCallback",
                 [](Graph & graph, char const * name, Listener * listener) {
                     return graph.addCallback(name, listener, nullptr);
                 })
        .method("doCallback", &Graph::doCallback)
        .method("callback", [](Graph & graph, char const * name, char const * event) {
            return graph.callback(name, event, nullptr);
        });
}

void bindGTran(Module & m)
{
    Class<GTran>(m, "GTran")
        .constructor<>()
        .constructor<Rect const &>()
        .constructor<GTran const &>()
        .method("set", &GTran::set)
        .method("resize", &GTran::resize)
        .method("setWindow", overload<int(Rect const &)>(&GTran::setWindow),
                overload<int(float, float, float, float)>(&GTran::setWindow))
        .method("setViewport", overload<int(Rect const &)>(&GTran::setViewport),
                overload<int(float, float, float, float)>(&GTran::setViewport))
        .method("getPlot", &GTran::getPlot)
        .method("getNdc", &GTran::getNdc)
        .method("getWindow", &GTran::getWindow)
        .method("getViewport", &GTran::getViewport)
        .method("getClipRect", &GTran::getClipRect)
        .method("tranWindowNdcX", &GTran::tranWindowNdcX)
        .method("tranWindowNdcY", &GTran::tranWindowNdcY)
        .method("tranWindowPlotX", &GTran::tranWindowPlotX)
        .method("tranWindowPlotY", &GTran::tranWindowPlotY)
        .method("tranPlotNdcX", &GTran::tranPlotNdcX)
        .method("tranPlotNdcY", &GTran::tranPlotNdcY)
        .method("tranPlotWindowX", &GTran::tranPlotWindowX)
        .method("tranPlotWindowY", &GTran::tranPlotWindowY)
        .method("tranNdcPlotX", &GTran::tranNdcPlotX)
        .method("tranNdcPlotY", &GTran::tranNdcPlotY)
        .method("getPlotPerWindowX", &GTran::getPlotPerWindowX)
        .method("getPlotPerWindowY", &GTran::getPlotPerWindowY)
        .staticMethod("tranWindowX", &GTran::tranWindowX)
        .staticMethod("tranWindowY", &GTran::tranWindowY)
        .method("isPointsInWindow",
                [](GTran const & tran, Points const & points) { return tran.isPointsInWindow(points); })
        .print(&GTran::print);
}

} // namespace Yul::python
