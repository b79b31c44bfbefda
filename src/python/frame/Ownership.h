// Whose object it is: deleting, registering a Python class for results, attaching a pointer to an instance.
#pragma once

#include "python/frame/Shape.h"

#include <functional>

namespace Yul::python {

PyObject * deleteObject(Overload const & overload, PyObject * const * arguments);
PyObject * registerClass(Overload const & overload, PyObject * const * arguments);
PyObject * attach(Overload const & overload, PyObject * const * arguments);

/// Mark parameters that are no library objects: the Python class for T, and an instance of it.
template <class T> struct ProxyClass;
struct ProxyInstance;

struct PythonParameter
{
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return "ProxyClass instance"; }

    static bool accepts(PyObject *) { return true; }
};

template <class T> struct PythonClassParameter : PythonParameter
{
    static constexpr TypeRecord & (*RECORD)() = &recordOf<T>;

    static std::string name() { return "ProxyClass"; }
};

template <class T> struct ParameterChoice<ProxyClass<T>>
{
    static consteval auto choose() { return std::type_identity<PythonClassParameter<T>>{}; }
};

template <> struct ParameterChoice<ProxyInstance>
{
    static consteval auto choose() { return std::type_identity<PythonParameter>{}; }
};

/// An operation of the frame itself on parameters of the kinds P.
template <Overload::Call OPERATION, class... P> struct SpecialShape
{
    using Result = void;
    using List = Parameters<P...>;
    static constexpr Py_ssize_t COUNT = sizeof...(P);
    static constexpr bool VARIADIC = false;

    static PyObject * call(Overload const & overload, PyObject * const * arguments)
    {
        return OPERATION(overload, arguments);
    }
};

/// delete_<Class>: the argument is disowned and its object destroyed at once; None, and an object that is
/// gone already, are passed over. Refused for objects that the library owns.
template <class T> using DeleteShape = SpecialShape<deleteObject, T *>;

/// <Class>_registerclass: from now on results of the type are instances of the Python class, and owning
/// objects run the destructor when they are collected.
template <class T> using RegisterShape = SpecialShape<registerClass, ProxyClass<T>>;

/// <Class>_attach: the PointerObject becomes the instance's "this", or is appended to the one that is there.
template <class T> using AttachShape = SpecialShape<attach, ProxyInstance, T *>;

/// Keeps the library objects among the arguments alive as long as the first one's object; the result of a
/// call, or null with an exception set.
PyObject * keepArguments(Ref result, PyObject * const * arguments, std::size_t count);

/// Makes the result of a call, a view of one item of a list, find that item anew at each use; the result, or null
/// with an exception set. The arguments are the list and the item's index.
PyObject * followItem(Ref result,
                      PyObject * const * arguments,
                      TypeRecord const & list,
                      void * (*locate)(void * list, int index),
                      std::size_t item_size);

/// An operation whose object remembers the objects that it is given.
template <class Inner> struct KeepingShape : Inner
{
    static PyObject * call(Overload const & overload, PyObject * const * arguments)
    {
        return keepArguments(Ref(Inner::call(overload, arguments)), arguments, Inner::COUNT);
    }
};

/// GET, an operation of the list T that hands out the item of an index.
template <class T, class Item, auto GET> struct ItemShape : MethodShape<T, Item &, int>
{
    static void * locate(void * list, int index)
    {
        T & items = *static_cast<T *>(list);
        return &std::invoke(GET, items, index);
    }

    static PyObject * call(Overload const & overload, PyObject * const * arguments)
    {
        Ref result(MethodShape<T, Item &, int>::call(overload, arguments));
        return followItem(std::move(result), arguments, *record_of<T>, &locate, sizeof(Item));
    }
};

} // namespace Yul::python
