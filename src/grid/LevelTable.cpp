#include "grid/LevelTable.h"

#include "grid/Level.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {
namespace {

/// WMO Manual on Codes 306, volume I.2, code table 4.5; 200 to 254 from NCEP's local entries of that table.
constexpr LevelKind KINDS[] = {
    {1, false, "sfc", "Surface", "", 1},
    {2, false, "cloudbase", "Cloud base", "", 1},
    {3, false, "cloudtop", "Cloud top", "", 1},
    {4, false, "0deg", "0 C isotherm", "", 1},
    {5, false, "lcl", "Lifted condensation level", "", 1},
    {6, false, "maxwind", "Maximum wind level", "", 1},
    {7, false, "trop", "Tropopause", "", 1},
    {8, false, "toa", "Top of atmosphere", "", 1},
    {9, false, "seabottom", "Sea bottom", "", 1},
    {10, false, "atmos", "Entire atmosphere", "", 1},
    {11, false, "cbbase", "Cumulonimbus base", "", 1},
    {12, false, "cbtop", "Cumulonimbus top", "", 1},
    {13, true, "%cbase", "Base of %s % cloud cover aloft", "%", 1},
    {14, false, "lfc", "Level of free convection", "", 1},
    {15, false, "ccl", "Convective condensation level", "", 1},
    {16, false, "lnb", "Level of neutral buoyancy", "", 1},
    {17, false, "mudl", "Departure level of most unstable parcel", "", 1},
    {18, true, "mbmixed", "Departure level of %s hPa mixed layer", "hPa", 100},
    {19, true, "%cover", "Lowest level of %s % cloud cover", "%", 1},
    {20, true, "kiso", "%s K isotherm", "K", 1},
    {25, true, "dbztop", "%s dBZ echo top", "dBZ", 1},
    {26, false, "convbase", "Convective cloud layer base", "", 1},
    {27, false, "convtop", "Convective cloud layer top", "", 1},
    {36, false, "stratopause", "Stratopause", "", 1},
    {100, true, "mb", "%s hPa", "hPa", 100},
    {101, false, "msl", "Mean sea level", "", 1},
    {102, true, "mmsl", "%s m above mean sea level", "m", 1},
    {103, true, "m", "%s m above ground", "m", 1},
    {104, true, "sigma", "%s sigma", "1", 1},
    {105, true, "hybrid", "Hybrid level %s", "1", 1},
    {106, true, "cm", "%s cm below ground", "cm", 0.01},
    {107, true, "k", "%s K potential temperature", "K", 1},
    {108, true, "mbagl", "%s hPa above ground", "hPa", 100},
    {109, true, "pvu", "%s PVU", "PVU", 1e-6},
    {111, true, "eta", "%s eta", "1", 1},
    {113, true, "lnhybrid", "Logarithmic hybrid level %s", "1", 1},
    {114, true, "snow", "Snow level %s", "1", 1},
    {115, true, "sigmaz", "Sigma height level %s", "1", 1},
    {117, true, "mmixed", "%s m mixed layer depth", "m", 1},
    {118, true, "hybridz", "Hybrid height level %s", "1", 1},
    {119, true, "hybridp", "Hybrid pressure level %s", "1", 1},
    {150, true, "height", "Generalized height level %s", "1", 1},
    {151, true, "soil", "Soil level %s", "1", 1},
    {152, true, "ice", "Sea ice level %s", "1", 1},
    {160, true, "mbsl", "%s m below sea level", "m", 1},
    {161, true, "mbws", "%s m below water surface", "m", 1},
    {162, false, "lakebottom", "Lake or river bottom", "", 1},
    {166, false, "mixing", "Mixing layer", "", 1},
    {167, false, "rootzone", "Bottom of root zone", "", 1},
    {168, true, "ocean", "Ocean model level %s", "1", 1},
    {174, false, "icetop", "Top of ice on water", "", 1},
    {176, false, "icebottom", "Bottom of ice on water", "", 1},
    {177, false, "deepsoil", "Deep soil", "", 1},
    {201, false, "eocean", "Entire ocean", "", 1},
    {204, false, "htfl", "Highest tropospheric freezing level", "", 1},
    {206, false, "gcbl", "Grid scale cloud bottom", "", 1},
    {207, false, "gctl", "Grid scale cloud top", "", 1},
    {209, false, "bcbl", "Boundary layer cloud bottom", "", 1},
    {210, false, "bctl", "Boundary layer cloud top", "", 1},
    {211, false, "blcloud", "Boundary layer cloud layer", "", 1},
    {212, false, "lcbl", "Low cloud bottom", "", 1},
    {213, false, "lctl", "Low cloud top", "", 1},
    {214, false, "lowcloud", "Low cloud layer", "", 1},
    {215, false, "ceiling", "Cloud ceiling", "", 1},
    {216, false, "cbb", "Cumulonimbus cloud base", "", 1},
    {217, false, "cbt", "Cumulonimbus cloud top", "", 1},
    {220, false, "pbl", "Planetary boundary layer", "", 1},
    {222, false, "mcbl", "Middle cloud bottom", "", 1},
    {223, false, "mctl", "Middle cloud top", "", 1},
    {224, false, "midcloud", "Middle cloud layer", "", 1},
    {232, false, "hcbl", "High cloud bottom", "", 1},
    {233, false, "hctl", "High cloud top", "", 1},
    {234, false, "highcloud", "High cloud layer", "", 1},
    {235, true, "coitl", "%s C ocean isotherm", "C", 1},
    {237, false, "obml", "Bottom of ocean mixed layer", "", 1},
    {238, false, "obil", "Bottom of ocean isothermal layer", "", 1},
    {239, false, "s26cy", "Ocean surface to 26 C isotherm", "", 1},
    {240, false, "omxl", "Ocean mixed layer", "", 1},
    {241, true, "seq", "Ordered sequence %s", "1", 1},
    {242, false, "ccbl", "Convective cloud bottom", "", 1},
    {243, false, "cctl", "Convective cloud top", "", 1},
    {244, false, "convcloud", "Convective cloud layer", "", 1},
    {245, false, "lltw", "Lowest level of wet bulb zero", "", 1},
    {246, false, "mthe", "Maximum equivalent potential temperature", "", 1},
    {247, false, "el", "Equilibrium level", "", 1},
    {248, false, "scbl", "Shallow convective cloud bottom", "", 1},
    {249, false, "sctl", "Shallow convective cloud top", "", 1},
    {251, false, "dcbl", "Deep convective cloud bottom", "", 1},
    {252, false, "dctl", "Deep convective cloud top", "", 1},
    {253, false, "lblsw", "Lowest bottom of supercooled water layer", "", 1},
    {254, false, "htlsw", "Highest top of supercooled water layer", "", 1},
};

constexpr LevelAlias ALIASES[] = {
    {"", Level::PRES},
    {"hpa", Level::PRES},
    {"millibar", Level::PRES},
    {"millibars", Level::PRES},
    {"mblayer", Level::PRES},
    {"mblevel", Level::PRES},
    {"hpalevel", Level::PRES},
    {"hpalayer", Level::PRES},
    {"pa", Level::PRES, 0.01},
    {"kpa", Level::PRES, 10},
    {"magl", Level::HGT},
    {"mgnd", Level::HGT},
    {"metre", Level::HGT},
    {"metres", Level::HGT},
    {"meter", Level::HGT},
    {"meters", Level::HGT},
    {"maboveground", Level::HGT},
    {"mabovegroundlevel", Level::HGT},
    {"metresaboveground", Level::HGT},
    {"metersaboveground", Level::HGT},
    {"mabovegnd", Level::HGT},
    {"km", Level::HGT, 1000},
    {"kmagl", Level::HGT, 1000},
    {"kmaboveground", Level::HGT, 1000},
    {"ft", Level::HGT, 0.3048},
    {"feet", Level::HGT, 0.3048},
    {"ftagl", Level::HGT, 0.3048},
    {"feetagl", Level::HGT, 0.3048},
    {"ftaboveground", Level::HGT, 0.3048},
    {"masl", Level::HGT_MSL},
    {"mamsl", Level::HGT_MSL},
    {"mabovemsl", Level::HGT_MSL},
    {"mabovesealevel", Level::HGT_MSL},
    {"mabovemeansealevel", Level::HGT_MSL},
    {"kmmsl", Level::HGT_MSL, 1000},
    {"kmasl", Level::HGT_MSL, 1000},
    {"kmamsl", Level::HGT_MSL, 1000},
    {"ftmsl", Level::HGT_MSL, 0.3048},
    {"ftasl", Level::HGT_MSL, 0.3048},
    {"ftamsl", Level::HGT_MSL, 0.3048},
    {"sig", Level::SIGMA},
    {"sigmalevel", Level::SIGMA},
    {"hyb", Level::HYBRID},
    {"hybridlevel", Level::HYBRID},
    {"cmbelowground", Level::DEPTH},
    {"cmbgl", Level::DEPTH},
    {"mbelowground", Level::DEPTH, 100},
    {"mbgl", Level::DEPTH, 100},
    {"theta", Level::THETA},
    {"ktheta", Level::THETA},
    {"kisentropic", Level::THETA},
    {"kisentropiclevel", Level::THETA},
    {"kpotentialtemperature", Level::THETA},
    {"hpaagl", Level::PRES_GND},
    {"mbgnd", Level::PRES_GND},
    {"mbaboveground", Level::PRES_GND},
    {"hpaaboveground", Level::PRES_GND},
    {"paagl", Level::PRES_GND, 0.01},
    {"pv", Level::PV},
    {"kisotherm", Level::ISOTHERM},
    {"c", Level::ISOTHERM, 1, 273.15},
    {"ciso", Level::ISOTHERM, 1, 273.15},
    {"cisotherm", Level::ISOTHERM, 1, 273.15},
    {"mbelowsealevel", Level::DEPTH_SEA},
    {"soillevel", Level::SOIL},
    {"surface", Level::SFC},
    {"ground", Level::SFC},
    {"gnd", Level::SFC},
    {"sealevel", Level::MSL},
    {"meansealevel", Level::MSL},
    {"tropopause", Level::TROP},
    {"tro", Level::TROP},
    {"maxwindlevel", Level::MAX_WIND},
    {"mwsl", Level::MAX_WIND},
    {"0c", Level::ZERO_DEG},
    {"0cisotherm", Level::ZERO_DEG},
    {"freezing", Level::ZERO_DEG},
    {"freezinglevel", Level::ZERO_DEG},
    {"adcl", Level::LCL},
    {"topofatmosphere", Level::TOA},
    {"nominaltop", Level::TOA},
    {"entireatmosphere", Level::ATMOS},
    {"entireatmosphere(consideredasasinglelayer)", Level::ATMOS},
    {"atmosphere", Level::ATMOS},
    {"column", Level::ATMOS},
    {"totalcolumn", Level::ATMOS},
    {"eatm", Level::ATMOS},
    {"entireocean", Level::OCEAN},
    {"blcloudlayer", Level::BL_CLOUD},
    {"bcy", Level::BL_CLOUD},
    {"lowcloudlayer", Level::LOW_CLOUD},
    {"lcy", Level::LOW_CLOUD},
    {"ceil", Level::CEILING},
    {"boundarylayer", Level::PBL},
    {"pblri", Level::PBL},
    {"midcloudlayer", Level::MID_CLOUD},
    {"middlecloudlayer", Level::MID_CLOUD},
    {"mcy", Level::MID_CLOUD},
    {"highcloudlayer", Level::HIGH_CLOUD},
    {"hcy", Level::HIGH_CLOUD},
    {"convectivecloud", Level::CONV_CLOUD},
    {"ccy", Level::CONV_CLOUD},
};

/// WMO Manual on Codes 306, volume I.2, FM 92-IX, code table 3; 126 and 204 to 254 from NCEP Office Note 388.
/// Where two rows fit equally well when a level is coded, the first is taken.
constexpr LevelGrib1 GRIB1[] = {
    {1, 1},
    {2, 2},
    {3, 3},
    {4, 4},
    {5, 5},
    {6, 6},
    {7, 7},
    {8, 8},
    {9, 9},
    {20, 20, LevelGrib1::WORD, 0.01},
    {100, 100, LevelGrib1::WORD},
    {101, 100, LevelGrib1::OCTETS, 10},
    {102, 101},
    {103, 102, LevelGrib1::WORD},
    {104, 102, LevelGrib1::OCTETS, 100},
    {105, 103, LevelGrib1::WORD},
    {106, 103, LevelGrib1::OCTETS, 100},
    {107, 104, LevelGrib1::WORD, 0.0001},
    {108, 104, LevelGrib1::OCTETS, 0.01},
    {109, 105, LevelGrib1::WORD},
    {110, 105, LevelGrib1::OCTETS},
    {111, 106, LevelGrib1::WORD},
    {112, 106, LevelGrib1::OCTETS},
    {113, 107, LevelGrib1::WORD},
    {114, 107, LevelGrib1::OCTETS, -1, 475},
    {115, 108, LevelGrib1::WORD},
    {116, 108, LevelGrib1::OCTETS},
    {117, 109, LevelGrib1::SIGNED_WORD, 0.001},
    {119, 111, LevelGrib1::WORD, 0.0001},
    {120, 111, LevelGrib1::OCTETS, 0.01},
    {121, 100, LevelGrib1::OCTETS, -1, 1100},
    {125, 103, LevelGrib1::WORD, 0.01},
    {126, 100, LevelGrib1::WORD, 0.01},
    {128, 104, LevelGrib1::OCTETS, -0.001, 1.1},
    {141, 100, LevelGrib1::MIXED, -1, 1100},
    {160, 160, LevelGrib1::WORD},
    {200, 10},
    {201, 201},
    {204, 204},
    {206, 206},
    {207, 207},
    {209, 209},
    {210, 210},
    {211, 211},
    {212, 212},
    {213, 213},
    {214, 214},
    {215, 215},
    {216, 216},
    {217, 217},
    {220, 220},
    {222, 222},
    {223, 223},
    {224, 224},
    {232, 232},
    {233, 233},
    {234, 234},
    {235, 235, LevelGrib1::WORD, 0.1},
    {236, 160, LevelGrib1::OCTETS, 10},
    {237, 237},
    {238, 238},
    {239, 239},
    {240, 240},
    {241, 241, LevelGrib1::WORD},
    {242, 242},
    {243, 243},
    {244, 244},
    {245, 245},
    {246, 246},
    {247, 247},
    {248, 248},
    {249, 249},
    {251, 251},
    {252, 252},
    {253, 253},
    {254, 254},
};

struct FlightLevel
{
    int number;
    double pressure; ///< hPa
};

/// ICAO Annex 3, appendix 2.
constexpr FlightLevel FLIGHT_LEVELS[] = {
    {50, 850},  {80, 750},  {100, 700}, {140, 600}, {180, 500}, {210, 450},
    {240, 400}, {270, 350}, {300, 300}, {320, 275}, {340, 250}, {360, 225},
    {390, 200}, {410, 175}, {450, 150}, {480, 125}, {530, 100},
};

/// Pressure of the standard atmosphere in hPa up to 20 km, for a geopotential height in metres.
double standardPressure(double height)
{
    constexpr double TROPOPAUSE = 11000;
    if (height <= TROPOPAUSE)
        return 1013.25 * std::pow(1 - 0.0065 * height / 288.15, 5.255880);
    return 226.3206 * std::exp(-(height - TROPOPAUSE) / 6341.616);
}

} // namespace

