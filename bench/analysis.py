#!/usr/bin/env python3
"""Objective analysis beside the same scheme in NumPy with SciPy's k-d tree: three passes, filter 1, radius 3 grid
lengths, convergence 0.2, residuals by bilinear interpolation.

The peer finds the pairs of stations and grid points once, with the tree, and forms the sums of a pass over all pairs
with bincount. Both sides have their data in memory and run in turns; the fields are compared first.
"""

from pathlib import Path
import importlib.util
import sys

import numpy as np

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.interleaved import medians, print_row  # noqa: E402
from Yul import Domain, Grids, ObjectAnal, StationData, analyse  # noqa: E402

FILTER, RADIUS, CONVERGENCE = 1.0, 3.0, 0.2
MISS = -9999.0


class Job:
    """Stations on a square grid; `crowd` is the part of the grid's width and height that they keep to."""

    def __init__(self, stations, size, passes=3, crowd=1.0):
        random = np.random.default_rng(stations)
        x, y = random.uniform(0, crowd * (size - 1), (2, stations))
        middle = (size - 1) / 2
        self.size, self.passes = size, passes
        self.lats, self.lons = (middle - y).astype('f4'), (x - middle).astype('f4')
        self.x, self.y = ((place + middle).astype('f4').astype(float)  # as a GridPoint holds them
                          for place in (self.lons.astype(float), -self.lats.astype(float)))
        self.values = (15 + 10 * np.sin(x / 25) * np.cos(y / 32) + random.normal(0, 0.5, stations)).astype('f4')
        self.domain = Domain()
        self.domain.set(size, size)
        self.data, self.grids, self.analysis = StationData(1), Grids(), ObjectAnal()
        self.data.add(self.lats, self.lons)
        self.data.setValues(0, self.values)
        self.analysis.setDomain(self.domain)
        self.analysis.set(FILTER, RADIUS, passes, CONVERGENCE)

    def ours(self):
        self.analysis.compute(self.data, self.grids)
        return self.grids[0].values

    def ours_from_arrays(self):
        return analyse(self.lats, self.lons, self.values, self.domain, filter=FILTER, radius=RADIUS,
                       passes=self.passes, convergence=CONVERGENCE).values

    def peer(self):
        from scipy.spatial import cKDTree
        size, points = self.size, self.size ** 2
        rows, columns = np.divmod(np.arange(points), size)
        tree = cKDTree(np.column_stack([columns, rows]))
        around = tree.query_ball_point(np.column_stack([self.x, self.y]), RADIUS)
        station = np.repeat(np.arange(len(self.x)), [len(near) for near in around])
        point = np.concatenate(around).astype(np.intp)
        distance = (columns[point] - self.x[station]) ** 2 + (rows[point] - self.y[station]) ** 2
        field, width = np.zeros(points), FILTER
        residual = self.values.astype(float)
        for _ in range(self.passes):
            present = ~np.isnan(residual[station])
            weight = np.exp(-distance[present] / width)
            weights = np.bincount(point[present], weight, points)
            sums = np.bincount(point[present], weight * residual[station[present]], points)
            with np.errstate(invalid='ignore'):
                field += sums / weights  # not a number where nothing is near
            residual = self.values - self.interpolate(field.reshape(size, size))
            width *= CONVERGENCE
        return np.nan_to_num(field.reshape(size, size), nan=MISS)

    def interpolate(self, field):
        column = np.minimum(self.x.astype(int), self.size - 2)
        row = np.minimum(self.y.astype(int), self.size - 2)
        right, down = self.x - column, self.y - row
        top = field[row, column] * (1 - right) + field[row, column + 1] * right
        bottom = field[row + 1, column] * (1 - right) + field[row + 1, column + 1] * right
        return top * (1 - down) + bottom * down


def row(name, job, ours, rounds, least=None):
    mine, other = ours(), job.peer()
    assert ((mine == MISS) == (other == MISS)).all(), name
    assert np.abs(mine - other).max() < 1e-3, name
    mine, other = medians(rounds, ours, job.peer)
    print_row(name, f'{mine * 1e3:.3g} ms', f'SciPy {other * 1e3:.4g} ms', other / mine, least)


def main():
    if importlib.util.find_spec('scipy') is None:
        print('# SciPy (python3-scipy) is not installed: no peer for analysis')
        return
    small = Job(2000, 200)
    row('analysis of 2,000 stations, 200 x 200', small, small.ours, 21, 15)
    row('analysis of 2,000 stations, 200 x 200, from arrays', small, small.ours_from_arrays, 21)
    for stations, size, rounds in ((10_000, 500, 7), (50_000, 1000, 3)):
        job = Job(stations, size)
        row(f'analysis of {stations:,} stations, {size} x {size}', job, job.ours, rounds, 15)
    few, many = Job(2000, 1000), Job(2000, 1000, crowd=0.04)
    row('analysis of 2,000 stations over 1000 x 1000', few, few.ours, 3)
    row('analysis of 2,000 stations in 40 x 40 of 1000 x 1000', many, many.ours, 3)


if __name__ == '__main__':
    main()
