// The five header lines of a native grid file.
#pragma once

#include "geo/DomainVal.h"
#include "grid/Level.h"
#include "grid/Variable.h"
#include "grid/native/Input.h"
#include "time/Date.h"
#include "time/ForeTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace Yul {

class Grid;

namespace detail::native {

/// The first characters of a file.
inline constexpr std::string_view MAGIC = "YulGRID";
inline constexpr int NEWEST_VERSION = 4;
/// Characters of the line that says where the points lie.
inline constexpr std::size_t MAX_DOMAIN = 150;

/// Where the values are and in what form.
enum Form {
    TEXT = 1,     ///< one value a line
    BINARY = 2,   ///< 32-bit IEEE 754, most significant octet first
    SEPARATE = 3, ///< in a file of their own
};

/// What a header says; parts that it does not say are not there.
struct Header
{
    int version = NEWEST_VERSION;
    int form = TEXT;
    std::optional<std::string> datim;
    Date date;
    std::optional<std::string> info;
    std::optional<Level> level;
    std::optional<ForeTime> fore;
    std::optional<Variable> var;
    DomainVal domain;
};

/// What was found where a header should begin.
enum class Found { HEADER, END, FAULT };

/// Reads a header. On FAULT `fault` says why, empty where a message has said it already, and the header holds what stood
/// before it.
[[nodiscard]] Found readHeader(Input & input, Header & header, std::string & fault);

/// Sets a grid's fields to what the header says, and its size where the header gives one. The grid's values are
/// forgotten, its memory is kept. Fields of which the header says nothing stay.
void describe(Header const & header, Grid & grid);

/// The header lines for a grid; empty with a fault where they could not be read back.
[[nodiscard]] std::string writeHeader(Grid const & grid, int version, int form, std::string & fault);

} // namespace detail::native
} // namespace Yul
