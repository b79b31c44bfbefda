"""Writes GRIB messages, editions 1 and 2, simple packing: input for tests and for the sample file.

Independent of the library on purpose: it shares no code with the reader that it feeds. A message is made from
a two-dimensional array, row 0 in the north and column 0 in the west, NaN where a value is missing:

    octets = grib2(values, LatLon(80, -100, 20, 60), parameter=(0, 3, 5), level=(100, 50000))

Octet layouts follow the WMO Manual on Codes, Volume I.2 (FM 92 GRIB), editions 1 and 2.
"""

from dataclasses import dataclass
from datetime import datetime, timezone
import math
import struct

import numpy as np

EPOCH_TIME = datetime(2026, 11, 14, 12, tzinfo=timezone.utc)

# Scanning mode bits (edition 1 table 8, edition 2 flag table 3.4).
MINUS_I, PLUS_J, J_FIRST, ALTERNATE_ROWS = 0x80, 0x40, 0x20, 0x10


@dataclass(frozen=True)
class LatLon:
    """Corners of the grid: north, west, south, east, degrees; whatever the scanning mode."""
    north: float
    west: float
    south: float
    east: float


@dataclass(frozen=True)
class PolarStereo:
    """First point in stored order, orientation longitude, spacing in metres true at 60 degrees."""
    lat1: float
    lon1: float
    orientation: float
    dx: float
    dy: float
    south_pole: bool = False


@dataclass(frozen=True)
class Lambert:
    """First point in stored order, orientation longitude, spacing in metres, standard parallels."""
    lat1: float
    lon1: float
    orientation: float
    dx: float
    dy: float
    latin1: float
    latin2: float


class Albers(Lambert):
    """The same on the equal-area cone."""


@dataclass(frozen=True)
class Azimuthal:
    """Equal-area; edition 2 only. First point in stored order, centre, spacing in metres."""
    lat1: float
    lon1: float
    lat0: float
    lon0: float
    dx: float
    dy: float


@dataclass(frozen=True)
class SpaceView:
    """Point below the satellite, its place in the picture and the picture's in the whole view, grid lengths; the earth's
    diameter in grid lengths, and the satellite's distance in earth radii."""
    lat: float
    lon: float
    x: int
    y: int
    x0: int
    y0: int
    diameter: int
    distance: float


@dataclass(frozen=True)
class Mercator:
    """First and last point in stored order, latitude of true scale, spacing in metres there."""
    lat1: float
    lon1: float
    lat2: float
    lon2: float
    latin: float
    dx: float
    dy: float


def uint(value, octets):
    return int(value).to_bytes(octets, 'big')


def signed(value, octets):
    """GRIB's signed integers: a sign bit and a magnitude."""
    magnitude = abs(int(value))
    return uint(magnitude | ((value < 0) << (8 * octets - 1)), octets)


def ieee(value):
    """The largest IEEE single that is not above the value."""
    single = np.float32(value)
    if single > value:
        single = np.nextafter(single, np.float32(-np.inf))
    return struct.pack('>f', single)


def read_ieee(octets):
    return struct.unpack('>f', octets)[0]


def ibm(value):
    """The largest IBM single that is not above the value."""
    if value == 0:
        return bytes(4)
    exponent = 64
    fraction = abs(value)
    while fraction >= 1:
        fraction, exponent = fraction / 16, exponent + 1
    while fraction < 1 / 16:
        fraction, exponent = fraction * 16, exponent - 1
    scaled = fraction * 2**24
    mantissa = math.ceil(scaled) if value < 0 else math.floor(scaled)
    return uint(exponent | ((value < 0) << 7), 1) + uint(mantissa, 3)


def read_ibm(octets):
    value = int.from_bytes(octets[1:], 'big') / 2**24 * 16.0 ** ((octets[0] & 127) - 64)
    return -value if octets[0] & 128 else value


def stored_order(values, scan):
    """The values as a row of numbers in the order in which the scanning mode stores them."""
    rows = values[::-1] if scan & PLUS_J else values
    rows = rows[:, ::-1] if scan & MINUS_I else rows
    if scan & ALTERNATE_ROWS:
        rows = rows.copy()
        rows[1::2] = rows[1::2, ::-1]
    return (rows.T if scan & J_FIRST else rows).ravel()


def pack_bits(integers, bits):
    if bits == 0:
        return b''
    planes = np.unpackbits(integers.astype('>u4').view(np.uint8)).reshape(-1, 32)
    return np.packbits(planes[:, 32 - bits:]).tobytes()


