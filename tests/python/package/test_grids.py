"""Grids in Python: arrays, arithmetic, places, xarray, and parts of list items."""

import datetime
import gc

import numpy as np
import pytest

from Yul import Domain, EarthPoint, ForeTime, Grid, Grids

MISS = -9999


def grid_of(values, domain='ll,45,10,3,2,5,5', **fields):
    return Grid.from_array(np.array(values, 'f'), domain, **fields)


@pytest.fixture
def grid():
    return grid_of([[1, 2, np.nan], [4, 5, 6]], date='12Z 14 NOV 2026', level='500mb', fore='24h', var='HGT', source=7,
                   model=96)


def test_an_array_becomes_a_grid(grid):
    assert grid.values.tolist() == [[1, 2, MISS], [4, 5, 6]]
    assert (grid.getInfo(), grid.getUnits(), grid.getDatim()) == ('Geopotential height [gpm]', 'gpm', '12Z 14 NOV 2026')
    assert str(grid.getSpec()) == 'HGT,500mb,24h,7:96'
    assert grid.valid.datetime == datetime.datetime(2026, 11, 15, 12, tzinfo=datetime.timezone.utc)
    masked = Grid.from_array(np.ma.masked_equal([[1, 2], [3, 2]], 2), 'll,0,0,2,2,1,1', units='K', info='Own',
                             date=datetime.datetime(2026, 1, 2, 3))
    assert masked.values.tolist() == [[1, MISS], [3, MISS]]
    assert (masked.getInfo(), masked.getDatim()) == ('Own [K]', '03:00:00Z  2 JAN 2026')
    for fore in (6, 6.0, '6 h', datetime.timedelta(hours=6), np.timedelta64(6, 'h'), ForeTime(6)):
        assert str(Grid.from_array([[1]], 'll,0,0,1,1,1,1', fore=fore, level=850.0).getSpec()) == ',850mb,6h'
    day = Grid.from_array([[1]], Domain('ll,0,0,1,1,1,1'), date=np.datetime64('2026-01-02'))
    assert day.date.getDay() == 2


@pytest.mark.parametrize('arguments, fields', [
    (([1, 2], 'll,0,0,2,1,1,1'), {}),
    (([[1, 2]], 'll,0,0,3,1,1,1'), {}),
    (([[1, 2]], 'no such domain'), {}),
    ((np.empty((0, 2)), 'll,0,0,2,2,1,1'), {}),
    (([[1]], 'll,0,0,1,1,1,1'), {'level': 'no level'}),
    (([[1]], 'll,0,0,1,1,1,1'), {'fore': 'no time'}),
    (([[1]], 'll,0,0,1,1,1,1'), {'date': 'no date'}),
])
def test_what_makes_no_grid_raises(arguments, fields):
    with pytest.raises(ValueError):
        Grid.from_array(*arguments, **fields)


@pytest.mark.filterwarnings('ignore:.*encountered in log')
def test_arithmetic_keeps_missing_values_and_fields(grid):
    other = grid_of([[1, 1, 1], [2, 2, MISS]], var='TMP')
    cases = [
        (grid + 1, [[2, 3, MISS], [5, 6, 7]]),
        (1 - grid, [[0, -1, MISS], [-3, -4, -5]]),
        ((grid + other) / 2, [[1, 1.5, MISS], [3, 3.5, MISS]]),
        (-grid, [[-1, -2, MISS], [-4, -5, -6]]),
        (abs(-grid), [[1, 2, MISS], [4, 5, 6]]),
        (grid ** 2, [[1, 4, MISS], [16, 25, 36]]),
        (np.maximum(grid, 3), [[3, 3, MISS], [4, 5, 6]]),
        (np.sqrt(np.maximum(grid - 5, 0)), [[0, 0, MISS], [0, 0, 1]]),
        (np.log(grid - 5), [[MISS, MISS, MISS], [MISS, -np.inf, 0]]),
        (grid * np.array([1, 0, 2], 'f'), [[1, 0, MISS], [4, 0, 12]]),
        (np.array([[1], [0]], 'f') * grid, [[1, 2, MISS], [0, 0, 0]]),
    ]
    for result, expected in cases:
        assert isinstance(result, Grid) and result.values.tolist() == expected
        assert result.getVar().getName() == 'HGT' and result.getLevel().getValue() == 500
    assert grid.values.tolist() == [[1, 2, MISS], [4, 5, 6]]
    grid += other
    assert grid.values.tolist() == [[2, 3, MISS], [6, 7, MISS]]
    assert (grid > 2).tolist() == [[False, True, False], [True, True, False]]
    assert np.isnan(grid).tolist() == [[False, False, True], [False, False, True]]
    assert np.nanmean(grid) == 4.5 and np.isnan(np.mean(grid))
    assert np.asarray(grid, 'd').dtype == np.float64
    for nonsense in (lambda: grid + 'text', lambda: np.add.at(grid, (0, 0), 1)):
        with pytest.raises(TypeError):
            nonsense()
    with pytest.raises(ValueError):
        grid + np.zeros((5, 5))


