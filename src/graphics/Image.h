// A raster picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Yul {

/// A raster picture, row 0 at the top. Each sample is a packed 24-bit RGB colour (red in bits 16 to 23) or
/// transparent. An indexed image keeps a palette of at most 256 colours and a number into it for each sample.
class Image
{
public:
    static constexpr int TRANSPARENT = -1;
    static constexpr long long MAX_PIXELS = 1LL << 26;
    static constexpr int MAX_COLORS = 256;

    Image() = default;

    /// All transparent. A size that is not positive or has more than MAX_PIXELS samples gives an empty image.
    Image(int image_width, int image_height) { init(image_width, image_height); }

    /// Makes the image anew, all transparent; 0 and an empty image for a size as above.
    int init(int image_width, int image_height);
    /// The same for an indexed image, whose only colour is colour 0, transparent.
    int initIndexed(int image_width, int image_height);
    /// Makes the image empty: no width, no height.
    int clear();

    /// Columns; 0 for an empty image.
    [[nodiscard]] int getWidth() const noexcept { return width; }

    /// Rows; 0 for an empty image.
    [[nodiscard]] int getHeight() const noexcept { return height; }

    /// Whether there are no samples.
    [[nodiscard]] bool isEmpty() const noexcept { return width == 0; }

    /// Whether samples are numbers of colours in a palette.
    [[nodiscard]] bool isIndexed() const noexcept { return !colors.empty(); }

    /// color  packed RGB; a negative value is transparent. Bits above 23 are dropped. 0 outside the image, and
    ///        for a colour that an indexed image has not got and has no room for.
    int setPixel(int column, int row, int color);
    /// The packed RGB value; TRANSPARENT where there is none, also outside the image.
    [[nodiscard]] int getPixel(int column, int row) const;

    /// All samples, row by row from the top: packed RGB values, of an indexed image the numbers of its colours.
    [[nodiscard]] std::vector<int> getSamples() const;
    /// Replaces all samples. 0, and nothing changes, unless there is one for each, and none that `setPixel` or `setIndex`
    /// would refuse.
    int setSamples(std::span<int const> samples);

    // ---- indexed images; everything is refused for an image that is not ----
    /// Adds a colour to the palette, or finds it there; -1 when the palette is full.
    int addColor(int color);
    /// Changes colour i of the palette, and with it all samples that have it.
    int setColor(int i, int color);
    /// Colour i of the palette; TRANSPARENT outside it.
    [[nodiscard]] int getColor(int i) const;

    /// Colours in the palette.
    [[nodiscard]] int getNumColors() const noexcept { return static_cast<int>(colors.size()); }

    /// Gives a sample colour i of the palette. 0 outside the image or the palette.
    int setIndex(int column, int row, int i);
    /// The number of a sample's colour; -1 outside the image.
    [[nodiscard]] int getIndex(int column, int row) const;

    // ---- conversions ----
    /// Gives the image a palette of at most `max_colors` (2 to 256): its own colours where they are so few, else
    /// one for each of the boxes that they are cut into at their medians. Transparent samples stay so.
    /// Source: P. Heckbert, Color image quantization for frame buffer display, Computer Graphics 16(3), 1982.
    int toIndexed(int max_colors = MAX_COLORS);
    /// Gives each sample its own colour.
    int toRGB();
    /// Makes the image another size: each sample becomes the mean of the area that it covers, transparent where
    /// half of that or more is. The result is not indexed. 0, and nothing changes, for a size as above.
    int resize(int new_width, int new_height);

    // ---- PNG files ----
    /// Reads a PNG picture of any kind; one with a palette becomes indexed. What is less than half opaque becomes
    /// transparent, other colours are mixed with white by their opacity. 0 with a warning, and nothing changes,
    /// for a file that cannot be read or is no whole picture.
    int read(char const * name);
    /// Writes a PNG picture, with a palette for an indexed image. 0 with a warning for an empty image or a file
    /// that cannot be written whole.
    int write(char const * name) const;

    // ---- GIF files ----
    /// Writes a GIF picture, with the 256 colours that `toIndexed` chooses for an image that is not indexed. 0
    /// with a warning for an empty image or a file that cannot be written whole.
    int writeGif(char const * name) const;

private:
    [[nodiscard]] bool contains(int column, int row) const noexcept
    {
        return column >= 0 && column < width && row >= 0 && row < height;
    }

    [[nodiscard]] std::size_t indexOf(int column, int row) const noexcept
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(column);
    }

    [[nodiscard]] std::vector<std::uint8_t> encode() const;

    int width = 0;
    int height = 0;
    std::vector<int> pixels;           // of an image that is not indexed
    std::vector<std::uint8_t> indices; // of an indexed image
    std::vector<int> colors;           // the palette
};

} // namespace Yul
