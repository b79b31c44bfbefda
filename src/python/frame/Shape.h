// The shapes of operations: how arguments are converted, the operation is called and its result goes back.
// One shape serves all operations of the same class and signature.
#pragma once

#include "core/VarArgs.h"
#include "python/frame/Function.h"
#include "python/frame/Result.h"

#include <tuple>

namespace Yul::python {

/// The parameter list of a shape.
template <class... P> struct Parameters
{
    static constexpr std::array<ParameterInfo const *, sizeof...(P)> INFO{&PARAMETER<P>...};

    static void prepare()
    {
        for (ParameterInfo const * const parameter : INFO)
            if (parameter->record != nullptr)
                parameter->record();
    }
};

/// The PointerObject of the first argument, when that is a library object.
template <class... Converter> PointerObject * pointerOf(std::tuple<Converter...> const & converters)
{
    if constexpr (sizeof...(Converter) != 0)
        if constexpr (requires { std::get<0>(converters).found; })
            return std::get<0>(converters).found.source;
    return nullptr;
}

/// Converts the arguments from left to right, runs the operation on them and converts the result R.
template <class R, class... P, std::size_t... I, class Operation>
PyObject * run(Overload const & overload,
               PyObject * const * arguments,
               std::index_sequence<I...>,
               Parameters<P...>,
               Operation operation)
{
    std::tuple<Parameter<P>...> converters;
    Fault fault = Fault::NONE;
    std::size_t index = 0;
    bool const is_converted =
        ((index = I, (fault = std::get<I>(converters).load(arguments[I])) == Fault::NONE) && ...);
    if (!is_converted) [[unlikely]]
        return overload.raise(fault, index);
    try {
        if constexpr (std::is_void_v<R>) {
            operation(std::get<I>(converters).get()...);
            Py_RETURN_NONE;
        } else {
            PyObject * const first = sizeof...(I) != 0 ? arguments[0] : nullptr;
            return toPython<R>(operation(std::get<I>(converters).get()...),
                               Source{first, pointerOf(converters)});
        }
    } catch (...) {
        return raiseCurrent();
    }
}

/// What all shapes share: Derived::operate(overload) gives the callable that run() feeds.
template <class Derived, class R, bool IS_VARIADIC, class... P> struct Shape
{
    using Result = R;
    using List = Parameters<P...>;
    static constexpr Py_ssize_t COUNT = sizeof...(P);
    static constexpr bool VARIADIC = IS_VARIADIC;

    static PyObject * call(Overload const & overload, PyObject * const * arguments)
    {
        return run<R>(overload, arguments, std::index_sequence_for<P...>{}, List{},
                      Derived::operate(overload));
    }
};

/// A member function; T is the bound class, const for a const operation.
template <class T, class R, class... A>
struct MethodShape : Shape<MethodShape<T, R, A...>, R, false, Self<T>, A...>
{
    using Plain = R (std::remove_const_t<T>::*)(A...);
    using Const = R (std::remove_const_t<T>::*)(A...) const;
    using Target = std::conditional_t<std::is_const_v<T>, Const, Plain>;

    static auto operate(Overload const & overload)
    {
        return [method = overload.getTarget<Target>()](T & object, auto &&... arguments) -> R {
            return (object.*method)(static_cast<decltype(arguments)>(arguments)...);
        };
    }
};

/// A static member function.
template <class R, class... A> struct StaticShape : Shape<StaticShape<R, A...>, R, false, A...>
{
    using Target = R (*)(A...);

    static auto operate(Overload const & overload) { return overload.getTarget<Target>(); }
};

/// A function that works on an object as a method of T does.
template <class T, class R, class... A>
struct ExtensionShape : Shape<ExtensionShape<T, R, A...>, R, false, Self<T>, A...>
{
    using Target = R (*)(T &, A...);

    static auto operate(Overload const & overload) { return overload.getTarget<Target>(); }
};

/// The variable part of a variadic operation is a single null pointer.
template <class T, class R, class... A>
struct VariadicMethodShape : Shape<VariadicMethodShape<T, R, A...>, R, true, Self<T>, A...>
{
    using Plain = R (std::remove_const_t<T>::*)(A..., ...);
    using Const = R (std::remove_const_t<T>::*)(A..., ...) const;
    using Target = std::conditional_t<std::is_const_v<T>, Const, Plain>;

    static auto operate(Overload const & overload)
    {
        return [method = overload.getTarget<Target>()](T & object, auto &&... arguments) -> R {
            ::Yul::detail::VarArgs::Limit const one(1);
            return (object.*method)(static_cast<decltype(arguments)>(arguments)...,
                                    static_cast<void *>(nullptr));
        };
    }
};

template <class R, class... A> struct VariadicStaticShape : Shape<VariadicStaticShape<R, A...>, R, true, A...>
{
    using Target = R (*)(A..., ...);

    static auto operate(Overload const & overload)
    {
        return [function = overload.getTarget<Target>()](auto &&... arguments) -> R {
            ::Yul::detail::VarArgs::Limit const one(1);
            return function(static_cast<decltype(arguments)>(arguments)..., static_cast<void *>(nullptr));
        };
    }
};

/// A constructor; its result is always a bare PointerObject.
template <class T, class... A>
struct ConstructorShape : Shape<ConstructorShape<T, A...>, Created<T>, false, A...>
{
    static auto operate(Overload const &)
    {
        return [](auto &&... arguments) {
            return Created<T>{std::make_unique<T>(static_cast<decltype(arguments)>(arguments)...)};
        };
    }
};

/// Runs another shape for its effect alone.
template <class Inner> struct DiscardShape : Inner
{
    static PyObject * call(Overload const & overload, PyObject * const * arguments)
    {
        Ref const result(Inner::call(overload, arguments));
        if (!result)
            return nullptr;
        Py_RETURN_NONE;
    }
};

} // namespace Yul::python
