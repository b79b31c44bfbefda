"""Messages of edition 1 that the library writes, read back by itself and by another decoder."""

import numpy as np
import pytest

from Yul import Date, Domain, EarthPoint, ForeTime, GribFile, Grid, GridPoint

MISS = -9999.0
DOMAINS = {
    'latlon': 'll,45,10,31,21,0.5,0.25',
    'across the date line': 'll,-20,180,31,21,2,1',
    'polar': 'ps:90:-105,50,-100,31,21,0.6,0.6',
    'polar true at 70': 'ps:90:-45:70,75,-40,31,21,0.25,0.25',
    'south polar': 'ps:-90:0,-70,20,31,21,0.5,0.5',
    'lambert': 'lamb:40:-95:30:60,40,-95,31,21,0.8,0.8',
    'south lambert': 'lamb:-40:20:-30:-50,-35,25,31,21,0.4,0.4',
    'mercator': 'me,10,150,31,21,0.5,0.5',
    'albers': 'alb:40:-95:30:45,38,-97,31,21,0.5,0.5',
}
RANDOM = np.random.default_rng(11)
FIELD = 5500 + 300 * np.sin(np.arange(31) / 5) + 200 * np.cos(np.arange(21) / 4)[:, None] + RANDOM.normal(size=(21, 31))


def make_grid(domain='ll,45,10,31,21,0.5,0.25', values=FIELD, var='HGT', level='500mb', fore='24'):
    ny, nx = values.shape
    grid = Grid(nx, ny)
    grid.values[:] = np.nan_to_num(values, nan=MISS)
    assert grid.setDomain(Domain(domain)) and grid.setVar(var) and grid.setLevel(level)
    assert grid.setForeTime(ForeTime(fore)) and grid.setDate(Date(2026, 11, 14, 12, 0, 0.0))
    grid.setSource(255)
    grid.setModel(96)
    return grid


def write(name, grid, bits=None, places=None):
    file = GribFile()
    assert file.open(name, 1) == 1
    assert bits is None or file.setValueBits(bits) == 1
    assert places is None or file.setDecimalScale(places) == 1
    result = file.write(grid)
    assert file.close() == 1
    return result


def read(name):
    grid = Grid()
    assert GribFile(name).read(grid) == 1
    return grid


@pytest.fixture
def name(tmp_path):
    return str(tmp_path / 'out.grib')


@pytest.mark.parametrize('domain', DOMAINS.values(), ids=DOMAINS)
def test_grids_come_back_where_they_were(name, domain):
    grid = make_grid(domain)
    assert write(name, grid) == 1
    back = read(name)
    for column, row in ((0, 0), (30, 0), (0, 20), (30, 20), (15, 10)):
        there, here = EarthPoint(), EarthPoint()
        assert grid.tran(GridPoint(column, row), there) and back.tran(GridPoint(column, row), here)
        assert here.lat == pytest.approx(there.lat, abs=2e-3)  # positions are coded in thousandths of a degree
        assert (here.lon - there.lon + 180) % 360 - 180 == pytest.approx(0, abs=4e-3)
    assert (back.getVar().getName(), back.getLevel().getValue(), back.getForeHours()) == ('HGT', 500, 24)
    assert back.date.getSeconds() == grid.date.getSeconds()
    assert (back.getVersion(), back.getSource(), back.getModel()) == (1, 255, 96)


@pytest.mark.parametrize('bits', [1, 2, 8, 12, 16, 24])
@pytest.mark.parametrize('holed', [False, True])
def test_values_come_back_within_half_a_step(name, bits, holed):
    values = np.where(RANDOM.random(FIELD.shape) < 0.4, np.nan, FIELD) if holed else FIELD
    assert write(name, make_grid(values=values), bits=bits) == 1
    back = read(name).values
    present = ~np.isnan(values)
    np.testing.assert_array_equal(back == MISS, ~present)
    span = np.nanmax(values) - np.nanmin(values)
    step = 2 * span / (2**bits - 1)  # steps are powers of two
    assert np.abs(back - values)[present].max() <= step / 2 + 1e-3


@pytest.mark.parametrize('places, error', [(0, 0.5), (1, 0.05), (2, 0.0055), (-1, 5)])
def test_decimal_places_are_kept(name, places, error):
    assert write(name, make_grid(), places=places) == 1
    assert np.abs(read(name).values - FIELD).max() <= error * 1.001 + 5e-4


@pytest.mark.parametrize('values', [np.full((2, 3), 7.25), np.full((2, 3), np.nan), np.array([[1.5]])],
                         ids=['constant', 'all missing', 'one point'])
def test_fields_without_a_range(name, values):
    ny, nx = values.shape
    assert write(name, make_grid(f'll,45,10,{nx},{ny},1,1', values)) == 1
    np.testing.assert_allclose(read(name).values, np.nan_to_num(values, nan=MISS))


@pytest.mark.parametrize('fore, start, end', [('24', 24, 24), ('300', 300, 300), ('90m', 1.5, 1.5), ('0-6acc', 0, 6),
                                              ('6-12avg', 6, 12), ('anal', 0, 0), ('240-264acc', 240, 264)])
def test_forecast_times_come_back(name, fore, start, end):
    assert write(name, make_grid(fore=fore)) == 1
    back = read(name).getForeTime()
    assert (back.getFromHours(), back.getHours()) == (start, end)
    assert back.getType() == ForeTime(fore).getType()


def test_what_edition_1_cannot_say_is_refused(name, capfd):
    assert write(name, make_grid('gnom:45:10,45,10,31,21,0.5,0.5')) == 0
    assert write(name, make_grid(var='MYVAR')) == 0
    assert write(name, make_grid('ll,45,10,30,21,0.5,0.25')) == 0  # the size of the domain is another
    undated = make_grid()
    undated.setDate(Date())
    assert write(name, undated) == 0
    assert capfd.readouterr().err.count('GribFile::write: Unable to write grid: ') == 4
    file = GribFile()
    assert file.write(make_grid()) == 0
    assert file.setValueBits(32) == 0 and file.setDecimalScale(31) == 0
    assert file.open('/nowhere/out.grib', 1) == 0
    assert file.open(name, 7) == 0


@pytest.mark.parametrize('holed', [False, True])
def test_another_decoder_reads_the_same(name, holed):
    eccodes = pytest.importorskip('eccodes')
    values = np.where(RANDOM.random(FIELD.shape) < 0.4, np.nan, FIELD) if holed else FIELD
    assert write(name, make_grid(DOMAINS['lambert'], values), bits=14) == 1
    with open(name, 'rb') as stream:
        message = eccodes.codes_grib_new_from_file(stream)
        eccodes.codes_set(message, 'missingValue', MISS)
        other = eccodes.codes_get_values(message).reshape(21, 31)
        keys = {key: eccodes.codes_get(message, key) for key in ('edition', 'dataDate', 'dataTime', 'level', 'step',
                                                                 'gridType', 'Nx', 'Ny')}
        eccodes.codes_release(message)
    np.testing.assert_allclose(other, read(name).values, rtol=1e-6)
    assert keys == {'edition': 1, 'dataDate': 20261114, 'dataTime': 1200, 'level': 500, 'step': 24,
                    'gridType': 'lambert', 'Nx': 31, 'Ny': 21}
