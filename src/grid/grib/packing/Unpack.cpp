#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul::detail::grib {
namespace {

/// The number of `width` bits at a bit position, octet by octet, for the last few of a section.
std::uint32_t numberAt(Octets packed, std::uint64_t bit, unsigned width) noexcept
{
    std::uint64_t value = 0;
    auto const first = static_cast<std::size_t>(bit >> 3);
    auto const end = static_cast<std::size_t>((bit + width + 7) >> 3);
    for (std::size_t i = first; i < end; ++i)
        value = value << 8 | packed[i];
    std::uint64_t const behind = 8 * static_cast<std::uint64_t>(end) - bit - width;
    return static_cast<std::uint32_t>(value >> behind & ((std::uint64_t{1} << width) - 1));
}

/// Calls store(i, number) for each number: a load of eight octets and two shifts each while eight octets are
/// there.
template <class Store>
inline void
forEachNumber(Octets packed, std::uint64_t bit, unsigned width, std::size_t count, Store store) noexcept
{
    std::size_t i = 0;
    if (packed.size() >= 8) {
        std::uint64_t const last_load =
            8 * static_cast<std::uint64_t>(packed.size() - 8) + 7; // bit that may begin it
        std::size_t const wide =
            bit > last_load
                ? 0
                : static_cast<std::size_t>(std::min<std::uint64_t>((last_load - bit) / width + 1, count));
        Octet const * const p = packed.data();
        for (; i < wide; ++i, bit += width)
            store(i,
                  static_cast<std::uint32_t>((loadBigEndian64(p + (bit >> 3)) << (bit & 7)) >> (64 - width)));
    }
    for (; i < count; ++i, bit += width)
        store(i, numberAt(packed, bit, width));
}

void integersPlain(Octets packed,
                   std::uint64_t bit,
                   unsigned width,
                   std::uint32_t base,
                   std::span<std::uint32_t> out) noexcept
{
    if (width == 0) {
        std::fill(out.begin(), out.end(), base);
        return;
    }
    std::uint32_t * const to = out.data();
    forEachNumber(packed, bit, width, out.size(), [=](std::size_t i, std::uint32_t x) { to[i] = base + x; });
}

void scaledPlain(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
{
    Scale const s = scale;
    float * const to = out.data();
    if (width == 0)
        std::fill(out.begin(), out.end(), static_cast<float>(s(0)));
    else if (width == 16 && bit % 8 == 0) {
        Octet const * const p = packed.data() + bit / 8;
        for (std::size_t i = 0; i < out.size(); ++i)
            to[i] = static_cast<float>(s(p[2 * i] << 8 | p[2 * i + 1]));
    } else if (width == 8 && bit % 8 == 0) {
        Octet const * const p = packed.data() + bit / 8;
        for (std::size_t i = 0; i < out.size(); ++i)
            to[i] = static_cast<float>(s(p[i]));
    } else
        forEachNumber(packed, bit, width, out.size(), [=](std::size_t i, std::uint32_t x) {
            to[i] = static_cast<float>(s(static_cast<double>(x)));
        });
}

void scalePlain(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
{
    Scale const s = scale;
    for (std::size_t i = 0; i < values.size(); ++i)
        out[i] = static_cast<float>(s(static_cast<std::int32_t>(values[i])));
}

void accumulatePlain(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept
{
    std::uint32_t running = sum;
    for (auto & value : values)
        value = running += value + step;
    sum = running;
}

void groupsPlain(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept
{
    for (std::size_t g = 0; g < groups.count; ++g) {
        std::size_t const length = groups.length[g];
        integersPlain(packed, bit, groups.width[g], groups.base[g], {out, length});
        bit += std::uint64_t{length} * groups.width[g];
        out += length;
    }
}

bool isFloat(double x) noexcept
{
    return static_cast<double>(static_cast<float>(x)) == x;
}

/// True when reference + x * binary is a sum of two numbers of 24 bits. Rounded to the 53 bits of a double and then to a float
/// it is the same as rounded once (S. A. Figueroa, When is double rounding innocuous?, SIGNUM Newsletter 30, 1995).
bool isFloatSum(Scale const & scale, unsigned width) noexcept
{
    int exponent = 0;
    bool const is_power = std::frexp(scale.binary, &exponent) == 0.5;
    return is_power && width <= std::numeric_limits<float>::digits && isFloat(scale.binary) &&
           isFloat(scale.reference);
}

constexpr UnpackForm PLAIN{"plain", integersPlain, scaledPlain, scalePlain, accumulatePlain, groupsPlain};

UnpackForm const & bestForm() noexcept
{
    static UnpackForm const & form = widestForm() != nullptr ? *widestForm()
                                     : wideForm() != nullptr ? *wideForm()
                                                             : PLAIN;
    return form;
}

} // namespace

Arithmetic arithmeticFor(Scale const & scale, unsigned width) noexcept
{
    if (scale.decimal != 1)
        return Arithmetic::DECIMAL;
    return isFloatSum(scale, width) ? Arithmetic::FLOAT : Arithmetic::DOUBLE;
}

UnpackForm const & plainForm() noexcept
{
    return PLAIN;
}

void unpackIntegers(Octets packed,
                    std::uint64_t bit,
                    unsigned width,
                    std::uint32_t base,
                    std::span<std::uint32_t> out) noexcept
{
    bestForm().integers(packed, bit, width, base, out);
}

void unpackScaled(
    Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
{
    bestForm().scaled(packed, bit, width, scale, out);
}

void scaleIntegers(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
{
    bestForm().scale(values, scale, out);
}

void accumulate(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept
{
    bestForm().accumulate(values, step, sum);
}

void unpackGroups(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept
{
    bestForm().groups(packed, bit, groups, out);
}

} // namespace Yul::detail::grib
