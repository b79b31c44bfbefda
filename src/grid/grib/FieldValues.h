// The values of a field, from the octets of its file.
#pragma once

#include "grid/grib/Field.h"
#include "grid/grib/Input.h"

#include <span>
#include <string>
#include <vector>

namespace Yul::detail::grib {

/// Reads and unpacks bitmap and data of fields. An object of it keeps the memory that it arranges rows in from one field
/// to the next.
class FieldValues
{
public:
    /// Unpacks the values into the grid's own order, missing ones -9999.
    /// values  field.points of them.
    /// return  empty, else what is wrong; the values are undefined then.
    [[nodiscard]] std::string read(Input & input, Field const & field, std::span<float> values);

private:
    std::vector<float> spare;
};

} // namespace Yul::detail::grib
