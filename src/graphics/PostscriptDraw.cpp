// The figures that the PostScript device draws.
#include "core/Format.h"
#include "graphics/GTran.h"
#include "graphics/Image.h"
#include "graphics/PackedColor.h"
#include "graphics/Postscript.h"
#include "graphics/PsNumber.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Yul {
namespace {

constexpr std::size_t LINE_ROOM = 128; // octets that two numbers and an operator take at most

bool isFinite(Point const & point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool isFinite(Points const & points)
{
    return std::all_of(points.all().begin(), points.all().end(),
                       [](Point const & point) { return isFinite(point); });
}

char * copy(char * out, std::string_view text)
{
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// "x y mv": at most LINE_ROOM octets.
char * writePoint(char * out, Point const & point, std::string_view verb)
{
    out = detail::writeFixed2(out, point.x);
    *out++ = ' ';
    return copy(detail::writeFixed2(out, point.y), verb);
}

/// Where a side of an image lies when the image is aligned at a position.
int alignedAt(float position, int size, int align)
{
    double const shift = align == 2 ? size / 2.0 : align == 3 ? size : 0.0;
    return static_cast<int>(std::lround(position - shift));
}

} // namespace

/// The figure that contours are made of, hence in one piece.
int Postscript::drawLine(int pen, float x1, float y1, float x2, float y2)
{
    Point const from(x1, y1);
    Point const to(x2, y2);
    if (!is_open || pen < LINE_PEN || pen > TEXT_PEN || !isFinite(from) || !isFinite(to))
        return 0;
    std::string const & setup = setupOf(pen);
    char * out = room(3 * LINE_ROOM + setup.size());
    out = copy(out, "%%PL:2\n");
    out = copy(out, setup);
    out = copy(out, "np\n");
    out = writePoint(out, from, " mv\n");
    out = writePoint(out, to, " ln\n");
    out = copy(out, "stroke\n");
    used = static_cast<std::size_t>(out - buffer.data());
    return is_broken ? 0 : 1;
}

int Postscript::drawLine(int pen, Points const & points)
{
    if (!is_open || pen < LINE_PEN || pen > TEXT_PEN || points.getNum() < 2 || !isFinite(points))
        return 0;
    put(detail::format("%%%%PL:%d\n", points.getNum()));
    put(setupOf(pen));
    writePath(points.all().data(), points.all().size());
    put("stroke\n");
    return is_broken ? 0 : 1;
}

int Postscript::drawFill(int pen, Points const & points)
{
    if (!is_open || pen < LINE_PEN || pen > TEXT_PEN || points.getNum() < 3 || !isFinite(points))
        return 0;
    put(detail::format("%%%%FA:%d\n", points.getNum()));
    put(setupOf(FILL_PEN));
    writePath(points.all().data(), points.all().size());
    put("cp\nfill\n");
    return is_broken ? 0 : 1;
}

void Postscript::writePath(Point const * points, std::size_t count)
{
    put("np\n");
    for (std::size_t i = 0; i < count; ++i) {
        char * const out = writePoint(room(LINE_ROOM), points[i], i == 0 ? " mv\n" : " ln\n");
        used = static_cast<std::size_t>(out - buffer.data());
    }
}

int Postscript::setImageAlign(int horizontal, int vertical)
{
    image_halign = horizontal;
    image_valign = vertical;
    return 1;
}

int Postscript::drawImage(Image const & image, float x, float y)
{
    if (!is_open || image.isEmpty() || !isFinite(Point(x, y)))
        return 0;
    int const w = image.getWidth();
    int const h = image.getHeight();
    float const far = GTran::PLOT_LIMIT;
    put("gsave\n");
    put(detail::format("%d %d translate\n", alignedAt(std::clamp(x, -far, far), w, image_halign),
                       alignedAt(std::clamp(y, -far, far), h, image_valign)));
    put(detail::format("%d %d scale\n", w, h));
    put(detail::format("/picstr %d string def\n", w));
    put(detail::format("%d %d 8 [ %d 0 0 %d 0 %d ]\n", w, h, w, -h, h));
    put("{ currentfile picstr readhexstring pop }\n");
    put(is_color ? "false 3 colorimage\n" : "image\n");
    writeSamples(image);
    put("grestore\n");
    return is_broken ? 0 : 1;
}

void Postscript::writeSamples(Image const & image)
{
    constexpr int SAMPLES_A_LINE = 40;
    constexpr int WHITE = 0xffffff;
    constexpr char HEX[] = "0123456789ABCDEF";
    char line[6 * SAMPLES_A_LINE + 1];
    for (int row = 0; row < image.getHeight(); ++row) {
        char * out = line;
        auto const writeOctet = [&](int octet) {
            *out++ = HEX[octet >> 4];
            *out++ = HEX[octet & 0xf];
        };
        for (int column = 0; column < image.getWidth(); ++column) {
            int const pixel = image.getPixel(column, row);
            int const color = pixel < 0 ? WHITE : pixel;
            if (is_color) {
                writeOctet(detail::redOf(color));
                writeOctet(detail::greenOf(color));
                writeOctet(detail::blueOf(color));
            } else
                writeOctet(static_cast<int>(std::lround(detail::grayOf(color) * 255)));
            if ((column + 1) % SAMPLES_A_LINE == 0 || column + 1 == image.getWidth()) {
                *out++ = '\n';
                put({line, static_cast<std::size_t>(out - line)});
                out = line;
            }
        }
    }
}

int Postscript::setFont(char const * /*font*/)
{
    return 0;
}

int Postscript::setTextAlign(int /*horizontal*/, int /*vertical*/)
{
    return 1;
}

int Postscript::drawText(Point const & /*point*/, char const * /*text*/)
{
    return 0;
}

Rect Postscript::getClip()
{
    return clip;
}

int Postscript::setClip(float x1, float y1, float x2, float y2)
{
    Point const corners[] = {Point(x1, y1), Point(x2, y1), Point(x2, y2), Point(x1, y2)};
    if (!is_open || !isFinite(corners[0]) || !isFinite(corners[2]))
        return 0;
    clip.set(x1, y1, x2, y2);
    put("initclip\n");
    writePath(corners, std::size(corners));
    put("cp\nclip\n");
    return is_broken ? 0 : 1;
}

int Postscript::setClip(Rect rect)
{
    return setClip(rect.x1, rect.y1, rect.x2, rect.y2);
}

} // namespace Yul
