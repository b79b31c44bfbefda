#!/usr/bin/env python3
"""Reading GRIB beside ecCodes: one field of 1440 x 721 points by packing, and the headers of many messages.

Both sides read the file anew each time, in turns, and their values are compared first.
"""

from pathlib import Path
import statistics
import sys
import tempfile
import time

import numpy as np

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / 'tests' / 'python'))

from gribwriter import LatLon, grib1, grib2  # noqa: E402
from Yul import GribFile, Grid  # noqa: E402

try:
    import eccodes
except ImportError:
    print('# ecCodes (python3-eccodes) is not installed: no peer')
    sys.exit(0)

RUNS = 15
WORLD = LatLon(90, 0, -90, 359.75)
MISS = -9999.0


def temperature():
    """A field with a gradient, waves and some noise, in kelvin."""
    lat = np.linspace(90, -90, 721)[:, None]
    lon = np.linspace(0, 359.75, 1440)
    noise = np.random.default_rng(7).normal(scale=0.02, size=(721, 1440))
    waves = 8 * np.sin(np.radians(3 * lon + lat)) * np.cos(np.radians(lat)) + np.sin(np.radians(40 * lon + 7 * lat))
    return 250 + 45 * np.cos(np.radians(lat)) + waves + noise


def repacked(octets, packing):
    """The same field in another packing, by ecCodes."""
    message = eccodes.codes_new_from_message(octets)
    eccodes.codes_set(message, 'packingType', packing)
    result = eccodes.codes_get_message(message)
    eccodes.codes_release(message)
    return result


def read_ours(name, grid):
    file = GribFile(name)
    assert file.read(grid) == 1


def read_peer(name):
    with open(name, 'rb') as stream:
        message = eccodes.codes_grib_new_from_file(stream)
        eccodes.codes_set(message, 'missingValue', MISS)
        values = eccodes.codes_get_values(message)
        eccodes.codes_release(message)
    return values


def list_ours(name):
    file = GribFile(name)
    count = 0
    while file.next():
        file.getHeader().getForeTime()
        count += 1
    return count


def list_peer(name):
    count = 0
    with open(name, 'rb') as stream:
        while (message := eccodes.codes_grib_new_from_file(stream, headers_only=True)) is not None:
            eccodes.codes_get(message, 'shortName'), eccodes.codes_get(message, 'level'), eccodes.codes_get(message, 'step')
            eccodes.codes_release(message)
            count += 1
    return count


def timed(job):
    start = time.perf_counter()
    job()
    return time.perf_counter() - start


def row(job, ours, peer, items, unit, limit):
    ours(), peer()
    times = [(timed(ours), timed(peer)) for _ in range(RUNS)]
    mine, other = (statistics.median(column) / items for column in zip(*times))
    scale = {'ns/point': 1e9, 'us/message': 1e6}[unit]
    print(f'{job}\t{mine * scale:.3g} {unit}\tecCodes {other * scale:.3g} {unit}\t{other / mine:.3g}\t{limit}')


def main():
    field = temperature()
    holed = np.where(np.random.default_rng(8).random(field.shape) < 0.23, np.nan, field)
    simple = {bits: grib2(field, WORLD, bits=bits, decimal_scale=0) for bits in (8, 12, 16)}
    jobs = [(f'GRIB 2 simple, {bits} bits', octets, 6) for bits, octets in simple.items()]
    jobs.append(('GRIB 1, 12 bits and bitmap', grib1(holed, WORLD, bits=12, decimal_scale=0), 5))
    for text, packing, limit in (('complex', 'grid_complex', 4.5), ('JPEG 2000', 'grid_jpeg', 1), ('PNG', 'grid_png', 1)):
        try:
            jobs.append((f'GRIB 2 {text}', repacked(simple[16], packing), limit))
        except eccodes.CodesInternalError as error:
            print(f'# {text}: this ecCodes cannot write it ({error})')
    with tempfile.TemporaryDirectory() as folder:
        name = str(Path(folder) / 'field.grib')
        grid = Grid()
        for job, octets, limit in jobs:
            Path(name).write_bytes(octets)
            read_ours(name, grid)
            difference = np.abs(np.asarray(grid.values).ravel() - read_peer(name)).max()
            assert difference < 1e-3, (job, difference)
            row(job, lambda: read_ours(name, grid), lambda: read_peer(name), field.size, 'ns/point', limit)
        for text, octets, limit in (('1 degree', grib2(field[::4, ::4], WORLD, bits=16), 5),
                                    ('0.25 degree', simple[16], 50)):
            Path(name).write_bytes(octets * 100)
            assert list_ours(name) == list_peer(name) == 100
            row(f'headers of 100 messages, {text}', lambda: list_ours(name), lambda: list_peer(name), 100,
                'us/message', limit)


if __name__ == '__main__':
    main()
