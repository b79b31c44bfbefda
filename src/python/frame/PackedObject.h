// The second opaque kind: a copy of a small value.
#pragma once

#include "python/frame/Api.h"
#include "python/frame/TypeName.h"

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace Yul::python {

/// A new packed object with a copy of the value, printed with its type name. Python only passes it on.
[[nodiscard]] PyObject * newPacked(void const * value, std::size_t size, std::string const & type_name);

/// Copies the packed value out; false when the object is not packed or holds another type or size.
[[nodiscard]] bool
readPacked(PyObject * object, void * value, std::size_t size, std::string const & type_name);

/// The type object; null with an exception set. Called once a process.
[[nodiscard]] PyTypeObject * makePackedType();

} // namespace Yul::python
