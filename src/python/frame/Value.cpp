#include "python/frame/Value.h"

namespace Yul::python {
namespace {

constexpr char ESCAPE[] = "surrogateescape"; // how texts that are not valid UTF-8 come back and forth

/// The fault that the interpreter has just raised, taken off it.
Fault takeFault(Fault otherwise)
{
    bool const is_memory = PyErr_ExceptionMatches(PyExc_MemoryError) != 0;
    PyErr_Clear();
    return is_memory ? Fault::MEMORY : otherwise;
}

} // namespace

Fault readDoubleSlow(PyObject * object, double & value)
{
    if (PyFloat_Check(object)) {
        value = PyFloat_AsDouble(object);
        return Fault::NONE;
    }
    if (!PyLong_Check(object))
        return Fault::TYPE;
    value = PyLong_AsDouble(object);
    return value == -1.0 && PyErr_Occurred() != nullptr ? takeFault(Fault::OVERFLOWN) : Fault::NONE;
}

Fault readUnsignedLong(PyObject * object, unsigned long long & value)
{
    value = PyLong_AsUnsignedLongLong(object);
    bool const is_failed = value == static_cast<unsigned long long>(-1) && PyErr_Occurred() != nullptr;
    return is_failed ? takeFault(Fault::OVERFLOWN) : Fault::NONE;
}

Fault readChar(PyObject * object, char & value)
{
    if (!PyUnicode_Check(object)) {
        signed char number = 0;
        Fault const fault = readNumber(object, number);
        value = static_cast<char>(number);
        return fault;
    }
    std::string octets;
    Fault const fault = readText(object, octets);
    if (fault != Fault::NONE)
        return fault;
    if (octets.size() != 1)
        return Fault::TYPE;
    value = octets.front();
    return Fault::NONE;
}

Fault readText(PyObject * object, char const *& text, Ref & holder)
{
    if (!PyUnicode_CheckExact(object) && !PyUnicode_Check(object))
        return Fault::TYPE;
    text = PyUnicode_AsUTF8AndSize(object, nullptr);
    if (text != nullptr)
        return Fault::NONE;
    PyErr_Clear();
    holder = Ref(PyUnicode_AsEncodedString(object, "utf-8", ESCAPE));
    if (!holder)
        return takeFault(Fault::TYPE);
    text = PyBytes_AsString(holder.get());
    return Fault::NONE;
}

Fault readText(PyObject * object, std::string & text)
{
    if (!PyUnicode_Check(object))
        return Fault::TYPE;
    Ref const octets(PyUnicode_AsEncodedString(object, "utf-8", ESCAPE));
    if (!octets)
        return takeFault(Fault::TYPE);
    text.assign(PyBytes_AsString(octets.get()), static_cast<std::size_t>(PyBytes_Size(octets.get())));
    return Fault::NONE;
}

} // namespace Yul::python
