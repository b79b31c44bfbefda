// One two-dimensional field of a meteorological quantity.
#pragma once

#include "core/Const.h"
#include "core/String.h"
#include "geo/Domain.h"
#include "geo/EarthPoint.h"
#include "geo/GridPoint.h"
#include "geo/Point.h"
#include "geo/Rect.h"
#include "grid/GridData.h"
#include "grid/GridSpec.h"
#include "grid/Level.h"
#include "grid/Variable.h"
#include "time/Date.h"
#include "time/ForeTime.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace Yul {

/// One two-dimensional field (temperatures of an analysis, heights of a pressure level in a forecast) on the
/// regular grid that a Domain describes.
///
/// Values are 32-bit floats, row by row: index = row * nx + column. Row 0 is the northern (top) edge and rows
/// grow downward; column 0 is the western (left) edge. A value of -9999 (Const::MISS) is missing, and so is
/// NaN; every operation skips missing values and keeps them missing. Infinite values are values.
///
/// Setters return 1, or 0 and change nothing for bad input. A null text counts as an empty one. Texts and
/// references that getters return belong to the grid and are valid until it changes.
class Grid
{
public:
    Grid() = default;

    /// A grid of nx by ny values, all missing. Size and values stay unset when `allocData` refuses the size.
    Grid(int nx_value, int ny_value);

    Grid(Grid const & grid);
    Grid & operator=(Grid const & grid);
    Grid(Grid &&) noexcept = default;
    Grid & operator=(Grid &&) noexcept = default;
    ~Grid() = default;

    /// Releases values and locations and resets every field.
    int init();
    /// The same, but keeps the memory of the values for the next grid that is read into this one.
    int reset();

    /// Deep copies: `copy` is `copyInfo` (every field but the arrays), then `copyData` (size and values).
    /// Locations are not copied. A grid may be copied onto itself. `copyData` returns 0 when memory is short.
    int copy(Grid const & grid);
    int copyInfo(Grid const & grid);
    int copyData(Grid const & grid);

    // Size and values ---------------------------------------------------------------------------------------

    /// Records the size. Values are kept while their number stays the same, else they are forgotten. Returns
    /// 0 with a warning for a size below 1 or of more than MAX_VALUES values; Const::MISS for both unsets
    /// it.
    int setSize(int nx_value, int ny_value);
    /// Allocates nx * ny values, all missing; memory that the grid holds already is used again. Returns 0
    /// with a warning when no size is set or memory is short.
    int allocData();
    /// For readers: sets the size and returns room for nx * ny values in storage order, without filling it;
    /// the reader must write every one. Memory that the grid holds already is used again. Null, with a
    /// warning and nothing changed, when the size is refused.
    [[nodiscard]] float * prepareData(int nx_value, int ny_value);
    /// Forgets the values and keeps their memory.
    int freeData();

    /// A third size for sources that have one (vertical levels); nothing in the library depends on it.
    int setNz(int value);

    /// Const::MISS while not set.
    [[nodiscard]] int getNz() const noexcept { return nz; }

    /// The most values that a grid can have.
    static constexpr int MAX_VALUES = 1 << 30;

    /// nx * ny; Const::MISS while no size is set.
    [[nodiscard]] int getSize() const noexcept;

    /// Columns; Const::MISS while no size is set.
    [[nodiscard]] int getNx() const noexcept { return nx; }

    /// Rows; Const::MISS while no size is set.
    [[nodiscard]] int getNy() const noexcept { return ny; }

    /// True when there are values.
    [[nodiscard]] bool isData() const noexcept { return values.size() > 0; }

    /// All values in storage order, null or empty where there are none. Valid until the size changes, the
    /// values are freed or the grid is copied to.
    [[nodiscard]] float * data() noexcept { return values.data(); }

    /// The same to read only.
    [[nodiscard]] float const * data() const noexcept { return values.data(); }

    /// The same with their number.
    [[nodiscard]] std::span<float> getValues() noexcept { return {values.data(), values.size()}; }

    /// The same to read only.
    [[nodiscard]] std::span<float const> getValues() const noexcept { return {values.data(), values.size()}; }

    /// The memory of the values, kept alive by whoever holds it. The grid takes other memory for values of
    /// another number while it is held.
    [[nodiscard]] std::shared_ptr<float[]> shareData() const noexcept { return values.share(); }