def pack(values, decimal_scale, bits, encode, decode):
    """Simple packing: octets of the reference value (encode, decode), binary scale, bits, packed integers."""
    scaled = np.asarray(values, float) * 10.0**decimal_scale
    reference = encode(scaled.min() if scaled.size else 0.0)
    rest = scaled - decode(reference)
    largest = rest.max() if scaled.size else 0.0
    if bits is None:
        scale, bits = 0, int(round(largest)).bit_length()
    else:
        scale = math.ceil(math.log2(largest / (2**bits - 1))) if largest > 0 and bits > 0 else 0
    integers = np.rint(rest / 2.0**scale).astype(np.uint32)
    return reference, scale, bits, pack_bits(integers, bits)


def split_missing(values, scan, bitmap):
    """Values in stored order without the missing ones, and the bitmap's octets or none."""
    flat = stored_order(np.asarray(values, float), scan)
    present = ~np.isnan(flat)
    needed = bitmap or not present.all()
    return flat[present], np.packbits(present).tobytes() if needed else None


def latlon_corners(grid, scan):
    north, south = grid.north, grid.south
    west, east = grid.west, grid.east
    if scan & PLUS_J:
        north, south = south, north
    if scan & MINUS_I:
        west, east = east, west
    return north, west, south, east


# ---- edition 2 ------------------------------------------------------------------------------------------------

def micro(degrees):
    return signed(round(degrees * 1e6), 4)


def micro_lon(degrees):
    return uint(round(degrees % 360 * 1e6), 4)


def grid2(grid, nx, ny, scan):
    """Grid definition template: its number and its octets from octet 15 on."""
    earth = uint(6, 1) + bytes(15)  # a sphere of 6371229 m
    size = uint(nx, 4) + uint(ny, 4)
    if isinstance(grid, LatLon):
        lat1, lon1, lat2, lon2 = latlon_corners(grid, scan)
        di = (grid.east - grid.west) / max(nx - 1, 1)
        dj = (grid.north - grid.south) / max(ny - 1, 1)
        return 0, (earth + size + uint(0, 4) + b'\xff\xff\xff\xff' + micro(lat1) + micro_lon(lon1) + uint(0x30, 1)
                   + micro(lat2) + micro_lon(lon2) + uint(round(di * 1e6), 4) + uint(round(dj * 1e6), 4)
                   + uint(scan, 1))
    if isinstance(grid, SpaceView):
        return 90, (earth + size + micro(grid.lat) + micro_lon(grid.lon) + uint(0, 1) + uint(grid.diameter, 4) * 2
                    + uint(grid.x * 1000, 4) + uint(grid.y * 1000, 4) + uint(scan, 1) + uint(0, 4)
                    + uint(round(grid.distance * 1e6), 4) + signed(grid.x0, 4) + signed(grid.y0, 4))
    first = earth + size + micro(grid.lat1) + micro_lon(grid.lon1) + uint(0x30, 1)
    spacing = uint(round(grid.dx * 1e3), 4) + uint(round(grid.dy * 1e3), 4)
    if isinstance(grid, Azimuthal):
        return 140, first[:-1] + micro(grid.lat0) + micro_lon(grid.lon0) + uint(0, 1) + spacing + uint(scan, 1)
    if isinstance(grid, Mercator):
        return 10, (first + micro(grid.latin) + micro(grid.lat2) + micro_lon(grid.lon2) + uint(scan, 1)
                    + uint(0, 4) + spacing)
    if isinstance(grid, PolarStereo):
        true_at = -60 if grid.south_pole else 60
        return 20, (first + micro(true_at) + micro_lon(grid.orientation) + spacing
                    + uint(0x80 if grid.south_pole else 0, 1) + uint(scan, 1))
    return 31 if isinstance(grid, Albers) else 30, (
        first + micro(grid.latin1) + micro_lon(grid.orientation) + spacing + uint(0, 1) + uint(scan, 1)
        + micro(grid.latin1) + micro(grid.latin2) + micro(-90) + micro_lon(0))


def section2(number, octets):
    return uint(len(octets) + 5, 4) + uint(number, 1) + octets


def grib2(values, grid, *, parameter=(0, 3, 5), level=(100, 50000), time=EPOCH_TIME, hours=0,
          decimal_scale=1, bits=None, bitmap=False, scan=0, centre=255, process=0, product=0, tail=b''):
    """One field. parameter: discipline, category, number; level: type and value; hours: of the forecast; product: number of
    the product definition template, tail: its octets behind the surfaces."""
    values = np.asarray(values, float)
    ny, nx = values.shape
    discipline, category, number = parameter
    level_type, level_value = level
    present, mask = split_missing(values, scan, bitmap)
    template, grid_octets = grid2(grid, nx, ny, scan)
    reference, scale, bits, data = pack(present, decimal_scale, bits, ieee, read_ieee)
    sections = (
        section2(1, uint(centre, 2) + uint(0, 2) + uint(2, 1) + uint(0, 1) + uint(1, 1) + uint(time.year, 2)
                 + bytes([time.month, time.day, time.hour, time.minute, time.second, 0, 1 if hours else 0]))
        + section2(3, uint(0, 1) + uint(nx * ny, 4) + uint(0, 2) + uint(template, 2) + grid_octets)
        + section2(4, uint(0, 2) + uint(product, 2) + bytes([category, number, 2, 0, process]) + uint(0, 3)
                   + uint(1, 1) + uint(hours, 4) + uint(level_type, 1) + signed(0, 1) + signed(level_value, 4)
                   + b'\xff' * 6 + tail)
        + section2(5, uint(present.size, 4) + uint(0, 2) + reference + signed(scale, 2)
                   + signed(decimal_scale, 2) + uint(bits, 1) + uint(0, 1))
        + section2(6, uint(255, 1) if mask is None else uint(0, 1) + mask)
        + section2(7, data)
        + b'7777')
    return b'GRIB\0\0' + uint(discipline, 1) + uint(2, 1) + uint(16 + len(sections), 8) + sections


