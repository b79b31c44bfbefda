"""Files of messages: what lies between them, what is damaged, what is asked for."""

import os

import numpy as np
import pytest

from gribwriter import LatLon, grib1, grib2
from running import python
from sections import join, png_packed, split
from Yul import EarthPoint, Filename, GribFile, Grid, GridFile, GridPoint, Grids, GridSpec

AREA = LatLon(50, 0, 40, 10)
FIELD = np.arange(30.0).reshape(5, 6)


def message(value=0.0, edition=2, **arguments):
    return (grib2 if edition == 2 else grib1)(FIELD + value, AREA, **arguments)


def first_values(name):
    file = GribFile(name)
    grid = Grid()
    found = []
    while file.read(grid):
        found.append(round(grid.getValue(0, 0)))
    return found


def test_octets_between_messages_are_passed_over(write_grib):
    name = write_grib(b'\r\r\nHTXA50 KWBC 141200\r\r\n', message(1), b'\0' * 90, message(2, edition=1), b'GRI', message(3),
                      b'\0' * 500)
    assert first_values(name) == [1, 2, 3]


def test_a_message_is_looked_for_at_1000_positions(write_grib, capfd):
    assert first_values(write_grib(b'x' * 999, message(1))) == [1]
    assert capfd.readouterr().err == ''
    assert first_values(write_grib(b'x' * 1000, message(1))) == []
    assert capfd.readouterr().err == 'searchGRIB failed to find GRIB: 0\n'


def test_an_index_file_tells_where_bulletins_begin(write_grib, tmp_path, capfd):
    heading, junk = b'HTXA50 KWBC 141200\r\r\n', b'x' * 5000
    parts = [message(0), junk, heading, message(1), junk, heading, b'no message', heading, message(2), heading, message(3)]
    name = write_grib(*parts)
    starts = [sum(map(len, parts[:i])) for i, part in enumerate(parts) if part == heading]
    index = tmp_path / 'index'
    index.write_text('first line\n' + ''.join(f'{start} HTXA50 KWBC 141200 / ABC\n' for start in starts[:3] + [10**12]))
    for kind in (GribFile, GridFile):
        file = kind(Filename(name, str(index)))
        for _ in range(2):
            assert [round(grid.getValue(0, 0)) for grid in file] == [1, 2]
            assert file.rewind() == 1
    reader = GribFile(Filename(name, str(index)))
    assert reader.next() == 1
    first = reader.getLoc()
    for octet, found in ((first, [1, 2]), (first + 1, [2]), (starts[0], [1, 2])):
        assert reader.setLoc(octet) == 1
        assert [round(grid.getValue(0, 0)) for grid in reader] == found
    assert capfd.readouterr().err == ''
    file.useHdrFile(0)
    assert [round(grid.getValue(0, 0)) for grid in file] == [0]
    assert capfd.readouterr().err == f'searchGRIB failed to find GRIB: {len(parts[0])}\n'
    os.mkfifo(tmp_path / 'pipe')  # which nobody writes to
    for other in ('', str(tmp_path / 'none'), str(tmp_path), '/dev/zero', str(tmp_path / 'pipe')):
        assert len(list(GribFile(Filename(name, other)))) == 1


@pytest.mark.parametrize('octets', [b'', b'GRIB', b'no grid in here', b'GRIB\0\0\0\2\0\0\0\0', b'x' * 5000])
def test_other_files_give_one_message(write_grib, capfd, octets):
    name = write_grib(octets)
    grid = Grid()
    assert GribFile(name).read(grid) == 0
    assert not grid.isData()
    assert len(capfd.readouterr().err.splitlines()) == 1


def test_a_missing_file_gives_one_message(tmp_path, capfd):
    file = GribFile(str(tmp_path / 'none.grib'))
    assert not file.isOpen()
    assert file.read(Grid()) == 0
    assert file.rewind() == 0
    assert capfd.readouterr().err.count('\n') == 1


@pytest.mark.parametrize('edition', [1, 2])
def test_every_truncation_ends_cleanly(write_grib, capfd, edition):
    whole = message(1, edition=edition, bits=12)
    for length in range(len(whole) - 4):
        assert first_values(write_grib(whole[:length])) == []
        lines = capfd.readouterr().err.splitlines()
        assert len(lines) == 1, (length, lines)


@pytest.mark.parametrize('edition', [1, 2])
def test_no_changed_octet_does_harm(write_grib, capfd, edition):
    whole = message(1, edition=edition, bits=7)
    for position in range(4, len(whole)):
        for value in (0, 255, whole[position] ^ 0x80):
            octets = bytearray(whole)
            octets[position] = value
            first_values(write_grib(octets))
    capfd.readouterr()