    /// 0 outside the grid or without values; NaN is stored as missing.
    int setValue(int column, int row, float value);
    /// Every value.
    int setValue(float value);
    /// Missing outside the grid or without values.
    [[nodiscard]] float getValue(int column, int row) const noexcept;
    /// Bilinear between the four points around; a missing one among them makes the result missing, also where
    /// its weight is 0. Missing outside the grid (columns 0 to nx-1, rows 0 to ny-1) and without values. In
    /// the last column or row only the two points on it count, in the last corner only that point.
    [[nodiscard]] float getValue(GridPoint const & point) const noexcept;
    /// The same at a position on the earth or in the domain's plane.
    [[nodiscard]] float getValue(EarthPoint const & point) const;
    [[nodiscard]] float getValue(Point const & point) const;
    /// `getValue(GridPoint)` for many: values[i] at (x[i], y[i]); all three of one length.
    int getValues(std::span<float const> x, std::span<float const> y, std::span<float> out) const noexcept;
    /// `getValue(EarthPoint)` for many, in degrees; all three of one length.
    int getValues(std::span<double const> lat, std::span<double const> lon, std::span<float> out) const;
    /// True when the value is there and not missing.
    [[nodiscard]] bool isValue(int column, int row) const noexcept;

    // Fields ------------------------------------------------------------------------------------------------

    /// Grid type, data source (originating centre), file format version, model (generating process).
    int setType(int value);
    int setSource(int value);
    int setVersion(int value);
    int setModel(int value);

    /// The grid type; 0 while not set.
    [[nodiscard]] int getType() const noexcept { return type; }

    /// The originating centre, WMO common code table C-11.
    [[nodiscard]] int getSource() const noexcept { return source; }

    /// The version of the file's form.
    [[nodiscard]] int getVersion() const noexcept { return version; }

    /// The generating process, by the centre's own table.
    [[nodiscard]] int getModel() const noexcept { return model; }

    /// The name of the model that made the grid.
    int setGenName(char const * text);

    /// Empty while not set, as the texts that follow.
    [[nodiscard]] char const * getGenName() const noexcept { return gen_name.c_str(); }

    /// The date and time as it stood in the source.
    int setDatim(char const * text);

    /// The date and time as it stood in the source.
    [[nodiscard]] char const * getDatim() const noexcept { return datim.c_str(); }

    /// A descriptive text, by habit the long name of the field with its units in square brackets.
    int setInfo(char const * text);

    /// The descriptive text.
    [[nodiscard]] char const * getInfo() const noexcept { return info.c_str(); }

    /// The initial (reference) time.
    int setDate(Date const & value);
    int setDate(DateVal const & value);

    /// The initial time; getInitDate is the same.
    [[nodiscard]] Date const & getDate() const noexcept { return date; }

    /// Its fields.
    [[nodiscard]] DateVal const & getDateVal() const noexcept { return date; }

    /// The initial time.
    [[nodiscard]] Date const & getInitDate() const noexcept { return date; }

    /// The time for which the field holds: initial time plus forecast time. 0 and unset while there is no
    /// initial time.
    int getValidDate(Date & value) const;

    /// Where the grid lies. The grid's own size is not changed; locations are forgotten.
    int setDomain(Domain const & value);
    int setDomain(DomainVal const & value);

    /// Where the grid lies.
    [[nodiscard]] Domain const & getDomain() const noexcept { return domain; }

    /// The domain's plain values, its projection (Domain::LATLON, ...) and the distances of columns and rows.
    [[nodiscard]] DomainVal const & getDomainVal() const;
    [[nodiscard]] int getProj() const;
    [[nodiscard]] float getDx() const;
    [[nodiscard]] float getDy() const;

    /// The vertical level or layer; for texts see Level::set, which warns.
    int setLevel(Level const & value);
    int setLevel(char const * text);

    /// The vertical level or layer.
    [[nodiscard]] Level const & getLevel() const noexcept { return level; }

    /// The kind of level, Level::Type.
    [[nodiscard]] int getLevelType() const noexcept { return level.getType(); }

    /// The forecast time; for texts see ForeTime::set.
    int setForeTime(ForeTime const & value);
    int setForeTime(char const * text);

    /// The forecast time.
    [[nodiscard]] ForeTime const & getForeTime() const noexcept { return fore; }

    /// The forecast time in hours and in seconds after the initial time (the end of a period); Const::MISS
    /// while not set.
    [[nodiscard]] int getForeHours() const;
    [[nodiscard]] long getForeSeconds() const;

    /// The variable; for texts see Variable::set, which warns.
    int setVar(Variable const & value);
    int setVar(char const * text);

    /// The variable.
    [[nodiscard]] Variable const & getVar() const noexcept { return var; }

    /// The variable's units become the text, and the info text ends in them: "Height [gpm]". A bracketed part
    /// that is there already is replaced. A null, empty or blank text is ignored (0). Values are not changed.
    int setUnits(char const * text);

