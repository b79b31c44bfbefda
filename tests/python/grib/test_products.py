"""What a message says of its field: product templates, periods, ensembles, local parameters."""

import numpy as np
import pytest

from gribwriter import LatLon, grib1, grib2
from sections import join, split
from Yul import ForeTime, GribFile, GribParam, Grid

try:
    import pandas
except ImportError:
    pandas = None

PANDAS = pandas is not None
AREA = LatLon(50, 0, 40, 10)
FIELD = np.arange(30.0).reshape(5, 6)
NONE = -9999


def uint(value, octets):
    return value.to_bytes(octets, 'big')


def surface(kind, value):
    return uint(kind, 1) + uint(0, 1) + uint(value, 4)


def period(year, month, day, hour, length):
    """One time range of an accumulation that ends then, `length` hours long."""
    return (uint(year, 2) + bytes([month, day, hour, 0, 0, 1]) + uint(0, 4) + bytes([1, 2, 1]) + uint(length, 4)
            + bytes([255]) + uint(0, 4))


MEMBER = bytes([3, 7, 20])
ENDS_AT_18Z = period(2026, 11, 14, 18, 3)  # a forecast of 12Z, from hour 3 to 6

# number, octets between the parameter and the generating process, what follows the surfaces, start, end, member
TEMPLATES = [
    (0, 0, b'', 3, 3, NONE),
    (1, 0, MEMBER, 3, 3, 7),
    (2, 0, bytes([0, 20]), 3, 3, NONE),
    (5, 0, bytes(13), 3, 3, NONE),
    (6, 0, bytes([50]), 3, 3, NONE),
    (7, 0, b'', 3, 3, NONE),
    (8, 0, ENDS_AT_18Z, 3, 6, NONE),
    (8, 0, b'\xff\xff' + ENDS_AT_18Z[2:], 3, 6, NONE),  # of no date: the length tells
    (9, 0, bytes(13) + ENDS_AT_18Z, 3, 6, NONE),
    (10, 0, bytes([90]) + ENDS_AT_18Z, 3, 6, NONE),
    (11, 0, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (12, 0, bytes([0, 20]) + ENDS_AT_18Z, 3, 6, NONE),
    (15, 0, bytes([2, 0, 4]), 3, 3, NONE),
    (40, 2, b'', 3, 3, NONE),
    (41, 2, MEMBER, 3, 3, 7),
    (42, 2, ENDS_AT_18Z, 3, 6, NONE),
    (43, 2, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (45, 13, MEMBER, 3, 3, 7),
    (46, 13, ENDS_AT_18Z, 3, 6, NONE),
    (47, 13, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (48, 24, b'', 3, 3, NONE),
    (49, 24, MEMBER, 3, 3, 7),
    (60, 0, MEMBER + bytes(7), 3, 3, 7),
    (61, 0, MEMBER + bytes(7) + ENDS_AT_18Z, 3, 6, 7),
    (76, 3, b'', 3, 3, NONE),
    (77, 3, MEMBER, 3, 3, 7),
    (78, 3, ENDS_AT_18Z, 3, 6, NONE),
    (79, 3, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (55, 6, b'', 3, 3, NONE),
    (56, 6, bytes([7, 20]), 3, 3, 7),
    (59, 6, MEMBER, 3, 3, 7),
    (62, 6, ENDS_AT_18Z, 3, 6, NONE),
    (63, 6, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (70, 5, b'', 3, 3, NONE),
    (71, 5, MEMBER, 3, 3, 7),
    (72, 5, ENDS_AT_18Z, 3, 6, NONE),
    (73, 5, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (80, 25, b'', 3, 3, NONE),
    (81, 25, MEMBER, 3, 3, 7),
    (82, 14, ENDS_AT_18Z, 3, 6, NONE),
    (83, 14, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (84, 14, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (85, 13, MEMBER + ENDS_AT_18Z, 3, 6, 7),
    (86, 0, bytes([0, 3, 0, 1]), 3, 3, NONE),
    (87, 0, bytes([0, 3, 0, 1]) + ENDS_AT_18Z, 3, 6, NONE),
    (103, 11, b'', 3, 3, NONE),
    (104, 11, MEMBER, 3, 3, 7),
    (105, 0, ENDS_AT_18Z + bytes(30), 3, 6, NONE),
    (107, 0, ENDS_AT_18Z + bytes(30), 3, 6, NONE),
]


def with_product(number, shift, surfaces, tail):
    """A message with another product definition: a forecast of 3 hours for 500 hPa."""
    sections = split(grib2(FIELD, AREA))
    octets = (uint(0, 2) + uint(number, 2) + bytes([3, 5]) + bytes(shift) + bytes([2, 0, 96, 0, 0, 0, 1]) + uint(3, 4)
              + surfaces + tail)
    sections[4] = uint(5 + len(octets), 4) + bytes([4]) + octets
    return join(*(sections[number] for number in sorted(sections)))


def read(name):
    file, grid = GribFile(name), Grid()
    assert file.read(grid) == 1
    return grid, file.getHeader()


@pytest.mark.parametrize('number, shift, tail, start, end, member', TEMPLATES, ids=[row[0] for row in TEMPLATES])
def test_product_templates(write_grib, number, shift, tail, start, end, member):
    surfaces = surface(100, 50000) + b'\xff' * 6
    grid, header = read(write_grib(with_product(number, shift, surfaces, tail)))
    fore = grid.getForeTime()
    assert (fore.getFromHours(), fore.getHours()) == (start, end)
    assert (grid.getLevel().getType(), grid.getLevel().getValue()) == (100, 500)
    assert (grid.getModel(), header.getTemplate(), header.getMember()) == (96, number, member)
    assert grid.getVar().getName() == 'HGT'
    if start != end:
        assert fore.getType() == ForeTime('0-6acc').getType()


def test_local_templates_of_precipitation_from_radar(write_grib, capfd):
    octets = bytearray(with_product(50008, 0, surface(1, 0) + b'\xff' * 6, ENDS_AT_18Z + bytes(24)))
    assert GribFile(write_grib(octets)).read(Grid()) == 0
    assert 'product template 4.50008' in capfd.readouterr().err
    for number, tail, hours in ((50000, bytes(24), 3), (50008, ENDS_AT_18Z, 6), (50012, ENDS_AT_18Z, 6)):
        octets = bytearray(with_product(number, 0, surface(1, 0) + b'\xff' * 6, tail))
        octets[16 + 5:16 + 7] = uint(34, 2)  # the centre whose templates they are
        grid, header = read(write_grib(octets))
        fore = grid.getForeTime()
        assert (fore.getFromHours(), fore.getHours(), header.getTemplate()) == (3, hours, number)


LIMITS = bytes([1, 5, 1]) + bytes([1]) + uint(125, 4) + bytes([255]) + b'\xff' * 4  # above an upper limit: none below

# template, what follows the surfaces; derived, percentile, probability, lower, upper
ENSEMBLES = [
    (0, b'', (NONE, NONE, NONE, NONE, NONE)),
    (2, bytes([4, 20]), (4, NONE, NONE, NONE, NONE)),
    (6, bytes([90]), (NONE, 90, NONE, NONE, NONE)),
    (5, LIMITS, (NONE, NONE, 1, 12.5, NONE)),
    (9, bytes([1, 5, 2, 128 + 2]) + uint(1 << 31 | 3, 4) + bytes([2]) + uint(250, 4) + ENDS_AT_18Z, (NONE, NONE, 2, -300, 2.5)),
]


@pytest.mark.parametrize('number, tail, expected', ENSEMBLES)
def test_what_was_made_of_an_ensemble(write_grib, number, tail, expected):
    name = write_grib(with_product(number, 0, surface(100, 50000) + b'\xff' * 6, tail))
    _, header = read(name)
    assert (header.getDerived(), header.getPercentile(), header.getProbability(), header.getLowerLimit(),
            header.getUpperLimit()) == expected
    assert len(list(GribFile(name).select(percentile=90))) == (expected[1] == 90)


def test_a_definition_leaves_nothing_to_the_next_one(write_grib):
    limits = split(with_product(5, 0, surface(100, 50000) + b'\xff' * 6, LIMITS))
    picture = split(with_product(31, 0, b'', bytes(8)))
    both = join(*(limits[number] for number in sorted(limits) if number < 8), *(picture[number] for number in sorted(picture) if number > 3))
    file = GribFile(write_grib(both))
    headers = [(file.getHeader().getProbability(), file.getHeader().getLowerLimit()) for _ in file]
    assert headers == [(1, 12.5), (NONE, NONE)]


def test_a_simulated_picture_has_bands_in_place_of_a_level(write_grib):
    grid, _ = read(write_grib(with_product(32, 0, bytes([1]) + bytes(10) + bytes([100]), b'')))
    assert grid.getForeHours() == 3
    assert grid.getLevel().getValue() == NONE


@pytest.mark.parametrize('first, second, value, value2', [
    (surface(106, 0), uint(106, 1) + uint(2, 1) + uint(10, 4), 0, 10),  # metres below land, given in centimetres
    (surface(104, 1), surface(104, 0), 1, 0),
    (surface(103, 2), b'\xff' * 6, 2, NONE),
    (surface(108, 3000), surface(108, 0), 30, 0),  # a layer above the ground, in Pa
])
def test_layers_have_two_levels(write_grib, first, second, value, value2):
    grid, _ = read(write_grib(with_product(0, 0, first + second, b'')))
    assert (grid.getLevel().getValue(), grid.getLevel().getValue2()) == pytest.approx((value, value2))


# indicator, P1, P2, number included, start, end, and a text of that kind
RANGES = [
    (0, 12, 0, 0, 12, 12, '12'),
    (1, 0, 0, 0, 0, 0, 'anal'),
    (1, 3, 0, 0, 3, 3, '3'),
    (2, 6, 12, 0, 6, 12, None),
    (3, 6, 12, 0, 6, 12, '6-12avg'),
    (4, 6, 12, 0, 6, 12, '6-12acc'),
    (5, 6, 12, 0, 6, 12, '6-12diff'),
    (10, 1, 44, 0, 300, 300, '300'),
    (113, 6, 24, 30, 6, 6, '0-6avg'),
    (115, 6, 3, 5, 6, 18, '6-18avg'),
    (123, 0, 6, 5, 0, 24, '0-24avg'),
    (124, 0, 6, 5, 0, 24, '0-24acc'),
    (128, 6, 12, 30, 6, 12, '6-12avg'),
    (132, 6, 12, 30, 6, 12, '6-12avg'),
    (133, 6, 12, 30, 6, 12, '6-12avg'),
    (136, 6, 12, 30, 6, 12, None),
    (140, 6, 12, 30, 6, 12, '6-12avg'),
]


@pytest.mark.parametrize('indicator, p1, p2, number, start, end, like', RANGES)
def test_time_range_indicators(write_grib, indicator, p1, p2, number, start, end, like):
    octets = bytearray(grib1(FIELD, AREA))
    octets[8 + 18:8 + 23] = bytes([p1, p2, indicator]) + uint(number, 2)
    grid, _ = read(write_grib(octets))
    fore = grid.getForeTime()
    assert (fore.getFromHours(), fore.getHours()) == (start, end)
    assert like is None or fore.getType() == ForeTime(like).getType()


def test_time_range_indicators_of_another_centre(write_grib):
    octets = bytearray(grib1(FIELD, AREA, centre=34))
    octets[8 + 18:8 + 23] = bytes([6, 12, 132]) + uint(30, 2)  # a variance at P1
    grid, _ = read(write_grib(octets))
    assert (grid.getForeTime().getFromHours(), grid.getForeTime().getHours()) == (6, 6)


@pytest.mark.parametrize('unit, count, hours', [(0, 30, 0.5), (1, 3, 3), (2, 2, 48), (3, 1, 720), (10, 2, 6), (11, 2, 12),
                                                (12, 2, 24), (13, 2, 0.5), (14, 3, 1.5), (254, 180, 0.05)])
def test_time_units_of_edition_1(write_grib, unit, count, hours):
    octets = bytearray(grib1(FIELD, AREA))
    octets[8 + 17:8 + 19] = bytes([unit, count])
    grid, _ = read(write_grib(octets))
    assert grid.getForeTime().getSeconds() / 3600 == pytest.approx(hours)


# centre, table, number: name and units; parameters with and without a variable of their own
LOCAL = [
    (98, 128, 167, 'TMP', 'K'),
    (98, 128, 164, 'TCDC', '1'),
    (98, 128, 8, 'SRO', 'm'),
    (98, 228, 2, 'OROG', 'm'),
    (7, 2, 33, 'UGRD', 'm s-1'),
    (7, 129, 128, 'PAOT', '%'),
    (7, 128, 130, 'ELEV', 'm'),
    (34, 3, 11, 'TMP', 'K'),
]


@pytest.mark.parametrize('centre, table, number, name, units', LOCAL)
def test_parameters_of_local_tables(write_grib, centre, table, number, name, units):
    row = GribParam()
    assert row.find(1, number, centre, table, 0) == 1
    assert (row.getName(), row.getUnits()) == (name, units)
    grid, _ = read(write_grib(grib1(FIELD, AREA, centre=centre, table=table, parameter=number)))
    assert grid.getVar().getName() == name
    assert grid.info == f'{row.getText()} [{units}]'


@pytest.mark.parametrize('discipline, category, number, name, units', [
    (192, 128, 167, 'TMP', 'K'), (0, 1, 193, 'APCP', 'm'), (0, 6, 192, 'TCDC', '1'), (192, 255, 250, '', '')])
def test_parameters_that_moved_to_edition_2(discipline, category, number, name, units):
    row = GribParam()
    assert row.find(2, number, 98, 1, GribParam.makeKey(discipline, category)) == (name != '')
    assert (row.getName(), row.getUnits(), row.getNumber()) == (name, units, number if name else NONE)
    assert row.find(2, number, 34, 1, GribParam.makeKey(discipline, category)) == 0


def test_fields_coded_for_a_centre_use_its_tables(write_grib):
    octets = bytearray(grib1(FIELD, AREA, centre=74, table=128, parameter=167))
    assert read(write_grib(octets))[0].getVar().getName() == 'VAR_74_128_167'
    octets[8 + 25] = 98
    assert read(write_grib(octets))[0].getVar().getName() == 'TMP'
    octets[8 + 9:8 + 12] = bytes([210, 0, 50])  # level in Pa
    assert read(write_grib(octets))[0].getLevel().getValue() == 0.5


def test_a_row_of_ones_own_goes_before_the_tables(write_grib):
    row = GribParam()
    row.set(250, 34, 199, 0)
    row.setText('MINE', 'furlong', 'A quantity of my own')
    file = GribFile()
    assert file.setParam(1, row) == 1
    assert file.open(write_grib(grib1(FIELD, AREA, centre=34, table=199, parameter=250))) == 1
    grid = Grid()
    assert file.read(grid) == 1
    assert (grid.getVar().getName(), grid.info) == ('MINE', 'A quantity of my own [furlong]')


def test_a_row_given_late_goes_before_the_tables_too(write_grib):
    file, grid, row = GribFile(write_grib(grib1(FIELD, AREA, centre=7, parameter=7))), Grid(), GribParam()
    names = []
    for table, name in ((None, ''), (0, 'ANY'), (2, 'SECOND'), (0, 'OTHER')):
        if table is not None:
            row.set(7, 7, table, 0)
            row.setText(name, 'm', '')
            assert file.setParam(1, row) == 1
        assert file.rewind() == 1 and file.read(grid) == 1
        names.append(grid.getVar().getName())
    assert names == ['HGT', 'ANY', 'ANY', 'OTHER']  # the first that was given of those that fit


# centre, sub-centre, octets from 41 on, member
MEMBERS = [
    (98, 0, bytes([1, 1, 11]) + bytes(6) + bytes([23, 50]), 23),
    (98, 0, bytes([1, 1, 10]) + bytes(6) + bytes([0, 50]), 0),
    (98, 0, bytes([1, 1, 9]) + bytes(8), NONE),  # one forecast
    (98, 0, bytes([36, 1, 2]) + bytes(6) + bytes([3, 10]), 3),  # an analysis of several
    (74, 98, bytes([12, 5, 17]) + bytes(6) + bytes([1, 2]), 258),  # coded by another centre for one
    (7, 2, bytes([1, 3, 4, 1, 255]), 4),
    (7, 0, bytes([1, 3, 4, 1, 255]), NONE),
    (7, 2, b'', NONE),
]


@pytest.mark.parametrize('centre, sub_centre, local, member', MEMBERS)
def test_members_of_ensembles_in_edition_1(write_grib, centre, sub_centre, local, member):
    octets = bytearray(grib1(FIELD, AREA, centre=centre))
    octets[8 + 25] = sub_centre
    octets[36:36] = bytes(12) + local
    octets[8:11] = uint(40 + len(local), 3)
    octets[4:7] = uint(len(octets), 3)
    name = write_grib(octets)
    grid, header = read(name)
    assert header.getMember() == member
    np.testing.assert_allclose(grid.values, FIELD, atol=0.06)
    record, = list(GribFile(name).inventory().to_dict('records')) if PANDAS else GribFile(name).inventory()
    assert record['member'] == (None if member == NONE else member) or record['member'] != record['member']
    assert len(list(GribFile(name).select(member=None if member == NONE else member))) == 1


def test_a_picture_of_a_satellite_has_neither_level_nor_forecast(write_grib):
    sections = split(grib2(FIELD, AREA, parameter=(3, 1, 2), hours=3))
    sections[4] = uint(33, 4) + b'\4' + uint(0, 2) + uint(31, 2) + bytes([1, 2, 8, 42, 1]) + bytes(19)
    grid, header = read(write_grib(join(*(sections[number] for number in sorted(sections)))))
    assert (grid.getModel(), grid.getForeHours(), grid.getLevel().getValue(), header.getTemplate()) == (42, 0, NONE, 31)
    np.testing.assert_allclose(grid.values, FIELD, atol=0.05)
