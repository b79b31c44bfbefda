"""The cost of one call from Python: the frame beside functions written by hand and beside pybind11.

CPU time of a loop, the empty loop taken off; the three sides take turns. `this` is the attribute through which an
instance of a Python class holds its object.
"""

from functools import partial
from pathlib import Path
import sys
import timeit
import time

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / 'build' / 'bench')]

import pycall_fastcall  # noqa: E402
import pycall_frame  # noqa: E402
from support.interleaved import medians, print_row  # noqa: E402

try:
    import pycall_pybind
except ImportError:
    pycall_pybind = None

CALLS, ROUNDS = 50_000, 41
JOBS = {
    'call, one-argument getter': ('f(plane)', 'Plane_getNx', 100),
    'call, (int, int) -> float': ('f(plane, 3, 4)', 'Plane_getValue', 1.5),
}


class Plane:
    def __init__(self, *arguments):
        pycall_frame.Plane_attach(self, pycall_frame.new_Plane(*arguments))


pycall_frame.Plane_registerclass(Plane)


def timers(statement, name, expected, sides):
    """A timer for each side, after its answer has been checked."""
    found = {'': timeit.Timer('pass', timer=time.thread_time)}
    for side, (module, make) in sides.items():
        scope = {'f': getattr(module, name), 'plane': make(100, 100)}
        assert eval(statement, scope) == expected
        found[side] = timeit.Timer(statement, globals=scope, timer=time.thread_time)
    return found


def measure(side_timers):
    """Median nanoseconds of a call, a side."""
    seconds = medians(ROUNDS, *(partial(timer.timeit, CALLS) for timer in side_timers.values()))
    costs = {side: time / CALLS * 1e9 for side, time in zip(side_timers, seconds)}
    return {side: cost - costs[''] for side, cost in costs.items() if side}


def main():
    sides = {
        'frame': (pycall_frame, pycall_frame.new_Plane),
        'instance': (pycall_frame, Plane),
        'fastcall': (pycall_fastcall, pycall_fastcall.new_Plane),
    }
    if pycall_pybind is not None:
        sides['pybind11'] = (pycall_pybind, pycall_pybind.new_Plane)
    else:
        print('# pybind11 is not installed: no peer for calls')
    for job, (statement, name, expected) in JOBS.items():
        ns = measure(timers(statement, name, expected, sides))
        for ours, text, peer, least in [('frame', '', 'fastcall', 0.59), ('frame', '', 'pybind11', 6),
                                        ('instance', ' through this', 'pybind11', None)]:
            if peer in ns:
                print_row(f'{job}{text}', f'{ns[ours]:.1f} ns', f'{peer} {ns[peer]:.1f} ns', ns[peer] / ns[ours], least)


if __name__ == '__main__':
    main()
