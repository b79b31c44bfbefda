"""Writes the seed corpus of the GRIB target: a small message of each kind of grid, edition and feature."""

from pathlib import Path
import sys

import numpy as np

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / 'tests' / 'python'))

import gribwriter as w  # noqa: E402

VALUES = 280 + np.add.outer(np.arange(4.0), np.arange(6.0))
MISSING = np.where(VALUES == 283, np.nan, VALUES)
GRIDS = {
    'latlon': w.LatLon(60, -20, 57, -15),
    'polar': w.PolarStereo(30, -120, -95, 60000, 60000),
    'lambert': w.Lambert(20, -110, -95, 40000, 40000, 25, 50),
    'mercator': w.Mercator(10, 100, 20, 113, 15, 100000, 100000),
}


def main():
    target = HERE / 'corpus' / 'grib'
    target.mkdir(parents=True, exist_ok=True)
    for edition, write in ((1, w.grib1), (2, w.grib2)):
        for name, grid in GRIDS.items():
            (target / f'{name}-{edition}.grib').write_bytes(write(VALUES, grid, scan=w.PLUS_J, hours=6))
        (target / f'bitmap-{edition}.grib').write_bytes(write(MISSING, GRIDS['latlon'], bits=9))
        (target / f'constant-{edition}.grib').write_bytes(write(0 * VALUES, GRIDS['latlon']))
        rows = write(VALUES, GRIDS['latlon'], scan=w.ALTERNATE_ROWS)
        (target / f'two-in-a-bulletin-{edition}.grib').write_bytes(b'\1\r\r\nHHXX10 EDZW 141200\r\r\n' + rows + rows)


if __name__ == '__main__':
    main()
