#!/usr/bin/env python3
"""Counts the instructions of the hot operations and compares with counts.txt: compare.py PROGRAM [--renew]

Valgrind shows every program a processor with AVX2 and without AVX-512, so the counts are those of one machine wherever
they are taken; they do depend on the compiler. An operation that takes over 5 % more or fewer instructions than the
table says fails the run: fewer are to be kept, by --renew, so that they cannot creep back.
"""

from pathlib import Path
import re
import subprocess
import sys
import tempfile

TABLE = Path(__file__).with_name('counts.txt')
BOUND = 0.05


def count(program):
    """Instructions by operation, those of what it calls included."""
    symbols = subprocess.run(['nm', program], check=True, capture_output=True, text=True).stdout
    ends = [f'--dump-after={name}' for name in re.findall(r' T (count_\w+)$', symbols, re.M)]
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(['valgrind', '--tool=callgrind', '-q', '--collect-atstart=no', '--toggle-collect=count_*', *ends,
                        f'--callgrind-out-file={folder}/out', program], check=True)
        counts = {}
        for part in Path(folder).iterdir():
            text = part.read_text()
            if trigger := re.search(r'^desc: Trigger: --dump-after=count_(\w+)', text, re.M):
                counts[trigger[1]] = int(re.search(r'^totals: (\d+)', text, re.M)[1])
    return counts


def compiler(program):
    """What the program was compiled with, "GCC 12.2.0"."""
    text = subprocess.run(['readelf', '-p', '.comment', program], check=True, capture_output=True, text=True).stdout
    return 'GCC ' + re.search(r'GCC: .*?([\d.]+)$', text, re.M)[1]


def read_table():
    title, *rows = TABLE.read_text().splitlines()
    return title.removeprefix('# '), {name: int(number) for name, number in map(str.split, rows)}


def moved(kept, counts):
    """Prints one line an operation; the names of those that left the bound."""
    names = []
    for name in sorted(kept.keys() | counts.keys()):
        before, now = kept.get(name), counts.get(name)
        is_kept = before and now and abs(now / before - 1) <= BOUND
        change = f'{100 * (now / before - 1):+.2f} %' if before and now else 'new' if now else 'gone'
        print(f'{name:20} {before or 0:12,} {now or 0:12,}  {change}{"" if is_kept else "  MOVED"}')
        if not is_kept:
            names.append(name)
    return names


def main(program, *options):
    if 'avx2' not in Path('/proc/cpuinfo').read_text().split():
        print('instructions: not counted, because this processor has no AVX2 and takes other ways')
        return 0
    made_by = compiler(program)
    if options == ('--renew',):
        rows = [f'{name:20} {number}\n' for name, number in sorted(count(program).items())]
        TABLE.write_text(f'# {made_by}\n{"".join(rows)}')
        return 0
    kept_by, kept = read_table()
    if made_by.split('.')[0] != kept_by.split('.')[0]:
        print(f'instructions: not compared, because the table is of {kept_by} and this program of {made_by}')
        return 0
    names = moved(kept, count(program))
    print(f'instructions: {len(kept) - len(names)} operations within {BOUND:.0%}, {len(names)} moved')
    return 1 if names else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
