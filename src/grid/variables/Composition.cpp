// Variables: aerosols, gases, radar, electricity, radionuclides.
// Sources: WMO Manual on Codes 306, volume I.2, code table 4.2 (edition 2) and code table 2 (edition 1); NCEP
// local entries of both, NCEP Office Note 388.
#include "grid/variables/Tables.h"

namespace Yul::detail {
namespace {

constexpr VarNameItem ROWS[] = {
    {1013000, 0, 0, "AEROT", "Aerosol type", ""},
    {1013192, 0, 0, "PMTC", "Particulate matter (coarse)", "ug m-3"},
    {1013193, 0, 0, "PMTF", "Particulate matter (fine)", "ug m-3"},
    {1013194, 0, 0, "LPMTF", "Particulate matter (fine)", "log10(10^-6g/m^3)"},
    {1013195, 0, 0, "LIPMF", "Integrated column particulate matter (fine)", "log10(10^-6g/m^3)"},
    {1014000, 0, 10, "TOZNE", "Total ozone", "DU"},
    {1014001, 1014192, 154, "O3MR", "Ozone mixing ratio", "kg kg-1"},
    {1014002, 0, 0, "TCIOZ", "Total column integrated ozone", "DU"},
    {1014193, 0, 0, "OZCON", "Ozone concentration", "ppb"},
    {1014194, 0, 0, "OZCAT", "Categorical ozone concentration", "1"},
    {1014195, 0, 0, "VDFOZ", "Ozone vertical diffusion", "kg kg-1 s-1"},
    {1014196, 0, 0, "POZ", "Ozone production", "kg kg-1 s-1"},
    {1014197, 0, 0, "TOZ", "Ozone tendency", "kg kg-1 s-1"},
    {1014198, 0, 0, "POZT", "Ozone production from temperature term", "kg kg-1 s-1"},
    {1014199, 0, 0, "POZO", "Ozone production from column ozone term", "kg kg-1 s-1"},
    {1014200, 0, 0, "OZMAX1", "Ozone daily max from 1-hour average", "ppb"},
    {1014201, 0, 0, "OZMAX8", "Ozone daily max from 8-hour average", "ppb"},
    {1014202, 0, 0, "PDMAX1", "PM 2.5 daily max from 1-hour average", "ug m-3"},
    {1014203, 0, 0, "PDMAX24", "PM 2.5 daily max from 24-hour average", "ug m-3"},
    {1014204, 0, 0, "ALD2", "Acetaldehyde & higher aldehydes", "ppb"},
    {1015000, 0, 0, "BSWID", "Base spectrum width", "m s-1"},
    {1015001, 0, 0, "BREF", "Base reflectivity", "dB"},
    {1015002, 0, 0, "BRVEL", "Base radial velocity", "m s-1"},
    {1015003, 0, 0, "VIL", "Vertically integrated liquid water (VIL)", "kg m-2"},
    {1015004, 0, 0, "LMAXBR", "Layer-maximum base reflectivity", "dB"},
    {1015005, 0, 0, "PREC", "Precipitation", "kg m-2"},
    {1015006, 0, 21, "RDSP1", "Radar spectra (1)", ""},
    {1015007, 0, 22, "RDSP2", "Radar spectra (2)", ""},
    {1015008, 0, 23, "RDSP3", "Radar spectra (3)", ""},
    {1015009, 0, 0, "RFCD", "Reflectivity of cloud droplets", "dB"},
    {1015010, 0, 0, "RFCI", "Reflectivity of cloud ice", "dB"},
    {1015011, 0, 0, "RFSNOW", "Reflectivity of snow", "dB"},
    {1015012, 0, 0, "RFRAIN", "Reflectivity of rain", "dB"},
    {1015013, 0, 0, "RFGRPL", "Reflectivity of graupel", "dB"},
    {1015014, 0, 0, "RFHAIL", "Reflectivity of hail", "dB"},
    {1015015, 0, 0, "HSR", "Hybrid scan reflectivity", "dB"},
    {1015016, 0, 0, "HSRHT", "Hybrid scan reflectivity height", "m"},
    {1016000, 1016192, 0, "REFZR", "Equivalent radar reflectivity factor for rain", "mm6 m-3"},
    {1016001, 1016193, 0, "REFZI", "Equivalent radar reflectivity factor for snow", "mm6 m-3"},
    {1016002, 1016194, 0, "REFZC", "Equivalent radar reflectivity factor for parameterized convection",
     "mm6 m-3"},
    {1016003, 1016197, 0, "RETOP", "Echo top", "m"},
    {1016004, 1016195, 0, "REFD", "Reflectivity", "dB"},
    {1016005, 1016196, 0, "REFC", "Composite reflectivity", "dB"},
    {1016198, 0, 0, "MAXREF", "Hourly maximum of simulated reflectivity", "dB"},
    {1017000, 0, 0, "LTNGSD", "Lightning strike density", "m-2 s-1"},
    {1017001, 0, 0, "LTPINX", "Lightning potential index (LPI)", "J kg-1"},
    {1017002, 0, 0, "CDGDLTFD", "Cloud-to-ground lightning flash density", "km-2 day-1"},
    {1017003, 0, 0, "CDCDLTFD", "Cloud-to-cloud lightning flash density", "km-2 day-1"},
    {1017004, 0, 0, "TLGTFD", "Total lightning flash density", "km-2 day-1"},
    {1017005, 0, 0, "SLNGPIDX", "Subgrid-scale lightning potential index", "J kg-1"},
    {1017192, 0, 187, "LTNG", "Lightning", "1"},
    {1018000, 0, 0, "ACCES", "Air activity concentration of caesium 137", "Bq m-3"},
    {1018001, 0, 0, "ACIOD", "Air activity concentration of iodine 131", "Bq m-3"},
    {1018002, 0, 0, "ACRADP", "Air activity concentration of radioactive pollutant", "Bq m-3"},
    {1018003, 0, 0, "GDCES", "Ground deposition activity of caesium 137", "Bq m-2"},
    {1018004, 0, 0, "GDIOD", "Ground deposition activity of iodine 131", "Bq m-2"},
    {1018005, 0, 0, "GDRADP", "Ground deposition activity of radioactive pollutant", "Bq m-2"},
    {1018006, 0, 0, "TIACCP", "Time-integrated air activity concentration of caesium pollutant", "Bq s m-3"},
    {1018007, 0, 0, "TIACIP", "Time-integrated air activity concentration of iodine pollutant", "Bq s m-3"},
    {1018008, 0, 0, "TIACRP", "Time-integrated air activity concentration of radioactive pollutant",
     "Bq s m-3"},
    {1018010, 0, 0, "AIRCON", "Air activity concentration", "Bq m-3"},
    {1018011, 0, 0, "WETDEP", "Wet deposition activity", "Bq m-2"},
    {1018012, 0, 0, "DRYDEP", "Dry deposition activity", "Bq m-2"},
    {1018013, 0, 0, "TOTLWD", "Total deposition activity (wet + dry)", "Bq m-2"},
    {1018014, 0, 0, "SACON", "Specific activity concentration", "Bq kg-1"},
    {1018015, 0, 0, "MAXACON", "Maximum of air activity concentration in layer", "Bq m-3"},
    {1018016, 0, 0, "HMXACON", "Height of maximum air activity concentration", "m"},
    {1018017, 0, 0, "CIAIRC", "Column-integrated air activity concentration", "Bq m-2"},
    {1018018, 0, 0, "CAACL", "Column-averaged air activity concentration in layer", "Bq m-3"},
};

} // namespace

std::span<VarNameItem const> compositionVariables() noexcept
{
    return ROWS;
}

} // namespace Yul::detail
