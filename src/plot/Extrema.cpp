#include "plot/Extrema.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Yul::detail {
namespace {

/// What is known of one block of points.
struct Block
{
    float min = std::numeric_limits<float>::infinity();
    float max = -std::numeric_limits<float>::infinity();
    int min_column = 0;
    int min_row = 0;
    int max_column = 0;
    int max_row = 0;
    double sum = 0;
    int count = 0;

    void take(float value, int column, int row)
    {
        if (!std::isfinite(value) || isMissing(value))
            return;
        if (value < min) {
            min = value;
            min_column = column;
            min_row = row;
        }
        if (value > max) {
            max = value;
            max_column = column;
            max_row = row;
        }
        sum += static_cast<double>(value);
        ++count;
    }
};

class BlockGrid
{
public:
    BlockGrid(FieldView const & view, int block_size)
        : field(view), size(block_size), columns((field.end_column - field.first_column) / size + 1),
          rows((field.end_row - field.first_row) / size + 1)
    {
        blocks.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
        for (int row = field.first_row; row <= field.end_row; ++row) {
            float const * const values =
                field.values + static_cast<std::size_t>(row) * static_cast<std::size_t>(field.nx);
            for (int column = field.first_column; column <= field.end_column; ++column)
                at((column - field.first_column) / size, (row - field.first_row) / size)
                    .take(values[column], column, row);
        }
    }

    void collect(float prominence, std::vector<Extremum> & found)
    {
        for (int j = 0; j < rows; ++j)
            for (int i = 0; i < columns; ++i)
                collectBlock(i, j, prominence, found);
    }

private:
    [[nodiscard]] Block & at(int i, int j)
    {
        return blocks[static_cast<std::size_t>(j) * static_cast<std::size_t>(columns) +
                      static_cast<std::size_t>(i)];
    }

    void collectBlock(int i, int j, float prominence, std::vector<Extremum> & found)
    {
        Block const & own = at(i, j);
        if (own.count == 0)
            return;
        bool is_high = true;
        bool is_low = true;
        double sum = 0;
        int count = 0;
        for (int nj = std::max(j - 1, 0); nj <= std::min(j + 1, rows - 1); ++nj) {
            for (int ni = std::max(i - 1, 0); ni <= std::min(i + 1, columns - 1); ++ni) {
                Block const & other = at(ni, nj);
                bool const is_earlier = nj < j || (nj == j && ni < i); // of equals the first one counts
                is_high = is_high && (is_earlier ? other.max < own.max : other.max <= own.max);
                is_low = is_low && (is_earlier ? other.min > own.min : other.min >= own.min);
                sum += other.sum;
                count += other.count;
            }
        }
        auto const mean = static_cast<float>(sum / count);
        if (is_high && own.max - mean >= prominence && !isOnEdge(own.max_column, own.max_row))
            found.push_back({own.max_column, own.max_row, own.max, true, own.max - mean});
        if (is_low && mean - own.min >= prominence && !isOnEdge(own.min_column, own.min_row))
            found.push_back({own.min_column, own.min_row, own.min, false, mean - own.min});
    }

    [[nodiscard]] bool isOnEdge(int column, int row) const
    {
        return column == field.first_column || column == field.end_column || row == field.first_row ||
               row == field.end_row;
    }

    FieldView field;
    int size;
    int columns = 0;
    int rows = 0;
    std::vector<Block> blocks;
};

} // namespace

std::vector<Extremum> findExtrema(FieldView const & field, int reach, float prominence)
{
    std::vector<Extremum> found;
    if (field.end_column <= field.first_column || field.end_row <= field.first_row)
        return found;
    BlockGrid(field, std::max(reach, 1)).collect(prominence, found);
    std::stable_sort(found.begin(), found.end(),
                     [](Extremum const & a, Extremum const & b) { return a.prominence > b.prominence; });
    return found;
}

} // namespace Yul::detail
