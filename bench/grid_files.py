#!/usr/bin/env python3
"""Grids of 1440 x 721 points beside NumPy and SciPy: binary files, and values at a million places.

Both sides work in turns, on files that are in memory already. Ours reads into a grid that is there, header included;
NumPy has the bare floats. Reading is measured in several processes, of which the one in the middle counts: where a
process happens to have its memory makes a fifth of the ratio. Writing is measured by the clock, since waiting for room
on the disk is no processor time, and in turns of several files: what one side leaves the disk to do would else be
waited for by the other.
"""

from functools import partial
from pathlib import Path
import subprocess
import sys
import tempfile
import time

import numpy as np

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.interleaved import medians, print_row  # noqa: E402
from Yul import Grid, GridYulFile  # noqa: E402

ROUNDS = 41
WRITES = 8  # in one turn
PROCESSES = 7
ROWS, COLUMNS = 721, 1440
PLACES = 1_000_000


def field():
    """A field with waves and some noise, in kelvin."""
    lat = np.linspace(90, -90, ROWS)[:, None]
    lon = np.linspace(0, 359.75, COLUMNS)
    noise = np.random.default_rng(7).normal(scale=0.02, size=(ROWS, COLUMNS))
    return (280 + 8 * np.sin(np.radians(3 * lon + lat)) + noise).astype('f4')


def row(job, ours, peer, peer_name, scale, unit, least, rounds=ROUNDS, clock=time.thread_time):
    """One row of the table, from two jobs that are timed in turns."""
    print_seconds(job, *medians(rounds, ours, peer, clock=clock), peer_name, scale, unit, least)


def print_seconds(job, mine, other, peer_name, scale, unit, least):
    """`scale` divides the seconds, or is divided by them for a rate."""
    shown = [scale / seconds if unit.endswith('/s') else seconds / scale for seconds in (mine, other)]
    print_row(job, f'{shown[0]:.3g} {unit}', f'{peer_name} {shown[1]:.3g} {unit}', other / mine, least)


def names_in(folder):
    return str(Path(folder) / 'grid'), str(Path(folder) / 'bare')


def time_reading(folder):
    """Seconds of both sides in this process."""
    name, bare = names_in(folder)
    grid, file = Grid(), GridYulFile()

    def read():
        assert file.read(name, 0, grid)

    def read_peer():
        loaded = np.fromfile(bare, 'f4')
        loaded.byteswap(inplace=True)
        return loaded

    read()
    values = field()
    assert np.array_equal(grid.values, values) and np.array_equal(read_peer().reshape(values.shape), values)
    return medians(ROUNDS, read, read_peer)


def read_elsewhere(folder):
    """The same of another process."""
    process = subprocess.run([sys.executable, __file__, 'read', folder], stdout=subprocess.PIPE, text=True, check=True)
    return [float(seconds) for seconds in process.stdout.split()]


def several(write):
    for _ in range(WRITES):
        write()


def files(values, folder):
    name, bare = names_in(folder)
    made = Grid.from_array(values, f'll:0:0,0,-180.125,{COLUMNS},{ROWS},0.25,0.25', date='00Z 14 NOV 2026', var='TMP')
    file = GridYulFile()

    def write():
        assert file.write(name, GridYulFile.BINARY, made) and file.close()

    def write_peer():
        values.byteswap().tofile(bare)

    write(), write_peer()
    gigabytes = values.nbytes / 1e9
    runs = sorted((read_elsewhere(folder) for _ in range(PROCESSES)), key=lambda seconds: seconds[1] / seconds[0])
    print_seconds('native grid, read', *runs[PROCESSES // 2], 'NumPy', gigabytes, 'GB/s', 1.7)
    row('native grid, write', partial(several, write), partial(several, write_peer), 'NumPy', gigabytes * WRITES, 'GB/s',
        1.7, 2 * ROUNDS // WRITES, time.perf_counter)


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
    if sys.argv[1:2] == ['read']:
        print(*time_reading(sys.argv[2]))
        return
    values = field()
    with tempfile.TemporaryDirectory() as folder:
        files(values, folder)
    places(values)


if __name__ == '__main__':
    sys.exit(main())
