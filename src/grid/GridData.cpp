#include "grid/GridData.h"

#include <algorithm>
#include <new>
#include <utility>

#include <unistd.h>

namespace Yul::detail {

std::size_t GridData::most()
{
    static std::size_t const most = [] {
        auto const pages = sysconf(_SC_PHYS_PAGES);
        auto const octets = sysconf(_SC_PAGESIZE);
        return pages > 0 && octets > 0
                   ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(octets) / 2 / sizeof(float)
                   : static_cast<std::size_t>(-1);
    }();
    return most;
}

GridData::GridData(GridData && other) noexcept
    : memory(std::move(other.memory)), capacity(std::exchange(other.capacity, 0)),
      extent(std::exchange(other.extent, 0)), count(std::exchange(other.count, 0))
{
}

GridData & GridData::operator=(GridData const & other)
{
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
            memory = std::make_shared_for_overwrite<float[]>(new_count);
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
