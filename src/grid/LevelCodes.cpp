#include "grid/Level.h"
#include "grid/LevelTable.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Yul {
namespace {

using detail::isMissing;
using detail::LevelGrib1;

constexpr int GRIB_MISSING = 255;

float orMissing(std::optional<float> value)
{
    return value.value_or(static_cast<float>(Const::MISS));
}

// The library's own codes
// ------------------------------------------------------------------------------------------------------------

/// A type code is kind + DECIMAL x decimals, + LAYER for a layer, whose value code has its two values in halves.
constexpr int DECIMAL = 1000;
constexpr int LAYER = 10000;
constexpr int HALF = 65536;
constexpr int MAX_DECIMALS = 9;
constexpr double MAX_WHOLE = 2147483647.0;
constexpr double MAX_HALF = 32767.0;

/// A value in units of 10^-decimals, held to the range of its code.
double scaled(float value, int decimals, double limit)
{
    return std::clamp(std::round(static_cast<double>(value) * std::pow(10.0, decimals)), -limit, limit);
}

bool keeps(float value, int decimals, double limit)
{
    auto const code = scaled(value, decimals, limit);
    return static_cast<float>(code / std::pow(10.0, decimals)) == value;
}

bool fits(float value, int decimals, double limit)
{
    return std::abs(static_cast<double>(value)) * std::pow(10.0, decimals) <= limit;
}

struct Codes
{
    int type = Const::MISS;
    int value = Const::MISS;
};

Codes encode(Level const & level)
{
    if (!level.isSet())
        return {};
    if (isMissing(level.getValue()))
        return {level.getType(), Const::MISS};

    auto const first = level.getValue();
    auto const second = level.isLayer() ? level.getValue2() : 0.0F;
    auto const limit = level.isLayer() ? MAX_HALF : MAX_WHOLE;
    int decimals = 0;
    while (decimals < MAX_DECIMALS && !(keeps(first, decimals, limit) && keeps(second, decimals, limit)) &&
           fits(first, decimals + 1, limit) && fits(second, decimals + 1, limit))
        ++decimals;
    if (level.isLayer())
        return {level.getType() + DECIMAL * decimals + LAYER,
                static_cast<int>(scaled(first, decimals, limit)) * HALF +
                    static_cast<int>(scaled(second, decimals, limit))};
    auto const value = static_cast<int>(scaled(first, decimals, limit));
    if (isMissing(value)) // a value that looks like "no value" takes one decimal more
        return {level.getType() + DECIMAL * (decimals + 1), value * 10};
    return {level.getType() + DECIMAL * decimals, value};
}

// GRIB
// ------------------------------------------------------------------------------------------------------------

struct Octets
{
    int first = 0;
    int second = 0;
};

struct Values
{
    double first = Const::MISS;
    double second = Const::MISS;
};

Values decodeOctets(LevelGrib1 const & row, Octets octets)
{
    auto const word = octets.first * 256 + octets.second;
    switch (row.form) {
    case LevelGrib1::NO_VALUE:
        return {};
    case LevelGrib1::WORD:
        return {row.offset + row.factor * word};
    case LevelGrib1::SIGNED_WORD:
        return {row.offset + row.factor * ((word & 0x8000) != 0 ? -(word & 0x7FFF) : word)};
    case LevelGrib1::OCTETS:
        return {row.offset + row.factor * octets.first, row.offset + row.factor * octets.second};
    case LevelGrib1::MIXED:
        return {10.0 * octets.first, row.offset + row.factor * octets.second};
    }
    return {};
}

int nearest(double value, int limit)
{
    return static_cast<int>(std::clamp(std::round(value), 0.0, static_cast<double>(limit)));
}

Octets encodeOctets(LevelGrib1 const & row, Values const & values)
{
    auto const count = [&row](double value) { return (value - row.offset) / row.factor; };
    switch (row.form) {
    case LevelGrib1::NO_VALUE:
        return {};
    case LevelGrib1::WORD: {
        auto const word = nearest(count(values.first), 0xFFFF);
        return {word / 256, word % 256};
    }
    case LevelGrib1::SIGNED_WORD: {
        auto const word = nearest(std::abs(count(values.first)), 0x7FFF) | (values.first < 0 ? 0x8000 : 0);
        return {word / 256, word % 256};
    }
    case LevelGrib1::OCTETS:
        return {nearest(count(values.first), 255), nearest(count(values.second), 255)};
    case LevelGrib1::MIXED:
        return {nearest(values.first / 10, 255), nearest(count(values.second), 255)};
    }
    return {};
}

bool isLayerForm(LevelGrib1 const & row)
{
    return row.form == LevelGrib1::OCTETS || row.form == LevelGrib1::MIXED;
}

double siFactor(int kind)
{
    auto const * const row = detail::findLevelKind(kind);
    return row != nullptr ? row->si : 1.0;
}

/// NCEP's local code for the entire atmosphere is taken as WMO's.
int commonKind(int kind)
{
    constexpr int NCEP_ATMOS = 200;
    return kind == NCEP_ATMOS ? static_cast<int>(Level::ATMOS) : kind;
}

} // namespace

