// Opening a plot: settings, device and colours.
#include "core/File.h"
#include "core/Number.h"
#include "core/Output.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "geo/DomainTool.h"
#include "graphics/Postscript.h"
#include "plot/Plot.h"

#include <optional>
#include <string_view>

namespace Yul {
namespace {

struct DeviceName
{
    char letter;
    char const * name;
};

constexpr char const * WINDOW = "display";

/// A device setting is known by its first letter.
constexpr DeviceName SETTING_NAMES[] = {
    {'w', WINDOW},
    {'p', "postscript"},
    {'h', "hpgl"},
    {'m', "meta"},
};

/// So is the answer to the question.
constexpr DeviceName ANSWER_NAMES[] = {
    {'d', WINDOW},
    {'p', "postscript"},
    {'h', "hpgl"},
    {'m', "meta"},
};

template <std::size_t N> char const * deviceName(DeviceName const (&names)[N], std::string_view text)
{
    for (auto const & [letter, name] : names)
        if (!text.empty() && detail::toLower(text.front()) == letter)
            return name;
    return WINDOW;
}

/// The value of the last item "key..." of a parameter list.
std::optional<std::string> findItem(char const * params, std::string_view key)
{
    std::optional<std::string> value;
    for (std::string_view const item : detail::split(detail::viewOf(params), ','))
        if (detail::startsIgnoringCase(item, key))
            value = item.substr(key.size());
    return value;
}

/// A setting, overridden by the item of the parameter list.
std::optional<std::string> findSetting(char const * params, std::string_view key, char const * setting)
{
    std::optional<std::string> value = findItem(params, key);
    if (!value)
        if (char const * const text = Yul::getResrc(setting))
            value = text;
    return value;
}

std::string ask(std::string_view question)
{
    detail::writeOut(question);
    std::string answer;
    File input;
    char c = '\0';
    if (input.open("-", "r") == 0)
        return answer;
    while (input.read(&c, 1) == 1 && c != '\n')
        answer += c;
    return answer;
}

/// The file among the parameters of the PostScript device; empty for a command.
std::string pageFile(std::string_view params)
{
    std::string_view name = params.substr(0, params.find(',')).substr(0, Postscript::FILE_NAME_SIZE);
    if (name.starts_with('|'))
        return {};
    if (name.starts_with('+'))
        name.remove_prefix(1);
    return std::string(name.empty() ? Postscript::DEFAULT_FILE : name);
}

/// The first `size` octets of a setting; empty while it is not set.
std::string shortSetting(char const * name, std::size_t size)
{
    return std::string(detail::viewOf(Yul::getResrc(name)).substr(0, size));
}

} // namespace

Plot::DeviceChoice Plot::chooseDevice(char const * params)
{
    std::string const own_params(detail::viewOf(params));
    std::optional<std::string> const device = findSetting(params, "de=", "device");
    if (device) {
        std::size_t const comma = device->find(',');
        return {deviceName(SETTING_NAMES, *device),
                comma == std::string::npos ? own_params : device->substr(comma + 1)};
    }
    if (!Yul::getResrcBool("inter"))
        return {WINDOW, own_params};
    return {deviceName(ANSWER_NAMES, ask("Display (D) or Postscript (P): ")), own_params};
}

void Plot::applyGeometry(char const * params)
{
    std::optional<std::string> const text = findSetting(params, "ge=", "geometry");
    GeomBox box;
    if (!text || decodeGeometryStr(text->c_str(), box) == 0)
        return;
    if (box.isSize())
        graph.setSize(box.width, box.height);
    if (box.isOffset())
        graph.setOffset(box.x, box.y);
}

void Plot::readSettings(char const * params)
{
    constexpr std::size_t TITLE_SIZE = 80;
    if (Yul::getResrcType("inverse") != 0) {
        is_inverse = Yul::getResrcBool("inverse");
        graph.setInverse(is_inverse);
    }
    if (char const * const background = Yul::getResrc("background"))
        graph.setBackground(background);
    if (Yul::getResrcType("icon") != 0)
        graph.setIcon(Yul::getResrcBool("icon"));
    facts.title = shortSetting("title", TITLE_SIZE);
    facts.plot_name = shortSetting("name", TITLE_SIZE);
    if (facts.plot_name.empty())
        facts.plot_name = Yul::getProgramName();
    graph.setTitle(facts.title.empty() ? facts.plot_name.c_str() : facts.title.c_str());

    for (char const * const type : {"gif", "png"})
        if (detail::startsIgnoringCase(detail::viewOf(Yul::getResrc("output")), type))
            output_type = type;
    if (!output_type.empty())
        graph.setIcon(true);

    logo = detail::viewOf(Yul::getResrc("logo"));
    if (char const * const list = Yul::getResrc("draw"); StrLib::valid(list))
        setDrawing(list);
    facts.zone.set(Yul::getResrc("timezone"));
    setParam(Yul::getResrc("parameter"));
    setParam(params);
}

void Plot::loadColors(char const * params)
{
    colors.init(COLOR_CAPACITY);
    char const * const table = Yul::getResrc("color_table");
    colors.read(StrLib::valid(table) ? table : "yul.clr");
    if (auto const more = findItem(params, "ct="))
        colors.read(more->c_str());
    // What a plot cannot do without, whatever the table holds.
    for (auto const & [name, shade] : {std::pair{"black", 0.F}, {"white", 1.F}, {"gray", 0.5F}})
        if (colors.getInd(name) < 0 && colors.getNum() < colors.getSize())
            colors.add(name, shade, shade, shade);
    for (int i = 0; i < colors.getNum(); ++i) {
        RGB rgb;
        if (colors.get(i, rgb) != 0)
            colors.setValue(i, graph.allocColor(rgb));
    }
}

int Plot::open(char const * params)
{
    std::string const copy(detail::viewOf(params)); // the settings may hold the text that was given
    init();
    if (StrLib::valid(Yul::getResrc("plot_domain")) && DomainTool::set(setting_domain) == 0)
        return 0;

    DeviceChoice const device = chooseDevice(copy.c_str());
    graph.setDevice(device.name.c_str(), device.params.c_str());
    applyGeometry(copy.c_str());
    readSettings(copy.c_str());
    if (graph.open() == 0)
        return 0;
    if (graph.getDeviceKind() == POSTSCRIPT_DEVICE)
        file_name = pageFile(device.params);
    loadColors(copy.c_str());
    graph.addCallback("AnyEvent", this, nullptr);
    panel = 0;
    setUpPanel();
    setDomain(setting_domain);
    return 1;
}

} // namespace Yul
