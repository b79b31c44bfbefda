#include "python/frame/Fault.h"

#include <exception>
#include <new>

namespace Yul::python {
namespace {

char const * prefixOf(Fault fault)
{
    return fault == Fault::NULL_REFERENCE ? "invalid null reference " : "";
}

} // namespace

PyObject * exceptionOf(Fault fault) noexcept
{
    switch (fault) {
    case Fault::MEMORY:
        return PyExc_MemoryError;
    case Fault::ATTRIBUTE:
        return PyExc_AttributeError;
    case Fault::SYSTEM:
        return PyExc_SystemError;
    case Fault::VALUE:
    case Fault::NULL_REFERENCE:
        return PyExc_ValueError;
    case Fault::SYNTAX:
        return PyExc_SyntaxError;
    case Fault::OVERFLOWN:
        return PyExc_OverflowError;
    case Fault::DIVISION:
        return PyExc_ZeroDivisionError;
    case Fault::TYPE:
        return PyExc_TypeError;
    case Fault::INDEX:
        return PyExc_IndexError;
    case Fault::IO:
        return PyExc_OSError;
    case Fault::NONE:
    case Fault::RUNTIME:
        break;
    }
    return PyExc_RuntimeError;
}

PyObject * raiseArgument(Fault fault, char const * function, std::size_t position, std::string const & type)
{
    return PyErr_Format(exceptionOf(fault), "%sin method '%s', argument %zu of type '%s'", prefixOf(fault),
                        function, position, type.c_str());
}

int raiseVariable(Fault fault, std::string const & variable, std::string const & type)
{
    PyErr_Format(exceptionOf(fault), "%sin variable '%s' of type '%s'", prefixOf(fault), variable.c_str(),
                 type.c_str());
    return -1;
}

PyObject * raiseCurrent() noexcept
{
    try {
        throw;
    } catch (std::bad_alloc const &) {
        return PyErr_NoMemory();
    } catch (std::exception const & error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    } catch (...) {
        PyErr_SetString(PyExc_RuntimeError, "unknown C++ exception");
    }
    return nullptr;
}

} // namespace Yul::python
