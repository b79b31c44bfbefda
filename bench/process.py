"""Whole processes: what importing costs over bare Python, and the demo from file to finished page."""

from pathlib import Path
import os
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = Path(__file__).resolve().parent.parent
ROUNDS = 30


def seconds(*arguments, cwd=None):
    start = time.perf_counter()
    subprocess.run([sys.executable, *arguments], check=True, stdout=subprocess.DEVNULL, cwd=cwd)
    return time.perf_counter() - start


def medians(*commands, cwd=None):
    """The median time of each command, run in turns so that all see the same machine."""
    times = [[] for _ in commands]
    for command in commands:
        seconds(*command, cwd=cwd)
    for _ in range(ROUNDS):
        for kept, command in zip(times, commands):
            kept.append(seconds(*command, cwd=cwd))
    return [statistics.median(kept) for kept in times]


def row(job, ours, peer, ratio, limit):
    print(job, ours, peer, ratio, limit, sep='\t')


def main():
    os.environ.setdefault('PYTHONPATH', str(ROOT / 'build' / 'python'))
    bare, module, package, numpy = medians(('-c', ''), ('-c', 'import _Yul'), ('-c', 'import Yul'),
                                           ('-c', 'import numpy'))
    print(f'# import: over bare Python, which takes {bare * 1e3:.1f} ms to start; medians of {ROUNDS} runs in turns')
    for name, total in (('_Yul', module), ('Yul', package)):
        cost = (total - bare) * 1e3
        row(f'import {name}', f'{cost:.2f} ms', f'{(numpy - bare) * 1e3:.1f} ms (numpy)',
            f'{(numpy - bare) * 1e3 / max(cost, 1e-3):.0f}', '> 10')
    with tempfile.TemporaryDirectory() as folder:
        page, = medians((ROOT / 'examples' / 'contour_map.py', ROOT / 'examples' / 'data' / 'height500.grib2',
                         '--output', 'page.ps'), cwd=folder)
    row('GRIB file to finished page, whole process', f'{page * 1e3:.0f} ms', '300 ms (limit)', f'{0.3 / page:.1f}',
        '> 1')


if __name__ == '__main__':
    main()