def test_reading_goes_on_behind_a_damaged_message(write_grib, capfd):
    damaged = bytearray(message(2))
    damaged[16:20] = (5000).to_bytes(4, 'big')  # the first section is longer than the message
    big_gap = bytes(2000)
    assert first_values(write_grib(message(1), damaged, message(3))) == [1, 3]
    assert capfd.readouterr().err.count('skipped') == 1
    assert first_values(write_grib(message(1), damaged, big_gap, message(3))) == [1, 3]


def test_a_section_of_impossible_length_ends_the_message(write_grib, capfd):
    octets = bytearray(message(1))
    octets[16:20] = (10000001).to_bytes(4, 'big')
    assert first_values(write_grib(octets, message(2))) == [2]
    assert capfd.readouterr().err == 'readSection: invalid length: 10000001\n'


def test_lengths_in_units_of_120_octets(write_grib, capfd):
    octets = bytearray(message(7, edition=1, bits=16))
    section = 36 + int.from_bytes(octets[36:39], 'big')
    octets[-4:-4] = bytes(100)  # a data section longer than what is needed
    units = (len(octets) + 119) // 120
    octets[4:7] = (0x800000 | units).to_bytes(3, 'big')
    octets[section:section + 3] = (units * 120 - len(octets) + 4).to_bytes(3, 'big')
    assert first_values(write_grib(octets, message(2))) == [7, 2]
    octets[section:section + 3] = (119).to_bytes(3, 'big')
    octets[4:7] = (0x800001).to_bytes(3, 'big')  # one unit: shorter than its sections
    assert first_values(write_grib(octets, message(2))) == [2]
    assert capfd.readouterr().err.count('skipped') == 1


def test_two_sevens_end_a_message(write_grib):
    octets = bytearray(message(1))
    octets[-2:] = b'xx'
    assert first_values(write_grib(octets, message(2))) == [1, 2]


def test_fields_of_one_message_are_grids_of_their_own(write_grib):
    one, two = split(message(1, hours=1)), split(message(2, hours=2))
    name = write_grib(join(one[1], one[3], one[4], one[5], one[6], one[7], two[4], two[5], two[6], two[7],
                           one[3], one[4], one[5], one[6], one[7]))
    file = GribFile(name)
    hours = []
    while file.read(grid := Grid()):
        hours.append((round(grid.getValue(0, 0)), grid.getForeHours()))
    assert hours == [(1, 1), (2, 2), (1, 1)]


def test_a_field_can_refer_to_the_bitmap_before(write_grib, capfd):
    holed = np.where(FIELD % 3 == 0, np.nan, FIELD)
    first = split(grib2(holed, AREA))
    again = first[6][:5] + b'\xfe'
    again = (6).to_bytes(4, 'big') + again[4:]
    name = write_grib(join(first[1], first[3], first[4], first[5], first[6], first[7], first[4], first[5], again, first[7]),
                      join(first[1], first[3], first[4], first[5], again, first[7]))
    grids = Grids()
    assert GribFile(name).read(grids) == 1
    assert grids.getNum() == 2  # the last one refers to nothing
    assert 'earlier bitmap' in capfd.readouterr().err
    np.testing.assert_array_equal(grids.get(0).values, grids.get(1).values)
    assert grids.get(1).getValid() == 20


def test_a_bitmap_is_kept_while_a_pipe_is_read(write_grib):
    first, full = split(grib2(np.where(FIELD % 3 == 0, np.nan, FIELD), AREA)), split(message(1))
    again = (6).to_bytes(4, 'big') + b'\6\xfe'
    octets = join(first[1], *(first[i] for i in range(3, 8)), *(full[i] for i in range(4, 8)), first[4], first[5], again, first[7])
    program = 'from Yul import GribFile\nprint(*(grid.getValid() for grid in GribFile("-")))'
    result = python(program, input=octets + message(2) + octets)
    assert result.stdout == b'20 30 20 30 20 30 20\n', result.stderr


def test_what_cannot_be_held_is_named_and_passed_over(write_grib, capfd):
    def with_template(section, number):
        octets = bytearray(message(9))
        parts = split(bytes(octets))
        offset = {3: 12, 4: 7, 5: 9}[section]
        part = bytearray(parts[section])
        part[offset:offset + 2] = number.to_bytes(2, 'big')
        parts[section] = bytes(part)
        return join(*(parts[i] for i in sorted(parts)))

    name = write_grib(with_template(3, 101), with_template(4, 999), with_template(5, 61), message(1))
    assert first_values(name) == [1]
    lines = capfd.readouterr().err.splitlines()
    assert [text in line for line, text in zip(lines, ('unstructured', 'template 4.999', 'template 5.61'))] == [True] * 3


