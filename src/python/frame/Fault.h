// What can go wrong in a conversion, and the exceptions that tell of it.
#pragma once

#include "python/frame/Api.h"

#include <string>

namespace Yul::python {

/// The outcome of converting one value.
enum class Fault {
    NONE,           ///< converted
    MEMORY,         ///< MemoryError
    ATTRIBUTE,      ///< AttributeError
    SYSTEM,         ///< SystemError
    VALUE,          ///< ValueError
    NULL_REFERENCE, ///< ValueError: None, or an object that is gone, where an object is needed
    SYNTAX,         ///< SyntaxError
    OVERFLOWN,      ///< OverflowError: a number outside the type's range
    DIVISION,       ///< ZeroDivisionError
    TYPE,           ///< TypeError
    INDEX,          ///< IndexError
    IO,             ///< OSError
    RUNTIME,        ///< RuntimeError
};

/// The exception class of a fault.
[[nodiscard]] PyObject * exceptionOf(Fault fault) noexcept;

/// Raises "in method '<function>', argument <position> of type '<type>'"; returns null. Position 1 is the
/// first.
PyObject * raiseArgument(Fault fault, char const * function, std::size_t position, std::string const & type);

/// Raises "in variable '<variable>' of type '<type>'"; returns -1.
int raiseVariable(Fault fault, std::string const & variable, std::string const & type);

/// Raises what became of the C++ exception in flight; returns null. To be called in a catch clause.
PyObject * raiseCurrent() noexcept;

} // namespace Yul::python
