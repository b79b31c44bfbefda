// The named colour table.
#pragma once

#include "graphics/Color.h"

#include <vector>

namespace Yul {

/// A table of named colours with a fixed capacity. Its first `getNumFill` entries are the fill colours, in
/// their order along the scale. Drawing settings name a colour by its index here; devices take the value that
/// the entry holds once it is allocated.
class ColorMap
{
public:
    enum { BACK = -1, OFF = -1, END = -2 };

    /// capacity  entries that the table can hold; it never grows. Negative counts as 0.
    explicit ColorMap(int capacity);

    /// Empties the table and gives it another capacity.
    int init(int capacity);

    /// Adds a colour (components 0 to 1), or replaces the components of the entry of exactly that name.
    /// return  the entry's index; -1 with a warning when the table is full, whether the name is there or not;
    ///         -1 for an empty name.
    int add(char const * name, float r, float g, float b);
    int add(char const * name, RGB const & rgb);

    /// Adds the colours of a table file: the name as it stands, or else a file in the database directory.
    /// A file that is not a colour table, or is damaged, adds nothing. See docs/formats.md for the form.
    /// return  1; 0 with a warning when the file cannot be read or holds more than the table has room for.
    int read(char const * name);

    /// The index that a colour text stands for, whatever its case: "end" -2; "none", "off", "back" and empty
    /// -1; the pattern colours 500 to 508; a name in the table; "#" with 6 hexadecimal or 9 decimal digits,
    /// which is added to the table; a number as it stands. Anything else is -1.
    int getInd(char const * name);

    /// The name of an entry, null for an index outside the table. Valid until the table changes.
    [[nodiscard]] char const * getName(int index) const;
    /// Components of an entry; an index past the end gives the last one, a negative index (or an empty table)
    /// gives -1, -1, -1 and the result 0.
    int get(int index, RGB & rgb) const;
    int getRGB(int index, float & r, float & g, float & b) const;
    /// The same from 0 to 255.
    int getIRGB(int index, int & r, int & g, int & b) const;

    /// The device's value of an entry; 0 for an index outside the table.
    int setValue(int index, int value);
    /// The device's value of an entry; an index past the end gives the last one's, a pattern colour the value
    /// of its plain colour (black, white, gray) as packed 24-bit RGB; a negative index gives -1.
    [[nodiscard]] int getValue(int index) const;
    [[nodiscard]] int getValue(char const * name);

    /// Entries used, capacity, and number of fill colours.
    [[nodiscard]] int getNum() const noexcept { return static_cast<int>(colors.size()); }

    /// How many entries there is room for.
    [[nodiscard]] int getSize() const noexcept { return size; }

    /// How many of the entries are fill colours.
    [[nodiscard]] int getNumFill() const noexcept { return num_fill; }

    /// False, and nothing changes, unless 0 <= n <= entries used.
    bool setNumFill(int n);

    /// True when the entry's components differ from the colour by less than 0.01 in sum.
    [[nodiscard]] bool isColorNear(int index, RGB const & rgb) const;

    /// Lists the table on standard output.
    int print() const;

private:
    [[nodiscard]] Color const * find(int index) const;

    std::vector<Color> colors;
    int size = 0;
    int num_fill = 0;
};

} // namespace Yul
