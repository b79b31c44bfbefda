// GIF files of an Image.
// Source: CompuServe Incorporated, Graphics Interchange Format, version 89a (1990), with its appendix F on LZW.
#include "core/File.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Image.h"
#include "graphics/PackedColor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <new>
#include <string>

namespace Yul {
namespace {

constexpr int MAX_SIDE = 65535;
constexpr int MOST_CODES = 4096;

void addNumber(std::string & out, int value)
{
    out += static_cast<char>(value & 0xff);
    out += static_cast<char>(value >> 8 & 0xff);
}

/// Codes of growing width, the lowest bit first, in blocks of at most 255 octets with their length.
class CodeStream
{
public:
    explicit CodeStream(std::string & output) : out(output) {}

    void add(int code, int width)
    {
        bits |= static_cast<unsigned>(code) << count;
        for (count += width; count >= 8; count -= 8, bits >>= 8)
            addOctet();
    }

    void finish()
    {
        if (count > 0)
            addOctet();
        endBlock();
        out += '\0';
    }

private:
    void addOctet()
    {
        block += static_cast<char>(bits & 0xff);
        if (block.size() == 255)
            endBlock();
    }

    void endBlock()
    {
        if (block.empty())
            return;
        out += static_cast<char>(block.size());
        out += block;
        block.clear();
    }

    std::string & out;
    std::string block;
    unsigned bits = 0;
    int count = 0;
};

/// Takes colour numbers of so many bits each and writes codes for the longest rows of them that came before.
class Compressor
{
public:
    Compressor(int bits, std::string & out) : clear(1 << bits), first_width(bits + 1), stream(out)
    {
        restart();
        stream.add(clear, width);
    }

    void add(int color)
    {
        if (prefix < 0) {
            prefix = color;
            return;
        }
        std::int16_t & longer = next[static_cast<std::size_t>(prefix)][static_cast<std::size_t>(color)];
        if (longer != 0) {
            prefix = longer;
            return;
        }
        stream.add(prefix, width);
        if (codes < MOST_CODES) {
            longer = static_cast<std::int16_t>(codes);
            width += codes == 1 << width ? 1 : 0;
            ++codes;
        } else {
            stream.add(clear, width);
            restart();
        }
        prefix = color;
    }

    void finish()
    {
        stream.add(prefix, width);
        // The reader adds an entry for that code as well, and may widen what follows.
        width += codes == 1 << width && width < 12 ? 1 : 0;
        stream.add(clear + 1, width);
        stream.finish();
    }

private:
    using Row = std::array<std::int16_t, Image::MAX_COLORS>;

    void restart()
    {
        next.assign(MOST_CODES, Row{});
        codes = clear + 2;
        width = first_width;
    }

    int clear;
    int first_width;
    CodeStream stream;
    std::vector<Row> next; // by code and colour; 0: none
    int codes = 0;
    int width = 0;
    int prefix = -1;
};

std::string gifOctets(Image const & image)
{
    int const bits =
        std::max(2, static_cast<int>(std::bit_width(static_cast<unsigned>(image.getNumColors() - 1))));
    std::string out = "GIF89a";
    addNumber(out, image.getWidth());
    addNumber(out, image.getHeight());
    out += static_cast<char>(0xf0 | (bits - 1)); // a table of so many colours for the whole file
    out.append(2, '\0');
    int transparent = -1;
    for (int i = 0; i < 1 << bits; ++i) {
        int const color = image.getColor(i);
        if (color < 0 && i < image.getNumColors())
            transparent = i;
        for (int const part : {detail::redOf(color), detail::greenOf(color), detail::blueOf(color)})
            out += static_cast<char>(color < 0 ? 0xff : part);
    }
    if (transparent >= 0) {
        out.append("\x21\xf9\x04\x01\0\0", 6);
        out += static_cast<char>(transparent);
        out += '\0';
    }
    out += ',';
    addNumber(out, 0);
    addNumber(out, 0);
    addNumber(out, image.getWidth());
    addNumber(out, image.getHeight());
    out += '\0';
    out += static_cast<char>(bits);
    Compressor pixels(bits, out);
    for (int row = 0; row < image.getHeight(); ++row)
        for (int column = 0; column < image.getWidth(); ++column)
            pixels.add(image.getIndex(column, row));
    pixels.finish();
    return out += ';';
}

} // namespace

int Image::writeGif(char const * name) const
{
    try {
        Image indexed(*this);
        bool const is_possible = StrLib::valid(name) && width > 0 && width <= MAX_SIDE &&
                                 height <= MAX_SIDE && (isIndexed() || indexed.toIndexed() != 0);
        File file;
        if (is_possible && file.open(name, "w") != 0 && file.write(gifOctets(indexed)) != 0 &&
            file.close() != 0)
            return 1;
    } catch (std::bad_alloc const &) {
    }
    Yul::outWarning("Image::writeGif: unable to write image: %s\n",
                    std::string(detail::viewOf(name)).c_str());
    return 0;
}

} // namespace Yul
