// Results of library operations as Python objects.
#pragma once

#include "python/frame/ArrayView.h"
#include "python/frame/PackedObject.h"
#include "python/frame/Parameter.h"

#include <memory>
#include <string_view>

namespace Yul::python {

/// Where a result comes from: the operation's first argument, and the PointerObject behind it when that is a
/// library object (the result may be a part of it).
struct Source
{
    PyObject * argument = nullptr;
    PointerObject * pointer = nullptr;
};

/// A str with undecodable octets escaped; None for null; a PointerObject for a text beyond 2^31 - 1 octets.
[[nodiscard]] PyObject * fromText(char const * text);
[[nodiscard]] PyObject * fromText(std::string_view text);

/// Wraps a PointerObject (null: an exception is set) in the type's registered Python class, if there is one.
[[nodiscard]] PyObject * wrap(TypeRecord const & type, PyObject * pointer);

/// A library object by pointer: None for null, else a view that owns nothing.
[[nodiscard]] PyObject * fromPointer(TypeRecord const & type, void const * object, Source const & source);

/// The result of a constructor.
template <class T> struct Created
{
    using CreatedClass = T;
    std::unique_ptr<T> object;
};

/// An array member of plain values.
template <class V> struct PlainArray
{
    using ArrayValue = V;
    V * first;
    std::size_t extent;
};

/// A new object that Python owns.
template <class T> [[nodiscard]] PyObject * fromNew(std::unique_ptr<T> object)
{
    PyObject * const pointer = newOwner(*record_of<T>, object.get());
    if (pointer != nullptr)
        static_cast<void>(object.release());
    return pointer;
}

/// A library object by value: an owning wrapper of the heap copy.
template <class T> [[nodiscard]] PyObject * fromObject(T && object)
{
    using Class = std::remove_cvref_t<T>;
    auto copy = std::make_unique<Class>(std::forward<T>(object));
    return wrap(*record_of<Class>, fromNew(std::move(copy)));
}

/// A number, an enumerator, a truth value or a character.
template <PlainNumber V> [[nodiscard]] PyObject * fromPlain(V value)
{
    constexpr bool FITS_LONG = sizeof(V) < sizeof(long) || (sizeof(V) == sizeof(long) && std::is_signed_v<V>);
    if constexpr (std::is_same_v<V, bool>)
        return PyBool_FromLong(value ? 1 : 0);
    else if constexpr (std::is_same_v<V, char>)
        return fromText(std::string_view(&value, 1));
    else if constexpr (std::is_enum_v<V>)
        return PyLong_FromLongLong(static_cast<long long>(value));
    else if constexpr (std::is_floating_point_v<V>)
        return PyFloat_FromDouble(static_cast<double>(value));
    else if constexpr (FITS_LONG)
        return PyLong_FromLong(static_cast<long>(value));
    else
        return PyLong_FromUnsignedLongLong(value);
}

/// Converts a result of the declared type R.
template <class R> [[nodiscard]] PyObject * toPython(R && value, Source const & source)
{
    using Bare = std::remove_cvref_t<R>;
    using Target = std::remove_pointer_t<std::remove_reference_t<R>>;
    if constexpr (PlainNumber<Bare> && (!std::is_reference_v<R> || std::is_const_v<Target>))
        return fromPlain(value);
    else if constexpr (std::is_same_v<Bare, std::string>)
        return fromText(std::string_view(value));
    else if constexpr (std::is_base_of_v<ArrayView, Bare>)
        return newMemoryView(std::forward<R>(value), source.argument);
    else if constexpr (std::is_same_v<Bare, char const *> || std::is_same_v<Bare, char *>)
        return fromText(value);
    else if constexpr (requires { typename Bare::CreatedClass; })
        return fromNew(std::move(value.object));
    else if constexpr (requires { typename Bare::ArrayValue; })
        return newView(*record_of<typename Bare::ArrayValue>, value.first, source.pointer, value.extent);
    else if constexpr (std::is_member_pointer_v<Bare>)
        return newPacked(&value, sizeof value, typeName<Bare>());
    else if constexpr (std::is_pointer_v<Bare>)
        return fromPointer(*record_of<Pointee<Target>>, value, source);
    else if constexpr (std::is_reference_v<R>)
        return fromPointer(*record_of<Pointee<Target>>, &value, source);
    else
        return fromObject(std::forward<R>(value));
}

/// Makes sure that the records which toPython<R> reads are there.
template <class R> void prepareResult()
{
    using Target = std::remove_pointer_t<std::remove_reference_t<R>>;
    using Bare = std::remove_cvref_t<R>;
    if constexpr (requires { typename Bare::CreatedClass; })
        recordOf<typename Bare::CreatedClass>();
    else if constexpr (requires { typename Bare::ArrayValue; })
        recordOf<typename Bare::ArrayValue>();
    else if constexpr (std::is_void_v<R> || std::is_same_v<Bare, std::string> ||
                       std::is_base_of_v<ArrayView, Bare> || std::is_member_pointer_v<Bare>)
        return;
    else if constexpr (std::is_class_v<Bare> && !std::is_reference_v<R>)
        recordOf<Bare>().destroy = &destroyObject<Bare>;
    else if constexpr (std::is_pointer_v<Bare> || std::is_reference_v<R>)
        recordOf<Pointee<Target>>();
}

/// The result type as signatures show it.
template <class R> [[nodiscard]] std::string resultName()
{
    using Bare = std::remove_cvref_t<R>;
    if constexpr (requires { typename Bare::CreatedClass; })
        return typeName<typename Bare::CreatedClass *>();
    else if constexpr (requires { typename Bare::ArrayValue; })
        return typeName<typename Bare::ArrayValue *>();
    else
        return typeName<R>();
}

} // namespace Yul::python
