// Pictures on the plot, and the plot as a picture.
#include "core/File.h"
#include "core/Format.h"
#include "core/Output.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Image.h"
#include "plot/ImageName.h"
#include "plot/Plot.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace Yul {
namespace {

/// In text heights.
constexpr float MARGIN = 0.8F;
constexpr float LABEL_HEIGHT = 3.4F; // of a picture that stands for a label

constexpr float LOGO_SHARE = 0.15F; // of the map's sides, at most

/// 1, 2 or 3 for the left, centre and right place of each row of positions.
int horizontalAlign(int position)
{
    return position % 3 + 1;
}

/// 1 for the lower row, 2 for the middle one, 3 for the upper one.
int verticalAlign(int position)
{
    return position < detail::LOWER_LEFT ? 3 : position < detail::MIDDLE_LEFT ? 1 : 2;
}

/// The file of a picture; empty when there is none.
std::string findImage(std::string const & name)
{
    bool const has_ending = name.find('.', name.find_last_of('/') + 1) != std::string::npos;
    std::string const file = name + (has_ending ? "" : ".png");
    std::string const folders[] = {"", std::string(detail::viewOf(Yul::getResrc("image_path"))),
                                   std::string(detail::viewOf(Yul::getDatabasePath()))};
    for (std::string const & folder : folders) {
        std::string path = folder + (folder.empty() ? "" : "/");
        path += file;
        if (!name.empty() && File::isRegular(path.c_str()))
            return path;
    }
    return {};
}

void hideColor(Image & image, int color)
{
    for (int row = 0; row < image.getHeight(); ++row)
        for (int column = 0; column < image.getWidth(); ++column)
            if (image.getPixel(column, row) == color)
                image.setPixel(column, row, Image::TRANSPARENT);
}

/// The colour as images have it.
int packed(RGB const & rgb)
{
    auto const level = [](float part) { return static_cast<int>(std::lround(part * 255)); };
    return level(rgb.r) << 16 | level(rgb.g) << 8 | level(rgb.b);
}

float anchored(float from, float to, float margin, int align)
{
    return align == 1 ? from + margin : align == 3 ? to - margin : (from + to) / 2;
}

} // namespace

namespace detail {

std::string imageName(std::string_view name, std::string_view type, int frame)
{
    bool const is_loop = frame >= 0;
    std::string text = "output";
    if (!name.empty())
        text = name.substr(0, type == "png" && !is_loop ? 5 : 40);
    if (is_loop)
        text += format("-%2.2d", frame);
    return text.append(".").append(type);
}

} // namespace detail

int Plot::drawImage(char const * file, float x, float y, char const * position)
{
    int const place = position == nullptr ? detail::LOWER_LEFT : getLabelPosIndex(position);
    if (!graph.isOpen() || place == detail::NO_POSITION || std::isnan(x) || std::isnan(y))
        return 0;
    Rect const view = graph.getTransform(MAP_TRAN).getViewport();
    float const margin = MARGIN * layout.text_height;
    if (detail::isMissing(x))
        x = anchored(view.x1, view.x2, margin, horizontalAlign(place));
    if (detail::isMissing(y))
        y = anchored(view.y1, view.y2, margin, verticalAlign(place));
    return placeImage(std::string(detail::viewOf(file)), Point(x, y), place, Point(1, 1));
}

/// most  width and height that the picture is shrunk to, NDC
int Plot::placeImage(std::string const & name, Point const & place, int position, Point const & most)
{
    std::string const file = findImage(name);
    if (file.empty()) {
        Yul::outWarning("Logo not found: %s\n", name.c_str());
        return 0;
    }
    Image image;
    if (image.read(file.c_str()) == 0)
        return 0;
    RGB hidden;
    if (int const index = colors.getInd(transparent_color.c_str());
        index >= 0 && colors.get(index, hidden) != 0)
        hideColor(image, packed(hidden));

    GTran const & page = graph.getTransform(PAGE_TRAN);
    float const shrink =
        std::min({1.F, most.x * page.getPlotPerWindowX() / static_cast<float>(image.getWidth()),
                  most.y * page.getPlotPerWindowY() / static_cast<float>(image.getHeight())});
    auto const sized = [&](int n) {
        return std::max(1, static_cast<int>(std::lround(static_cast<float>(n) * shrink)));
    };
    if (shrink < 1)
        image.resize(sized(image.getWidth()), sized(image.getHeight()));
    graph.setTran(PAGE_TRAN);
    graph.setImageAlign(horizontalAlign(position), verticalAlign(position));
    int const is_drawn = graph.drawImage(image, place.x, place.y);
    graph.setTran(MAP_TRAN);
    return is_drawn;
}

