#include "python/frame/ArrayBuffer.h"

#include <cstdint>
#include <string_view>

namespace Yul::python {

Fault ArrayBuffer::hold(PyObject * object, char format, std::size_t item_size, bool is_written)
{
    if (PyObject_GetBuffer(object, &buffer, PyBUF_ND | PyBUF_FORMAT | (is_written ? PyBUF_WRITABLE : 0)) !=
        0) {
        buffer.obj = nullptr;
        PyErr_Clear();
        return Fault::TYPE;
    }
    std::string_view const found = buffer.format != nullptr ? buffer.format : "B";
    bool const is_format = found == std::string_view(&format, 1);
    bool const is_aligned = reinterpret_cast<std::uintptr_t>(buffer.buf) % item_size == 0;
    return is_format && (is_aligned || buffer.len == 0) ? Fault::NONE : Fault::TYPE;
}

} // namespace Yul::python
