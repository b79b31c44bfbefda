"""Every map projection beside PROJ, on the same earth, ten thousand positions each."""

import math

import numpy as np
import pytest

from Yul import Domain, EarthPoint, EarthPoints, Point, Points, cvar

pyproj = pytest.importorskip('pyproj')

R = 6371220.0
METRES = 1e5  # in a unit of 100 km
AXES = '+a=6378137 +b=6356752'
POINTS = 10_000

# domain, PROJ, latitudes, longitudes, metres in a unit of the plane. The offsets of origins are PROJ's lat_0 or its
# own; what is left is a constant, taken off.
CASES = [
    ('ll:0:-95,0,-95,9,9,1', '+proj=eqc +lon_0=-95', (-90, 90), (-180, 180), R * math.pi / 180),
    ('ps:90:-95,60,-95,9,9,1', '+proj=stere +lat_0=90 +lat_ts=60 +lon_0=-95', (-74.9, 90), (-180, 180), METRES),
    ('ps:60:20:45,60,20,9,9,1', '+proj=stere +lat_0=90 +lat_ts=45 +lon_0=20', (-74.9, 90), (-180, 180), METRES),
    ('ps:-90:10,-60,10,9,9,1', '+proj=stere +lat_0=-90 +lat_ts=-60 +lon_0=10', (-90, 74.9), (-180, 180), METRES),
    ('radial,35,-97,9,9,1', '+proj=stere +lat_0=90 +lat_ts=60 +lon_0=-97', (20, 50), (-120, -70), METRES),
    ('merc,0,-95,9,9,1', '+proj=merc +lon_0=-95', (-89, 89), (-180, 180), METRES),
    ('merc:e,20,-95,9,9,1', '+proj=merc +lon_0=-95 ' + AXES, (-89, 89), (-180, 180), METRES),
    ('merc:e:0:15:30,20,15,9,9,1', '+proj=merc +lat_ts=30 +lon_0=15 ' + AXES, (-89, 89), (-180, 180), METRES),
    ('lamb:40:-95,40,-95,9,9,1', '+proj=lcc +lat_1=30 +lat_2=60 +lat_0=90 +lon_0=-95', (-60, 90), (-180, 180), METRES),
    ('lamb:25:-95:25,40,-95,9,9,1', '+proj=lcc +lat_1=25 +lat_2=25 +lat_0=90 +lon_0=-95', (-60, 90), (-180, 180), METRES),
    ('lamb:-40:140,-40,140,9,9,1', '+proj=lcc +lat_1=-30 +lat_2=-60 +lat_0=-90 +lon_0=140', (-90, 60), (-180, 180),
     METRES),
    ('lambaz:45:-95,45,-95,9,9,1', '+proj=laea +lat_0=45 +lon_0=-95', (-90, 90), (-180, 180), METRES),
    ('lambaz:-90:0,-90,0,9,9,1', '+proj=laea +lat_0=-90 +lon_0=0', (-90, 80), (-180, 180), METRES),
    ('albers:40:-95,40,-95,9,9,1', '+proj=aea +lat_1=30 +lat_2=60 +lat_0=40 +lon_0=-95', (-89.9, 90), (-180, 180),
     METRES),
    ('albers:-20:130:-18:-36,-20,130,9,9,1', '+proj=aea +lat_1=-18 +lat_2=-36 +lat_0=-20 +lon_0=130', (-90, 89.9),
     (-180, 180), METRES),
    ('ortho:45:-95,45,-95,9,9,1', '+proj=ortho +lat_0=45 +lon_0=-95', (-90, 90), (-180, 180), METRES),
    ('ortho:-30:170,-30,170,9,9,1', '+proj=ortho +lat_0=-30 +lon_0=170', (-90, 90), (-180, 180), METRES),
    ('gnom:45:-95,45,-95,9,9,1', '+proj=gnom +lat_0=45 +lon_0=-95', (0, 90), (-150, -40), METRES),
    ('gnom:-90:0,-90,0,9,9,1', '+proj=gnom +lat_0=-90 +lon_0=0', (-90, -20), (-180, 180), METRES),
    ('moll:0:-95,0,-95,9,9,1', '+proj=moll +lon_0=-95', (-90, 90), (-180, 180), METRES),
    ('sat,0,-75,9,9,.001', '+proj=geos +h=35792780 +lon_0=-75', (-80, 80), (-155, 5), 421.64e5 - R),
    ('sat:e,0,140.7,9,9,.001', f'+proj=geos +h={421.64e5 - 6378137} +lon_0=140.7 ' + AXES, (-80, 80), (60, 180),
     421.64e5 - 6378137),
]


