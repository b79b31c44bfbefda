#!/usr/bin/env python3
"""Writes examples/data/height500.grib2: the height of the 500 hPa surface over the North Atlantic and Europe.

The field is made up, but looks like one: a jet that meanders along a belt of strong height gradient, a deep
low near Iceland, one off Newfoundland, one that has been cut off west of Iberia, a blocking high over
Scandinavia. A 24 hour forecast, 1 degree, tenths of a metre.
"""

from pathlib import Path
import sys

import numpy as np

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / 'tests' / 'python'))

from gribwriter import LatLon, grib2  # noqa: E402

NORTH, WEST, SOUTH, EAST = 85, -100, 15, 60

# latitude, longitude, height anomaly in gpm, radius north-south and east-west in degrees of arc
CENTRES = (
    (61, -24, -270, 8.0, 11.0),   # Iceland low
    (49, -62, -170, 6.5, 8.5),    # Newfoundland low
    (39, -17, -190, 4.5, 5.5),    # cut-off low
    (63, 19, 230, 7.5, 10.0),     # Scandinavian block
    (44, -38, 110, 6.0, 9.0),     # Atlantic ridge
    (47, 42, -130, 6.0, 8.0),     # trough over the Black Sea
    (74, -72, -120, 6.0, 8.0),    # polar vortex over Baffin Bay
)


def height(lat, lon):
    """Geopotential height in gpm at latitudes and longitudes in degrees."""
    waves = 5.0 * np.sin(np.radians(5 * lon + 60)) + 2.5 * np.sin(np.radians(9 * lon - 20))
    jet = 46 + waves
    field = 5480 - 330 * np.tanh((lat - jet) / 11) - 2.6 * (lat - 45)
    for centre_lat, centre_lon, anomaly, north_south, east_west in CENTRES:
        dy = lat - centre_lat
        dx = (lon - centre_lon) * np.cos(np.radians(centre_lat))
        field = field + anomaly * np.exp(-0.5 * ((dy / north_south) ** 2 + (dx / east_west) ** 2))
    return field


def main():
    lat = np.arange(NORTH, SOUTH - 1, -1.0)[:, None]
    lon = np.arange(WEST, EAST + 1, 1.0)[None, :]
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / 'examples' / 'data' / 'height500.grib2'
    target.write_bytes(grib2(height(lat, lon), LatLon(NORTH, WEST, SOUTH, EAST), hours=24))


if __name__ == '__main__':
    main()
