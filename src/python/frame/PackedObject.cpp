#include "python/frame/PackedObject.h"

#include "python/frame/TypeTable.h"

#include <memory>
#include <vector>

namespace Yul::python {
namespace {

struct Packed
{
    std::string type_name;
    std::vector<std::byte> octets;
};

struct PackedObject
{
    PyObject_HEAD // the interpreter's fields
        Packed * content;
};

PackedObject & self(PyObject * object)
{
    return *reinterpret_cast<PackedObject *>(object);
}

void deallocate(PyObject * object)
{
    std::unique_ptr<Packed> const content(self(object).content);
    PyTypeObject * const type = Py_TYPE(object);
    PyObject_Free(object);
    Py_DECREF(type);
}

PyObject * repr(PyObject * object)
{
    return PyUnicode_FromFormat("<PackedObject of type '%s'>", self(object).content->type_name.c_str());
}

} // namespace

PyObject * newPacked(void const * value, std::size_t size, std::string const & type_name)
{
    auto content = std::make_unique<Packed>();
    content->type_name = type_name;
    auto const * const first = static_cast<std::byte const *>(value);
    content->octets.assign(first, first + size);
    PyObject * const made = PyType_GenericAlloc(packed_type, 0);
    if (made != nullptr)
        self(made).content = content.release();
    return made;
}

bool readPacked(PyObject * object, void * value, std::size_t size, std::string const & type_name)
{
    if (Py_TYPE(object) != packed_type)
        return false;
    Packed const & content = *self(object).content;
    if (content.type_name != type_name || content.octets.size() != size)
        return false;
    std::memcpy(value, content.octets.data(), size);
    return true;
}

PyTypeObject * makePackedType()
{
    PyType_Slot slots[] = {
        {Py_tp_dealloc, reinterpret_cast<void *>(deallocate)},
        {Py_tp_repr, reinterpret_cast<void *>(repr)},
        {0, nullptr},
    };
    PyType_Spec spec{"_Yul.PackedObject", static_cast<int>(sizeof(PackedObject)), 0,
                     Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE,
                     slots};
    return reinterpret_cast<PyTypeObject *>(PyType_FromSpec(&spec));
}

} // namespace Yul::python
