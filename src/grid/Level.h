// Vertical levels and layers.
#pragma once

#include "core/Const.h"
#include "core/String.h"

#include <string>

namespace Yul {

/// A vertical level (500 hPa, 2 m above ground, the tropopause) or a layer between two values of one kind
/// (1000-500 hPa, 0-10 cm below ground).
///
/// The kind is the code of the fixed surface in WMO code table 4.5; values are in the units that forecasters
/// use, given with each enumerator. A kind without a number holds Const::MISS as its value. A layer keeps its
/// two values in the order in which they were given; by habit the one further from the ground stands first
/// for layers above it ("500-1000mb") and the shallower one first below it ("0-10cm").
class Level
{
public:
    /// Kinds of level, WMO code table 4.5 (192 to 254: codes that NCEP assigned). Any other code from 0 to
    /// 254 is a kind as well.
    enum Type {
        NONE = Const::MISS, ///< not set
        SFC = 1,            ///< ground or water surface
        CLOUD_BASE = 2,
        CLOUD_TOP = 3,
        ZERO_DEG = 4,      ///< 0 C isotherm
        LCL = 5,           ///< adiabatic condensation level of a parcel lifted from the surface
        MAX_WIND = 6,      ///< maximum wind level
        TROP = 7,          ///< tropopause
        TOA = 8,           ///< nominal top of the atmosphere
        SEA_BOTTOM = 9,    ///< sea bottom
        ATMOS = 10,        ///< entire atmosphere
        ISOTHERM = 20,     ///< isothermal level, K
        PRES = 100,        ///< pressure, hPa
        MSL = 101,         ///< mean sea level
        HGT_MSL = 102,     ///< height above mean sea level, m
        HGT = 103,         ///< height above ground, m
        SIGMA = 104,       ///< sigma, 0 to 1
        HYBRID = 105,      ///< hybrid level number
        DEPTH = 106,       ///< depth below land surface, cm
        THETA = 107,       ///< potential temperature, K
        PRES_GND = 108,    ///< pressure difference from ground, hPa
        PV = 109,          ///< potential vorticity, 1e-6 K m2 kg-1 s-1
        ETA = 111,         ///< eta, 0 to 1
        SNOW = 114,        ///< snow level number
        SOIL = 151,        ///< soil level number
        DEPTH_SEA = 160,   ///< depth below sea level, m
        OCEAN = 201,       ///< entire ocean
        FREEZE_HIGH = 204, ///< highest tropospheric freezing level
        BL_CLOUD = 211,    ///< boundary layer cloud layer
        LOW_CLOUD = 214,   ///< low cloud layer
        CEILING = 215,     ///< cloud ceiling
        PBL = 220,         ///< planetary boundary layer
        MID_CLOUD = 224,   ///< middle cloud layer
        HIGH_CLOUD = 234,  ///< high cloud layer
        CONV_CLOUD = 244   ///< convective cloud layer
    };

    Level() = default;

    /// As by `set`, which warns; not set where it returns 0.
    explicit Level(char const * text) { set(text); }

    /// As by `set`.
    Level(int kind, float value) { set(kind, value); }

    /// As by `set`.
    Level(int kind, float first, float second) { set(kind, first, second); }

    /// Forgets the level: kind NONE, values Const::MISS.
    int init();

    /// A level without a number, with one value, or a layer of two values. Returns 0 and changes nothing for
    /// a kind outside 0 to 254 (NONE is taken and forgets the level) and for NaN or an infinite value.
    int set(int kind);
    int set(int kind, float value);
    int set(int kind, float first, float second);
    int set(Level const & level);

    /// Reads a level text (see docs: "500mb", "2m", "sfc", "1000-500mb", "0-10cm", "0.995sigma", "2pvu"), in
    /// any case, with or without blanks. A bare number is a pressure in hPa, and so is a flight level
    /// ("FL340" is 250 hPa). "miss" forgets the level.
    /// Returns 0, prints a warning and changes nothing when the text is no level.
    int set(char const * text);
    /// The same without a message.
    int decode(char const * text);

    /// Sets the level from edition 1 of GRIB: `type` of WMO code table 3 (or NCEP's additions) and octets 11
    /// and 12 of the product definition. Returns 0 and changes nothing for an unknown type or an octet
    /// outside 0 to 255.
    /// Source: WMO Manual on Codes 306, volume I.2, FM 92-IX GRIB, code table 3; NCEP Office Note 388, table
    /// 3.
    int setGrib1(int type, int octet_11, int octet_12);
    /// The inverse: the type and two octets that come closest; 0 where edition 1 has no code for the level.
    int getGrib1(int & type, int & octet_11, int & octet_12) const;

    /// Sets the level from edition 2: kind and value in the table's own units (Pa, m, K ...) of the first and
    /// second fixed surface. Kind 255 (missing) or a second surface that is missing gives a level; two
    /// surfaces of one kind a layer; surface to top of atmosphere the entire atmosphere. Of two other
    /// different kinds the first is kept. NaN or Const::MISS as a value means none.
    /// Source: WMO Manual on Codes 306, volume I.2, FM 92-XIV GRIB, code table 4.5.
    int setGrib2(int first_kind, double first_value, int second_kind, double second_value);
    /// The inverse: values in the table's own units, kind 255 and Const::MISS where there is none. Returns 0
    /// while the level is not set.
    int getGrib2(int & first_kind, double & first_value, int & second_kind, double & second_value) const;

    /// Two integers that together rebuild the level, for files of the library's own.
    /// Type code: kind + 1000 x decimals (0 to 9) + 10000 for a layer. Value code: the value, or Const::MISS
    /// where there is none, in units of 10^-decimals; for a layer first value x 65536 + second value, both
    /// -32767 to 32767. `decimals` is the smallest number that keeps the value exactly, or as large as the
    /// range of the code lets it be; a value beyond every range is held to its end.
    [[nodiscard]] int getTypeCode() const;
    [[nodiscard]] int getValueCode() const;
    /// Returns 0 and changes nothing when the codes are not of that form.
    int setCodes(int type_code, int value_code);

    /// Whether there is a kind.
    [[nodiscard]] bool isSet() const noexcept { return type != NONE; }

    /// Whether there are two values.
    [[nodiscard]] bool isLayer() const noexcept { return !detail::isMissing(val2); }

    /// True for a kind that the library knows by name.
    [[nodiscard]] bool isKnown() const;

    /// The kind, a Type or another code of the table; NONE while not set.
    [[nodiscard]] int getType() const noexcept { return type; }

    /// The value, or a layer's first value; Const::MISS for a kind without number.
    [[nodiscard]] float getValue() const noexcept { return val; }

    /// A layer's second value; Const::MISS for a level.
    [[nodiscard]] float getValue2() const noexcept { return val2; }

    /// Units of the values: "hPa", "m", "K" ..., empty for kinds without a number. A static text.
    [[nodiscard]] char const * getUnits() const;

    /// The short text that `set` reads back to the same level: "500mb", "2m", "500-1000mb"; "miss" while not
    /// set.
    int toString(String & text) const;
    /// The text for a title: "500 hPa", "2 m above ground", "Surface"; empty while not set.
    int toLabel(String & text) const;

    /// True for the same kind and values, values compared to six digits; a layer's values in either order.
    [[nodiscard]] bool compare(Level const & level) const;

    /// Lists the level on standard output, the short text and a newline.
    int print() const;

private:
    int type = NONE;
    float val = Const::MISS;
    float val2 = Const::MISS;
};

} // namespace Yul
