#include "graphics/GFont.h"

#include "graphics/TableFile.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace Yul {
namespace {

constexpr std::string_view MAGIC = "YulFont 1";
constexpr int END_OF_GLYPH = 254;
constexpr int MOVE = 128;
constexpr int MAX_COORDINATE = 255;
constexpr std::size_t MAX_VERTICES = 1U << 16;

/// The whole word as a number from low to high.
std::optional<int> intIn(std::string_view word, int low, int high)
{
    int value = 0;
    if (!detail::readInt(word, value) || value < low || value > high)
        return std::nullopt;
    return value;
}

} // namespace

/// Fills a font line by line.
struct GFont::Reader
{
    GFont & font;
    Glyph * glyph = nullptr; // the glyph being read
    std::optional<int> x;    // the first number of a pair

    /// False for a line that has no place in a font file.
    bool take(std::string_view line)
    {
        if (glyph != nullptr)
            return takeNumbers(line);
        auto const words = detail::words(line);
        if (words[0] == "name")
            return words.size() > 1;
        if (words[0] == "metrics" && words.size() == 3)
            return takeMetrics(intIn(words[1], 0, MAX_COORDINATE), intIn(words[2], 1, MAX_COORDINATE));
        if (words[0] == "pen" && words.size() == 2)
            return takePen(intIn(words[1], 0, MAX_COORDINATE));
        if (words[0] == "glyph" && words.size() == 4)
            return takeGlyph(intIn(words[1], 0, NUM_GLYPHS - 1),
                             intIn(words[2], -MAX_COORDINATE, MAX_COORDINATE),
                             intIn(words[3], -MAX_COORDINATE, MAX_COORDINATE));
        return false;
    }

    bool takeMetrics(std::optional<int> baseline, std::optional<int> cap_height)
    {
        font.baseline = baseline.value_or(0);
        font.cap_height = cap_height.value_or(0);
        return baseline && cap_height;
    }

    bool takePen(std::optional<int> width)
    {
        font.pen = width.value_or(0);
        return width.has_value();
    }

    bool takeGlyph(std::optional<int> code, std::optional<int> left, std::optional<int> right)
    {
        if (!code || !left || !right || *left > *right || font.find(*code) != nullptr)
            return false;
        font.slots[static_cast<std::size_t>(*code)] = static_cast<std::int16_t>(font.glyphs.size());
        glyph = &font.glyphs.emplace_back();
        glyph->left = static_cast<std::int16_t>(*left);
        glyph->right = static_cast<std::int16_t>(*right);
        glyph->first = static_cast<std::uint32_t>(font.all_vertices.size());
        return true;
    }

    bool takeNumbers(std::string_view line)
    {
        for (auto word = detail::nextWord(line); !word.empty(); word = detail::nextWord(line)) {
            auto const number = intIn(word, 0, MAX_COORDINATE);
            if (!number || glyph == nullptr)
                return false;
            if (!x && *number >= END_OF_GLYPH)
                finishGlyph();
            else if (!x)
                x = number;
            else if (!addVertex(*x % MOVE, *number, *x >= MOVE))
                return false;
        }
        return true;
    }

    bool addVertex(int vertex_x, int vertex_y, bool is_move)
    {
        x.reset();
        bool const is_first = glyph->first == font.all_vertices.size();
        if (font.all_vertices.size() >= MAX_VERTICES || (is_first && !is_move))
            return false;
        font.all_vertices.push_back(
            {static_cast<std::int16_t>(vertex_x), static_cast<std::int16_t>(vertex_y), is_move});
        return true;
    }

    /// Ink extents: those of the cell where there is no ink.
    void finishGlyph()
    {
        glyph->count = static_cast<std::uint32_t>(font.all_vertices.size()) - glyph->first;
        auto const vertices = font.vertices(*glyph);
        auto const [low, high] = std::minmax_element(
            vertices.begin(), vertices.end(), [](Vertex const & a, Vertex const & b) { return a.x < b.x; });
        glyph->ink_left = vertices.empty() ? glyph->left : low->x;
        glyph->ink_right = vertices.empty() ? glyph->right : high->x;
        glyph = nullptr;
    }
};

GFont::GFont()
{
    slots.fill(UNUSED);
}

int GFont::open(char const * name)
{
    detail::TableFile file;
    std::string_view line;
    if (name == nullptr || file.open(name) == 0 || !file.next(line) || line != MAGIC)
        return 0;
    GFont next; // filled first: a damaged file leaves the font as it was
    Reader reader{next, nullptr, {}};
    while (file.next(line))
        if (!reader.take(line))
            return 0;
    if (reader.glyph != nullptr || !next.isOpen() || next.cap_height == 0)
        return 0;
    *this = std::move(next);
    return 1;
}

int GFont::close()
{
    *this = GFont();
    return 1;
}

GFont::Glyph const * GFont::find(int code) const noexcept
{
    if (code < 0 || code >= NUM_GLYPHS)
        return nullptr;
    std::int16_t const slot = slots[static_cast<std::size_t>(code)];
    return slot != UNUSED ? &glyphs[static_cast<std::size_t>(slot)] : nullptr;
}

std::span<GFont::Vertex const> GFont::vertices(Glyph const & glyph) const noexcept
{
    return std::span(all_vertices).subspan(glyph.first, glyph.count);
}

} // namespace Yul
