// The names of C++ types as messages and prototypes show them, from the types themselves.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

namespace Yul::python {
namespace naming {

/// The qualified name of a class or enumeration, read from the compiler's own spelling of this function.
template <class T> constexpr std::string_view spelledName()
{
    constexpr std::string_view HEAD = "T = ";
    std::string_view const function = __PRETTY_FUNCTION__;
    std::size_t const start = function.find(HEAD) + HEAD.size();
    return function.substr(start, function.find_first_of(";]", start) - start);
}

template <class T> inline constexpr std::string_view BASIC_NAME = spelledName<T>();
template <> inline constexpr std::string_view BASIC_NAME<short> = "short";
template <> inline constexpr std::string_view BASIC_NAME<unsigned short> = "unsigned short";
template <> inline constexpr std::string_view BASIC_NAME<unsigned int> = "unsigned int";
template <> inline constexpr std::string_view BASIC_NAME<long> = "long";
template <> inline constexpr std::string_view BASIC_NAME<unsigned long> = "unsigned long";
template <> inline constexpr std::string_view BASIC_NAME<long long> = "long long";
template <> inline constexpr std::string_view BASIC_NAME<unsigned long long> = "unsigned long long";
template <> inline constexpr std::string_view BASIC_NAME<std::string> = "std::string";

} // namespace naming

/// "Yul::Date const &", "char const *", "float &", "int [13]", "Yul::Grid *". A pointer to texts reads as the
/// array that it stands for, "char const *[]".
template <class T> [[nodiscard]] std::string typeName()
{
    if constexpr (std::is_same_v<T, char const **>)
        return "char const *[]";
    else if constexpr (std::is_reference_v<T>)
        return typeName<std::remove_reference_t<T>>() + (std::is_rvalue_reference_v<T> ? " &&" : " &");
    else if constexpr (std::is_array_v<T>)
        return typeName<std::remove_extent_t<T>>() + " [" + std::to_string(std::extent_v<T>) + "]";
    else if constexpr (std::is_const_v<T>)
        return typeName<std::remove_const_t<T>>() + " const";
    else if constexpr (std::is_pointer_v<T>)
        return typeName<std::remove_pointer_t<T>>() +
               (std::is_pointer_v<std::remove_pointer_t<T>> ? "*" : " *");
    else
        return std::string(naming::BASIC_NAME<T>);
}

} // namespace Yul::python
