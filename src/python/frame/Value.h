// Python values to plain C++ values: numbers, flags, characters and texts.
#pragma once

#include "python/frame/Fault.h"

#include <cmath>
#include <concepts>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace Yul::python {

/// The uncommon ways to a number: subclasses, integers where a float is wanted, 64-bit unsigned integers.
[[nodiscard]] Fault readDoubleSlow(PyObject * object, double & value);
[[nodiscard]] Fault readUnsignedLong(PyObject * object, unsigned long long & value);
/// A str of one character that is one octet in UTF-8 (or an escaped octet), or an int in -128..127.
[[nodiscard]] Fault readChar(PyObject * object, char & value);

/// The UTF-8 text of a str. `text` lies in the str itself or in `holder` and lives as long as both do; it
/// ends at the first NUL. Escaped octets ("surrogateescape") become what they stand for; other lone
/// surrogates are refused.
[[nodiscard]] Fault readText(PyObject * object, char const *& text, Ref & holder);
/// The same with all octets, NUL included.
[[nodiscard]] Fault readText(PyObject * object, std::string & text);

template <class I>
concept Integer = std::integral<I> && !std::same_as<I, bool> && !std::same_as<I, char>;

/// True for enumerations that can hold every value of their underlying type.
template <class E>
concept FixedEnum = std::is_enum_v<E> && requires
{
    E{0};
};

template <Integer I> [[nodiscard]] inline Fault readNumber(PyObject * object, I & value)
{
    if (!PyLong_CheckExact(object) && !PyLong_Check(object)) [[unlikely]]
        return Fault::TYPE;
    if constexpr (std::is_unsigned_v<I> && sizeof(I) == sizeof(unsigned long long)) {
        unsigned long long wide = 0;
        Fault const fault = readUnsignedLong(object, wide);
        value = wide;
        return fault;
    } else {
        int overflow = 0;
        long const wide = PyLong_AsLongAndOverflow(object, &overflow);
        if (overflow != 0 || !std::in_range<I>(wide)) [[unlikely]]
            return Fault::OVERFLOWN;
        value = static_cast<I>(wide);
        return Fault::NONE;
    }
}

/// Integers too large for a double are no double at all.
[[nodiscard]] inline Fault readNumber(PyObject * object, double & value)
{
    if (PyFloat_CheckExact(object)) [[likely]] {
        value = PyFloat_AsDouble(object);
        return Fault::NONE;
    }
    return readDoubleSlow(object, value) == Fault::NONE ? Fault::NONE : Fault::TYPE;
}

/// Infinities and NaN pass, finite values beyond the type's range do not.
[[nodiscard]] inline Fault readNumber(PyObject * object, float & value)
{
    double wide = 0;
    if (PyFloat_CheckExact(object)) [[likely]]
        wide = PyFloat_AsDouble(object);
    else if (Fault const fault = readDoubleSlow(object, wide); fault != Fault::NONE)
        return fault;
    if (std::abs(wide) > static_cast<double>(std::numeric_limits<float>::max()) && std::isfinite(wide))
        return Fault::OVERFLOWN;
    value = static_cast<float>(wide);
    return Fault::NONE;
}

[[nodiscard]] inline Fault readNumber(PyObject * object, bool & value)
{
    value = object == Py_True;
    return value || object == Py_False ? Fault::NONE : Fault::TYPE;
}

[[nodiscard]] inline Fault readNumber(PyObject * object, char & value)
{
    return readChar(object, value);
}

template <class E>
requires std::is_enum_v<E>

[[nodiscard]] inline Fault readNumber(PyObject * object, E & value)
{
    static_assert(FixedEnum<E>, "an enumeration that Python passes needs a fixed type: enum Name : int");
    std::underlying_type_t<E> number{};
    Fault const fault = readNumber(object, number);
    value = static_cast<E>(number);
    return fault;
}

} // namespace Yul::python
