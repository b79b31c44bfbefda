#include "python/frame/Function.h"

#include <algorithm>
#include <limits>

namespace Yul::python {
namespace {

constexpr std::size_t ANY_NUMBER = std::numeric_limits<std::size_t>::max();

bool acceptsAll(Overload const & overload, PyObject * const * arguments)
{
    for (std::size_t i = 0; i < overload.parameters.size(); ++i)
        if (!overload.parameters[i]->accepts(arguments[i]))
            return false;
    return true;
}

/// True when `from` lies above `to` in the class tree.
bool isDerived(TypeRecord const & from, TypeRecord const & to)
{
    return std::any_of(from.bases.begin(), from.bases.end(),
                       [&](BaseStep const & step) { return step.base == &to || isDerived(*step.base, to); });
}

/// Negative when `a` is tried before `b`, positive when after, 0 when the parameters do not tell.
int compareParameters(ParameterInfo const & a, ParameterInfo const & b)
{
    if (a.rank != b.rank)
        return a.rank < b.rank ? -1 : 1;
    if (a.record == nullptr || b.record == nullptr || a.record == b.record)
        return 0;
    TypeRecord const & first = a.record();
    TypeRecord const & second = b.record();
    return isDerived(first, second) ? -1 : isDerived(second, first) ? 1 : 0;
}

/// Fewer parameters first, then by the first parameter that differs: objects (derived classes before their
/// bases), integers, floats, texts.
bool isTriedBefore(Overload const * a, Overload const * b)
{
    if (a->parameters.size() != b->parameters.size())
        return a->parameters.size() < b->parameters.size();
    for (std::size_t i = 0; i < a->parameters.size(); ++i)
        if (int const order = compareParameters(*a->parameters[i], *b->parameters[i]); order != 0)
            return order < 0;
    return false;
}

/// The list of prototypes, below the count error when that is what is pending.
PyObject * raiseNoMatch(Function const & function)
{
    std::string text = "Wrong number or type of arguments for overloaded function '" + function.name +
                       "'.\n  Possible prototypes are:\n";
    for (Overload const & overload : function.overloads)
        text += "    " + overload.prototype() + "\n";
    if (PyErr_Occurred() == nullptr || PyErr_ExceptionMatches(PyExc_TypeError) == 0) {
        PyErr_SetString(PyExc_TypeError, text.c_str());
        return nullptr;
    }
    PyObject * type = nullptr;
    PyObject * value = nullptr;
    PyObject * trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    Ref const held_type(type);
    Ref const held_value(value);
    Ref const held_trace(trace);
    return PyErr_Format(PyExc_TypeError, "%S\nAdditional information:\n%s", value, text.c_str());
}

PyObject * callOverloaded(PyObject * self, PyObject * const * arguments, Py_ssize_t count)
{
    Function const & function = *reinterpret_cast<FunctionHandle const *>(self)->function;
    auto const number = static_cast<std::size_t>(count);
    for (Overload const * const overload : function.attempts)
        if (overload->takes(number) && acceptsAll(*overload, arguments))
            return overload->call(*overload, arguments);
    if (number < function.leastCount() || number > function.mostCount())
        raiseCount(function, number);
    return raiseNoMatch(function);
}

void deallocateHandle(PyObject * object)
{
    PyTypeObject * const type = Py_TYPE(object);
    PyObject_Free(object);
    Py_DECREF(type);
}

PyTypeObject * handleType()
{
    static PyTypeObject * const TYPE = [] {
        PyType_Slot slots[] = {
            {Py_tp_dealloc, reinterpret_cast<void *>(deallocateHandle)},
            {0, nullptr},
        };
        PyType_Spec spec{"_Yul.FunctionHandle", static_cast<int>(sizeof(FunctionHandle)), 0,
                         Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE,
                         slots};
        return reinterpret_cast<PyTypeObject *>(PyType_FromSpec(&spec));
    }();
    return TYPE;
}

} // namespace

PyObject * Overload::raise(Fault fault, std::size_t index) const
{
    return raiseArgument(fault, function->name.c_str(), index + 1, parameters[index]->name());
}

std::string Overload::prototype() const
{
    bool const has_object = kind == Kind::METHOD || kind == Kind::CONST_METHOD;
    std::string text = std::string(function->class_name).append("::").append(name) + "(";
    for (std::size_t i = has_object ? 1 : 0; i < parameters.size(); ++i) {
        if (text.back() != '(')
            text += ',';
        text += parameters[i]->name();
    }
    if (is_variadic)
        text += ",...";
    return text + (kind == Kind::CONST_METHOD ? ") const" : ")");
}

void Function::finish()
{
    bool const is_single = overloads.size() == 1;
    for (Overload & overload : overloads) {
        overload.function = this;
        if (!is_single)
            attempts.push_back(&overload);
    }
    std::stable_sort(attempts.begin(), attempts.end(), isTriedBefore);
    Overload::Entry const entry = is_single ? overloads.front().entry : callOverloaded;
    definition.ml_name = name.c_str();
    definition.ml_meth = reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(entry));
    definition.ml_flags = METH_FASTCALL;
}

std::size_t Function::leastCount() const
{
    return attempts.empty() ? overloads.front().parameters.size() : attempts.front()->parameters.size();
}

std::size_t Function::mostCount() const
{
    bool const is_open = std::any_of(overloads.begin(), overloads.end(),
                                     [](Overload const & overload) { return overload.is_variadic; });
    if (is_open)
        return ANY_NUMBER;
    return attempts.empty() ? overloads.front().parameters.size() : attempts.back()->parameters.size();
}

PyObject * Function::makeObject(PyObject * module_name)
{
    if (handleType() == nullptr)
        return nullptr;
    Ref const handle(PyType_GenericAlloc(handleType(), 0));
    if (!handle)
        return nullptr;
    auto & content = *reinterpret_cast<FunctionHandle *>(handle.get());
    content.only = overloads.data();
    content.function = this;
    return PyCFunction_NewEx(&definition, handle.get(), module_name);
}

bool Function::document(PyObject * text)
{
    char const * const octets = PyUnicode_AsUTF8AndSize(text, nullptr);
    if (octets == nullptr)
        return false;
    definition.ml_doc = octets;
    documentation = Ref::borrow(text);
    return true;
}

PyObject * raiseCount(Function const & function, std::size_t count)
{
    std::size_t const least = function.leastCount();
    std::size_t const most = function.mostCount();
    char const * const qualifier = least == most ? "" : count < least ? "at least " : "at most ";
    std::size_t const bound = count < least ? least : most;
    if (count == 0)
        return PyErr_Format(PyExc_TypeError, "%s expected %s%zu arguments, got none", function.name.c_str(),
                            qualifier, bound);
    return PyErr_Format(PyExc_TypeError, "%s expected %s%zu arguments, got %zu", function.name.c_str(),
                        qualifier, bound, count);
}

} // namespace Yul::python
