#include "graphics/Image.h"

#include "graphics/PackedColor.h"
#include "graphics/Quantize.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <utility>

namespace Yul {
namespace {

constexpr int packed(int color) noexcept
{
    return color < 0 ? Image::TRANSPARENT : color & 0xffffff;
}

bool isSize(int width, int height)
{
    return width > 0 && height > 0 && static_cast<long long>(width) * height <= Image::MAX_PIXELS;
}

/// Where the samples of a row of `to` samples lie in one of `from`.
struct Span
{
    double low;
    double high;
};

Span spanOf(int i, int from, int to)
{
    double const scale = static_cast<double>(from) / to;
    return {i * scale, (i + 1) * scale};
}

/// How much of sample i lies in the span.
double share(Span const & span, int i)
{
    return std::max(0.0, std::min(span.high, i + 1.0) - std::max(span.low, static_cast<double>(i)));
}

/// The mean colour of a rectangle of samples.
int meanOf(Image const & image, Span const & across, Span const & down)
{
    std::array<double, 3> sum{};
    double weight = 0;
    for (int row = static_cast<int>(down.low); row < image.getHeight() && row < down.high; ++row)
        for (int column = static_cast<int>(across.low); column < image.getWidth() && column < across.high;
             ++column) {
            int const color = image.getPixel(column, row);
            double const part = color < 0 ? 0 : share(across, column) * share(down, row);
            weight += part;
            sum[0] += part * detail::redOf(color);
            sum[1] += part * detail::greenOf(color);
            sum[2] += part * detail::blueOf(color);
        }
    if (weight <= (across.high - across.low) * (down.high - down.low) / 2)
        return Image::TRANSPARENT;
    auto const level = [&](double part) { return static_cast<int>(std::lround(part / weight)); };
    return level(sum[0]) << 16 | level(sum[1]) << 8 | level(sum[2]);
}

} // namespace

int Image::init(int image_width, int image_height)
{
    clear();
    if (!isSize(image_width, image_height))
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

int Image::initIndexed(int image_width, int image_height)
{
    clear();
    if (!isSize(image_width, image_height))
        return 0;
    try {
        indices.assign(static_cast<std::size_t>(image_width) * static_cast<std::size_t>(image_height), 0);
    } catch (std::bad_alloc const &) {
        return 0;
    }
    colors = {TRANSPARENT};
    width = image_width;
    height = image_height;
    return 1;
}

int Image::clear()
{
    width = 0;
    height = 0;
    pixels = {};
    indices = {};
    colors = {};
    return 1;
}

int Image::setPixel(int column, int row, int color)
{
    if (!contains(column, row))
        return 0;
    if (isIndexed())
        return setIndex(column, row, addColor(color));
    pixels[indexOf(column, row)] = packed(color);
    return 1;
}

int Image::getPixel(int column, int row) const
{
    if (!contains(column, row))
        return TRANSPARENT;
    std::size_t const i = indexOf(column, row);
    return isIndexed() ? colors[indices[i]] : pixels[i];
}

std::vector<int> Image::getSamples() const
{
    return isIndexed() ? std::vector<int>(indices.begin(), indices.end()) : pixels;
}

int Image::setSamples(std::span<int const> samples)
{
    if (samples.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        return 0;
    if (!isIndexed()) {
        std::transform(samples.begin(), samples.end(), pixels.begin(), packed);
        return 1;
    }
    if (std::any_of(samples.begin(), samples.end(), [this](int i) { return i < 0 || i >= getNumColors(); }))
        return 0;
    std::transform(samples.begin(), samples.end(), indices.begin(),
                   [](int i) { return static_cast<std::uint8_t>(i); });
    return 1;
}

int Image::addColor(int color)
{
    auto const found = std::find(colors.begin(), colors.end(), packed(color));
    auto const i = static_cast<int>(found - colors.begin());
    if (found != colors.end())
        return i;
    if (!isIndexed() || i >= MAX_COLORS)
        return -1;
    colors.push_back(packed(color));
    return i;
}

int Image::setColor(int i, int color)
{
    if (i < 0 || i >= getNumColors())
        return 0;
    colors[static_cast<std::size_t>(i)] = packed(color);
    return 1;
}

int Image::getColor(int i) const
{
    return i >= 0 && i < getNumColors() ? colors[static_cast<std::size_t>(i)] : TRANSPARENT;
}

int Image::setIndex(int column, int row, int i)
{
    if (!contains(column, row) || i < 0 || i >= getNumColors())
        return 0;
    indices[indexOf(column, row)] = static_cast<std::uint8_t>(i);
    return 1;
}

int Image::getIndex(int column, int row) const
{
    return isIndexed() && contains(column, row) ? indices[indexOf(column, row)] : -1;
}

int Image::toIndexed(int max_colors)
{
    if (isEmpty() || max_colors < 2 || max_colors > MAX_COLORS)
        return 0;
    try {
        if (isIndexed() && getNumColors() <= max_colors)
            return 1;
        Image source(*this);
        source.toRGB();
        detail::Quantized found = detail::quantize(source.pixels, static_cast<std::size_t>(max_colors));
        colors = std::move(found.colors);
        indices = std::move(found.indices);
        pixels = {};
    } catch (std::bad_alloc const &) {
        return 0;
    }
    return 1;
}

int Image::toRGB()
{
    if (!isIndexed())
        return 1;
    Image next;
    if (next.init(width, height) == 0)
        return 0;
    for (std::size_t i = 0; i < indices.size(); ++i)
        next.pixels[i] = colors[indices[i]];
    *this = std::move(next);
    return 1;
}

int Image::resize(int new_width, int new_height)
{
    Image next;
    if (isEmpty() || next.init(new_width, new_height) == 0)
        return 0;
    for (int row = 0; row < new_height; ++row)
        for (int column = 0; column < new_width; ++column)
            next.pixels[next.indexOf(column, row)] =
                meanOf(*this, spanOf(column, width, new_width), spanOf(row, height, new_height));
    *this = std::move(next);
    return 1;
}

} // namespace Yul
