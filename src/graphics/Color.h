// One colour, and one named colour of a table.
#pragma once

#include <string>

namespace Yul {

/// Red, green and blue, 0 to 1.
class RGB
{
public:
    RGB() = default;

    /// Components 0 to 1.
    RGB(float red, float green, float blue) : r(red), g(green), b(blue) {}

    /// Takes the components as they stand. Returns 1.
    int set(float red, float green, float blue)
    {
        r = red;
        g = green;
        b = blue;
        return 1;
    }

    /// Components, 0 to 1.
    float r = 0;
    float g = 0;
    float b = 0;
};

/// A named colour: its components and the value that the device gave it.
class Color
{
public:
    static constexpr int NAME_SIZE = 19; ///< characters of a name that are kept

    Color() = default;
    /// As by setName and setRGB.
    Color(char const * color_name, float r, float g, float b);

    /// The name, never null; valid until it is set again.
    [[nodiscard]] char const * getName() const noexcept { return name.c_str(); }

    /// Names are cut to NAME_SIZE octets.
    int setName(char const * color_name);
    /// Components are held to 0..1; a component that is not a number counts as 0.
    int setRGB(float r, float g, float b);

    RGB rgb;       ///< components, 0 to 1
    int value = 0; ///< the pixel or index that the device assigned

private:
    std::string name;
};

} // namespace Yul
