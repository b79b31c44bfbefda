// Plane behind functions written by hand with the interpreter's fastest calling convention.
#define PY_SSIZE_T_CLEAN
#include "plane.h"

#include <climits>

#include <Python.h>

namespace {

struct PlaneObject
{
    PyObject_HEAD // the interpreter's fields
        Plane * plane;
};

PyTypeObject * plane_type = nullptr;

PyObject * create(PyTypeObject * type, PyObject * args, PyObject *)
{
    int nx = 0;
    int ny = 0;
    if (PyArg_ParseTuple(args, "ii", &nx, &ny) == 0)
        return nullptr;
    PyObject * const made = type->tp_alloc(type, 0);
    if (made != nullptr)
        reinterpret_cast<PlaneObject *>(made)->plane = new Plane(nx, ny);
    return made;
}

void destroy(PyObject * object)
{
    PyTypeObject * const type = Py_TYPE(object);
    delete reinterpret_cast<PlaneObject *>(object)->plane;
    type->tp_free(object);
    Py_DECREF(type);
}

Plane * toPlane(PyObject * object)
{
    if (Py_TYPE(object) == plane_type || PyType_IsSubtype(Py_TYPE(object), plane_type))
        return reinterpret_cast<PlaneObject *>(object)->plane;
    PyErr_SetString(PyExc_TypeError, "Plane expected");
    return nullptr;
}

bool toInt(PyObject * object, int & value)
{
    if (!PyLong_Check(object)) {
        PyErr_SetString(PyExc_TypeError, "int expected");
        return false;
    }
    int overflow = 0;
    long const wide = PyLong_AsLongAndOverflow(object, &overflow);
    if (overflow != 0 || wide < INT_MIN || wide > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "int out of range");
        return false;
    }
    value = static_cast<int>(wide);
    return true;
}

PyObject * getNx(PyObject *, PyObject * const * args, Py_ssize_t count)
{
    if (count != 1) {
        PyErr_SetString(PyExc_TypeError, "one argument expected");
        return nullptr;
    }
    Plane const * const plane = toPlane(args[0]);
    return plane != nullptr ? PyLong_FromLong(plane->getNx()) : nullptr;
}

PyObject * getValue(PyObject *, PyObject * const * args, Py_ssize_t count)
{
    if (count != 3) {
        PyErr_SetString(PyExc_TypeError, "three arguments expected");
        return nullptr;
    }
    Plane const * const plane = toPlane(args[0]);
    int i = 0;
    int j = 0;
    if (plane == nullptr || !toInt(args[1], i) || !toInt(args[2], j))
        return nullptr;
    return PyFloat_FromDouble(static_cast<double>(plane->getValue(i, j)));
}

template <class Function> PyCFunction asFunction(Function * function)
{
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
}

PyMethodDef functions[] = {
    {"Plane_getNx", asFunction(getNx), METH_FASTCALL, nullptr},
    {"Plane_getValue", asFunction(getValue), METH_FASTCALL, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyModuleDef definition{
    PyModuleDef_HEAD_INIT, "pycall_fastcall", nullptr, -1, functions, nullptr, nullptr, nullptr, nullptr};

} // namespace

PyMODINIT_FUNC PyInit_pycall_fastcall()
{
    PyType_Slot slots[] = {
        {Py_tp_new, reinterpret_cast<void *>(create)},
        {Py_tp_dealloc, reinterpret_cast<void *>(destroy)},
        {0, nullptr},
    };
    PyType_Spec spec{"pycall_fastcall.Plane", static_cast<int>(sizeof(PlaneObject)), 0, Py_TPFLAGS_DEFAULT,
                     slots};
    PyObject * const module = PyModule_Create(&definition);
    PyObject * const type = PyType_FromSpec(&spec);
    plane_type = reinterpret_cast<PyTypeObject *>(type);
    PyModule_AddObjectRef(module, "new_Plane", type);
    return module;
}
