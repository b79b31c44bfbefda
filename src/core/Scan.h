// scanf-style reading with field widths, bounded and independent of the locale.
#pragma once

#include "core/VarArgs.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace Yul::detail {

/// One destination of a scan: an int, a float, a double, a 64-bit integer, a text, or a character buffer with
/// its size.
struct ScanTarget
{
    enum class Kind { NONE, INT, LONG, FLOAT, DOUBLE, TEXT, CHARS };

    ScanTarget() = default;

    // NOLINTBEGIN(google-explicit-constructor): destinations are given as they stand
    ScanTarget(int * p) : kind(Kind::INT), where(p) {}

    ScanTarget(long * p) : kind(Kind::LONG), where(p) {}

    ScanTarget(float * p) : kind(Kind::FLOAT), where(p) {}

    ScanTarget(double * p) : kind(Kind::DOUBLE), where(p) {}

    ScanTarget(std::string * p) : kind(Kind::TEXT), where(p) {}

    ScanTarget(char * p, std::size_t n) : kind(Kind::CHARS), where(p), size(n) {}

    template <std::size_t N> ScanTarget(char (*p)[N]) : ScanTarget(*p, N) {}

    // NOLINTEND(google-explicit-constructor)

    Kind kind = Kind::NONE;
    void * where = nullptr;
    std::size_t size = 0;
};

/// How many characters at the start of the text are a number that "%f" reads; 0 where there is none.
[[nodiscard]] std::size_t realLength(std::string_view field);

/// Reads the text by the format and returns the number of targets filled, as sscanf does: a blank in the
/// format skips blanks, other characters must match, "%d", "%f", "%s", "%c", "%[set]" with optional width and
/// "*", "%%". A conversion that does not fit ends the scan; its target and all later ones keep their values.
/// Returns 0, never -1, for an empty text. "%f" reads decimal numbers only (no "inf", no "nan", no
/// hexadecimal).
int scanTargets(std::string_view text, char const * format, ScanTarget const * targets, std::size_t count);

/// scan("12Z 14 NOV", "%2dZ %2d %3s", &hour, &day, &month), with int, long, float, double, std::string or
/// char[N].
template <class... Target> int scan(std::string_view text, char const * format, Target... target)
{
    std::array<ScanTarget, sizeof...(Target) + 1> const targets{ScanTarget(target)...};
    return scanTargets(text, format, targets.data(), sizeof...(Target));
}

/// The same for the variadic operations of the library: targets are the pointers that scanf takes ("l" makes
/// "%d" a long and "%f" a double); a text conversion without a width is held to 249 characters. A null
/// pointer ends it.
int vscan(std::string_view text, char const * format, VarArgs & args);

} // namespace Yul::detail
