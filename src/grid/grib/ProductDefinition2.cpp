// Sections 1 and 4 of edition 2.
#include "core/Format.h"
#include "grid/grib/Calendar.h"
#include "grid/grib/Edition2.h"

namespace Yul::detail::grib {
namespace {

/// Where a product definition template has its fields. The fields from the type of generating process to the
/// second surface come in one order everywhere; `shift` is how many octets later than in template 4.0. The
/// others are octet numbers, 0 for none; `period` is the octet of the year in which the period ends.
struct ProductTemplate
{
    unsigned number;
    unsigned shift;
    unsigned member;
    unsigned derived;
    unsigned percentile;
    unsigned probability;
    unsigned period;
    unsigned area_statistic;
};

constexpr ProductTemplate TEMPLATES[] = {
    {0, 0, 0, 0, 0, 0, 0, 0},     {1, 0, 36, 0, 0, 0, 0, 0},   {2, 0, 0, 35, 0, 0, 0, 0},
    {3, 0, 0, 35, 0, 0, 0, 0},    {4, 0, 0, 35, 0, 0, 0, 0},   {5, 0, 0, 0, 0, 37, 0, 0},
    {6, 0, 0, 0, 35, 0, 0, 0},    {7, 0, 0, 0, 0, 0, 0, 0},    {8, 0, 0, 0, 0, 0, 35, 0},
    {9, 0, 0, 0, 0, 37, 48, 0},   {10, 0, 0, 0, 35, 0, 36, 0}, {11, 0, 36, 0, 0, 0, 38, 0},
    {12, 0, 0, 35, 0, 0, 37, 0},  {13, 0, 0, 35, 0, 0, 69, 0}, {14, 0, 0, 35, 0, 0, 65, 0},
    {15, 0, 0, 0, 0, 0, 0, 35},   {32, 0, 0, 0, 0, 0, 0, 0},   {40, 2, 0, 0, 0, 0, 0, 0},
    {41, 2, 38, 0, 0, 0, 0, 0},   {42, 2, 0, 0, 0, 0, 37, 0},  {43, 2, 38, 0, 0, 0, 40, 0},
    {45, 13, 49, 0, 0, 0, 0, 0},  {46, 13, 0, 0, 0, 0, 48, 0}, {47, 13, 49, 0, 0, 0, 51, 0},
    {48, 24, 0, 0, 0, 0, 0, 0},   {49, 24, 60, 0, 0, 0, 0, 0}, {51, 0, 0, 0, 0, 0, 0, 0},
    {60, 0, 36, 0, 0, 0, 0, 0},   {61, 0, 36, 0, 0, 0, 45, 0}, {76, 3, 0, 0, 0, 0, 0, 0},
    {77, 3, 39, 0, 0, 0, 0, 0},   {78, 3, 0, 0, 0, 0, 38, 0},  {79, 3, 39, 0, 0, 0, 41, 0},
    {85, 13, 49, 0, 0, 0, 51, 0},
};

/// Simulated pictures of satellites have spectral bands in place of the surfaces.
constexpr bool hasSurfaces(unsigned number) noexcept
{
    return number != 32;
}

/// Products of satellites have neither forecast time nor level.
constexpr bool isSatellite(unsigned number) noexcept
{
    return number == 30 || number == 31;
}

constexpr unsigned MISSING_OCTET = 255;

Surface surfaceAt(Section & s, std::size_t octet) noexcept
{
    Surface surface;
    surface.type = static_cast<int>(s.u8(octet));
    bool const has_value = s.u8(octet + 1) != MISSING_OCTET && s.u32(octet + 2) != 0xffffffffU;
    if (has_value)
        surface.value = s.s32(octet + 2) * decimalScale(s.s8(octet + 1));
    return surface;
}

Moment momentAt(Section & s, std::size_t octet) noexcept
{
    Moment m;
    m.year = static_cast<int>(s.u16(octet));
    m.month = static_cast<int>(s.u8(octet + 2));
    m.day = static_cast<int>(s.u8(octet + 3));
    m.hour = static_cast<int>(s.u8(octet + 4));
    m.minute = static_cast<int>(s.u8(octet + 5));
    m.second = static_cast<int>(s.u8(octet + 6));
    return m;
}

int optionalOctet(Section & s, unsigned octet) noexcept
{
    return octet != 0 ? static_cast<int>(s.u8(octet)) : -1;
}

Statistic statisticOf(unsigned code) noexcept
{
    return code <= static_cast<unsigned>(Statistic::LAST) ? static_cast<Statistic>(code) : Statistic::OTHER;
}

/// The end of the period as the message states it; where that is no date, the start and the length of the
/// (outermost) time range.
void readPeriod(Section & s, std::size_t octet, Product & product)
{
    product.statistic = statisticOf(s.u8(octet + 12));
    auto const begin = secondsOf(product.reference);
    auto const end = secondsOf(momentAt(s, octet));
    if (begin && end)
        product.end = *end - *begin;
    else if (auto const length =
                 secondsAfter(product.reference, s.s32(octet + 15), static_cast<int>(s.u8(octet + 14)));
             length && product.start)
        product.end = *product.start + *length;
}

} // namespace

std::string readIDS(Section section, Product & product)
{
    product.centre = static_cast<int>(section.u16(6));
    product.sub_centre = static_cast<int>(section.u16(8));
    product.table = static_cast<int>(section.u8(11));
    product.reference = momentAt(section, 13);
    return section.isShort() ? "identification section too short" : std::string();
}

std::string readPDS(Section section, Product & product)
{
    unsigned const number = section.u16(8);
    product.template_number = static_cast<int>(number);
    product.category = static_cast<int>(section.u8(10));
    product.number = static_cast<int>(section.u8(11));
    if (isSatellite(number)) {
        product.process = static_cast<int>(section.u8(13));
        product.start = product.end = 0;
        product.first = product.second = {};
        product.statistic = Statistic::NONE;
        return section.isShort() ? "product definition section too short" : std::string();
    }
    for (auto const & row : TEMPLATES) {
        if (row.number != number)
            continue;
        product.is_analysis = section.u8(12 + row.shift) == 0;
        product.process = static_cast<int>(section.u8(14 + row.shift));
        product.start = secondsAfter(product.reference, section.s32(19 + row.shift),
                                     static_cast<int>(section.u8(18 + row.shift)));
        product.end = product.start;
        product.first = product.second = {};
        if (hasSurfaces(number)) {
            product.first = surfaceAt(section, 23 + row.shift);
            product.second = surfaceAt(section, 29 + row.shift);
        }
        product.member = optionalOctet(section, row.member);
        product.derived = optionalOctet(section, row.derived);
        product.percentile = optionalOctet(section, row.percentile);
        product.probability = optionalOctet(section, row.probability);
        product.statistic = product.area_statistic = Statistic::NONE;
        if (row.area_statistic != 0)
            product.area_statistic = statisticOf(section.u8(row.area_statistic));
        if (row.period != 0)
            readPeriod(section, row.period, product);
        return section.isShort() ? "product definition section too short" : std::string();
    }
    return format("product template 4.%u", number);
}

} // namespace Yul::detail::grib
