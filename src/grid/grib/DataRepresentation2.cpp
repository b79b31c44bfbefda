// Section 5 of edition 2.
#include "core/Format.h"
#include "grid/grib/Edition2.h"

namespace Yul::detail::grib {
namespace {

constexpr unsigned MAX_BITS = 32;

/// The octets that most templates begin with.
void readScale(Section & s, Packing & p)
{
    p.scale = {convIEEEFloat(s.u32(12)), convScale(s.s16(16)), decimalScale(s.s16(18))};
    p.bits = s.u8(20);
}

void readSimple(Section & s, Packing & p)
{
    readScale(s, p);
    p.original_type = static_cast<int>(s.u8(21));
}

void readComplex(Section & s, Packing & p)
{
    readSimple(s, p);
    p.splitting = s.u8(22);
    p.missing_management = s.u8(23);
    if (p.missing_management >= 1)
        p.primary_missing = s.u32(24);
    if (p.missing_management >= 2)
        p.secondary_missing = s.u32(28);
    p.groups = s.u32(32);
    p.width_reference = s.u8(36);
    p.width_bits = s.u8(37);
    p.length_reference = s.u32(38);
    p.length_increment = s.u8(42);
    p.last_length = s.u32(43);
    p.length_bits = s.u8(47);
}

void readDifferences(Section & s, Packing & p)
{
    readComplex(s, p);
    p.order = s.u8(48);
    p.extra_octets = s.u8(49);
}

void readIeee(Section & s, Packing & p)
{
    p.precision = static_cast<int>(s.u8(12));
}

void readCcsds(Section & s, Packing & p)
{
    readSimple(s, p);
    p.ccsds_flags = s.u8(22);
    p.block_size = s.u8(23);
    p.reference_interval = s.u16(24);
}

void readRunLength(Section & s, Packing & p)
{
    p.bits = s.u8(12);
    p.max_level = s.u16(13);
    unsigned const count = s.u16(15);
    p.scale.decimal = decimalScale(s.s8(17));
    for (std::size_t i = 0; i < count && !s.isShort(); ++i)
        p.levels.push_back(static_cast<float>(s.s16(18 + 2 * i) * p.scale.decimal));
}

struct DataTemplate
{
    unsigned number;
    PackingKind kind;
    char const * text;
    void (*read)(Section &, Packing &);
};

/// Data representation templates that are read, code table 5.0, with the texts of the debug messages. 40000 and 40010 are
/// local numbers of 40 and 41 from before these were given out.
constexpr DataTemplate TEMPLATES[] = {
    {0, PackingKind::SIMPLE, "Grid point - simple packing", readSimple},
    {2, PackingKind::COMPLEX, "Grid point - complex packing", readComplex},
    {3, PackingKind::COMPLEX, "Grid point - complex packing and spatial differencing", readDifferences},
    {4, PackingKind::IEEE, "IEEE floating point data", readIeee},
    {40, PackingKind::JPEG2000, "JPEG2000 data compression", readSimple},
    {40000, PackingKind::JPEG2000, "JPEG2000 data compression", readSimple},
    {41, PackingKind::PNG, "PNG data compression", readSimple},
    {40010, PackingKind::PNG, "PNG data compression", readSimple},
    {42, PackingKind::CCSDS, "CCSDS lossless compression", readCcsds},
    {200, PackingKind::RUN_LENGTH, "mapped values", readRunLength},
};

} // namespace

char const * packingName(int template_number) noexcept
{
    for (auto const & row : TEMPLATES)
        if (static_cast<int>(row.number) == template_number)
            return row.text;
    return "";
}

std::string readDRS(Section section, Packing & packing)
{
    packing = {};
    packing.points = section.u32(6);
    unsigned const number = section.u16(10);
    packing.template_number = static_cast<int>(number);
    for (auto const & row : TEMPLATES) {
        if (row.number != number)
            continue;
        row.read(section, packing);
        if (section.isShort())
            return "data representation section too short";
        if (packing.bits > MAX_BITS || packing.order > 2 || packing.missing_management > 2)
            return format("data template 5.%u with %u bits, order %u, missing value management %u", number,
                          packing.bits, packing.order, packing.missing_management);
        packing.kind = row.kind;
        return {};
    }
    return format("data template 5.%u", number);
}

} // namespace Yul::detail::grib
