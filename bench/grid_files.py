#!/usr/bin/env python3
"""Grids of 1440 x 721 points beside NumPy and SciPy: binary files, and values at a million places.

Both sides work in turns, on files that are in memory already. Ours reads into a grid that is there, header included;
NumPy has the bare floats. A turn is several files, as a program has them that goes from file to file. Writing is measured
by the clock, since waiting for room on the disk is no processor time; what one side leaves the disk to do, the other would
wait for in shorter turns.
"""

from functools import partial
from pathlib import Path
import sys
import tempfile
import time

import numpy as np

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.interleaved import medians, print_row  # noqa: E402
from Yul import Grid, GridYulFile  # noqa: E402

ROUNDS = 41
FILES = 8  # in one turn
ROWS, COLUMNS = 721, 1440
PLACES = 1_000_000


def field():
    """A field with waves and some noise, in kelvin."""
    lat = np.linspace(90, -90, ROWS)[:, None]
    lon = np.linspace(0, 359.75, COLUMNS)
    noise = np.random.default_rng(7).normal(scale=0.02, size=(ROWS, COLUMNS))
    return (280 + 8 * np.sin(np.radians(3 * lon + lat)) + noise).astype('f4')


def row(job, ours, peer, peer_name, scale, unit, least, rounds=ROUNDS, clock=time.thread_time):
    """One row of the table. `scale` divides the seconds, or is divided by them for a rate."""
    mine, other = medians(rounds, ours, peer, clock=clock)
    shown = [scale / seconds if unit.endswith('/s') else seconds / scale for seconds in (mine, other)]
    print_row(job, f'{shown[0]:.3g} {unit}', f'{peer_name} {shown[1]:.3g} {unit}', other / mine, least)


def several(work):
    for _ in range(FILES):
        work()


def files(values, folder):
    name, bare = str(Path(folder) / 'grid'), str(Path(folder) / 'bare')
    made = Grid.from_array(values, f'll:0:0,0,-180.125,{COLUMNS},{ROWS},0.25,0.25', date='00Z 14 NOV 2026', var='TMP')
    grid, file = Grid(), GridYulFile()

    def write():
        assert file.write(name, GridYulFile.BINARY, made) and file.close()

    def write_peer():
        values.byteswap().tofile(bare)

    def read():
        assert file.read(name, 0, grid)

    def read_peer():
        loaded = np.fromfile(bare, 'f4')
        loaded.byteswap(inplace=True)
        return loaded

    write(), write_peer(), read()
    assert np.array_equal(grid.values, values) and np.array_equal(read_peer().reshape(values.shape), values)
    gigabytes = values.nbytes * FILES / 1e9
    rounds = 2 * ROUNDS // FILES
    row('native grid, read', partial(several, read), partial(several, read_peer), 'NumPy', gigabytes, 'GB/s', 1.7, rounds)
    row('native grid, write', partial(several, write), partial(several, write_peer), 'NumPy', gigabytes, 'GB/s', 1.7,
        rounds, time.perf_counter)


def places(values):
    try:
        from scipy.interpolate import RegularGridInterpolator
    except ImportError:
        print('# SciPy (python3-scipy) is not installed: no peer for values at places')
        return
    random = np.random.default_rng(3)
    lat, lon = random.uniform(-89, 89, PLACES), random.uniform(-179, 179, PLACES)
    grid = Grid.from_array(values, f'll:0:0,0,-0.125,{COLUMNS},{ROWS},0.25,0.25')
    lats, lons = 90 - 0.25 * np.arange(ROWS), -180 + 0.25 * np.arange(COLUMNS)
    peer = RegularGridInterpolator((lats[::-1], lons), values[::-1].astype('f8'))
    pairs = np.column_stack([lat, lon])
    difference = np.abs(grid.at(lat, lon) - peer(pairs)).max()
    assert difference < 0.01, difference
    row('values at 1e6 places', lambda: grid.at(lat, lon), lambda: peer(pairs), 'SciPy', PLACES / 1e9, 'ns', 5, 7)


def main():
    values = field()
    with tempfile.TemporaryDirectory() as folder:
        files(values, folder)
    places(values)


if __name__ == '__main__':
    sys.exit(main())
