#include "python/frame/Ownership.h"

namespace Yul::python {

PyObject * deleteObject(Overload const & overload, PyObject * const * arguments)
{
    FoundPointer found;
    Fault const fault = findPointer(arguments[0], overload.parameters[0]->record(), found);
    bool const is_gone = fault == Fault::NULL_REFERENCE && !found.source->is_borrowed;
    if (arguments[0] == Py_None || is_gone)
        Py_RETURN_NONE;
    if (fault != Fault::NONE)
        return overload.raise(fault, 0);
    if (found.source->is_borrowed || found.source->type->destroy == nullptr)
        return overload.raise(Fault::TYPE, 0);
    destroy(*found.source);
    Py_RETURN_NONE;
}

PyObject * registerClass(Overload const & overload, PyObject * const * arguments)
{
    if (!PyType_Check(arguments[0]))
        return overload.raise(Fault::TYPE, 0);
    TypeRecord & record = overload.parameters[0]->record();
    Ref const before(reinterpret_cast<PyObject *>(record.proxy));
    Py_INCREF(arguments[0]);
    record.proxy = reinterpret_cast<PyTypeObject *>(arguments[0]);
    Py_RETURN_NONE;
}

PyObject * attach(Overload const & overload, PyObject * const * arguments)
{
    PyObject * const instance = arguments[0];
    PyObject * const pointer = arguments[1];
    if (isPointerObject(instance))
        return overload.raise(Fault::TYPE, 0);
    if (!isPointerObject(pointer) || !acceptsPointer(pointer, overload.parameters[1]->record()))
        return overload.raise(Fault::TYPE, 1);
    Ref const present = pointerBehind(instance);
    int const status = present ? appendView(present.get(), pointer) : setThis(instance, pointer);
    if (status != 0)
        return nullptr;
    Py_RETURN_NONE;
}

PyObject * keepArguments(Ref result, PyObject * const * arguments, std::size_t count)
{
    Ref const keeper = result ? pointerBehind(arguments[0]) : Ref();
    for (std::size_t i = 1; keeper && i < count; ++i) {
        Ref const other = pointerBehind(arguments[i]);
        if (other && keepAlive(*reinterpret_cast<PointerObject *>(keeper.get()),
                               *reinterpret_cast<PointerObject *>(other.get())) != 0)
            return nullptr;
    }
    return result.release();
}

PyObject * followItem(Ref result,
                      PyObject * const * arguments,
                      TypeRecord const & list,
                      void * (*locate)(void * list, int index),
                      std::size_t item_size)
{
    Ref const item = result ? pointerBehind(result.get()) : Ref();
    FoundPointer found;
    int index = 0;
    if (item && findPointer(arguments[0], list, found) == Fault::NONE &&
        readNumber(arguments[1], index) == Fault::NONE) {
        auto & view = *reinterpret_cast<PointerObject *>(item.get());
        view.live = found.object;
        view.locate = locate;
        view.index = index;
        view.item_size = item_size;
    }
    return result.release();
}

} // namespace Yul::python
