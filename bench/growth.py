#!/usr/bin/env python3
"""How the cost of a job grows with its work: growth.py [--record]

Prints the cost of an item at five sizes over three decades or more. The clock is the processor time of this thread;
all sizes take turns. With --record the table and the plots go into the documents.
"""

from math import log
from pathlib import Path
from typing import Callable, NamedTuple
import datetime
import statistics
import sys
import tempfile
import time

import numpy as np

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
sys.path[:0] = [str(HERE), str(ROOT / 'tests' / 'python')]

from analysis import Job  # noqa: E402
from bulletins import ours as split_bulletins, write_feed  # noqa: E402
from contours import by_us as contour_segments  # noqa: E402
from gribwriter import LatLon, grib2  # noqa: E402
from support import charts, record  # noqa: E402
from support.fields import levels_of, waves  # noqa: E402
from Yul import Domain, GribFile, Grid, NameConv, settings  # noqa: E402

ROUNDS = 5
SHORTEST = 0.01  # seconds of one measurement; what is done faster is done several times
LEVELS = 12
SEARCH_FROM = datetime.datetime(2026, 11, 14, 17, 23)
SIDES = 32, 100, 316, 1000, 2200  # a section of a GRIB message may have 10,000,000 octets


class Case(NamedTuple):
    """A job at several sizes: title, unit of the work, and work -> what does it once."""
    title: str
    unit: str
    jobs: dict[int, Callable[[], object]]


def decoding(folder):
    jobs, grid = {}, Grid()
    for side in SIDES:
        path = folder / f'{side}.grib2'
        path.write_bytes(grib2(waves(side), LatLon(60, 0, 0, 60), bits=16))

        def read(name=str(path)):
            assert GribFile(name).read(grid)
        jobs[side * side] = read
    return Case('GRIB decoding, 16 bits', 'points', jobs)


def contouring():
    """The waves are as long everywhere, so that lines grow as points do."""
    jobs, levels = {}, levels_of(waves(), LEVELS)
    for side in SIDES:
        field = waves(side, side / 1000)
        jobs[side * side] = contour_segments(field, levels, np.empty((side * side // 5, 4), np.float32))
    return Case(f'Contour segments, {LEVELS} levels', 'points', jobs)


def projection():
    domain, random = Domain('lamb:40:-95:30:60,40,-95,2,2,1'), np.random.default_rng(1)
    jobs = {}
    for points in (10**n for n in range(3, 8)):
        lats, lons = random.uniform(15, 75, points).astype('f4'), random.uniform(-150, -40, points).astype('f4')
        jobs[points] = lambda lats=lats, lons=lons: domain.forward(lats, lons)
    return Case('Lambert conformal, forward', 'points', jobs)


def analysis():
    jobs = {}
    for side in (20, 63, 200, 632, 2000):
        stations = side * side // 20
        jobs[stations] = Job(stations, side).ours
    return Case('Objective analysis, 3 passes', 'stations, 20 points for each', jobs)


def splitting(folder):
    jobs = {}
    for size in (10**n for n in range(4, 9)):
        path = folder / f'{size}.feed'
        write_feed(path, size)
        jobs[path.stat().st_size] = lambda name=str(path): split_bulletins(name)
    return Case('Bulletins by heading, classified', 'octets', jobs)


def searching(folder):
    """The file that is there is the last candidate of each search."""
    settings['data_path'] = str(folder)
    jobs = {}
    for tries in (10**n for n in range(1, 6)):
        own = folder / str(tries)
        own.mkdir()
        last = SEARCH_FROM - datetime.timedelta(minutes=tries - 1)
        (own / f'{last:%Y%m%d%H%M}.latest').touch()
        convention = NameConv(f'@%D/{tries}/%Y%m%d%h%n.latest')

        def search(convention=convention, when=f'#{SEARCH_FROM:%Y%m%d%H%M}la#{tries}'):
            assert convention.latest(when)
        jobs[tries] = search
    return Case('Latest file', 'candidates', jobs)


def seconds_of(job, repeats):
    start = time.thread_time()
    for _ in range(repeats):
        job()
    return (time.thread_time() - start) / repeats


def measure(case):
    """Median seconds at each size."""
    repeats = {work: int(SHORTEST / max(seconds_of(job, 1), 1e-6)) + 1 for work, job in case.jobs.items()}
    times = {work: [] for work in case.jobs}
    for _ in range(ROUNDS):
        for work, job in case.jobs.items():
            times[work].append(seconds_of(job, repeats[work]))
    return {work: statistics.median(column) for work, column in times.items()}


def exponent(seconds):
    """How time goes with work over the two upper decades: 1 is linear."""
    (few, less), *_, (many, more) = list(seconds.items())[-3:]
    return log(more / less) / log(many / few)


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        series, table = [], []
        for case in (decoding(folder), contouring(), projection(), analysis(), splitting(folder), searching(folder)):
            seconds = measure(case)
            series.append((case.title, case.unit, list(seconds), list(seconds.values())))
            costs = ' | '.join(f'{work:,}: {1e9 * spent / work:.3g}' for work, spent in seconds.items())
            table.append(f'| {case.title} | {case.unit} | {costs} | {exponent(seconds):.2f} |')
            print(table[-1], flush=True)
    if '--record' in sys.argv[1:]:
        heading = ['| job | work in | nanoseconds an item at each size |  |  |  |  | exponent |', '|---|---|---|---|---|---|---|---|']
        record.replace_block('growth', heading + table)
        charts.growth(record.IMAGES / 'growth.png', series)


if __name__ == '__main__':
    main()
