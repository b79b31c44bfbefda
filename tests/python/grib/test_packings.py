"""Packings that another library writes, read back: every kind of block and group that real fields lead to."""

import numpy as np
import pytest

from gribwriter import LatLon, grib2
from peer import packed
from sections import join, png_packed, section, split
from Yul import GribFile, Grid, Yul

MISS = -9999.0
RANDOM = np.random.default_rng(12)
SHAPE = (37, 60)
WAVES = np.sin(np.arange(60) / 9) * np.cos(np.arange(37) / 5)[:, None]
FIELDS = {
    'smooth': 280 + 20 * WAVES,
    'noise': RANDOM.uniform(-1e3, 1e3, SHAPE),
    'steps': np.round(3 * WAVES),
    'mostly zero': np.where(RANDOM.random(SHAPE) < 0.003, RANDOM.uniform(0, 50, SHAPE), 0.0),
    'constant': np.full(SHAPE, 4.25),
    'rough and still': np.where(np.arange(60) < 30, RANDOM.normal(size=SHAPE), 0.0),
}
PACKINGS = ['grid_simple', 'grid_complex', 'grid_ieee', 'grid_jpeg', 'grid_ccsds']


@pytest.mark.parametrize('packing', PACKINGS)
@pytest.mark.parametrize('bits', [8, 12, 16, 24])
@pytest.mark.parametrize('name', FIELDS)
@pytest.mark.parametrize('missing', [False, True], ids=['full', 'holed'])
def test_another_library_reads_the_same(write_grib, packing, bits, name, missing):
    field = np.where(RANDOM.random(SHAPE) < 0.2, MISS, FIELDS[name]) if missing else FIELDS[name]
    octets, expected = packed(field, packing, bits, missing)
    grid = Grid()
    assert GribFile(write_grib(octets)).read(grid) == 1
    np.testing.assert_array_equal(np.asarray(grid.values) == MISS, expected == MISS)
    np.testing.assert_allclose(grid.values, expected, rtol=1e-6, atol=1e-9)


SECOND_ORDER = ['no_SPD', 'SPD1', 'SPD2', 'SPD3', 'boustrophedonic']


@pytest.mark.parametrize('form', SECOND_ORDER)
@pytest.mark.parametrize('name', ['smooth', 'noise', 'mostly zero'])
@pytest.mark.parametrize('missing', [False, True], ids=['full', 'holed'])
def test_second_order_packing_of_another_library(write_grib, form, name, missing):
    field = np.where(RANDOM.random(SHAPE) < 0.2, MISS, FIELDS[name]) if missing else FIELDS[name]
    octets, expected = packed(field, f'grid_second_order_{form}', 16, missing, edition=1)
    grid = Grid()
    assert GribFile(write_grib(octets)).read(grid) == 1
    np.testing.assert_allclose(grid.values, expected, rtol=1e-6, atol=1e-9)


def test_a_damaged_stream_is_named(write_grib, capfd):
    octets, _ = packed(FIELDS['noise'], 'grid_ccsds', 16, False)
    cut = bytearray(octets[:-1004] + b'7777')
    section = 16
    while cut[section + 4] != 7:
        section += int.from_bytes(cut[section:section + 4], 'big')
    cut[section:section + 4] = (len(cut) - 4 - section).to_bytes(4, 'big')
    cut[8:16] = len(cut).to_bytes(8, 'big')
    assert GribFile(write_grib(cut)).read(Grid()) == 0
    assert 'damaged CCSDS stream' in capfd.readouterr().err


@pytest.mark.parametrize('bits', [1, 2, 4, 8, 16, 24, 32])
def test_pictures_of_every_depth(write_grib, capfd, bits):
    integers = RANDOM.integers(0, 2**bits, (5, 7), dtype=np.uint64)
    octets = png_packed(grib2(np.arange(35.0).reshape(5, 7), LatLon(10, 0, 0, 12)), integers, bits)
    grid = Grid()
    assert GribFile(write_grib(octets)).read(grid) == 1
    np.testing.assert_allclose(grid.values, integers, rtol=1e-7)
    integers = RANDOM.integers(0, 2, (1, 1200000), dtype=np.uint64)  # as values behind a bitmap are: one long row
    octets = png_packed(grib2(integers[:, ::-1].astype(float), LatLon(10, 0, 10, 12)), integers, 1)
    assert GribFile(write_grib(octets)).read(grid) == 1
    np.testing.assert_array_equal(grid.values, integers)


def test_a_stream_that_is_no_picture_is_named(write_grib, capfd):
    integers = RANDOM.integers(0, 2**8, (5, 7), dtype=np.uint64)
    octets = png_packed(grib2(np.arange(35.0).reshape(5, 7), LatLon(10, 0, 0, 12)), integers, 8)
    damaged = bytearray(octets)
    damaged[damaged.index(b'\x89PNG')] = 0
    assert GribFile(write_grib(damaged)).read(Grid()) == 0
    assert 'Not a PNG file\n' in capfd.readouterr().err.splitlines(keepends=True)


