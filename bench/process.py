"""Whole processes: what importing costs over bare Python, and the demo from file to finished page."""

from pathlib import Path
import os
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.interleaved import print_row  # noqa: E402

ROOT = Path(__file__).resolve().parent.parent
ROUNDS = 21
IMPORT_LIMIT, PAGE_LIMIT = 5e-3, 0.3


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


def main():
    os.environ['PYTHONPATH'] = str(ROOT / 'build' / 'python')
    example = ROOT / 'examples' / 'contour_map.py', ROOT / 'examples' / 'data' / 'height500.grib2'
    with tempfile.TemporaryDirectory() as folder:
        bare, module, package, numpy, page = medians(
            ('-c', ''), ('-c', 'import _Yul'), ('-c', 'import Yul'), ('-c', 'import numpy'), example, cwd=folder)
    print(f'# import: processor time over that of bare Python, {bare[1] * 1e3:.1f} ms; medians of {ROUNDS} runs in turns')
    module_cost, package_cost, numpy_cost = (max(processor - bare[1], 1e-4) for _, processor in (module, package, numpy))
    for name, cost, peer_name, peer, least in (('_Yul', module_cost, 'limit', IMPORT_LIMIT, 1),
                                               ('_Yul', module_cost, 'NumPy', numpy_cost, None),
                                               ('Yul', package_cost, 'NumPy', numpy_cost, None)):
        print_row(f'import {name}', f'{cost * 1e3:.1f} ms', f'{peer_name} {peer * 1e3:.3g} ms', peer / cost, least)
    print(f'# file to page: elapsed, of which {page[1] * 1e3:.0f} ms of processor time')
    print_row('GRIB file to finished page, whole process', f'{page[0] * 1e3:.0f} ms', f'limit {PAGE_LIMIT * 1e3:.0f} ms',
              PAGE_LIMIT / page[0], 1)


if __name__ == '__main__':
    main()
