// Public data members: how they are read and written.
#pragma once

#include "python/frame/Shape.h"

#include <algorithm>
#include <cstring>

namespace Yul::python {

/// Marks the value that is written into a character array.
template <std::size_t N> struct CharArray;
/// Marks the value that is written into an array of plain values.
template <class V, std::size_t N> struct ValueArray;

/// A str that fits, its end included.
template <std::size_t N> struct CharArrayParameter
{
    static constexpr Rank RANK = Rank::TEXT;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return typeName<char[N]>(); }

    static bool accepts(PyObject * object)
    {
        CharArrayParameter trial;
        return trial.load(object) == Fault::NONE;
    }

    Fault load(PyObject * object)
    {
        Fault const fault = readText(object, text);
        text.resize(std::strlen(text.c_str()));
        return fault == Fault::NONE && text.size() >= N ? Fault::TYPE : fault;
    }

    std::string const & get() const { return text; }

    std::string text;
};

/// A PointerObject to at least N values, as far as its length is known.
template <class V, std::size_t N> struct ValueArrayParameter
{
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = &recordOf<V const>;

    static std::string name() { return typeName<V[N]>(); }

    static bool accepts(PyObject * object) { return acceptsPointer(object, *record_of<V const>); }

    Fault load(PyObject * object)
    {
        Fault const fault = findPointer(object, *record_of<V const>, found);
        if (fault != Fault::NONE)
            return fault;
        if (found.object == nullptr)
            return Fault::NULL_REFERENCE;
        return found.source->extent != 0 && found.source->extent < N ? Fault::TYPE : Fault::NONE;
    }

    V const * get() const { return static_cast<V const *>(found.object); }

    FoundPointer found;
};

template <std::size_t N> struct ParameterChoice<CharArray<N>>
{
    static consteval auto choose() { return std::type_identity<CharArrayParameter<N>>{}; }
};

template <class V, std::size_t N> struct ParameterChoice<ValueArray<V, N>>
{
    static consteval auto choose() { return std::type_identity<ValueArrayParameter<V, N>>{}; }
};

/// How a member or variable of type M is read: objects and arrays as views, everything else as a value.
template <class M> struct Access
{
    static constexpr bool IS_OBJECT = std::is_class_v<M> && !std::is_same_v<std::remove_cv_t<M>, std::string>;
    using Result = std::conditional_t<IS_OBJECT, M &, std::remove_cv_t<M>>;
    using Written = std::conditional_t<IS_OBJECT, Self<M>, std::remove_cv_t<M>>;

    static Result read(M & member) { return member; }

    static void write(M & member, auto const & value) { member = value; }
};

template <std::size_t N> struct Access<char[N]>
{
    using Result = std::string;
    using Written = CharArray<N>;

    static Result read(char const (&member)[N]) { return {member, strnlen(member, N)}; }

    static void write(char (&member)[N], std::string const & value)
    {
        std::memset(member, 0, N);
        value.copy(member, N);
    }
};

template <std::size_t N> struct Access<char const[N]> : Access<char[N]>
{
};

template <class V, std::size_t N> struct Access<V[N]>
{
    using Result = std::conditional_t<std::is_class_v<V>, V *, PlainArray<V>>;
    using Written = ValueArray<V, N>;

    static Result read(V (&member)[N])
    {
        if constexpr (std::is_class_v<V>)
            return member;
        else
            return {member, N};
    }

    static void write(V (&member)[N], V const * values) { std::memmove(member, values, sizeof member); }
};

/// True when Python may write the member: not constant, no pointer (the library must not keep what Python
/// owns), no array of objects.
template <class M>
inline constexpr bool IS_WRITABLE =
    !std::is_const_v<M> && !std::is_const_v<std::remove_extent_t<M>> && !std::is_pointer_v<M> &&
    !(std::is_array_v<M> && std::is_class_v<std::remove_extent_t<M>>);

template <class T, class M>
struct GetShape : Shape<GetShape<T, M>, typename Access<M>::Result, false, Self<T>>
{
    using Target = M T::*;

    static auto operate(Overload const & overload)
    {
        return [member = overload.getTarget<Target>()](T & object) ->
               typename Access<M>::Result { return Access<M>::read(object.*member); };
    }
};

template <class T, class M>
struct SetShape : Shape<SetShape<T, M>, void, false, Self<T>, typename Access<M>::Written>
{
    using Target = M T::*;

    static auto operate(Overload const & overload)
    {
        return [member = overload.getTarget<Target>()](T & object, auto const & value) {
            Access<M>::write(object.*member, value);
        };
    }
};

} // namespace Yul::python