    /// Units of the values, empty where they are not known.
    [[nodiscard]] char const * getUnits() const noexcept { return var.getUnits(); }

    /// Converts the values to other units of the same quantity and sets them. Returns 0, prints a warning and
    /// changes nothing when there is no conversion.
    int convertUnits(char const * text);

    /// What identifies the grid: variable, level, forecast time, source and model (left open while both are
    /// 0).
    [[nodiscard]] GridSpec getSpec() const;
    /// True when every part that the grid spec sets is the same in the grid. An analysis meets a forecast time of
    /// no length as well.
    [[nodiscard]] bool meets(GridSpec const & spec) const;

    // Positions: all through the domain, see Domain
    // ------------------------------------------------------------

    /// From one to the other of earth, plane and grid.
    int tran(EarthPoint const & in, Point & out) const;
    int tran(EarthPoint const & in, GridPoint & out) const;
    int tran(Point const & in, EarthPoint & out) const;
    int tran(Point const & in, GridPoint & out) const;
    int tran(GridPoint const & in, EarthPoint & out) const;
    int tran(GridPoint const & in, Point & out) const;
    /// From this grid to another domain's plane or grid.
    int tran(Point const & in, Domain const & to, Point & out) const;
    int tran(GridPoint const & in, Domain const & to, GridPoint & out) const;
    /// From another domain's plane or grid to this grid.
    int tran(Domain const & from, Point const & in, Point & out) const;
    int tran(Domain const & from, GridPoint const & in, GridPoint & out) const;
    /// The position of value `index` (row * nx + column).
    int tran(int index, EarthPoint & out) const;
    int tran(int index, GridPoint & out) const;
    int tran(int index, Point & out) const;
    /// Turns a direction from true north to grid north and back; see Domain.
    [[nodiscard]] float adjustDir(float angle, EarthPoint const & point) const;
    [[nodiscard]] float unadjustDir(float angle, EarthPoint const & point) const;

    /// Room for the plane coordinates of every grid point, all missing until set. 0 as for `allocData`.
    int allocLocate();
    /// Fills them, in this grid's own plane or in another domain's, allocating them first where needed.
    int setLocate();
    int setLocate(Domain const & plane);
    /// One point; 0 outside the grid or without locations.
    int setLocate(int column, int row, Point const & point);
    int getLocate(int column, int row, Point & point) const;

    /// Whether there is room for locations.
    [[nodiscard]] bool isLocate() const noexcept { return locate_x.size() > 0; }

    /// The coordinates in storage order, empty where there are none.
    [[nodiscard]] std::span<float const> getLocateX() const noexcept
    {
        return {locate_x.data(), locate_x.size()};
    }

    /// The same for the other coordinate.
    [[nodiscard]] std::span<float const> getLocateY() const noexcept
    {
        return {locate_y.data(), locate_y.size()};
    }

    // Statistics and arithmetic
    // ------------------------------------------------------------------------------

    /// The number of values that are not missing; Const::MISS without values.
    [[nodiscard]] int getValid() const noexcept;
    /// Their mean, summed in double; Const::MISS where there is none.
    [[nodiscard]] float getAverage() const noexcept;
    /// The smallest and the largest of them, both Const::MISS where there is none. 0 without values.
    int getRange(float & min, float & max) const noexcept;
    int getRange(Range & range) const noexcept;
    /// Multiplies every value by the factor, or adds the amount to it. 0 without values, and for a factor or
    /// amount that is NaN or infinite.
    int scale(float factor) noexcept;
    int offset(float amount) noexcept;

    // Listings on standard output
    // ------------------------------------------------------------------------------

    /// Fields, then statistics.
    int print() const;
    int printInfo() const;  ///< the fields, a line each
    int printStats() const; ///< how many values there are, their mean and range
    /// One line a row, northern row first; "M" for missing.
    int printData() const;

private:
    [[nodiscard]] bool isInside(int column, int row) const noexcept
    {
        return column >= 0 && column < nx && row >= 0 && row < ny && isData();
    }

    [[nodiscard]] std::size_t indexOf(int column, int row) const noexcept
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(nx) +
               static_cast<std::size_t>(column);
    }

    int setSizeUnchecked(int nx_value, int ny_value);
    void forgetLocations() noexcept;

    int type = 0;
    int source = 0;
    int version = Const::MISS;
    int model = 0;
    std::string gen_name;
    std::string datim;
    std::string info;
    Date date;
    int nx = Const::MISS;
    int ny = Const::MISS;
    int nz = Const::MISS;
    Domain domain;
    Level level;
    ForeTime fore;
    Variable var;
    detail::GridData values;
    detail::GridData locate_x;
    detail::GridData locate_y;
};

} // namespace Yul
