#!/usr/bin/env python3
"""Decodes, analyses and draws many GRIB messages on several processors with Dask.

    dask_fields.py [--messages N] [--workers N] [--how serial|threads|processes|distributed] [--scheduler ADDRESS]
                   [--maps FOLDER]

A file of N messages is made from the shipped field. For each message: unpack it, take its mean over the box of western
Europe and the steepest slope of the field, and draw a map of it. --how tries one way alone; without it all are tried and
compared with one process. --scheduler takes the address of a running Dask cluster.
"""

from __future__ import annotations

import argparse
from collections.abc import Callable, Iterable
from itertools import repeat
import os
from pathlib import Path
import sys
import tempfile
import time
from typing import Any

import numpy as np

from Yul import Date, GribFile, Grid, Yul, contour_map, progress

FIELD = Path(__file__).resolve().parent / 'data' / 'height500.grib2'
WAYS = 'serial', 'threads', 'processes', 'distributed'


def make_file(name: str, count: int) -> None:
    """Messages of edition 1, a slightly other field every hour."""
    [grid] = GribFile(FIELD)
    values, date = grid.values.copy(), Date(grid.date)
    with GribFile() as output:
        output.open(name, 1)
        for i in range(count):
            date.addHours(1)
            grid.setDate(date)
            grid.values = values + 100 * np.sin(i / 50 + np.linspace(0, 6, values.shape[1]))
            output.write(grid)


def find_messages(name: str) -> list[int]:
    """The places of the messages, from their headers."""
    places, grid = [], Grid()
    with GribFile(name) as file:
        while file.peek(grid):
            places.append(file.getLoc())
            file.next()
    return places


def work(name: str, place: int, folder: str | None) -> tuple[str, float, float]:
    """What is done with one message: its valid time, the mean over a box, the steepest slope in gpm per 100 km."""
    Yul.setMessageLevel(Yul.NONE)  # nothing but errors
    grid = Grid()
    with GribFile(name) as file:
        if not (file.setLoc(place) and file.read(grid)):
            raise OSError(f'{name}: no message at {place}')
    values, lats, lons = grid.masked, grid.getDomain().lats, grid.getDomain().lons
    box = (lats >= 40) & (lats <= 60) & (lons >= -10) & (lons <= 20)
    north, east = np.gradient(values)
    slope = float(np.hypot(north, east / np.cos(np.radians(lats))).max()) / 1.11
    contour_map(grid, None if folder is None else os.path.join(folder, f'{grid.valid:%Y%m%d%H}.ps'), interval=60)
    return str(grid.valid), float(values[box].mean()), slope


def run(how: str, tasks: Iterable[tuple[str, int, str | None]], workers: int, address: str | None,
        total: int) -> list[tuple[str, float, float]]:
    if how == 'serial':
        return [work(*task) for task in progress(tasks, 'messages', total)]
    import dask
    import dask.bag
    bag: Any = dask.bag
    parts = bag.from_sequence(tasks, npartitions=8 * workers).starmap(work)
    if how != 'distributed':
        with dask.config.set(scheduler=how, num_workers=workers):
            return list(parts.compute())
    import dask.distributed
    make_client: Any = dask.distributed.Client
    options = {'address': address} if address else {'n_workers': workers, 'threads_per_worker': 1, 'dashboard_address': None}
    with make_client(**options) as client:
        return list(client.compute(parts).result())


def timed(call: Callable[[], list[tuple[str, float, float]]]) -> tuple[float, list[tuple[str, float, float]]]:
    start = time.perf_counter()
    result = call()
    return time.perf_counter() - start, result


def main() -> None:
    parser = argparse.ArgumentParser(description=(__doc__ or '').split('\n')[0])
    parser.add_argument('--messages', type=int, default=1000)
    parser.add_argument('--workers', type=int, default=os.cpu_count())
    parser.add_argument('--how', choices=WAYS)
    parser.add_argument('--scheduler', metavar='ADDRESS', help='of a running cluster that sees the same files')
    parser.add_argument('--maps', metavar='FOLDER', help='keep the maps there')
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(dir=arguments.maps) as folder:
        name = os.path.join(folder, 'fields.grib')
        make_file(name, arguments.messages)
        places = find_messages(name)
        tasks = list(zip(repeat(name), places, repeat(arguments.maps)))
        single, expected = 0.0, None
        for how in [arguments.how] if arguments.how else WAYS:
            seconds, result = timed(lambda: run(how, tasks, arguments.workers, arguments.scheduler, len(tasks)))
            if expected is not None and result != expected:
                sys.exit(f'{how}: other results')
            expected, single = result, single or seconds
            print(f'{how}: {len(result)} messages in {seconds:.2f} s, {len(result) / seconds:.0f} a second, '
                  f'{single / seconds:.2f} times the first')
        when, mean, slope = (expected or [('', 0.0, 0.0)])[0]
        print(f'{when}: {mean:.1f} gpm over western Europe, at most {slope:.1f} gpm in 100 km')


if __name__ == '__main__':
    main()
