// Files of coastlines, boundaries and other map lines.
#pragma once

#include "core/File.h"
#include "geo/EarthPoint.h"
#include "geo/EarthRange.h"
#include "plot/MapFileHeader.h"
#include "plot/map/MapLines.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Yul {

/// A file of map lines in layers, see docs/maps.md for its format. It is read with `open`, layer by layer and line
/// by line; only what is asked for is read. It is made with `addLayer`, `addLine` and `write`:
///
///     MapFile file;
///     file.setSource("Surveyed by ourselves.");
///     file.addLayer(header);
///     file.addLine(points, 0);
///     file.write("roads.map");
///
/// Operations return 1, or 0 for failure. A file that is not one, or is damaged or cut, gives a warning; nothing is
/// allocated that the octets of the file do not bear out.
class MapFile
{
public:
    static constexpr int MAX_LAYERS = 64;
    static constexpr int MAX_SOURCE = 4000;      ///< octets of the source text
    static constexpr int MAX_AREA_POINTS = 5000; ///< points of one area

    /// Reads the headers of the file and the index of its lines. A name that the database directory has is read
    /// there, else as it stands. On 0, with a warning, no file is open.
    int open(char const * file_name);
    /// Forgets everything, read or made; returns 1.
    int close();

    /// Whether a file is open.
    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    /// Where the lines come from and on what terms, as the file says it. Valid until the file changes.
    [[nodiscard]] char const * getSource() const noexcept { return source.c_str(); }

    /// Number of layers, those that were added included.
    [[nodiscard]] int getNumLayers() const noexcept { return static_cast<int>(layers.size()); }

    /// Layer i, 0 is the first; an empty header for a number outside.
    [[nodiscard]] MapFileHeader const & getHeader(int i) const noexcept;
    /// The layer of that name (exactly) whose scale is nearest to the one given, in millions; -1 when there is none.
    [[nodiscard]] int findLayer(char const * name, int scale) const;

    /// How important a line is, 0 the most, to 255; Const::MISS when there is no such line.
    [[nodiscard]] int getRank(int layer, int line) const noexcept;
    /// What the line lies in, to a fiftieth of a degree outward.
    int getRange(int layer, int line, EarthRange & range) const;
    /// The points of a line; on 0 (no such line, or the file is damaged there) the list is empty.
    int getLine(int layer, int line, EarthPoints & points);

    /// Where the lines of a file being made come from: text of up to 4000 octets, without empty lines.
    int setSource(char const * text);
    /// Begins a further layer; 0 for a header without a name or scale, for the 65th layer, and on an open file.
    int addLayer(MapFileHeader const & header);
    /// Adds a line to the last layer: from two points on, an area from 3 to 5000 on.
    /// rank    0 (the most important) to 255
    /// return  0 and no change for other numbers, for positions that are none (longitudes may reach 360 either
    ///         way), and before the first layer.
    int addLine(EarthPoints const & points, int rank);
    /// Writes the file that was made. 0 when there is no layer, or not all of it could be written.
    int write(char const * file_name) const;

    /// The pieces of a layer's lines that the index knows; for those who draw.
    [[nodiscard]] std::span<detail::MapChunk const> getChunks(int layer) const noexcept;
    /// Adds the points of these pieces (ascending indices) to the lines; 0 with a warning where the file is damaged.
    int read(int layer, std::span<std::uint32_t const> wanted, detail::MapLines & lines);

private:
    struct Layer
    {
        MapFileHeader header;
        std::vector<detail::MapChunk> chunks;
        std::vector<std::uint32_t> first_chunks; // of each line
        std::uint32_t data_offset = 0;           // in the file
        std::string data;                        // of a layer being made
    };

    [[nodiscard]] bool isLine(int layer, int line) const noexcept;
    [[nodiscard]] std::span<detail::MapChunk const> chunksOf(int layer, int line) const;
    [[nodiscard]] bool readHeaders();
    [[nodiscard]] bool readSource(std::size_t all, std::size_t & end);
    [[nodiscard]] bool readLayer(Layer & layer, std::string_view octets, std::size_t all);
    [[nodiscard]] bool readIndex(Layer & layer, std::string_view octets);
    static void addChunk(Layer & layer, detail::MapChunk chunk);
    [[nodiscard]] char const * readRun(int layer,
                                       std::span<std::uint32_t const> wanted,
                                       std::size_t first,
                                       std::size_t count,
                                       detail::MapLines & lines);

    File file;
    std::string source;
    std::vector<Layer> layers;
};

} // namespace Yul
