// Arrays of Python objects as arrays of the library.
#pragma once

#include "python/frame/Value.h"

#include <cstddef>

namespace Yul::python {

/// The values of a Python object that has a buffer (bytes, array, memoryview, NumPy array), held while it
/// lives. The buffer's shape does not count: its values are taken one after another in row-major order.
class ArrayBuffer
{
public:
    ArrayBuffer() = default;
    ArrayBuffer(ArrayBuffer const &) = delete;
    ArrayBuffer & operator=(ArrayBuffer const &) = delete;

    ~ArrayBuffer()
    {
        if (buffer.obj != nullptr)
            PyBuffer_Release(&buffer);
    }

    /// TYPE for an object without a buffer, one whose values lie apart, are of another format (as the module
    /// struct writes it) or are not aligned as `item_size` asks, or one to be written that is read-only.
    [[nodiscard]] Fault hold(PyObject * object, char format, std::size_t item_size, bool is_written);

    [[nodiscard]] void * data() const noexcept { return buffer.buf; }

    /// Octets.
    [[nodiscard]] std::size_t size() const noexcept { return static_cast<std::size_t>(buffer.len); }

private:
    Py_buffer buffer{};
};

/// The letter of a type of values in buffers.
template <class V> inline constexpr char BUFFER_FORMAT = '\0';
template <> inline constexpr char BUFFER_FORMAT<float> = 'f';
template <> inline constexpr char BUFFER_FORMAT<double> = 'd';
template <> inline constexpr char BUFFER_FORMAT<int> = 'i';

} // namespace Yul::python
