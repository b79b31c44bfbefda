"""Reading takes at most four times the memory of the unpacked field, beside the message itself."""

import os
import subprocess
import sys

import numpy as np
import pytest

from gribwriter import LatLon, grib1, grib2
from sections import png_packed

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


MESSAGES = {
    'simple': lambda field: grib2(field, AREA, bits=12, decimal_scale=0),
    'simple by columns': lambda field: grib2(field, AREA, bits=12, decimal_scale=0, scan=0x20),
    'edition 1': lambda field: grib1(field[:600, :1000], AREA, bits=12, decimal_scale=0),
    'complex': lambda field: by_peer(field, 'grid_complex'),
    'JPEG 2000': lambda field: by_peer(field, 'grid_jpeg'),
    'PNG': lambda field: png_packed(grib2(np.zeros(field.shape), AREA), np.nan_to_num(field + 5000).astype(np.uint32), 16),
    'CCSDS': lambda field: by_peer(field, 'grid_ccsds'),
}


@pytest.mark.skipif(not os.access('/proc/self/clear_refs', os.W_OK), reason='the kernel tells no peak')
@pytest.mark.skipif('asan' in os.environ.get('LD_PRELOAD', ''), reason='a sanitizer keeps memory of its own')
@pytest.mark.parametrize('kind', MESSAGES)
@pytest.mark.parametrize('field', [FIELD, HOLED], ids=['full', 'holed'])
def test_peak_memory(write_grib, tmp_path, kind, field):
    octets = MESSAGES[kind](field)
    small = tmp_path / 'small.grib'
    small.write_bytes(MESSAGES[kind](field[:7, :9]))
    result = subprocess.run([sys.executable, '-c', PROGRAM, str(small), write_grib(octets)], capture_output=True, text=True,
                            env=os.environ, check=True)
    used, unpacked = map(int, result.stdout.splitlines()[-1].split())
    slack = 1 << 20  # pages of code and tables that are touched first
    assert unpacked / 2 < used < 4 * unpacked + len(octets) + slack
