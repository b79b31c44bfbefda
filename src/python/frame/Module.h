// The module in the making: what the binders declare, and how it becomes a Python module.
#pragma once

#include "python/frame/Function.h"
#include "python/frame/VarLink.h"

#include <deque>
#include <span>
#include <string_view>

namespace Yul::python {

/// Collects functions, constants and linked variables in the order of their declaration.
class Module
{
public:
    using Binder = void (*)(Module & module);

    /// Runs the binders (null ones are passed over) and makes the Python module; null with an exception set.
    [[nodiscard]] static PyObject *
    make(char const * name, char const * documentation, std::span<Binder const> binders);

    /// Adds an overload to the module function of that name, which is added when it is new to its class. `class_name` is
    /// the C++ class that prototypes name, a static text.
    Overload & addOverload(std::string name, std::string_view class_name, Overload const & overload);
    void addClass(std::string name, TypeRecord const & record);
    /// A base, declared earlier, of the class that was added last.
    void addBaseOfLast(TypeRecord const & base);
    void addConstant(std::string name, long long value);
    void addVariable(Variable variable);

    /// For makers of wrappers and stubs: function name -> overloads, each (kind, result type, parameter
    /// types, "..." behind those of a variadic one); kinds are "constructor", "method" (its object is the first
    /// parameter), "static" and "special".
    [[nodiscard]] PyObject * signatures() const;
    /// Class name -> names of its declared bases, in the order of declaration.
    [[nodiscard]] PyObject * classes() const;
    /// Gives functions their documentation: a dict of texts by function name; names that no function has are
    /// passed over. False with an exception set.
    bool document(PyObject * texts);

private:
    struct DeclaredClass
    {
        std::string name;
        TypeRecord const * record;
        std::vector<TypeRecord const *> bases;
    };

    struct Constant
    {
        std::string name;
        long long value;
    };

    [[nodiscard]] std::vector<std::string> baseNames(DeclaredClass const & derived) const;
    [[nodiscard]] PyObject * create(char const * name, char const * documentation);
    [[nodiscard]] bool addFunctions(PyObject * module);
    [[nodiscard]] bool addConstants(PyObject * module) const;
    [[nodiscard]] bool addVarLink(PyObject * module) const;

    std::deque<Function> functions; // a deque, so that functions stay where they are
    std::vector<DeclaredClass> declared_classes;
    std::vector<Constant> constants;
    std::vector<Variable> variables;
    PyModuleDef definition{};
};

} // namespace Yul::python
