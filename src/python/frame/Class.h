// Declares a library class to Python.
#pragma once

#include "python/frame/Member.h"
#include "python/frame/Module.h"
#include "python/frame/Ownership.h"

#include <initializer_list>

namespace Yul::python {

/// Picks one of several overloads by its signature: overload<int(int, float) const>(&Grid::get).
template <class Signature> struct Overloaded;

template <class R, class... A> struct Overloaded<R(A...)>
{
    template <class C> constexpr auto operator()(R (C::*method)(A...)) const { return method; }

    constexpr auto operator()(R (*function)(A...)) const { return function; }
};

template <class R, class... A> struct Overloaded<R(A...) const>
{
    template <class C> constexpr auto operator()(R (C::*method)(A...) const) const { return method; }
};

template <class R, class... A> struct Overloaded<R(A..., ...)>
{
    template <class C> constexpr auto operator()(R (C::*method)(A..., ...)) const { return method; }

    constexpr auto operator()(R (*function)(A..., ...)) const { return function; }
};

template <class R, class... A> struct Overloaded<R(A..., ...) const>
{
    template <class C> constexpr auto operator()(R (C::*method)(A..., ...) const) const { return method; }
};

// NOLINTNEXTLINE(readability-identifier-naming): is called like a function
template <class Signature> inline constexpr Overloaded<Signature> overload{};

/// An enumerator with its name.
struct Constant
{
    template <class E>

    requires std::is_integral_v<E> || std::is_enum_v<E> Constant(char const * constant_name, E constant_value)
        : name(constant_name), value(static_cast<long long>(constant_value))
    {
    }