def test_a_huge_grid_in_a_few_octets_is_refused_before_anything_is_allocated(write_grib, capfd):
    parts = split(message(1))
    grid = bytearray(parts[3])
    grid[6:10] = (2**31 - 1).to_bytes(4, 'big')
    grid[30:34] = (2**31 - 1).to_bytes(4, 'big')
    grid[34:38] = (1).to_bytes(4, 'big')
    constant = bytearray(parts[5])
    constant[5:9] = (2**31 - 1).to_bytes(4, 'big')
    constant[19] = 0
    name = write_grib(join(parts[1], bytes(grid), parts[4], bytes(constant), parts[6], parts[7]))
    assert first_values(name) == []
    assert '2147483647 by 1' in capfd.readouterr().err


def test_peek_describes_without_reading_on(write_grib):
    file = GribFile(write_grib(message(1, hours=3), message(2, hours=6)))
    grid = Grid()
    assert file.peek(grid) == 1 and file.peek(grid) == 1
    assert grid.getForeHours() == 3 and not grid.isData()
    assert (grid.getNx(), grid.getNy()) == (6, 5)
    assert file.read(grid) == 1 and grid.getForeHours() == 3 and grid.isData()
    assert file.next() == 1 and file.next() == 0
    assert file.rewind() == 1
    assert file.next() == 1 and file.read(grid) == 1 and grid.getForeHours() == 6
    assert file.getHeader().getForeTime().getFore() == 6


def test_a_grid_spec_finds_its_field(write_grib):
    name = write_grib(*(message(h, hours=h, level=(100, p * 100)) for p in (850, 500) for h in (0, 6, 12)))
    file = GribFile(name)
    grid = Grid()
    assert file.read(GridSpec('HGT,500mb,6h'), grid) == 1
    assert round(grid.getValue(0, 0)) == 6 and grid.getLevel().getValue() == 500
    assert file.read(GridSpec('HGT,850mb'), grid) == 0  # they lie before
    assert file.rewind() == 1
    assert file.read(GridSpec('HGT,850mb,12h'), grid) == 1


def test_a_grid_keeps_its_memory_between_messages(write_grib):
    file = GribFile(write_grib(message(1), message(2)))
    grid = Grid()
    assert file.read(grid) == 1
    view = grid.values
    assert file.read(grid) == 1
    assert view[0, 0] == pytest.approx(2)


def test_several_files_are_read_as_one(tmp_path, capfd):
    names = []
    for number in (1, 2, 3):
        path = tmp_path / f'{number}.grib'
        if number != 2:
            path.write_bytes(message(number))
        names.append(str(path))
    files = Filename(names[0])
    files.add(names[1])
    files.add(names[2])
    file = GribFile(files)
    grid = Grid()
    assert [file.read(grid) and round(grid.getValue(0, 0)) for _ in range(3)] == [1, 3, 0]
    assert capfd.readouterr().err.count(names[1]) == 1


def test_standard_input(write_grib):
    program = ('from Yul import GribFile, Grid\n'
               'file = GribFile("-")\n'
               'print(file.peek(Grid()), *(round(g.getValue(0, 0)) for g in file), file.rewind())')
    octets = b'heading\r\r\n' + message(1) + b'\0' * 20 + message(2, edition=1) + message(3)
    result = python(program, input=octets)
    assert result.stdout == b'1 1 2 3 0\n', result.stderr


def test_bad_data_are_reported(write_grib, capfd):
    noise = np.random.default_rng(1).choice([0.0, 100.0], (5, 6))
    file = GribFile(write_grib(grib2(noise, AREA), message(1)))
    grid = Grid()
    file.setMaxBad(3)
    assert file.read(grid) == 0 and file.isBad()
    assert 'bad data' in capfd.readouterr().err
    assert file.read(grid) == 1 and not file.isBad()
    file.rewind()
    assert file.read(grid) == 0 and file.peek(grid) == 1 and not file.isBad()
    file.rewind()
    file.setMaxBad(0)
    assert file.read(grid) == 1


def test_bad_data_end_no_file_of_several(write_grib, capfd):
    noise = np.random.default_rng(1).choice([0.0, 100.0], (5, 6))
    first = write_grib(grib2(noise, AREA), message(1), grib2(noise, AREA), name='first')
    for kind in (GribFile, GridFile):
        names = Filename(first)
        names.add(write_grib(message(2), name='second'))
        file, grid = kind(names), Grid()
        file.setMaxBad(3)
        assert [file.read(grid) and round(grid.getValue(0, 0)) for _ in range(5)] == [0, 1, 0, 2, 0]
        assert (file.rewind(), [round(grid.getValue(0, 0)) for grid in file]) == (1, [1, 2])
        assert capfd.readouterr().err.count('bad data') == 4
        assert (file.close(), file.rewind(), file.isOpen()) == (1, 0, False)


