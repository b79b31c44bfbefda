// Map lines as they are stored and as they are drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// Steps of a degree in which the boxes of the index are given.
inline constexpr int BOX_UNITS = 50;

/// A piece of a line as the index of a map file describes it: some points that are read together.
struct MapChunk
{
    std::uint32_t offset = 0; ///< of its points in the data of the layer, octets
    std::uint32_t length = 0; ///< octets
    int count = 0;            ///< points
    int rank = 0;
    bool is_continued = false; ///< begins with the last point of the piece before
    int west = 0;              ///< its box, in BOX_UNITS of a degree
    int east = 0;
    int south = 0;
    int north = 0;
};

/// Many lines in one pair of arrays, degrees.
struct MapLines
{
    struct Piece
    {
        std::size_t begin = 0; ///< first point
        std::size_t end = 0;   ///< behind the last point
        bool is_continued = false;
    };

    std::vector<double> lat;
    std::vector<double> lon;
    std::vector<Piece> pieces;
};

/// The octets of points: differences from point to point (from 0 for the first) in steps of a degree, latitude then
/// longitude, each as a number of base 128 with the lowest digits first and the sign in the lowest bit.
void appendPoint(std::string & octets, std::int32_t lat, std::int32_t lon);

/// Adds the points to the lines. False, with the lines as they were, when they do not fill the octets exactly or a
/// position is none.
[[nodiscard]] bool decodePoints(std::string_view octets, int count, int units, MapLines & lines);

} // namespace Yul::detail
