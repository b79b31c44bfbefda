#include "surface/HeadingPattern.h"

#include "core/Const.h"
#include "core/Number.h"
#include "core/Yul.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace Yul::detail {
namespace {

constexpr std::string_view GRIB = "GRIB";
constexpr std::string_view GRIB_KEYS = "SMGTLHV";

bool isAny(char c)
{
    return c == '.' || c == '?';
}

/// A bracketed set at the front of a pattern, taken off it.
struct Set
{
    std::string_view members;
    bool excludes = false;

    [[nodiscard]] bool holds(char c) const { return (members.find(c) != std::string_view::npos) != excludes; }
};

Set takeSet(std::string_view & pattern)
{
    pattern.remove_prefix(1);
    Set set;
    set.excludes = pattern.starts_with('^');
    if (set.excludes)
        pattern.remove_prefix(1);
    set.members = pattern.substr(0, pattern.find(']'));
    pattern.remove_prefix(std::min(set.members.size() + 1, pattern.size()));
    return set;
}

/// Characters of the subject that one alternative takes; none when it does not fit.
std::optional<std::size_t> alternativeLength(std::string_view alternative, std::string_view subject)
{
    std::size_t taken = 0;
    while (!alternative.empty()) {
        if (taken >= subject.size())
            return std::nullopt;
        char const c = subject[taken++];
        char const p = alternative.front();
        if (p == '[') {
            if (!takeSet(alternative).holds(c))
                return std::nullopt;
            continue;
        }
        alternative.remove_prefix(1);
        if (!isAny(p) && p != c)
            return std::nullopt;
    }
    return taken;
}

/// Takes "(a|b|c)" off the pattern and what the first fitting alternative covers off the subject.
bool takeAlternatives(std::string_view & pattern, std::string_view & subject)
{
    pattern.remove_prefix(1);
    std::string_view group = pattern.substr(0, pattern.find(')'));
    pattern.remove_prefix(std::min(group.size() + 1, pattern.size()));
    for (;;) {
        std::string_view const alternative = group.substr(0, group.find('|'));
        if (auto const taken = alternativeLength(alternative, subject)) {
            subject.remove_prefix(*taken);
            return true;
        }
        if (alternative.size() == group.size())
            return false;
        group.remove_prefix(alternative.size() + 1);
    }
}

using GribValues = std::array<int, GRIB_KEYS.size()>;

void skipBlanks(std::string_view & text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
}

/// Takes an integer with an optional sign; none where the text does not begin with one.
std::optional<int> takeInteger(std::string_view & text)
{
    skipBlanks(text);
    std::size_t n = !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
    std::size_t const first = n;
    while (n < text.size() && isDigit(text[n]))
        ++n;
    if (n == first)
        return std::nullopt;
    int const value = toInt(text.substr(0, n));
    text.remove_prefix(n);
    return value;
}

/// Reads pairs of a key letter and a number; keys that are not there stay missing.
GribValues readGribPairs(std::string_view text)
{
    GribValues values;
    values.fill(Const::MISS);
    while (!text.empty()) {
        std::size_t const key = GRIB_KEYS.find(text.front());
        text.remove_prefix(1);
        auto const value = takeInteger(text);
        if (!value)
            break;
        if (key != std::string_view::npos)
            values[key] = *value;
        skipBlanks(text);
    }
    return values;
}

bool matchGrib(std::string_view identifier, std::string_view pattern)
{
    identifier.remove_prefix(GRIB.size());
    takeInteger(identifier);
    skipBlanks(identifier);
    GribValues const has = readGribPairs(identifier);
    GribValues const wants = readGribPairs(pattern);
    for (std::size_t i = 0; i < wants.size(); ++i)
        if (!isMissing(wants[i]) && wants[i] != has[i])
            return false;
    return true;
}

/// What a comparison came to, and the mark that stands for the reason in the trace.
struct Verdict
{
    bool is_match;
    char const * mark;
};

/// A comparison of a heading with a pattern, an element of the pattern at a time.
class Comparison
{
public:
    Comparison(std::string_view heading, std::string_view id, std::string_view heading_pattern) noexcept
        : subject(heading), identifier(id), pattern(heading_pattern)
    {
    }

    Verdict run()
    {
        while (!pattern.empty())
            if (auto const verdict = step())
                return *verdict;
        return {true, "  1"};
    }

private:
    /// Passes the next element; the verdict where that ends the comparison.
    std::optional<Verdict> step()
    {
        switch (pattern.front()) {
        case '/':
            return toIdentifier();
        case '-':
        case '*':
            return passGap();
        case '(':
            return passAlternatives();
        default:
            if (subject.empty())
                return Verdict{false, "0 E"};
            return pattern.front() == '[' ? passSet() : passLetter();
        }
    }

    std::optional<Verdict> toIdentifier()
    {
        pattern.remove_prefix(1);
        subject = identifier;
        skipBlanks(subject);
        if (!subject.starts_with(GRIB))
            return std::nullopt;
        return matchGrib(subject, pattern) ? Verdict{true, "1 G"} : Verdict{false, "0 G"};
    }

    std::optional<Verdict> passGap()
    {
        pattern.remove_prefix(1);
        if (pattern.empty())
            return std::nullopt;
        std::size_t const stop = subject.find(pattern.front() == '_' ? ' ' : pattern.front());
        if (stop == std::string_view::npos)
            return Verdict{false, "- E"};
        subject.remove_prefix(stop);
        return std::nullopt;
    }

    std::optional<Verdict> passAlternatives()
    {
        if (takeAlternatives(pattern, subject))
            return std::nullopt;
        return subject.empty() ? Verdict{true, "1 )"} : Verdict{false, "0 )"};
    }

    std::optional<Verdict> passSet()
    {
        if (!takeSet(pattern).holds(subject.front()))
            return pattern.empty() ? Verdict{true, "1 ]"} : Verdict{false, "0 ]"};
        subject.remove_prefix(1);
        return std::nullopt;
    }

    std::optional<Verdict> passLetter()
    {
        char const p = pattern.front();
        if (!isAny(p) && subject.front() != (p == '_' ? ' ' : p))
            return Verdict{false, "0 L"};
        pattern.remove_prefix(1);
        subject.remove_prefix(1);
        return std::nullopt;
    }

    std::string_view subject;
    std::string_view identifier;
    std::string_view pattern;
};

} // namespace

bool matchHeading(std::string_view heading, std::string_view identifier, std::string_view pattern)
{
    std::string_view const subject =
        heading.starts_with("**") ? heading.substr(std::min<std::size_t>(3, heading.size())) : heading;
    Verdict const verdict = Comparison(subject, identifier, pattern).run();
    if (Yul::isDebug(7))
        Yul::outDebug(7, "%s CMP:%s:%s:%s:\n", verdict.mark, std::string(heading).c_str(),
                      std::string(identifier).c_str(), std::string(pattern).c_str());
    return verdict.is_match;
}

} // namespace Yul::detail