def lists(made, item, pairs):
    for a, b in pairs.tolist():
        made.add(item(a, b))
    return made


def arrays(made):
    return np.array([list(item) for item in made])


def hidden(text, plat, plon, lat, lon):
    """Positions that the projection need not or cannot show."""
    lat, lon, plat = np.radians(lat), np.radians(lon - plon), math.radians(plat)
    cosine = np.sin(plat) * np.sin(lat) + np.cos(plat) * np.cos(lat) * np.cos(lon)
    limit = {'or': 1e-6, 'gn': 0.15, 'sa': 0.3, 'la': -0.9999 if text.startswith('lambaz') else -2}.get(text[:2], -2)
    return cosine < limit


@pytest.mark.parametrize('text, peer, lats, lons, unit', CASES, ids=[case[0] for case in CASES])
def test_agrees_with_proj(text, peer, lats, lons, unit):
    domain = Domain(text)
    plat, plon = domain.get().plat, domain.get().plon
    random = np.random.default_rng(5)
    positions = np.stack([random.uniform(*lats, POINTS), random.uniform(*lons, POINTS)], axis=1).astype(np.float32)
    positions = positions[~hidden(text, plat, plon, *positions.astype(float).T)]
    # a position on the seam may land on either side
    positions = positions[abs((positions[:, 1] - plon + 540) % 360 - 180) < 179.99]
    assert len(positions) > POINTS / 10
    projection = pyproj.Proj(peer if '+a=' in peer else f'{peer} +R={R}')
    x, y = projection(*positions.astype(float).T[::-1])
    expected = np.stack([x, y], axis=1) / unit
    if text.startswith('radial'):
        expected -= np.array(projection(plon, plat)) / unit

    earth = lists(EarthPoints(), EarthPoint, positions)
    plane, back = Points(), EarthPoints()
    assert domain.tran(earth, plane) == 1
    assert domain.tran(plane, back) == 1
    ours = arrays(plane)
    extent = np.ptp(ours, axis=0).max()
    assert abs(ours - expected).max() < 2e-6 * extent

    # The inverse, from PROJ's own plane rounded to float, where a float resolves 2e-5 degrees on the earth.
    rounded = expected.astype(np.float32)
    points = lists(Points(), Point, rounded)
    assert domain.tran(points, back) == 1
    found = arrays(back)
    shifted = rounded.astype(float) * unit
    if text.startswith('radial'):
        shifted += projection(plon, plat)
    lon, lat = projection(*shifted.T, inverse=True)
    turn = (found[:, 1] - lon + 540) % 360 - 180
    inside = np.isfinite(lat) & np.isfinite(lon)
    assert inside.mean() > 0.99
    assert abs(found[:, 0] - lat)[inside].max() < 2e-5
    assert abs(turn * np.cos(np.radians(lat)))[inside].max() < 2e-5


@pytest.mark.parametrize('text, peer, lats, lons, unit', CASES[1:],
                         ids=[case[0] for case in CASES[1:]])
