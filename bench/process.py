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


def run(*arguments, cwd):
    """Elapsed and processor seconds of a Python process from start to end."""
    start = time.perf_counter()
    process = subprocess.Popen([sys.executable, *arguments], stdout=subprocess.DEVNULL, cwd=cwd)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    assert process.returncode == 0, arguments
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime


def medians(*commands, cwd):
    """The median elapsed and processor time of each command, run in turns so that all see the same machine."""
    runs = [[run(*command, cwd=cwd) for command in commands] for _ in range(ROUNDS + 1)][1:]
    return [tuple(map(statistics.median, zip(*column))) for column in zip(*runs)]


def row(job, ours, peer, ratio, limit):
    print(job, ours, peer, ratio, limit, sep='\t')


def main():
    os.environ['PYTHONPATH'] = str(ROOT / 'build' / 'python')
    example = ROOT / 'examples' / 'contour_map.py', ROOT / 'examples' / 'data' / 'height500.grib2'
    with tempfile.TemporaryDirectory() as folder:
        bare, module, package, numpy, page = medians(
            ('-c', ''), ('-c', 'import _Yul'), ('-c', 'import Yul'), ('-c', 'import numpy'), example, cwd=folder)
    print(f'# import: processor time over that of bare Python, {bare[1] * 1e3:.1f} ms; medians of {ROUNDS} runs in turns')
    peer = (numpy[1] - bare[1]) * 1e3
    for name, (_, processor) in (('_Yul', module), ('Yul', package)):
        cost = (processor - bare[1]) * 1e3
        row(f'import {name}', f'{cost:.1f} ms', f'{peer:.0f} ms (numpy)', f'{peer / max(cost, 0.1):.0f}', '> 10')
    print(f'# file to page: elapsed, of which {page[1] * 1e3:.0f} ms of processor time')
    row('GRIB file to finished page, whole process', f'{page[0] * 1e3:.0f} ms', '300 ms (limit)', f'{0.3 / page[0]:.1f}',
        '> 1')


if __name__ == '__main__':
    main()
