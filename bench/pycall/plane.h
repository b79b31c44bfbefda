// The class behind all three modules: a small field of values.
#pragma once

#include <cstddef>
#include <vector>

class Plane
{
public:
    Plane(int columns, int rows)
        : nx(columns), ny(rows),
          values(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), 1.5F)
    {
    }

    [[nodiscard]] int getNx() const { return nx; }

    [[nodiscard]] float getValue(int i, int j) const
    {
        if (i < 0 || j < 0 || i >= nx || j >= ny)
            return -9999.0F;
        return values[static_cast<std::size_t>(j) * static_cast<std::size_t>(nx) +
                      static_cast<std::size_t>(i)];
    }

private:
    int nx;
    int ny;
    std::vector<float> values;
};
