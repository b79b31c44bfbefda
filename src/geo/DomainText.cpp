#include "geo/DomainText.h"

#include "core/Const.h"
#include "core/StrLib.h"

#include <charconv>
#include <cmath>

namespace Yul::detail {

namespace {

template <class Number> std::optional<Number> readWhole(std::string_view text) noexcept
{
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    Number number{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || isMissing(number))
        return std::nullopt;
    return number;
}

} // namespace

std::optional<float> readFloat(std::string_view text) noexcept
{
    auto const number = readWhole<float>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> readInt(std::string_view text) noexcept
{
    return readWhole<int>(text);
}

} // namespace Yul::detail