def test_values_at_places_are_those_of_single_places(grid):
    random = np.random.default_rng(4)
    for domain in ('ll,45,10,30,20,1,0.5', 'lamb:45:10:30:60,45,10,30,20,1,0.5', 'ps:90:10,45,10,30,20,1,0.5'):
        field = random.normal(280, 10, (20, 30)).astype('f')
        field[random.random(field.shape) < 0.02] = MISS
        grid = Grid.from_array(field, domain)
        lat, lon = random.uniform(38, 52, 500), random.uniform(-6, 26, 500)
        lat[0], lon[1] = np.nan, 1e30
        single = [grid.getValue(EarthPoint(float(a), float(b))) if np.isfinite(a) else MISS
                  for a, b in zip(lat.astype('f'), lon.astype('f'))]
        found = grid.at(lat.astype('f'), lon.astype('f'))
        assert found.dtype == np.float32 and 100 < np.count_nonzero(found != MISS) < 500
        assert np.abs(found - single).max() < 0.01
    assert isinstance(grid.at(45, 10), float)
    assert grid.at(np.full((3, 1), 45), np.full(4, 10)).shape == (3, 4)
    assert Grid().at([45, 46], 10).tolist() == [MISS, MISS]
    lats, lons = grid.getDomain().lats[1:-1, 1:-1], grid.getDomain().lons[1:-1, 1:-1]
    whole = Grid.from_array(random.normal(280, 10, (20, 30)), 'ps:90:10,45,10,30,20,1,0.5')
    assert np.abs(whole.at(lats, lons) - whole.values[1:-1, 1:-1]).max() < 0.01


def test_parts_of_list_items_do_not_dangle(grid):
    grids = Grids()
    grids.add(grid)
    domain, level = grids[0].getDomain(), grids[0].getLevel()
    val = domain.get()
    for _ in range(100):
        grids.add(grid)
    assert domain.getNx() == 3 and val.nx == 3 and level.getValue() == 500
    grids[0].setLevel('850mb')
    assert level.getValue() == 850
    grids.clear()
    gc.collect()
    assert domain.isMiss() and val.nx == MISS and not level.isSet()
    grids.add(grid)
    assert domain.getNx() == 3 and val.nx == 3 and level.getValue() == 500
    del grids
    gc.collect()
    assert domain.getNx() == 3


def test_a_grid_becomes_a_data_array(grid):
    xarray = pytest.importorskip('xarray', reason='xarray is not installed')
    array = grid.to_xarray()
    assert array.dims == ('latitude', 'longitude') and array.name == 'HGT'
    assert array.latitude.values.tolist() == [47.5, 42.5] and array.longitude.values.tolist() == [5, 10, 15]
    assert np.isnan(array.values).tolist() == [[False, False, True], [False] * 3]
    assert array.attrs['standard_name'] == 'geopotential_height' and array.attrs['units'] == 'gpm'
    assert float(array.isobaric) == 500 and array.isobaric.attrs['units'] == 'hPa'
    assert array.time.values == np.datetime64('2026-11-15T12:00') and array.forecast_period.values == np.timedelta64(24, 'h')
    assert array.crs.attrs['grid_mapping_name'] == array.attrs['grid_mapping'].replace('crs', 'latitude_longitude')
    assert float(array.sel(latitude=42.5, longitude=10)) == 5

    polar = grid_of(np.arange(6).reshape(2, 3), 'ps:90:10,45,10,3,2,1,2', fore='0-6 acc', var='APCP').to_xarray()
    assert polar.dims == ('y', 'x') and polar.latitude.dims == ('y', 'x')
    assert np.diff(polar.x.values).tolist() == pytest.approx([1e5, 1e5]) and np.diff(polar.y.values) == pytest.approx(-2e5)
    assert polar.attrs['cell_methods'] == 'time: sum'
    assert polar.crs.attrs['grid_mapping_name'] == 'polar_stereographic'
    proj = pytest.importorskip('pyproj').Proj(grid_of([[0]], 'ps:90:10,45,10,1,1,1,2').getDomain().proj.replace(
        'to_meter=100000', 'to_meter=1'))
    x, y = proj(polar.longitude.values, polar.latitude.values)
    assert np.abs(x - polar.x.values).max() < 10 and np.abs(y - polar.y.values[:, None]).max() < 10
    seam = grid_of(np.zeros((2, 3)), 'll,0,180,3,2,1,1').to_xarray()
    assert seam.longitude.values.tolist() == [179, 180, 181]
    bare = Grid(2, 2).to_xarray()
    assert bare.dims == ('y', 'x') and isinstance(bare, xarray.DataArray)
    with pytest.raises(ValueError):
        Grid().to_xarray()