def test_fields_that_lie_nowhere_do_not_count(write_grib, capfd):
    nowhere = grib2(FIELD, LatLon(95, 0, 40, 10))
    file, grid = GribFile(write_grib(message(1), nowhere, message(2), nowhere, message(3))), Grid()
    assert (file.next(), file.next(), file.read(grid), round(grid.getValue(0, 0))) == (1, 1, 1, 3)
    assert capfd.readouterr().err.count('first point is not on the earth') == 2


def test_values_asked_for_are_those_of_the_header(write_grib, capfd):
    octets = bytearray(png_packed(message(), np.zeros((5, 6)), 8))
    octets[octets.index(b'\x89PNG')] = 0
    file, grid = GridFile(write_grib(octets, message(1))), Grid()
    assert (file.readHdr(grid), file.readData(grid), grid.isData()) == (1, 0, False)
    assert 'Not a PNG file' in capfd.readouterr().err
    assert (file.readHdr(grid), file.readData(grid), round(grid.getValue(0, 0))) == (1, 1, 1)
    assert (file.readData(grid), file.read(grid)) == (0, 0)


def test_check_type_looks_at_200_octets(write_grib):
    assert GribFile.checkType(write_grib(b' ' * 196 + b'GRIB')) == 1
    assert GribFile.checkType(write_grib(b' ' * 197 + b'GRIB')) == 0
    assert GribFile.checkType('/nowhere') == 0


def test_an_inventory_comes_from_the_headers(write_grib):
    name = write_grib(*(message(p + h, hours=h, level=(100, p * 100)) for p in (850, 500) for h in (0, 6)),
                      message(2, edition=1, parameter=11, level=(105, 2)))
    records = GribFile(name).inventory()
    if not isinstance(records, list):
        records = records.to_dict('records')
    assert [(r['name'], r['level'], r['hours']) for r in records] == [
        ('HGT', 850, 0), ('HGT', 850, 6), ('HGT', 500, 0), ('HGT', 500, 6), ('TMP', 2, 0)]
    assert records[0]['date'].hour == 12 and records[4]['edition'] == 1
    assert [round(grid.getValue(0, 0)) for grid in GribFile(name).select(name='HGT', level=500, hours=6)] == [506]
    assert [round(grid.getValue(0, 0)) for grid in GribFile(name).select(level=850)] == [850, 856]
    with pytest.raises(TypeError, match='colour'):
        list(GribFile(name).select(colour=1))
    with pytest.raises(OSError):
        GribFile().inventory()


# Grids named by number: size, and the corner opposite to the first point as the centre publishes it.
PREDEFINED = {
    2: (144, 73, -90, -2.5),
    3: (360, 181, -90, -1),
    204: (93, 68, 60.644, -109.129),
    208: (29, 27, 28.092, -145.878),
    210: (25, 25, 26.422, -58.625),
    211: (93, 65, 57.290, -49.385),
    212: (185, 129, 57.290, -49.385),
    215: (369, 257, 57.290, -49.385),
}


def named_by_number(values, number):
    """A message without a grid description, whose values belong to a grid of that number."""
    octets = bytearray(grib1(values, AREA))
    del octets[36:36 + int.from_bytes(octets[36:39], 'big')]
    octets[4:7] = len(octets).to_bytes(3, 'big')
    octets[14], octets[15] = number, 0
    return octets


@pytest.mark.parametrize('number', PREDEFINED)
def test_a_grid_named_by_number_lies_where_its_centre_says(write_grib, number):
    nx, ny, lat, lon = PREDEFINED[number]
    grid = Grid()
    assert GribFile(write_grib(named_by_number(np.zeros((ny, nx)) + 3, number))).read(grid) == 1
    assert (grid.getNx(), grid.getNy(), grid.getType()) == (nx, ny, number)
    earth = EarthPoint()
    assert grid.tran(GridPoint(nx - 1, ny - 1 if number < 200 else 0), earth) == 1
    assert (earth.lat, earth.lon) == pytest.approx((lat, lon), abs=2e-3)


