"""Jobs timed in turns, and the rows that say what came of it."""

import statistics
import time


def medians(rounds, *jobs, clock=time.thread_time):
    """Median seconds of every job, run in turns after one run of each that does not count.

    The medians are those of the quicker half of the rounds: all jobs are measured while the machine was disturbed least.
    The clock is the processor time of this thread, which other programs on the machine disturb less than elapsed
    time; jobs that other processes do need time.perf_counter.
    """
    def seconds_of(job):
        start = clock()
        job()
        return clock() - start

    for job in jobs:
        job()
    times = sorted(([seconds_of(job) for job in jobs] for _ in range(rounds)), key=sum)
    return [statistics.median(column) for column in zip(*times[:(rounds + 1) // 2])]


def print_row(job, ours, peer, ratio, least=None):
    """One row of the table; `least` is what the ratio has to reach, when something is asked."""
    print(job, ours, peer, f'{ratio:.3g}', *([f'>= {least:g}'] if least else []), sep='\t')
