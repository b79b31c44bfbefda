#include "graphics/Image.h"

#include "cpp/graphics/Page.h"

#include <climits>
#include <random>
#include <set>

namespace Yul {
namespace {

TEST(Image, StartsTransparentAndHoldsItsSize)
{
    Image image(3, 2);
    EXPECT_EQ(image.getPixel(2, 1), Image::TRANSPARENT);
    EXPECT_EQ(image.setPixel(2, 1, 0x7f123456), 1);
    EXPECT_EQ(image.getPixel(2, 1), 0x123456);
    EXPECT_EQ(image.setPixel(2, 1, -7), 1);
    EXPECT_EQ(image.getPixel(2, 1), Image::TRANSPARENT);
    EXPECT_EQ(image.setPixel(3, 0, 1), 0);
    EXPECT_EQ(image.setPixel(0, -1, 1), 0);
    EXPECT_EQ(image.getPixel(INT_MAX, INT_MIN), Image::TRANSPARENT);
    for (int size : {0, -1, INT_MAX})
        EXPECT_TRUE(Image(size, INT_MAX).isEmpty());
    EXPECT_EQ(image.init(-1, 5), 0);
    EXPECT_EQ(image.getWidth(), 0);
}

/// An image of random colours, some places transparent.
Image noise(int width, int height)
{
    std::mt19937 random(11);
    Image image(width, height);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column)
            image.setPixel(column, row, random() % 5 == 0 ? -1 : static_cast<int>(random() & 0xffffff));
    return image;
}

bool isSame(Image const & a, Image const & b)
{
    bool is_same = a.getWidth() == b.getWidth() && a.getHeight() == b.getHeight();
    for (int row = 0; row < a.getHeight(); ++row)
        for (int column = 0; column < a.getWidth(); ++column)
            is_same = is_same && a.getPixel(column, row) == b.getPixel(column, row);
    return is_same;
}

TEST(Image, TakesAllSamplesOrNone)
{
    Image const source = noise(4, 3);
    Image copy(4, 3);
    EXPECT_EQ(copy.setSamples(source.getSamples()), 1);
    EXPECT_TRUE(isSame(copy, source));
    EXPECT_EQ(copy.setSamples(std::vector<int>(11, 0)), 0);
    EXPECT_EQ(Image().setSamples({}), 1);
    EXPECT_EQ(copy.setSamples(std::vector<int>(12, 0x7f123456)), 1);
    EXPECT_EQ(copy.getPixel(3, 2), 0x123456);

    Image indexed;
    indexed.initIndexed(2, 1);
    indexed.addColor(0xff);
    EXPECT_EQ(indexed.setSamples(std::vector{1, 2}), 0);
    EXPECT_EQ(indexed.setSamples(std::vector{1, -1}), 0);
    EXPECT_EQ(indexed.getSamples(), (std::vector{0, 0}));
    EXPECT_EQ(indexed.setSamples(std::vector{1, 0}), 1);
    EXPECT_EQ(indexed.getPixel(0, 0), 0xff);
}

TEST(Image, KeepsAPalette)
{
    Image image;
    EXPECT_EQ(image.addColor(5), -1); // not indexed
    ASSERT_EQ(image.initIndexed(300, 2), 1);
    EXPECT_EQ(image.getPixel(0, 0), Image::TRANSPARENT);
    for (int color = 0; color < 255; ++color) // colour 0 is the transparent one
        EXPECT_EQ(image.setPixel(color, 1, color), 1);
    EXPECT_EQ(image.setPixel(299, 1, 0xffffff), 0); // no room
    EXPECT_EQ(image.getPixel(299, 1), Image::TRANSPARENT);
    EXPECT_EQ(image.getNumColors(), 256);
    EXPECT_EQ(image.addColor(7), 8);
    EXPECT_EQ(image.setColor(8, 0x123456), 1);
    EXPECT_EQ(image.getPixel(7, 1), 0x123456);
    EXPECT_EQ(image.setColor(256, 0), 0);
    EXPECT_EQ(image.getColor(-1), Image::TRANSPARENT);
    EXPECT_EQ(image.setIndex(0, 0, 256), 0);
    EXPECT_EQ(image.setIndex(0, 0, 8), 1);
    EXPECT_EQ(image.getIndex(0, 0), 8);
    EXPECT_EQ(image.getIndex(-1, 0), -1);
    Image const before = image;
    EXPECT_EQ(image.toRGB(), 1);
    EXPECT_FALSE(image.isIndexed());
    EXPECT_TRUE(isSame(image, before));
    EXPECT_EQ(image.toIndexed(1), 0);
    EXPECT_EQ(image.toIndexed(257), 0);
    EXPECT_EQ(image.toIndexed(), 1); // 255 colours and the transparent one
    EXPECT_TRUE(isSame(image, before));
}

TEST(Image, FindsAPaletteNearTheColors)
{
    Image const source = noise(64, 64);
    double last = 1e9;
    for (int const colors : {2, 4, 16, 64, 256}) {
        Image image = source;
        ASSERT_EQ(image.toIndexed(colors), 1);
        EXPECT_EQ(image.getNumColors(), colors);
        double error = 0;
        for (int row = 0; row < 64; ++row)
            for (int column = 0; column < 64; ++column) {
                int const a = source.getPixel(column, row);
                int const b = image.getPixel(column, row);
                ASSERT_EQ(a < 0, b < 0);
                for (int shift : {0, 8, 16})
                    error += std::abs((a >> shift & 0xff) - (b >> shift & 0xff));
            }
        EXPECT_LT(error, last) << colors;
        last = error;
    }
    EXPECT_LT(last / (64 * 64 * 3), 16); // levels, in the mean
}

TEST(Image, TakesTheMeanOfWhatASampleCovers)
{
    Image image(4, 2);
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 2; ++row)
            image.setPixel(column, row, column < 2 ? 0x102030 + 0x020406 * row : -1);
    EXPECT_EQ(image.resize(0, 1), 0);
    EXPECT_EQ(image.getWidth(), 4);
    Image large = image;
    EXPECT_EQ(large.resize(12, 6), 1);
    EXPECT_EQ(large.getPixel(5, 5), 0x122436);
    EXPECT_EQ(large.getPixel(6, 5), Image::TRANSPARENT);
    EXPECT_EQ(image.resize(2, 1), 1);
    EXPECT_EQ(image.getPixel(0, 0), 0x112233);
    EXPECT_EQ(image.getPixel(1, 0), Image::TRANSPARENT);
}

