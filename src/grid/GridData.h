// The storage of a grid's values.
#pragma once

#include <cstddef>
#include <memory>

namespace Yul::detail {

/// An array of floats that keeps its memory when it is sized again, because touching fresh memory costs more
/// than most of what is done with it. The memory is shared with those who hold `share()`: they keep it alive,
/// and see every change until the array takes other memory. Copies are deep.
class GridData
{
public:
    /// The most values that are given room, half of this machine's memory: memory that is promised but not
    /// there ends the process when it is written to.
    [[nodiscard]] static std::size_t most();

    GridData() = default;

    GridData(GridData const & other) { copy(other); }

    GridData(GridData && other) noexcept;
    GridData & operator=(GridData const & other);
    GridData & operator=(GridData && other) noexcept;
    ~GridData() = default;

    /// Makes room for `count` values, whose contents are undefined. Memory is taken anew only when there is
    /// too little, or when somebody else shares it and the count changes. False, and nothing changed, when
    /// there is not enough memory on this machine.
    [[nodiscard]] bool allocate(std::size_t count);
    /// A deep copy; false, and nothing changed, when there is not enough memory.
    bool copy(GridData const & other);

    /// Forgets the values and keeps the memory.
    void clear() noexcept { count = 0; }

    /// Gives the memory back.
    void release() noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return count; }

    [[nodiscard]] float * data() noexcept { return count > 0 ? memory.get() : nullptr; }

    [[nodiscard]] float const * data() const noexcept { return count > 0 ? memory.get() : nullptr; }

    [[nodiscard]] std::shared_ptr<float[]> share() const noexcept { return count > 0 ? memory : nullptr; }

private:
    std::shared_ptr<float[]> memory;
    std::size_t capacity = 0; // values that the memory holds
    std::size_t extent = 0;   // values asked for last, which is what the others share
    std::size_t count = 0;    // values that are there
};

} // namespace Yul::detail
