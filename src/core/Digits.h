// Quick decimal text of integers.
#pragma once

#include <cstddef>
#include <string_view>

namespace Yul::detail {

/// The text that printf gives for "%<width>.<digits>d": at least `digits` digits, padded with blanks on the
/// left to `width` characters. At most 12 of either. The text lives as long as this object.
class Decimal
{
public:
    constexpr explicit Decimal(long value, int digits = 1, int width = 0) noexcept
    {
        auto magnitude = static_cast<unsigned long>(value);
        if (value < 0)
            magnitude = 0UL - magnitude;
        for (; magnitude != 0 || digits > 0; magnitude /= 10, --digits)
            *--first = static_cast<char>('0' + magnitude % 10);
        if (value < 0)
            *--first = '-';
        while (end() - first < width && first > text)
            *--first = ' ';
    }

    Decimal(Decimal const &) = delete;
    Decimal & operator=(Decimal const &) = delete;

    [[nodiscard]] constexpr std::string_view view() const noexcept
    {
        return {first, static_cast<std::size_t>(end() - first)};
    }

private:
    [[nodiscard]] constexpr char const * end() const noexcept { return text + sizeof text; }

    char text[24] = {};
    char * first = text + sizeof text;
};

} // namespace Yul::detail
