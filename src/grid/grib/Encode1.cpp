#include "grid/grib/Encode1.h"

#include "core/Const.h"
#include "core/Format.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t LONGEST = 0xffffff; // octets that the length of a message can state
constexpr double MILLI = 1e-3;

/// Octets of a message being written.
class Writer
{
public:
    explicit Writer(std::vector<Octet> & to) : octets(to) {}

    void number(std::uint64_t value, unsigned count)
    {
        for (unsigned i = count; i-- > 0;)
            octets.push_back(static_cast<Octet>(value >> (8 * i)));
    }

    /// Sign and magnitude.
    void sign(std::int64_t value, unsigned count)
    {
        std::uint64_t const bit = std::uint64_t{1} << (8 * count - 1);
        number(static_cast<std::uint64_t>(value < 0 ? -value : value) % bit | (value < 0 ? bit : 0), count);
    }

    void milli(double degrees) { sign(std::llround(degrees / MILLI), 3); }

    /// Begins a section; its length is put in when it ends, on an even number of octets.
    void begin()
    {
        start = octets.size();
        number(0, 3);
    }

    void end()
    {
        if ((octets.size() - start) % 2 != 0)
            octets.push_back(0);
        std::size_t const length = octets.size() - start;
        for (std::size_t i = 0; i < 3; ++i)
            octets[start + i] = static_cast<Octet>(length >> (8 * (2 - i)));
    }

    [[nodiscard]] std::size_t sectionSize() const noexcept { return octets.size() - start; }

    Octet & at(std::size_t octet) { return octets[start + octet - 1]; }

private:
    std::vector<Octet> & octets;
    std::size_t start = 0;
};

/// The packed form of the values that are there.
struct Packed
{
    std::uint32_t reference = 0; ///< as coded
    int binary = 0;
    int decimal = 0;
    unsigned bits = 0;
};

bool isAbsent(float value) noexcept
{
    return isMissing(value) || !std::isfinite(value);
}

/// The least power of two whose multiples, as many as the bits can count, span the range.
int binaryScale(double range, int bits)
{
    double const steps = std::ldexp(1.0, bits) - 1;
    int exponent = static_cast<int>(std::ceil(std::log2(range / steps)));
    while (std::ldexp(steps, exponent) < range)
        ++exponent;
    return exponent;
}

[[nodiscard]] std::string choose(std::span<float const> values, PackingChoice choice, Packed & packed)
{
    double low = 0;
    double high = 0;
    bool has_any = false;
    for (float const value : values)
        if (!isAbsent(value)) {
            low = has_any ? std::min<double>(low, value) : value;
            high = has_any ? std::max<double>(high, value) : value;
            has_any = true;
        }
    packed.decimal = choice.decimal.value_or(0);
    double const unit = decimalScale(-packed.decimal);
    packed.reference = convIBMFloat(low * unit);
    double const range = high * unit - convIBMFloat(packed.reference);
    if (!std::isfinite(range))
        return "values beyond the range of a reference value";
    if (low == high || !(range > 0))
        return {};
    if (!choice.bits && choice.decimal) {
        double const steps = std::ceil(range);
        packed.bits = static_cast<unsigned>(std::ceil(std::log2(steps + 1)));
        return packed.bits <= PackingChoice::MAX_BITS ? std::string()
                                                      : format("%d decimal places need more than %d bits",
                                                               packed.decimal, PackingChoice::MAX_BITS);
    }
    packed.bits = static_cast<unsigned>(choice.bits.value_or(PackingChoice::DEFAULT_BITS));
    packed.binary = binaryScale(range, static_cast<int>(packed.bits));
    return {};
}

void writePDB(Writer & w, Product const & p, Range1 const & range, bool has_bitmap, int decimal)
{
    Moment const & m = p.reference;
    int const century = (m.year - 1) / 100 + 1;
    w.begin();
    for (int const octet :
         {p.table, p.centre, p.process, 255, has_bitmap ? 0xc0 : 0x80, p.number, p.level_type, p.level_octet1,
          p.level_octet2, m.year - (century - 1) * 100, m.month, m.day, m.hour, m.minute})
        w.number(static_cast<std::uint64_t>(octet), 1);
    w.number(range.unit, 1);
    bool const is_long = range.indicator == 10;
    w.number(range.p1, is_long ? 2 : 1);
    if (!is_long)
        w.number(range.p2, 1);
    w.number(range.indicator, 1);
    w.number(0, 3);
    w.number(static_cast<std::uint64_t>(century), 1);
    w.number(static_cast<std::uint64_t>(p.sub_centre), 1);
    w.sign(decimal, 2);
    w.end();
}

void writeFirstPoint(Writer & w, unsigned type, Geometry const & g)
{
    w.begin();
    w.number(0, 1);
    w.number(255, 1);
    w.number(type, 1);
    w.number(static_cast<std::uint64_t>(g.nx), 2);
    w.number(static_cast<std::uint64_t>(g.ny), 2);
    w.milli(g.lat1);
    w.milli(g.lon1);
    w.number(0x80, 1);
}

void writeLatLon(Writer & w, Geometry const & g)
{
    writeFirstPoint(w, 0, g);
    w.milli(g.lat2);
    w.milli(g.lon2);
    w.number(static_cast<std::uint64_t>(std::llround(g.dx / MILLI)), 2);
    w.number(static_cast<std::uint64_t>(std::llround(g.dy / MILLI)), 2);
    w.number(0, 1);
    w.number(0, 4);
    w.end();
}

