#include "core/Scan.h"

#include "core/Number.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstring>
#include <limits>

namespace Yul::detail {
namespace {

constexpr std::size_t NO_WIDTH = static_cast<std::size_t>(-1);
constexpr std::size_t VARIADIC_TEXT = 249; // characters of a variadic text conversion without a width

struct Conversion
{
    bool is_skipped = false;
    std::size_t width = NO_WIDTH;
    bool is_long = false;
    char letter = '\0';
    std::string_view set; // of "%[set]", without the brackets and the "^"
    bool set_excludes = false;
};

/// Reads the "[set]" part; p stands behind the "[".
void readSet(char const *& p, Conversion & c)
{
    c.set_excludes = *p == '^';
    if (c.set_excludes)
        ++p;
    char const * const begin = p;
    if (*p == ']')
        ++p; // a first "]" belongs to the set
    while (*p != '\0' && *p != ']')
        ++p;
    c.set = std::string_view(begin, static_cast<std::size_t>(p - begin));
    if (*p == ']')
        ++p;
}

Conversion readConversion(char const *& p)
{
    Conversion c;
    if (*p == '*') {
        c.is_skipped = true;
        ++p;
    }
    if (isDigit(*p)) {
        c.width = 0;
        for (; isDigit(*p); ++p)
            c.width = std::min<std::size_t>(c.width * 10 + static_cast<std::size_t>(*p - '0'), INT_MAX);
    }
    for (; *p == 'l' || *p == 'h'; ++p)
        c.is_long = c.is_long || *p == 'l';
    if (*p != '\0')
        c.letter = *p++;
    if (c.letter == '[')
        readSet(p, c);
    return c;
}

bool inSet(Conversion const & c, char x)
{
    bool found = false;
    for (std::size_t i = 0; i < c.set.size() && !found; ++i) {
        if (i + 2 < c.set.size() && c.set[i + 1] == '-') {
            found = static_cast<unsigned char>(x) >= static_cast<unsigned char>(c.set[i]) &&
                    static_cast<unsigned char>(x) <= static_cast<unsigned char>(c.set[i + 2]);
            i += 2;
        } else {
            found = c.set[i] == x;
        }
    }
    return found != c.set_excludes;
}

/// The text being read.
class Cursor
{
public:
    explicit Cursor(std::string_view t) : text(t) {}

    void skipBlanks()
    {
        while (!text.empty() && isBlank(text.front()))
            text.remove_prefix(1);
    }

    bool skip(char c)
    {
        if (text.empty() || text.front() != c)
            return false;
        text.remove_prefix(1);
        return true;
    }

    std::string_view window(std::size_t width) const { return text.substr(0, width); }

