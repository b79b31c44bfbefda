// What identifies a grid: a short way to say "500 hPa height, 24 h forecast".
#pragma once

#include "core/Const.h"
#include "core/String.h"
#include "grid/Level.h"
#include "grid/Variable.h"
#include "time/ForeTime.h"

namespace Yul {

/// Which model: originating centre and generating process, codes of GRIB (common code table C-1; the
/// centre's own list of processes). Const::MISS means any.
class ModelSpec
{
public:
    ModelSpec() = default;

    /// As by `set`.
    explicit ModelSpec(char const * text) { set(text); }

    /// As by `set`.
    ModelSpec(int source_code, int model_code) { set(source_code, model_code); }

    /// Opens both parts.
    int init();

    /// "source:model" or "source", numbers of 0 to 65535; "*" or nothing for any: "7:96", "98", "*:96".
    /// A large centre may be named: "ncep:96", "ecmwf".
    /// Returns 0, prints a warning and changes nothing when the text is not of that form.
    int set(char const * text);
    int decode(char const * text);
    int set(int source_code, int model_code);
    int set(ModelSpec const & spec);

    /// Whether one of the codes is set.
    [[nodiscard]] bool isSet() const noexcept
    {
        return !detail::isMissing(source) || !detail::isMissing(model);
    }

    /// The originating centre, WMO common code table C-11; Const::MISS for any.
    [[nodiscard]] int getSource() const noexcept { return source; }

    /// The generating process; Const::MISS for any.
    [[nodiscard]] int getModel() const noexcept { return model; }

    /// The text that `set` reads back; "*" for any.
    int toString(String & text) const;

    /// True when every code that this one sets is the same in the other.
    [[nodiscard]] bool match(ModelSpec const & spec) const;

    /// Lists it on standard output, the text and a newline.
    int print() const;

private:
    int source = Const::MISS;
    int model = Const::MISS;
};

/// What identifies a grid: variable, level, forecast time and model. Any part may be left open; a grid
/// spec without any part matches every grid.
class GridSpec
{
public:
    GridSpec() = default;

    /// As by `set`.
    explicit GridSpec(char const * text) { set(text); }

    /// Opens all parts.
    int init();

    /// Comma-separated parts "variable,level,forecast time,model": "HGT,500mb,24h", "TMP,2m", "APCP,,0-6h",
    /// ",500mb", "UGRD,10m,12h,7:96". Parts left empty or given as "*" are open; parts at the end may be left
    /// out. Returns 0, prints a warning and changes nothing when a part cannot be read.
    int set(char const * text);
    int decode(char const * text);
    int set(GridSpec const & spec);

    /// One part; texts are read by the part's own `set`, which warns and changes nothing where it returns 0.
    int setVar(Variable const & variable);
    int setVar(char const * text);
    int setLevel(Level const & value);
    int setLevel(char const * text);
    int setForeTime(ForeTime const & value);
    int setForeTime(char const * text);
    int setModel(ModelSpec const & value);
    int setModel(char const * text);

    /// Not set where the part is open, as the others.
    [[nodiscard]] Variable const & getVar() const noexcept { return var; }

    /// The level; not set for any.
    [[nodiscard]] Level const & getLevel() const noexcept { return level; }

    /// The forecast time; not set for any.
    [[nodiscard]] ForeTime const & getForeTime() const noexcept { return fore; }

    /// Originating centre and generating process; not set for any.
    [[nodiscard]] ModelSpec const & getModel() const noexcept { return model; }

    /// True when any part is set.
    [[nodiscard]] bool isSet() const;

    /// The text that `set` reads back, without open parts at the end; "*" when all are open.
    int toString(String & text) const;

    /// True when every part that this one sets is the same in the other (a grid's own spec).
    [[nodiscard]] bool match(GridSpec const & spec) const;

    /// Lists it on standard output, the text and a newline.
    int print() const;

private:
    Variable var;
    Level level;
    ForeTime fore;
    ModelSpec model;
};

} // namespace Yul
