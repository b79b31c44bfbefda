"""The test writer against an independent decoder: a fault here would make the reader's tests prove nothing."""

import numpy as np
import pytest

import gribwriter as w

eccodes = pytest.importorskip('eccodes', reason='python3-eccodes is not installed')

WAVES = 5400 + 300 * np.sin(np.arange(9)[:, None] / 2) * np.cos(np.arange(14)[None, :] / 3)
GRIDS = {
    'regular_ll': w.LatLon(60, -20, 52, -7),
    'polar_stereographic': w.PolarStereo(30, -120, -95, 60000, 60000),
    'lambert': w.Lambert(20, -110, -95, 40000, 40000, 25, 50),
    'mercator': w.Mercator(10, 100, 20, 113, 15, 100000, 100000),
}
# Keys that must say what was asked for: value and tolerance.
GRID_KEYS = {
    'regular_ll': {'latitudeOfFirstGridPointInDegrees': 60, 'longitudeOfLastGridPointInDegrees': -7,
                   'iDirectionIncrementInDegrees': 1},
    'polar_stereographic': {'orientationOfTheGridInDegrees': -95, 'DxInMetres': 60000},
    'lambert': {'LoVInDegrees': -95, 'Latin1InDegrees': 25, 'Latin2InDegrees': 50, 'DyInMetres': 40000},
    'mercator': {'LaDInDegrees': 15, 'latitudeOfLastGridPointInDegrees': 20, 'DiInMetres': 100000},
}
WRITERS = {1: w.grib1, 2: w.grib2}


def with_missing(values):
    values = values.copy()
    values[2, 3:7] = np.nan
    values[8, 13] = np.nan
    return values


@pytest.fixture
def decode():
    handles = []

    def decode(message):
        handles.append(eccodes.codes_new_from_message(message))
        eccodes.codes_set(handles[-1], 'missingValue', 1e9)
        return handles[-1]

    yield decode
    for handle in handles:
        eccodes.codes_release(handle)


def values_of(handle):
    values = eccodes.codes_get_values(handle)
    return np.where(values == 1e9, np.nan, values)


@pytest.mark.parametrize('missing', [False, True])
@pytest.mark.parametrize('bits', [None, 8, 12])
@pytest.mark.parametrize('edition', [1, 2])
def test_values_come_back(decode, edition, bits, missing):
    values = with_missing(WAVES) if missing else WAVES
    handle = decode(WRITERS[edition](values, GRIDS['regular_ll'], bits=bits))
    step = 0.1 if bits is None else np.ptp(WAVES) * 2 / (2**bits - 1)
    np.testing.assert_allclose(values_of(handle), values.ravel(), atol=step / 2 * 1.01, equal_nan=True)


@pytest.mark.parametrize('kind', GRIDS)
@pytest.mark.parametrize('edition', [1, 2])
def test_grid_and_product_are_what_was_asked_for(decode, edition, kind):
    handle = decode(WRITERS[edition](WAVES, GRIDS[kind], hours=24, scan=w.PLUS_J))
    assert eccodes.codes_get(handle, 'gridType') == kind
    keys = dict(GRID_KEYS[kind])
    if kind == 'regular_ll':
        keys['latitudeOfFirstGridPointInDegrees'] = 52
    for key, expected in keys.items():
        actual = eccodes.codes_get(handle, key)
        assert (actual - expected) % 360 == pytest.approx(0, abs=1e-6), key
    assert eccodes.codes_get(handle, 'shortName') == 'gh'
    assert (eccodes.codes_get(handle, 'typeOfLevel'), eccodes.codes_get(handle, 'level')) == ('isobaricInhPa', 500)
    assert eccodes.codes_get(handle, 'validityDate') == 20261115
    assert (eccodes.codes_get(handle, 'Ni'), eccodes.codes_get(handle, 'Nj')) == (14, 9)


@pytest.mark.parametrize('scan', [0, w.PLUS_J, w.MINUS_I, w.MINUS_I | w.PLUS_J, w.J_FIRST, w.J_FIRST | w.PLUS_J])
@pytest.mark.parametrize('edition', [1, 2])
def test_a_value_lies_at_its_place_in_every_scanning_mode(decode, edition, scan):
    handle = decode(WRITERS[edition](WAVES, GRIDS['regular_ll'], scan=scan))
    points = eccodes.codes_grib_iterator_new(handle, 0)
    found = {}
    while point := eccodes.codes_grib_iterator_next(points):
        lat, lon, value = point
        found[round(lat), (round(lon) + 180) % 360 - 180] = value
    eccodes.codes_grib_iterator_delete(points)
    expected = {(60 - row, -20 + column): WAVES[row, column] for row in range(9) for column in range(14)}
    assert found == pytest.approx(expected, abs=0.06)
