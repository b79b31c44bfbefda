#include "graphics/TextLine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace Yul::detail {
namespace {

/// Characters outside ISO 8859-1 that have a plain form in it, and the no-break space.
struct PlainForm
{
    std::uint32_t character;
    std::string_view plain; // ISO 8859-1
};

constexpr PlainForm PLAIN_FORMS[] = {
    {0x00a0, " "},                                                      // no-break space
    {0x0132, "IJ"}, {0x0133, "ij"},                                     // Dutch
    {0x0152, "OE"}, {0x0153, "oe"},                                     // French
    {0x0218, "S"},  {0x0219, "s"},                                      // Romanian
    {0x021a, "T"},  {0x021b, "t"},    {0x03bc, "\xb5"},                 // mu, as micro sign
    {0x1e9e, "SS"},                                                     // capital sharp s
    {0x2002, " "},  {0x2003, " "},    {0x2009, " "},                    // spaces
    {0x202f, " "},  {0x2010, "-"},    {0x2011, "-"},     {0x2013, "-"}, // hyphens and dashes
    {0x2014, "-"},  {0x2212, "-"},                                      // minus sign
    {0x2018, "'"},  {0x2019, "'"},    {0x2032, "'"},                    // quotation marks, primes
    {0x201c, "\""}, {0x201d, "\""},   {0x2033, "\""},    {0x201a, ","},
    {0x201e, ",,"}, {0x2022, "\xb7"}, {0x2026, "..."},   {0x2044, "/"}, // bullet, ellipsis, fraction slash
    {0x2070, "0"},  {0x2074, "4"},    {0x2075, "5"},                    // superscripts
    {0x2076, "6"},  {0x2077, "7"},    {0x2078, "8"},     {0x2079, "9"},
    {0x207a, "+"},  {0x207b, "-"},    {0x2103, "\260C"}, {0x2109, "\260F"}, // degrees in one sign
    {0x2190, "<-"}, {0x2192, "->"},                                         // arrows
    {0x2264, "<="}, {0x2265, ">="},                                         // comparisons
};

/// The letters U+0100 to U+017F without their marks (Unicode block Latin Extended-A).
constexpr std::uint32_t LATIN_FIRST = 0x100;
constexpr std::string_view LATIN_LETTERS =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLl"
    "NnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(LATIN_LETTERS.size() == 0x80);

/// The UTF-8 character at the start of the text and its length; the first octet itself where there is none.
/// Source: RFC 3629, UTF-8, section 4 (no overlong forms, no surrogates).
std::pair<std::uint32_t, std::size_t> decode(std::string_view text)
{
    auto const octet = [&](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i]));
    };
    std::uint32_t const first = octet(0);
    std::size_t const length = first < 0x80                    ? 1
                               : first >= 0xc2 && first < 0xe0 ? 2
                               : first >= 0xe0 && first < 0xf0 ? 3
                               : first >= 0xf0 && first < 0xf5 ? 4
                                                               : 0;
    if (length <= 1 || length > text.size())
        return {first, 1};
    std::uint32_t character = first & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((octet(i) & 0xc0) != 0x80)
            return {first, 1};
        character = character << 6 | (octet(i) & 0x3f);
    }
    bool const is_overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    bool const is_surrogate = character >= 0xd800 && character < 0xe000;
    if (is_overlong || is_surrogate || character > 0x10ffff)
        return {first, 1};
    return {character, length};
}

void appendCodes(std::uint32_t character, std::vector<int> & codes)
{
    auto const * const form = std::find_if(std::begin(PLAIN_FORMS), std::end(PLAIN_FORMS),
                                           [&](PlainForm const & row) { return row.character == character; });
    if (form != std::end(PLAIN_FORMS))
        for (char const plain : form->plain)
            codes.push_back(static_cast<unsigned char>(plain));
    else if (character < GFont::NUM_GLYPHS)
        codes.push_back(static_cast<int>(character));
    else if (character - LATIN_FIRST < LATIN_LETTERS.size())
        codes.push_back(LATIN_LETTERS[character - LATIN_FIRST]);
    else
        codes.push_back(UNKNOWN_CHARACTER);
}

} // namespace

std::vector<int> characterCodes(std::string_view text)
{
    std::vector<int> codes;
    codes.reserve(text.size());
    while (!text.empty()) {
        auto const [character, length] = decode(text);
        text.remove_prefix(length);
        bool const is_control = character < ' ' || character == 0x7f;
        if (character == '\t')
            codes.push_back(' ');
        else if (!is_control)
            appendCodes(character, codes);
    }
    return codes;
}

TextLine::TextLine(GFont const & font, std::string_view text, TextStyle const & style)
{
    float const unit = style.expansion / static_cast<float>(std::max(font.getCapHeight(), 1));
    float pen = 0;
    for (int const code : characterCodes(text)) {
        GFont::Glyph const * const glyph = font.find(code);
        float const left = glyph != nullptr ? static_cast<float>(glyph->left) * unit : 0;
        float const right =
            glyph != nullptr ? static_cast<float>(glyph->right) * unit : BOX_WIDTH * style.expansion;
        float const ink_from = glyph != nullptr ? static_cast<float>(glyph->ink_left) * unit : left;
        float const ink_to = glyph != nullptr ? static_cast<float>(glyph->ink_right) * unit : right;
        bool const is_fixed = style.char_width > 0;
        float const cell = is_fixed ? style.char_width * style.expansion : right - left;
        float const x = pen + (cell - (right - left)) / 2 - left;
        glyphs.push_back({glyph, x});
        ink_left = has_ink ? std::min(ink_left, x + ink_from) : x + ink_from;
        ink_right = has_ink ? std::max(ink_right, x + ink_to) : x + ink_to;
        has_ink = true;
        pen += cell + (is_fixed ? 0 : style.spacing * style.expansion);
    }
}

} // namespace Yul::detail
