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

using Alternatives = std::make_index_sequence<std::variant_size_v<Kernel>>;

} // namespace

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
