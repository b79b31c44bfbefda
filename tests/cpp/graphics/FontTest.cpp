#include "core/Format.h"
#include "cpp/graphics/Page.h"
#include "graphics/GFont.h"
#include "graphics/Symbol.h"
#include "graphics/TextLine.h"

#include <algorithm>
#include <cmath>

namespace Yul {
namespace {

std::string const FONT = std::string(YUL_DATABASE) + "/modern.fnt";
std::string const SYMBOLS = std::string(YUL_DATABASE) + "/wx.smb";

class EveryFont : public testing::TestWithParam<char const *>
{
};

TEST_P(EveryFont, HasEveryCharacterOfItsCode)
{
    GFont font;
    ASSERT_EQ(font.open((std::string(YUL_DATABASE) + "/" + GetParam() + ".fnt").c_str()), 1);
    for (int code = 0; code < GFont::NUM_GLYPHS; ++code) {
        bool const is_printable = (code >= ' ' && code < 0x7f) || code >= 0xa0;
        auto const * const glyph = font.find(code);
        ASSERT_EQ(glyph != nullptr, is_printable) << code;
        if (glyph != nullptr) {
            EXPECT_EQ(glyph->count == 0, code == ' ' || code == 0xa0) << code;
            EXPECT_GE(glyph->ink_left, glyph->left - 22) << code;
            EXPECT_LE(glyph->ink_right, glyph->right + 27) << code;
        }
    }
    int const figure = font.find('0')->right - font.find('0')->left;
    for (char c = '1'; c <= '9'; ++c) // columns of figures line up
        EXPECT_EQ(font.find(c)->right - font.find(c)->left, figure) << c;
    EXPECT_EQ(font.find(-1), nullptr);
    EXPECT_EQ(font.find(256), nullptr);
    bool const has_one_width = std::string(GetParam()) == "mono";
    EXPECT_EQ(font.find('W')->right - font.find('W')->left == font.find('.')->right - font.find('.')->left,
              has_one_width);
    EXPECT_EQ(font.getCapHeight(), 84);
    for (char c = 'A'; c <= 'Z'; ++c) { // letters stand on the baseline and are as high as the text
        int low = 255;
        int high = 0;
        for (auto const & v : font.vertices(*font.find(c))) {
            low = std::min<int>(low, v.y);
            high = std::max<int>(high, v.y);
        }
        EXPECT_NEAR(low - font.getBaseline(), 0, c == 'Q' ? 10 : 3) << c;
        EXPECT_NEAR(high - font.getBaseline(), font.getCapHeight(), 3) << c;
    }
}

INSTANTIATE_TEST_SUITE_P(
    GFont, EveryFont, testing::Values("modern", "light", "italic", "bold", "serif", "serifitalic", "mono"));

TEST(GFont, DecodesTheGlyphCoding)
{
    test::PageFile file;
    file.write("YulFont 1\nmetrics 10 20\nglyph 65 0 9\n128 10 9\n10 255\n");
    GFont font;
    EXPECT_EQ(font.open(file.path.c_str()), 1);
    file.write("YulFont 1\nmetrics 10 20\nglyph 65 0 9\n130 10 7 200 253 30 254\n");
    ASSERT_EQ(font.open(file.path.c_str()), 1);
    auto const vertices = font.vertices(*font.find('A'));
    ASSERT_EQ(vertices.size(), 3U);
    EXPECT_TRUE(vertices[0].x == 2 && vertices[0].y == 10 && vertices[0].is_move);
    EXPECT_TRUE(vertices[1].x == 7 && vertices[1].y == 200 && !vertices[1].is_move);
    EXPECT_TRUE(vertices[2].x == 125 && vertices[2].y == 30 && vertices[2].is_move);
    EXPECT_EQ(font.find('B'), nullptr);
}

/// Every cut of a good file is refused or whole, and what was there stays.
template <class Reader> void expectCutsRefused(std::string const & name, std::size_t step)
{
    std::string const text = test::octetsOf(name);
    ASSERT_GT(text.size(), step);
    test::PageFile file;
    Reader reader;
    ASSERT_EQ(reader.open(name.c_str()), 1);
    for (std::size_t size = 0; size < text.size(); size += step) {
        file.write(text.substr(0, size));
        Reader cut;
        bool const is_read = cut.open(file.path.c_str()) != 0;
        EXPECT_EQ(is_read, cut.isOpen());
        std::string garbled = text;
        garbled[size] = static_cast<char>(garbled[size] ^ 0x55);
        file.write(garbled);
        reader.open(file.path.c_str());
        EXPECT_TRUE(reader.isOpen());
    }
    EXPECT_EQ(reader.open("/nowhere"), 0);
    EXPECT_EQ(reader.open(nullptr), 0);
    EXPECT_EQ(reader.open("/dev/zero"), 0);
    EXPECT_TRUE(reader.isOpen());
}

TEST(GFont, RefusesCutAndGarbledFiles)
{
    expectCutsRefused<GFont>(FONT, 997);
    test::PageFile file;
    for (char const * text :
         {"YulFont 1\n", "YulFont 1\nglyph 65 0 9\n254\n", "YulFont 1\nmetrics 1 0\nglyph 65 0 9\n254\n",
          "YulFont 1\nmetrics 1 5\nglyph 256 0 9\n254\n", "YulFont 1\nmetrics 1 5\nglyph 65 0 9\n1 1 254\n",
          "YulFont 1\nmetrics 1 5\nglyph 65 0 9\n128 1 256 254\n",
          "YulFont 1\nmetrics 1 5\nglyph 65 0 9\n128 1\n",
          "YulFont 1\nmetrics 1 5\nglyph 65 0 9\n254\nglyph 65 0 9\n254\n",
          "YulFont 1\nmetrics 1 5\npen 256\nglyph 65 0 9\n254\n",
          "YulFont 1\nmetrics 1 5\npen\nglyph 65 0 9\n254\n"}) {
        file.write(text);
        EXPECT_EQ(GFont().open(file.path.c_str()), 0) << text;
    }
}

TEST(Symbol, HasWeatherCloudsAndTendencies)
{
    Symbol set;
    ASSERT_EQ(set.open(SYMBOLS.c_str()), 1);
    for (int i = 0; i < set.getNum(); ++i) {
        Symbol::Shape const * const shape = set.find(set.getName(i));
        ASSERT_NE(shape, nullptr);
        for (auto const & part : *shape)
            for (auto const & v : part.vertices)
                EXPECT_TRUE(std::abs(v.x) <= 1.1F && std::abs(v.y) <= 1.1F) << set.getName(i);
    }

    struct
    {
        char const * format;
        int first;
        int last;
        int step;
    } const codes[] = {{"ww%02d", 0, 99, 1}, {"n%d", 0, 9, 1}, {"cl%d", 1, 9, 1}, {"cm%d", 1, 9, 1},
                       {"ch%d", 1, 9, 1},    {"a%d", 0, 8, 1}, {"w%d", 3, 9, 1},  {"wind%d", 0, 200, 5}};

    for (auto const & c : codes)
        for (int code = c.first; code <= c.last; code += c.step)
            EXPECT_NE(set.find(detail::format(c.format, code).c_str()), nullptr) << c.format << code;
    for (char const * name : {"rain", "fog", "calm", "overcast", "n/", "hurricane", "city"})
        EXPECT_NE(set.find(name), nullptr) << name;
    EXPECT_EQ(set.find("nothing"), nullptr);
    EXPECT_EQ(set.find(nullptr), nullptr);
    EXPECT_EQ(set.getName(-1), nullptr);
    EXPECT_EQ(set.getName(set.getNum()), nullptr);
}

TEST(Symbol, RefusesCutAndGarbledFiles)
{
    expectCutsRefused<Symbol>(SYMBOLS, 499);
    test::PageFile file;
    std::string doubling = "YulSymbols 1\nsymbol s0\nline 0 0 1 1\n"; // each symbol twice the one before
    for (int i = 1; i < 60; ++i)
        doubling += "symbol s" + std::to_string(i) + "\nuse s" + std::to_string(i - 1) + "\nuse s" +
                    std::to_string(i - 1) + "\n";
    for (std::string const & text :
         {std::string("YulSymbols 1\n"), std::string("YulSymbols 1\nline 0 0 1 1\n"), doubling,
          std::string("YulSymbols 1\nsymbol a\nuse a\n"), std::string("YulSymbols 1\nsymbol a\nline 0 0 1\n"),
          std::string("YulSymbols 1\nsymbol a\ncircle 0 0 nan\n"),
          std::string("YulSymbols 1\nsymbol a\nsymbol a\n"),
          std::string("YulSymbols 1\nsymbol a\narc 0 0 1 0 1e30\n")}) {
        file.write(text);
        EXPECT_EQ(Symbol().open(file.path.c_str()), 0) << text.substr(0, 60);
    }
}

struct TextCase
{
    char const * text;
    std::vector<int> codes;
};

TEST(TextLine, DecodesUtf8AndTakesStrayOctetsAsTheyAre)
{
    TextCase const cases[] = {
        {"a\xc2\xb0\xc3\xa9", {'a', 0xb0, 0xe9}},
        {"\xe2\x88\x92\xe2\x80\x93\xe2\x80\x99", {'-', '-', '\''}}, // minus, dash, apostrophe
        {"\xc5\x81\xc3\xb3\xc5\xba", {'L', 0xf3, 'z'}},             // Lodz
        {"\xc5\x92\xe2\x84\x83", {'O', 'E', 0xb0, 'C'}},
        {"\xc4\x80\xc5\xbf\xc6\x80", {'A', 's', -1}}, // the ends of the block
        {"\xe4\xb8\xad\xf0\x9f\x8c\xa7", {-1, -1}},
        {"\xb0 C", {0xb0, ' ', 'C'}}, // Latin-1
        {"\xc3", {0xc3}},
        {"\xc0\xaf", {0xc0, 0xaf}},          // overlong
        {"\xed\xa0\x80", {0xed, ' ', 0x80}}, // a surrogate
        {"a\tb\x01\x7f", {'a', ' ', 'b'}},
    };
    for (auto const & c : cases)
        EXPECT_EQ(detail::characterCodes(c.text), c.codes) << c.text;
}

} // namespace
} // namespace Yul