void writeMercator(Writer & w, Geometry const & g)
{
    writeFirstPoint(w, 1, g);
    w.milli(g.lat2);
    w.milli(g.lon2);
    w.milli(g.true_lat1);
    w.number(0, 2);
    w.number(static_cast<std::uint64_t>(std::llround(g.dx)), 3);
    w.number(static_cast<std::uint64_t>(std::llround(g.dy)), 3);
    w.number(0, 8);
    w.end();
}

void writePlane(Writer & w, unsigned type, Geometry const & g)
{
    writeFirstPoint(w, type, g);
    w.milli(g.ref_lon);
    w.number(static_cast<std::uint64_t>(std::llround(g.dx)), 3);
    w.number(static_cast<std::uint64_t>(std::llround(g.dy)), 3);
    w.number(g.is_south ? 0x80 : 0, 1);
    w.number(0, 1);
}

void writePolar(Writer & w, Geometry const & g)
{
    writePlane(w, 5, g);
    w.number(0, 4);
    w.end();
}

void writeConic(Writer & w, Geometry const & g)
{
    writePlane(w, g.kind == GridKind::LAMBERT ? 3 : 8, g);
    w.milli(g.true_lat1);
    w.milli(g.true_lat2);
    w.milli(-90);
    w.milli(0);
    w.number(0, 2);
    w.end();
}

constexpr std::pair<GridKind, void (*)(Writer &, Geometry const &)> GRID_WRITERS[] = {
    {GridKind::LATLON, writeLatLon}, {GridKind::MERCATOR, writeMercator}, {GridKind::POLAR, writePolar},
    {GridKind::LAMBERT, writeConic}, {GridKind::ALBERS, writeConic},
};

bool writeGDB(Writer & w, Geometry const & g)
{
    for (auto const & [kind, write] : GRID_WRITERS)
        if (kind == g.kind) {
            write(w, g);
            return true;
        }
    return false;
}

/// Appends bits to a section, most significant first.
class BitRow
{
public:
    explicit BitRow(Writer & to) : writer(to) {}

    void put(std::uint64_t value, unsigned width)
    {
        held = held << width | value;
        count += width;
        for (; count >= 8; count -= 8)
            writer.number(held >> (count - 8) & 0xffU, 1);
    }

    void flush()
    {
        if (count > 0)
            put(0, 8 - count);
    }

private:
    Writer & writer;
    std::uint64_t held = 0;
    unsigned count = 0;
};

void writeBMB(Writer & w, std::span<float const> values)
{
    w.begin();
    w.number(0, 3);
    BitRow bits(w);
    for (float const value : values)
        bits.put(isAbsent(value) ? 0 : 1, 1);
    bits.flush();
    w.end();
    w.at(4) = static_cast<Octet>((w.sectionSize() - 6) * 8 - values.size());
}

void writeBDB(Writer & w, std::span<float const> values, Packed const & packed)
{
    w.begin();
    w.number(0, 1);
    w.sign(packed.binary, 2);
    w.number(packed.reference, 4);
    w.number(packed.bits, 1);
    double const reference = convIBMFloat(packed.reference);
    double const unit = decimalScale(-packed.decimal);
    double const step = convScale(packed.binary);
    double const largest = std::ldexp(1.0, static_cast<int>(packed.bits)) - 1;
    std::uint64_t count = 0;
    BitRow bits(w);
    for (float const value : values)
        if (packed.bits > 0 && !isAbsent(value)) {
            double const number = std::round((value * unit - reference) / step);
            bits.put(static_cast<std::uint64_t>(std::clamp(number, 0.0, largest)), packed.bits);
            ++count;
        }
    bits.flush();
    w.end();
    w.at(4) = static_cast<Octet>((w.sectionSize() - 11) * 8 - count * packed.bits);
}

} // namespace

std::string encode1(Field const & field,
                    Range1 const & range,
                    PackingChoice choice,
                    std::span<float const> values,
                    std::vector<Octet> & message)
{
    Geometry const & g = field.geometry;
    if (g.nx < 1 || g.ny < 1 || g.nx > 0xfffe || g.ny > 0xfffe || g.points() != values.size())
        return format("grid of %d by %d points", g.nx, g.ny);
    Packed packed;
    if (std::string fault = choose(values, choice, packed); !fault.empty())
        return fault;
    if (values.size() / 8 * (packed.bits + 1) > LONGEST)
        return "too long for edition 1";
    bool const has_bitmap = std::any_of(values.begin(), values.end(), isAbsent);
    message.clear();
    Writer w(message);
    for (char const c : {'G', 'R', 'I', 'B'})
        w.number(static_cast<Octet>(c), 1);
    w.number(0, 3);
    w.number(1, 1);
    writePDB(w, field.product, range, has_bitmap, packed.decimal);
    if (!writeGDB(w, g))
        return "edition 1 has no such grid";
    if (has_bitmap)
        writeBMB(w, values);
    writeBDB(w, values, packed);
    w.number(0x37373737, 4);
    if (message.size() > LONGEST)
        return "too long for edition 1";
    for (std::size_t i = 0; i < 3; ++i)
        message[4 + i] = static_cast<Octet>(message.size() >> (8 * (2 - i)));
    return {};
}

} // namespace Yul::detail::grib
