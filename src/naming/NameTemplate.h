// File name templates, read once into pieces.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Yul::detail {

/// What a piece of a template stands for.
enum class NameCode {
    TEXT,        ///< itself
    YEAR,        ///< %Y
    YEAR00,      ///< %y
    MONTH,       ///< %m
    MONTH_UPPER, ///< %B
    MONTH_LOWER, ///< %b
    DAY,         ///< %d
    JULIAN,      ///< %j
    HOUR,        ///< %h
    MINUTE,      ///< %n
    EXTENSION,   ///< %e
    FORECAST,    ///< %f
    DIRECTORY,   ///< %C %D ... %{name}
    KEY          ///< % and any other character
};

/// One piece of a template.
struct NamePiece
{
    NameCode code = NameCode::TEXT;
    int count = 1;    ///< the number between "%" and the code: a rounding step or a length
    std::string text; ///< the text itself, the directory's resource, or the key's character
};

/// A template, piece by piece.
using NameTemplate = std::vector<NamePiece>;

/// Reads a template. Blanks become "_", braces outside a code vanish, "%%" is a percent sign; a "%" or "%{"
/// that nothing follows stands for nothing, a resource name in braces is cut to 200 characters.
[[nodiscard]] NameTemplate parseNameTemplate(std::string_view text);

/// Seconds between the times that a template tells apart: the smallest of a day (%d, %j), an hour (%h) and a
/// minute (%n), each times its number (at least 1); Const::MISS without any of them.
[[nodiscard]] int nameTemplateStep(NameTemplate const & pieces);

} // namespace Yul::detail
