// The vocabulary of vertical levels.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace Yul::detail {

constexpr int MAX_LEVEL_KIND = 254; // 255 is "missing" in GRIB

/// One kind of level. The text of a kind with values is "value suffix" or "value-value suffix".
struct LevelKind
{
    int code;           ///< WMO code table 4.5
    bool has_value;     ///< whether a number belongs to it
    char const * text;  ///< the word, or the suffix behind the value
    char const * label; ///< for titles; "%s" stands for the value
    char const * units; ///< of the value
    double si;          ///< size of the unit in the units of code table 4.5
};

/// Another way to write a kind: a word, or a suffix with its unit, value = offset + factor * number.
struct LevelAlias
{
    std::string_view text; ///< small letters, no blanks
    int code;
    double factor = 1;
    double offset = 0;
};

/// How edition 1 of GRIB codes a kind in octets 11 and 12. Every number x read from them means
/// offset + factor * x.
struct LevelGrib1
{
    enum Form {
        NO_VALUE,
        WORD,        ///< one number of 16 bits
        SIGNED_WORD, ///< one number of 15 bits, its sign in front
        OCTETS,      ///< a layer, one octet each
        MIXED        ///< a layer, the first value in tens, the second counted from the offset
    };

    int type; ///< WMO code table 3
    int code; ///< WMO code table 4.5
    Form form = NO_VALUE;
    double factor = 1;
    double offset = 0;
};

/// In the order of the code.
[[nodiscard]] std::span<LevelKind const> levelKinds() noexcept;
[[nodiscard]] std::span<LevelAlias const> levelAliases() noexcept;
[[nodiscard]] std::span<LevelGrib1 const> levelsGrib1() noexcept;

/// Pressure in hPa of a flight level (hundreds of feet, 0 to 650): where aviation charts give it to a
/// pressure of their own, that one, otherwise the pressure of the standard atmosphere to a tenth.
/// Sources: ICAO Annex 3, appendix 2 (flight levels of the world area forecasts); ICAO Doc 7488.
[[nodiscard]] std::optional<double> flightLevelPressure(double flight_level) noexcept;

/// A value as a level keeps it; none where it is missing or beyond a float.
[[nodiscard]] std::optional<float> levelValue(double value) noexcept;

/// The kind with this code, or null.
[[nodiscard]] LevelKind const * findLevelKind(int code) noexcept;

} // namespace Yul::detail
