"""From a data file to a finished page of contour lines, whole processes, beside GMT, Magics and matplotlib.

The field is a global one of 1440 x 721 points; ours and Magics read GRIB, GMT its own netCDF, matplotlib plain
numbers. Nobody draws labels. Times are medians of runs made in turns.
"""

from functools import partial
from pathlib import Path
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

import numpy as np

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
sys.path[:0] = [str(HERE), str(ROOT / 'tests' / 'python')]

from gribwriter import LatLon, grib2  # noqa: E402
from support.fields import levels_of, temperature  # noqa: E402
from support.interleaved import medians, print_row  # noqa: E402

ROUNDS = 7
TARGETS = {'GMT': 4, 'Magics': 4, 'matplotlib': 9}  # on a page without projection
MAGICS = ROOT / 'build' / 'bench' / 'page_magics'
POLAR = 'pstereo:90:0,90,0,185,185,1,1'

OURS = """
from Yul import ContPlot, Domain, GribFile, Grid, Plot
grid, plot, contours = Grid(), Plot(), ContPlot()
assert GribFile('field.grib2').read(grid) and plot.open('ours.ps,de=p') and contours.setValues({levels!r})
{domain}
assert contours.draw(plot, grid) and plot.close()
"""

MATPLOTLIB = """
import numpy as np, matplotlib
matplotlib.use('ps')
import matplotlib.pyplot as plt
figure = plt.figure(figsize=(10.5, 8))
axes = figure.add_axes([0, 0, 1, 1])
axes.contour(np.load('field.npy'), {levels}, colors='k', linewidths=0.33)
figure.savefig('matplotlib.ps')
"""


def python(text):
    return [sys.executable, '-c', text]


def commands(levels, is_polar):
    """Name -> page and command line of all that are installed."""
    texts = [f'{level:.6f}' for level in levels]
    domain = f"plot.setDomain(Domain('{POLAR}'))" if is_polar else ''
    found = {'ours': ('ours.ps', python(OURS.format(levels=','.join(texts), domain=domain)))}
    if shutil.which('gmt'):
        Path('levels.txt').write_text(''.join(f'{text} C\n' for text in texts))
        area = ['-JS0/90/20c', '-R-180/180/20/90'] if is_polar else ['-JX26.7c/20.3c', '-R0/359.75/-90/90']
        found['GMT'] = 'gmt.ps', ['gmt', 'grdcontour', 'field.nc', *area, '-Clevels.txt', '-A-', '-W0.33p']
    if MAGICS.exists():
        found['Magics'] = 'magics.ps', [str(MAGICS), 'field.grib2', 'magics', 'polar' if is_polar else 'plain', *texts]
    if not is_polar and not subprocess.run(python('import matplotlib'), stderr=subprocess.DEVNULL).returncode:
        found['matplotlib'] = 'matplotlib.ps', python(MATPLOTLIB.format(levels=list(map(float, texts))))
    return found


def run(page, command):
    with open(page if command[0] == 'gmt' else os.devnull, 'wb') as output:
        subprocess.run(command, stdout=output, stderr=subprocess.DEVNULL, check=True)


def compare(field, count, is_polar=False):
    found = commands(levels_of(field, count), is_polar)
    for page, command in found.values():
        run(page, command)
        assert Path(page).stat().st_size > 100000, f'{page}: a page without the lines'
    jobs = [partial(run, *job) for job in found.values()]
    times = dict(zip(found, medians(ROUNDS, *jobs, clock=time.perf_counter)))
    job = f'file to page, {count} levels' + (', polar' if is_polar else '')
    own = times.pop('ours')
    for name, seconds in times.items():
        print_row(job, f'{own * 1e3:.0f} ms', f'{name} {seconds * 1e3:.0f} ms', seconds / own,
                  None if is_polar else TARGETS[name])
    sizes = ', '.join(f'{name} {Path(page).stat().st_size / 1e6:.1f} MB' for name, (page, _) in found.items())
    print(f'# {job}: {len(re.findall(b"%%PL:2", Path("ours.ps").read_bytes()))} segments; pages {sizes}')


def prepare():
    """Writes the field to the present folder in everybody's form, and returns it."""
    os.environ |= {'PYTHONPATH': str(ROOT / 'build' / 'python'), 'MAGPLUS_HOME': os.environ.get('MAGPLUS_HOME', '/usr'),
                   'MAGPLUS_QUIET': 'on', 'OMP_NUM_THREADS': '1'}
    field = temperature()
    Path('field.grib2').write_bytes(grib2(field, LatLon(90, 0, -90, 359.75)))
    field.astype('>f4').tofile('field.be32')
    np.save('field.npy', field)
    if shutil.which('gmt'):
        subprocess.run(['gmt', 'xyz2grd', 'field.be32', '-ZTLfw', '-R0/359.75/-90/90', '-I0.25', '-Gfield.nc'], check=True)
    return field


def main():
    for program, there in (('gmt', shutil.which('gmt')), ('magics++ (libmagics++-dev)', MAGICS.exists())):
        if not there:
            print(f'# {program} is not installed: no peer')
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        field = prepare()
        for job in ((12,), (40,), (40, True)):
            compare(field, *job)
        os.chdir('/')


if __name__ == '__main__':
    main()
