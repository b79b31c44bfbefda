// Scan formats that are known at compile time: the same reading as detail::scan, without interpreting
// anything.
#pragma once

#include "core/Number.h"
#include "core/Scan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace Yul::detail {

/// A scan format as a template argument. It may hold blanks, plain characters, "%<width>d" with a width of 1
/// to 9, "%f" and "%s" with or without a width, and "%*s"; anything else does not compile.
template <std::size_t N> struct ScanFormat
{
    // NOLINTNEXTLINE(google-explicit-constructor): a literal stands where the format is wanted
    consteval ScanFormat(char const (&format)[N]) { std::copy(format, format + N, text); }

    char text[N]{};
};

struct ScanStep
{
    enum class Kind { NONE, BLANKS, LITERAL, INTEGER, REAL, WORD, SKIPPED_WORD };

    Kind kind = Kind::NONE;
    char literal = '\0';
    std::size_t width = static_cast<std::size_t>(-1);
    std::size_t target = 0; ///< how many targets come before
};

/// Reads a conversion, behind its "%", and passes over it.
consteval ScanStep conversionAt(char const *& p)
{
    using Kind = ScanStep::Kind;
    ScanStep step;
    bool const is_skipped = *p == '*';
    if (is_skipped)
        ++p;
    if (isDigit(*p))
        step.width = 0;
    for (; isDigit(*p); ++p)
        step.width = step.width * 10 + static_cast<std::size_t>(*p - '0');
    char const letter = *p++;
    if (is_skipped)
        step.kind = letter == 's' ? Kind::SKIPPED_WORD : throw "not for a fixed scan";
    else if (letter == 'd' && step.width <= 9)
        step.kind = Kind::INTEGER;
    else
        step.kind = letter == 'f' ? Kind::REAL : letter == 's' ? Kind::WORD : throw "not for a fixed scan";
    return step;
}

/// The steps of a format, one for each blank, character and conversion; the rest stay NONE.
template <std::size_t N> consteval std::array<ScanStep, N> stepsOf(ScanFormat<N> const & format)
{
    using Kind = ScanStep::Kind;
    std::array<ScanStep, N> steps{};
    std::size_t target = 0;
    char const * p = format.text;
    for (auto step = steps.begin(); *p != '\0'; ++step) {
        if (*p == '%') {
            *step = conversionAt(++p);
        } else {
            step->kind = isBlank(*p) ? Kind::BLANKS : Kind::LITERAL;
            step->literal = *p++;
        }
        step->target = target;
        target += step->kind == Kind::INTEGER || step->kind == Kind::REAL || step->kind == Kind::WORD ? 1 : 0;
    }
    return steps;
}

/// The reading position of a fixed scan.
class FixedScanner
{
public:
    explicit FixedScanner(std::string_view text) : at(text.data()), end(text.data() + text.size()) {}

    /// Takes one step; false when the text does not fit.
    template <ScanFormat FORMAT, std::size_t I, class Targets> bool take(Targets const & targets)
    {
        using Kind = ScanStep::Kind;
        constexpr ScanStep STEP = stepsOf(FORMAT)[I];
        if constexpr (STEP.kind == Kind::NONE) {
            return true;
        } else if constexpr (STEP.kind == Kind::LITERAL) {
            return at != end && *at++ == STEP.literal;
        } else if constexpr (STEP.kind == Kind::BLANKS) {
            skipBlanks();
            return true;
        } else if constexpr (STEP.kind == Kind::SKIPPED_WORD) {
            std::string_view ignored;
            return takeField(STEP.width, ignored);
        } else {
            auto & target = std::get<STEP.target>(targets);
            using Target = std::remove_reference_t<decltype(target)>;
            static_assert(std::is_same_v<Target, int> == (STEP.kind == Kind::INTEGER) &&
                          std::is_same_v<Target, float> == (STEP.kind == Kind::REAL));
            return takeField(STEP.width, target);
        }
    }

private:
    void skipBlanks()
    {
        while (at != end && isBlank(*at))
            ++at;
    }

    /// What the next conversion may read.
    std::string_view window(std::size_t width)
    {
        skipBlanks();
        return {at, std::min(static_cast<std::size_t>(end - at), width)};
    }

    bool takeField(std::size_t width, int & target)
    {
        std::string_view const field = window(width);
        char const * p = field.data();
        char const * const last = p + field.size();
        bool const is_negative = p != last && *p == '-';
        if (p != last && (*p == '-' || *p == '+'))
            ++p;
        char const * const first_digit = p;
        int value = 0;
        for (; p != last && isDigit(*p); ++p)
            value = value * 10 + (*p - '0');
        if (p == first_digit)
            return false;
        target = is_negative ? -value : value;
        at = p;
        return true;
    }

    bool takeField(std::size_t width, float & target)
    {
        std::string_view const field = window(width);
        std::size_t const length = realLength(field);
        if (length != 0)
            target = toFloat(field.substr(0, length));
        at += length;
        return length != 0;
    }

    bool takeField(std::size_t width, std::string_view & target)
    {
        std::string_view const field = window(width);
        target = field.substr(
            0, static_cast<std::size_t>(std::find_if(field.begin(), field.end(), isBlank) - field.begin()));
        at += target.size();
        return !target.empty();
    }

    char const * at;
    char const * end;
};

/// fixedScan<"%2dZ %2d %3s">(text, hour, day, month): fills int, float and std::string_view (a piece of the
/// text) targets in order, as far as the text fits, and returns whether all are filled.
template <ScanFormat FORMAT, class... Target> bool fixedScan(std::string_view text, Target &... targets)
{
    FixedScanner scanner(text);
    auto const all = std::tie(targets...);
    return [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return (scanner.take<FORMAT, I>(all) && ...);
    }
    (std::make_index_sequence<stepsOf(FORMAT).size()>());
}

} // namespace Yul::detail
