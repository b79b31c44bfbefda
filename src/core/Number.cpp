#include "core/Number.h"

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

double readHexadecimal(std::string_view digits) noexcept
{
    double value = 0.0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::hex);
    return value;
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
    if (text.size() > 2 && text[0] == '0' && toLower(text[1]) == 'x')
        return readHexadecimal(text.substr(2));
    double value = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    bool const is_negative = text.front() == '-';
    bool const is_tiny =
        text.substr(0, static_cast<std::size_t>(end - text.data())).find("e-") != std::string_view::npos;
    double const magnitude = is_tiny ? 0.0 : std::numeric_limits<double>::infinity();
    return is_negative ? -magnitude : magnitude;
}

float toFloat(std::string_view text) noexcept
{
    return static_cast<float>(toDouble(text));
}

} // namespace Yul::detail
