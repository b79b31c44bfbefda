#!/usr/bin/env python3
"""Decodes, analyses and draws many GRIB messages on several processors with Dask.

    dask_fields.py [--messages N] [--workers N] [--slice N] [--how serial|threads|processes|distributed] [--file NAME]
                   [--scheduler ADDRESS] [--maps FOLDER] [--every N]

A file of N messages of half a degree over the world is made, or taken by --file. For each message: unpack it, take its values
at 400 places of Europe as if they were reports, analyse these onto a grid of 25 km and see how far that is from the field
itself; and draw a map of it (of every Nth with --every). A worker gets a slice of some dozens of messages that follow each
other. --how tries one way alone; without it all are tried and compared with one process. --scheduler takes the address of
a running Dask cluster.
"""

from __future__ import annotations

import argparse
from collections.abc import Callable, Iterator
from concurrent.futures import ProcessPoolExecutor
from contextlib import contextmanager
import multiprocessing
import os
import sys
import tempfile
import time
from typing import Any

import numpy as np

from Yul import Date, Domain, GribFile, Grid, Yul, analyse, contour_map, progress

REGION = 'lamb:52:14:40:65,52,14,161,151,0.25,0.25'
REPORTS = 400

Result = tuple[str, float, float]
Task = tuple[Any, ...]
Doing = Iterator[Callable[[list[Task]], list[list[Result]]]]


def make_file(name: str, count: int) -> None:
    """Messages of edition 1, an hour apart: waves that move eastward."""
    lats, lons = np.radians(np.linspace(90, -90, 361, dtype='f4')), np.radians(np.arange(-180, 180, 0.5, dtype='f4'))
    zonal = (5800 - 600 * np.sin(lats) ** 2)[:, None]
    grid = Grid.from_array(np.zeros((361, 720)), 'll:0:0,0,-0.25,720,361,0.5,0.5', date=Date('2026111400'), level=500,
                           fore='0h', var='HGT')
    with GribFile() as output:
        output.open(name, 1)
        for i in progress(range(count), 'writing'):
            waves = sum(600 / k * np.cos(lats[:, None]) ** 2 * np.sin(k * lons + k - i / 20) for k in (3, 5))
            grid.values = zonal + waves
            grid.setDate(Date(2026, 11, 14, 0, 0, 0.0))
            grid.date.addHours(i)
            if not output.write(grid):
                sys.exit(f'{name}: unable to write')


def find_messages(name: str) -> list[int]:
    """The octets at which the messages start, from their headers."""
    places, grid = [], Grid()
    with GribFile(name) as file:
        while file.peek(grid):
            places.append(file.getLoc())
            file.next()
    return places


def work(name: str, place: int, first: int, count: int, every: int, folder: str | None) -> list[Result]:
    """What is done with `count` messages from `place` on, the first of which has the number `first` in the file: their valid
    times, the mean over the region, and the root mean square of analysis less field."""
    Yul.setMessageLevel(Yul.NONE)  # nothing but errors
    random = np.random.default_rng(1)
    lats, lons = random.uniform(34, 68, REPORTS), random.uniform(-14, 42, REPORTS)
    region, grid, results = Domain(REGION), Grid(), []
    with GribFile(name) as file:
        if not file.setLoc(place):
            raise OSError(f'{name}: no message at {place}')
        for number in range(first, first + count):
            if not file.read(grid):
                raise OSError(f'{name}: no message behind {file.getLoc()}')
            analysed = analyse(lats, lons, grid.at(lats, lons), region, filter=40, radius=20, passes=3).masked
            truth = grid.at(region.lats, region.lons)
            error = float(np.sqrt(((analysed - truth) ** 2).mean()))
            if number % every == 0:
                page = None if folder is None else os.path.join(folder, f'{grid.valid:%Y%m%d%H}.ps')
                contour_map(grid, page, domain=REGION, interval=40)
            results.append((str(grid.valid), float(truth.mean()), error))
    return results


def here() -> tuple[int, str]:
    """The worker's process and the versions that it has; after a moment, so that no worker answers for another."""
    time.sleep(0.05)
    return os.getpid(), f'Yul {Yul.getVersion()}, NumPy {np.__version__}'


