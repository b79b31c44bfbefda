// The product description of a GRIB message.
#pragma once

#include "core/Const.h"
#include "grid/GribParam.h"
#include "grid/Level.h"
#include "grid/Variable.h"
#include "time/Date.h"
#include "time/ForeTime.h"

namespace Yul {

namespace detail::grib {
struct Field;
}

/// What a message says of its field apart from the grid and the values: edition, centre, process, parameter,
/// level, reference date and forecast time. Everything is missing until it is set.
class GribPDB
{
public:
    GribPDB() = default;

    /// Forgets everything.
    int init();
    /// Takes over what the headers of a field say. `cache` holds the parameter rows looked up so far.
    int set(detail::grib::Field const & field, detail::GribParamCache & cache);

    /// Edition of the message, 1 or 2.
    [[nodiscard]] int getEdition() const noexcept { return edition; }

    /// Originating centre, common code tables C-1 and C-11.
    [[nodiscard]] int getCentre() const noexcept { return centre; }

    /// WMO common code table C-12.
    [[nodiscard]] int getSubCentre() const noexcept { return sub_centre; }

    /// Generating process, a number of the centre's own.
    [[nodiscard]] int getModel() const noexcept { return model; }

    /// The name of the generating process, or of the centre where the process has none; static text, may be
    /// empty.
    [[nodiscard]] char const * getGenName() const noexcept { return gen_name; }

    /// Edition 1: the number of the predefined grid, 255 for a grid of the message's own. Edition 2: 0.
    [[nodiscard]] int getGridType() const noexcept { return grid_type; }

    /// Edition 2: discipline of code table 0.0 and category of code table 4.1; edition 1: Const::MISS.
    [[nodiscard]] int getDiscipline() const noexcept { return discipline; }

    /// Edition 2: code table 4.1; Const::MISS in edition 1.
    [[nodiscard]] int getCategory() const noexcept { return category; }

    /// Parameter number: code table 4.2 in edition 2, the parameter table in edition 1.
    [[nodiscard]] int getParam() const noexcept { return param; }

    /// Version of the parameter table in edition 1, of the local tables in edition 2.
    [[nodiscard]] int getTable() const noexcept { return table; }

    /// Edition 2: product definition template; edition 1: time range indicator.
    [[nodiscard]] int getTemplate() const noexcept { return template_number; }

    /// Number of the ensemble member; Const::MISS where the product is none.
    [[nodiscard]] int getMember() const noexcept { return member; }

    /// What was made of all members of an ensemble (mean, spread ...), code table 4.7; Const::MISS where the product is no
    /// derived forecast.
    [[nodiscard]] int getDerived() const noexcept { return derived; }

    /// Percent; Const::MISS where the product is no percentile.
    [[nodiscard]] int getPercentile() const noexcept { return percentile; }

    /// Of a probability its type, code table 4.9; Const::MISS where the product is none. The field holds percents then, and
    /// the limits of the event are in the units of the variable, Const::MISS for a limit that the type does not have.
    [[nodiscard]] int getProbability() const noexcept { return probability; }

    /// Units of the variable; Const::MISS where there is none.
    [[nodiscard]] double getLowerLimit() const noexcept { return lower_limit; }

    /// The same for the upper limit.
    [[nodiscard]] double getUpperLimit() const noexcept { return upper_limit; }

    /// The level or layer of the field.
    [[nodiscard]] Level const & getLevel() const noexcept { return level; }

    /// The variable of the field.
    [[nodiscard]] Variable const & getVar() const noexcept { return var; }

    /// Reference time.
    [[nodiscard]] Date const & getDate() const noexcept { return date; }

    /// Forecast time; of a field over a period its end counts.
    [[nodiscard]] ForeTime const & getForeTime() const noexcept { return fore; }

    /// Latitude of a row, degrees, row 0 in the north, of a grid whose rows are parallels: latitude/longitude and regular
    /// Gaussian grids. Rows of the latter are not quite equally apart, as a Domain has them. Const::MISS for other grids and
    /// rows outside.
    [[nodiscard]] double getRowLat(int row) const noexcept;

    /// Lists the description on standard output.
    int print() const;

private:
    /// The rows of a grid on parallels.
    struct Rows
    {
        int count = 0;
        double north = 0;
        double step = 0;
        int parallels = 0; ///< Gaussian: between a pole and the equator
    };

    static Rows rowsOf(detail::grib::Field const & field) noexcept;

    Rows rows;
    int edition = Const::MISS;
    int centre = Const::MISS;
    int sub_centre = Const::MISS;
    int model = Const::MISS;
    char const * gen_name = "";
    int grid_type = 0;
    int discipline = Const::MISS;
    int category = Const::MISS;
    int param = Const::MISS;
    int table = Const::MISS;
    int template_number = Const::MISS;
    int member = Const::MISS;
    int derived = Const::MISS;
    int percentile = Const::MISS;
    int probability = Const::MISS;
    double lower_limit = Const::MISS;
    double upper_limit = Const::MISS;
    Level level;
    Variable var;
    Date date;
    ForeTime fore;
};

} // namespace Yul
