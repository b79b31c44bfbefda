"""Writes the seed corpora of the GRIB targets: a small message of each kind of grid, edition, packing and feature."""

from pathlib import Path
import sys

import numpy as np

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parent / 'tests' / 'python'), str(HERE.parent / 'tests' / 'python' / 'grib')]

import gribwriter as w  # noqa: E402
from peer import packed  # noqa: E402
from sections import png_packed, split  # noqa: E402

VALUES = 280 + np.add.outer(np.arange(4.0), np.arange(6.0))
MISSING = np.where(VALUES == 283, np.nan, VALUES)
GRIDS = {
    'latlon': w.LatLon(60, -20, 57, -15),
    'polar': w.PolarStereo(30, -120, -95, 60000, 60000),
    'lambert': w.Lambert(20, -110, -95, 40000, 40000, 25, 50),
    'mercator': w.Mercator(10, 100, 20, 113, 15, 100000, 100000),
}
ROUGH = np.random.default_rng(5).normal(280, 10, (9, 21)).cumsum(axis=1)
PACKINGS = ('grid_simple', 'grid_complex', 'grid_complex_spatial_differencing', 'grid_ieee', 'grid_jpeg', 'grid_ccsds')


def pictures(field):
    """Messages packed in every way that another library knows, and as PNG."""
    for packing in PACKINGS:
        for missing in (False, True):
            values = np.where(field > 1200, -9999, field) if missing else field
            yield f'{packing}-{missing:d}', packed(values, packing, 12, missing)[0]
    frame = w.grib2(np.zeros(field.shape), GRIDS['latlon'])
    for bits in (4, 16, 24):
        yield f'png-{bits}', png_packed(frame, field.astype(np.uint32) % 2**bits, bits)


def kernel_input(octets, shape):
    """What the packing target takes, of a message of edition 2."""
    sections = split(octets)
    has_bitmap = sections[6][5] == 0
    ny, nx = shape
    return (bytes([1 + 2 * has_bitmap, nx - 1]) + (ny - 1).to_bytes(2, 'big') + bytes([len(sections[5])]) + sections[5]
            + sections[6][6:] + sections[7][5:])


def kernel_inputs_of_edition_1():
    """Simple packing, and second-order packing: row by row, with one width and a width each, bitmaps for both."""
    head = bytes([0, 5, 0, 3])
    yield 'simple', head + bytes([0, 0, 35, 0, 0x80, 1, 0x41, 0x10, 0, 0, 8]) + bytes(range(24))
    for flags in (0, 0x10, 0x20, 0x30):
        groups, widths = 4, 4 if flags & 0x10 else 1
        ones = bytes([0b10000010, 0b00001000, 0b00100000]) if flags & 0x20 else b''
        first = 22 + widths + len(ones)
        second = first + groups
        block = (bytes([0, 0, 0, 0x40, 0x80, 1, 0x41, 0x10, 0, 0, 8]) + first.to_bytes(2, 'big') + bytes([flags])
                 + second.to_bytes(2, 'big') + groups.to_bytes(2, 'big') + (24).to_bytes(2, 'big') + bytes(1)
                 + bytes([5] * widths) + ones + bytes(range(groups)) + bytes(range(100, 115)))
        yield f'second-order-{flags}', head + block


def run_lengths():
    """Levels 1 to 3 of two bits, 24 points: runs, and a single value."""
    section = (b'\0\0\0\0\5' + (24).to_bytes(4, 'big') + (200).to_bytes(2, 'big') + bytes([4]) + (3).to_bytes(2, 'big')
               + (3).to_bytes(2, 'big') + bytes([1, 0, 10, 0, 20, 0x80, 30]))
    return bytes([1, 5, 0, 3, len(section)]) + section + bytes([0x18, 0x27, 0x34])


def counted_in_units(octets):
    """The message of edition 1 with its length as messages above 8 MB have it: in units of 120 octets."""
    data = 8 + 28 + 32
    return octets[:4] + b'\x80\0\1' + octets[7:data] + (120 + 4 - len(octets)).to_bytes(3, 'big') + octets[data + 3:]


def main():
    messages, kernels = HERE / 'corpus' / 'grib', HERE / 'corpus' / 'grib_packing'
    for target in (messages, kernels):
        target.mkdir(parents=True, exist_ok=True)
    for edition, write in ((1, w.grib1), (2, w.grib2)):
        for name, grid in GRIDS.items():
            (messages / f'{name}-{edition}.grib').write_bytes(write(VALUES, grid, scan=w.PLUS_J, hours=6))
        (messages / f'bitmap-{edition}.grib').write_bytes(write(MISSING, GRIDS['latlon'], bits=9))
        (messages / f'constant-{edition}.grib').write_bytes(write(0 * VALUES, GRIDS['latlon']))
        if edition == 1:
            (messages / 'large-1.grib').write_bytes(counted_in_units(write(VALUES, GRIDS['latlon'])))
        rows = write(VALUES, GRIDS['latlon'], scan=w.ALTERNATE_ROWS)
        (messages / f'two-in-a-bulletin-{edition}.grib').write_bytes(b'\1\r\r\nHHXX10 EDZW 141200\r\r\n' + rows + rows)
    for name, octets in pictures(ROUGH):
        (messages / f'{name}.grib').write_bytes(octets)
        (kernels / name).write_bytes(kernel_input(octets, ROUGH.shape))
    for name, octets in kernel_inputs_of_edition_1():
        (kernels / name).write_bytes(octets)
    (kernels / 'run-length').write_bytes(run_lengths())


if __name__ == '__main__':
    main()
