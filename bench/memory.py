#!/usr/bin/env python3
"""Peak resident memory of each job beside its peer's: processes that do the job once and nothing else.

Programs are charged with what they and their libraries touch; jobs in Python include Python itself.
"""

from pathlib import Path
import importlib.util
import os
import subprocess
import sys
import tempfile

HERE = Path(__file__).resolve().parent
PROGRAMS = HERE.parent / 'build' / 'bench'
sys.path.insert(0, str(HERE))

import pages  # noqa: E402
from bulletins import write_feed  # noqa: E402
from support.fields import levels_of  # noqa: E402
from support.interleaved import print_row  # noqa: E402

OURS, GRIB, PROJECTIONS = (str(PROGRAMS / name) for name in ('memory_ours', 'grib', 'projections'))
PLACES = 'lat, lon = np.random.default_rng(3).uniform(-89, 89, (2, 1_000_000))'

# Jobs in Python: ours, then each peer with the module that it needs.
SCRIPTS = {
    'native grid, read': ("from Yul import Grid, GridYulFile; assert GridYulFile().read('native', 0, Grid())", {
        'NumPy': ('numpy', "import numpy as np; np.fromfile('field.be32', 'f4').byteswap(inplace=True)")}),
    'values at 1e6 places': (
        f"import numpy as np; from Yul import Grid, GridYulFile; grid = Grid(); GridYulFile().read('native', 0, grid); "
        f"{PLACES}; grid.at(lat, lon)", {
            'SciPy': ('scipy', f"import numpy as np; from scipy.interpolate import RegularGridInterpolator as Peer; {PLACES}; "
                               f"Peer((np.arange(721.), np.arange(1440.)), np.load('field.npy'))((lat + 90, lon + 180))")}),
    'contour segments, 1440 x 721, 40 levels': (
        "import numpy as np, contours as c; f = np.load('field.npy'); "
        "c.by_us(f, c.levels_of(f, 40), np.empty((1000000, 4), 'f4'))()", {
            'contourpy': ('contourpy', "import numpy as np, contours as c; f = np.load('field.npy'); "
                                       "c.by_contourpy(f, c.levels_of(f, 40))()")}),
    'analysis of 10,000 stations, 500 x 500': ('import analysis; analysis.Job(10_000, 500).ours()', {
        'SciPy': ('scipy', 'import analysis; analysis.Job(10_000, 500).peer()')}),
    'bulletins by heading, lines classified': ("import bulletins; bulletins.ours('feed')", {
        'Python split': ('re', "import bulletins; bulletins.by_split('feed')"),
        'Python lines': ('re', "import bulletins; bulletins.by_line('feed')")}),
    'import Yul': ('import Yul', {'NumPy': ('numpy', 'import numpy')}),
}


def peak(command, page=os.devnull):
    """Megabytes that a process holds at most; its output goes to the page."""
    with open(page, 'wb') as output:
        result = subprocess.run([PROGRAMS / 'memory_peak', *command], stdout=output, stderr=subprocess.PIPE, text=True)
    if result.returncode != 0:
        sys.exit(f'{command}: {result.stderr}')
    return int(result.stderr.split()[-1]) / 1024


def compare(job, ours, peers):
    """A row for each peer; ours and theirs are megabytes."""
    for name, megabytes in peers.items():
        print_row(f'memory, {job}', f'{ours:.1f} MB', f'{name} {megabytes:.1f} MB', megabytes / ours)


def compare_programs():
    if not subprocess.run([GRIB, '.'], stdout=subprocess.DEVNULL).returncode:
        for job, kind, file, peers in (('GRIB 2 simple, 16 bits', 'read', 'simple.grib', ('ecCodes', 'g2c')),
                                       ('GRIB 2 differences, order 2', 'read', 'differences.grib', ('ecCodes', 'g2c')),
                                       ('GRIB 2 JPEG 2000', 'read', 'jpeg2000.grib', ('ecCodes', 'g2c')),
                                       ('headers of 200 messages, 0.25 degree', 'list', 'messages.grib', ('ecCodes', 'g2c'))):
            compare(job, peak([OURS, kind, file]), {peer: peak([GRIB, peer, kind, file]) for peer in peers})
    if not subprocess.run([PROJECTIONS, 'PROJ'], stdout=subprocess.DEVNULL).returncode:
        compare('projection of 1e6 points', peak([OURS, 'project']), {'PROJ': peak([PROJECTIONS, 'PROJ'])})


def compare_scripts(field):
    from Yul import Grid, GridYulFile
    file = GridYulFile()
    made = Grid.from_array(field, 'll:0:0,0,-180.125,1440,721,0.25,0.25')
    assert file.write('native', GridYulFile.BINARY, made) and file.close()
    write_feed('feed')
    for job, (ours, peers) in SCRIPTS.items():
        found = {name: script for name, (module, script) in peers.items() if importlib.util.find_spec(module)}
        compare(job, peak(pages.python(ours)), {name: peak(pages.python(script)) for name, script in found.items()})


def compare_pages(field):
    for count in (12, 40):
        found = pages.commands(levels_of(field, count), False)
        megabytes = {name: peak(command, page if name == 'GMT' else os.devnull) for name, (page, command) in found.items()}
        compare(f'file to page, {count} levels', megabytes.pop('ours'), megabytes)


def main():
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        field = pages.prepare()
        os.environ['PYTHONPATH'] += f':{HERE}'
        compare_programs()
        compare_scripts(field)
        compare_pages(field)
        os.chdir('/')


if __name__ == '__main__':
    main()