std::optional<double> flightLevelPressure(double flight_level) noexcept
{
    constexpr double HIGHEST = 650;
    constexpr double METRES = 30.48;
    if (!(flight_level >= 0 && flight_level <= HIGHEST))
        return std::nullopt;
    for (auto const & row : FLIGHT_LEVELS)
        if (row.number == flight_level)
            return row.pressure;
    return std::round(10 * standardPressure(METRES * flight_level)) / 10;
}

std::optional<float> levelValue(double value) noexcept
{
    constexpr double LARGEST = 3e38; // just below what a float holds
    auto const kept = std::abs(value) < LARGEST ? static_cast<float>(value) : NAN;
    return std::isnan(kept) || isMissing(kept) ? std::nullopt : std::optional(kept);
}

std::span<LevelKind const> levelKinds() noexcept
{
    return KINDS;
}

std::span<LevelAlias const> levelAliases() noexcept
{
    return ALIASES;
}

std::span<LevelGrib1 const> levelsGrib1() noexcept
{
    return GRIB1;
}

LevelKind const * findLevelKind(int code) noexcept
{
    static_assert(std::ranges::is_sorted(KINDS, {}, &LevelKind::code));
    auto const * const row = std::ranges::lower_bound(KINDS, code, {}, &LevelKind::code);
    return row != std::end(KINDS) && row->code == code ? row : nullptr;
}

} // namespace Yul::detail
