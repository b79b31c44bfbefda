"""Runs the benchmarks and prints one table of what they say: bench/run.py [NAME...]"""

from pathlib import Path
import os
import platform
import re
import subprocess
import sys

HERE = Path(__file__).resolve().parent
PROGRAMS = HERE.parent / 'build' / 'bench'
HELPERS = 'run.py', 'fields.py'
HEADINGS = ('job', 'ours', 'peer', 'ratio', 'limit')
# A ratio is peer by ours, so that above 1 we are ahead; a limit says which side of it is wanted.
LIMIT = re.compile(r'(<=|>=|<|>)\s*([0-9.]+)$')
KEEPS = {'<': float.__lt__, '<=': float.__le__, '>': float.__gt__, '>=': float.__ge__}


def benchmarks(words):
    """Names and command lines of the benchmarks whose name holds one of the words, or of all."""
    found = {path.stem: [path] for path in HERE.glob('*.cpp')}
    found = {name: [PROGRAMS / name] for name in found}
    found |= {path.stem: [sys.executable, path] for path in HERE.glob('*.py') if path.name not in HELPERS}
    return {name: found[name] for name in sorted(found) if not words or any(word in name for word in words)}


def parse(text):
    """Rows of fields, and notes."""
    rows, notes = [], []
    for line in text.splitlines():
        fields = re.split(r'\t|\s{2,}', line.strip())
        if line.startswith('#'):
            notes.append(line)
        elif len(fields) in (4, 5):
            rows.append(fields + [''] * (5 - len(fields)))
        elif line.strip():
            notes.append(f'# {line}')
    return rows, notes


def verdict(row):
    limit, ratio = LIMIT.match(row[4]), re.match(r'[0-9.]+', row[3])
    if not limit or not ratio:
        return ''
    return '' if KEEPS[limit[1]](float(ratio[0]), float(limit[2])) else '  <-- not kept'


def main():
    rows, notes, failed = [], [], []
    for name, command in benchmarks(sys.argv[1:]).items():
        print(f'{name} ...', file=sys.stderr)
        result = subprocess.run(command, capture_output=True, text=True)
        if result.returncode != 0:
            failed.append(f'{name}: exit status {result.returncode}\n{result.stderr}')
        found = parse(result.stdout)
        rows += found[0]
        notes += found[1]
    widths = [max(len(row[i]) for row in [HEADINGS, *rows]) for i in range(5)]
    print(f'{platform.machine()}, {os.cpu_count()} processors, Python {platform.python_version()}')
    for row in [HEADINGS, *rows]:
        print('  '.join(text.ljust(width) for text, width in zip(row, widths)).rstrip() + verdict(row))
    print(*notes, sep='\n', end='\n' if notes else '')
    if failed:
        sys.exit('\n'.join(failed))


if __name__ == '__main__':
    main()