def test_scale_and_north_agree_with_the_peers_derivatives(text, peer, lats, lons, unit):
    domain = Domain(text)
    plat, plon = domain.get().plat, domain.get().plon
    projection = pyproj.Proj(peer if '+a=' in peer else f'{peer} +R={R}')
    a, b = (6378137.0, 6356752.0) if '+a=' in peer else (R, R)
    random = np.random.default_rng(6)
    step = 1e-4
    tried = 0
    for lat, lon in zip(random.uniform(*lats, 200), random.uniform(*lons, 200)):
        lat, lon = float(np.float32(lat)), float(np.float32(lon))
        turn = abs((lon - plon + 540) % 360 - 180)
        if hidden(text, plat, plon, np.array([lat]), np.array([lon]))[0] or turn > 179 or abs(lat) > 88:
            continue
        tried += 1
        at = [projection(lon + i * step, lat + j * step) for i, j in ((1, 0), (-1, 0), (0, 1), (0, -1))]
        east = np.subtract(at[0], at[1]) / (2 * math.radians(step))
        north = np.subtract(at[2], at[3]) / (2 * math.radians(step))
        e2 = 1 - (b / a) ** 2
        w = math.sqrt(1 - e2 * math.sin(math.radians(lat)) ** 2)
        area = a / w * math.cos(math.radians(lat)) * a * (1 - e2) / w ** 3
        scale = math.sqrt((east[0] * north[1] - east[1] * north[0]) / area) * METRES / unit
        bearing = math.degrees(math.atan2(*north))
        earth = EarthPoint(lat, lon)
        assert domain.getMapFactor(earth) == pytest.approx(scale, rel=2e-4)
        turned = domain.adjustDir(100.0, earth)
        assert abs((turned - 100 - bearing + 540) % 360 - 180) < 0.01
        assert 0 <= turned < 360
        assert abs((domain.unadjustDir(turned, earth) - 100 + 540) % 360 - 180) < 1e-3
    assert tried > 20


@pytest.mark.parametrize('text', [case[0] for case in CASES] + [
    'ps:-90:10:60,-60,10,9,9,1', 'ps:90:10:-30,60,10,9,9,1',  # true on the other hemisphere
    'radial:-30:20,-30,20,5,5,1',
])
def test_exports_its_plane(text):
    domain = Domain(text)
    peer = pyproj.Proj(domain.proj)
    point = Point()
    for lat, lon in ((5, 3), (-3, -4)):
        earth = EarthPoint(domain.get().clat + (lat if abs(domain.get().clat) < 80 else math.copysign(4, -domain.get().clat)),
                           domain.get().clon + lon)
        assert domain.tran(earth, point) == 1
        assert list(point) == pytest.approx(peer(earth.lon, earth.lat), rel=2e-6, abs=2e-5)
    if domain.cf is not None:
        crs = pyproj.CRS.from_cf(domain.cf)
        if domain.cf['grid_mapping_name'] != 'latitude_longitude':
            assert pyproj.CRS.from_proj4(domain.proj.split(' +to_meter')[0]).to_dict()['proj'] == crs.to_dict()['proj']


def test_gives_the_positions_of_its_grid():
    domain = Domain('ll:0:0,10,20,41,21,.5')
    assert domain.lats.shape == domain.lons.shape == (21, 41)
    assert (domain.lats[20, 4], domain.lons[20, 4]) == (5, 12)
    assert Domain().lats is None and Domain('ll,0,0,2000000000,2000000000,1').lons is None
    assert Domain('skewt,500,0').proj is None and Domain('gnom,0,0,5,5,1').cf is None


def test_exports_nothing_without_a_plane():
    for text in ('', 'lamb:40:-95:30:-30,40,-95,5,5,1', 'sat:0:0:10,0,0,5,5,1', 'merc:e:0:0:95,0,0,5,5,1'):
        assert Domain(text).proj is None and Domain(text).cf is None
    radar = Domain('radial:35:-97::60,35,-97,5,5,1')
    cvar.Domain_earth_rad = 63.7122
    assert '+R=6371220 ' in radar.proj and cvar.Domain_earth_rad == 63.7122  # looking changes nothing
