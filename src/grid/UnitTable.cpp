#include "grid/UnitTable.h"

#include "core/StrLib.h"

#include <utility>

namespace Yul::detail {
namespace {

struct Row
{
    std::string_view text;
    Quantity quantity;
};

constexpr Quantity number(double factor)
{
    return {{}, factor, 0};
}

constexpr Quantity length(double factor)
{
    return {{1}, factor, 0};
}

constexpr Quantity mass(double factor)
{
    return {{0, 1}, factor, 0};
}

constexpr Quantity duration(double factor)
{
    return {{0, 0, 1}, factor, 0};
}

constexpr Quantity temperature(double factor, double offset)
{
    return {{0, 0, 0, 1}, factor, offset};
}

constexpr Quantity pressure(double factor)
{
    return {{-1, 1, -2}, factor, 0};
}

constexpr Quantity speed(double factor)
{
    return {{1, 0, -1}, factor, 0};
}

constexpr Quantity energy(double factor)
{
    return {{2, 1, -2}, factor, 0};
}

constexpr Quantity power(double factor)
{
    return {{2, 1, -3}, factor, 0};
}

constexpr Quantity rate(double factor)
{
    return {{0, 0, -1}, factor, 0};
}

constexpr Quantity angle(double factor)
{
    return {{0, 0, 0, 0, 0, 1}, factor, 0};
}

constexpr double DEGREE = 3.14159265358979323846 / 180;
constexpr double KNOT = 1852.0 / 3600.0;

/// Compared exactly first, then in any case, in this order. Sources: BIPM, The International System of Units,
/// 9th edition, tables 1 to 8; NIST Special Publication 811, appendix B (inch, foot, mile, mercury, calorie).
/// A Dobson unit, 0.44615 mmol m-2, counts as a mass of ozone (47.9982 g mol-1), as models store the column.
constexpr Row UNITS[] = {
    {"m", length(1)},
    {"km", length(1000)},
    {"dam", length(10)},
    {"dm", length(0.1)},
    {"cm", length(0.01)},
    {"mm", length(0.001)},
    {"um", length(1e-6)},
    {"nm", length(1e-9)},
    {"metre", length(1)},
    {"meter", length(1)},
    {"metres", length(1)},
    {"meters", length(1)},
    {"micron", length(1e-6)},
    {"microns", length(1e-6)},
    {"millimetre", length(0.001)},
    {"millimetres", length(0.001)},
    {"millimeter", length(0.001)},
    {"millimeters", length(0.001)},
    {"centimetre", length(0.01)},
    {"centimetres", length(0.01)},
    {"centimeter", length(0.01)},
    {"centimeters", length(0.01)},
    {"kilometre", length(1000)},
    {"kilometres", length(1000)},
    {"kilometer", length(1000)},
    {"kilometers", length(1000)},
    {"gpm", length(1)},
    {"gpdam", length(10)},
    {"dagpm", length(10)},
    {"gpdm", length(10)},
    {"ft", length(0.3048)},
    {"foot", length(0.3048)},
    {"feet", length(0.3048)},
    {"kft", length(304.8)},
    {"in", length(0.0254)},
    {"inch", length(0.0254)},
    {"inches", length(0.0254)},
    {"yd", length(0.9144)},
    {"mi", length(1609.344)},
    {"mile", length(1609.344)},
    {"miles", length(1609.344)},
    {"SM", length(1609.344)},
    {"nmi", length(1852)},
    {"NM", length(1852)},
    {"L", {{3}, 1e-3, 0}},
    {"litre", {{3}, 1e-3, 0}},
    {"litres", {{3}, 1e-3, 0}},
    {"liter", {{3}, 1e-3, 0}},
    {"liters", {{3}, 1e-3, 0}},
    {"kg", mass(1)},
    {"g", mass(1e-3)},
    {"mg", mass(1e-6)},
    {"ug", mass(1e-9)},
    {"s", duration(1)},
    {"sec", duration(1)},
    {"second", duration(1)},
    {"seconds", duration(1)},
    {"min", duration(60)},
    {"minute", duration(60)},
    {"minutes", duration(60)},
    {"h", duration(3600)},
    {"hr", duration(3600)},
    {"hrs", duration(3600)},
    {"hour", duration(3600)},
    {"hours", duration(3600)},
    {"d", duration(86400)},
    {"day", duration(86400)},
    {"days", duration(86400)},
    {"K", temperature(1, 0)},
    {"C", temperature(1, 273.15)},
    {"F", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"degK", temperature(1, 0)},
    {"degC", temperature(1, 273.15)},
    {"degF", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"kelvin", temperature(1, 0)},
    {"kelvins", temperature(1, 0)},
    {"celsius", temperature(1, 273.15)},
    {"fahrenheit", temperature(5.0 / 9, 459.67 * 5 / 9)},
    {"Pa", pressure(1)},
    {"hPa", pressure(100)},
    {"kPa", pressure(1000)},
    {"mb", pressure(100)},
    {"mbar", pressure(100)},
    {"millibar", pressure(100)},
    {"millibars", pressure(100)},
    {"pascal", pressure(1)},
    {"pascals", pressure(1)},
    {"hectopascal", pressure(100)},
    {"hectopascals", pressure(100)},
    {"bar", pressure(1e5)},
    {"dbar", pressure(1e4)},
    {"atm", pressure(101325)},
    {"torr", pressure(101325.0 / 760)},
    {"psi", pressure(6894.757)},
    {"inHg", pressure(3386.389)},
    {"mmHg", pressure(133.3224)},
    {"kt", speed(KNOT)},
    {"kts", speed(KNOT)},
    {"kn", speed(KNOT)},
    {"knot", speed(KNOT)},
    {"knots", speed(KNOT)},
    {"mph", speed(0.44704)},
    {"kph", speed(1 / 3.6)},
    {"kmh", speed(1 / 3.6)},
    {"kmph", speed(1 / 3.6)},
    {"mps", speed(1)},
    {"N", {{1, 1, -2}, 1, 0}},
    {"J", energy(1)},
    {"kJ", energy(1e3)},
    {"MJ", energy(1e6)},
    {"cal", energy(4.184)},
    {"W", power(1)},
    {"mW", power(1e-3)},
    {"kW", power(1e3)},
    {"MW", power(1e6)},
    {"Hz", rate(1)},
    {"Bq", rate(1)},
    {"mol", {{0, 0, 0, 0, 1}, 1, 0}},
    {"DU", {{-2, 1}, 2.14145e-5, 0}},
    {"dobson", {{-2, 1}, 2.14145e-5, 0}},
    {"Sv", {{3, 0, -1}, 1e6, 0}},
    {"rad", angle(1)},
    {"radian", angle(1)},
    {"radians", angle(1)},
    {"sr", number(1)},
    {"deg", angle(DEGREE)},
    {"degree", angle(DEGREE)},
    {"degrees", angle(DEGREE)},
    {"%", number(0.01)},
    {"percent", number(0.01)},
    {"pct", number(0.01)},
    {"tenths", number(0.1)},
    {"okta", number(0.125)},
    {"oktas", number(0.125)},
    {"octas", number(0.125)},
    {"eighths", number(0.125)},
    {"psu", number(1e-3)},
    {"ppm", number(1e-6)},
    {"ppmv", number(1e-6)},
    {"ppb", number(1e-9)},
    {"ppbv", number(1e-9)},
    {"numeric", number(1)},
    {"proportion", number(1)},
    {"fraction", number(1)},
    {"PVU", {{2, -1, -1, 1}, 1e-6, 0}},
};

constexpr std::pair<std::string_view, std::string_view> PHRASES[] = {
    {"deg c", "degC"},
    {"degrees c", "degC"},
    {"deg f", "degF"},
    {"degrees f", "degF"},
    {"degree c", "degC"},
    {"deg celsius", "degC"},
    {"degree celsius", "degC"},
    {"degrees celsius", "degC"},
    {"degree f", "degF"},
    {"deg fahrenheit", "degF"},
    {"degree fahrenheit", "degF"},
    {"degrees fahrenheit", "degF"},
    {"deg k", "K"},
    {"degree k", "K"},
    {"degrees k", "K"},
    {"degree kelvin", "K"},
    {"degrees kelvin", "K"},
    {"deg true", "deg"},
    {"degree true", "deg"},
    {"degrees true", "deg"},
    {"degree north", "deg"},
    {"degrees north", "deg"},
    {"degree east", "deg"},
    {"degrees east", "deg"},
    {"nautical mile", "nmi"},
    {"nautical miles", "nmi"},
    {"statute mile", "mi"},
    {"statute miles", "mi"},
    {"in hg", "inHg"},
    {"mm hg", "mmHg"},
    {"dobson unit", "DU"},
    {"dobson units", "DU"},
    {"non-dim", "numeric"},
    {"(0 - 1)", "numeric"},
    {"dimensionless", "numeric"},
};

} // namespace

std::optional<Quantity> findUnit(std::string_view text)
{
    for (auto const & row : UNITS)
        if (row.text == text)
            return row.quantity;
    for (auto const & row : UNITS)
        if (sameIgnoringCase(row.text, text))
            return row.quantity;
    return std::nullopt;
}

std::optional<Quantity> findUnitPhrase(std::string_view text)
{
    for (auto const & [phrase, unit] : PHRASES)
        if (sameIgnoringCase(text, phrase))
            return findUnit(unit);
    return std::nullopt;
}

} // namespace Yul::detail
