// The loops over the projection formulas. The build compiles this file with the optimiser's loop vectoriser on and
// with the two switches that let it drop the error state of the processor, which change no result. The loops are
// compiled once for every instruction set named here and the one that fits the processor is chosen at the start
// of the program; all give the same bits, because no multiplication and addition is contracted.
#include "geo/projection/Batch.h"

#include <utility>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define YUL_EVERY_PROCESSOR [[gnu::flatten, gnu::target_clones("avx512f", "avx2", "default")]]
#else
#define YUL_EVERY_PROCESSOR
#endif

namespace Yul::detail {

namespace {

/// Calls the loop with the alternative that the kernel holds. Not std::visit, which calls through a table and
/// would keep the formulas out of the loop.
template <std::size_t... I, class Loop>
inline void withAlternative(Kernel const & kernel, std::index_sequence<I...>, Loop const & loop) noexcept
{
    (void)((kernel.index() == I && (loop(*std::get_if<I>(&kernel)), true)) || ...);
}

template <class Get> inline void fill(Block & block, std::size_t count, Get const & get) noexcept
{
    for (std::size_t i = 0; i < count; ++i) {
        auto const [a, b] = get(i);
        block.a[i] = loaded(a);
        block.b[i] = loaded(b);
    }
}

template <class Put>
inline std::size_t drain(Block const & block, std::size_t count, Put const & put) noexcept
{
    std::size_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        Stored const p = stored(block.a[i], block.b[i]);
        put(i, p.a, p.b);
        number += p.is_set ? 1 : 0;
    }
    return number;
}

template <class Real> struct Pairs
{
    Real a, b;
};

using Alternatives = std::make_index_sequence<std::variant_size_v<Kernel>>;

} // namespace

YUL_EVERY_PROCESSOR void load(Block & block, EarthPoint const * points, std::size_t count) noexcept
{
    fill(block, count, [=](std::size_t i) { return Pairs<float>{points[i].lat, points[i].lon}; });
}

YUL_EVERY_PROCESSOR void load(Block & block, Point const * points, std::size_t count) noexcept
{
    fill(block, count, [=](std::size_t i) { return Pairs<float>{points[i].x, points[i].y}; });
}

YUL_EVERY_PROCESSOR void load(Block & block, GridPoint const * points, std::size_t count) noexcept
{
    fill(block, count, [=](std::size_t i) { return Pairs<float>{points[i].x, points[i].y}; });
}

YUL_EVERY_PROCESSOR void load(Block & block, float const * a, float const * b, std::size_t count) noexcept
{
    fill(block, count, [=](std::size_t i) { return Pairs<float>{a[i], b[i]}; });
}

YUL_EVERY_PROCESSOR void load(Block & block, double const * a, double const * b, std::size_t count) noexcept
{
    fill(block, count, [=](std::size_t i) { return Pairs<double>{a[i], b[i]}; });
}

YUL_EVERY_PROCESSOR std::size_t save(Block const & block, EarthPoint * points, std::size_t count) noexcept
{
    return drain(block, count, [=](std::size_t i, double lat, double lon) {
        points[i].lat = static_cast<float>(lat);
        points[i].lon = static_cast<float>(lon);
    });
}

YUL_EVERY_PROCESSOR std::size_t save(Block const & block, Point * points, std::size_t count) noexcept
{
    return drain(block, count, [=](std::size_t i, double x, double y) {
        points[i].x = static_cast<float>(x);
        points[i].y = static_cast<float>(y);
    });
}

YUL_EVERY_PROCESSOR std::size_t save(Block const & block, GridPoint * points, std::size_t count) noexcept
{
    return drain(block, count, [=](std::size_t i, double x, double y) {
        points[i].x = static_cast<float>(x);
        points[i].y = static_cast<float>(y);
    });
}

YUL_EVERY_PROCESSOR std::size_t save(Block const & block, float * a, float * b, std::size_t count) noexcept
{
    return drain(block, count, [=](std::size_t i, double x, double y) {
        a[i] = static_cast<float>(x);
        b[i] = static_cast<float>(y);
    });
}

YUL_EVERY_PROCESSOR std::size_t save(Block const & block, double * a, double * b, std::size_t count) noexcept
{
    return drain(block, count, [=](std::size_t i, double x, double y) {
        a[i] = x;
        b[i] = y;
    });
}

YUL_EVERY_PROCESSOR void project(Kernel const & kernel, Block & block) noexcept
{
    withAlternative(kernel, Alternatives{}, [&block](auto const & constants) {
        auto const k = constants; // a copy, so that writing the block cannot change it
        for (std::size_t i = 0; i < Block::SIZE; ++i) {
            Plane const p = project(k, block.a[i], block.b[i]);
            block.a[i] = p.x;
            block.b[i] = p.y;
        }
    });
}

YUL_EVERY_PROCESSOR void unproject(Kernel const & kernel, Block & block) noexcept
{
    withAlternative(kernel, Alternatives{}, [&block](auto const & constants) {
        auto const k = constants;
        for (std::size_t i = 0; i < Block::SIZE; ++i) {
            Position const p = unproject(k, block.a[i], block.b[i]);
            block.a[i] = p.lat;
            block.b[i] = p.lon;
        }
    });
}

YUL_EVERY_PROCESSOR void toGrid(GridFrame const & frame, Block & block) noexcept
{
    GridFrame const f = frame;
    for (std::size_t i = 0; i < Block::SIZE; ++i) {
        Plane const p = toGrid(f, block.a[i], block.b[i]);
        block.a[i] = p.x;
        block.b[i] = p.y;
    }
}

YUL_EVERY_PROCESSOR void fromGrid(GridFrame const & frame, Block & block) noexcept
{
    GridFrame const f = frame;
    for (std::size_t i = 0; i < Block::SIZE; ++i) {
        Plane const p = fromGrid(f, block.a[i], block.b[i]);
        block.a[i] = p.x;
        block.b[i] = p.y;
    }
}

} // namespace Yul::detail
