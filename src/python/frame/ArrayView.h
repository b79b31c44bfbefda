// Arrays of the library as Python memory views.
#pragma once

#include "python/frame/Api.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Yul::python {

/// An array in row-major order that an operation hands out: Python gets a memoryview on the live values,
/// which keeps both the values and the Python object of the operation alive.
struct ArrayView
{
    std::shared_ptr<void> data;    ///< the first value; may share ownership of the buffer that it lies in
    char const * format = "f";     ///< of one value, as the module struct writes it; a static text
    std::size_t item_size = 4;     ///< octets of one value
    std::vector<Py_ssize_t> shape; ///< number of values along each dimension, the slowest first
    bool is_read_only = false;
};

/// One of whole numbers, which type stubs name so.
struct IntArrayView : ArrayView
{
};

/// The memoryview; `owner` is kept alive with it. None for a view without dimensions: there is no array.
[[nodiscard]] PyObject * newMemoryView(ArrayView view, PyObject * owner);

} // namespace Yul::python
