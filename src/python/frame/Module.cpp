#include "python/frame/Module.h"

#include "python/frame/OutputOrder.h"

#include <algorithm>
#include <memory>

namespace Yul::python {
namespace {

/// The module that Python's "_signatures" asks; the newest of this library.
Module * the_module = nullptr;

PyObject * signaturesOf(PyObject *, PyObject *)
{
    return the_module->signatures();
}

PyObject * classesOf(PyObject *, PyObject *)
{
    return the_module->classes();
}

PyObject * document(PyObject *, PyObject * texts)
{
    if (!the_module->document(texts))
        return nullptr;
    Py_RETURN_NONE;
}

PyMethodDef methods[] = {
    {"_signatures", signaturesOf, METH_NOARGS,
     "name of a function -> its overloads in order, each (kind, result type, parameter types)"},
    {"_classes", classesOf, METH_NOARGS, "name of a class -> the names of its base classes"},
    {"_document", document, METH_O,
     "gives functions the documentation of a dict: name of a function -> text"},
    {nullptr, nullptr, 0, nullptr},
};

char const * nameOf(Kind kind)
{
    switch (kind) {
    case Kind::CONSTRUCTOR:
        return "constructor";
    case Kind::METHOD:
    case Kind::CONST_METHOD:
        return "method";
    case Kind::STATIC:
        return "static";
    case Kind::SPECIAL:
        break;
    }
    return "special";
}

/// A tuple of what `convert` makes of each element; none with an exception set.
template <class Range, class Convert> Ref tupleOf(Range const & range, Convert convert)
{
    Ref tuple(PyTuple_New(static_cast<Py_ssize_t>(std::size(range))));
    Py_ssize_t i = 0;
    for (auto const & element : range) {
        PyObject * const item = convert(element);
        if (!tuple || item == nullptr || PyTuple_SetItem(tuple.get(), i++, item) != 0)
            return {};
    }
    return tuple;
}

PyObject * textOf(std::string const & text)
{
    return PyUnicode_FromString(text.c_str());
}

PyObject * signatureOf(Overload const & overload)
{
    std::vector<std::string> names;
    for (ParameterInfo const * const parameter : overload.parameters)
        names.push_back(parameter->name());
    if (overload.is_variadic)
        names.emplace_back("...");
    Ref const parameters = tupleOf(names, textOf);
    return parameters ? Py_BuildValue("(ssO)", nameOf(overload.kind), overload.result_name().c_str(),
                                      parameters.get())
                      : nullptr;
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

Overload & Module::addOverload(std::string name, std::string_view class_name, Overload const & overload)
{
    auto const starts_class = [&](Function const & known) { return known.class_name != class_name; };
    auto const end = std::find_if(functions.rbegin(), functions.rend(), starts_class);
    auto const found =
        std::find_if(functions.rbegin(), end, [&](Function const & known) { return known.name == name; });
    if (found != end)
        return found->overloads.emplace_back(overload);
    Function & added = functions.emplace_back();
    added.name = std::move(name);
    added.class_name = class_name;
    return added.overloads.emplace_back(overload);
}

void Module::addClass(std::string name, TypeRecord const & record)
{
    declared_classes.push_back({std::move(name), &record, {}});
}

void Module::addBaseOfLast(TypeRecord const & base)
{
    declared_classes.back().bases.push_back(&base);
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
        Ref const overloads = tupleOf(function.overloads, signatureOf);
        if (!dict || !overloads ||
            PyDict_SetItemString(dict.get(), function.name.c_str(), overloads.get()) != 0)
            return nullptr;
    }
    return dict.release();
}

/// A base may be declared behind the class; one that is not declared at all is left out.
std::vector<std::string> Module::baseNames(DeclaredClass const & derived) const
{
    std::vector<std::string> names;
    for (TypeRecord const * const base : derived.bases)
        for (DeclaredClass const & declared : declared_classes)
            if (declared.record == base)
                names.push_back(declared.name);
    return names;
}

PyObject * Module::classes() const
{
    Ref dict(PyDict_New());
    for (DeclaredClass const & declared : declared_classes) {
        Ref const bases = tupleOf(baseNames(declared), textOf);
        if (!dict || !bases || PyDict_SetItemString(dict.get(), declared.name.c_str(), bases.get()) != 0)
            return nullptr;
    }
    return dict.release();
}

bool Module::document(PyObject * texts)
{
    if (PyDict_Check(texts) == 0) {
        PyErr_SetString(PyExc_TypeError, "the documentation is no dict");
        return false;
    }
    for (Function & function : functions)
        if (PyObject * const text = PyDict_GetItemString(texts, function.name.c_str()))
            if (!function.document(text))
                return false;
    return true;
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
