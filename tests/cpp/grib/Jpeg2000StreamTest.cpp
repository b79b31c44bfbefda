#include "grid/grib/packing/Jpeg2000Stream.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::detail::grib {
namespace {

/// A stream of one tile-part, whose headers say this.
struct Picture
{
    unsigned width = 20;
    unsigned height = 10;
    unsigned tile_width = width;
    unsigned tile_height = height;
    unsigned block = 4; ///< its width and height as powers of two, less 2
    unsigned components = 1;
    unsigned layers = 1;
    std::optional<Octet> precinct = std::nullopt; ///< of every resolution
    bool is_in_tile = false;                      ///< the coding style comes again, with the precincts
    std::size_t octets = 100;                     ///< of data
};

constexpr unsigned LEVELS = 2;

class Stream
{
public:
    explicit Stream(Picture const & p)
    {
        put({{0xff4f, 2}, {0xff51, 2}, {41, 2}, {0, 2}, {p.width, 4}, {p.height, 4}, {0, 4}, {0, 4}});
        put({{p.tile_width, 4},
             {p.tile_height, 4},
             {0, 4},
             {0, 4},
             {p.components, 2},
             {7, 1},
             {1, 1},
             {1, 1}});
        putStyle(p, p.is_in_tile ? std::nullopt : p.precinct);
        header = octets.size();
        put({{0xff90, 2}, {10, 2}, {0, 2}, {0, 4}, {0, 1}, {1, 1}});
        if (p.is_in_tile)
            putStyle(p, p.precinct);
        put({{0xff93, 2}});
        octets.resize(octets.size() + p.octets);
        put({{0xffd9, 2}});
    }

    std::vector<Octet> octets;
    std::size_t header = 0; ///< octets before the tile-part

private:
    struct Number
    {
        std::uint32_t value;
        unsigned octets;
    };

    void put(std::initializer_list<Number> numbers)
    {
        for (auto const & number : numbers)
            for (unsigned i = number.octets; i-- > 0;)
                octets.push_back(static_cast<Octet>(number.value >> 8 * i));
    }

    void putStyle(Picture const & p, std::optional<Octet> precinct)
    {
        unsigned const extra = precinct ? LEVELS + 1 : 0;
        put({{0xff52, 2}, {12 + extra, 2}, {precinct ? 1U : 0U, 1}, {0, 1}, {p.layers, 2}, {0, 1}});
        put({{LEVELS, 1}, {p.block, 1}, {p.block, 1}, {0, 1}, {1, 1}});
        octets.insert(octets.end(), extra, precinct.value_or(0));
    }
};

TEST(Jpeg2000Stream, HeadersAskForNoMoreThanIsThere)
{
    struct
    {
        Picture picture;
        std::string fault; ///< how it begins; empty for none
        std::size_t values = 200;
    } const cases[] = {
        {{}, ""},
        {{.layers = 5, .precinct = 0x22, .octets = 200}, ""},
        {{.precinct = 0x00, .octets = 1000}, ""},
        {{}, "JPEG 2000 picture of 20 by 10 samples for 7 values", 7},
        {{.components = 3}, "JPEG 2000 picture of 3 components"},
        {{.tile_width = 1, .tile_height = 1}, "JPEG 2000 picture of 200 tiles"},
        {{.tile_width = 0}, "damaged JPEG 2000 picture"},
        {{.precinct = 0x00}, "JPEG 2000 picture of 260 packets"},
        {{.layers = 65535, .precinct = 0x33}, "JPEG 2000 picture of 131070 packets"},
        {{.precinct = 0x00, .is_in_tile = true}, "JPEG 2000 picture of 260 packets"},
        {{.width = 4000, .height = 1000}, "", 4'000'000},
        {{.width = 4000, .height = 1000, .block = 2}, "", 4'000'000},
        {{.width = 4000, .height = 1000, .block = 0}, "JPEG 2000 picture whose parts take 112", 4'000'000},
        {{.width = 4000, .height = 1000, .tile_width = 64, .tile_height = 64, .octets = 100'000},
         "",
         4'000'000},
        {{.tile_width = 1, .tile_height = 1, .octets = 3000}, "JPEG 2000 picture whose parts take 200"},
        {{.width = 4000, .height = 1000, .precinct = 0x33, .octets = 100'000},
         "JPEG 2000 picture whose parts take 202",
         4'000'000},
    };

    for (auto const & c : cases) {
        std::string const fault = checkJpeg2000(Stream(c.picture).octets, c.values);
        EXPECT_TRUE(c.fault.empty() ? fault.empty() : fault.starts_with(c.fault))
            << fault << " for " << c.fault;
    }
}

TEST(Jpeg2000Stream, HeadersThatAreCutAreDamaged)
{
    Stream const whole({.precinct = 0x33});
    for (std::size_t length = 0; length < whole.header; ++length) {
        std::vector<Octet> const cut(whole.octets.begin(),
                                     whole.octets.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(checkJpeg2000(cut, 200), "") << length;
    }
}

} // namespace
} // namespace Yul::detail::grib