TEST(Image, ComesBackFromItsFile)
{
    test::PageFile file;
    for (Image image : {noise(1, 1), noise(37, 3), noise(3, 700)})
        for (int const colors : {0, 2, 17, 256}) {
            if (colors > 0)
                image.toIndexed(colors);
            ASSERT_EQ(image.write(file.path.c_str()), 1);
            EXPECT_EQ(file.text().substr(1, 3), "PNG");
            Image back(2, 2);
            ASSERT_EQ(back.read(file.path.c_str()), 1);
            EXPECT_EQ(back.isIndexed(), colors > 0);
            EXPECT_TRUE(isSame(image, back)) << colors;
        }
}

TEST(Image, SaysWhatItCannotReadOrWrite)
{
    test::PageFile file;
    noise(40, 40).write(file.path.c_str());
    std::string const whole = file.text();
    Image image(1, 1);
    testing::internal::CaptureStderr();
    int read = 0;
    for (std::size_t size = 0; size < whole.size(); size += 97) {
        file.write(whole.substr(0, size));
        read += image.read(file.path.c_str());
    }
    EXPECT_EQ(read, 0);
    std::string bomb = whole; // a header that asks for 2^31 - 1 samples a side
    bomb.replace(16, 8, "\x7f\xff\xff\xff\x7f\xff\xff\xff", 8);
    file.write(bomb);
    EXPECT_EQ(image.read(file.path.c_str()), 0);
    EXPECT_EQ(image.read(nullptr), 0);
    EXPECT_EQ(image.read("/"), 0);
    EXPECT_EQ(image.read("/dev/zero"), 0);
    EXPECT_EQ(image.getWidth(), 1); // as it was
    testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    EXPECT_EQ(Image().write(file.path.c_str()), 0);
    EXPECT_EQ(image.write(nullptr), 0);
    EXPECT_EQ(image.write("/nowhere/at/all.png"), 0);
    EXPECT_EQ(image.write("/dev/full"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Image::write: unable to write image: " + file.path +
                  "\nImage::write: unable to write image: \n"
                  "Image::write: unable to write image: /nowhere/at/all.png\n"
                  "Image::write: unable to write image: /dev/full\n");
}

} // namespace
} // namespace Yul
