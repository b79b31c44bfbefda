#include "python/frame/Module.h"

#include "python/frame/OutputOrder.h"

#include <memory>

namespace Yul::python {
namespace {

/// The module that Python's "_signatures" asks; the newest of this library.
Module const * the_module = nullptr;

PyObject * signaturesOf(PyObject *, PyObject *)
{
    return the_module->signatures();
}

PyMethodDef methods[] = {
    {"_signatures", signaturesOf, METH_NOARGS,
     "the C++ signatures of all functions: a dict from name to a tuple of texts"},
    {nullptr, nullptr, 0, nullptr},
};

std::string signatureOf(Overload const & overload)
{
    std::string text = "(";
    for (ParameterInfo const * const parameter : overload.parameters)
        text += (text.size() > 1 ? ", " : "") + parameter->name();
    if (overload.is_variadic)
        text += ", ...";
    return text + ") -> " + overload.result_name();
}

PyObject * signatureTuple(Function const & function)
{
    Ref texts(PyTuple_New(static_cast<Py_ssize_t>(function.overloads.size())));
    Py_ssize_t i = 0;
    for (Overload const & overload : function.overloads) {
        PyObject * const text = PyUnicode_FromString(signatureOf(overload).c_str());
        if (!texts || text == nullptr || PyTuple_SetItem(texts.get(), i++, text) != 0)
            return nullptr;
    }
    return texts.release();
}

} // namespace

PyObject * Module::make(char const * name, char const * documentation, std::span<Binder const> binders)
{
    if (!joinRuntime())
        return nullptr;
    auto module = std::make_unique<Module>();
    for (Binder const bind : binders)
        if (bind != nullptr)
            bind(*module);
    PyObject * const made = module->create(name, documentation);
    if (made != nullptr) {
        the_module = module.release(); // its tables serve the Python functions as long as the process lives
        orderOutput();
    }
    return made;
}

Function & Module::function(std::string name, std::string_view class_name)
{
    if (auto const found = index.find(name); found != index.end())
        return *found->second;
    Function & added = functions.emplace_back();
    added.name = std::move(name);
    added.class_name = class_name;
    index.emplace(added.name, &added);
    return added;
}

void Module::addConstant(std::string name, long long value)
{
    constants.push_back({std::move(name), value});
}

void Module::addVariable(Variable variable)
{
    variables.push_back(std::move(variable));
}

PyObject * Module::signatures() const
{
    Ref dict(PyDict_New());
    for (Function const & function : functions) {
        Ref const texts(signatureTuple(function));
        if (!dict || !texts || PyDict_SetItemString(dict.get(), function.name.c_str(), texts.get()) != 0)
            return nullptr;
    }
    return dict.release();
}

PyObject * Module::create(char const * name, char const * documentation)
{
    definition = {
        PyModuleDef_HEAD_INIT, name, documentation, -1, methods, nullptr, nullptr, nullptr, nullptr};
    Ref module(PyModule_Create(&definition));
    if (!module || !addFunctions(module.get()) || !addConstants(module.get()) || !addVarLink(module.get()))
        return nullptr;
    return module.release();
}

bool Module::addFunctions(PyObject * module)
{
    Ref const module_name(PyModule_GetNameObject(module));
    PyObject * const dict = PyModule_GetDict(module);
    for (Function & function : functions) {
        function.finish();
        Ref const object(function.makeObject(module_name.get()));
        if (!object || PyDict_SetItemString(dict, function.name.c_str(), object.get()) != 0)
            return false;
    }
    return true;
}

bool Module::addConstants(PyObject * module) const
{
    PyObject * const dict = PyModule_GetDict(module);
    for (Constant const & constant : constants) {
        Ref const value(PyLong_FromLongLong(constant.value));
        if (!value || PyDict_SetItemString(dict, constant.name.c_str(), value.get()) != 0)
            return false;
    }
    return true;
}

bool Module::addVarLink(PyObject * module) const
{
    Ref const link(newVarLink(variables));
    if (link)
        return PyModule_AddObjectRef(module, "cvar", link.get()) == 0;
    PyErr_Clear();
    PyErr_SetString(PyExc_TypeError, "the object of global variables could not be created");
    return false;
}

} // namespace Yul::python
