#include "grid/Grid.h"

#include "core/Yul.h"
#include "grid/GridKernels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Yul {
namespace {

constexpr float MISSING = Const::MISS;

std::size_t countOf(int nx, int ny)
{
    return static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny);
}

bool isSize(int nx, int ny)
{
    return nx >= 1 && ny >= 1 && static_cast<long>(nx) * ny <= Grid::MAX_VALUES;
}

} // namespace

Grid::Grid(int nx_value, int ny_value)
{
    if (setSize(nx_value, ny_value) == 1 && allocData() == 0)
        setSize(Const::MISS, Const::MISS);
}

Grid::Grid(Grid const & grid)
{
    copy(grid);
}

Grid & Grid::operator=(Grid const & grid)
{
    copy(grid);
    return *this;
}

int Grid::init()
{
    *this = Grid();
    return 1;
}

int Grid::reset()
{
    auto kept = std::move(values);
    init();
    values = std::move(kept);
    values.clear();
    return 1;
}

int Grid::copy(Grid const & grid)
{
    if (this == &grid)
        return 1;
    copyInfo(grid);
    return copyData(grid);
}

int Grid::copyInfo(Grid const & grid)
{
    if (this == &grid)
        return 1;
    type = grid.type;
    source = grid.source;
    version = grid.version;
    model = grid.model;
    gen_name = grid.gen_name;
    datim = grid.datim;
    info = grid.info;
    date = grid.date;
    nz = grid.nz;
    setDomain(grid.domain);
    level = grid.level;
    fore = grid.fore;
    var = grid.var;
    return setSizeUnchecked(grid.nx, grid.ny);
}

int Grid::copyData(Grid const & grid)
{
    if (this == &grid)
        return 1;
    if (!values.copy(grid.values)) {
        Yul::outWarning("Grid::copyData: Not enough memory for %d x %d values\n", grid.nx, grid.ny);
        values.clear();
        return 0;
    }
    return setSizeUnchecked(grid.nx, grid.ny);
}

int Grid::setSizeUnchecked(int nx_value, int ny_value)
{
    bool const is_unset = detail::isMissing(nx_value) || detail::isMissing(ny_value);
    auto const count = is_unset ? 0 : countOf(nx_value, ny_value);
    if (values.size() != count)
        values.clear();
    if (nx != nx_value || ny != ny_value)
        forgetLocations();
    nx = nx_value;
    ny = ny_value;
    return 1;
}

int Grid::setSize(int nx_value, int ny_value)
{
    bool const is_unset = detail::isMissing(nx_value) && detail::isMissing(ny_value);
    if (is_unset || isSize(nx_value, ny_value))
        return setSizeUnchecked(nx_value, ny_value);
    Yul::outWarning("Grid::setSize: Invalid size: %d x %d\n", nx_value, ny_value);
    return 0;
}

int Grid::allocData()
{
    if (!isSize(nx, ny)) {
        Yul::outWarning("Grid::allocData: Size is not set\n");
        return 0;
    }
    if (!values.allocate(countOf(nx, ny))) {
        Yul::outWarning("Grid::allocData: Not enough memory for %d x %d values\n", nx, ny);
        return 0;
    }
    std::ranges::fill(getValues(), MISSING);
    return 1;
}

float * Grid::prepareData(int nx_value, int ny_value)
{
    if (!isSize(nx_value, ny_value)) {
        Yul::outWarning("Grid::prepareData: Invalid size: %d x %d\n", nx_value, ny_value);
        return nullptr;
    }
    if (!values.allocate(countOf(nx_value, ny_value))) {
        Yul::outWarning("Grid::prepareData: Not enough memory for %d x %d values\n", nx_value, ny_value);
        return nullptr;
    }
    setSizeUnchecked(nx_value, ny_value);
    return values.data();
}

int Grid::freeData()
{
    values.clear();
    return 1;
}

int Grid::getSize() const noexcept
{
    return isSize(nx, ny) ? nx * ny : Const::MISS;
}

int Grid::setNz(int value)
{
    nz = value;
    return 1;
}

int Grid::setValue(int column, int row, float value)
{
    if (!isInside(column, row))
        return 0;
    values.data()[indexOf(column, row)] = detail::orMiss(value);
    return 1;
}

int Grid::setValue(float value)
{
    if (!isData())
        return 0;
    std::ranges::fill(getValues(), detail::orMiss(value));
    return 1;
}

float Grid::getValue(int column, int row) const noexcept
{
    return isInside(column, row) ? detail::orMiss(values.data()[indexOf(column, row)]) : MISSING;
}

float Grid::getValue(GridPoint const & point) const noexcept
{
    return isData() ? detail::interpolate(values.data(), nx, ny, point.x, point.y) : MISSING;
}

float Grid::getValue(EarthPoint const & point) const
{
    GridPoint place;
    return domain.tran(point, place) == 1 ? getValue(place) : MISSING;
}

float Grid::getValue(Point const & point) const
{
    GridPoint place;
    return domain.tran(point, place) == 1 ? getValue(place) : MISSING;
}

int Grid::getValues(std::span<float const> x, std::span<float const> y, std::span<float> out) const noexcept
{
    if (x.size() != y.size() || x.size() != out.size())
        return 0;
    if (!isData()) {
        std::ranges::fill(out, MISSING);
        return 0;
    }
    detail::interpolateEach(values.data(), nx, ny, x, y, out);
    return 1;
}

int Grid::getValues(std::span<double const> lat, std::span<double const> lon, std::span<float> out) const
{
    if (lat.size() != lon.size() || lat.size() != out.size())
        return 0;
    if (!isData()) {
        std::ranges::fill(out, MISSING);
        return 0;
    }
    constexpr std::size_t BLOCK = 256;
    std::array<float, BLOCK> column;
    std::array<float, BLOCK> row;
    for (std::size_t at = 0; at < out.size(); at += BLOCK) {
        auto const size = std::min(BLOCK, out.size() - at);
        domain.locate(lat.subspan(at, size), lon.subspan(at, size), column, row);
        detail::interpolateEach(values.data(), nx, ny, std::span(column).first(size),
                                std::span(row).first(size), out.subspan(at, size));
    }
    return 1;
}

bool Grid::isValue(int column, int row) const noexcept
{
    return isInside(column, row) && detail::isValid(values.data()[indexOf(column, row)]);
}

int Grid::getValid() const noexcept
{
    return isData() ? static_cast<int>(detail::countValid(getValues())) : Const::MISS;
}

float Grid::getAverage() const noexcept
{
    auto const count = isData() ? detail::countValid(getValues()) : 0;
    if (count == 0)
        return MISSING;
    return detail::orMiss(static_cast<float>(detail::sumValid(getValues()) / static_cast<double>(count)));
}

int Grid::getRange(float & min, float & max) const noexcept
{
    auto const extremes = detail::findExtremes(getValues());
    min = extremes.min;
    max = extremes.max;
    return isData() ? 1 : 0;
}

int Grid::getRange(Range & range) const noexcept
{
    return getRange(range.min, range.max);
}

int Grid::scale(float factor) noexcept
{
    if (!isData() || !std::isfinite(factor))
        return 0;
    detail::scaleValid(getValues(), factor);
    return 1;
}

int Grid::offset(float amount) noexcept
{
    if (!isData() || !std::isfinite(amount))
        return 0;
    detail::offsetValid(getValues(), amount);
    return 1;
}

} // namespace Yul
