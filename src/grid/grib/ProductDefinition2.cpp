// Sections 1 and 4 of edition 2.
#include "core/Format.h"
#include "grid/grib/Calendar.h"
#include "grid/grib/Centres.h"
#include "grid/grib/Edition2.h"

#include <utility>

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
    {0, 0, 0, 0, 0, 0, 0, 0},     {1, 0, 36, 0, 0, 0, 0, 0},    {2, 0, 0, 35, 0, 0, 0, 0},
    {3, 0, 0, 35, 0, 0, 0, 0},    {4, 0, 0, 35, 0, 0, 0, 0},    {5, 0, 0, 0, 0, 37, 0, 0},
    {6, 0, 0, 0, 35, 0, 0, 0},    {7, 0, 0, 0, 0, 0, 0, 0},     {8, 0, 0, 0, 0, 0, 35, 0},
    {9, 0, 0, 0, 0, 37, 48, 0},   {10, 0, 0, 0, 35, 0, 36, 0},  {11, 0, 36, 0, 0, 0, 38, 0},
    {12, 0, 0, 35, 0, 0, 37, 0},  {13, 0, 0, 35, 0, 0, 69, 0},  {14, 0, 0, 35, 0, 0, 65, 0},
    {15, 0, 0, 0, 0, 0, 0, 35},   {32, 0, 0, 0, 0, 0, 0, 0},    {40, 2, 0, 0, 0, 0, 0, 0},
    {41, 2, 38, 0, 0, 0, 0, 0},   {42, 2, 0, 0, 0, 0, 37, 0},   {43, 2, 38, 0, 0, 0, 40, 0},
    {45, 13, 49, 0, 0, 0, 0, 0},  {46, 13, 0, 0, 0, 0, 48, 0},  {47, 13, 49, 0, 0, 0, 51, 0},
    {48, 24, 0, 0, 0, 0, 0, 0},   {49, 24, 60, 0, 0, 0, 0, 0},  {51, 0, 0, 0, 0, 0, 0, 0},
    {55, 6, 0, 0, 0, 0, 0, 0},    {56, 6, 41, 0, 0, 0, 0, 0},   {59, 6, 42, 0, 0, 0, 0, 0},
    {60, 0, 36, 0, 0, 0, 0, 0},   {61, 0, 36, 0, 0, 0, 45, 0},  {62, 6, 0, 0, 0, 0, 41, 0},
    {63, 6, 42, 0, 0, 0, 44, 0},  {70, 5, 0, 0, 0, 0, 0, 0},    {71, 5, 41, 0, 0, 0, 0, 0},
    {72, 5, 0, 0, 0, 0, 40, 0},   {73, 5, 41, 0, 0, 0, 43, 0},  {76, 3, 0, 0, 0, 0, 0, 0},
    {77, 3, 39, 0, 0, 0, 0, 0},   {78, 3, 0, 0, 0, 0, 38, 0},   {79, 3, 39, 0, 0, 0, 41, 0},
    {80, 25, 0, 0, 0, 0, 0, 0},   {81, 25, 61, 0, 0, 0, 0, 0},  {82, 14, 0, 0, 0, 0, 49, 0},
    {83, 14, 50, 0, 0, 0, 52, 0}, {84, 14, 50, 0, 0, 0, 52, 0}, {85, 13, 49, 0, 0, 0, 51, 0},
    {86, 0, 0, 0, 0, 0, 0, 0},    {87, 0, 0, 0, 0, 0, 39, 0},   {103, 11, 0, 0, 0, 0, 0, 0},
    {104, 11, 47, 0, 0, 0, 0, 0}, {105, 0, 0, 0, 0, 0, 35, 0},  {107, 0, 0, 0, 0, 0, 35, 0},
};

/// Templates of the Japan Meteorological Agency's own for precipitation from radar, and those of the manual that they begin
/// like; behind these they say which radars took part.
constexpr std::pair<unsigned, unsigned> JMA_TEMPLATES[] = {{50000, 0}, {50008, 8}, {50009, 8},
                                                           {50010, 8}, {50011, 8}, {50012, 8}};

unsigned knownTemplate(unsigned number, int centre) noexcept
{
    for (auto const & [local, known] : JMA_TEMPLATES)
        if ((centre == JMA || centre == JMA_OTHER) && number == local)
            return known;
    return number;
}

/// Simulated pictures of satellites have spectral bands in place of the surfaces.
constexpr bool hasSurfaces(unsigned number) noexcept
{
    return number != 32;
}

/// Products of satellites have neither forecast time nor level.
constexpr bool isSatellite(unsigned number) noexcept
{
    return number == 30 || number == 31 || number == 35;
}

constexpr unsigned MISSING_OCTET = 255;

/// A scale factor and a scaled value of four octets.
std::optional<double> scaledAt(Section & s, std::size_t octet) noexcept
{
    bool const has_value = s.u8(octet) != MISSING_OCTET && s.u32(octet + 1) != 0xffffffffU;
    return has_value ? std::optional(s.s32(octet + 1) * decimalScale(s.s8(octet))) : std::nullopt;
}

Surface surfaceAt(Section & s, std::size_t octet) noexcept
{
    return {static_cast<int>(s.u8(octet)), scaledAt(s, octet + 1)};
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

/// Takes back what the definition before it in the message may have said and this one need not say.
void forget(Product & product) noexcept
{
    product.first = product.second = {};
    product.statistic = product.area_statistic = Statistic::NONE;
    product.member = product.derived = product.percentile = product.probability = -1;
    product.lower_limit = product.upper_limit = std::nullopt;
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
    forget(product);
    if (isSatellite(number)) {
        product.process = static_cast<int>(section.u8(13));
        product.start = product.end = 0;
        return section.isShort() ? "product definition section too short" : std::string();
    }
    for (auto const & row : TEMPLATES) {
        if (row.number != knownTemplate(number, product.centre))
            continue;
        product.is_analysis = section.u8(12 + row.shift) == 0;
        product.process = static_cast<int>(section.u8(14 + row.shift));
        product.start = secondsAfter(product.reference, section.s32(19 + row.shift),
                                     static_cast<int>(section.u8(18 + row.shift)));
        product.end = product.start;
        if (hasSurfaces(number)) {
            product.first = surfaceAt(section, 23 + row.shift);
            product.second = surfaceAt(section, 29 + row.shift);
        }
        product.member = optionalOctet(section, row.member);
        product.derived = optionalOctet(section, row.derived);
        product.percentile = optionalOctet(section, row.percentile);
        product.probability = optionalOctet(section, row.probability);
        if (row.probability != 0) {
            product.lower_limit = scaledAt(section, row.probability + 1);
            product.upper_limit = scaledAt(section, row.probability + 6);
        }
        if (row.area_statistic != 0)
            product.area_statistic = statisticOf(section.u8(row.area_statistic));
        if (row.period != 0)
            readPeriod(section, row.period, product);
        return section.isShort() ? "product definition section too short" : std::string();
    }
    return format("product template 4.%u", number);
}

} // namespace Yul::detail::grib
