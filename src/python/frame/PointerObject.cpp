#include "python/frame/PointerObject.h"

#include "core/Yul.h"

#include <cstdint>
#include <utility>

namespace Yul::python {
namespace {

PointerObject & self(PyObject * object)
{
    return *reinterpret_cast<PointerObject *>(object);
}

PyObject * object(PointerObject * pointer)
{
    return reinterpret_cast<PyObject *>(pointer);
}

PyObject * newPointer(TypeRecord const & type, void * place)
{
    PyObject * const made = PyType_GenericAlloc(pointer_type, 0); // zero-filled
    if (made != nullptr) {
        self(made).live = self(made).address = place;
        self(made).type = &type;
    }
    return made;
}

/// A part of a list's item is found through the item from now on, if it lies within it.
void followItem(PointerObject & part, PointerObject const & item)
{
    auto const first = reinterpret_cast<std::uintptr_t>(item.locate(item.live, item.index));
    auto const offset = reinterpret_cast<std::uintptr_t>(part.address) - first;
    if (offset >= item.item_size) // also for what lies before it
        return;
    part.live = item.live;
    part.locate = item.locate;
    part.index = item.index;
    part.item_size = item.item_size;
    part.offset = offset;
}

/// The end of an owning PointerObject: its object goes too, if the class has been registered.
void collect(PointerObject & pointer)
{
    PendingError const pending;
    if (pointer.type->proxy != nullptr && pointer.type->destroy != nullptr)
        destroy(pointer);
    else
        ::Yul::Yul::outWarning(
            "PointerObject: No destructor is registered for type '%s', the object is left\n",
            pointer.type->name.c_str());
}

/// Lets go of a chain one by one, so that a long one does not recurse.
void releaseChain(PointerObject * chain)
{
    while (chain != nullptr && Py_REFCNT(object(chain)) == 1) {
        PointerObject * const next = std::exchange(chain->next, nullptr);
        Py_DECREF(object(chain));
        chain = next;
    }
    Py_XDECREF(object(chain));
}

void deallocate(PyObject * object_of)
{
    PointerObject & pointer = self(object_of);
    if (pointer.own && pointer.live != nullptr)
        collect(pointer);
    Py_XDECREF(pointer.kept);
    releaseChain(pointer.next);
    Py_XDECREF(object(pointer.owner));
    PyTypeObject * const type = Py_TYPE(object_of);
    PyObject_Free(object_of);
    Py_DECREF(type);
}

PyObject * disown(PyObject * pointer, PyObject *)
{
    self(pointer).own = false;
    Py_RETURN_NONE;
}

/// What the library hands out stays the library's.
PyObject * acquire(PyObject * pointer, PyObject *)
{
    self(pointer).own = self(pointer).live != nullptr && !self(pointer).is_borrowed;
    Py_RETURN_NONE;
}

PyObject * own(PyObject * pointer, PyObject * args)
{
    PyObject * wanted = nullptr;
    if (PyArg_UnpackTuple(args, "own", 0, 1, &wanted) == 0)
        return nullptr;
    int const is_wanted = wanted != nullptr ? PyObject_IsTrue(wanted) : -1;
    if (wanted != nullptr && is_wanted < 0)
        return nullptr;
    bool const before = self(pointer).own;
    if (wanted != nullptr)
        Py_DECREF(is_wanted != 0 ? acquire(pointer, nullptr) : disown(pointer, nullptr));
    return PyBool_FromLong(before ? 1 : 0);
}

PyObject * append(PyObject * pointer, PyObject * added)
{
    if (!isPointerObject(added)) {
        PyErr_SetString(PyExc_TypeError, "append takes a PointerObject");
        return nullptr;
    }
    if (appendView(pointer, added) != 0)
        return nullptr;
    Py_RETURN_NONE;
}

PyObject * next(PyObject * pointer, PyObject *)
{
    PyObject * const found = self(pointer).next != nullptr ? object(self(pointer).next) : Py_None;
    Py_INCREF(found);
    return found;
}

PyObject * repr(PyObject * pointer)
{
    Ref text(PyUnicode_FromString(""));
    for (PointerObject const * link = &self(pointer); link != nullptr && text; link = link->next)
        text = Ref(PyUnicode_FromFormat("%U%s<PointerObject of type '%s' at %p>", text.get(),
                                        link == &self(pointer) ? "" : ", ", link->type->name.c_str(),
                                        link->address));
    return text.release();
}

PyObject * reprMethod(PyObject * pointer, PyObject *)
{
    return repr(pointer);
}

PyObject * toInt(PyObject * pointer)
{
    return PyLong_FromVoidPtr(self(pointer).address);
}

Py_hash_t hash(PyObject * pointer)
{
    auto const value = static_cast<Py_hash_t>(reinterpret_cast<std::uintptr_t>(self(pointer).address) >> 4U);
    return value != -1 ? value : -2;
}

PyObject * compare(PyObject * left, PyObject * right, int operation)
{
    if (!isPointerObject(left) || !isPointerObject(right))
        Py_RETURN_NOTIMPLEMENTED;
    auto const a = reinterpret_cast<std::uintptr_t>(self(left).address);
    auto const b = reinterpret_cast<std::uintptr_t>(self(right).address);
    Py_RETURN_RICHCOMPARE(a, b, operation);
}

PyMethodDef methods[] = {
    {"disown", disown, METH_NOARGS, "releases ownership of the pointer"},
    {"acquire", acquire, METH_NOARGS, "acquires ownership of the pointer"},
    {"own", own, METH_VARARGS, "returns/sets ownership of the pointer"},
    {"append", append, METH_O, "appends another 'this' object"},
    {"next", next, METH_NOARGS, "returns the next 'this' object"},
    {"__repr__", reprMethod, METH_NOARGS | METH_COEXIST, "returns object representation"},
    {nullptr, nullptr, 0, nullptr},
};

template <class Function> void * slot(Function * function)
{
    return reinterpret_cast<void *>(function);
}

} // namespace

PyObject * newOwner(TypeRecord const & type, void * object_of)
{
    PyObject * const made = newPointer(type, object_of);
    if (made != nullptr)
        self(made).own = true;
    return made;
}

PyObject * newView(TypeRecord const & type, void * object_of, PointerObject * part_of, std::size_t extent)
{
    PyObject * const made = newPointer(type, object_of);
    if (made == nullptr)
        return nullptr;
    PointerObject * const whole = part_of != nullptr && part_of->owner != nullptr ? part_of->owner : part_of;
    Py_XINCREF(object(whole));
    self(made).owner = whole;
    self(made).extent = extent;
    self(made).is_borrowed = true;
    if (part_of != nullptr && part_of->locate != nullptr)
        followItem(self(made), *part_of);
    return made;
}

int appendView(PyObject * pointer, PyObject * added)
{
    PointerObject * last = &self(pointer);
    while (last->next != nullptr)
        last = last->next;
    for (PointerObject const * link = &self(added); link != nullptr; link = link->next)
        if (link == last) { // also when both chains share their end
            PyErr_SetString(PyExc_ValueError, "append would close a ring");
            return -1;
        }
    Py_INCREF(added);
    last->next = &self(added);
    return 0;
}

int keepAlive(PointerObject & pointer, PointerObject & other)
{
    PointerObject & whole = pointer.owner != nullptr ? *pointer.owner : pointer;
    if (whole.address == other.address)
        return 0;
    if (whole.kept == nullptr)
        whole.kept = PyList_New(0);
    if (whole.kept == nullptr)
        return -1;
    for (Py_ssize_t i = 0; i < PyList_Size(whole.kept); ++i)
        if (PyList_GetItem(whole.kept, i) == object(&other))
            return 0;
    return PyList_Append(whole.kept, object(&other));
}

void destroy(PointerObject & pointer)
{
    pointer.own = false;
    pointer.type->destroy(std::exchange(pointer.live, nullptr));
    Ref const released(std::exchange(pointer.kept, nullptr));
}

PyTypeObject * makePointerType()
{
    PyType_Slot slots[] = {
        {Py_tp_dealloc, slot(deallocate)},
        {Py_tp_repr, slot(repr)},
        {Py_tp_hash, slot(hash)},
        {Py_tp_richcompare, slot(compare)},
        {Py_tp_methods, methods},
        {Py_nb_int, slot(toInt)},
        {Py_tp_doc, const_cast<char *>("A pointer to an object of the library Yul")},
        {0, nullptr},
    };
    PyType_Spec spec{"_Yul.PointerObject", static_cast<int>(sizeof(PointerObject)), 0,
                     Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE,
                     slots};
    return reinterpret_cast<PyTypeObject *>(PyType_FromSpec(&spec));
}

} // namespace Yul::python
