#include "grid/grib/packing/Ccsds.h"

#include "core/Format.h"
#include "grid/grib/packing/Unpack.h"

#include <algorithm>
#include <array>
#include <bit>

namespace Yul::detail::grib {
namespace {

// Bits of the compression options.
constexpr unsigned SIGNED = 0x01;
constexpr unsigned PREPROCESSED = 0x08;
constexpr unsigned RESTRICTED = 0x10;
constexpr unsigned PADDED = 0x20;

constexpr std::size_t LONGEST_BLOCK = 256;
constexpr std::uint32_t REST_OF_SEGMENT = 5; // run of zero blocks that reaches to the end of the segment
constexpr std::uint32_t SEGMENT = 64;        // blocks
constexpr std::uint32_t LARGEST_PAIR_SUM = 12;

/// Bits from the most significant on; zeros behind the end.
class Bits
{
public:
    explicit Bits(Octets octets) : data(octets) {}

    [[nodiscard]] bool isOverrun() const noexcept { return at > 8 * std::uint64_t{data.size()}; }

    [[nodiscard]] std::uint32_t take(unsigned count) noexcept
    {
        if (count == 0)
            return 0;
        auto const number = static_cast<std::uint32_t>(window() >> (64 - count));
        at += count;
        return number;
    }

    /// Zeros before the next one; the one is passed.
    [[nodiscard]] std::uint32_t takeZeros() noexcept
    {
        std::uint64_t zeros = 0;
        while (!isOverrun()) {
            std::uint64_t const bits = window();
            unsigned const held = 64 - static_cast<unsigned>(at & 7);
            if (bits != 0) {
                auto const count = static_cast<unsigned>(std::countl_zero(bits));
                at += count + 1;
                return static_cast<std::uint32_t>(zeros + count);
            }
            at += held;
            zeros += held;
        }
        return 0;
    }

    void alignToOctet() noexcept { at = (at + 7) & ~std::uint64_t{7}; }

private:
    /// The next 57 bits at least, at the top.
    [[nodiscard]] std::uint64_t window() const noexcept
    {
        auto const first = static_cast<std::size_t>(at >> 3);
        std::uint64_t word = 0;
        if (first + sizeof word <= data.size())
            word = loadBigEndian64(data.data() + first);
        else
            for (std::size_t i = first; i < first + sizeof word; ++i)
                word = word << 8 | (i < data.size() ? data[i] : 0U);
        return word << (at & 7);
    }

    Octets data;
    std::uint64_t at = 0;
};

/// Blocks of samples, one after the other; a reference sample begins every interval of blocks.
class Blocks
{
public:
    Blocks(Octets data, Packing const & packing)
        : bits(data), width(packing.bits), interval(packing.reference_interval),
          is_preprocessed((packing.ccsds_flags & PREPROCESSED) != 0),
          is_padded((packing.ccsds_flags & PADDED) != 0),
          largest(static_cast<std::uint32_t>((std::uint64_t{1} << packing.bits) - 1))
    {
        bool const is_restricted = (packing.ccsds_flags & RESTRICTED) != 0 && width <= 4;
        id_bits = is_restricted ? (width <= 2 ? 1 : 2) : width <= 8 ? 3 : width <= 16 ? 4 : 5;
    }

    /// The next block; false when the stream is damaged.
    [[nodiscard]] bool next(std::span<std::uint32_t> block) noexcept
    {
        if (done == interval) {
            done = 0;
            if (is_padded)
                bits.alignToOctet();
        }
        bool const has_reference = is_preprocessed && done == 0;
        if (zero_blocks > 0) {
            std::fill(block.begin(), block.end(), 0);
            --zero_blocks;
        } else if (!decode(block, has_reference))
            return false;
        ++done;
        if (is_preprocessed)
            addUp(block, has_reference);
        return !bits.isOverrun();
    }

private:
    [[nodiscard]] bool decode(std::span<std::uint32_t> block, bool has_reference) noexcept
    {
        std::uint32_t const id = bits.take(id_bits);
        if (id == (std::uint32_t{1} << id_bits) - 1) {
            for (auto & sample : block)
                sample = bits.take(width);
            return true;
        }
        bool const is_pairs = id == 0 && bits.take(1) != 0;
        auto rest = block;
        if (has_reference) {
            block[0] = bits.take(width);
            rest = block.subspan(1);
        }
        if (is_pairs)
            return takePairs(block, has_reference);
        if (id == 0)
            return takeZeroBlocks(rest);
        for (auto & sample : rest)
            sample = bits.takeZeros();
        for (auto & sample : rest)
            sample = sample << (id - 1) | bits.take(id - 1);
        return true;
    }

