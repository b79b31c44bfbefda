// PNG files of an Image.
// Source: ISO/IEC 15948, Portable Network Graphics; libpng manual, the simplified interface.
#include "core/File.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Image.h"
#include "graphics/PackedColor.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <span>
#include <string>

#ifdef YUL_HAVE_PNG
#include <png.h>
#endif

namespace Yul {
namespace {

using Octets = std::vector<std::uint8_t>;

constexpr std::size_t MAX_OCTETS = 64U << 20; // of a file
constexpr std::size_t BLOCK = 64U << 10;
constexpr std::size_t SAMPLE_SIZE = 4; // red, green, blue, opacity

std::optional<Octets> readFile(char const * name)
{
    File file;
    if (file.open(name, "r") == 0)
        return std::nullopt;
    Octets octets;
    for (;;) {
        std::size_t const size = octets.size();
        octets.resize(size + BLOCK);
        std::size_t const count = file.read(octets.data() + size, BLOCK);
        octets.resize(size + count);
        if (count == 0)
            return octets;
        if (octets.size() > MAX_OCTETS)
            return std::nullopt;
    }
}

/// A sample as the image keeps it: mixed with white by its opacity.
int colorOf(std::span<std::uint8_t const> sample)
{
    int const opacity = sample[3];
    if (opacity < 128)
        return Image::TRANSPARENT;
    auto const level = [&](std::size_t i) {
        return (sample[i] * opacity + 255 * (255 - opacity) + 127) / 255;
    };
    return level(0) << 16 | level(1) << 8 | level(2);
}

std::array<std::uint8_t, SAMPLE_SIZE> sampleOf(int color)
{
    if (color < 0)
        return {};
    return {static_cast<std::uint8_t>(detail::redOf(color)),
            static_cast<std::uint8_t>(detail::greenOf(color)),
            static_cast<std::uint8_t>(detail::blueOf(color)), 255};
}

#ifdef YUL_HAVE_PNG

/// The library's record of a picture, let go at the end.
struct Png
{
    Png() { image.version = PNG_IMAGE_VERSION; }

    ~Png() { png_image_free(&image); }

    Png(Png const &) = delete;
    Png & operator=(Png const &) = delete;