def repacked(representation, data, shape, bitmap=b'\xff'):
    """A message with sections 5 (from octet 10 on), 6 and 7 of one's own."""
    sections = split(grib2(np.zeros(shape), LatLon(50, 0, 40, 10)))
    sections |= {5: section(5, int(np.prod(shape)).to_bytes(4, 'big') + representation), 6: section(6, bitmap),
                 7: section(7, data)}
    return join(*(sections[number] for number in sorted(sections)))


def read_back(name):
    grid = Grid()
    return grid.values.ravel().tolist() if GribFile(name).read(grid) else None


@pytest.mark.parametrize('packing', [*PACKINGS, 'grid_complex_spatial_differencing'])
def test_a_bitmap_without_points_says_all(write_grib, packing):
    sections = split(packed(FIELDS['noise'], packing, 12, False)[0])
    sections[5] = sections[5][:5] + bytes(4) + sections[5][9:]
    sections |= {6: section(6, bytes(1 + (37 * 60 + 7) // 8)), 7: section(7, b'')}
    assert read_back(write_grib(join(*(sections[number] for number in sorted(sections))))) == [MISS] * (37 * 60)


@pytest.mark.parametrize('type_code, precision', [('>f4', 1), ('>f8', 2)])
def test_floating_point_numbers(write_grib, type_code, precision):
    values = np.array([[1.5, -2.25e-3, 7e8], [0.0, 273.16, -9998.0]])
    message = repacked(b'\0\4' + bytes([precision]), values.astype(type_code).tobytes(), values.shape)
    assert read_back(write_grib(message)) == values.astype('f4').ravel().tolist()
    short = repacked(b'\0\4' + bytes([precision]), values.astype(type_code).tobytes()[:-1], values.shape)
    assert read_back(write_grib(short)) is None


def test_floating_point_numbers_of_other_precision_are_named(write_grib, capfd):
    name = write_grib(repacked(b'\0\4\3', bytes(96), (2, 3)))
    assert read_back(name) is None
    assert capfd.readouterr().err.endswith('floating-point numbers of precision 3\n')


# Levels 0 to 3 in octets: what is beyond 3 is the length of a run, in numbers of base 252, the lowest first.
RUNS = [
    ([1, 2, 3, 0, 1, 1], [10.0, 20.0, -5.0, MISS, 10.0, 10.0]),
    ([2, 4 + 5], [20.0] * 6),
    ([0, 4 + 2, 3, 4 + 2], [MISS] * 3 + [-5.0] * 3),
    ([1, 4 + 3], None),       # too few
    ([1, 4 + 6], None),       # too many
    ([4 + 5, 1], None),       # a length without a level
    ([1, 4 + 5, 2], None),    # one more
    ([], None),
]


@pytest.mark.parametrize('numbers, expected', RUNS)
def test_run_lengths_of_levels(write_grib, numbers, expected):
    levels = b''.join(level.to_bytes(2, 'big') for level in (100, 200, 0x8000 | 50))
    representation = (200).to_bytes(2, 'big') + bytes([8]) + (3).to_bytes(2, 'big') * 2 + bytes([1]) + levels
    assert read_back(write_grib(repacked(representation, bytes(numbers), (2, 3)))) == expected


def test_long_runs_have_several_digits(write_grib):
    representation = (200).to_bytes(2, 'big') + bytes([8]) + (1).to_bytes(2, 'big') * 2 + bytes([0]) + (7).to_bytes(2, 'big')
    digits = [(3000 - 1) % 254 + 2, (3000 - 1) // 254 + 2]  # base 254
    assert read_back(write_grib(repacked(representation, bytes([1, *digits]), (30, 100)))) == [7.0] * 3000


def test_the_name_of_a_packing_is_told_while_looking_for_faults(write_grib, capfd):
    Yul.setMessageLevel('debug1')
    read_back(write_grib(repacked(b'\0\4\1', bytes(24), (2, 3))))
    assert 'GribFile::readDRS: IEEE floating point data' in capfd.readouterr().out


def test_damaged_pictures_give_a_message_and_no_values(write_grib, capfd):
    whole = png_packed(grib2(np.zeros((37, 60)), LatLon(50, 0, 40, 10)), RANDOM.integers(0, 255, (37, 60)), 8)
    picture = whole.index(b'\x89PNG')
    for octet in (18, 40, 60, 700, len(whole) - picture - 30):
        damaged = bytearray(whole)
        damaged[picture + octet] ^= 0x55
        name = write_grib(bytes(damaged))
        assert read_back(name) is None, octet
        [said] = capfd.readouterr().err.splitlines()
        assert said.startswith(f'GribFile::read: {name}: field of the message at octet 0 skipped: '), octet