    std::string_view take(std::size_t n)
    {
        std::string_view const taken = text.substr(0, n);
        text.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view text;
};

std::size_t integerLength(std::string_view field)
{
    std::size_t i = !field.empty() && (field[0] == '-' || field[0] == '+') ? 1 : 0;
    std::size_t const first_digit = i;
    while (i < field.size() && isDigit(field[i]))
        ++i;
    return i > first_digit ? i : 0;
}

std::size_t textLength(Conversion const & c, std::string_view field)
{
    auto const belongs = [&](char x) { return c.letter == '[' ? inSet(c, x) : !isBlank(x); };
    std::size_t n = 0;
    while (n < field.size() && belongs(field[n]))
        ++n;
    return n;
}

/// The octets that the conversion takes; empty when the text does not fit it.
std::string_view takeField(Conversion const & c, Cursor & cursor)
{
    if (c.letter != 'c' && c.letter != '[')
        cursor.skipBlanks();
    switch (c.letter) {
    case 'd':
    case 'i':
    case 'u':
        return cursor.take(integerLength(cursor.window(c.width)));
    case 'f':
    case 'g':
    case 'e':
        return cursor.take(realLength(cursor.window(c.width)));
    case 's':
    case '[':
        return cursor.take(textLength(c, cursor.window(c.width)));
    case 'c': {
        std::size_t const wanted = c.width == NO_WIDTH ? 1 : c.width;
        return cursor.window(wanted).size() == wanted ? cursor.take(wanted) : std::string_view();
    }
    default:
        return {};
    }
}

/// Sends every filled conversion to `store`, which returns false to end the scan.
template <class Store> int scanWith(std::string_view text, char const * format, Store && store)
{
    Cursor cursor(text);
    int filled = 0;
    for (char const * p = format; *p != '\0';) {
        if (isBlank(*p)) {
            cursor.skipBlanks();
            ++p;
            continue;
        }
        if (*p != '%') {
            if (!cursor.skip(*p++))
                return filled;
            continue;
        }
        ++p;
        Conversion const c = readConversion(p);
        if (c.letter == '%') {
            cursor.skipBlanks();
            if (!cursor.skip('%'))
                return filled;
            continue;
        }
        std::string_view const field = takeField(c, cursor);
        if (field.empty())
            return filled;
        if (c.is_skipped)
            continue;
        if (!store(c, field))
            return filled;
        ++filled;
    }
    return filled;
}

void storeChars(ScanTarget const & target, std::string_view field, bool is_text)
{
    auto * out = static_cast<char *>(target.where);
    std::size_t const room = is_text && target.size > 0 ? target.size - 1 : target.size;
    std::size_t const n = std::min(field.size(), room);
    std::memcpy(out, field.data(), n);
    if (is_text && target.size > 0)
        out[n] = '\0';
}

bool storeTarget(ScanTarget const & target, Conversion const & c, std::string_view field)
{
    if (target.where == nullptr)
        return false;
    switch (target.kind) {
    case ScanTarget::Kind::INT:
        *static_cast<int *>(target.where) = toInt(field);
        return true;
    case ScanTarget::Kind::LONG:
        *static_cast<long *>(target.where) = static_cast<long>(toLong(field));
        return true;
    case ScanTarget::Kind::FLOAT:
        *static_cast<float *>(target.where) = toFloat(field);
        return true;
    case ScanTarget::Kind::DOUBLE:
        *static_cast<double *>(target.where) = toDouble(field);
        return true;
    case ScanTarget::Kind::TEXT:
        static_cast<std::string *>(target.where)->assign(field);
        return true;
    case ScanTarget::Kind::CHARS:
        storeChars(target, field, c.letter != 'c');
        return true;
    case ScanTarget::Kind::NONE:
        break;
    }
    return false;
}

/// The target that a scanf-style pointer stands for under this conversion.
ScanTarget variadicTarget(Conversion const & c, void * where)
{
    switch (c.letter) {
    case 'd':
    case 'i':
    case 'u':
        return c.is_long ? ScanTarget(static_cast<long *>(where)) : ScanTarget(static_cast<int *>(where));
    case 'f':
    case 'g':
    case 'e':
        return c.is_long ? ScanTarget(static_cast<double *>(where)) : ScanTarget(static_cast<float *>(where));
    default:
        return {static_cast<char *>(where),
                (c.width == NO_WIDTH ? VARIADIC_TEXT : c.width) + (c.letter == 'c' ? 0 : 1)};
    }
}

} // namespace

std::size_t realLength(std::string_view field)
{
    auto const digits = [&](std::size_t i) {
        while (i < field.size() && isDigit(field[i]))
            ++i;
        return i;
    };
    std::size_t const sign = !field.empty() && (field[0] == '-' || field[0] == '+') ? 1 : 0;
    std::size_t end = digits(sign);
    std::size_t mantissa_digits = end - sign;
    if (end < field.size() && field[end] == '.') {
        std::size_t const fraction_end = digits(end + 1);
        mantissa_digits += fraction_end - end - 1;
        end = fraction_end;
    }
    if (mantissa_digits == 0)
        return 0;
    if (end < field.size() && (field[end] == 'e' || field[end] == 'E')) {
        std::size_t const exponent_sign =
            end + 1 < field.size() && (field[end + 1] == '-' || field[end + 1] == '+') ? 1 : 0;
        std::size_t const exponent_end = digits(end + 1 + exponent_sign);
        if (exponent_end > end + 1 + exponent_sign)
            end = exponent_end;
    }
    return end;
}

int scanTargets(std::string_view text, char const * format, ScanTarget const * targets, std::size_t count)
{
    std::size_t next = 0;
    return scanWith(text, format, [&](Conversion const & c, std::string_view field) {
        return next < count && storeTarget(targets[next++], c, field);
    });
}

int vscan(std::string_view text, char const * format, VarArgs & args)
{
    if (format == nullptr)
        return 0;
    return scanWith(text, format, [&](Conversion const & c, std::string_view field) {
        return storeTarget(variadicTarget(c, args.next<void *>()), c, field);
    });
}

} // namespace Yul::detail
