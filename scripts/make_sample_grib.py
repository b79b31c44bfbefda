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

NORTH, WEST, SOUTH, EAST = 87, -130, 15, 75

# latitude, longitude, height anomaly in gpm, radius north-south and east-west in degrees of arc
CENTRES = (
    (62, -27, -310, 6.5, 9.0),    # Iceland low
    (51, -62, -400, 4.5, 6.5),    # Newfoundland low
    (37, -19, -340, 3.8, 4.8),    # cut-off low
    (60, 14, 560, 6.0, 9.0),      # Scandinavian block
    (45, -42, 210, 5.5, 8.0),     # Atlantic ridge
    (44, 38, -330, 4.5, 6.0),     # Black Sea trough
    (78, -75, -160, 5.0, 8.0),    # polar vortex over Baffin Bay
    (52, -105, 200, 6.0, 10.0),   # ridge over the Prairies
)


def height(lat, lon):
    """Geopotential height in gpm at latitudes and longitudes in degrees."""
    waves = 5.0 * np.sin(np.radians(5 * lon + 60)) + 2.5 * np.sin(np.radians(9 * lon - 20))
    jet = 46 + waves
    field = 5470 - 350 * np.tanh((lat - jet) / 10) - 1.2 * (lat - 45)
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