    png_image image{};
};

/// The most samples that this many octets can stand for: deflated 1032 to 1, one bit each.
bool canHold(std::size_t octets, long long samples)
{
    constexpr long long MOST_A_OCTET = 1032LL * 8;
    return static_cast<long long>(octets) * MOST_A_OCTET >= samples;
}

/// Colour numbers of the file; equal colours of its palette become one.
void setIndices(Octets const & samples,
                std::span<std::uint8_t const> palette,
                std::size_t entries,
                Image & picture)
{
    std::vector<int> numbers(Image::MAX_COLORS); // a number beyond the palette is colour 0
    picture.setColor(0, colorOf(palette.first(SAMPLE_SIZE)));
    for (std::size_t i = 0; i < entries; ++i)
        numbers[i] = picture.addColor(colorOf(palette.subspan(i * SAMPLE_SIZE, SAMPLE_SIZE)));
    auto sample = samples.begin();
    for (int row = 0; row < picture.getHeight(); ++row)
        for (int column = 0; column < picture.getWidth(); ++column)
            picture.setIndex(column, row, numbers[*sample++]);
}

void setPixels(std::span<std::uint8_t const> samples, Image & picture)
{
    for (int row = 0; row < picture.getHeight(); ++row)
        for (int column = 0; column < picture.getWidth(); ++column) {
            picture.setPixel(column, row, colorOf(samples.first(SAMPLE_SIZE)));
            samples = samples.subspan(SAMPLE_SIZE);
        }
}

bool decode(Octets const & octets, Image & picture)
{
    Png png;
    if (png_image_begin_read_from_memory(&png.image, octets.data(), octets.size()) == 0)
        return false;
    auto const width = static_cast<int>(std::min<png_uint_32>(png.image.width, 1U << 30));
    auto const height = static_cast<int>(std::min<png_uint_32>(png.image.height, 1U << 30));
    if (static_cast<long long>(width) * height > Image::MAX_PIXELS ||
        !canHold(octets.size(), static_cast<long long>(width) * height))
        return false;
    bool const is_indexed = (png.image.format & PNG_FORMAT_FLAG_COLORMAP) != 0;
    png.image.format = is_indexed ? PNG_FORMAT_RGBA_COLORMAP : PNG_FORMAT_RGBA;
    Octets samples(PNG_IMAGE_SIZE(png.image));
    Octets palette(PNG_IMAGE_COLORMAP_SIZE(png.image));
    if (png_image_finish_read(&png.image, nullptr, samples.data(), 0, palette.data()) == 0 ||
        (is_indexed ? picture.initIndexed(width, height) : picture.init(width, height)) == 0)
        return false;
    if (is_indexed)
        setIndices(samples, palette, png.image.colormap_entries, picture);
    else
        setPixels(samples, picture);
    return true;
}

/// The samples of colours, or of opaque colours without their opacity.
Octets samplesOf(std::vector<int> const & colors, bool is_opaque)
{
    std::size_t const size = is_opaque ? SAMPLE_SIZE - 1 : SAMPLE_SIZE;
    Octets samples;
    samples.reserve(colors.size() * SAMPLE_SIZE);
    for (int const color : colors) {
        auto const sample = sampleOf(color);
        samples.insert(samples.end(), sample.begin(), sample.begin() + size);
    }
    return samples;
}

#endif

} // namespace

int Image::read(char const * name)
{
    try {
#ifdef YUL_HAVE_PNG
        auto const octets = StrLib::valid(name) ? readFile(name) : std::nullopt;
        Image next; // filled first: a damaged file leaves the image as it was
        if (octets && decode(*octets, next)) {
            *this = std::move(next);
            return 1;
        }
#endif
    } catch (std::bad_alloc const &) {
    }
    Yul::outWarning("Image::read: unable to read image: %s\n", std::string(detail::viewOf(name)).c_str());
    return 0;
}

/// The octets of the picture's file; none on failure.
std::vector<std::uint8_t> Image::encode() const
{
#ifdef YUL_HAVE_PNG
    bool const is_opaque = std::find(pixels.begin(), pixels.end(), TRANSPARENT) == pixels.end() &&
                           std::find(colors.begin(), colors.end(), TRANSPARENT) == colors.end();
    Octets const samples = isIndexed() ? indices : samplesOf(pixels, is_opaque);
    Octets const palette = samplesOf(colors, is_opaque);
    Png png;
    png.image.width = static_cast<png_uint_32>(width);
    png.image.height = static_cast<png_uint_32>(height);
    png.image.format =
        (isIndexed() ? PNG_FORMAT_FLAG_COLORMAP : 0U) | (is_opaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA);
    png.image.colormap_entries = static_cast<png_uint_32>(colors.size());
    png_alloc_size_t size = 0;
    if (png_image_write_get_memory_size(png.image, size, 0, samples.data(), 0, palette.data()) == 0)
        return {};
    Octets octets(size);
    if (png_image_write_to_memory(&png.image, octets.data(), &size, 0, samples.data(), 0, palette.data()) ==
        0)
        return {};
    octets.resize(size);
    return octets;
#else
    return {};
#endif
}

int Image::write(char const * name) const
{
    try {
        auto const octets = StrLib::valid(name) && !isEmpty() ? encode() : std::vector<std::uint8_t>();
        File file;
        if (!octets.empty() && file.open(name, "w") != 0) {
            file.write({reinterpret_cast<char const *>(octets.data()), octets.size()});
            if (file.close() != 0)
                return 1;
        }
    } catch (std::bad_alloc const &) {
    }
    Yul::outWarning("Image::write: unable to write image: %s\n", std::string(detail::viewOf(name)).c_str());
    return 0;
}

} // namespace Yul
