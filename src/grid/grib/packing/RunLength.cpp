#include "grid/grib/packing/RunLength.h"

#include "core/Const.h"
#include "core/Format.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>

namespace Yul::detail::grib {
namespace {

constexpr std::size_t BLOCK = 1024;

/// Puts runs behind each other; false when they do not fit.
class Runs
{
public:
    Runs(Packing const & packing_values, std::span<float> values)
        : packing(packing_values), base((std::uint64_t{1} << packing.bits) - 1 - packing.max_level),
          out(values)
    {
    }

    [[nodiscard]] bool take(std::uint32_t number)
    {
        if (number <= packing.max_level) {
            bool const fits = finish();
            level = number;
            has_level = true;
            length = 1;
            weight = 1;
            return fits && level <= packing.levels.size();
        }
        length += (number - packing.max_level - 1) * weight;
        weight *= base;
        return has_level && length <= out.size() && weight <= std::uint64_t{1} << 48;
    }

    /// Writes the run that is pending.
    [[nodiscard]] bool finish()
    {
        if (!has_level)
            return true;
        if (length > out.size() - done)
            return false;
        float const value = level > 0 ? packing.levels[level - 1] : static_cast<float>(Const::MISS);
        std::fill_n(out.begin() + static_cast<std::ptrdiff_t>(done), length, value);
        done += static_cast<std::size_t>(length);
        has_level = false;
        return true;
    }

    /// Whether the grid is full with the run that is pending.
    [[nodiscard]] bool wouldFill() const noexcept { return has_level && done + length == out.size(); }

    [[nodiscard]] bool isFull() const noexcept { return done == out.size(); }

private:
    Packing const & packing;
    std::uint64_t base;
    std::span<float> out;
    std::size_t done = 0;
    bool has_level = false;
    std::uint32_t level = 0;
    std::uint64_t length = 0;
    std::uint64_t weight = 1;
};

} // namespace

std::string unpackRunLength(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.bits == 0 || packing.bits > 16 || packing.max_level >= 1U << packing.bits)
        return format("run lengths of %u bits with levels up to %u", packing.bits, packing.max_level);
    if (packing.max_level == 0) { // no level occurs
        std::fill(out.begin(), out.end(), static_cast<float>(Const::MISS));
        return {};
    }
    Runs runs(packing, out);
    std::array<std::uint32_t, BLOCK> numbers;
    std::uint64_t const count = 8 * std::uint64_t{data.size()} / packing.bits;
    for (std::uint64_t first = 0; first < count; first += BLOCK) {
        std::size_t const block = static_cast<std::size_t>(std::min<std::uint64_t>(BLOCK, count - first));
        auto const taken = std::span(numbers).first(block);
        unpackIntegers(data, first * packing.bits, packing.bits, 0, taken);
        for (std::size_t i = 0; i < block; ++i) {
            bool const is_filler = (count - first - i) * packing.bits < 8 && runs.wouldFill();
            if (is_filler && taken[i] <= packing.max_level) // fills the last octet
                return runs.finish() ? std::string() : "runs do not fit the grid";
            if (!runs.take(taken[i]))
                return "runs do not fit the grid";
        }
    }
    return runs.finish() && runs.isFull() ? std::string() : "runs do not fill the grid";
}

} // namespace Yul::detail::grib
