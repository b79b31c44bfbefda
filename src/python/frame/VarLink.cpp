#include "python/frame/VarLink.h"

#include <algorithm>

namespace Yul::python {
namespace {

struct VarLinkObject
{
    PyObject_HEAD // the interpreter's fields
        std::vector<Variable> const * variables;
};

std::vector<Variable> const & variablesOf(PyObject * object)
{
    return *reinterpret_cast<VarLinkObject *>(object)->variables;
}

Variable const * find(PyObject * object, PyObject * name)
{
    auto const & variables = variablesOf(object);
    auto const found = std::find_if(variables.begin(), variables.end(), [&](Variable const & variable) {
        return PyUnicode_CompareWithASCIIString(name, variable.name.c_str()) == 0;
    });
    return found != variables.end() ? &*found : nullptr;
}

int raiseUnknown(PyObject * name)
{
    PyErr_Format(PyExc_AttributeError, "Unknown C global variable '%U'", name);
    return -1;
}

/// True for names such as __class__, which every Python object answers.
bool isSpecial(PyObject * name)
{
    Ref const marks(PyUnicode_FromString("__"));
    return marks && PyUnicode_Tailmatch(name, marks.get(), 0, PY_SSIZE_T_MAX, -1) == 1;
}

PyObject * getAttribute(PyObject * object, PyObject * name)
{
    if (Variable const * const variable = find(object, name))
        return variable->get(*variable);
    if (isSpecial(name)) {
        PyObject * const attribute = PyObject_GenericGetAttr(object, name);
        if (attribute != nullptr)
            return attribute;
        PyErr_Clear();
    }
    raiseUnknown(name);
    return nullptr;
}

int setAttribute(PyObject * object, PyObject * name, PyObject * value)
{
    Variable const * const variable = find(object, name);
    if (variable == nullptr)
        return raiseUnknown(name);
    if (variable->set == nullptr || value == nullptr) {
        PyErr_Format(PyExc_AttributeError,
                     value != nullptr ? "Variable %s is read-only." : "Variable %s cannot be deleted.",
                     variable->name.c_str());
        return -1;
    }
    return variable->set(*variable, value);
}

PyObject * listNames(PyObject * object, PyObject *)
{
    Ref names(PyList_New(0));
    for (Variable const & variable : variablesOf(object)) {
        Ref const name(PyUnicode_FromString(variable.name.c_str()));
        if (!names || !name || PyList_Append(names.get(), name.get()) != 0)
            return nullptr;
    }
    return names.release();
}

PyObject * repr(PyObject * object)
{
    return PyUnicode_FromFormat("<VarLink of %zu global variables>", variablesOf(object).size());
}

void deallocate(PyObject * object)
{
    PyTypeObject * const type = Py_TYPE(object);
    PyObject_Free(object);
    Py_DECREF(type);
}

PyMethodDef methods[] = {
    {"__dir__", listNames, METH_NOARGS, "lists the variables"},
    {nullptr, nullptr, 0, nullptr},
};

} // namespace

PyObject * newVarLink(std::vector<Variable> const & variables)
{
    PyType_Slot slots[] = {
        {Py_tp_dealloc, reinterpret_cast<void *>(deallocate)},
        {Py_tp_repr, reinterpret_cast<void *>(repr)},
        {Py_tp_getattro, reinterpret_cast<void *>(getAttribute)},
        {Py_tp_setattro, reinterpret_cast<void *>(setAttribute)},
        {Py_tp_methods, methods},
        {0, nullptr},
    };
    PyType_Spec spec{"_Yul.VarLink", static_cast<int>(sizeof(VarLinkObject)), 0,
                     Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE,
                     slots};
    Ref const type(PyType_FromSpec(&spec));
    PyObject * const made =
        type ? PyType_GenericAlloc(reinterpret_cast<PyTypeObject *>(type.get()), 0) : nullptr;
    if (made != nullptr)
        reinterpret_cast<VarLinkObject *>(made)->variables = &variables;
    return made;
}

} // namespace Yul::python