def spread(call: Callable[..., Any], tasks: list[Task], **options: Any) -> list[Any]:
    """The results of the tasks by a scheduler of Dask."""
    from dask.base import compute
    from dask.delayed import delayed
    later: Any = delayed(call)
    run: Any = compute
    return list(run(*(later(*task, pure=False) for task in tasks), **options))


@contextmanager
def serial(workers: int, address: str | None) -> Doing:
    yield lambda tasks: [work(*task) for task in progress(tasks, 'slices')]


@contextmanager
def threads(workers: int, address: str | None) -> Doing:
    yield lambda tasks: spread(work, tasks, scheduler='threads', num_workers=workers)


@contextmanager
def processes(workers: int, address: str | None) -> Doing:
    with ProcessPoolExecutor(workers, multiprocessing.get_context('spawn')) as pool:
        # A task is a slice already, so they are handed out one by one and not in batches of six.
        options = {'scheduler': 'processes', 'pool': pool, 'chunksize': 1}
        up: set[tuple[int, str]] = set()
        while len(up) < workers:
            up.update(spread(here, [()] * workers, **options))
        yield lambda tasks: spread(work, tasks, **options)


@contextmanager
def distributed(workers: int, address: str | None) -> Doing:
    from dask import config
    import dask.distributed
    # Workers would give memory back to the system at every chance, and fetch it again for the next map.
    config.set({'distributed.nanny.pre-spawn-environ.MALLOC_TRIM_THRESHOLD_': 1 << 28})
    client_of: Any = dask.distributed.Client
    own = {'n_workers': workers, 'threads_per_worker': 1, 'dashboard_address': None}
    with client_of(**({'address': address} if address else own)) as client:
        if others := {versions for _, versions in client.run(here).values()} - {here()[1]}:
            sys.exit(f'there are workers with {", ".join(others)}; here is {here()[1]}')
        yield lambda tasks: spread(work, tasks, scheduler=client)


WAYS = {way.__name__: way for way in (serial, threads, processes, distributed)}


def main() -> None:
    parser = argparse.ArgumentParser(description=(__doc__ or '').split('\n')[0])
    parser.add_argument('--messages', type=int, default=1000)
    parser.add_argument('--workers', type=int, default=len(os.sched_getaffinity(0)))
    parser.add_argument('--slice', type=int, default=50, help='messages that a worker gets at a time')
    parser.add_argument('--every', type=int, default=1, help='draw every Nth message')
    parser.add_argument('--how', choices=WAYS)
    parser.add_argument('--file', help='messages to work through, instead of one made for it')
    parser.add_argument('--scheduler', metavar='ADDRESS', help='of a running cluster that sees the same files')
    parser.add_argument('--maps', metavar='FOLDER', help='keep the maps there')
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(dir=arguments.maps) as folder:
        name = os.path.abspath(arguments.file or os.path.join(folder, 'fields.grib'))
        if not arguments.file:
            make_file(name, arguments.messages)
        places = find_messages(name)[:arguments.messages]
        maps = arguments.maps and os.path.abspath(arguments.maps)
        tasks = [(name, places[i], i, min(arguments.slice, len(places) - i), arguments.every, maps)
                 for i in range(0, len(places), arguments.slice)]
        print('| way | workers | start, s | work, s | messages a second | beside one process |\n|---|---|---|---|---|---|')
        single, expected = 0.0, None
        for how in [arguments.how] if arguments.how else WAYS:
            start = time.perf_counter()
            with WAYS[how](arguments.workers, arguments.scheduler) as do:
                up = time.perf_counter()
                result = [row for part in do(tasks) for row in part]
                seconds = time.perf_counter() - up
            if expected is not None and result != expected:
                sys.exit(f'{how}: other results')
            expected, single = result, single or seconds
            workers = 1 if how == 'serial' else '-' if arguments.scheduler else arguments.workers
            print(f'| {how} | {workers} | {up - start:.1f} | {seconds:.2f} | {len(result) / seconds:.0f} | {single / seconds:.2f} |',
                  flush=True)
        for when, mean, error in (expected or [])[:1]:
            print(f'{when}: {mean:.1f} gpm over Europe, {error:.1f} gpm between analysis and field')


if __name__ == '__main__':
    main()
