#include "grid/GridData.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace Yul::detail {
namespace {

constexpr std::size_t LINE = 64;                         // octets of a cache line
constexpr std::size_t LARGE_PAGE = std::size_t{2} << 20; // octets
constexpr std::size_t MOST_PADDING = LARGE_PAGE / 8;     // octets that may lie unused in the last large page

constexpr std::size_t roundUp(std::size_t octets, std::size_t unit) noexcept
{
    return (octets + unit - 1) / unit * unit;
}

/// Memory that begins at a cache line. Much of it begins at a large page, and comes in such pages where the system has
/// them: fewer faults when it is touched first, and fewer look-ups of addresses ever after.
std::shared_ptr<float[]> takeMemory(std::size_t count)
{
    std::size_t octets = roundUp(count * sizeof(float), LINE);
    bool const is_large = octets + MOST_PADDING >= LARGE_PAGE;
    if (std::size_t const whole = roundUp(octets, LARGE_PAGE); whole - octets <= MOST_PADDING)
        octets = whole;
    void * memory = nullptr;
    if (posix_memalign(&memory, is_large ? LARGE_PAGE : LINE, octets) != 0)
        throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
    if (is_large)
        (void)madvise(memory, octets, MADV_HUGEPAGE); // a hint: without it the memory works as well
#endif
    return {static_cast<float *>(memory), std::free};
}

} // namespace

std::size_t GridData::most()
{
    static std::size_t const MOST = [] {
        auto const pages = sysconf(_SC_PHYS_PAGES);
        auto const octets = sysconf(_SC_PAGESIZE);
        return pages > 0 && octets > 0
                   ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(octets) / 2 / sizeof(float)
                   : static_cast<std::size_t>(-1);
    }();
    return MOST;
}

GridData::GridData(GridData && other) noexcept
    : memory(std::move(other.memory)), capacity(std::exchange(other.capacity, 0)),
      extent(std::exchange(other.extent, 0)), count(std::exchange(other.count, 0))
{
}

GridData & GridData::operator=(GridData const & other)
{
    if (this != &other)
        copy(other);
    return *this;
}

GridData & GridData::operator=(GridData && other) noexcept
{
    if (this != &other) {
        memory = std::move(other.memory);
        capacity = std::exchange(other.capacity, 0);
        extent = std::exchange(other.extent, 0);
        count = std::exchange(other.count, 0);
    }
    return *this;
}

bool GridData::allocate(std::size_t new_count)
{
    bool const is_shared = memory.use_count() > 1;
    if (new_count > capacity || (is_shared && new_count != extent)) {
        if (new_count > most())
            return false;
        try {
            memory = takeMemory(new_count);
        } catch (std::bad_alloc const &) {
            return false;
        }
        capacity = new_count;
    }
    extent = new_count;
    count = new_count;
    return true;
}

bool GridData::copy(GridData const & other)
{
    if (this == &other)
        return true;
    if (!allocate(other.count))
        return false;
    std::copy_n(other.memory.get(), other.count, memory.get());
    return true;
}

void GridData::release() noexcept
{
    *this = GridData();
}

} // namespace Yul::detail
