#include "python/frame/TypeTable.h"

#include "python/frame/PackedObject.h"
#include "python/frame/PointerObject.h"

namespace Yul::python {

PyTypeObject * pointer_type = nullptr;
PyTypeObject * packed_type = nullptr;

namespace {

/// Where the runtime is kept in the interpreter. The number changes with the layout of what is shared.
constexpr char RUNTIME_KEY[] = "Yul.frame.1";

Runtime * the_runtime = nullptr;

Runtime * sharedRuntime(PyObject * place)
{
    PyObject * const capsule = PyDict_GetItemString(place, RUNTIME_KEY);
    return capsule != nullptr ? static_cast<Runtime *>(PyCapsule_GetPointer(capsule, RUNTIME_KEY)) : nullptr;
}

Runtime * makeRuntime(PyObject * place)
{
    auto made = std::make_unique<Runtime>();
    made->pointer_type = makePointerType();
    made->packed_type = makePackedType();
    if (made->pointer_type == nullptr || made->packed_type == nullptr)
        return nullptr;
    Ref const capsule(PyCapsule_New(made.get(), RUNTIME_KEY, nullptr));
    if (!capsule || PyDict_SetItemString(place, RUNTIME_KEY, capsule.get()) != 0)
        return nullptr;
    return made.release(); // lives as long as the process: objects of its types may outlive any module
}

} // namespace

bool joinRuntime()
{
    PyObject * const place = PyInterpreterState_GetDict(PyInterpreterState_Get());
    if (place == nullptr) {
        PyErr_SetString(PyExc_SystemError, "the interpreter keeps no place for the shared type table");
        return false;
    }
    the_runtime = sharedRuntime(place);
    if (the_runtime == nullptr && PyErr_Occurred() == nullptr)
        the_runtime = makeRuntime(place);
    if (the_runtime == nullptr)
        return false;
    pointer_type = the_runtime->pointer_type;
    packed_type = the_runtime->packed_type;
    return true;
}

TypeRecord & findRecord(std::string const & name)
{
    auto & record = the_runtime->types[name];
    if (record == nullptr) {
        record = std::make_unique<TypeRecord>();
        record->name = name;
    }
    return *record;
}

void addBase(TypeRecord & derived, BaseStep step)
{
    for (BaseStep const & known : derived.bases)
        if (known.base == step.base)
            return;
    derived.bases.push_back(step);
}

bool adjustPointer(TypeRecord const & from, TypeRecord const & to, void *& pointer)
{
    if (&from == &to)
        return true;
    for (BaseStep const & step : from.bases) {
        void * candidate = step.adjust(pointer);
        if (adjustPointer(*step.base, to, candidate)) {
            pointer = candidate;
            return true;
        }
    }
    return false;
}

} // namespace Yul::python
