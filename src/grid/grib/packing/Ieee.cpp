#include "grid/grib/packing/Ieee.h"

#include "core/Const.h"
#include "core/Format.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace Yul::detail::grib {
namespace {

constexpr int SINGLE = 1;
constexpr int DOUBLE = 2;

std::uint32_t toNative(std::uint32_t big) noexcept
{
    return std::endian::native == std::endian::little ? __builtin_bswap32(big) : big;
}

std::uint64_t toNative(std::uint64_t big) noexcept
{
    return std::endian::native == std::endian::little ? __builtin_bswap64(big) : big;
}

template <class Real, class Word> std::string unpackAs(Octets data, std::span<float> out)
{
    if (data.size() / sizeof(Word) < out.size())
        return format("%zu octets of data for %zu values", data.size(), out.size());
    for (std::size_t i = 0; i < out.size(); ++i) {
        Word word = 0;
        std::memcpy(&word, data.data() + i * sizeof word, sizeof word);
        auto const value = static_cast<float>(std::bit_cast<Real>(toNative(word)));
        out[i] = std::isnan(value) ? static_cast<float>(Const::MISS) : value;
    }
    return {};
}

} // namespace

std::string unpackIeee(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.precision == SINGLE)
        return unpackAs<float, std::uint32_t>(data, out);
    if (packing.precision == DOUBLE)
        return unpackAs<double, std::uint64_t>(data, out);
    return format("floating-point numbers of precision %d", packing.precision);
}

} // namespace Yul::detail::grib
