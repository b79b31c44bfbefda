// A raster picture.
#pragma once

#include <cstddef>
#include <vector>

namespace Yul {

/// A raster of packed 24-bit RGB samples (red in bits 16 to 23), row 0 at the top, with transparent places.
class Image
{
public:
    static constexpr int TRANSPARENT = -1;
    static constexpr long long MAX_PIXELS = 1LL << 26;

    Image() = default;

    /// All transparent. A size that is not positive or has more than MAX_PIXELS samples gives an empty image.
    Image(int image_width, int image_height) { init(image_width, image_height); }

    /// Makes the image anew, all transparent; 0 and an empty image for a size as above.
    int init(int image_width, int image_height);
    /// Makes the image empty: no width, no height.
    int clear();

    [[nodiscard]] int getWidth() const noexcept { return width; }

    [[nodiscard]] int getHeight() const noexcept { return height; }

    [[nodiscard]] bool isEmpty() const noexcept { return pixels.empty(); }

    /// color  packed RGB; a negative value is transparent. Bits above 23 are dropped. 0 outside the image.
    int setPixel(int column, int row, int color);
    /// The packed RGB value; TRANSPARENT where there is none, also outside the image.
    [[nodiscard]] int getPixel(int column, int row) const;

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

    int width = 0;
    int height = 0;
    std::vector<int> pixels;
};

} // namespace Yul