    /// A run of blocks of zeros, of which this is the first.
    [[nodiscard]] bool takeZeroBlocks(std::span<std::uint32_t> block) noexcept
    {
        std::uint32_t run = bits.takeZeros() + 1;
        if (run == REST_OF_SEGMENT)
            run = std::min(interval - done, SEGMENT - done % SEGMENT);
        else if (run > REST_OF_SEGMENT)
            --run;
        std::fill(block.begin(), block.end(), 0);
        zero_blocks = run - 1;
        return run <= interval - done;
    }

    /// Two samples a code, whose number counts the pairs by growing sum. The reference sample takes the place of the first
    /// of its pair.
    [[nodiscard]] bool takePairs(std::span<std::uint32_t> block, bool has_reference) noexcept
    {
        for (std::size_t i = 0; i < block.size(); i += 2) {
            std::uint32_t const code = bits.takeZeros();
            std::uint32_t sum = 0;
            while (sum <= LARGEST_PAIR_SUM && (sum + 1) * (sum + 2) / 2 <= code)
                ++sum;
            if (sum > LARGEST_PAIR_SUM)
                return false;
            std::uint32_t const second = code - sum * (sum + 1) / 2;
            if (i > 0 || !has_reference)
                block[i] = sum - second;
            if (i + 1 < block.size())
                block[i + 1] = second;
        }
        return true;
    }

    /// Undoes the differences. They are folded so that small ones of either sign are small numbers, and run on to the far
    /// end of the range where only one sign is left.
    void addUp(std::span<std::uint32_t> block, bool has_reference) noexcept
    {
        std::size_t i = 0;
        if (has_reference)
            before = block[i++];
        for (; i < block.size(); ++i) {
            std::uint32_t const d = block[i];
            std::uint32_t const to_end = std::min(before, largest - before);
            std::uint32_t const half = (d >> 1) + (d & 1);
            if (half <= to_end)
                before += (d & 1) != 0 ? ~(d >> 1) : d >> 1;
            else
                before = before <= largest / 2 ? d : largest - d;
            before &= largest;
            block[i] = before;
        }
    }

    Bits bits;
    unsigned width;
    std::uint32_t interval;
    bool is_preprocessed;
    bool is_padded;
    std::uint32_t largest;
    unsigned id_bits = 0;
    std::uint32_t done = 0; // blocks of this interval
    std::uint32_t zero_blocks = 0;
    std::uint32_t before = 0;
};

} // namespace

std::string unpackCcsds(Octets data, Packing const & packing, std::span<float> out)
{
    if (packing.bits == 0 || out.empty()) {
        std::fill(out.begin(), out.end(), static_cast<float>(packing.scale(0)));
        return {};
    }
    std::size_t const length = packing.block_size;
    if (packing.bits > 31 || length == 0 || length > LONGEST_BLOCK || packing.reference_interval == 0 ||
        (packing.ccsds_flags & SIGNED) != 0)
        return format("CCSDS packing of %u bits, blocks of %zu, options %u", packing.bits, length,
                      packing.ccsds_flags);
    Blocks blocks(data, packing);
    std::array<std::uint32_t, LONGEST_BLOCK> samples;
    auto const block = std::span(samples).first(length);
    for (std::size_t first = 0; first < out.size(); first += length) {
        if (!blocks.next(block))
            return "damaged CCSDS stream";
        std::size_t const count = std::min(length, out.size() - first);
        scaleIntegers(block.first(count), packing.scale, out.data() + first);
    }
    return {};
}

} // namespace Yul::detail::grib
