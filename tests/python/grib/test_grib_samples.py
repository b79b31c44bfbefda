"""Real files beside what other decoders make of them.

YUL_GRIB_SAMPLES names a folder with GRIB files and a reference.json: per file the fields and per field size, values at
some points, counts and checksums of what is missing, times, level and the positions of the corners. Row 0 is north,
column 0 west.
"""

import json
import math
import os
from pathlib import Path
import zlib

import numpy as np
import pytest

from Yul import EarthPoint, GribFile, Grid, GridPoint

FOLDER = os.environ.get('YUL_GRIB_SAMPLES')
MISS = -9999.0

# Grids that no domain holds.
REFUSED_GRIDS = {'reduced_gg', 'reduced_ll', 'rotated_ll', 'sh', 'transverse_mercator', 'unstructured_grid'}


def load():
    if not FOLDER:
        return {}
    return json.loads((Path(FOLDER) / 'reference.json').read_text())['files']


FILES = load()
pytestmark = pytest.mark.skipif(not FILES, reason='YUL_GRIB_SAMPLES names no folder of sample files')


def is_refused(field):
    return field.get('grid', {}).get('type') in REFUSED_GRIDS


def fields_of(name):
    file = GribFile(str(Path(FOLDER) / name))
    while file.read(grid := Grid()):
        yield grid


@pytest.mark.parametrize('name', FILES or ['none'])
def test_sample(name, capfd):
    record = FILES[name]
    expected = [field for field in record['messages'] if not is_refused(field)]
    grids = list(fields_of(name))
    skipped = capfd.readouterr().err.count('skipped')
    if 'readerError' in record:  # damaged: what is found must at least be whole
        assert skipped
        return
    assert skipped == record['fields'] - len(grids)
    if len(record['messages']) < record['fields']:  # the reference holds only the first fields
        grids = grids[:len(expected)]
    assert len(grids) == len(expected)
    for grid, field in zip(grids, expected):
        check_values(grid, field)
        check_times(grid, field)
        check_level(grid, field)
        check_positions(grid, field)
        assert grid.getSource() == field['centre']
        assert grid.getVersion() == field['edition']
        assert grid.getModel() == field['generatingProcess']


def check_values(grid, field):
    values = np.array(grid.values)
    assert values.shape == (field['ny'], field['nx'])
    missing = values == MISS
    assert missing.sum() == field['missing']
    assert zlib.crc32(np.packbits(missing.ravel()).tobytes()) == field['maskCrc32']
    for sample in field['samples'] + field.get('samplesPresent', []):
        value = values[sample['row'], sample['col']]
        if sample['v'] is None:
            assert value == MISS
        else:  # single precision
            assert value == pytest.approx(sample['v'], rel=1e-6, abs=1e-30)
    if field.get('weightedMean') is not None:
        order = np.arange(values.size, dtype=np.uint64)
        weights = (order * np.uint64(2654435761) % np.uint64(2**32)).astype(float) / 2**32
        mean = (np.where(missing, 0, values.astype(float)).ravel() * weights).mean()
        largest = max(abs(field['min'] or 0), abs(field['max'] or 0))
        assert mean == pytest.approx(field['weightedMean'], abs=1e-6 * largest)


def check_times(grid, field):
    date = grid.date
    year, month, day = field['dataDate'] // 10000, field['dataDate'] // 100 % 100, field['dataDate'] % 100
    if 0 < year < 2100:
        assert (date.getYear(), date.getMonth(), date.getDay()) == (year, month, day)
        assert date.getHour() == field['dataTime'] // 100
    fore = grid.getForeTime()
    if field.get('hoursEnd') is not None:
        assert fore.getSeconds() / 3600 == pytest.approx(field['hoursEnd'], abs=1e-5)
        if fore.isSpan() or field['hoursStart'] == field['hoursEnd']:
            assert fore.getFromSeconds() / 3600 == pytest.approx(field['hoursStart'], abs=1e-5)


def check_level(grid, field):
    level = grid.getLevel()
    kind = {'isobaricInhPa': 100, 'isobaricInPa': 100, 'heightAboveGround': 103, 'heightAboveSea': 102,
            'meanSea': 101, 'hybrid': 105, 'surface': 1}.get(field.get('typeOfLevel'))
    if kind is None:
        return
    assert level.getType() == kind
    if kind not in (1, 101):
        factor = 0.01 if field['typeOfLevel'] == 'isobaricInPa' else 1
        assert level.getValue() == pytest.approx(field['level'] * factor, abs=0.51)


def check_positions(grid, field):
    is_gaussian = field['grid']['type'] == 'regular_gg'
    # 100 m; an ellipsoid is laid on a sphere, rows of a Gaussian grid are not quite equally apart.
    axes = field['grid'].get('earth') or [1, 1]
    is_plain = axes[0] == axes[1] or field['grid']['type'] in ('regular_ll', 'space_view')
    tolerance = 1e-3 if is_plain and not is_gaussian else 2e-3 if not is_gaussian else 0.02
    for corner in (field.get('corners') or {}).values():
        row, column, lat, lon = corner
        earth = EarthPoint()
        found = grid.tran(GridPoint(column, row), earth)
        assert found == (lat is not None)
        if found:
            assert earth.lat == pytest.approx(lat, abs=tolerance)
            across = (earth.lon - lon + 180) % 360 - 180
            assert across * math.cos(math.radians(lat)) == pytest.approx(0, abs=tolerance)
