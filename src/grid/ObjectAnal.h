// Objective analysis: grids from scattered reports.
#pragma once

#include "core/Const.h"
#include "geo/Domain.h"
#include "grid/Grids.h"
#include "grid/StationData.h"

#include <vector>

namespace Yul {

/// Objective analysis by successive corrections with Gaussian weights.
///
/// The first pass gives every grid point the mean of the stations within the radius of influence, weighted by
/// exp(-d^2 / filter), where d is the distance in grid lengths. Every later pass sharpens the filter by the
/// convergence factor, and adds the means of the residuals: what stations say less what the grid says where they
/// lie. Points with too few stations around them are missing.
///
/// Setters return 1. They put the default in place of a bad value where that is stated, and return 0 and change
/// nothing for another bad one.
/// Source: S. L. Barnes, Mesoscale objective map analysis using weighted time-series observations, NOAA Technical
/// Memorandum ERL NSSL-62 (1973).
class ObjectAnal
{
public:
    /// The defaults, see `init`.
    ObjectAnal() { init(); }

    /// Filter 1, radius of influence 3, one pass, convergence factor 0.2, no value for missing ones, one station;
    /// then the setting "object_param", if there is one, as by `setParam`. The domain stays.
    int init();

    /// Takes "filter,radius,passes,convergence,stations" as far as the text goes; the others stay. 0 and a
    /// warning when it does not begin with a number.
    int set(char const * text);
    int set(float filter_value, float rad_inf_value, int pass_value, float conv_value);

    /// Takes comma-separated items, each a key, one character, and a value: "filter=2,pass=3". Keys, in any case,
    /// are filter, rad_inf, pass, conv, min_sta, miss, and oa with the values of `set` with colons between
    /// them, "oa=2:4:3:0.3:2", or commas. An item that is none of these is passed over with a warning, and the
    /// result is 0.
    int setParam(char const * text);

    /// The square of the distance at which a weight is 1/e, in grid lengths squared; 1 for a value of 0 or less.
    int setFilter(float value);
    /// The distance up to which, and not beyond, a station influences a grid point, in grid lengths. Its sign
    /// does not count. 0 for NaN.
    int setRadInf(float value);
    /// Passes in all, the first one included, which is always made.
    int setNumPass(int value);
    /// What the filter is multiplied by from pass to pass; 0.2 for a value below 0.01 or of 1 or more.
    int setConverg(float value);
    /// How many stations must influence a grid point; 1 for a value below 1.
    int setMinSta(int value);
    /// The value that a missing one of a station is taken for; Const::MISS leaves it out. 0 for
    /// NaN and infinity.
    int setMissVal(float value);

    /// Grid lengths squared, see setFilter.
    [[nodiscard]] float getFilter() const noexcept { return filter; }

    /// Grid lengths, see setRadInf.
    [[nodiscard]] float getRadInf() const noexcept { return rad_inf; }

    /// See setNumPass.
    [[nodiscard]] int getNumPass() const noexcept { return pass; }

    /// See setConverg.
    [[nodiscard]] float getConverg() const noexcept { return conv; }

    /// See setMinSta.
    [[nodiscard]] int getMinSta() const noexcept { return min_sta; }

    /// See setMissVal.
    [[nodiscard]] float getMissVal() const noexcept { return miss; }

    /// The domain on whose grid the analysis is made.
    int setDomain(Domain const & value);

    /// The domain on whose grid the analysis is made.
    [[nodiscard]] Domain const & getDomain() const noexcept { return domain; }

    /// Analyses every field of the data onto a grid of the domain: field 0 into the first grid of the list, and
    /// so on. Grids are added where the list is shorter, and those beyond the fields stay as they are. A grid
    /// gets the domain, the size, the values, and the variable that a field's name tells; its date, level and
    /// other fields stay. The data are not changed. Stations outside the grid influence points inside the radius,
    /// but have no residual, for there is no grid value where they lie.
    ///
    /// Progress and the root mean square of the residuals after every pass are messages of level 8. Returns 0 with
    /// a warning, and leaves the values of the grids undefined, without a domain with a grid, without fields, and
    /// when memory is short.
    int compute(StationData const & data, Grids & grids);

    /// The root mean square of a field's residuals after the last pass of the last `compute`; Const::MISS when
    /// there was none or the field had no residual.
    [[nodiscard]] float getRms(int field) const noexcept;

    /// Lists the parameters on standard output.
    int print() const;

private:
    [[nodiscard]] bool hasGrid() const;
    int prepare(StationData const & data, Grids & grids) const;
    void analyse(StationData const & data, Grids & grids);
    void announce(StationData const & data) const;

    float filter = 1;
    float rad_inf = 3;
    int pass = 1;
    float conv = 0.2F;
    float miss = Const::MISS;
    int min_sta = 1;
    Domain domain;
    std::vector<float> rms;
};

} // namespace Yul
