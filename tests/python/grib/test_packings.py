"""Packings that another library writes, read back: every kind of block and group that real fields lead to."""

import numpy as np
import pytest

from gribwriter import LatLon, grib2
from peer import packed
from sections import png_packed
from Yul import GribFile, Grid

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
