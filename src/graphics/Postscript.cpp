#include "graphics/Postscript.h"

#include "core/Format.h"
#include "core/Number.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/String.h"
#include "core/Yul.h"
#include "graphics/PackedColor.h"
#include "time/DateTool.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Yul {
namespace {

constexpr float POINTS_PER_INCH = 72;
constexpr float MAX_WIDTH = 30000; // dots
constexpr float DOT = 0.33F;       // points, as the prolog has it
constexpr std::size_t BUFFER_SIZE = 256U << 10;

constexpr char const * DEFAULT_TITLE = "Yul Plot";
constexpr float DEFAULT_WIDTH = 756;
constexpr float DEFAULT_HEIGHT = 576;

/// Printable areas by name, inches, the long side first. The width of a3 is narrower than the paper less its
/// margins; it is kept.
struct PageSize
{
    std::string_view name;
    float width;
    float height;
};

constexpr PageSize PAGE_SIZES[] = {
    {"letter", 10.5F, 8.0F}, {"legal", 13.5F, 8.0F}, {"11x17", 16.5F, 10.5F},
    {"a4", 11.2F, 7.8F},     {"a3", 15.4F, 11.2F},   {"ansid", 33.5F, 21.5F},
};

/// The dash of line styles 1 to 5; other styles write none.
constexpr std::string_view DASHES[] = {
    "[] 0 setdash\n",        // solid
    "[6] 0 setdash\n",       // dashed
    "[3 6] 0 setdash\n",     // long gaps
    "[6 6 3 6] 0 setdash\n", // dash-dot
    "[2] 0 setdash\n",       // dotted
};

constexpr std::string_view SOLID = DASHES[0];

constexpr std::string_view PROLOG = "/inch {72 mul} def\n"
                                    "/dot {.33 mul} def\n"
                                    "/mv {moveto} def\n"
                                    "/ln {lineto} def\n"
                                    "/lw {setlinewidth} def\n"
                                    "/np {newpath} def\n"
                                    "/cp {closepath} def\n";

/// The trailer restores a saved state and ends a dictionary, also on an EPS page, whose prolog has neither.
constexpr std::string_view EPS_STATE = "1 dict begin save (saveobj) cvn exch def\n";

std::string_view dashOf(int style)
{
    return style >= 1 && style <= static_cast<int>(std::size(DASHES)) ? DASHES[style - 1]
                                                                      : std::string_view();
}

int packColor(float r, float g, float b)
{
    auto const level = [](float part) {
        return static_cast<int>(std::lround((part > 0 ? std::min(part, 1.0F) : 0.0F) * 255));
    };
    return level(r) << 16 | level(g) << 8 | level(b);
}

std::string colorOperator(int color, bool is_color)
{
    if (is_color)
        return detail::format("%4.2f %4.2f %4.2f setrgbcolor\n", detail::redOf(color) / 255.0,
                              detail::greenOf(color) / 255.0, detail::blueOf(color) / 255.0);
    return detail::format("%4.2f setgray\n", detail::grayOf(color));
}

/// Text that stands in a comment: one line of it.
std::string commentText(std::string_view text)
{
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

} // namespace

Postscript::Postscript()
{
    init();
}

Postscript::~Postscript()
{
    close();
}

int Postscript::init()
{
    close();
    is_color_capable = false;
    width_pt = DEFAULT_WIDTH;
    height_pt = DEFAULT_HEIGHT;
    offset_x = 0;
    offset_y = 0;
    file_name = DEFAULT_FILE;
    title = DEFAULT_TITLE;
    is_append = false;
    is_eps = false;
    is_color = false;
    is_portrait = false;
    scale = 1;
    width_factor = 1;
    width_multiplier = 1;
    pens = {};
    image_halign = 0;
    image_valign = 0;
    clip = {};
    return 1;
}

// ---- parameters ----

int Postscript::setParam(char const * params)
{
    auto const items = detail::split(detail::viewOf(params), ',');
    if (!items.front().empty())
        file_name = items.front().substr(0, FILE_NAME_SIZE);
    for (std::size_t i = 1; i < items.size(); ++i)
        applyItem(items[i]);
    for (Pen & pen : pens)
        pen.is_changed = true;
    return 1;
}

void Postscript::applyItem(std::string_view item)
{
    auto const is = [&](std::string_view keyword) { return detail::startsIgnoringCase(item, keyword); };
    auto const readNumber = [&](std::size_t position, float & value) {
        float const number = item.size() > position ? detail::toFloat(item.substr(position)) : 0;
        if (number > 0 && std::isfinite(number))
            value = number;
    };
    auto const setPage = [&](float width, float height) {
        Point const size(POINTS_PER_INCH * width, POINTS_PER_INCH * height);
        if (size.x > 0 && size.y > 0 && std::isfinite(size.x) && std::isfinite(size.y)) {
            width_pt = size.x;
            height_pt = size.y;
        }
    };
    if (is("port") || is("land"))
        is_portrait = is("port");
    else if (is("eps") || is("noeps"))
        is_eps = is("eps");
    else if (is("color") || is("gray"))
        is_color = is("color");
    else if (is("scale"))
        readNumber(6, scale);
    else if (is("lwidth"))
        readNumber(7, width_factor);
    else if (is("sz")) {
        float width = 0;
        float height = 0;
        if (item.size() > 3)
            detail::scan(item.substr(3), "%f:%f", &width, &height);
        setPage(width, height);
    } else
        for (PageSize const & page : PAGE_SIZES)
            if (is(page.name)) {
                setPage(page.width, page.height);
                break;
            }
    is_color_capable = is_color_capable || is("color");
}

// ---- the page ----

int Postscript::open()
{
    close();
    is_append = file_name.starts_with('+');
    bool const is_pipe = file_name.starts_with('|');
    std::string const name = file_name.substr(is_append ? 1 : 0);
    Yul::outMessage(is_pipe     ? "Spooling to: %s\n"
                    : is_append ? "Appending to: %s\n"
                                : "Creating: %s\n",
                    name.c_str());
    if (file.open(name.c_str(), is_append ? "a" : "w") == 0) {
        Yul::outError("Postscript: unable to output to file\n");
        return 0;
    }
    buffer.resize(BUFFER_SIZE);
    used = 0;
    is_broken = false;
    pens = {};
    clip.set(0, 0, width_pt, height_pt);
    writeHeader();
    is_open = true;
    return 1;
}

void Postscript::writeHeader()
{
    std::string const page_title = commentText(title);
    String now;
    DateTool::getCurrent(now);
    std::string const factor = detail::format("%.2f", scale);
    if (is_eps) {
        put("%!PS-Adobe-3.0 EPSF-3.0\n");
        put(is_portrait ? "%%BoundingBox: 0 0 756 576\n" : "%%BoundingBox: 0 0 576 756\n");
    } else
        put("%!PS-Adobe-1.0\n");
    put("%%Title: Yul Graphics Display: " + page_title + "\n");
    put("%%Creator: Yul Postscript Processor-5.5\n");
    put("%%CreationDate: " + std::string(now.get()) + "\n");
    put("%%EndComments\n%%Postscript initialization\n");
    if (!is_eps)
        put("30 dict begin\n/saveobj save def\n");
    put(PROLOG);
    if (!is_portrait)
        put(is_eps ? "90 rotate\n0. inch -8.5 inch translate\n"
                   : "90 rotate\n.25 inch -8.25 inch translate\n");
    else if (!is_eps)
        put(".25 inch .25 inch translate\n");
    put(is_color ? "0 0 0 setrgbcolor\n" : "0 setgray\n");
    put("2 setlinejoin\n1 dot lw\n[] 0 setdash\n");
    put(factor + " " + factor + " scale\n");
    put("%%Begin plot\n%%Yul Plot: " + page_title + "\n");
}

int Postscript::close()
{
    if (!is_open)
        return 0;
    if (is_eps && !is_append)
        put(EPS_STATE);
    put("%%End of plot\n");
    if (!is_append)
        put("saveobj restore\nshowpage\nend\n%%EOF\n");
    flush();
    is_open = false;
    if (file.close() != 0)
        return 1;
    Yul::outError("Postscript::close: unable to write all of the plot to: %s\n", file_name.c_str());
    return 0;
}

int Postscript::getDevice(String & name)
{
    return name.set("postscript");
}

int Postscript::setTitle(char const * new_title)
{
    title = detail::viewOf(new_title);
    return 1;
}

int Postscript::getSize(float & width, float & height)
{
    width = width_pt;
    height = height_pt;
    return 1;
}

float Postscript::getWidth()
{
    return width_pt;
}

float Postscript::getHeight()
{
    return height_pt;
}

int Postscript::getOffset(float & x, float & y)
{
    x = offset_x;
    y = offset_y;
    return 1;
}

int Postscript::getCoords(Rect & rect)
{
    return rect.setu(0, height_pt, width_pt, 0);
}

Rect Postscript::getCoords()
{
    Rect rect;
    getCoords(rect);
    return rect;
}

float Postscript::getDotSize()
{
    return DOT;
}

// ---- pens ----

int Postscript::allocColor(float r, float g, float b)
{
    return packColor(r, g, b);
}

Postscript::Pen * Postscript::findPen(int pen)
{
    if (pen < LINE_PEN || pen > TEXT_PEN)
        return nullptr;
    Pen & found = pens[static_cast<std::size_t>(pen - LINE_PEN)];
    found.is_changed = true;
    return &found;
}

int Postscript::setColor(int pen, int color)
{
    Pen * const found = findPen(pen);
    if (found == nullptr)
        return 0;
    found->color = color;
    return 1;
}

int Postscript::setLineWidth(int pen, float width)
{
    Pen * const found = pen != FILL_PEN ? findPen(pen) : nullptr;
    if (found == nullptr || !(width >= 0))
        return 0;
    found->width = width == 0 ? 1 : width; // Kept: a width of zero draws as one dot.
    return 1;
}

int Postscript::setLineStyle(int pen, int style)
{
    Pen * const found = findPen(pen);
    if (found == nullptr)
        return 0;
    found->line_style = style;
    return 1;
}

int Postscript::setFillStyle(int pen, int style)
{
    Pen * const found = findPen(pen);
    if (found == nullptr)
        return 0;
    found->fill_style = style;
    return 1;
}

/// Colour; for lines also width and dash, in the order that each pen writes them.
std::string const & Postscript::setupOf(int pen)
{
    Pen & p = pens[static_cast<std::size_t>(pen - LINE_PEN)];
    if (!p.is_changed)
        return p.setup;
    float const multiplier = pen == LINE_PEN ? static_cast<float>(width_multiplier) : 1.0F;
    float const width = std::min(p.width * width_factor * multiplier, MAX_WIDTH);
    std::string const width_operator = detail::format("%2.1f dot lw\n", width);
    p.setup = colorOperator(p.color, is_color);
    if (pen == LINE_PEN)
        p.setup.append(width_operator).append(dashOf(p.line_style));
    else if (pen != FILL_PEN)
        p.setup.append(SOLID).append(width_operator);
    p.is_changed = false;
    return p.setup;
}

// ---- output ----

char * Postscript::room(std::size_t size)
{
    if (used + size > buffer.size())
        flush();
    return buffer.data() + used;
}

void Postscript::put(std::string_view text)
{
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, buffer.size());
        std::memcpy(room(piece.size()), piece.data(), piece.size());
        used += piece.size();
        text.remove_prefix(piece.size());
    }
}

void Postscript::flush()
{
    if (!is_broken && used > 0 && file.write({buffer.data(), used}) == 0)
        is_broken = true; // close reports it; nothing is written behind a gap
    used = 0;
}

} // namespace Yul
