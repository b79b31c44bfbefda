// Module functions: the overloads behind one name and the way from a call to one of them.
#pragma once

#include "python/frame/Parameter.h"

#include <array>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Yul::python {

struct Function;

/// What a declaration is, for the text of its prototype.
enum class Kind { CONSTRUCTOR, METHOD, CONST_METHOD, STATIC, SPECIAL };

/// One library operation behind a module function.
struct Overload
{
    using Call = PyObject * (*)(Overload const & overload, PyObject * const * arguments);
    using Entry = PyObject * (*)(PyObject * self, PyObject * const * arguments, Py_ssize_t count);

    /// Converts the arguments, whose count fits, calls the operation and converts its result.
    Call call = nullptr;
    alignas(
        void *) std::array<std::byte, 16> target{}; ///< the operation: a pointer to a function or a member

    std::span<ParameterInfo const * const> parameters; ///< a method's object included
    std::string (*result_name)() = nullptr;
    std::string_view name; ///< as declared, "getResrc" or "operator <"; a static text
    Kind kind = Kind::STATIC;
    bool is_variadic = false;            ///< arguments beyond the parameters are ignored
    Entry entry = nullptr;               ///< the way in when the name has no other overload
    Function const * function = nullptr; ///< the name that it belongs to

    template <class T> void setTarget(T value)
    {
        static_assert(sizeof value <= sizeof target && std::is_trivially_copyable_v<T>);
        std::memcpy(target.data(), &value, sizeof value);
    }

    template <class T> [[nodiscard]] T getTarget() const
    {
        T value;
        std::memcpy(&value, target.data(), sizeof value);
        return value;
    }

    [[nodiscard]] bool takes(std::size_t count) const noexcept
    {
        return is_variadic ? count >= parameters.size() : count == parameters.size();
    }

    /// Raises what is wrong with one argument; index 0 is the first. Returns null.
    PyObject * raise(Fault fault, std::size_t index) const;

    /// "Yul::Yul::getResrc(char const *,float)"
    [[nodiscard]] std::string prototype() const;
};

/// A module function.
struct Function
{
    std::string name;                       ///< "Yul_getResrc"
    std::string_view class_name;            ///< "Yul::Yul", a static text
    std::vector<Overload> overloads;        ///< as declared
    std::vector<Overload const *> attempts; ///< in the order in which they are tried; empty for a single one
    PyMethodDef definition{};
    Ref documentation; ///< the str that `definition` takes its text from

    /// Orders the attempts; to be called once, when all overloads are there.
    void finish();

    [[nodiscard]] std::size_t leastCount() const;
    /// SIZE_MAX when any number will do.
    [[nodiscard]] std::size_t mostCount() const;

    /// The Python function; null with an exception set.
    [[nodiscard]] PyObject * makeObject(PyObject * module_name);

    /// Makes the str the function's documentation; false with an exception set for anything else.
    bool document(PyObject * text);
};

/// What a Python function carries as its self: a short way to its only overload.
struct FunctionHandle
{
    PyObject_HEAD // the interpreter's fields
        Overload const * only;
    Function const * function;
};

/// Raises the text of a wrong argument count; returns null.
PyObject * raiseCount(Function const & function, std::size_t count);

/// The entry of a function with one overload: `Shape` knows the count and the call at compile time.
template <class Shape> PyObject * enter(PyObject * self, PyObject * const * arguments, Py_ssize_t count)
{
    auto const & handle = *reinterpret_cast<FunctionHandle const *>(self);
    if (Shape::VARIADIC ? count < Shape::COUNT : count != Shape::COUNT) [[unlikely]]
        return raiseCount(*handle.function, static_cast<std::size_t>(count));
    return Shape::call(*handle.only, arguments);
}

} // namespace Yul::python
