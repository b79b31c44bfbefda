"""Fields that the test writer made, read back: both editions, every grid, packing width and scanning mode."""

import os
import subprocess
from datetime import datetime, timezone

import numpy as np
import pytest

from gribwriter import Albers, Azimuthal, Lambert, LatLon, Mercator, PolarStereo, SpaceView, grib1, grib2, signed, uint
from sections import join, split
from Yul import Domain, EarthPoint, GribFile, Grid, GridPoint, GridSpec

MISS = -9999.0
AREA = LatLon(60, -20, 40, 10)
RANDOM = np.random.default_rng(5)
FIELD = np.round(RANDOM.uniform(-50, 50, (21, 31)), 1)
HOLED = np.where(RANDOM.random(FIELD.shape) < 0.3, np.nan, FIELD)

WRITERS = {1: grib1, 2: grib2}


def read_one(name):
    grid = Grid()
    file = GribFile(name)
    assert file.read(grid) == 1
    return grid


@pytest.mark.parametrize('edition', WRITERS)
@pytest.mark.parametrize('scan', [0, 0x40, 0x80, 0xc0, 0x20, 0x60, 0xa0, 0xe0])
@pytest.mark.parametrize('field', [FIELD, HOLED], ids=['full', 'holed'])
def test_every_scanning_mode_gives_north_and_west_first(write_grib, edition, scan, field):
    grid = read_one(write_grib(WRITERS[edition](field, AREA, scan=scan)))
    np.testing.assert_allclose(grid.values, np.nan_to_num(field, nan=MISS), atol=1e-4)
    corner = EarthPoint()
    assert grid.tran(GridPoint(0, 0), corner) == 1
    assert (corner.lat, corner.lon) == pytest.approx((60, -20), abs=1e-4)


@pytest.mark.parametrize('scan', [0x10, 0x50, 0x90, 0xd0])
def test_rows_that_alternate_in_direction(write_grib, scan):
    grid = read_one(write_grib(grib2(FIELD, AREA, scan=scan)))
    np.testing.assert_allclose(grid.values, FIELD, atol=1e-4)


@pytest.mark.parametrize('edition', WRITERS)
@pytest.mark.parametrize('bits', [1, 2, 7, 8, 9, 12, 16, 17, 24, 25, 26, 31])
def test_every_width_keeps_its_precision(write_grib, edition, bits):
    grid = read_one(write_grib(WRITERS[edition](HOLED, AREA, bits=bits, decimal_scale=0)))
    span = np.nanmax(FIELD) - np.nanmin(FIELD)
    step = 2.0 ** np.ceil(np.log2(span / (2**bits - 1)))
    present = ~np.isnan(HOLED)
    np.testing.assert_array_equal(grid.values == MISS, ~present)
    assert np.abs(grid.values - HOLED)[present].max() <= step / 2 + 1e-5 * span


@pytest.mark.parametrize('bits', [3, 8, 13, 16, 24])
def test_fields_that_are_read_in_pieces(write_grib, bits):
    """Into one grid, from a file and from what is no file: only that one is always read from its beginning."""
    fields = [np.roll(np.arange(601.0 * 801) % 2**bits, 1000 * i).reshape(601, 801) for i in range(4)]
    for field in fields:
        field[-1, -1] = 2**bits - 1
    name = write_grib(b''.join(grib2(field, LatLon(60, 0, 0, 60), bits=bits, decimal_scale=0) for field in fields))
    grid = Grid()
    with subprocess.Popen(['cat', name], stdout=subprocess.PIPE) as cat:
        for source in (name, f'/dev/fd/{cat.stdout.fileno()}'):
            file = GribFile(source)
            for field in fields:
                assert file.read(grid) == 1
                np.testing.assert_array_equal(grid.values, field)
            assert file.read(grid) == 0


