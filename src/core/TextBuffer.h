// Text that is put together piece by piece, without the heap while it is short.
#pragma once

#include "core/Digits.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace Yul::detail {

/// A growing text whose first 128 characters lie in the object itself.
class TextBuffer
{
public:
    TextBuffer() = default;
    TextBuffer(TextBuffer const &) = delete;
    TextBuffer & operator=(TextBuffer const &) = delete;

    void add(char c)
    {
        makeRoom(1);
        data[size++] = c;
    }

    void add(std::string_view text)
    {
        makeRoom(text.size());
        std::copy(text.begin(), text.end(), data + size);
        size += text.size();
    }

    void add(std::size_t count, char c)
    {
        makeRoom(count);
        std::memset(data + size, c, count);
        size += count;
    }

    /// "%<width>.<digits>d", see Decimal.
    void addDecimal(long value, int digits = 1, int width = 0)
    {
        if (digits == 2 && width <= 2 && value >= 0 && value < 100) {
            makeRoom(2);
            data[size++] = static_cast<char>('0' + value / 10);
            data[size++] = static_cast<char>('0' + value % 10);
        } else {
            add(Decimal(value, digits, width).view());
        }
    }

    [[nodiscard]] bool empty() const noexcept { return size == 0; }

    /// Valid until more is added.
    [[nodiscard]] std::string_view view() const noexcept { return {data, size}; }

private:
    void makeRoom(std::size_t more)
    {
        if (more > capacity - size)
            grow(more);
    }

    void grow(std::size_t more)
    {
        capacity = std::max(capacity * 2, size + more);
        auto larger = std::make_unique<char[]>(capacity);
        std::memcpy(larger.get(), data, size);
        heap = std::move(larger);
        data = heap.get();
    }

    char local[128];
    char * data = local;
    std::size_t size = 0;
    std::size_t capacity = sizeof local;
    std::unique_ptr<char[]> heap;
};

} // namespace Yul::detail
