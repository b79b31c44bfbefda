#include "core/Format.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace Yul::detail {
namespace {

constexpr int MAX_FIELD = 4095; // widest number field, so that a format cannot ask for gigabytes

/// Switches this thread to the C locale while it lives.
class CLocale
{
public:
    CLocale() : before(uselocale(cLocale())) {}

    ~CLocale() { uselocale(before); }

    CLocale(CLocale const &) = delete;
    CLocale & operator=(CLocale const &) = delete;

private:
    static locale_t cLocale()
    {
        static locale_t const LOCALE = newlocale(LC_ALL_MASK, "C", nullptr);
        return LOCALE;
    }

    locale_t before;
};

/// One "%..." directive: flags, width, precision, length modifier and conversion letter.
struct Directive
{
    std::string flags;
    int width = -1;
    int precision = -1;
    std::string length;
    char conversion = '\0';
};

int readCount(char const *& p, VarArgs & args)
{
    if (*p == '*') {
        ++p;
        return args.next<int>();
    }
    int count = 0;
    for (; *p >= '0' && *p <= '9'; ++p)
        count = std::min(count * 10 + (*p - '0'), MAX_FIELD);
    return count;
}

Directive readDirective(char const *& p, VarArgs & args)
{
    Directive d;
    while (*p != '\0' && std::strchr("-+ #0", *p) != nullptr)
        d.flags += *p++;
    if (*p == '*' || (*p >= '1' && *p <= '9')) {
        d.width = readCount(p, args);
        if (d.width < 0) {
            d.flags += '-';
            d.width = -std::max(d.width, -MAX_FIELD);
        }
        d.width = std::min(d.width, MAX_FIELD);
    }
    if (*p == '.') {
        ++p;
        d.precision = readCount(p, args);
        d.precision = d.precision < 0 ? -1 : std::min(d.precision, MAX_FIELD);
    }
    while (*p != '\0' && std::strchr("hlLqjzt", *p) != nullptr)
        d.length += *p++;
    if (*p != '\0')
        d.conversion = *p++;
    return d;
}

void appendText(std::string & out, Directive const & d, char const * text)
{
    std::size_t const length =
        d.precision >= 0 ? strnlen(text, static_cast<std::size_t>(d.precision)) : std::strlen(text);
    auto const width = static_cast<std::size_t>(std::max(d.width, 0));
    std::size_t const pad = width > length ? width - length : 0;
    bool const left = d.flags.find('-') != std::string::npos;
    out.append(left ? 0 : pad, ' ').append(text, length).append(left ? pad : 0, ' ');
}

template <class T> void appendNumber(std::string & out, Directive const & d, char const * length, T value)
{
    std::string spec = "%" + d.flags;
    if (d.width >= 0)
        spec += std::to_string(d.width);
    if (d.precision >= 0)
        spec += "." + std::to_string(d.precision);
    spec += length;
    spec += d.conversion;

    CLocale const c_locale;
    std::array<char, 128> fixed{};
    int const needed = std::snprintf(fixed.data(), fixed.size(), spec.c_str(), value);
    if (needed < 0)
        return;
    if (static_cast<std::size_t>(needed) < fixed.size()) {
        out.append(fixed.data(), static_cast<std::size_t>(needed));
        return;
    }
    std::vector<char> large(static_cast<std::size_t>(needed) + 1);
    std::snprintf(large.data(), large.size(), spec.c_str(), value);
    out.append(large.data(), static_cast<std::size_t>(needed));
}

void appendInteger(std::string & out, Directive const & d, VarArgs & args)
{
    bool const is_long = d.length.find_first_of("lqjzt") != std::string::npos;
    if (is_long)
        appendNumber(out, d, "ll", args.next<long long>());
    else
        appendNumber(out, d, d.length.c_str(), args.next<int>());
}

void appendReal(std::string & out, Directive const & d, VarArgs & args)
{
    if (d.length == "L")
        appendNumber(out, d, "L", args.next<long double>());
    else
        appendNumber(out, d, "", args.next<double>());
}

void appendString(std::string & out, Directive const & d, VarArgs & args)
{
    auto const * const text = args.next<char const *>();
    appendText(out, d, text != nullptr ? text : "(null)");
}

void appendCharacter(std::string & out, Directive const & d, VarArgs & args)
{
    std::array<char, 2> const text{static_cast<char>(args.next<int>()), '\0'};
    appendText(out, d, text.data());
}

void appendDirective(std::string & out, Directive const & d, VarArgs & args)
{
    switch (d.conversion) {
    case '%':
        out += '%';
        break;
    case 's':
        appendString(out, d, args);
        break;
    case 'c':
        appendCharacter(out, d, args);
        break;
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        appendInteger(out, d, args);
        break;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        appendReal(out, d, args);
        break;
    case 'p':
        appendNumber(out, d, "", args.next<void *>());
        break;
    case 'n':
        args.next<void *>();
        break;
    default:
        break;
    }
}

} // namespace

std::string vformat(char const * format, VarArgs & args)
{
    std::string out;
    if (format == nullptr)
        return out;
    for (char const * p = format; *p != '\0';) {
        std::size_t const plain = std::strcspn(p, "%");
        out.append(p, plain);
        p += plain;
        if (*p == '%') {
            ++p;
            appendDirective(out, readDirective(p, args), args);
        }
    }
    return out;
}

std::string format(char const * format, ...)
{
    std::va_list list;
    va_start(list, format);
    VarArgs args(list);
    va_end(list);
    return vformat(format, args);
}

} // namespace Yul::detail
