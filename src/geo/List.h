// The growable list behind Points, EarthPoints, GridPoints and Grids.
#pragma once

#include <cstddef>
#include <vector>

namespace Yul::detail {

/// A list of items handed out by reference. A reference stays valid until the next `add` or `clear`. An index
/// outside the list yields a scratch item in its initial state, so that no caller can reach beyond the list.
template <class Item> class List
{
public:
    /// Appends a copy of the item; returns 1.
    int add(Item const & item)
    {
        items.push_back(item);
        return 1;
    }

    /// Empties the list. Returns 1.
    int clear()
    {
        items.clear();
        return 1;
    }

    /// Number of items.
    [[nodiscard]] int getNum() const noexcept { return static_cast<int>(items.size()); }

    /// Item i, 0 is the first.
    [[nodiscard]] Item & get(int i)
    {
        if (i >= 0 && static_cast<std::size_t>(i) < items.size())
            return items[static_cast<std::size_t>(i)];
        outside = Item{};
        return outside;
    }

    /// The items as a whole, for operations on lists.
    [[nodiscard]] std::vector<Item> & all() noexcept { return items; }

    /// The same to read only.
    [[nodiscard]] std::vector<Item> const & all() const noexcept { return items; }

private:
    std::vector<Item> items;
    Item outside{};
};

} // namespace Yul::detail
