#include "python/frame/Result.h"

#include <climits>
#include <cstring>

namespace Yul::python {

PyObject * fromText(std::string_view text)
{
    return PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
}

PyObject * fromText(char const * text)
{
    if (text == nullptr)
        Py_RETURN_NONE;
    std::size_t const length = std::strlen(text);
    if (length > static_cast<std::size_t>(INT_MAX))
        return newView(recordOf<char>(), const_cast<char *>(text), nullptr);
    return fromText(std::string_view(text, length));
}

PyObject * wrap(TypeRecord const & type, PyObject * pointer)
{
    if (pointer == nullptr || type.proxy == nullptr)
        return pointer;
    Ref const held(pointer);
    auto const make = reinterpret_cast<newfunc>(PyType_GetSlot(type.proxy, Py_tp_new));
    Ref const arguments(PyTuple_New(0));
    if (make == nullptr || !arguments) {
        if (make == nullptr)
            PyErr_Format(PyExc_TypeError, "the class registered for '%s' makes no instances",
                         type.name.c_str());
        return nullptr;
    }
    Ref instance(make(type.proxy, arguments.get(), nullptr));
    if (!instance || setThis(instance.get(), pointer) != 0)
        return nullptr;
    return instance.release();
}

PyObject * fromPointer(TypeRecord const & type, void const * object, Source const & source)
{
    if (object == nullptr)
        Py_RETURN_NONE;
    return wrap(type, newView(type, const_cast<void *>(object), source.pointer));
}

} // namespace Yul::python
