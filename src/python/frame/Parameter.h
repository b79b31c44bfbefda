// One parameter of a library operation: what it accepts from Python and how it is converted.
#pragma once

#include "python/frame/ArrayBuffer.h"
#include "python/frame/PackedObject.h"
#include "python/frame/PointerObject.h"
#include "python/frame/Value.h"

#include <memory>
#include <span>

namespace Yul::python {

/// The order in which overloads of the same argument count are tried.
enum class Rank : unsigned char { OBJECT, BOOL, INTEGER, FLOAT, DOUBLE, CHAR, TEXT };

/// What is known of a parameter without converting anything.
struct ParameterInfo
{
    Rank rank;
    bool (*accepts)(PyObject * object); ///< whether the argument would convert; None passes for any object
    std::string (*name)();              ///< the type as declared
    TypeRecord & (*record)();           ///< of what a pointer or reference points to; null for values
};

/// A library object found behind a Python argument.
struct FoundPointer
{
    void * object = nullptr;
    PointerObject * source = nullptr; ///< the PointerObject that led to it
    Ref held;                         ///< keeps `source` where the argument alone does not
};

/// Finds the object of the wanted type behind a PointerObject, a Python object whose attribute "this" leads
/// to one, or None (a null pointer).
[[nodiscard]] Fault findPointer(PyObject * argument, TypeRecord const & wanted, FoundPointer & found);

/// Whether findPointer would find the type, the object alive or not.
[[nodiscard]] bool acceptsPointer(PyObject * argument, TypeRecord const & wanted);

/// Stores the PointerObject as the instance's attribute "this", past any __setattr__ of its class; -1 with an
/// exception set.
[[nodiscard]] int setThis(PyObject * instance, PyObject * pointer);

/// The PointerObject behind a Python object, or none.
[[nodiscard]] Ref pointerBehind(PyObject * argument);

/// Marks the first parameter of a method: the object, const or not, that the operation works on.
template <class T> struct Self;

/// Each converter has RANK, RECORD, name(), accepts(), load() and, after load() returned NONE, get().
template <class Declared, class V> struct NumberParameter
{
    static constexpr Rank RANK = std::is_same_v<V, bool>     ? Rank::BOOL
                                 : std::is_same_v<V, char>   ? Rank::CHAR
                                 : std::is_same_v<V, float>  ? Rank::FLOAT
                                 : std::is_same_v<V, double> ? Rank::DOUBLE
                                                             : Rank::INTEGER;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return typeName<Declared>(); }

    static bool accepts(PyObject * object)
    {
        V ignored{};
        return readNumber(object, ignored) == Fault::NONE;
    }

    Fault load(PyObject * object) { return readNumber(object, value); }

    V get() const { return value; }

    V value{};
};

/// char const *: a str, None, or a PointerObject of type "char *".
struct TextParameter
{
    static constexpr Rank RANK = Rank::TEXT;
    static constexpr TypeRecord & (*RECORD)() = &recordOf<char const>;

    static std::string name() { return typeName<char const *>(); }

    static bool accepts(PyObject * object);
    Fault load(PyObject * object);

    char const * get() const { return text; }

    char const * text = nullptr;
    Ref holder;
};

/// char *: the same, but the operation works on a copy.
struct BufferParameter
{
    static constexpr Rank RANK = Rank::TEXT;
    static constexpr TypeRecord & (*RECORD)() = &recordOf<char>;

    static std::string name() { return typeName<char *>(); }

    static bool accepts(PyObject * object);
    Fault load(PyObject * object);

    char * get() const { return text; }

    char * text = nullptr;
    std::string copy;
    Ref holder;
};

/// std::string, by value or by constant reference: a str.
template <class Declared> struct StringParameter
{
    static constexpr Rank RANK = Rank::TEXT;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return typeName<Declared>(); }

    static bool accepts(PyObject * object)
    {
        std::string ignored;
        return readText(object, ignored) == Fault::NONE;
    }

    Fault load(PyObject * object) { return readText(object, text); }

    std::string const & get() const { return text; }

    std::string text;
};

/// A library object: by pointer (None is a null pointer), by reference, by value, or the object of a method.
template <class Declared, class T, bool TAKES_NONE> struct ObjectParameter
{
    using Class = std::remove_cv_t<T>;
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = &recordOf<Class>;

    static std::string name() { return typeName<Declared>(); }

    static bool accepts(PyObject * object) { return acceptsPointer(object, *record_of<Class>); }

    Fault load(PyObject * object)
    {
        if (isPointerObject(object)) [[likely]] {
            auto * const pointer = reinterpret_cast<PointerObject *>(object);
            if (pointer->type == record_of<Class> && pointer->isAlive()) [[likely]] {
                found.object = pointer->place();
                found.source = pointer;
                return Fault::NONE;
            }
        }
        Fault const fault = findPointer(object, *record_of<Class>, found);
        return fault == Fault::NONE && !TAKES_NONE && found.object == nullptr ? Fault::NULL_REFERENCE : fault;
    }

    decltype(auto) get() const
    {
        if constexpr (TAKES_NONE)
            return static_cast<T *>(found.object);
        else
            return (*static_cast<T *>(found.object));
    }

    FoundPointer found;
};