    char const * name;
    long long value;
};

/// A function without captures that is written in place.
template <class L>
concept PlainLambda = std::is_class_v<L> && requires(L lambda)
{
    +lambda;
};

/// The declaration of one class, in the order in which its prototypes are to be listed. Adds delete_<Class>,
/// <Class>_registerclass and <Class>_attach by itself.
template <class T> class Class
{
public:
    Class(Module & made, char const * class_name) : module(made), name(class_name)
    {
        module.addClass(name, recordOf<T>());
        if constexpr (std::is_destructible_v<T>) {
            recordOf<T>().destroy = &destroyObject<T>;
            add<DeleteShape<T>>("delete_" + name, "delete", Kind::SPECIAL);
        }
        add<RegisterShape<T>>(name + "_registerclass", "registerclass", Kind::SPECIAL);
        add<AttachShape<T>>(name + "_attach", "attach", Kind::SPECIAL);
    }

    /// A base class that is exposed too: its operations take objects of T.
    template <class B> Class & base()
    {
        static_assert(std::is_base_of_v<B, T> && !std::is_same_v<B, T>);
        addBase(recordOf<T>(), {&recordOf<B>(), [](void * object) {
                                    return static_cast<void *>(static_cast<B *>(static_cast<T *>(object)));
                                }});
        module.addBaseOfLast(recordOf<B>());
        return *this;
    }

    template <class... A> Class & constructor()
    {
        std::string_view const full_name = naming::BASIC_NAME<T>;
        std::string_view const own_name = full_name.substr(full_name.rfind(':') + 1);
        add<ConstructorShape<T, A...>>("new_" + name, own_name, Kind::CONSTRUCTOR);
        return *this;
    }

    /// An operation with its overloads: member functions of T or of a base, or functions that take the object
    /// first. Variadic operations are called with a null pointer as their variable part.
    template <class... F> Class & method(char const * method_name, F... functions)
    {
        (addMethod<IDENTITY>(name + "_" + method_name, method_name, functions), ...);
        return *this;
    }

    /// An operation after which the object refers to the objects that it was given: they stay alive as long as
    /// it does.
    template <class... F> Class & keeping(char const * method_name, F... functions)
    {
        (addMethod<KEEP>(name + "_" + method_name, method_name, functions), ...);
        return *this;
    }

    /// The operation of a list that hands out an item by its index. The items may move in memory: what Python
    /// holds finds its item again, and past the list's end the list says what it finds there.
    template <auto GET> Class & item(char const * method_name)
    {
        using Item = std::remove_reference_t<decltype((std::declval<T &>().*GET)(0))>;
        using S = ItemShape<T, Item, GET>;
        add<S>(name + "_" + method_name, method_name, Kind::METHOD).setTarget(typename S::Target(GET));
        return *this;
    }

    template <class... F> Class & staticMethod(char const * method_name, F... functions)
    {
        (addStatic<IDENTITY>(name + "_" + method_name, method_name, functions), ...);
        return *this;
    }

    /// A static operation that may have an object in front as those of objects do, although it needs none.
    template <auto FUNCTION> Class & staticOrMethod(char const * method_name)
    {
        return addWithObject<FUNCTION>(method_name, FUNCTION);
    }

    /// The class's listing, static or not: `print` as any other operation, and `_print`, which returns None.
    template <class... F> Class & print(F... functions)
    {
        (addMethod<IDENTITY>(name + "_print", "print", functions), ...);
        (addMethod<DISCARD>(name + "__print", "print", functions), ...);
        return *this;
    }

    template <class... F> Class & staticPrint(F... functions)
    {
        (addStatic<IDENTITY>(name + "_print", "print", functions), ...);
        (addStatic<DISCARD>(name + "__print", "print", functions), ...);
        return *this;
    }

    /// operator< and operator>, as __lt__ and __gt__.
    Class & compare()
    {
        addMethod<IDENTITY>(name + "___lt__", "operator <",
                            [](T const & a, T const & b) -> bool { return a < b; });
        addMethod<IDENTITY>(name + "___gt__", "operator >",
                            [](T const & a, T const & b) -> bool { return a > b; });
        return *this;
    }

    /// operator+=, as __iadd__; the result is the left operand, which it does not own.
    template <class A> Class & addAssign()
    {
        addMethod<IDENTITY>(name + "___iadd__", "operator +=", [](T & a, A b) -> T & {
            a += b;
            return a;
        });
        return *this;
    }

    /// A public data member, of T or of a base: _get, and _set where it may be written.
    template <class M, class C> Class & member(char const * member_name, M C::*member)
    {
        static_assert(std::is_base_of_v<C, T>);
        M T::*const own = member;
        std::string const prefix = name + "_" + member_name;
        if constexpr (IS_WRITABLE<M>)
            add<SetShape<T, M>>(prefix + "_set", member_name, Kind::METHOD).setTarget(own);
        add<GetShape<T, M>>(prefix + "_get", member_name, Kind::METHOD).setTarget(own);
        return *this;
    }

    /// A data member that is kept behind functions: `get` takes the object, `set` the object and the value.
    template <class G, class S> Class & property(char const * member_name, G get, S set)
    {
        std::string const prefix = name + "_" + member_name;
        addMethod<DISCARD>(prefix + "_set", member_name, set);
        addMethod<IDENTITY>(prefix + "_get", member_name, get);
        return *this;
    }

    template <class G> Class & readOnly(char const * member_name, G get)
    {
        addMethod<IDENTITY>(name + "_" + member_name + "_get", member_name, get);
        return *this;
    }

    template <class E> Class & constant(char const * constant_name, E value)
    {
        return constants({{constant_name, value}});
    }

    /// Enumerators: {{"NONE", Resrc::NONE}, {"BASE", Resrc::BASE}}.
    Class & constants(std::initializer_list<Constant> list)
    {
        for (Constant const & row : list)
            module.addConstant(name + "_" + row.name, row.value);
        return *this;
    }

    /// A static data member, as cvar.<Class>_<name>; constant ones are read-only.
    template <class M> Class & variable(char const * variable_name, M * place)
    {
        std::string const full_name = std::string(naming::BASIC_NAME<T>) + "::" + variable_name;
        module.addVariable(variableOf(name + "_" + variable_name, full_name, place));
        return *this;
    }

private:
    enum Wrapping { IDENTITY, DISCARD, KEEP };

    template <Wrapping W, class S>
    using Wrapped =
        std::conditional_t<W == DISCARD, DiscardShape<S>, std::conditional_t<W == KEEP, KeepingShape<S>, S>>;

    // NOLINTNEXTLINE(performance-unnecessary-value-param): the name is moved on
    template <class S> Overload & add(std::string function_name, std::string_view declared_name, Kind kind)
    {
        S::List::prepare();
        prepareResult<typename S::Result>();
        Overload row;
        row.call = &S::call;
        row.entry = &enter<S>;
        row.parameters = S::List::INFO;
        row.result_name = &resultName<typename S::Result>;
        row.name = declared_name;
        row.kind = kind;
        row.is_variadic = S::VARIADIC;
        return module.addOverload(std::move(function_name), naming::BASIC_NAME<T>, row);
    }

    template <Wrapping W, class R, class C, class... A>
    void addMethod(std::string const & full, char const * declared, R (C::*method)(A...))
    {
        using S = MethodShape<T, R, A...>;
        add<Wrapped<W, S>>(full, declared, Kind::METHOD).setTarget(typename S::Target(method));
    }

    template <Wrapping W, class R, class C, class... A>
    void addMethod(std::string const & full, char const * declared, R (C::*method)(A...) const)
    {
        using S = MethodShape<T const, R, A...>;
        add<Wrapped<W, S>>(full, declared, Kind::CONST_METHOD).setTarget(typename S::Target(method));
    }

    template <Wrapping W, class R, class C, class... A>
    void addMethod(std::string const & full, char const * declared, R (C::*method)(A..., ...))
    {
        using S = VariadicMethodShape<T, R, A...>;
        add<Wrapped<W, S>>(full, declared, Kind::METHOD).setTarget(typename S::Target(method));
    }

    template <Wrapping W, class R, class C, class... A>
    void addMethod(std::string const & full, char const * declared, R (C::*method)(A..., ...) const)
    {
        using S = VariadicMethodShape<T const, R, A...>;
        add<Wrapped<W, S>>(full, declared, Kind::CONST_METHOD).setTarget(typename S::Target(method));
    }

    template <Wrapping W, class R, class Object, class... A>
    void addMethod(std::string const & full, char const * declared, R (*function)(Object &, A...))
    {
        static_assert(std::is_same_v<std::remove_const_t<Object>, T>, "the object comes first");
        using S = ExtensionShape<Object, R, A...>;
        constexpr Kind KIND = std::is_const_v<Object> ? Kind::CONST_METHOD : Kind::METHOD;
        add<Wrapped<W, S>>(full, declared, KIND).setTarget(function);
    }

    template <Wrapping W, PlainLambda L>
    void addMethod(std::string const & full, char const * declared, L lambda)
    {
        addMethod<W>(full, declared, +lambda);
    }

    template <Wrapping W, class R, class... A>
    void addStatic(std::string const & full, char const * declared, R (*function)(A...))
    {
        add<Wrapped<W, StaticShape<R, A...>>>(full, declared, Kind::STATIC).setTarget(function);
    }

    template <Wrapping W, class R, class... A>
    void addStatic(std::string const & full, char const * declared, R (*function)(A..., ...))
    {
        add<Wrapped<W, VariadicStaticShape<R, A...>>>(full, declared, Kind::STATIC).setTarget(function);
    }

    template <Wrapping W, PlainLambda L>
    void addStatic(std::string const & full, char const * declared, L lambda)
    {
        addStatic<W>(full, declared, +lambda);
    }

    template <auto FUNCTION, class R, class... A> Class & addWithObject(char const * method_name, R (*)(A...))
    {
        return staticMethod(method_name, FUNCTION,
                            [](T const &, A... arguments) -> R { return FUNCTION(arguments...); });
    }

    Module & module;
    std::string name;
};

} // namespace Yul::python
