#include "python/frame/Parameter.h"

namespace Yul::python {
namespace {

constexpr int MAX_STEPS = 8; // "this" of "this": enough for wrappers of wrappers, an end for rings

PyObject * nameOfThis()
{
    static PyObject * const NAME = PyUnicode_InternFromString("this");
    return NAME;
}

/// Plain Python values, which are never wrappers: spares them the search for "this".
bool isPlain(PyObject * object)
{
    return PyLong_CheckExact(object) || PyUnicode_CheckExact(object) || PyFloat_CheckExact(object) ||
           PyBool_Check(object);
}

/// The first view in the PointerObject's chain that can stand for the wanted type; `object` is its place.
PointerObject * matchingView(PyObject * pointer, TypeRecord const & wanted, void *& object)
{
    for (auto * view = reinterpret_cast<PointerObject *>(pointer); view != nullptr; view = view->next) {
        object = view->isAlive() ? view->place() : view->address;
        if (adjustPointer(*view->type, wanted, object))
            return view;
    }
    return nullptr;
}

} // namespace

Ref pointerBehind(PyObject * argument)
{
    Ref object = Ref::borrow(argument);
    for (int step = 0; step < MAX_STEPS && !isPointerObject(object.get()); ++step) {
        if (isPlain(object.get()))
            return {};
        object = Ref(PyObject_GetAttr(object.get(), nameOfThis()));
        if (!object) {
            PyErr_Clear();
            return {};
        }
    }
    return isPointerObject(object.get()) ? std::move(object) : Ref();
}

int setThis(PyObject * instance, PyObject * pointer)
{
    return PyObject_GenericSetAttr(instance, nameOfThis(), pointer);
}

Fault findPointer(PyObject * argument, TypeRecord const & wanted, FoundPointer & found)
{
    if (argument == Py_None)
        return Fault::NONE;
    found.held = pointerBehind(argument);
    if (!found.held)
        return Fault::TYPE;
    found.source = matchingView(found.held.get(), wanted, found.object);
    if (found.source == nullptr)
        return Fault::TYPE;
    return found.source->isAlive() ? Fault::NONE : Fault::NULL_REFERENCE;
}

bool acceptsPointer(PyObject * argument, TypeRecord const & wanted)
{
    if (argument == Py_None)
        return true;
    Ref const pointer = pointerBehind(argument);
    void * ignored = nullptr;
    return pointer && matchingView(pointer.get(), wanted, ignored) != nullptr;
}

bool TextParameter::accepts(PyObject * object)
{
    TextParameter trial;
    return trial.load(object) != Fault::TYPE;
}

Fault TextParameter::load(PyObject * object)
{
    if (object == Py_None || PyUnicode_Check(object))
        return object != Py_None ? readText(object, text, holder) : Fault::NONE;
    FoundPointer found;
    Fault const fault = findPointer(object, *record_of<char const>, found);
    text = static_cast<char const *>(found.object);
    holder = std::move(found.held);
    return fault;
}

bool BufferParameter::accepts(PyObject * object)
{
    BufferParameter trial;
    return trial.load(object) != Fault::TYPE;
}

Fault BufferParameter::load(PyObject * object)
{
    if (object == Py_None)
        return Fault::NONE;
    if (PyUnicode_Check(object)) {
        Fault const fault = readText(object, copy);
        text = copy.data();
        return fault;
    }
    FoundPointer found;
    Fault const fault = findPointer(object, *record_of<char>, found);
    text = static_cast<char *>(found.object);
    holder = std::move(found.held);
    return fault;
}

} // namespace Yul::python