/// A pointer or reference to plain values: a PointerObject of that very type.
template <class Declared, class V> struct PlainPointerParameter
{
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = &recordOf<V>;

    static std::string name() { return typeName<Declared>(); }

    static bool accepts(PyObject * object)
    {
        return object != Py_None && acceptsPointer(object, *record_of<V>);
    }

    Fault load(PyObject * object)
    {
        Fault const fault = findPointer(object, *record_of<V>, found);
        return fault == Fault::NONE && found.object == nullptr ? Fault::TYPE : fault;
    }

    decltype(auto) get() const
    {
        if constexpr (std::is_reference_v<Declared>)
            return (*static_cast<V *>(found.object));
        else
            return static_cast<V *>(found.object);
    }

    FoundPointer found;
};

/// A pointer to a member: a packed copy of it.
template <class Declared> struct PackedParameter
{
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return typeName<Declared>(); }

    static bool accepts(PyObject * object)
    {
        Declared ignored{};
        return readPacked(object, &ignored, sizeof ignored, name());
    }

    Fault load(PyObject * object)
    {
        return readPacked(object, &value, sizeof value, name()) ? Fault::NONE : Fault::TYPE;
    }

    Declared get() const { return value; }

    Declared value{};
};

/// std::span, by value: the values of an object with a buffer, which stay where they are; a span of values that
/// are not const is written to.
template <class V> struct SpanParameter
{
    using Item = std::remove_const_t<V>;
    static constexpr Rank RANK = Rank::OBJECT;
    static constexpr TypeRecord & (*RECORD)() = nullptr;

    static std::string name() { return typeName<V>() + " []"; }

    static bool accepts(PyObject * object)
    {
        SpanParameter ignored;
        return ignored.load(object) == Fault::NONE;
    }

    Fault load(PyObject * object)
    {
        return buffer.hold(object, BUFFER_FORMAT<Item>, sizeof(Item), !std::is_const_v<V>);
    }

    std::span<V> get() const { return {static_cast<V *>(buffer.data()), buffer.size() / sizeof(Item)}; }

    ArrayBuffer buffer;
};

template <class T> struct SpanItem
{
};

template <class V> struct SpanItem<std::span<V>>
{
    using Item = V;
};

template <class T>
concept Span = requires
{
    typename SpanItem<T>::Item;
};

template <class V>
concept PlainNumber = std::is_arithmetic_v<V> || std::is_enum_v<V>;

/// Chooses the converter of a declared parameter type.
template <class P> struct ParameterChoice
{
    static consteval auto choose()
    {
        using Bare = std::remove_cvref_t<P>;
        using Target = std::remove_pointer_t<std::remove_reference_t<P>>;
        constexpr bool BY_VALUE = !std::is_reference_v<P> || std::is_same_v<P, Bare const &>;
        if constexpr (PlainNumber<Bare> && BY_VALUE)
            return std::type_identity<NumberParameter<P, Bare>>{};
        else if constexpr (std::is_same_v<Bare, std::string> && BY_VALUE)
            return std::type_identity<StringParameter<P>>{};
        else if constexpr (Span<P>)
            return std::type_identity<SpanParameter<typename SpanItem<P>::Item>>{};
        else if constexpr (std::is_class_v<Bare>)
            return std::type_identity<ObjectParameter<P, std::remove_reference_t<P>, false>>{};
        else if constexpr (std::is_same_v<P, char const *>)
            return std::type_identity<TextParameter>{};
        else if constexpr (std::is_same_v<P, char *>)
            return std::type_identity<BufferParameter>{};
        else if constexpr (std::is_pointer_v<P> && std::is_class_v<Target>)
            return std::type_identity<ObjectParameter<P, Target, true>>{};
        else if constexpr (std::is_member_pointer_v<P>)
            return std::type_identity<PackedParameter<P>>{};
        else
            return std::type_identity<PlainPointerParameter<P, Target>>{};
    }
};

template <class T> struct ParameterChoice<Self<T>>
{
    static consteval auto choose() { return std::type_identity<ObjectParameter<T *, T, false>>{}; }
};

template <class P> using Parameter = typename decltype(ParameterChoice<P>::choose())::type;

template <class P>
inline constexpr ParameterInfo PARAMETER{Parameter<P>::RANK, &Parameter<P>::accepts, &Parameter<P>::name,
                                         Parameter<P>::RECORD};

} // namespace Yul::python
