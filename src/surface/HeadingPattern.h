// Patterns over bulletin headings and product identifiers.
#pragma once

#include <string_view>

namespace Yul::detail {

/// Matches a bulletin's heading ("SAUS70 KWBC 060000"; behind "** " from its fourth character on) and its
/// product identifier against a pattern, from the left, never going back:
///   . or ?   any character               _        a blank
///   - or *   as much as lies before the pattern's next character (before a blank for "_")
///   [ab]     one of these; [^ab] none of these. Kept: at the pattern's end a set that does not fit matches.
///   (AB|C.)  the first alternative that fits; where none fits, a heading that has ended matches
///   /        goes on with the identifier. One that begins with "GRIB" is compared key by key: "S" subcentre,
///            "M" model, "G" grid, "T" type, "L" level, "H" hour, "V" value, each followed by its number.
/// A pattern that ends first matches, a heading that ends first does not. Debug level 7 traces the verdict.
[[nodiscard]] bool
matchHeading(std::string_view heading, std::string_view identifier, std::string_view pattern);

} // namespace Yul::detail
