// Choice of the font of a Graph.
#include "core/Format.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Graph.h"
#include "graphics/TableFile.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

constexpr std::size_t FONT_NAME_SIZE = 40;
constexpr std::size_t FONT_SPEC_SIZE = 120;
constexpr std::size_t ALIAS_LINE_SIZE = 250;
constexpr char const * FONT_LIST = "yul.fnl";

} // namespace

int Graph::setFont(char const * name)
{
    std::string_view const wanted = detail::viewOf(name).substr(0, FONT_NAME_SIZE);
    if (!device || wanted.empty() || font_name == wanted)
        return 0;
    font_name = wanted;
    font_spec = wanted.front() == '#' ? std::string(wanted) : findFont(font_name);
    font_kind = NO_FONT;
    int is_found = 1;
    if (font_spec.starts_with('#')) {
        if (applyDeviceFont() != 0)
            font_kind = font_spec.find('{') != std::string::npos ? SCALABLE_FONT : DEVICE_FONT;
        else {
            warnFont();
            font_spec = DEFAULT_FONT;
            is_found = 0;
        }
    }
    if (font_kind != NO_FONT)
        return 1;
    font_kind = STROKE_FONT;
    return loadFont() != 0 ? is_found : 0;
}

/// The font text that the font list has for an alias; the name itself when it has none.
std::string Graph::findFont(std::string const & name)
{
    detail::TableFile list;
    std::string_view line;
    if (list.open(detail::databaseFile(FONT_LIST)) != 0)
        while (list.next(line)) {
            std::string alias;
            std::string font_text;
            int const found = detail::scan(line.substr(0, ALIAS_LINE_SIZE), "%s %[^\n]", &alias, &font_text);
            if (found == 2 && alias == name)
                return font_text.substr(0, FONT_SPEC_SIZE);
        }
    return name;
}

void Graph::warnFont() const
{
    Yul::outWarning("setFont: unable to load font: %s, using modern\n", font_spec.c_str());
}

/// Loads the stroke font that the font text names; with a warning the default font instead. Without that
/// one either there is no font, and text draws nothing.
int Graph::loadFont()
{
    if (font.open(detail::databaseFile(font_spec).c_str()) != 0)
        return 1;
    warnFont();
    if (font_spec == DEFAULT_FONT || font.open(detail::databaseFile(DEFAULT_FONT).c_str()) == 0)
        font.close();
    font_spec = DEFAULT_FONT;
    return 0;
}

/// Gives the device its font. A number in braces becomes the size in device units of text of the present
/// height, times that number / 10.
int Graph::applyDeviceFont()
{
    std::size_t const open_brace = font_spec.find('{');
    std::size_t const close_brace = font_spec.find('}', std::min(open_brace, font_spec.size()));
    int factor = 0;
    if (close_brace == std::string::npos ||
        !detail::readInt(std::string_view(font_spec).substr(open_brace + 1, close_brace - open_brace - 1),
                         factor))
        return device->setFont(font_spec.c_str());
    float const window_height = std::abs(getWindow().getHeight());
    float const device_height = device->getHeight();
    float const size = text_height / window_height * device_height * static_cast<float>(factor) / 10;
    Yul::outDebug(5, "Font: %s %.2f %.2f %.2f %.2f\n", font_spec.c_str(), text_height, device_height,
                  window_height, size);
    std::string sized = font_spec;
    sized.replace(open_brace, close_brace - open_brace + 1, detail::format("%.0f", size));
    return device->setFont(sized.c_str());
}

} // namespace Yul
