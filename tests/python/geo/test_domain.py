"""Domains from Python: the linked globals, the lists, what is handed out and what wrong input gives."""

import math

import pytest

from Yul import (CityData, CityFile, Domain, DomainTool, DomainVal, EarthPoint, EarthPoints, EarthRange, GridPoint,
                 GridPoints, Point, Points, Rect, String, Strings, cvar)
import _Yul

MISS = -9999.0
TEXT = 'lamb:40:-95:30:60,40,-95,101,81,0.5'


@pytest.fixture
def earth():
    before = cvar.Domain_earth_rad, cvar.Domain_earth_maj, cvar.Domain_earth_min
    yield
    cvar.Domain_earth_rad, cvar.Domain_earth_maj, cvar.Domain_earth_min = before


def test_the_earth_is_linked_and_reaches_every_conversion(earth):
    assert (cvar.Domain_earth_rad, cvar.Domain_earth_maj, cvar.Domain_earth_min) == (63.7122, 63.78137, 63.56752)
    assert cvar.Domain_OFFSET_LL == 360
    assert cvar.Domain_OFFSET_MERC == pytest.approx(360 * math.radians(63.7122), rel=1e-6)
    domain, point = Domain(TEXT), Point()
    domain.tran(EarthPoint(50, -80), point)
    x = point.x
    cvar.Domain_earth_rad = 2 * 63.7122
    domain.tran(EarthPoint(50, -80), point)
    assert point.x == pytest.approx(2 * x, rel=1e-6)


def test_all_planes_and_lists_meet():
    domain = Domain(TEXT)
    earth, plane, grid = EarthPoints(), Points(), GridPoints()
    for position in ((50, -80), (MISS, 0), (30, -110)):
        earth.add(EarthPoint(*position))
    assert domain.tran(earth, plane) == 0  # one has no image
    assert (plane.get(1).x, plane.get(1).y) == (MISS, MISS)
    assert domain.tran(earth, grid) == 0
    back, point, place = EarthPoints(), Point(), GridPoint()
    domain.tran(grid, back)
    assert back.get(0).lat == pytest.approx(50, abs=1e-4)
    assert domain.tran(plane.get(2), place) == 1
    assert place.x == pytest.approx(grid.get(2).x, abs=1e-4)
    assert domain.tran(101 * 3 + 7, place) == 1
    assert (place.x, place.y) == (7, 3)
    assert domain.tran(101 * 81, point) == 0


def test_records_and_texts():
    val = DomainVal()
    assert DomainTool.decode(TEXT, val) == 1
    assert (val.proj, val.nx, val.getParam(1), val.getParam(9), val.ellipse) == (4, 101, 60, MISS, False)
    assert val.setParam(2, 60.0) == 1 and val.setParam(4, 1.0) == 0
    domain = Domain()
    assert domain.set(Domain(TEXT).get()) == 1
    assert domain.set(domain.get()) == 1
    text = String()
    domain.toString(text)
    assert Domain(text.get()).compare(domain)
    assert DomainTool.setParams(val, Strings('1,2', ','), 'clat,clon') == 1
    assert Domain.getProj('mercator') == DomainTool.proj('me') == 3
    assert domain.compareProj(domain) and domain.isMap()
    limits = domain.getLimits()
    assert limits.x2 == -limits.x1 == 25


def test_what_needs_no_domain_takes_one_too():
    domain, here, there = Domain(TEXT), EarthPoint(40, -95), EarthPoint(41, -95)
    assert _Yul.Domain_getProj('me') == _Yul.Domain_getProj(domain, 'me') == domain.getProj('me') == 3
    distance = Domain.calcEarthDist(here, there)
    assert distance == pytest.approx(math.radians(63.7122), rel=1e-5)
    assert _Yul.Domain_calcEarthDist(domain, here, there) == domain.calcEarthDist(here, there) == distance


@pytest.mark.parametrize('text', ['nowhere', 'ps,1,2,3', '%s', 'x' * 5000, 'é', 'sat:0:0:1,0,0,5,5,1', ''])
def test_no_text_and_no_number_brings_a_domain_down(text):
    domain = Domain()
    domain.set(text)
    for value in (math.nan, math.inf, -math.inf, 1e30, 0, MISS):
        point, place, back = Point(5, 5), GridPoint(5, 5), EarthPoint(5, 5)
        if domain.tran(EarthPoint(value, value), point) == 0:
            assert (point.x, point.y) == (MISS, MISS)
        domain.tran(Point(value, value), back)
        domain.tran(GridPoint(value, value), back)
        domain.tran(Point(value, value), place)
        domain.adjust(Point(value, value))
        domain.set(EarthPoint(value, value), EarthPoint(value, value), 5, 5)
        domain.zoom(EarthPoint(value, 0), value)
        domain.where(Point(value, 0))
        assert domain.adjustDir(value, EarthPoint(value, 0)) <= 360
        Domain.calcEarthDist(EarthPoint(value, value), EarthPoint(1, 1))


def test_stations_and_ranges():
    cities, city = CityFile('sao.cty'), CityData()
    assert cities.getNum() > 6000
    assert cities.find('cyul', city) == 1
    assert (city.getId(), city.getCountry()) == ('CYUL', 'Canada')
    assert cities.find(None, city) == 0
    tropics = EarthRange(-23.5, 170.0, 23.5, -170.0)
    assert tropics.within(EarthPoint(0, 179)) == 1
    assert tropics.within(EarthPoint(0, 160)) == 0
    assert Rect(2, 4, 1, 3).x1 == 1


def test_arrays_of_any_shape_convert_in_one_call():
    np = pytest.importorskip('numpy')
    domain, point, back = Domain(TEXT), Point(), EarthPoint()
    lat = np.linspace(20, 60, 12).reshape(3, 4)
    lon = np.linspace(-130, -60, 12).reshape(3, 4)
    x, y = domain.forward(lat, lon)
    assert x.shape == y.shape == (3, 4) and x.dtype == np.float64
    for i in np.ndindex(3, 4):
        domain.tran(EarthPoint(lat[i], lon[i]), point)
        assert (x[i], y[i]) == pytest.approx((point.x, point.y), abs=1e-4)
    again = domain.inverse(x, y)
    assert np.allclose(again, (lat, lon), atol=1e-9)
    domain.tran(Point(x[0, 0], y[0, 0]), back)
    assert back.lat == pytest.approx(lat[0, 0], abs=1e-4)

    single = domain.forward(lat.astype('f4'), lon.astype('f4'))
    assert single[0].dtype == np.float32 and np.allclose(single, (x, y), atol=1e-4)
    for same in (domain.forward(lat.T, lon.T), domain.forward(lat.astype('>f8').T, lon.astype('f4').T)):
        assert np.allclose(same, (x.T, y.T), atol=1e-4)
    grid_x, _ = domain.forward(lat[:, :1], lon[0])
    assert grid_x.shape == (3, 4)
    assert [a.shape for a in domain.forward(40, -95)] == [(), ()]
    assert [a.size for a in domain.forward([], [])] == [0, 0]
    bad_x, bad_y = domain.forward([91, math.nan, math.inf, MISS, 40], [0, 0, 0, 0, 1e9])
    assert bad_x.tolist() == bad_y.tolist() == [MISS] * 5
    with pytest.raises(ValueError):
        domain.forward([1, 2, 3], [1, 2])
    with pytest.raises(ValueError):
        domain.forward('here', 'there')
    assert np.all(np.array(Domain().forward(lat, lon)) == MISS)