# ---- edition 1 ------------------------------------------------------------------------------------------------

def milli(degrees):
    return signed(round(degrees * 1e3), 3)


def grid1(grid, nx, ny, scan):
    """Grid description block from octet 6 on: the grid type and what follows it."""
    size = uint(nx, 2) + uint(ny, 2)
    if isinstance(grid, LatLon):
        lat1, lon1, lat2, lon2 = latlon_corners(grid, scan)
        di = (grid.east - grid.west) / max(nx - 1, 1)
        dj = (grid.north - grid.south) / max(ny - 1, 1)
        return (uint(0, 1) + size + milli(lat1) + milli(lon1) + uint(0x80, 1) + milli(lat2) + milli(lon2)
                + uint(round(di * 1e3), 2) + uint(round(dj * 1e3), 2) + uint(scan, 1) + bytes(4))
    if isinstance(grid, SpaceView):
        return (uint(90, 1) + size + milli(grid.lat) + milli(grid.lon) + uint(0, 1) + uint(grid.diameter, 3) * 2
                + uint(grid.x, 2) + uint(grid.y, 2) + uint(scan, 1) + milli(0) + uint(round(grid.distance * 1e6), 3)
                + uint(grid.x0, 2) + uint(grid.y0, 2) + bytes(6))
    first = size + milli(grid.lat1) + milli(grid.lon1)
    spacing = uint(round(grid.dx), 3) + uint(round(grid.dy), 3)
    if isinstance(grid, Mercator):
        return (uint(1, 1) + first + uint(0x80, 1) + milli(grid.lat2) + milli(grid.lon2) + milli(grid.latin)
                + bytes(1) + uint(scan, 1) + spacing + bytes(8))
    pole = uint(0x80 if getattr(grid, 'south_pole', False) else 0, 1)
    if isinstance(grid, PolarStereo):
        return uint(5, 1) + first + uint(0x80, 1) + milli(grid.orientation) + spacing + pole + uint(scan, 1) + bytes(4)
    return (uint(8 if isinstance(grid, Albers) else 3, 1) + first + uint(0x80, 1) + milli(grid.orientation) + spacing + pole + uint(scan, 1)
            + milli(grid.latin1) + milli(grid.latin2) + milli(-90) + milli(0) + bytes(2))


def grib1(values, grid, *, parameter=7, level=(100, 500), time=EPOCH_TIME, hours=0,
          decimal_scale=1, bits=None, bitmap=False, scan=0, centre=255, process=255, table=2):
    """One field. parameter: number in the table; level: type and value; hours: of the forecast."""
    values = np.asarray(values, float)
    ny, nx = values.shape
    level_type, level_value = level
    present, mask = split_missing(values, scan, bitmap)
    century = (time.year - 1) // 100 + 1
    product = (uint(28, 3) + bytes([table, centre, process, 255, 0x80 if mask is None else 0xc0, parameter, level_type])
               + uint(level_value, 2)
               + bytes([time.year - (century - 1) * 100, time.month, time.day, time.hour, time.minute, 1])
               + bytes([hours, 0, 0]) + uint(0, 2) + uint(0, 1) + uint(century, 1) + uint(0, 1)
               + signed(decimal_scale, 2))
    description = bytes([0, 255]) + grid1(grid, nx, ny, scan)
    blocks = product + uint(3 + len(description), 3) + description
    if mask is not None:
        mask += bytes(len(mask) % 2)
        blocks += uint(6 + len(mask), 3) + uint(8 * len(mask) - values.size, 1) + uint(0, 2) + mask
    reference, scale, bits, data = pack(present, decimal_scale, bits, ibm, read_ibm)
    padding = (11 + len(data)) % 2
    unused = 8 * (len(data) + padding) - present.size * bits
    blocks += uint(11 + len(data) + padding, 3) + uint(unused, 1) + signed(scale, 2) + reference + uint(bits, 1)
    blocks += data + bytes(padding) + b'7777'
    return b'GRIB' + uint(8 + len(blocks), 3) + uint(1, 1) + blocks
