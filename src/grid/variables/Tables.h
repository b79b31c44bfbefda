// The tables of meteorological variables, one file a field of interest.
#pragma once

#include "grid/VarName.h"

#include <span>
#include <string_view>

namespace Yul::detail {

/// Rows in the order of their index; together, in this order, they are in the order of the index too.
[[nodiscard]] std::span<VarNameItem const> temperatureVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> dynamicsVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> radiationVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> compositionVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> physicalVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> landVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> satelliteVariables() noexcept;
[[nodiscard]] std::span<VarNameItem const> oceanVariables() noexcept;

/// What else a variable is called.
struct OtherNames
{
    std::string_view name;   ///< the variable's short name
    std::string_view others; ///< separated by commas, in any case
};

[[nodiscard]] std::span<OtherNames const> otherNames() noexcept;

/// A parameter of a centre's own table of edition 1.
struct VarGrib1
{
    int centre;
    int table;
    int number;
    int index;                    ///< of the variable
    char const * units = nullptr; ///< of the values where they differ from the variable's, else null
};

/// In the order of centre, table and number.
[[nodiscard]] std::span<VarGrib1 const> localGrib1() noexcept;

/// The row for a parameter of a centre's own table, or null.
[[nodiscard]] VarGrib1 const * findLocalGrib1(int centre, int table, int number) noexcept;

/// A parameter of a centre's own table of edition 1 that no variable stands for: its texts alone.
struct LocalParam
{
    int centre;
    int table;
    int number;
    char const * name;
    char const * units;
    char const * text;
};

/// In the order of table and number.
[[nodiscard]] std::span<LocalParam const> ncepParams() noexcept;
[[nodiscard]] std::span<LocalParam const> ecmwfParams() noexcept;

/// A parameter of edition 2 that ECMWF took over from a table of its own of edition 1.
struct EcmwfParam
{
    int table = 0; ///< of edition 1
    int number = 0;
};

/// The parameter of edition 1 that one of ECMWF's own of edition 2 stands for; table 0 where there is none.
[[nodiscard]] EcmwfParam ecmwfParam(int discipline, int category, int number) noexcept;

} // namespace Yul::detail