void Plot::drawLogo()
{
    if (logo.empty())
        return;
    std::size_t const colon = logo.rfind(':');
    int position = detail::NO_POSITION;
    if (colon != std::string::npos)
        position = getLabelPosIndex(logo.c_str() + colon + 1);
    std::string const file = position == detail::NO_POSITION ? logo : logo.substr(0, colon);
    if (position == detail::NO_POSITION)
        position = detail::LOWER_RIGHT;
    Rect const view = graph.getTransform(MAP_TRAN).getViewport();
    float const margin = MARGIN * layout.text_height;
    placeImage(file,
               Point(anchored(view.x1, view.x2, margin, horizontalAlign(position)),
                     anchored(view.y1, view.y2, margin, verticalAlign(position))),
               position, Point(LOGO_SHARE * view.getWidth(), LOGO_SHARE * view.getHeight()));
}

/// Draws a label that is a picture, at its own place or at `place`; false for one that is a text.
bool Plot::drawImageLabel(int position, std::string const & text, Point const & place)
{
    constexpr std::size_t PREFIX = 2; // "im"
    if (!detail::isImageLabel(text))
        return false;
    std::string file;
    float x = Const::MISS;
    float y = Const::MISS;
    int const fields = detail::scan(std::string_view(text).substr(PREFIX), ":%[^:]:%f:%f", &file, &x, &y);
    if (fields == 3) {
        placeImage(file, Point(x, y), position, Point(1, 1));
    } else {
        // Beside the frame it grows away from it, inside it from its edge.
        bool const is_upper = position < detail::LOWER_LEFT;
        bool const grows_up = is_upper != style.is_full;
        int const row = grows_up ? detail::LOWER_LEFT : detail::UPPER_LEFT;
        placeImage(file, place, row + position % 3, Point(1, LABEL_HEIGHT * layout.text_height));
    }
    graph.setTran(PAGE_TRAN);
    return true;
}

int Plot::saveImage(char const * name, char const * type)
{
    std::string kind = output_type.empty() ? "png" : output_type;
    if (type != nullptr)
        kind = type;
    std::string const plot_name(StrLib::valid(name) ? name : facts.plot_name);
    if (kind != "gif" && kind != "png") {
        Yul::outWarning("Plot::saveImage: Pictures are of type gif or png: %s\n", kind.c_str());
        return 0;
    }
    int const frames = graph.getNumFrames();
    if (frames < 2)
        return saveFrame(plot_name, kind, -1);
    int is_saved = 1;
    for (int frame = 0; frame < frames; ++frame) {
        graph.setFrame(frame);
        is_saved &= saveFrame(plot_name, kind, frame);
    }
    return is_saved;
}

int Plot::saveFrame(std::string const & name, std::string const & type, int frame)
{
    Image image;
    if (graph.getImage(image) == 0 || image.isEmpty()) {
        Yul::outWarning("Plot::saveImage: The device has no picture to copy\n");
        return 0;
    }
    std::string const folder(detail::viewOf(Yul::getResrc("image_path")));
    std::string const file = (folder.empty() ? "" : folder + "/") + detail::imageName(name, type, frame);
    bool const is_gif = type == "gif";
    if ((is_gif ? image.writeGif(file.c_str()) : image.write(file.c_str())) == 0)
        return 0;
    Yul::outMessage(is_gif ? "Created GIF file: %s\n" : "Created PNG file: %s\n", file.c_str());
    return 1;
}

} // namespace Yul
