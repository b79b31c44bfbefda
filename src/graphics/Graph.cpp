#include "graphics/Graph.h"

#include "core/Format.h"
#include "core/StrLib.h"
#include "core/VarArgs.h"
#include "core/Yul.h"
#include "graphics/Image.h"
#include "graphics/Postscript.h"

#include <algorithm>
#include <cstdarg>
#include <iterator>

namespace Yul {
namespace {

/// The devices by name; `make` is null for one that this build has not got. The first row stands for every
/// name that has no row of its own.
struct DeviceRow
{
    std::string_view name;
    DeviceKind kind;
    std::string_view title;
    std::unique_ptr<Device> (*make)();
};

constexpr DeviceRow DEVICES[] = {
    {"", WINDOW_DEVICE, "window", nullptr},
    {"postscript", POSTSCRIPT_DEVICE, "PostScript",
     []() -> std::unique_ptr<Device> { return std::make_unique<Postscript>(); }},
    {"hpgl", HPGL_DEVICE, "HP-GL", nullptr},
    {"meta", META_DEVICE, "metafile", nullptr},
};

DeviceRow const & findDevice(std::string_view name)
{
    auto const * const found = std::find_if(std::begin(DEVICES), std::end(DEVICES),
                                            [&](DeviceRow const & row) { return row.name == name; });
    return found != std::end(DEVICES) ? *found : DEVICES[0];
}

} // namespace

Graph::Graph()
{
    initState();
}

Graph::Graph(char const * device_name, char const * params) : Graph()
{
    setDevice(device_name, params);
}

Graph::~Graph()
{
    close();
}

/// All but the device, what was told about it, and the device-font flag, which outlives an opening.
void Graph::initState()
{
    trans.fill(GTran());
    current = 0;
    font_kind = STROKE_FONT;
    font_name = DEFAULT_FONT;
    font_spec = DEFAULT_FONT;
    symbol_name = DEFAULT_SYMBOLS;
    line_color = 1;
    line_width = -1; // never sent: the first real width always reaches the device
    line_style = 1;
    fill_color = 1;
    fill_style = 0;
    text_color = 1;
    text_weight = 1;
    text_height = 0.01F;
    text_expansion = 1;
    text_spacing = 0.25F;
    text_char_width = 0;
    text_halign = 0;
    text_valign = 0;
    text_up_x = 0;
    text_up_y = 1;
    text_box_color = 0;
    drop_color = 1;
    drop_count = 0;
    drop_width = 0;
    mark_type = 1;
    mark_size = 0.01F;
    mark_weight = 1;
    mark_color = 1;
    scratch.clear();
}

int Graph::setDevice(char const * name, char const * params)
{
    close();
    DeviceRow const & row = findDevice(detail::viewOf(name));
    device_kind = row.kind;
    auto const items = detail::split(detail::viewOf(params), ',');
    hfont = std::find(items.begin(), items.end(), "hfont") != items.end() ? 1 : 0;
    if (row.make == nullptr) {
        Yul::outError("Graph::setDevice: The %s device is not part of this build\n", row.title.data());
        return 1;
    }
    device = row.make();
    device->setParam(params);
    return 1;
}

int Graph::open()
{
    if (is_open)
        return 1;
    initState();
    if (device_kind == NO_DEVICE)
        setDevice("", "");
    if (!device)
        return 0;
    device->setFixed(is_fixed);
    if (device->open() == 0)
        return 0;
    is_open = true;
    for (GTran & each : trans)
        each.set(device->getCoords());
    loadFont();
    loadSymbols();
    device->addCallback("AnyEvent", this, nullptr);
    return 1;
}

int Graph::open(char const * device_name, char const * params)
{
    setDevice(device_name, params);
    return open();
}

int Graph::close()
{
    if (!device && device_kind == NO_DEVICE)
        return 0;
    int const is_whole = is_open ? device->close() : 1;
    device.reset();
    device_kind = NO_DEVICE;
    is_open = false;
    return is_whole;
}

// ---- the device ----

int Graph::update()
{
    return device ? device->update() : 0;
}

int Graph::manage()
{
    return device ? device->manage() : 0;
}

int Graph::unmanage()
{
    return device ? device->unmanage() : 0;
}

int Graph::clear()
{
    return device ? device->clear() : 0;
}

int Graph::clearRect(Rect const & rect)
{
    return device ? device->clearRect(toPlot(rect)) : 0;
}

int Graph::setTitle(char const * title)
{
    return device ? device->setTitle(title) : 0;
}

int Graph::setIcon(bool is_icon)
{
    return device ? device->setIcon(is_icon) : 0;
}

int Graph::setFixed(bool fixed)
{
    if (!device)
        return 0;
    is_fixed = fixed;
    return device->setFixed(fixed);
}

int Graph::setSize(float width, float height)
{
    return device ? device->setSize(width, height) : 0;
}

int Graph::setOffset(float x, float y)
{
    return device ? device->setOffset(x, y) : 0;
}

int Graph::setInverse(bool is_inverse)
{
    return device ? device->setInverse(is_inverse) : 0;
}

int Graph::getInverse()
{
    return device ? device->getInverse() : 0;
}

int Graph::setBackground(char const * color)
{
    return device ? device->setBackground(color) : 0;
}

int Graph::getDevice(String & name)
{
    return device ? device->getDevice(name) : 0;
}

int Graph::setCursor(int cursor)
{
    return device ? device->setCursor(cursor) : 0;
}

int Graph::bell(int volume)
{
    return device ? device->bell(volume) : 0;
}

int Graph::message(char const * format, ...)
{
    if (!device || format == nullptr)
        return 0;
    std::va_list list;
    va_start(list, format);
    detail::VarArgs args(list);
    va_end(list);
    return device->message(detail::vformat(format, args).c_str());
}

int Graph::newFrame()
{
    return device ? device->newFrame() : 0;
}

int Graph::newFrame(int frame)
{
    return device ? device->newFrame(frame) : 0;
}

int Graph::setFrame(int frame)
{
    return device ? device->setFrame(frame) : 0;
}

int Graph::getFrame()
{
    return device ? device->getFrame() : 0;
}

int Graph::deleteFrame(int frame)
{
    return device ? device->deleteFrame(frame) : 0;
}

int Graph::getNumFrames()
{
    return device ? device->getNumFrames() : 0;
}

int Graph::isLooping()
{
    return device ? device->isLooping() : 0;
}

int Graph::addCallback(char const * name, Listener * listener, void const * data)
{
    return device ? device->addCallback(name, listener, data) : 0;
}

int Graph::doCallback(char const * name, char const * event)
{
    return device ? device->doCallback(name, event) : 0;
}

int Graph::callback(char const * name, char const * event, void const * data)
{
    return device ? device->callback(name, event, data) : 0;
}

} // namespace Yul