int Level::setGrib1(int table_3, int octet_11, int octet_12)
{
    auto const is_octet = [](int octet) { return octet >= 0 && octet <= 255; };
    auto const rows = detail::levelsGrib1();
    auto const row = std::ranges::find(rows, table_3, &LevelGrib1::type);
    if (row == rows.end() || !is_octet(octet_11) || !is_octet(octet_12))
        return 0;
    auto const values = decodeOctets(*row, {octet_11, octet_12});
    return set(row->code, orMissing(detail::levelValue(values.first)),
               orMissing(detail::levelValue(values.second)));
}

int Level::getGrib1(int & table_3, int & octet_11, int & octet_12) const
{
    LevelGrib1 const * best = nullptr;
    double best_error = INFINITY;
    Values const values{val, val2};
    for (auto const & row : detail::levelsGrib1()) {
        if (row.code != type || isLayerForm(row) != isLayer() ||
            (row.form == LevelGrib1::NO_VALUE) != isMissing(val))
            continue;
        auto const back = decodeOctets(row, encodeOctets(row, values));
        auto const error = std::abs(back.first - values.first) + std::abs(back.second - values.second);
        if (error < best_error * (1 - 1e-9)) {
            best = &row;
            best_error = error;
        }
    }
    if (best == nullptr)
        return 0;
    auto const octets = encodeOctets(*best, values);
    table_3 = best->type;
    octet_11 = octets.first;
    octet_12 = octets.second;
    return 1;
}

int Level::setGrib2(int first_kind, double first_value, int second_kind, double second_value)
{
    if (first_kind == GRIB_MISSING && second_kind == GRIB_MISSING)
        return init();
    if (first_kind == GRIB_MISSING)
        return setGrib2(second_kind, second_value, GRIB_MISSING, Const::MISS);
    if (first_kind == SFC && second_kind == TOA)
        return set(ATMOS);

    auto const convert = [](int kind, double value) {
        return orMissing(isMissing(value) ? std::nullopt : detail::levelValue(value / siFactor(kind)));
    };
    auto const first = convert(first_kind, first_value);
    auto const second =
        second_kind == first_kind ? convert(second_kind, second_value) : static_cast<float>(Const::MISS);
    return set(commonKind(first_kind), first, second);
}

int Level::getGrib2(int & first_kind, double & first_value, int & second_kind, double & second_value) const
{
    if (!isSet())
        return 0;
    auto const convert = [this](float value) {
        return isMissing(value) ? static_cast<double>(Const::MISS)
                                : static_cast<double>(value) * siFactor(type);
    };
    first_kind = type;
    first_value = convert(val);
    second_kind = isLayer() ? type : GRIB_MISSING;
    second_value = convert(val2);
    return 1;
}

int Level::getTypeCode() const
{
    return encode(*this).type;
}

int Level::getValueCode() const
{
    return encode(*this).value;
}

int Level::setCodes(int type_code, int value_code)
{
    if (isMissing(type_code))
        return init();
    auto const kind = type_code % DECIMAL;
    if (type_code < 0 || type_code >= 2 * LAYER || kind > detail::MAX_LEVEL_KIND)
        return 0;
    auto const unit = std::pow(10.0, type_code % LAYER / DECIMAL);
    if (type_code >= LAYER) {
        auto const second = value_code & 0xFFFF;
        auto const signed_second = second >= HALF / 2 ? second - HALF : second;
        auto const first = (static_cast<long>(value_code) - signed_second) / HALF;
        return set(kind, static_cast<float>(static_cast<double>(first) / unit),
                   static_cast<float>(signed_second / unit));
    }
    return isMissing(value_code) ? set(kind) : set(kind, static_cast<float>(value_code / unit));
}

} // namespace Yul
