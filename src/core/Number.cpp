#include "core/Number.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace Yul::detail {
namespace {

std::string_view skipBlanksAndPlus(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

template <class Integer> Integer readInteger(std::string_view text) noexcept
{
    text = skipBlanksAndPlus(text);
    Integer value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range)
        return text.front() == '-' ? std::numeric_limits<Integer>::min()
                                   : std::numeric_limits<Integer>::max();
    return value;
}

/// "0x" counts only with a digit behind it: elsewhere the number is the 0 in front.
bool isHexadecimal(std::string_view text) noexcept
{
    constexpr std::string_view DIGITS = ".0123456789abcdefABCDEF";
    return text.size() > 2 && text[0] == '0' && toLower(text[1]) == 'x' &&
           DIGITS.find(text[2]) != std::string_view::npos;
}

double readHexadecimal(std::string_view digits) noexcept
{
    double value = 0.0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::hex);
    return value;
}

/// Whether a number beyond the range of a double is too small for it, not too large.
bool isTiny(std::string_view number) noexcept
{
    std::string_view const mantissa = number.substr(0, number.find_first_of("eE"));
    std::string_view const exponent = number.substr(std::min(mantissa.size() + 1, number.size()));
    auto const point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    auto const first_digit = static_cast<long long>(mantissa.find_first_of("123456789"));
    return point - first_digit + readInteger<int>(exponent) < 0;
}

} // namespace

int toInt(std::string_view text) noexcept
{
    return readInteger<int>(text);
}

long long toLong(std::string_view text) noexcept
{
    return readInteger<long long>(text);
}

double toDouble(std::string_view text) noexcept
{
    text = skipBlanksAndPlus(text);
    if (isHexadecimal(text))
        return readHexadecimal(text.substr(2));
    double value = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    std::string_view const number(text.data(), static_cast<std::size_t>(end - text.data()));
    double const magnitude = isTiny(number) ? 0.0 : std::numeric_limits<double>::infinity();
    return number.front() == '-' ? -magnitude : magnitude;
}

float toFloat(std::string_view text) noexcept
{
    return static_cast<float>(toDouble(text));
}

} // namespace Yul::detail
