#include "graphics/Image.h"

#include <new>

namespace Yul {

int Image::init(int image_width, int image_height)
{
    clear();
    if (image_width <= 0 || image_height <= 0 ||
        static_cast<long long>(image_width) * image_height > MAX_PIXELS)
        return 0;
    try {
        pixels.assign(static_cast<std::size_t>(image_width) * static_cast<std::size_t>(image_height),
                      TRANSPARENT);
    } catch (std::bad_alloc const &) {
        return 0;
    }
    width = image_width;
    height = image_height;
    return 1;
}

int Image::clear()
{
    width = 0;
    height = 0;
    pixels = {};
    return 1;
}

int Image::setPixel(int column, int row, int color)
{
    if (!contains(column, row))
        return 0;
    pixels[indexOf(column, row)] = color < 0 ? TRANSPARENT : color & 0xffffff;
    return 1;
}

int Image::getPixel(int column, int row) const
{
    return contains(column, row) ? pixels[indexOf(column, row)] : TRANSPARENT;
}

} // namespace Yul