# Grids with one value for a pole: number, columns, rows without the pole, western and eastern edge.
POLAR_CAPS = [(21, 37, 36, 0, 180), (22, 37, 36, -180, 0), (23, 37, 36, 0, 180), (24, 37, 36, -180, 0),
              (25, 72, 18, 0, -5), (26, 72, 18, 0, -5), (61, 91, 45, 0, 180), (62, 91, 45, -180, 0),
              (63, 91, 45, 0, 180), (64, 91, 45, -180, 0)]
SOUTHERN = (23, 24, 26, 63, 64)


def check_polar_cap(grid, field, pole_value, is_south, west, east):
    """field has its rows from south to north, without the pole's."""
    values = np.array(grid.values)
    pole, rest = (values[-1], values[:-1]) if is_south else (values[0], values[1:])
    np.testing.assert_allclose(pole, pole_value, atol=0.06)
    np.testing.assert_allclose(rest, field[::-1], atol=0.06)
    first, last = EarthPoint(), EarthPoint()
    assert grid.tran(GridPoint(0, 0), first) and grid.tran(GridPoint(grid.getNx() - 1, grid.getNy() - 1), last)
    assert (first.lat, last.lat) == pytest.approx((0, -90) if is_south else (90, 0), abs=1e-4)
    for lon, expected in ((first.lon, west), (last.lon, east)):
        assert (lon - expected + 180) % 360 - 180 == pytest.approx(0, abs=1e-3)


@pytest.mark.parametrize('number, nx, rows, west, east', POLAR_CAPS)
def test_one_value_for_a_pole_fills_its_row(write_grib, number, nx, rows, west, east):
    field = np.random.default_rng(number).uniform(0, 100, (rows, nx)).round(1)
    is_south = number in SOUTHERN
    coded = np.concatenate([[250.0], field.ravel()] if is_south else [field.ravel(), [250.0]])
    grid = Grid()
    assert GribFile(write_grib(named_by_number(coded[None, :], number))).read(grid) == 1
    check_polar_cap(grid, field, 250, is_south, west, east)


@pytest.mark.parametrize('is_south', [False, True])
def test_row_lengths_that_say_one_value_for_a_pole(write_grib, is_south):
    field = np.random.default_rng(3).uniform(0, 100, (9, 8)).round(1)
    coded = np.concatenate([[250.0], field.ravel()] if is_south else [field.ravel(), [250.0]])
    octets = bytearray(grib1(coded[None, :], LatLon(0, 0, 0, 315), scan=0x40))
    pole = 46 if is_south else 53  # the latitude of the first or the last point
    octets[pole:pole + 3] = (90000 | is_south << 23).to_bytes(3, 'big')
    lengths = [1] + 9 * [8] if is_south else 9 * [8] + [1]
    octets[36:39] = (32 + 20).to_bytes(3, 'big')
    octets[36 + 4] = 33  # where the list begins
    octets[42:46] = b'\xff\xff' + (10).to_bytes(2, 'big')
    octets[36 + 23:36 + 27] = (45000).to_bytes(2, 'big') + (10000).to_bytes(2, 'big')
    octets[36 + 32:36 + 32] = b''.join(n.to_bytes(2, 'big') for n in lengths)
    octets[4:7] = len(octets).to_bytes(3, 'big')
    grid = Grid()
    assert GribFile(write_grib(octets)).read(grid) == 1
    check_polar_cap(grid, field, 250, is_south, 0, -45)


@pytest.mark.parametrize('number, text', [(37, 'rows of different lengths'), (99, 'predefined grid 99')])
def test_a_grid_named_by_another_number_is_refused(write_grib, capfd, number, text):
    assert first_values(write_grib(named_by_number(FIELD, number))) == []
    assert text in capfd.readouterr().err


def test_fields_are_found_again_at_their_place(write_grib):
    junk = b'no message here\n' * 5
    name = write_grib(*(part for i in range(5) for part in (junk, grib2(FIELD + i, AREA))))
    file, places = GribFile(name), []
    assert file.getLoc() == -9999
    while file.peek(grid := Grid()):
        places.append(file.getLoc())
        file.next()
    with open(name, 'rb') as octets:
        content = octets.read()
    assert all(content[place:place + 4] == b'GRIB' for place in places) and len(places) == 5
    for i in (3, 0, 4, 4, 1):
        assert file.setLoc(places[i]) == 1 and file.read(grid) == 1
        assert (grid.values[0, 0], file.getLoc()) == (FIELD[0, 0] + i, places[i])
    assert file.setLoc(places[2] - 1) == 1 and file.read(grid) == 1 and file.getLoc() == places[2]
    for place in (len(content), 2**62):
        assert file.setLoc(place) == 1 and file.read(grid) == 0
    assert file.setLoc(-1) == 0 and GribFile().setLoc(0) == 0