def test_a_field_that_is_cut_within_its_pieces(write_grib, capfd):
    """While it is open, behind its header and further on."""
    field = np.arange(601.0 * 801).reshape(601, 801)
    name = write_grib(grib2(field, LatLon(60, 0, 0, 60), bits=16, decimal_scale=0))
    size = os.path.getsize(name)
    whole = open(name, 'rb').read()
    for octets in (size - 5, size // 2, size // 4, 5000):
        for _ in range(2):
            grid, file = Grid(), GribFile(name)
            assert file.peek(grid) == 1
            os.truncate(name, octets)
            assert file.read(grid) == 0
            assert 'cut short' in capfd.readouterr().err
            assert grid.values is None
            with open(name, 'wb') as again:
                again.write(whole)


@pytest.mark.parametrize('edition', WRITERS)
@pytest.mark.parametrize('field', [np.full((3, 4), 7.5), np.full((3, 4), np.nan), np.full((1, 1), -2.0)],
                         ids=['constant', 'all missing', 'one point'])
def test_fields_without_packed_numbers(write_grib, edition, field):
    grid = read_one(write_grib(WRITERS[edition](field, AREA)))
    np.testing.assert_allclose(grid.values, np.nan_to_num(field, nan=MISS))


GRIDS = {
    'polar': PolarStereo(30, -120, -100, 60000, 60000),
    'south polar': PolarStereo(-30, 20, 10, 60000, 60000, south_pole=True),
    'lambert': Lambert(20, -110, -95, 40000, 40000, 25, 60),
    'tangent lambert': Lambert(20, -110, -95, 40000, 40000, 40, 40),
    'south lambert': Lambert(-50, 10, 20, 40000, 40000, -30, -60),
    'mercator': Mercator(-10, 170, 20, -150, 20, 50000, 50000),
    'albers': Albers(20, -110, -95, 40000, 40000, 25, 60),
    'tangent albers': Albers(20, -110, -95, 40000, 40000, 40, 40),
    'south albers': Albers(-50, 10, 20, 40000, 40000, -30, -60),
    'azimuthal': Azimuthal(45, -10, 54.9, -2.5, 40000, 40000),
    'polar azimuthal': Azimuthal(60, -40, 90, 10, 40000, 40000),
}
EARTH = {1: 6367470, 2: 6371229}


def projection(grid, edition):
    pyproj = pytest.importorskip('pyproj')
    if isinstance(grid, PolarStereo):
        text = (f'+proj=stere +lat_0={-90 if grid.south_pole else 90} '
                f'+lat_ts={-60 if grid.south_pole else 60} +lon_0={grid.orientation}')
    elif isinstance(grid, Azimuthal):
        text = f'+proj=laea +lat_0={grid.lat0} +lon_0={grid.lon0}'
    elif isinstance(grid, Lambert):
        text = f'+proj={"aea" if isinstance(grid, Albers) else "lcc"} +lat_1={grid.latin1} +lat_2={grid.latin2} +lat_0={grid.latin1} +lon_0={grid.orientation}'
    else:
        text = f'+proj=merc +lat_ts={grid.latin} +lon_0={grid.lon1}'
    return pyproj.Proj(f'{text} +R={EARTH[edition]}')


@pytest.mark.parametrize('name, edition', [(name, edition) for name in GRIDS for edition in WRITERS
                                           if edition == 2 or 'azimuthal' not in name])
def test_projected_grids_lie_where_the_message_puts_them(write_grib, name, edition):
    definition = GRIDS[name]
    grid = read_one(write_grib(WRITERS[edition](FIELD, definition, scan=0x40)))
    np.testing.assert_allclose(grid.values, FIELD, atol=1e-4)
    plane = projection(definition, edition)
    x1, y1 = plane(definition.lon1, definition.lat1)
    ny, nx = FIELD.shape
    for column, row in ((0, 0), (nx - 1, 0), (0, ny - 1), (nx - 1, ny - 1), (15, 10)):
        lon, lat = plane(x1 + column * definition.dx, y1 + (ny - 1 - row) * definition.dy, inverse=True)
        earth = EarthPoint()
        assert grid.tran(GridPoint(column, row), earth) == 1
        assert earth.lat == pytest.approx(lat, abs=1e-3)
        assert (earth.lon - lon + 180) % 360 - 180 == pytest.approx(0, abs=2e-3)


@pytest.mark.parametrize('name', [name for name in GRIDS if name != 'mercator'])
def test_grids_on_an_ellipsoid_lie_there_to_a_thousandth_of_their_size(write_grib, name):
    pyproj = pytest.importorskip('pyproj')
    definition = GRIDS[name]
    sections = split(grib2(FIELD, definition, scan=0x40))
    sections[3] = sections[3][:14] + b'\5' + sections[3][15:]  # WGS 84
    grid = read_one(write_grib(join(*(sections[number] for number in sorted(sections)))))
    plane = pyproj.Proj(projection(definition, 2).definition_string().split(' R=')[0] + ' ellps=WGS84')
    x1, y1 = plane(definition.lon1, definition.lat1)
    ny, nx = FIELD.shape
    for column in (0, nx / 2, nx - 1):
        for row in (0, ny / 2, ny - 1):
            lon, lat = plane(x1 + column * definition.dx, y1 + (ny - 1 - row) * definition.dy, inverse=True)
            earth = EarthPoint()
            assert grid.tran(GridPoint(column, row), earth) == 1
            assert earth.lat == pytest.approx(lat, abs=nx * definition.dx / 1e3 / 111200)
            across = ((earth.lon - lon + 180) % 360 - 180) * np.cos(np.radians(lat))
            assert across == pytest.approx(0, abs=nx * definition.dx / 1e3 / 111200)


@pytest.mark.parametrize('edition', WRITERS)
@pytest.mark.parametrize('view', [SpaceView(0, 10, 12, 9, 3, 1, 100, 6.6107), SpaceView(0, -75, 40, 30, 30, 20, 3000, 6.6)])
def test_pictures_of_satellites_lie_on_the_earth(write_grib, edition, view):
    pyproj = pytest.importorskip('pyproj')
    grid = read_one(write_grib(WRITERS[edition](FIELD, view)))
    np.testing.assert_allclose(grid.values, FIELD, atol=1e-4)
    height = (view.distance - 1) * EARTH[edition]
    plane = pyproj.Proj(f'+proj=geos +h={height} +lon_0={view.lon} +R={EARTH[edition]}')
    angle = 2 * np.arcsin(1 / view.distance) / view.diameter
    for column, row in ((0, 0), (30, 0), (0, 20), (30, 20), (17, 9)):
        lon, lat = plane((column + view.x0 - view.x) * angle * height, (view.y - row - view.y0) * angle * height, inverse=True)
        earth = EarthPoint()
        assert grid.tran(GridPoint(column, row), earth) == 1
        assert (earth.lat, earth.lon) == pytest.approx((lat, lon), abs=1e-3)


@pytest.mark.parametrize('earth, radius', [
    (b'\1' + uint(0, 1) + uint(6370000, 4) + bytes(10), 6370000),
    (b'\1' + uint(2, 1) + uint(637000000, 4) + bytes(10), 6370000),  # with a scale factor
    (b'\1' + uint(0, 1) + uint(6370, 4) + bytes(10), EARTH[2]),      # no earth
    (b'\1' + b'\xff' * 5 + bytes(10), EARTH[2]),                    # not given
    (b'\3' + bytes(5) + (uint(0, 1) + uint(6370, 4)) * 2, 6370000),
    (b'\7' + bytes(5) + (uint(0, 1) + uint(6370000, 4)) * 2, 6370000),
    (b'\0' + bytes(15), 6367470),
])
def test_the_size_of_the_earth(write_grib, earth, radius):
    """Seen in the length of a meridian: so many rows of 40 km from the first point to the last."""
    pyproj = pytest.importorskip('pyproj')
    definition = GRIDS['polar azimuthal']
    grid = read_one(write_grib(damaged(definition, 15, earth)))
    plane = pyproj.Proj(projection(definition, 2).definition_string().replace(f'R={EARTH[2]}', f'R={radius}'))
    x1, y1 = plane(definition.lon1, definition.lat1)
    lon, lat = plane(x1 + 30 * definition.dx, y1 + 20 * definition.dy, inverse=True)
    last = EarthPoint()
    assert grid.tran(GridPoint(30, 0), last) == 1
    assert (last.lat, last.lon) == pytest.approx((lat, lon), abs=2e-3)


def damaged(grid, octet, octets):
    """A message with other octets in its grid definition."""
    sections = split(grib2(FIELD, grid, scan=0x40))
    sections[3] = sections[3][:octet - 1] + octets + sections[3][octet - 1 + len(octets):]
    return join(*(sections[number] for number in sorted(sections)))


@pytest.mark.parametrize('grid, octet, octets, fault', [
    ('lambert', 39, signed(95000000, 4), 'first point is not on the earth'),
    ('lambert', 56, bytes(4), 'spacing of the grid is not given'),
    ('azimuthal', 56, uint(4000000000, 4), 'middle of the grid lies outside the projection'),
    ('lambert', 66, signed(30000000, 4) + signed(-30000000, 4), 'standard parallels 30 and -30'),
    ('azimuthal', 47, signed(91000000, 4), 'reference position is not on the earth'),
    ('azimuthal', 39, signed(-54900000, 4) + signed(177500000, 4), 'first point lies outside the projection'),
    ('polar', 48, signed(91000000, 4), 'reference position is not on the earth'),
    ('mercator', 48, signed(90000000, 4), 'latitude of true scale is not given'),
    ('mercator', 65, uint(4000000000, 4), 'grid of more than one turn'),
    ('view', 69, uint(900000, 4), 'view from space without its height or the size of the earth'),
    ('view', 48, bytes(4), 'view from space without its height or the size of the earth'),
    ('view', 65, signed(30000000, 4), 'view from space turned by 30 degrees'),
    ('view', 73, signed(90, 4), 'middle of the picture is not on the earth'),
])
def test_grids_that_lie_nowhere_are_refused_and_told(write_grib, grid, octet, octets, fault, capfd):
    definition = GRIDS.get(grid) or SpaceView(0, 10, 12, 9, 3, 1, 100, 6.6107)
    name = write_grib(damaged(definition, octet, octets), grib2(FIELD, AREA))
    assert [each.getDomain().get().proj for each in GribFile(name)] == [Domain.LATLON]
    assert capfd.readouterr().err == f'GribFile::read: {name}: field of the message at octet 0 skipped: {fault}\n'


@pytest.mark.parametrize('west, east', [(0, 359), (-180, 179), (170, 200), (0, 360)])
def test_longitudes_run_on_across_every_seam(write_grib, west, east):
    field = np.arange(3.0 * 31).reshape(3, 31)
    grid = read_one(write_grib(grib2(field, LatLon(10, west, -10, east))))
    step = (east - west) / 30
    for column in (0, 15, 30):
        earth = EarthPoint()
        assert grid.tran(GridPoint(column, 0), earth) == 1
        assert (earth.lon - west - column * step + 180) % 360 - 180 == pytest.approx(0, abs=1e-3)


@pytest.mark.parametrize('edition', WRITERS)
def test_grid_says_what_the_message_says(write_grib, edition):
    time = datetime(2026, 2, 28, 18, tzinfo=timezone.utc)
    parameter, level = {1: (7, (100, 500)), 2: ((0, 3, 5), (100, 50000))}[edition]
    grid = read_one(write_grib(WRITERS[edition](FIELD, AREA, parameter=parameter, level=level, time=time, hours=36,
                                                centre=7, process=96)))
    assert (grid.getVersion(), grid.getSource(), grid.getModel()) == (edition, 7, 96)
    assert grid.getGenName() == 'GFS'
    assert grid.getVar().getName() == 'HGT'
    assert grid.info == 'Geopotential height [gpm]'
    assert grid.getForeHours() == 36
    assert (grid.date.getYear(), grid.date.getMonth(), grid.date.getDay(), grid.date.getHour()) == (2026, 2, 28, 18)
    assert GridSpec('HGT,500mb,36h').match(grid.getSpec())
    assert grid.getDatim() == '18Z 28 FEB 2026'


def test_unknown_parameters_are_named_by_their_numbers(write_grib):
    assert read_one(write_grib(grib2(FIELD, AREA, parameter=(3, 200, 201)))).getVar().getName() == 'VAR_3_200_201'
    assert read_one(write_grib(grib1(FIELD, AREA, parameter=250, table=199))).getVar().getName() == 'VAR_255_199_250'


@pytest.mark.parametrize('parallels, first, rows', [(16, 0, 32), (47, 0, 94), (32, 10, 20)])
def test_rows_of_a_gaussian_grid_know_their_parallels(write_grib, parallels, first, rows):
    sines, _ = np.polynomial.legendre.leggauss(2 * parallels)
    lats = np.degrees(np.arcsin(sines))[::-1][first:first + rows]
    values = RANDOM.uniform(0, 100, (rows, 12)).round(1)
    octets = bytearray(grib1(values, LatLon(lats[0], 0, lats[-1], 330)))
    octets[36 + 5] = 4  # a Gaussian grid
    octets[36 + 25:36 + 27] = parallels.to_bytes(2, 'big')
    file = GribFile(write_grib(octets))
    grid = Grid()
    assert file.read(grid) == 1
    np.testing.assert_allclose(grid.values, values, atol=0.06)
    header = file.getHeader()
    np.testing.assert_allclose([header.getRowLat(row) for row in range(rows)], lats, atol=1e-9)
    assert header.getRowLat(-1) == header.getRowLat(rows) == MISS
    corner = EarthPoint()
    for row in range(rows):  # the domain has them equally apart
        assert grid.tran(GridPoint(0, row), corner) == 1
        assert corner.lat == pytest.approx(lats[row], abs=1.2 / parallels)


def test_rows_of_other_grids(write_grib):
    file = GribFile(write_grib(grib2(FIELD, AREA), grib2(FIELD, GRIDS['lambert'], scan=0x40)))
    grid = Grid()
    assert file.read(grid) == 1
    assert file.getHeader().getRowLat(0) == pytest.approx(60) and file.getHeader().getRowLat(20) == pytest.approx(40)
    assert file.read(grid) == 1
    assert file.getHeader().getRowLat(0) == MISS
