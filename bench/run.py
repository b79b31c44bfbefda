#!/usr/bin/env python3
"""Runs the benchmarks and prints one table of what they say: bench/run.py [--record] [NAME...]

Runs those whose name contains one of the words, or all, in their turns; the table ends with the count of targets held
and missed. With --record the table and a picture of it go into the documents (docs/performance.md). The exit status is
1 when a benchmark failed or printed what is no row; a missed target alone is no failure, because on a busy machine it
says little.
"""

from pathlib import Path
from typing import NamedTuple
import os
import re
import subprocess
import sys
import time

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

from support import machine  # noqa: E402

PROGRAMS = HERE.parent / 'build' / 'bench'
ONE_THREAD = {'OMP_NUM_THREADS': '1', 'OPENBLAS_NUM_THREADS': '1'}  # ours and the peers; a pool that waits costs time
COMMANDS = 'run.py', 'growth.py'
# Jobs that move whole fields take up to half as long again, theirs or ours, by where a process happens to have its
# memory: these are run in several processes, of which the one in the middle counts for each job.
PROCESSES = {'grib': 5, 'grid_files': 7}
RATIO = re.compile(r'\d+(\.\d+)?(e[+-]?\d+)?')
TARGET = re.compile(r'>= (\d+(?:\.\d+)?)')


class Row(NamedTuple):
    """A job: costs or rates as text, the ratio (above 1 we are ahead), and what it has to reach, if anything."""
    job: str
    ours: str
    peer: str
    ratio: str
    limit: str = ''

    @property
    def peer_name(self):
        """The peer without its figure."""
        return self.peer.rsplit(' ', 2)[0]

    @property
    def has_target(self):
        return self.limit != ''

    @property
    def target(self):
        return float(TARGET.fullmatch(self.limit)[1])

    @property
    def is_held(self):
        return not self.has_target or float(self.ratio) >= self.target


def parse(text):
    """Rows, notes (lines that begin with "#"), and lines that are neither."""
    rows, notes, faults = [], [], []
    for line in filter(str.strip, text.splitlines()):
        fields = re.split(r'\t|\s{2,}', line.strip())
        if line.startswith('#'):
            notes.append(line)
        elif (len(fields) in (4, 5) and RATIO.fullmatch(fields[3])
              and (len(fields) == 4 or TARGET.fullmatch(fields[4]))):
            rows.append(Row(*fields))
        else:
            faults.append(f'no row: {line}')
    return rows, notes, faults


def verdict(rows):
    """The line that a run ends with."""
    targets = [row.is_held for row in rows if row.has_target]
    return f'{sum(targets)} targets held, {len(targets) - sum(targets)} missed'


def table(rows):
    """The rows in columns, those that miss their target marked."""
    widths = [max(len(row[i]) for row in [Row._fields, *rows]) for i in range(len(Row._fields))]
    yield '  '.join(text.ljust(width) for text, width in zip(Row._fields, widths)).rstrip()
    for row in rows:
        line = '  '.join(text.ljust(width) for text, width in zip(row, widths)).rstrip()
        yield line if row.is_held else f'{line}  <-- missed'


def benchmarks(words):
    """Names and command lines of the benchmarks whose name holds one of the words, or of all."""
    found = {path.stem: [PROGRAMS / path.stem] for path in HERE.glob('*.cpp')}
    found |= {path.stem: [sys.executable, path] for path in HERE.glob('*.py') if path.name not in COMMANDS}
    return {name: found[name] for name in sorted(found) if not words or any(word in name for word in words)}


def run_once(name, command):
    """Rows, notes and faults of one process."""
    result = subprocess.run(command, capture_output=True, text=True, env=os.environ | ONE_THREAD)
    rows, notes, faults = parse(result.stdout)
    if result.returncode != 0:
        faults.append(f'{name}: exit status {result.returncode}\n{result.stderr}')
    return rows, notes, faults


def middle(tables):
    """Of each job the row with the middle ratio."""
    return [sorted(same, key=lambda row: float(row.ratio))[len(same) // 2] for same in zip(*tables)]


def run(words):
    """Rows, notes and faults of the benchmarks."""
    rows, notes, faults = [], [], []
    for name, command in benchmarks(words).items():
        print(f'{name} ...', file=sys.stderr)
        tables, remarks, complaints = zip(*(run_once(name, command) for _ in range(PROCESSES.get(name, 1))))
        rows += middle(tables)
        notes += remarks[0]
        faults += [fault for each in complaints for fault in each]
    return rows, notes, faults


def markdown(rows):
    """The same table for the documents."""
    yield f'| {" | ".join(Row._fields)} |'
    yield f'|{"---|" * len(Row._fields)}'
    for row in rows:
        ratio = row.ratio if row.is_held else f'**{row.ratio}**'
        yield f'| {" | ".join((*row[:3], ratio, row.limit))} |'


def write_documents(rows, notes, minutes):
    from support import charts, record  # draw with the library, which a table alone does not need
    facts = [*machine.describe(), *(note.removeprefix('# ') for note in notes if note.startswith('# bare: '))]
    record.replace_block('machine', [f'- {line}' for line in facts if not line.startswith('#')]
                         + [f'- run: all benchmarks in {minutes:.1f} minutes'])
    memory = [row for row in rows if row.job.startswith('memory, ')]
    record.replace_block('table', [*markdown([row for row in rows if row not in memory]), '', f'{verdict(rows)}.'])
    record.replace_block('memory', [*markdown([row._replace(job=row.job.removeprefix('memory, ')) for row in memory])])
    charts.ratios(record.IMAGES / 'ratios.png', [(f'{row.job} / {row.peer_name}', float(row.ratio), row.target)
                                                 for row in rows if row.has_target])


def main():
    words = [word for word in sys.argv[1:] if word != '--record']
    start = time.monotonic()
    rows, notes, faults = run(words)
    if len(words) < len(sys.argv) - 1:
        write_documents(rows, notes, (time.monotonic() - start) / 60)
    print(*machine.describe(), *table(rows), *notes, sep='\n')
    sys.stdout.flush()
    print(*faults, sep='\n', end='\n' if faults else '', file=sys.stderr, flush=True)
    print(verdict(rows))
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
