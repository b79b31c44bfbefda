// The conversions between earth, plane and grid.
#include "geo/Domain.h"

#include <algorithm>
#include <cmath>

namespace Yul {

namespace {

using detail::Block;
using detail::Pair;

/// Names the two coordinates of every kind of position.
template <class P> auto & first(P & p)
{
    if constexpr (requires { p.lat; })
        return p.lat;
    else
        return p.x;
}

template <class P> auto & second(P & p)
{
    if constexpr (requires { p.lon; })
        return p.lon;
    else
        return p.y;
}

template <class P> Pair loaded(P const & point)
{
    return {detail::loaded(first(point)), detail::loaded(second(point))};
}

template <class P> int store(Pair const & pair, P & point)
{
    auto const [a, b, is_set] = detail::stored(pair.a, pair.b);
    first(point) = static_cast<float>(a);
    second(point) = static_cast<float>(b);
    return is_set ? 1 : 0;
}

/// Runs `count` pairs through blocks. `load` fills a block from an index on, `save` takes it out and returns how many
/// pairs have an image; so does the whole.
template <class Load, class Run, class Save>
std::size_t inBlocks(std::size_t count, Load const & load, Run const & run, Save const & save)
{
    Block block{};
    std::size_t stored = 0;
    for (std::size_t start = 0; start < count; start += Block::SIZE) {
        std::size_t const size = std::min(Block::SIZE, count - start);
        load(block, start, size);
        run(block);
        stored += save(block, start, size);
    }
    return stored;
}

} // namespace

detail::Kernel const & Domain::currentKernel() const
{
    detail::EarthFigure const now{earth_rad, earth_maj, earth_min};
    if (!(figure == now)) {
        kernel = detail::makeKernel(val, static_cast<double>(std_lat1), static_cast<double>(std_lat2),
                                    static_cast<double>(satelliteDistance(val)), now);
        figure = now;
    }
    return kernel;
}

Pair Domain::project(Pair earth) const
{
    auto const [x, y] =
        std::visit([=](auto const & k) { return detail::project(k, earth.a, earth.b); }, currentKernel());
    return {x, y};
}

Pair Domain::unproject(Pair plane) const
{
    auto const [lat, lon] =
        std::visit([=](auto const & k) { return detail::unproject(k, plane.a, plane.b); }, currentKernel());
    return {lat, lon};
}

Pair Domain::toGrid(Pair plane) const
{
    auto const [column, row] = detail::toGrid(frame, plane.a, plane.b);
    return {column, row};
}

Pair Domain::fromGrid(Pair grid) const
{
    auto const [x, y] = detail::fromGrid(frame, grid.a, grid.b);
    return {x, y};
}

void Domain::convert(Space from, Space to, Block & block) const
{
    if (from == Space::GRID)
        detail::fromGrid(frame, block);
    if (from == Space::EARTH)
        detail::project(currentKernel(), block);
    if (to == Space::EARTH)
        detail::unproject(currentKernel(), block);
    if (to == Space::GRID)
        detail::toGrid(frame, block);
}

template <class In, class Out> int Domain::convertList(Space from, Space to, In const & in, Out & out) const
{
    std::size_t const count = in.all().size();
    out.all().resize(count);
    std::size_t const stored = inBlocks(
        count,
        [&](Block & block, std::size_t start, std::size_t size) {
            detail::load(block, in.all().data() + start, size);
        },
        [&](Block & block) { convert(from, to, block); },
        [&](Block const & block, std::size_t start, std::size_t size) {
            return detail::save(block, out.all().data() + start, size);
        });
    return stored == count ? 1 : 0;
}

template <class Real, class Out>
std::size_t Domain::convertArrays(Space from,
                                  Space to,
                                  std::span<Real const> a,
                                  std::span<Real const> b,
                                  std::span<Out> out_a,
                                  std::span<Out> out_b) const
{
    return inBlocks(
        std::min({a.size(), b.size(), out_a.size(), out_b.size()}),
        [&](Block & block, std::size_t start, std::size_t size) {
            detail::load(block, a.data() + start, b.data() + start, size);
        },
        [&](Block & block) { convert(from, to, block); },
        [&](Block const & block, std::size_t start, std::size_t size) {
            return detail::save(block, out_a.data() + start, out_b.data() + start, size);
        });
}

int Domain::tran(EarthPoint const & earth, Point & point) const
{
    return store(project(loaded(earth)), point);
}

int Domain::tran(Point const & point, EarthPoint & earth) const
{
    return store(unproject(loaded(point)), earth);
}

int Domain::tran(GridPoint const & grid, Point & point) const
{
    return store(fromGrid(loaded(grid)), point);
}

int Domain::tran(Point const & point, GridPoint & grid) const
{
    return store(toGrid(loaded(point)), grid);
}

int Domain::tran(EarthPoint const & earth, GridPoint & grid) const
{
    return store(toGrid(project(loaded(earth))), grid);
}

int Domain::tran(GridPoint const & grid, EarthPoint & earth) const
{
    return store(unproject(fromGrid(loaded(grid))), earth);
}

bool Domain::isInGrid(int index) const noexcept
{
    return index >= 0 && val.nx > 0 && val.ny > 0 && index / val.nx < val.ny;
}

int Domain::tran(int index, GridPoint & grid) const
{
    if (!isInGrid(index)) {
        grid = GridPoint();
        return 0;
    }
    int const row = index / val.nx;
    return grid.set(static_cast<float>(index % val.nx), static_cast<float>(row));
}

int Domain::tran(int index, EarthPoint & earth) const
{
    GridPoint grid;
    tran(index, grid);
    return tran(grid, earth);
}

int Domain::tran(int index, Point & point) const
{
    GridPoint grid;
    tran(index, grid);
    return tran(grid, point);
}

int Domain::tran(EarthPoints const & earth, Points & points) const
{
    return convertList(Space::EARTH, Space::PLANE, earth, points);
}

int Domain::tran(EarthPoints const & earth, GridPoints & grid) const
{
    return convertList(Space::EARTH, Space::GRID, earth, grid);
}

int Domain::tran(Points const & points, EarthPoints & earth) const
{
    return convertList(Space::PLANE, Space::EARTH, points, earth);
}

int Domain::tran(Points const & points, GridPoints & grid) const
{
    return convertList(Space::PLANE, Space::GRID, points, grid);
}

int Domain::tran(GridPoints const & grid, EarthPoints & earth) const
{
    return convertList(Space::GRID, Space::EARTH, grid, earth);
}

int Domain::tran(GridPoints const & grid, Points & points) const
{
    return convertList(Space::GRID, Space::PLANE, grid, points);
}

std::size_t Domain::forward(std::span<float const> lat,
                            std::span<float const> lon,
                            std::span<float> x,
                            std::span<float> y) const
{
    return convertArrays(Space::EARTH, Space::PLANE, lat, lon, x, y);
}

std::size_t Domain::forward(std::span<double const> lat,
                            std::span<double const> lon,
                            std::span<double> x,
                            std::span<double> y) const
{
    return convertArrays(Space::EARTH, Space::PLANE, lat, lon, x, y);
}

std::size_t Domain::inverse(std::span<float const> x,
                            std::span<float const> y,
                            std::span<float> lat,
                            std::span<float> lon) const
{
    return convertArrays(Space::PLANE, Space::EARTH, x, y, lat, lon);
}

std::size_t Domain::inverse(std::span<double const> x,
                            std::span<double const> y,
                            std::span<double> lat,
                            std::span<double> lon) const
{
    return convertArrays(Space::PLANE, Space::EARTH, x, y, lat, lon);
}

std::size_t Domain::locate(std::span<double const> lat,
                           std::span<double const> lon,
                           std::span<float> column,
                           std::span<float> row) const
{
    return convertArrays(Space::EARTH, Space::GRID, lat, lon, column, row);
}

template <class Run> int Domain::calcGrid(std::span<float> a, std::span<float> b, Run const & run) const
{
    auto const columns = static_cast<std::size_t>(std::max(val.nx, 0));
    auto const rows = static_cast<std::size_t>(std::max(val.ny, 0));
    std::size_t const count = columns * rows;
    if (frame.dx == 0 || a.size() != count || b.size() != count)
        return 0;
    std::size_t column = 0;
    std::size_t row = 0;
    inBlocks(
        count,
        [&](Block & block, std::size_t, std::size_t size) {
            for (std::size_t i = 0; i < size; ++i) {
                block.a[i] = static_cast<double>(column);
                block.b[i] = static_cast<double>(row);
                row += ++column == columns ? 1 : 0;
                column = column == columns ? 0 : column;
            }
        },
        run,
        [&](Block const & block, std::size_t start, std::size_t size) {
            return detail::save(block, a.data() + start, b.data() + start, size);
        });
    return 1;
}

int Domain::calcEarth(std::span<float> lat, std::span<float> lon) const
{
    return calcGrid(lat, lon, [this](Block & block) { convert(Space::GRID, Space::EARTH, block); });
}

int Domain::calcPlane(Domain const & plane, std::span<float> x, std::span<float> y) const
{
    bool const is_same = compareProj(plane);
    return calcGrid(x, y, [&](Block & block) {
        convert(Space::GRID, is_same ? Space::PLANE : Space::EARTH, block);
        if (!is_same)
            plane.convert(Space::EARTH, Space::PLANE, block);
    });
}

} // namespace Yul
