"""Reading takes at most four times the memory of the unpacked field, beside the message itself."""

import os
import zlib

import numpy as np
import pytest

from gribwriter import LatLon, grib1, grib2, pack_bits, uint
from running import python, without_sanitizers
from sections import chunk, png_packed

PROGRAM = '''
import sys
from Yul import GribFile, Grid

def status(key):
    with open('/proc/self/status') as lines:
        return next(int(line.split()[1]) * 1024 for line in lines if line.startswith(key + ':'))

for name in sys.argv[1:]:
    with open('/proc/self/clear_refs', 'w') as file:
        file.write('5')  # the peak starts anew
    before, grid = status('VmRSS'), Grid()
    assert GribFile(name).read(grid) == 1
    print(status('VmHWM') - before, grid.getNx() * grid.getNy() * 4)
'''
AREA = LatLon(60, 0, 0, 60)
NY, NX = 1001, 2001
RANDOM = np.random.default_rng(3)
FIELD = np.cumsum(RANDOM.normal(size=(NY, NX)), axis=1).round(1)
HOLED = np.where(RANDOM.random((NY, NX)) < 0.3, np.nan, FIELD)


def by_peer(field, packing):
    pytest.importorskip('eccodes')
    from peer import packed

    return packed(np.nan_to_num(field[:900, :1800], nan=-9999), packing, 12, False)[0]


def second_order(field):
    """Row by row, one width."""
    ny, nx = field.shape
    begin = 8 + 28 + 32  # of the data
    rows = 23  # octet of the first-order values
    numbers = pack_bits(np.nan_to_num(field.ravel() + 1000).astype(np.uint32) % 4096, 12)
    head = (bytes([0x40, 0, 0, 0x41, 0x10, 0, 0, 8]) + uint(rows, 2) + bytes(1) + uint(rows + ny, 2) + uint(ny, 2)
            + uint(min(nx * ny, 65535), 2) + bytes([0, 12]))
    block = uint(3 + len(head) + ny + len(numbers), 3) + head + bytes(ny) + numbers
    octets = grib1(np.zeros(field.shape), AREA)[8:begin] + block + b'7777'
    return b'GRIB' + uint(8 + len(octets), 3) + uint(1, 1) + octets


def as_png(field, more=b''):
    return png_packed(grib2(np.zeros(field.shape), AREA), np.nan_to_num(field + 5000).astype(np.uint32), 16, more)


# Texts of 7 MB that stand in 7 kB each.
TEXTS = 50 * chunk(b'zTXt', b'Comment\0\0' + zlib.compress(b'x' * 7_000_000))
MESSAGES = {
    'simple': lambda field: grib2(field, AREA, bits=12, decimal_scale=0),
    'simple by columns': lambda field: grib2(field, AREA, bits=12, decimal_scale=0, scan=0x20),
    'edition 1': lambda field: grib1(field[:600, :1000], AREA, bits=12, decimal_scale=0),
    'complex': lambda field: by_peer(field, 'grid_complex'),
    'JPEG 2000': lambda field: by_peer(field, 'grid_jpeg'),
    'edition 1, second order': lambda field: second_order(field[:600, :1000]),
    'PNG': as_png,
    'PNG with texts': lambda field: as_png(field, TEXTS),
    'CCSDS': lambda field: by_peer(field, 'grid_ccsds'),
}


@pytest.mark.skipif(not os.access('/proc/self/clear_refs', os.W_OK), reason='the kernel tells no peak')
@without_sanitizers('they keep memory of their own')
@pytest.mark.parametrize('kind', MESSAGES)
@pytest.mark.parametrize('field', [FIELD, HOLED], ids=['full', 'holed'])
def test_peak_memory(write_grib, tmp_path, kind, field):
    octets = MESSAGES[kind](field)
    small = tmp_path / 'small.grib'
    small.write_bytes(MESSAGES[kind](field[:7, :9]))
    result = python(PROGRAM, small, write_grib(octets), check=True)
    used, unpacked = map(int, result.stdout.splitlines()[-1].split())
    slack = 1 << 20  # pages of code and tables that are touched first
    assert unpacked / 2 < used < 4 * unpacked + len(octets) + slack
