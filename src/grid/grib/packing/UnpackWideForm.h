// The forms of unpacking for wide registers, over what a kind of register can do. For the sources that define YUL_TARGET, the
// attribute that lets a function use those registers.
#pragma once

#include "grid/grib/packing/Unpack.h"
#include "grid/grib/packing/UnpackPattern.h"

#include <algorithm>

namespace Yul::detail::grib {

/// Registers of R::LANES numbers, whose R::Step is a pattern ready to `take` as many numbers from octets.
template <class R> struct WideForm
{
    static constexpr std::size_t LANES = R::LANES;

    /// Octets that so many numbers move on by.
    static constexpr std::size_t stride(unsigned width) noexcept { return LANES / 8 * width; }

    /// Steps whose loads stay within the octets.
    static std::size_t
    safeSteps(Octets packed, std::uint64_t bit, unsigned width, std::size_t count, std::size_t upper) noexcept
    {
        std::uint64_t const loaded = (bit >> 3) + upper + R::LOAD;
        if (loaded > packed.size())
            return 0;
        auto const fitting = static_cast<std::size_t>((packed.size() - loaded) / stride(width) + 1);
        return std::min(fitting, count / LANES);
    }

    YUL_TARGET static void integers(Octets packed,
                                    std::uint64_t bit,
                                    unsigned width,
                                    std::uint32_t base,
                                    std::span<std::uint32_t> out) noexcept
    {
        std::size_t done = 0;
        if (width > 0 && width <= WIDEST_PATTERN && out.size() >= LANES) {
            typename R::Step const step(bit, width);
            std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
            auto const bases = R::all(base);
            Octet const * p = packed.data() + (bit >> 3);
            for (std::size_t i = 0; i < steps; ++i, p += stride(width))
                R::store(out.data() + LANES * i, R::sum(step.take(p), bases));
            done = LANES * steps;
        }
        plainForm().integers(packed, bit + done * width, width, base, out.subspan(done));
    }

    template <Arithmetic KIND>
    YUL_TARGET static void scaleSteps(Octet const * p,
                                      typename R::Step step,
                                      unsigned width,
                                      std::size_t steps,
                                      Scale const & scale,
                                      float * out) noexcept
    {
        typename R::template Scaler<KIND> const scaler(scale);
        for (std::size_t i = 0; i < steps; ++i, p += stride(width))
            scaler(step.take(p), out + LANES * i);
    }

    YUL_TARGET static void scaled(
        Octets packed, std::uint64_t bit, unsigned width, Scale const & scale, std::span<float> out) noexcept
    {
        constexpr decltype(&scaleSteps<Arithmetic::FLOAT>) BY_ARITHMETIC[] = {
            scaleSteps<Arithmetic::FLOAT>, scaleSteps<Arithmetic::DOUBLE>, scaleSteps<Arithmetic::DECIMAL>};
        std::size_t done = 0;
        if (width > 0 && width <= WIDEST_PATTERN) {
            typename R::Step const step(bit, width);
            std::size_t const steps = safeSteps(packed, bit, width, out.size(), step.upper);
            auto const run = BY_ARITHMETIC[static_cast<int>(arithmeticFor(scale, width))];
            run(packed.data() + (bit >> 3), step, width, steps, scale, out.data());
            done = LANES * steps;
        }
        plainForm().scaled(packed, bit + done * width, width, scale, out.subspan(done));
    }

    YUL_TARGET static void
    scale(std::span<std::uint32_t const> values, Scale const & scale, float * out) noexcept
    {
        typename R::template Scaler<Arithmetic::DECIMAL> const scaler(scale);
        std::size_t const whole = values.size() / LANES * LANES;
        for (std::size_t i = 0; i < whole; i += LANES)
            scaler(R::load(values.data() + i), out + i);
        plainForm().scale(values.subspan(whole), scale, out + whole);
    }

    /// Sums within a register by doubling strides; the sum so far joins at the end, so that it waits for one addition a step.
    YUL_TARGET static void
    accumulate(std::span<std::uint32_t> values, std::uint32_t step, std::uint32_t & sum) noexcept
    {
        auto const steps = R::all(step);
        auto before = R::all(sum);
        std::size_t const whole = values.size() / LANES * LANES;
        for (std::size_t i = 0; i < whole; i += LANES) {
            auto const sums = R::runningSums(R::sum(R::load(values.data() + i), steps));
            R::store(values.data() + i, R::sum(sums, before));
            before = R::sum(before, R::allLast(sums));
        }
        sum = R::first(before);
        plainForm().accumulate(values.subspan(whole), step, sum);
    }

    /// The last step of a group runs on into the next one, which is written afterwards.
    YUL_TARGET static void
    groups(Octets packed, std::uint64_t bit, GroupRows const & groups, std::uint32_t * out) noexcept
    {
        for (std::size_t g = 0; g < groups.count; ++g) {
            unsigned const width = groups.width[g];
            std::size_t const length = groups.length[g];
            std::size_t const loaded =
                static_cast<std::size_t>(bit >> 3) + (length / LANES + 1) * stride(width) + R::LOAD;
            if (width > WIDEST_PATTERN || loaded > packed.size())
                plainForm().integers(packed, bit, width, groups.base[g], {out, length});
            else {
                typename R::Step const step(bit, width);
                auto const bases = R::all(groups.base[g]);
                Octet const * p = packed.data() + (bit >> 3);
                for (std::size_t i = 0; i < length; i += LANES, p += stride(width))
                    R::store(out + i, R::sum(step.take(p), bases));
            }
            bit += std::uint64_t{length} * width;
            out += length;
        }
    }

    static constexpr UnpackForm FORM{R::NAME, integers, scaled, scale, accumulate, groups};
};

} // namespace Yul::detail::grib
