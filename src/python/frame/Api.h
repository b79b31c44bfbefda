// The interpreter's C interface and two small guards round it.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <utility>

#include <Python.h>

namespace Yul::python {

/// An owned reference to a Python object, or none.
class Ref
{
public:
    Ref() = default;

    /// Takes over a new reference; null is none.
    explicit Ref(PyObject * owned) noexcept : object(owned) {}

    Ref(Ref && other) noexcept : object(std::exchange(other.object, nullptr)) {}

    Ref & operator=(Ref && other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }

    Ref(Ref const &) = delete;
    Ref & operator=(Ref const &) = delete;

    ~Ref() { Py_XDECREF(object); }

    /// A further reference to an object that somebody else holds.
    [[nodiscard]] static Ref borrow(PyObject * held) noexcept
    {
        Py_XINCREF(held);
        return Ref(held);
    }

    [[nodiscard]] PyObject * get() const noexcept { return object; }

    [[nodiscard]] PyObject * release() noexcept { return std::exchange(object, nullptr); }

    explicit operator bool() const noexcept { return object != nullptr; }

private:
    PyObject * object = nullptr;
};

/// Puts the pending exception aside while it lives; one that is raised meanwhile is dropped.
class PendingError
{
public:
    PendingError() noexcept { PyErr_Fetch(&type, &value, &trace); }

    ~PendingError() { PyErr_Restore(type, value, trace); }

    PendingError(PendingError const &) = delete;
    PendingError & operator=(PendingError const &) = delete;

private:
    PyObject * type = nullptr;
    PyObject * value = nullptr;
    PyObject * trace = nullptr;
};

} // namespace Yul::python
